// Every plot of a fit as a picture of its own, for a report or a log book:
// the main window's target of the errors and its sky map, and the six
// residual graphs, drawn by the windows' own code, the graphs scaled by all
// points.
#pragma once

#include <QImage>
#include <string>
#include <vector>

struct ModelState;

struct PlotPicture {
    std::string FileName;  // "errors.png", "positions.png", "analysis-<Y>-vs-<X>.png"
    QImage Image;
};

// Size: side of the sky plots and width of the graphs, in pixels, the
// graphs keeping the shape of the window's plot; 0 gives the sizes of the
// windows' plots. Needs a QGuiApplication for the fonts.
std::vector<PlotPicture> DrawPlotPictures(const ModelState& s, int Size);
