// The scatter plot of the Graphical Error Analysis: the residual of every
// calibration point, in arcseconds, against an axis of the mount, in
// degrees, on the graph toolkit. The window and the plot command draw with
// this same code.
#pragma once

#include <array>
#include <string>

#include "windows/Graph.h"

struct ModelState;

// The quantity on the X axis: AxisTheta, AxisPhi or SkyTheta.
enum class AnalysisX { Theta, Phi, ZenithDistance };
// The quantity on the Y axis: ThetaErr or PhiErr.
enum class AnalysisY { ThetaError, PhiError };

struct AnalysisOptions {
    AnalysisY Y = AnalysisY::ThetaError;
    AnalysisX X = AnalysisX::Theta;
    // "All Points": the range from every point; else from the used ones.
    bool ScaleAll = true;
};

// The axis titles under and beside the plot.
std::string AxisTitle(AnalysisX X);
std::string AxisTitle(AnalysisY Y);

class cAnalysisGraph {
  public:
    GraphInfo Graph;
    // Where the last plot put CalPoint i, whole pixels of its picture, for
    // i from 1 to 1000; index 0 is not used.
    std::array<double, 1001> StarX{};
    std::array<double, 1001> StarY{};

    // Clears Pic and draws the whole plot: the range from the chosen points
    // with 5 % margins, grid, frame, a dot for every point, used or not, and
    // the titles. An empty or one-valued range fails the graph: only frame
    // and titles, and every dot at pixel (0, 0).
    void MakeGraph(const ModelState& s, cPicture& Pic, const AnalysisOptions& Options);
};
