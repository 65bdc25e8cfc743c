// The plots against pixels worked out by hand. The main window's are 309
// pixels inside: W = 308, C = 154, the target's R = round(154 * 0.825) = 127,
// the map's Rim = 154 * 0.86 = 132.44.
#include "windows/AnalysisGraph.h"
#include "windows/SkyPlots.h"
#include "windows/StarDots.h"
#include "windows/WindowsTestSupport.h"

namespace {

constexpr int C = 154;
const Rgb kGrey{60, 60, 60}, kBlack{0, 0, 0};
const Rgb kYellow{255, 255, 131}, kPink{255, 99, 246}, kBlue{82, 82, 255};  // dot centres

// Rows below the centre where column C + 1 is lit: off the axis by one pixel
// it meets each circle once, at C + radius (x = r for a circle's first rows).
QString RingRadii(const cPicture& pic) {
    QStringList rows;
    for (int y = C + 2; y < pic.ScaleHeight(); ++y)
        if (!(PixelAt(pic, C + 1, y) == kBlack)) rows << QString::number(y - C);
    return rows.join(' ');
}

// Whether the text's box at (X, Y), but the axis row C, is lit just where
// Text alone would light it.
bool TextAt(const cPicture& plot, int X, int Y, const std::string& Text) {
    cPicture ref(plot.ScaleWidth(), plot.ScaleHeight());
    ref.ForeColor = RGB(60, 60, 60);
    ref.Print(X, Y, Text);
    for (int y = Y; y < Y + ref.TextHeight(Text); ++y)
        for (int x = X; x < X + ref.TextWidth(Text) && y != C; ++x)
            if ((PixelAt(ref, x, y) == kBlack) != (PixelAt(plot, x, y) == kBlack)) return false;
    return true;
}

// The largest error in radians that the plot reads as exactly Arcminutes.
double ExactArcmin(double Arcminutes) {
    double v = Arcmin(Arcminutes);
    while (v * 180 * 60 / kHalfTurn > Arcminutes) v = std::nextafter(v, 0.0);
    while (v * 180 * 60 / kHalfTurn < Arcminutes) v = std::nextafter(v, 1.0);
    return v;
}

}  // namespace

class PlotsTest : public QObject {
    Q_OBJECT
  private slots:
    // Rings at R * T / full scale, rounded, a label at (C + radius + 2, C -
    // 13). 80' by 20': 31.75, 63.5, 95.25, 127 -> 32, 64 (to even), 95, 127.
    // Exactly 2' is 120" by 40": 42.33, 84.67, 127. Just above 2', exactly
    // 20' and below 0.084': 63.5, 127. "Selected Points" scales by MaxErrSel.
    void RingsAndLabelsOfEachScale() {
        const double two = ExactArcmin(2);
        const struct {
            double All, Sel;
            bool ScaleAll;
            const char* Rings;
            int LabelX;
            std::string Label;
        } cases[] = {{Arcmin(50), 0, true, "32 64 95 127", 188, "20'"},
                     {Arcmin(30), Arcmin(70), false, "32 64 95 127", 188, "20'"},
                     {two, 0, true, "42 85 127", 198, "40\""},
                     {std::nextafter(two, 1.0), 0, true, "64 127", 220, "2'"},
                     {ExactArcmin(20), 0, true, "64 127", 283, "20'"},
                     {Arcsec(4), 0, true, "64 127", 220, "2.5\""}};
        for (const auto& c : cases) {
            auto s = FreshModel();
            s->MaxErrAll = c.All;
            s->MaxErrSel = c.Sel;
            cSkyPlots plots;
            cPicture pic(309, 309);
            plots.DrawError(*s, pic, c.ScaleAll);
            QCOMPARE(RingRadii(pic), c.Rings);
            QVERIFY2(TextAt(pic, c.LabelX, C - 13, c.Label), c.Label.c_str());
        }
    }

