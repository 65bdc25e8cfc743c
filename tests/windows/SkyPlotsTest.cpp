// The sky plots, checked pixel by pixel on a picture the size of the main
// window's plot (313 pixels with a 2-pixel border: 309 inside, so W = 308,
// C = 154, the target's R = round(154 * 0.825) = 127 and the map's
// Rim = 154 * 0.86 = 132.44).
#include <QtTest>
#include <cmath>
#include <set>

#include "windows/SkyPlots.h"
#include "windows/StarDots.h"
#include "windows/TestRegistry.h"
#include "windows/WindowsTestSupport.h"

namespace {

constexpr int kInner = 309;
constexpr int C = 154;
const Rgb kGrey{60, 60, 60};
const Rgb kBlack{0, 0, 0};

// Rows below the centre where column C + 1 is lit. Off the vertical axis by
// one pixel, this column meets each circle once below the centre, at
// C + radius, since the midpoint circle keeps x = r for the first rows.
std::set<int> LitRowsBelowCentre(const cPicture& pic, int FromRow) {
    std::set<int> rows;
    for (int y = FromRow; y < pic.ScaleHeight(); ++y) {
        if (!(PixelAt(pic, C + 1, y) == kBlack)) rows.insert(y - C);
    }
    return rows;
}

// Whether the text drawn at (X, Y) in the plot is Text: every pixel of the
// text's box, outside the rows in SkipRows, is lit in the plot exactly where
// the text alone lights it on a blank picture.
bool TextMatches(const cPicture& plot, int X, int Y, const std::string& Text,
                 const std::set<int>& SkipRows = {}) {
    cPicture ref(plot.ScaleWidth(), plot.ScaleHeight());
    ref.ForeColor = RGB(60, 60, 60);
    ref.Print(X, Y, Text);
    const int w = ref.TextWidth(Text);
    const int h = ref.TextHeight(Text);
    for (int y = Y; y < Y + h; ++y) {
        if (SkipRows.count(y)) continue;
        for (int x = X; x < X + w; ++x) {
            if ((PixelAt(ref, x, y) == kBlack) != (PixelAt(plot, x, y) == kBlack)) return false;
        }
    }
    return true;
}

int LitPixels(const cPicture& pic) {
    int n = 0;
    for (int y = 0; y < pic.ScaleHeight(); ++y)
        for (int x = 0; x < pic.ScaleWidth(); ++x) n += PixelAt(pic, x, y) == kBlack ? 0 : 1;
    return n;
}

}  // namespace

class SkyPlotScaleTest : public QObject {
    Q_OBJECT
  private slots:
    // Each row of the scale table at and just beyond its limit.
    void RowsAtTheirLimits() {
        struct Case {
            double Big, Full, Step;
            const char* Unit;
        };
        const Case cases[] = {
            {1000, 80, 20, "'"},   {40.001, 80, 20, "'"}, {40, 40, 20, "'"},
            {20.001, 40, 20, "'"}, {20, 20, 10, "'"},     {10, 10, 5, "'"},
            {4.001, 10, 5, "'"},   {4, 4, 2, "'"},        {2.000001, 4, 2, "'"},
            {2, 120, 40, "\""},    {1, 60, 20, "\""},     {0.5, 30, 10, "\""},
            {0.25, 15, 5, "\""},   {0.2, 15, 5, "\""},    {0.167, 10, 5, "\""},
            {0.1, 10, 5, "\""},    {0.084, 5, 2.5, "\""}, {0, 5, 2.5, "\""},
        };
        for (const Case& c : cases) {
            const ErrorScale sc = ErrorScaleFor(c.Big);
            const QByteArray where = "Big = " + QByteArray::number(c.Big, 'g', 17);
            QVERIFY2(sc.FullScale == c.Full, where + " full " + QByteArray::number(sc.FullScale));
            QVERIFY2(sc.Step == c.Step, where + " step " + QByteArray::number(sc.Step));
            QVERIFY2(sc.Unit == c.Unit, where + " unit " + QByteArray(sc.Unit.c_str()));
        }
    }
};
AZTRUE_REGISTER_TEST(SkyPlotScaleTest);

class DrawErrorTest : public QObject {
    Q_OBJECT
  private:
    // A model whose largest error is Big (in radians), no points.
    static std::unique_ptr<ModelState> Scaled(double MaxErr) {
        auto s = FreshModel();
        s->MaxErrAll = MaxErr;
        s->MaxErrSel = MaxErr;
        return s;
    }

