// cPicture: a picture with a pixel scale, the drawing surface of the plots.
// It holds a QImage and offers the operations the plots are written in:
// clear, line, circle, set pixel, read pixel, text at a position (also
// turned, in a font of its own), text width and height. Colours are whole
// numbers red + 256 * green + 65536 * blue.
//
// Lines and circles are rasterised here pixel by pixel (Bresenham line,
// midpoint circle) instead of with QPainter: the aliased QPainter path
// rasteriser drops or moves end pixels depending on the pen and the
// transformation, and the plots and their tests need every pixel where a
// plain raster puts it. Text goes through QPainter, without anti-aliasing,
// so every text pixel has exactly the foreground colour.
#pragma once

#include <QFont>
#include <QImage>
#include <string>

// A colour from its three channels, each 0 to 255.
inline constexpr long RGB(int Red, int Green, int Blue) {
    return static_cast<long>(Red) + 256L * Green + 65536L * Blue;
}

class cPicture {
  public:
    // A picture of Width by Height pixels, cleared to BackColor (black).
    cPicture(int Width, int Height);

    int ScaleWidth() const { return image_.width(); }
    int ScaleHeight() const { return image_.height(); }

    // Gives the picture a new size, cleared to BackColor; what was drawn
    // is gone.
    void SetSize(int Width, int Height);

    long BackColor = 0;  // background, used by Cls
    long ForeColor = 0;  // colour of lines, circles and text

    // Fills the picture with BackColor.
    void Cls();

    // Straight line from (X1, Y1) to (X2, Y2), both end pixels included.
    void Line(double X1, double Y1, double X2, double Y2);

    // Circle of Radius round (X, Y): the eight-way symmetric midpoint circle,
    // which passes through (X +- Radius, Y) and (X, Y +- Radius).
    void Circle(double X, double Y, double Radius);

    // Sets one pixel; a pixel outside the picture is ignored.
    void PSet(double X, double Y, long Color);

    // Colour of one pixel, -1 outside the picture.
    long Point(double X, double Y) const;

    // Text in ForeColor with its top left corner at (X, Y).
    void Print(double X, double Y, const std::string& Text);
    // Text in ForeColor and in Font (without anti-aliasing), turned by
    // Degrees counter-clockwise round (X, Y), the top left corner of the
    // text before it is turned.
    void PrintTurned(double X, double Y, const std::string& Text, const QFont& Font,
                     double Degrees);
    int TextWidth(const std::string& Text) const;
    int TextHeight(const std::string& Text) const;

    // The font of the text: the application's default font, without
    // anti-aliasing.
    const QFont& Font() const { return font_; }

    const QImage& Image() const { return image_; }

  private:
    void SetPixel(int X, int Y, long Color);

    QImage image_;
    QFont font_;
};

// A colour of cPicture as a Qt colour, and back.
QColor ToQColor(long Color);
long FromQRgb(unsigned int Rgb);