    // An error E lies E * 127 / full scale pixels from the centre, right and
    // down when positive; alt-az reads Phi and Theta errors, equatorial RA
    // and Dec. On 40': 10', -5' -> 154 + 31.75, 154 - 15.875. On 15" (for
    // 12"): 6", -3" -> 154 + 50.8, 154 - 25.4. Dot centres have the gain
    // 2.7^0.5 = 1.64317: (255, 255, 80) used with AxisTheta >= 0 -> (255,
    // 255, 131), (255, 60, 150) used below -> (255, 99, 246), (50, 50, 255)
    // out -> (82, 82, 255). 1e-9 covers the angle's trip through radians.
    void DotsWhereTheErrorsPutThem() {
        const double m = Arcmin(1);
        const struct {
            bool AltAz;
            double Big, Phi, Theta, Ra, Dec, Axis;
            bool Used;
            double X, Y;
            Rgb Centre;
        } cases[] = {
            {true, 30 * m, 10 * m, -5 * m, m, m, 0, true, 185.75, 138.125, kYellow},
            {true, 30 * m, -8 * m, 24 * m, m, m, -1e-12, true, 128.6, 230.2, kPink},
            {true, 30 * m, -24 * m, -16 * m, m, m, -0.4, false, 77.8, 103.2, kBlue},
            {false, 30 * m, 5 * m, 5 * m, -20 * m, 12 * m, 0.3, true, 90.5, 192.1, kYellow},
            {true, Arcsec(12), Arcsec(6), Arcsec(-3), 0, 0, 0.3, true, 204.8, 128.6, kYellow}};
        for (const auto& c : cases) {
            auto s = FreshModel();
            s->IsAltAz = c.AltAz;
            s->MaxErrAll = c.Big;
            s->NumCalPoints = 1;
            CalPoint& p = s->CalPoints[1];
            std::tie(p.PhiErr, p.ThetaErr, p.RAErr, p.DecErr, p.AxisTheta, p.Used) =
                std::tuple(c.Phi, c.Theta, c.Ra, c.Dec, c.Axis, c.Used);
            cSkyPlots plots;
            cPicture pic(309, 309);
            plots.DrawError(*s, pic, true);
            CHECK_NEAR(plots.StarX[1], c.X, 1e-9);
            CHECK_NEAR(plots.StarY[1], c.Y, 1e-9);
            QCOMPARE(PixelAt(pic, int(std::lround(c.X)), int(std::lround(c.Y))), c.Centre);
        }
    }

    // The sky map: 45 degrees from the zenith is half the rim out, north up at
    // 87.78, west left; the horizon due south at 286.44. The program's pi, 4.1e-10
    // off, moves a point by 5.4e-8 pixel at most. Rings of Rim, 0.667, 0.333 Rim.
    void SkyMapPoints() {
        auto s = FreshModel();
        s->NumCalPoints = 3;
        const struct {
            double Theta, Phi, Axis;
            bool Used;
            double X, Y;
            Rgb Centre;
        } pts[] = {{kHalfTurn / 4, 0, 1, true, C, 87.78, kYellow},
                   {kHalfTurn / 4, kHalfTurn / 2, -1, true, 87.78, C, kPink},
                   {kHalfTurn / 2, kHalfTurn, 1, false, C, 286.44, kBlue}};
        for (int i = 1; i <= 3; ++i) {
            CalPoint& p = s->CalPoints[i];
            std::tie(p.SkyTheta, p.SkyPhi, p.AxisTheta, p.Used) =
                std::tuple(pts[i - 1].Theta, pts[i - 1].Phi, pts[i - 1].Axis, pts[i - 1].Used);
        }
        cSkyPlots plots;
        cPicture pic(309, 309);
        plots.DrawGeo(*s, pic);
        for (int i = 1; i <= 3; ++i) {
            CHECK_NEAR(plots.StarX[i], pts[i - 1].X, 1e-6);
            CHECK_NEAR(plots.StarY[i], pts[i - 1].Y, 1e-6);
            QCOMPARE(PixelAt(pic, int(std::lround(pts[i - 1].X)), int(std::lround(pts[i - 1].Y))),
                     pts[i - 1].Centre);
        }
        s->NumCalPoints = 0;
        plots.DrawGeo(*s, pic);
        QCOMPARE(RingRadii(pic), "44 88 132");
    }