    static cPicture Draw(const ModelState& s, cSkyPlots& plots, bool all = true) {
        cPicture pic(kInner, kInner);
        plots.DrawError(s, pic, all);
        return pic;
    }

    // The largest error in radians whose size in arcminutes, as the plot
    // works it out, is exactly Arcminutes.
    static double ExactArcmin(double Arcminutes) {
        double v = Arcmin(Arcminutes);
        while (v * 180 * 60 / kHalfTurn > Arcminutes) v = std::nextafter(v, 0.0);
        while (v * 180 * 60 / kHalfTurn < Arcminutes) v = std::nextafter(v, 1.0);
        return v;
    }

  private slots:
    // Rings at R * T / full scale, rounded: 80' in steps of 20' gives 31.75,
    // 63.5, 95.25, 127 -> 32, 64 (the tie goes to the even 64), 95, 127.
    // The outer circle of radius R coincides with the last ring.
    void RingsOfEightyArcminutes() {
        auto s = Scaled(Arcmin(50));
        cSkyPlots plots;
        const cPicture pic = Draw(*s, plots);
        QCOMPARE(LitRowsBelowCentre(pic, C + 2), (std::set<int>{32, 64, 95, 127}));
        QCOMPARE(PixelAt(pic, C + 1, C + 127), kGrey);
    }

    // An error of exactly 2 arcminutes switches to arcseconds with full scale
    // 120" and step 40": rings at 42.33, 84.67, 127 -> 42, 85, 127. Just above
    // it the scale is 4' in steps of 2': rings at 63.5, 127 -> 64, 127.
    void ExactlyTwoArcminutesSwitchesToArcseconds() {
        const double two = ExactArcmin(2);
        QCOMPARE(two * 180 * 60 / kHalfTurn, 2.0);
        cSkyPlots plots;
        auto s = Scaled(two);
        cPicture pic = Draw(*s, plots);
        QCOMPARE(LitRowsBelowCentre(pic, C + 2), (std::set<int>{42, 85, 127}));
        // Labels at (C + Rad + 2, C - 13): 154 + 42.33 + 2 = 198.33 -> 198, and
        // 154 + 84.67 + 2 = 240.67 -> 241. The axis row C crosses them.
        QVERIFY(TextMatches(pic, 198, C - 13, "40\"", {C}));
        QVERIFY(TextMatches(pic, 241, C - 13, "80\"", {C}));
        QVERIFY(!TextMatches(pic, 198, C - 13, "40'", {C}));

        auto above = Scaled(std::nextafter(two, 1.0));
        pic = Draw(*above, plots);
        QCOMPARE(LitRowsBelowCentre(pic, C + 2), (std::set<int>{64, 127}));
        QVERIFY(TextMatches(pic, 220, C - 13, "2'", {C}));
    }

    // Exactly 20 arcminutes uses the row of full scale 20 (rings 64, 127 and
    // labels 10', 20'), not 40.
    void ExactlyTwentyArcminutesUsesFullScaleTwenty() {
        auto s = Scaled(ExactArcmin(20));
        cSkyPlots plots;
        const cPicture pic = Draw(*s, plots);
        QCOMPARE(LitRowsBelowCentre(pic, C + 2), (std::set<int>{64, 127}));
        QVERIFY(TextMatches(pic, 220, C - 13, "10'", {C}));
        QVERIFY(TextMatches(pic, 283, C - 13, "20'", {C}));
    }

    // Below 0.084' the step is 2.5": rings at 63.5 -> 64 and 127, labels
    // "2.5"" at 154 + 63.5 + 2 = 219.5 -> 220 (half to even) and "5"" at 283.
    void StepOfTwoAndAHalfArcseconds() {
        auto s = Scaled(Arcsec(4));
        cSkyPlots plots;
        const cPicture pic = Draw(*s, plots);
        QCOMPARE(LitRowsBelowCentre(pic, C + 2), (std::set<int>{64, 127}));
        QVERIFY(TextMatches(pic, 220, C - 13, "2.5\"", {C}));
        QVERIFY(TextMatches(pic, 283, C - 13, "5\"", {C}));
        QVERIFY(!TextMatches(pic, 220, C - 13, "3\"", {C}));
    }

