#include "windows/fAbout.h"

#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

#include "windows/Picture.h"
#include "windows/StarDots.h"

namespace {

// A handful of calibration dots round a target, in the colours of the plots.
QImage AboutPicture() {
    cPicture pic(96, 96);
    pic.ForeColor = RGB(60, 60, 60);
    pic.Line(48, 8, 48, 88);
    pic.Line(8, 48, 88, 48);
    pic.Circle(48, 48, 36);
    pic.Circle(48, 48, 18);
    DrawStarDot(pic, 52, 44, 255, 255, 80);
    DrawStarDot(pic, 41, 55, 255, 60, 150);
    DrawStarDot(pic, 60, 61, 255, 255, 80);
    DrawStarDot(pic, 30, 36, 50, 50, 255);
    return pic.Image();
}

}  // namespace

fAbout::fAbout(const std::string& Version, QWidget* parent) : QDialog(parent) {
    setWindowTitle(QStringLiteral("About Aztrue"));
    auto* layout = new QVBoxLayout(this);
    auto* picture = new QLabel(this);
    picture->setPixmap(QPixmap::fromImage(AboutPicture()));
    picture->setAlignment(Qt::AlignCenter);
    layout->addWidget(picture);
    auto* line1 = new QLabel(QString::fromStdString(Version), this);
    line1->setAlignment(Qt::AlignCenter);
    layout->addWidget(line1);
    auto* line2 = new QLabel(QStringLiteral("Telescope pointing model by Brightfold Optics"), this);
    line2->setAlignment(Qt::AlignCenter);
    layout->addWidget(line2);
    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    connect(ok, &QPushButton::clicked, this, &QDialog::close);
    layout->addWidget(ok, 0, Qt::AlignCenter);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}
