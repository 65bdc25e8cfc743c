// mGraph: a small charting toolkit on a cPicture. It maps data to pixels
// (linear or logarithmic on each axis), draws a grid with round steps and
// numeric labels that keep clear of what is already drawn, a frame, a title
// and the two axis titles, the Y title rotated. Colours suit a dark
// background.
//
// Calling order: InitGraph, the setters in any order, ScaleGraph, then the
// drawing. The record belongs to the window that draws; it holds no pointers.
#pragma once

#include <string>

#include "windows/Picture.h"

struct GraphInfo {
    int Left = 0, Top = 0, Right = 0, Bottom = 0;   // plot rectangle, pixels
    int PlotWidth = 0, PlotHeight = 0;              // Right - Left, Bottom - Top
    int CanvasHeight = 0, CanvasWidth = 0;          // size of the picture
    double XMin = 0, XMax = 0, YMin = 0, YMax = 0;  // data range
    int LeftMargin = 0, RightMargin = 0, TopMargin = 0, BottomMargin = 0;
    // Pixels per data unit, or per unit of natural logarithm on a
    // logarithmic axis.
    double XScale = 0, YScale = 0;
    bool XLog = false, YLog = false;
    // A range was empty: all mapping gives 0.
    bool Failed = false;
    long FrameColor = 0, MinorColor = 0, MajorColor = 0, LabelColor = 0, TitleColor = 0;
};

// A pixel coordinate rounded to a whole number, halves to even; values
// beyond kFarPixel either way, and NaN, are held at a pixel that no picture
// has.
inline constexpr int kFarPixel = 1000000;
int RoundPixel(double Value);

// Margins 40 left and 20 elsewhere, Failed false, and the colours: frame
// and labels RGB(160,160,160), major grid RGB(47,47,47), minor grid
// RGB(24,24,24), titles RGB(200,208,240).
void InitGraph(GraphInfo& G);
void SetGraphCanvas(GraphInfo& G, int Width, int Height);
void SetGraphMargins(GraphInfo& G, int Left, int Top, int Right, int Bottom);
void SetGraphRange(GraphInfo& G, double XMin, double YMin, double XMax, double YMax);
void SetGraphLog(GraphInfo& G, bool XLog, bool YLog);

// Works out the plot rectangle from canvas and margins and the scales from
// the range, unless the graph has already failed. An empty range (span not
// above 0) sets Failed. A scale that is exactly 0 afterwards, old or new,
// becomes 1, so that a failed graph still has usable scales for the grid.
void ScaleGraph(GraphInfo& G);

// Pixel position of a data value, unrounded; 0 when the graph failed. Y
// pixels grow downward while the data grows upward.
double GraphX(const GraphInfo& G, double Value);
double GraphY(const GraphInfo& G, double Value);

// The smallest round step at least Spacing pixels wide on an axis of Scale
// pixels per unit: Step is the fine grid spacing in data units, 2, 2.5, 4,
// 5 or 10 times a power of ten, and Divisions the number of fine steps in
// one major step (4 with 2.5, else 5).
void NiceStep(double Spacing, double Scale, double& Step, int& Divisions);

// Grid lines at least MinSpacing pixels apart, major lines labelled with
// their value rounded to 4 decimals, below the plot (X) or left of it (Y).
void DrawXGrid(const GraphInfo& G, cPicture& Pic, double MinSpacing);
void DrawYGrid(const GraphInfo& G, cPicture& Pic, double MinSpacing);

// The plot rectangle in FrameColor: left, bottom, right, top edge.
void DrawGraphFrame(const GraphInfo& G, cPicture& Pic);

// The graph's title, centred above the plot, 3 pixels from the top.
void DrawGraphTitle(const GraphInfo& G, cPicture& Pic, const std::string& Text);
// The X axis title, centred 20 pixels below the plot.
void DrawXTitle(const GraphInfo& G, cPicture& Pic, const std::string& Text);
// The Y axis title, reading from bottom to top, centred on the plot, 4
// pixels from the left edge, in the picture's present foreground colour.
void DrawYTitle(const GraphInfo& G, cPicture& Pic, const std::string& Text);

// Text placed by its anchor (X, Y): HAlign 0 left edge, 1 centre, 2 right
// edge; VAlign 0 top, 1 centre, 2 bottom. With Check, the text is left out
// if any pixel of its box, widened by 2 columns each side, differs from the
// background: labels drawn later give way to those drawn before.
void PlaceText(cPicture& Pic, int X, int Y, int HAlign, int VAlign, long Color,
               const std::string& Text, bool Check);

// Text rotated by Angle tenths of a degree counter-clockwise (900: reading
// upward), its unrotated top left corner at (X, Y), in a face named
// FontName (or the nearest sans face the system has) Height pixels high,
// Weight on the scale where 400 is normal and 1 the lightest, in the
// picture's foreground colour.
void PrintRotated(cPicture& Pic, const std::string& Text, int X, int Y, const std::string& FontName,
                  int Height, int Weight, int Angle, bool Italic, bool Underline, bool StrikeOut);
