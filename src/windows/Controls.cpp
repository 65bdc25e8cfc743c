#include "windows/Controls.h"

#include <QGroupBox>
#include <QLabel>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <algorithm>

#include "windows/Picture.h"

QString IndexedName(const char* Name, int Index) {
    return QString::fromLatin1(Name) + QLatin1Char('_') + QString::number(Index);
}

QLabel* MakeLabel(const QString& Text, QWidget* Parent, const QString& Name) {
    auto* l = new QLabel(Text, Parent);
    if (!Name.isEmpty()) l->setObjectName(Name);
    return l;
}

QGroupBox* MakeFrame(const QString& Caption, QWidget* Parent) {
    return new QGroupBox(Caption, Parent);
}

QString FrameStyleSheet() {
    return QStringLiteral(
        "QGroupBox { border: 1px solid palette(mid); border-radius: 2px;"
        " margin-top: 7px; padding-top: 3px; }"
        "QGroupBox::title { subcontrol-origin: margin; subcontrol-position: top left;"
        " left: 6px; padding: 0 2px; }");
}

void SetTextColor(QWidget* Control, long Color) {
    QPalette pal = Control->palette();
    pal.setColor(QPalette::WindowText, ToQColor(Color));
    pal.setColor(QPalette::ButtonText, ToQColor(Color));
    pal.setColor(QPalette::Text, ToQColor(Color));
    Control->setPalette(pal);
}

WrapButton::WrapButton(const QString& Caption, QWidget* Parent) : QPushButton(Caption, Parent) {}

QSize WrapButton::sizeHint() const {
    // Room for the longest word, and for two lines of text.
    const QFontMetrics fm(font());
    int widest = 0;
    for (const QString& word : text().split(QLatin1Char(' '))) {
        widest = std::max(widest, fm.horizontalAdvance(word));
    }
    return {widest + 16, 2 * fm.height() + 8};
}

QSize WrapButton::minimumSizeHint() const {
    return sizeHint();
}

void WrapButton::paintEvent(QPaintEvent*) {
    QStylePainter p(this);
    QStyleOptionButton opt;
    initStyleOption(&opt);
    const QString caption = opt.text;
    opt.text.clear();
    p.drawControl(QStyle::CE_PushButton, opt);
    p.drawItemText(rect().adjusted(4, 2, -4, -2), Qt::AlignCenter | Qt::TextWordWrap, palette(),
                   isEnabled(), caption, QPalette::ButtonText);
}
