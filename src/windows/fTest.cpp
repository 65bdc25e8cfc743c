#include "windows/fTest.h"

#include <QListWidget>
#include <QVBoxLayout>

fTest::fTest(QWidget* parent) : QWidget(parent, Qt::Window) {
    setWindowTitle(QStringLiteral("Form1"));
    List = new QListWidget(this);
    List->setObjectName(QStringLiteral("List"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(List);
    resize(480, 360);
}

void fTest::AddLine(const std::string& Line) {
    List->addItem(QString::fromStdString(Line));
    List->scrollToBottom();
}