    // The option "Selected Points" scales by MaxErrSel instead of MaxErrAll.
    void SelectedPointsScaleByMaxErrSel() {
        auto s = FreshModel();
        s->MaxErrAll = Arcmin(30);  // 40' in steps of 20': rings 64, 127
        s->MaxErrSel = Arcmin(70);  // 80' in steps of 20'
        cSkyPlots plots;
        QCOMPARE(LitRowsBelowCentre(Draw(*s, plots, true), C + 2), (std::set<int>{64, 127}));
        QCOMPARE(LitRowsBelowCentre(Draw(*s, plots, false), C + 2),
                 (std::set<int>{32, 64, 95, 127}));
    }

    // The axes run from 5 to W - 5 = 303 through the centre; the texts are
    // "Phi" and "Theta" for an alt-az mount, "RA" and "Dec" otherwise.
    void AxesAndAxisNames() {
        auto s = Scaled(Arcmin(50));
        cSkyPlots plots;
        cPicture pic = Draw(*s, plots);
        QCOMPARE(PixelAt(pic, C, 5), kGrey);
        QCOMPARE(PixelAt(pic, C, 4), kBlack);
        QCOMPARE(PixelAt(pic, C, 303), kGrey);
        QCOMPARE(PixelAt(pic, C, 304), kBlack);
        QCOMPARE(PixelAt(pic, 5, C), kGrey);
        QCOMPARE(PixelAt(pic, 4, C), kBlack);
        QCOMPARE(PixelAt(pic, 303, C), kGrey);
        QVERIFY(TextMatches(pic, 4, C - 14, "Phi", {C}));
        QVERIFY(TextMatches(pic, C + 4, 6, "Theta"));
        s->IsAltAz = false;
        pic = Draw(*s, plots);
        QVERIFY(TextMatches(pic, 4, C - 14, "RA", {C}));
        QVERIFY(TextMatches(pic, C + 4, 6, "Dec"));
    }

    // Three points on the 40' scale (MaxErrAll 30'): an error of E arcminutes
    // lies E * 127 / 40 pixels from the centre. The dots land on the rounded
    // positions, StarX and StarY keep the fractions:
    //   1: Phi 10', Theta -5'  -> (154 + 31.75, 154 - 15.875) -> dot (186, 138)
    //   2: Phi -8', Theta 24'  -> (154 - 25.4, 154 + 76.2)    -> dot (129, 230)
    //   3: Phi -24', Theta -16' -> (154 - 76.2, 154 - 50.8)   -> dot (78, 103)
    // Positive errors go right and down. The 1e-9 tolerance covers the
    // round trip of the angle through radians.
    void DotPositionsAndColours() {
        auto s = Scaled(Arcmin(30));
        s->NumCalPoints = 3;
        const double errs[4][2] = {{0, 0}, {10, -5}, {-8, 24}, {-24, -16}};
        for (int i = 1; i <= 3; ++i) {
            s->CalPoints[i].PhiErr = Arcmin(errs[i][0]);
            s->CalPoints[i].ThetaErr = Arcmin(errs[i][1]);
            s->CalPoints[i].RAErr = Arcmin(1);  // must not be read for alt-az
            s->CalPoints[i].DecErr = Arcmin(1);
        }
        s->CalPoints[1].Used = true;
        s->CalPoints[1].AxisTheta = 0.3;
        s->CalPoints[2].Used = true;
        s->CalPoints[2].AxisTheta = -0.2;
        s->CalPoints[3].Used = false;
        s->CalPoints[3].AxisTheta = 0.4;
        cSkyPlots plots;
        const cPicture pic = Draw(*s, plots);

        const double wantX[4] = {0, 185.75, 128.6, 77.8};
        const double wantY[4] = {0, 138.125, 230.2, 103.2};
        for (int i = 1; i <= 3; ++i) {
            QVERIFY2(
                std::fabs(plots.StarX[i] - wantX[i]) < 1e-9,
                QByteArray::number(i) + ": StarX " + QByteArray::number(plots.StarX[i], 'g', 17));
            QVERIFY2(
                std::fabs(plots.StarY[i] - wantY[i]) < 1e-9,
                QByteArray::number(i) + ": StarY " + QByteArray::number(plots.StarY[i], 'g', 17));
        }

        // Centres have the gain 2.7^0.5 = 1.64317: used and AxisTheta >= 0 is
        // (255, 255, 80) -> (255, 255, 131.45 -> 131); used and AxisTheta < 0 is
        // (255, 60, 150) -> (255, 98.59 -> 99, 246.48 -> 246); not used is
        // (50, 50, 255) -> (82.16 -> 82, 82, 255). One pixel off the centre
        // the gain is 1, two pixels off 2.7^-1.5 = 0.225399.
        QCOMPARE(PixelAt(pic, 186, 138), (Rgb{255, 255, 131}));
        QCOMPARE(PixelAt(pic, 187, 138), (Rgb{255, 255, 80}));
        QCOMPARE(PixelAt(pic, 186, 136), (Rgb{57, 57, 18}));
        QCOMPARE(PixelAt(pic, 129, 230), (Rgb{255, 99, 246}));
        QCOMPARE(PixelAt(pic, 129, 231), (Rgb{255, 60, 150}));
        QCOMPARE(PixelAt(pic, 78, 103), (Rgb{82, 82, 255}));
        QCOMPARE(PixelAt(pic, 77, 103), (Rgb{50, 50, 255}));
        // The dot is 7 by 7: nothing of it four pixels from the centre.
        QCOMPARE(PixelAt(pic, 190, 138), kBlack);
        QCOMPARE(PixelAt(pic, 186, 142), kBlack);
    }

