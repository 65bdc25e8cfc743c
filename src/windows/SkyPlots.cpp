#include "windows/SkyPlots.h"

#include <cmath>
#include <cstdint>

#include "model/Constants.h"
#include "model/ModelState.h"
#include "sky/NumberText.h"
#include "sky/Rounding.h"
#include "windows/StarDots.h"

namespace {

const std::string kArcmin = "'";
const std::string kArcsec = "\"";

int Round(double v) {
    return static_cast<int>(RoundHalfEven(v));
}

// The dot of point i at C plus its offsets, rounded to whole pixels.
void DrawDot(const ModelState& s, cPicture& Pic, int i, int C, double DX, double DY) {
    int16_t Red = 0;
    int16_t Green = 0;
    int16_t Blue = 0;
    GetStarColor(s, i, Red, Green, Blue);
    DrawStarDot(Pic, C + Round(DX), C + Round(DY), Red, Green, Blue);
}

}  // namespace

ErrorScale ErrorScaleFor(double Big) {
    // Tried from the coarsest to the finest; the last row that holds counts.
    ErrorScale sc{80, 20, kArcmin};
    if (Big <= 40) sc = {40, 20, kArcmin};
    if (Big <= 20) sc = {20, 10, kArcmin};
    if (Big <= 10) sc = {10, 5, kArcmin};
    if (Big <= 4) sc = {4, 2, kArcmin};
    if (Big <= 2) sc = {120, 40, kArcsec};
    if (Big <= 1) sc = {60, 20, kArcsec};
    if (Big <= 0.5) sc = {30, 10, kArcsec};
    if (Big <= 0.25) sc = {15, 5, kArcsec};
    if (Big <= 0.167) sc = {10, 5, kArcsec};
    if (Big <= 0.084) sc = {5, 2.5, kArcsec};
    return sc;
}

void cSkyPlots::DrawError(const ModelState& s, cPicture& Pic, bool ScaleAll) {
    Pic.Cls();
    const int W = Pic.ScaleHeight() - 1;
    const int C = W / 2;
    const int R = Round(C * 0.825);
    Pic.ForeColor = GraphColor;

    Pic.Line(C, 5, C, W - 5);
    Pic.Line(5, C, W - 5, C);
    Pic.Circle(C, C, R);
    Pic.Print(4, C - 14, s.IsAltAz ? "Phi" : "RA");
    Pic.Print(C + 4, 6, s.IsAltAz ? "Theta" : "Dec");

    const double Big = (ScaleAll ? s.MaxErrAll : s.MaxErrSel) * 180 * 60 / kHalfTurn;
    const ErrorScale sc = ErrorScaleFor(Big);

    for (double T = sc.Step; T <= sc.FullScale; T += sc.Step) {
        const double Rad = R * T / sc.FullScale;
        Pic.Circle(C, C, Round(Rad));
        Pic.Print(C + Rad + 2, C - 13, NumberText(T) + sc.Unit);
    }

    for (int i = 1; i <= s.NumCalPoints; ++i) {
        const CalPoint& p = s.CalPoints[static_cast<size_t>(i)];
        const double Ex = s.IsAltAz ? p.PhiErr : p.RAErr;
        const double Ey = s.IsAltAz ? p.ThetaErr : p.DecErr;
        double DX = Ex * 60 * (180 / kHalfTurn) * R / sc.FullScale;
        double DY = Ey * 60 * (180 / kHalfTurn) * R / sc.FullScale;
        if (sc.Unit == kArcsec) {
            DX = DX * 60;
            DY = DY * 60;
        }
        StarX[static_cast<size_t>(i)] = C + DX;
        StarY[static_cast<size_t>(i)] = C + DY;
        DrawDot(s, Pic, i, C, DX, DY);
    }
}

void cSkyPlots::DrawGeo(const ModelState& s, cPicture& Pic) {
    Pic.Cls();
    const int W = Pic.ScaleHeight() - 1;
    const int C = W / 2;
    const double Rim = C * 0.86;
    Pic.ForeColor = GraphColor;

    Pic.Line(C, 5, C, W - 5);
    Pic.Line(5, C, W - 5, C);
    Pic.Circle(C, C, Rim);
    Pic.Circle(C, C, Rim * 0.667);
    Pic.Circle(C, C, Rim * 0.333);
    for (int I = 1; I <= 7; I += 2) {
        Pic.Line(C, C, C + Rim * std::cos(I * kHalfTurn / 4),
                 C + Rim * std::sin(I * kHalfTurn / 4));
    }
    Pic.Print(7, C - 14, "W");
    Pic.Print(C + 4, 5, "N");
    Pic.Print(W - 13, C - 14, "E");
    Pic.Print(C + 4, W - 17, "S");

    for (int i = 1; i <= s.NumCalPoints; ++i) {
        const CalPoint& p = s.CalPoints[static_cast<size_t>(i)];
        const double Rho = 2 * p.SkyTheta / kHalfTurn;
        const double DX = -Rho * std::sin(p.SkyPhi) * Rim;
        const double DY = -Rho * std::cos(p.SkyPhi) * Rim;
        StarX[static_cast<size_t>(i)] = C + DX;
        StarY[static_cast<size_t>(i)] = C + DY;
        DrawDot(s, Pic, i, C, DX, DY);
    }
}