    // A press takes the nearest dot nearer than 5 pixels, the lower of a tie.
    void PressFindsTheNearestDotWithinFivePixels() {
        std::array<double, 1001> x{}, y{};
        std::tie(x[1], y[1], x[2], y[2], x[3], y[3], x[4], y[4]) =
            std::tuple(157, 150, 151, 150, 154, 153, 200, 200);
        const struct {
            double X, Y;
            int Want;
        } presses[] = {{154, 150, 1},  // 3 from stars 1, 2 and 3
                       {153, 150, 2},  // 2 from star 2, 4 from star 1
                       {205, 200, 0},  // exactly 5
                       {203, 204, 0},  // 5 as a 3-4-5 triangle
                       {203, 203, 4},  // 4.24
                       {204.9, 200, 4}};
        for (const auto& p : presses) QCOMPARE(DotUnderMouse(x, y, 4, p.X, p.Y), p.Want);
        QCOMPARE(DotUnderMouse(x, y, 3, 200, 200), 0);  // only the first N count
    }

    // By hand: R = Spacing / Scale, E = floor(log10 R), M = R / 10^E; the
    // tests M < 5, < 4, < 2.5, < 2 are strict, the last that holds wins.
    void NiceStepAtTheEdgesOfItsTable() {
        const struct {
            double Spacing, Scale, Step;
            int Divisions;
        } cases[] = {{10, 5, 2.5, 4}, {10, 8, 2, 5},  {10, 4, 4, 5},   {10, 2.5, 5, 5},
                     {10, 2, 10, 5},  {10, 1, 20, 5}, {8, 0.2, 50, 5}, {5, 10, 1, 5}};
        for (const auto& c : cases) {
            double step = 0;
            int div = 0;
            NiceStep(c.Spacing, c.Scale, step, div);
            CHECK_NEAR(step, c.Step, 1e-12 * c.Step);  // 10^E exact or within an ulp
            QCOMPARE(div, c.Divisions);
        }
    }

    // On 300 by 236: X -10..30 degrees widened 5 % to -12..32 on 60..280 (5
    // px/degree), Y -20..20" widened to -22..22 on 196..20 (4 px/"). Steps
    // 2.5 (R = 10/5 = 8/4 = 2): major lines at x = 70, y = 148, minor at x =
    // 95, y = 178; the frame over them.
    void DotsGridAndFrameWhereTheHandPutsThem() {
        auto s = FreshModel();
        s->NumCalPoints = 3;
        const double pts[3][2] = {{-10, -20}, {10, 0}, {30, 20}};
        for (int i = 1; i <= 3; ++i) {
            s->CalPoints[i].AxisTheta = Deg(pts[i - 1][0]);
            s->CalPoints[i].ThetaErr = Arcsec(pts[i - 1][1]);
            s->CalPoints[i].Used = i != 3;
        }
        cPicture pic(300, 236);
        cAnalysisGraph g;
        g.MakeGraph(*s, pic, {AnalysisY::ThetaError, AnalysisX::Theta, true});
        const Rgb major{47, 47, 47}, minor{24, 24, 24}, frame{160, 160, 160};
        QCOMPARE(WrongPixels(pic, {{{70, 188}, kPink},
                                   {{170, 108}, kYellow},
                                   {{270, 28}, kBlue},
                                   {{70, 100}, major},
                                   {{150, 148}, major},
                                   {{95, 100}, minor},
                                   {{150, 178}, minor},
                                   {{60, 100}, frame},
                                   {{280, 50}, frame},
                                   {{150, 20}, frame},
                                   {{150, 196}, frame},
                                   {{100, 100}, kBlack}}),
                 QString());
    }
};
QTEST_MAIN(PlotsTest)

#include "PlotsTest.moc"
