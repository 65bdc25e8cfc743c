#include "windows/Graph.h"

#include <QFont>
#include <algorithm>
#include <cmath>

#include "sky/NumberText.h"
#include "sky/Rounding.h"

int RoundPixel(double Value) {
    const double r = RoundHalfEven(Value);
    // Far beyond any picture, and NaN, is held at a pixel that no picture
    // has, so that a wild value cannot overflow the conversion.
    if (!(r > -kFarPixel)) return -kFarPixel;
    if (r > kFarPixel) return kFarPixel;
    return static_cast<int>(r);
}

void InitGraph(GraphInfo& G) {
    G.LeftMargin = 40;
    G.RightMargin = 20;
    G.TopMargin = 20;
    G.BottomMargin = 20;
    G.Failed = false;
    G.FrameColor = RGB(160, 160, 160);
    G.LabelColor = RGB(160, 160, 160);
    G.MajorColor = RGB(47, 47, 47);
    G.MinorColor = RGB(24, 24, 24);
    G.TitleColor = RGB(200, 208, 240);
}

void SetGraphCanvas(GraphInfo& G, int Width, int Height) {
    G.CanvasWidth = Width;
    G.CanvasHeight = Height;
}

void SetGraphMargins(GraphInfo& G, int Left, int Top, int Right, int Bottom) {
    G.LeftMargin = Left;
    G.TopMargin = Top;
    G.RightMargin = Right;
    G.BottomMargin = Bottom;
}

void SetGraphRange(GraphInfo& G, double XMin, double YMin, double XMax, double YMax) {
    G.XMin = XMin;
    G.YMin = YMin;
    G.XMax = XMax;
    G.YMax = YMax;
}

void SetGraphLog(GraphInfo& G, bool XLog, bool YLog) {
    G.XLog = XLog;
    G.YLog = YLog;
}

void ScaleGraph(GraphInfo& G) {
    if (!G.Failed) {
        G.Left = G.LeftMargin;
        G.Top = G.TopMargin;
        G.Right = G.CanvasWidth - G.RightMargin;
        G.Bottom = G.CanvasHeight - G.BottomMargin;
        G.PlotWidth = G.Right - G.Left;
        G.PlotHeight = G.Bottom - G.Top;
        // A logarithm of a value not above 0 is NaN, which fails the test
        // as an empty range does.
        const double XSpan = G.XLog ? std::log(G.XMax) - std::log(G.XMin) : G.XMax - G.XMin;
        if (XSpan > 0)
            G.XScale = G.PlotWidth / XSpan;
        else
            G.Failed = true;
        const double YSpan = G.YLog ? std::log(G.YMax) - std::log(G.YMin) : G.YMax - G.YMin;
        if (YSpan > 0)
            G.YScale = G.PlotHeight / YSpan;
        else
            G.Failed = true;
    }
    if (G.XScale == 0) G.XScale = 1;
    if (G.YScale == 0) G.YScale = 1;
}

double GraphX(const GraphInfo& G, double Value) {
    if (G.Failed) return 0;
    if (G.XLog) return (std::log(Value) - std::log(G.XMin)) * G.XScale + G.Left;
    return (Value - G.XMin) * G.XScale + G.Left;
}

double GraphY(const GraphInfo& G, double Value) {
    if (G.Failed) return 0;
    if (G.YLog) return G.Bottom - (std::log(Value) - std::log(G.YMin)) * G.YScale;
    return G.Bottom - (Value - G.YMin) * G.YScale;
}

void NiceStep(double Spacing, double Scale, double& Step, int& Divisions) {
    const double R = Spacing / Scale;  // data distance that Spacing pixels cover
    const double E = std::floor(std::log(R) / std::log(10.0));
    const double Power = std::pow(10.0, E);
    const double M = R / Power;  // in [1, 10)
    // Tried from the top; the last test that holds wins, and each is strict.
    double Mantissa = 10;
    Divisions = 5;
    if (M < 5) Mantissa = 5;
    if (M < 4) Mantissa = 4;
    if (M < 2.5) {
        Mantissa = 2.5;
        Divisions = 4;
    }
    if (M < 2) {
        Mantissa = 2;
        Divisions = 5;
    }
    Step = Mantissa * Power;
}

