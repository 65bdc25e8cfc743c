#include "windows/Picture.h"

#include <QApplication>
#include <QFontMetrics>
#include <QPainter>
#include <cstdlib>

#include "sky/Rounding.h"

namespace {

// Plot coordinates are doubles; a pixel is the nearest whole number, halves
// to the even neighbour, as every other rounding of the windows.
int ToPixel(double v) {
    return static_cast<int>(RoundHalfEven(v));
}

QFont PictureFont() {
    QFont f = QApplication::font();
    f.setStyleStrategy(QFont::NoAntialias);
    return f;
}

}  // namespace

QColor ToQColor(long Color) {
    return QColor(static_cast<int>(Color % 256), static_cast<int>((Color / 256) % 256),
                  static_cast<int>((Color / 65536) % 256));
}

long FromQRgb(unsigned int Rgb) {
    return RGB(qRed(Rgb), qGreen(Rgb), qBlue(Rgb));
}

cPicture::cPicture(int Width, int Height)
    : image_(Width, Height, QImage::Format_RGB32), font_(PictureFont()) {
    Cls();
}

void cPicture::SetSize(int Width, int Height) {
    image_ = QImage(Width, Height, QImage::Format_RGB32);
    Cls();
}

void cPicture::Cls() {
    image_.fill(ToQColor(BackColor));
}

void cPicture::SetPixel(int X, int Y, long Color) {
    if (X < 0 || Y < 0 || X >= image_.width() || Y >= image_.height()) return;
    image_.setPixel(X, Y, ToQColor(Color).rgb());
}

void cPicture::PSet(double X, double Y, long Color) {
    SetPixel(ToPixel(X), ToPixel(Y), Color);
}

long cPicture::Point(double X, double Y) const {
    const int x = ToPixel(X);
    const int y = ToPixel(Y);
    if (x < 0 || y < 0 || x >= image_.width() || y >= image_.height()) return -1;
    return FromQRgb(image_.pixel(x, y));
}

void cPicture::Line(double X1, double Y1, double X2, double Y2) {
    int x = ToPixel(X1);
    int y = ToPixel(Y1);
    const int x2 = ToPixel(X2);
    const int y2 = ToPixel(Y2);
    const int dx = std::abs(x2 - x);
    const int dy = -std::abs(y2 - y);
    const int sx = x < x2 ? 1 : -1;
    const int sy = y < y2 ? 1 : -1;
    int err = dx + dy;
    for (;;) {
        SetPixel(x, y, ForeColor);
        if (x == x2 && y == y2) break;
        const int e2 = 2 * err;
        if (e2 >= dy) {
            err += dy;
            x += sx;
        }
        if (e2 <= dx) {
            err += dx;
            y += sy;
        }
    }
}

void cPicture::Circle(double X, double Y, double Radius) {
    const int cx = ToPixel(X);
    const int cy = ToPixel(Y);
    const int r = ToPixel(Radius);
    if (r < 0) return;
    int x = r;
    int y = 0;
    int d = 1 - r;
    while (x >= y) {
        SetPixel(cx + x, cy + y, ForeColor);
        SetPixel(cx + y, cy + x, ForeColor);
        SetPixel(cx - y, cy + x, ForeColor);
        SetPixel(cx - x, cy + y, ForeColor);
        SetPixel(cx - x, cy - y, ForeColor);
        SetPixel(cx - y, cy - x, ForeColor);
        SetPixel(cx + y, cy - x, ForeColor);
        SetPixel(cx + x, cy - y, ForeColor);
        ++y;
        if (d < 0) {
            d += 2 * y + 1;
        } else {
            --x;
            d += 2 * (y - x) + 1;
        }
    }
}

void cPicture::Print(double X, double Y, const std::string& Text) {
    QPainter p(&image_);
    p.setRenderHint(QPainter::TextAntialiasing, false);
    p.setFont(font_);
    p.setPen(ToQColor(ForeColor));
    const QFontMetrics fm(font_);
    p.drawText(QPoint(ToPixel(X), ToPixel(Y) + fm.ascent()), QString::fromStdString(Text));
}

void cPicture::PrintTurned(double X, double Y, const std::string& Text, const QFont& Font,
                           double Degrees) {
    QFont f = Font;
    f.setStyleStrategy(QFont::NoAntialias);
    QPainter p(&image_);
    p.setRenderHint(QPainter::TextAntialiasing, false);
    p.setFont(f);
    p.setPen(ToQColor(ForeColor));
    p.translate(ToPixel(X), ToPixel(Y));
    p.rotate(-Degrees);  // Qt turns clockwise on the screen
    p.drawText(QPoint(0, p.fontMetrics().ascent()), QString::fromStdString(Text));
}

int cPicture::TextWidth(const std::string& Text) const {
    return QFontMetrics(font_).horizontalAdvance(QString::fromStdString(Text));
}

int cPicture::TextHeight(const std::string&) const {
    return QFontMetrics(font_).height();
}