    // On an equatorial mount the dots follow RAErr and DecErr.
    void EquatorialUsesRaAndDecErrors() {
        auto s = Scaled(Arcmin(30));
        s->IsAltAz = false;
        s->NumCalPoints = 1;
        s->CalPoints[1].Used = true;
        s->CalPoints[1].RAErr = Arcmin(-20);  // -63.5 px
        s->CalPoints[1].DecErr = Arcmin(12);  // 38.1 px
        s->CalPoints[1].PhiErr = Arcmin(5);
        cSkyPlots plots;
        Draw(*s, plots);
        QVERIFY(std::fabs(plots.StarX[1] - (C - 63.5)) < 1e-9);
        QVERIFY(std::fabs(plots.StarY[1] - (C + 38.1)) < 1e-9);
    }

    // On an arcsecond scale the offsets are 60 times larger: with MaxErrAll
    // 12" (0.2', full scale 15") an error of 6" lies 6 * 127 / 15 = 50.8 px out.
    void ArcsecondScaleMultipliesBySixty() {
        auto s = Scaled(Arcsec(12));
        s->NumCalPoints = 1;
        s->CalPoints[1].Used = true;
        s->CalPoints[1].PhiErr = Arcsec(6);
        s->CalPoints[1].ThetaErr = Arcsec(-3);  // -25.4 px
        cSkyPlots plots;
        const cPicture pic = Draw(*s, plots);
        QVERIFY(std::fabs(plots.StarX[1] - (C + 50.8)) < 1e-9);
        QVERIFY(std::fabs(plots.StarY[1] - (C - 25.4)) < 1e-9);
        QCOMPARE(PixelAt(pic, 205, 129), (Rgb{255, 255, 131}));
    }

    // A dot centred on the bottom of the outer ring (Theta error 40' on the
    // 40' scale: 127 px down, on the vertical axis too). Where the dot is dim
    // the grey ring shows through in every channel; near the centre the dot
    // wins: at 3 px the gain is 2.7^-4 = 0.0188, yellow gives (4.8, 4.8, 1.5),
    // below the ring's 60.
    void DotOverRingKeepsTheGrey() {
        auto s = Scaled(Arcmin(30));
        s->NumCalPoints = 1;
        s->CalPoints[1].Used = true;
        s->CalPoints[1].ThetaErr = Arcmin(40);
        cSkyPlots plots;
        const cPicture pic = Draw(*s, plots);
        QCOMPARE(PixelAt(pic, C + 3, C + 127), kGrey);
        QCOMPARE(PixelAt(pic, C - 3, C + 127), kGrey);
        QCOMPARE(PixelAt(pic, C, C + 127 + 3), kGrey);  // the vertical axis
        QCOMPARE(PixelAt(pic, C + 1, C + 127), (Rgb{255, 255, 80}));
        QCOMPARE(PixelAt(pic, C, C + 127), (Rgb{255, 255, 131}));
        // Off the ring and the axis the corner of the dot is black: 255 *
        // 2.7^-8.5 = 0.055 rounds to 0.
        QCOMPARE(PixelAt(pic, C + 3, C + 127 - 3), kBlack);
    }

