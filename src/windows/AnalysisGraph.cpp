#include "windows/AnalysisGraph.h"

#include <algorithm>
#include <cstdint>

#include "model/Constants.h"
#include "model/ModelState.h"
#include "windows/StarDots.h"

namespace {

// The quantities of a point in radians.
double XRadians(const CalPoint& p, AnalysisX X) {
    switch (X) {
        case AnalysisX::Phi:
            return p.AxisPhi;
        case AnalysisX::ZenithDistance:
            return p.SkyTheta;
        case AnalysisX::Theta:
            break;
    }
    return p.AxisTheta;
}

double YRadians(const CalPoint& p, AnalysisY Y) {
    return Y == AnalysisY::PhiError ? p.PhiErr : p.ThetaErr;
}

// Units of the plot, each product taken left to right as written.
double Degrees(double Radians) {
    return Radians * 180 / kHalfTurn;
}

double Arcseconds(double Radians) {
    return Radians * 180 / kHalfTurn * 3600;
}

}  // namespace

std::string AxisTitle(AnalysisX X) {
    switch (X) {
        case AnalysisX::Phi:
            return "Phi (degrees from north)";
        case AnalysisX::ZenithDistance:
            return "Zenith Distance (degrees)";
        case AnalysisX::Theta:
            break;
    }
    return "Theta (degrees from the primary axis)";
}

std::string AxisTitle(AnalysisY Y) {
    return Y == AnalysisY::PhiError ? "Phi Error (arcseconds)" : "Theta Error (arcseconds)";
}

void cAnalysisGraph::MakeGraph(const ModelState& s, cPicture& Pic, const AnalysisOptions& Options) {
    const int N = std::clamp(static_cast<int>(s.NumCalPoints), 0, kMaxCalPoints);
    auto point = [&s](int i) -> const CalPoint& { return s.CalPoints[static_cast<size_t>(i)]; };

    // The range of the chosen points, in radians, then in the plot's units.
    double XMin = 1E+30, YMin = 1E+30, XMax = -1E+30, YMax = -1E+30;
    for (int i = 1; i <= N; ++i) {
        if (!point(i).Used && !Options.ScaleAll) continue;
        const double X = XRadians(point(i), Options.X);
        const double Y = YRadians(point(i), Options.Y);
        if (Y < YMin) YMin = Y;
        if (Y > YMax) YMax = Y;
        if (X < XMin) XMin = X;
        if (X > XMax) XMax = X;
    }
    XMin = Degrees(XMin);
    XMax = Degrees(XMax);
    YMin = Arcseconds(YMin);
    YMax = Arcseconds(YMax);

    const double DX = XMax - XMin;
    const double DY = YMax - YMin;
    XMax += 0.05 * DX;
    XMin -= 0.05 * DX;
    YMax += 0.05 * DY;
    YMin -= 0.05 * DY;

    Pic.Cls();
    InitGraph(Graph);
    SetGraphRange(Graph, XMin, YMin, XMax, YMax);
    SetGraphMargins(Graph, 60, 20, 20, 40);
    SetGraphCanvas(Graph, Pic.ScaleWidth(), Pic.ScaleHeight());
    SetGraphLog(Graph, false, false);
    ScaleGraph(Graph);

    DrawXGrid(Graph, Pic, 10);
    DrawYGrid(Graph, Pic, 8);
    DrawGraphFrame(Graph, Pic);

    // Every point, used or not; all positions first, then all dots.
    std::array<std::array<int16_t, 3>, 1001> Color{};
    for (int i = 1; i <= N; ++i) {
        auto& c = Color[static_cast<size_t>(i)];
        GetStarColor(s, i, c[0], c[1], c[2]);
        const double X = Degrees(XRadians(point(i), Options.X));
        const double Y = Arcseconds(YRadians(point(i), Options.Y));
        StarX[static_cast<size_t>(i)] = RoundPixel(GraphX(Graph, X));
        StarY[static_cast<size_t>(i)] = RoundPixel(GraphY(Graph, Y));
    }
    for (int i = 1; i <= N; ++i) {
        const auto& c = Color[static_cast<size_t>(i)];
        DrawStarDot(Pic, static_cast<int>(StarX[static_cast<size_t>(i)]),
                    static_cast<int>(StarY[static_cast<size_t>(i)]), c[0], c[1], c[2]);
    }

    DrawXTitle(Graph, Pic, AxisTitle(Options.X));
    DrawYTitle(Graph, Pic, AxisTitle(Options.Y));
    DrawGraphTitle(Graph, Pic, "Error Analysis");
}