namespace {

// The grid of one axis; the two axes differ only in scale, range and
// mapping, the direction of the lines and the place of the labels.
void DrawGrid(const GraphInfo& G, cPicture& Pic, double MinSpacing, bool IsX) {
    const double Max = IsX ? G.XMax : G.YMax;
    double Step = 0;
    int Divisions = 0;
    NiceStep(MinSpacing, IsX ? G.XScale : G.YScale, Step, Divisions);
    // The first major line at or below the minimum.
    double V = std::floor((IsX ? G.XMin : G.YMin) / (Divisions * Step)) * Divisions * Step;
    // An infinite limit would never be reached.
    if (!std::isfinite(V) || !std::isfinite(Max)) return;
    int Count = 0;
    while (V <= Max) {
        Pic.ForeColor = Count == 0 ? G.MajorColor : G.MinorColor;
        if (IsX) {
            const int PX = RoundPixel(GraphX(G, V));
            if (G.Left <= PX && PX <= G.Right) {
                Pic.Line(PX, G.Top, PX, G.Bottom);
                if (Count == 0)
                    PlaceText(Pic, PX, G.Bottom + 3, 1, 0, G.LabelColor, RoundedText(V, 4), true);
            }
        } else {
            const int PY = RoundPixel(GraphY(G, V));
            if (G.Top <= PY && PY <= G.Bottom) {
                Pic.Line(G.Left, PY, G.Right, PY);
                if (Count == 0)
                    PlaceText(Pic, G.Left - 5, PY, 2, 1, G.LabelColor, RoundedText(V, 4), true);
            }
        }
        // A step below the resolution of the values (a range a few units of
        // the last digit wide) would leave V where it is for ever.
        const double Next = V + Step;
        if (!(Next > V)) break;
        V = Next;
        Count = Count + 1;
        if (Count == Divisions) Count = 0;
    }
}

}  // namespace

void DrawXGrid(const GraphInfo& G, cPicture& Pic, double MinSpacing) {
    DrawGrid(G, Pic, MinSpacing, true);
}

void DrawYGrid(const GraphInfo& G, cPicture& Pic, double MinSpacing) {
    DrawGrid(G, Pic, MinSpacing, false);
}

void DrawGraphFrame(const GraphInfo& G, cPicture& Pic) {
    Pic.ForeColor = G.FrameColor;
    Pic.Line(G.Left, G.Top, G.Left, G.Bottom);
    Pic.Line(G.Left, G.Bottom, G.Right, G.Bottom);
    Pic.Line(G.Right, G.Bottom, G.Right, G.Top);
    Pic.Line(G.Right, G.Top, G.Left, G.Top);
}

void PlaceText(cPicture& Pic, int X, int Y, int HAlign, int VAlign, long Color,
               const std::string& Text, bool Check) {
    const int TW = Pic.TextWidth(Text);
    const int TH = Pic.TextHeight(Text);
    auto offset = [](int Align, int Size) {
        if (Align == 1) return RoundPixel(Size / 2.0);
        return Align == 2 ? Size : 0;
    };
    const int L = X - offset(HAlign, TW);
    const int T = Y - offset(VAlign, TH);
    if (Check) {
        // Anything drawn there, of any colour, keeps the text out; so does
        // the edge of the picture, whose outside reads as -1.
        for (int x = L - 2; x <= L + TW + 2; ++x) {
            for (int y = T; y <= T + TH; ++y) {
                if (Pic.Point(x, y) != Pic.BackColor) return;
            }
        }
    }
    Pic.ForeColor = Color;
    Pic.Print(L, T, Text);
}

void DrawGraphTitle(const GraphInfo& G, cPicture& Pic, const std::string& Text) {
    Pic.ForeColor = G.TitleColor;
    Pic.Print((G.Left + G.Right) / 2.0 - Pic.TextWidth(Text) / 2.0, 3, Text);
}

void DrawXTitle(const GraphInfo& G, cPicture& Pic, const std::string& Text) {
    PlaceText(Pic, RoundPixel((G.Left + G.Right) / 2.0), G.Bottom + 20, 1, 0, G.TitleColor, Text,
              false);
}

void DrawYTitle(const GraphInfo& G, cPicture& Pic, const std::string& Text) {
    const int Centre = RoundPixel((G.Top + G.Bottom) / 2.0);
    // Measured in the picture's ordinary font, not the rotated one.
    const int Y = RoundPixel(Centre + Pic.TextWidth(Text) * 0.5);
    PrintRotated(Pic, Text, 4, Y, "Arial", 14, 1, 900, false, false, false);
}

void PrintRotated(cPicture& Pic, const std::string& Text, int X, int Y, const std::string& FontName,
                  int Height, int Weight, int Angle, bool Italic, bool Underline, bool StrikeOut) {
    QFont Font(QString::fromStdString(FontName));
    // Where the face is missing, the nearest sans face of the system.
    Font.setStyleHint(QFont::SansSerif);
    Font.setPixelSize(Height);
    // Qt's weights run on the same scale, 400 normal and 700 bold; 0 asks
    // for no particular weight.
    Font.setWeight(Weight > 0 ? static_cast<QFont::Weight>(std::min(Weight, 1000)) : QFont::Normal);
    Font.setItalic(Italic);
    Font.setUnderline(Underline);
    Font.setStrikeOut(StrikeOut);
    Pic.PrintTurned(X, Y, Text, Font, Angle / 10.0);
}