    // Without points the plot is its frame alone, and it is drawn the same
    // way every time.
    void EmptyPlotIsFrameOnly() {
        auto s = Scaled(0);
        cSkyPlots plots;
        const cPicture a = Draw(*s, plots);
        const cPicture b = Draw(*s, plots);
        QVERIFY(a.Image() == b.Image());
        QVERIFY(LitPixels(a) > 0);
    }
};
AZTRUE_REGISTER_TEST(DrawErrorTest);

class DrawGeoTest : public QObject {
    Q_OBJECT
  private slots:
    // Rings of Rim, Rim * 0.667 and Rim * 0.333 with Rim = 132.44: radii
    // 132.44 -> 132, 88.34 -> 88, 44.10 -> 44.
    void ThreeRings() {
        auto s = FreshModel();
        cSkyPlots plots;
        cPicture pic(kInner, kInner);
        plots.DrawGeo(*s, pic);
        QCOMPARE(LitRowsBelowCentre(pic, C + 2), (std::set<int>{44, 88, 132}));
    }

    // Spokes at 45, 135, 225 and 315 degrees out to the rim: the one down
    // and right ends at 154 + 132.44 * cos(45 deg) = 247.65 -> 248.
    void DiagonalSpokes() {
        auto s = FreshModel();
        cSkyPlots plots;
        cPicture pic(kInner, kInner);
        plots.DrawGeo(*s, pic);
        for (int k = 1; k <= 94; ++k) {
            QCOMPARE(PixelAt(pic, C + k, C + k), kGrey);
            QCOMPARE(PixelAt(pic, C - k, C + k), kGrey);
            QCOMPARE(PixelAt(pic, C - k, C - k), kGrey);
            QCOMPARE(PixelAt(pic, C + k, C - k), kGrey);
        }
        QCOMPARE(PixelAt(pic, C + 95, C + 95), kBlack);
        QCOMPARE(PixelAt(pic, C + 50, C + 51), kBlack);
    }

    // Compass letters: "W" left at (7, C - 14), "N" top at (C + 4, 5), "E"
    // right at (W - 13, C - 14), "S" bottom at (C + 4, W - 17).
    void CompassLetters() {
        auto s = FreshModel();
        cSkyPlots plots;
        cPicture pic(kInner, kInner);
        plots.DrawGeo(*s, pic);
        QVERIFY(TextMatches(pic, 7, C - 14, "W", {C}));
        QVERIFY(TextMatches(pic, C + 4, 5, "N"));
        QVERIFY(TextMatches(pic, 308 - 13, C - 14, "E", {C}));
        QVERIFY(TextMatches(pic, C + 4, 308 - 17, "S"));
        QVERIFY(!TextMatches(pic, C + 4, 5, "S"));
    }

    // A point 45 degrees from the zenith (Rho = 0.5) lies half the rim out:
    // SkyPhi 0 (north) straight up, at StarY = 154 - 66.22 = 87.78; SkyPhi 90
    // degrees (west) to the left. A point on the horizon due south sits on
    // the rim at the bottom, 154 + 132.44 = 286.44. The program's pi lies
    // 4.1e-10 above the true one, so sin(pi) is -4.1e-10 and moves a point
    // by up to 132.44 * 4.1e-10 = 5.4e-8 pixel: hence the tolerance 1e-6.
    void PolarPositions() {
        auto s = FreshModel();
        s->NumCalPoints = 3;
        s->CalPoints[1] = CalPoint{};
        s->CalPoints[1].Used = true;
        s->CalPoints[1].SkyTheta = kHalfTurn / 4;
        s->CalPoints[1].SkyPhi = 0;
        s->CalPoints[2].Used = true;
        s->CalPoints[2].AxisTheta = -1;
        s->CalPoints[2].SkyTheta = kHalfTurn / 4;
        s->CalPoints[2].SkyPhi = kHalfTurn / 2;
        s->CalPoints[3].Used = false;
        s->CalPoints[3].SkyTheta = kHalfTurn / 2;
        s->CalPoints[3].SkyPhi = kHalfTurn;
        cSkyPlots plots;
        cPicture pic(kInner, kInner);
        plots.DrawGeo(*s, pic);

        QVERIFY(std::fabs(plots.StarX[1] - C) < 1e-6);
        QVERIFY(std::fabs(plots.StarY[1] - 87.78) < 1e-6);
        QVERIFY(std::fabs(plots.StarX[2] - 87.78) < 1e-6);
        QVERIFY(std::fabs(plots.StarY[2] - C) < 1e-6);
        QVERIFY(std::fabs(plots.StarX[3] - C) < 1e-6);
        QVERIFY(std::fabs(plots.StarY[3] - 286.44) < 1e-6);

        QCOMPARE(PixelAt(pic, C, 88), (Rgb{255, 255, 131}));
        QCOMPARE(PixelAt(pic, 88, C), (Rgb{255, 99, 246}));
        QCOMPARE(PixelAt(pic, C, 286), (Rgb{82, 82, 255}));
    }
};
AZTRUE_REGISTER_TEST(DrawGeoTest);

