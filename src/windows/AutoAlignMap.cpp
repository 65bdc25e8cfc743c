#include "windows/AutoAlignMap.h"

#include <algorithm>
#include <cmath>

#include "autoalign/AlignPoints.h"
#include "files/TestLogList.h"
#include "model/Constants.h"
#include "model/Frames.h"
#include "model/ModelState.h"
#include "sky/NumberText.h"
#include "sky/Rounding.h"

namespace {

// An azimuth of the skyline table as the index of its entry.
int TableIndex(double Az) {
    return std::clamp(static_cast<int>(Az), 0, kHorizonTableSize - 1);
}

}  // namespace

void AutoAlignMap::AnglesToScreen(double Theta, double Phi, double& X, double& Y) const {
    const double a = -Phi - kHalfTurn / 2;
    X = RoundHalfEven(Cx - std::cos(a) * PlotR * Theta / (kHalfTurn / 2));
    Y = RoundHalfEven(Cy + std::sin(a) * PlotR * Theta / (kHalfTurn / 2));
}

void AutoAlignMap::ScreenToAngles(double X, double Y, double& Theta, double& Phi) const {
    const double dx = X - Cx;
    const double dy = Y - Cy;
    Theta = std::sqrt(dx * dx + dy * dy) / PlotR * kHalfTurn / 2;
    Phi = -(kHalfTurn / 2 + Atan2(dy, -dx));
    if (Phi < 0) Phi = Phi + kFullTurn;
}

void AutoAlignMap::PlotPoint(cPicture& Pic, double Theta, double Phi, long Color,
                             const std::string& Label) const {
    double X = 0;
    double Y = 0;
    AnglesToScreen(Theta, Phi, X, Y);
    Pic.ForeColor = Color;
    Pic.Circle(X, Y, 2);
    Pic.Print(X + 2, Y + 2, Label);
}

void AutoAlignMap::DrawAlignPoints(const ModelState& s, cPicture& Pic) const {
    const int n = std::clamp(s.NumAutoAlign, 0, kAutoAlignTableSize);
    for (int i = 0; i < n; ++i) {
        const AutoAlignPoint& p = s.AutoAlignPoints[i];
        PlotPoint(Pic, p.Theta, p.Phi, RGB(255, 255, 0), IntText(p.Index));
    }
}

void AutoAlignMap::DrawHorizon(const ModelState& s, cPicture& Pic) const {
    Pic.ForeColor = RGB(0, 255, 0);
    const HorizonRecord& h = s.Horizon;
    const int n = std::clamp<int>(h.Num, 0, kHorizonTableSize - 1);
    for (int i = 0; i < n; ++i) {
        const double A1 = h.Az[i];
        const double A2 = i >= 359 ? 0 : h.Az[i + 1];
        // The elevations to whole degrees: the line joins whole-degree places.
        const double E1 = RoundHalfEven(h.El[TableIndex(A1)]);
        const double E2 = RoundHalfEven(h.El[TableIndex(A2)]);
        double X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
        AnglesToScreen((90 - E1) * kHalfTurn / 180, A1 * kHalfTurn / 180, X1, Y1);
        AnglesToScreen((90 - E2) * kHalfTurn / 180, A2 * kHalfTurn / 180, X2, Y2);
        Pic.Line(X1, Y1, X2, Y2);
    }
}

void AutoAlignMap::DrawCP(const ModelState& s, cPicture& Pic) const {
    const Vec3 pole = CelestialPole(s);
    double Theta = 0;
    double Phi = 0;
    VecToAngles(pole, 1, Theta, Phi);
    AddTestLogLine(s, "DrawCP: " + NumberText(s.Latitude) + "  " + RoundedText(pole.x, 5) + "  " +
                          RoundedText(pole.y, 5) + "  " + RoundedText(pole.z, 5) + "  " +
                          RoundedText(Theta, 5) + "  " + RoundedText(Phi, 5));
    double X = 0;
    double Y = 0;
    AnglesToScreen(Theta, Phi, X, Y);
    Pic.ForeColor = RGB(255, 0, 0);
    Pic.Line(X - 5, Y, X + 5, Y);
    Pic.Line(X, Y - 5, X, Y + 5);
}

void AutoAlignMap::Draw(const ModelState& s, cPicture& Pic) {
    Pic.BackColor = RGB(0, 0, 32);
    Pic.Cls();
    Cx = Pic.ScaleWidth() / 2.0;
    Cy = Pic.ScaleHeight() / 2.0;
    PlotR = 0.95 * Cx;

    Pic.ForeColor = RGB(150, 150, 150);
    Pic.Circle(Cx, Cy, PlotR);
    const double d = 0.73 * PlotR;
    Pic.Print(Cx + d, Cy + d, "SE");
    Pic.Print(Cx - (d + 12), Cy + d + 3, "SW");
    Pic.Print(Cx - (d + 12), Cy - (d + 12), "NW");
    Pic.Print(Cx + d, Cy - (d + 12), "NE");

    // Spokes every 15 degrees of azimuth; those every 45 run to the centre,
    // the others stop 15 degrees from the zenith. Then the elevation rings.
    Pic.ForeColor = RGB(80, 80, 80);
    for (int i = 0; i <= 23; ++i) {
        const double a = i * kHalfTurn / 12;
        const double inner = RoundHalfEven((i % 3 == 0 ? 0 : 15) * PlotR / 90);
        Pic.Line(Cx + std::cos(a) * PlotR, Cy + std::sin(a) * PlotR, Cx + std::cos(a) * inner,
                 Cy + std::sin(a) * inner);
    }
    for (int z = 15; z <= 75; z += 15) Pic.Circle(Cx, Cy, RoundHalfEven(z * PlotR / 90));

    DrawCP(s, Pic);
    DrawAlignPoints(s, Pic);
    DrawHorizon(s, Pic);
}