class StarDotTest : public QObject {
    Q_OBJECT
  private slots:
    // Not used is blue whatever the sign of AxisTheta; AxisTheta = 0 counts
    // as the positive side.
    void Colours() {
        auto s = FreshModel();
        int16_t r = 0, g = 0, b = 0;
        s->CalPoints[1].Used = true;
        s->CalPoints[1].AxisTheta = 0;
        GetStarColor(*s, 1, r, g, b);
        QCOMPARE((Rgb{r, g, b}), (Rgb{255, 255, 80}));
        s->CalPoints[1].AxisTheta = -1e-12;
        GetStarColor(*s, 1, r, g, b);
        QCOMPARE((Rgb{r, g, b}), (Rgb{255, 60, 150}));
        s->CalPoints[1].Used = false;
        GetStarColor(*s, 1, r, g, b);
        QCOMPARE((Rgb{r, g, b}), (Rgb{50, 50, 255}));
        s->CalPoints[1].AxisTheta = 1;
        GetStarColor(*s, 1, r, g, b);
        QCOMPARE((Rgb{r, g, b}), (Rgb{50, 50, 255}));
    }

    // Each channel keeps the brighter of the dot and the old pixel. Gains:
    // 2.7^0.5 = 1.643168 at the centre, 1 at distance 1, 2.7^-1.5 = 0.225399
    // at distance 2, 2.7^-8.5 = 0.000215 in the corner.
    void BlendKeepsTheBrighterChannel() {
        const long grey = RGB(60, 60, 60);
        QCOMPARE(BlendDotPixel(0, 0, 255, 255, 80, 0), RGB(255, 255, 131));
        QCOMPARE(BlendDotPixel(0, 0, 255, 255, 80, grey), RGB(255, 255, 131));
        QCOMPARE(BlendDotPixel(1, 0, 50, 50, 255, grey), RGB(60, 60, 255));
        QCOMPARE(BlendDotPixel(-2, 0, 50, 50, 255, grey), RGB(60, 60, 60));
        QCOMPARE(BlendDotPixel(0, 2, 50, 50, 255, 0), RGB(11, 11, 57));
        QCOMPARE(BlendDotPixel(3, 3, 50, 50, 255, grey), grey);
        QCOMPARE(BlendDotPixel(1, 1, 255, 60, 150, RGB(10, 200, 30)), RGB(155, 200, 91));
        // The -1 of a pixel outside the picture gives a colour all the same.
        QCOMPARE(BlendDotPixel(0, 0, 50, 50, 255, -1), RGB(82, 82, 255));
    }

    // Two overlapping dots: the brighter channel of either stays.
    void OverlappingDots() {
        cPicture pic(20, 20);
        DrawStarDot(pic, 8, 10, 255, 60, 150);
        DrawStarDot(pic, 10, 10, 50, 50, 255);
        // (9, 10) is 1 px from both: max of (255, 60, 150) and (50, 50, 255).
        QCOMPARE(PixelAt(pic, 9, 10), (Rgb{255, 60, 255}));
        // Dots at the edge are drawn as far as they fall inside.
        DrawStarDot(pic, 0, 0, 255, 255, 80);
        QCOMPARE(PixelAt(pic, 0, 0), (Rgb{255, 255, 131}));
    }
};
AZTRUE_REGISTER_TEST(StarDotTest);

#include "SkyPlotsTest.moc"
