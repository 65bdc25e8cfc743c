// The graph toolkit and the residual graph, pixel by pixel: round steps at
// the edges of their table, a graph of known points whose dots, grid and
// frame sit where a hand calculation puts them, labels that give way on a
// crowded axis, and the anchor and direction of turned text.
#include <QtTest>

#include "windows/AnalysisGraph.h"
#include "windows/TestRegistry.h"
#include "windows/WindowsTestSupport.h"

namespace {

const Rgb kBlack{0, 0, 0};

// Radians from degrees with the program's pi.
double Deg(double d) {
    return d * kHalfTurn / 180;
}

}  // namespace

class GraphTest : public QObject {
    Q_OBJECT
  private slots:
    // By hand: R = Spacing / Scale, E = floor(log10 R), M = R / 10^E; the
    // tests M < 5, < 4, < 2.5, < 2 are strict, the last that holds wins.
    void NiceStepAtTheEdgesOfItsTable() {
        const struct {
            double Spacing, Scale, Step;
            int Divisions;
        } cases[] = {
            {10, 5, 2.5, 4},  // R = 2: M exactly 2 is not below 2
            {10, 8, 2, 5},    // R = 1.25
            {10, 4, 4, 5},    // R = 2.5: exactly 2.5 is not below 2.5
            {10, 2.5, 5, 5},  // R = 4: exactly 4 gives 5
            {10, 2, 10, 5},   // R = 5: exactly 5 fails every test
            {10, 1, 20, 5},   // R = 10: E = 1, M = 1
            {8, 0.2, 50, 5},  // R = 40: E = 1, M = 4
            {5, 10, 1, 5},    // R = 0.5: E = -1, M = 5, step 10 x 0.1
        };
        for (const auto& c : cases) {
            double step = 0;
            int div = 0;
            NiceStep(c.Spacing, c.Scale, step, div);
            // 10^E of the library is exact or within an ulp for these.
            QVERIFY2(std::abs(step - c.Step) <= 1e-12 * c.Step,
                     qPrintable(QString("R %1: wanted %2, got %3")
                                    .arg(c.Spacing / c.Scale)
                                    .arg(c.Step)
                                    .arg(step)));
            QCOMPARE(div, c.Divisions);
        }
    }

    // Three points on a 300 by 236 canvas, worked out by hand. X from -10
    // to 30 degrees widens by 5 % to -12..32: plot 60..280, 5 px/degree.
    // Y from -20 to 20 arcseconds widens to -22..22: plot 196..20, 4 px per
    // arcsecond. With "Selected Points" (point 3 out) the range is -10..10
    // and -20..0, widened to -11..11 and -21..1: 10 and 8 px per unit.
    void DotsGridAndFrameWhereTheHandPutsThem() {
        auto s = FreshModel();
        s->NumCalPoints = 3;
        const double pts[3][2] = {{-10, -20}, {10, 0}, {30, 20}};
        for (int i = 1; i <= 3; ++i) {
            s->CalPoints[i].AxisTheta = Deg(pts[i - 1][0]);
            s->CalPoints[i].ThetaErr = Deg(pts[i - 1][1] / 3600);
            s->CalPoints[i].Used = i != 3;
        }
        cPicture pic(300, 236);
        cAnalysisGraph g;
        g.MakeGraph(*s, pic, {AnalysisY::ThetaError, AnalysisX::Theta, true});
        const int want[3][2] = {{70, 188}, {170, 108}, {270, 28}};
        // Dot centres at gain 2.7^0.5 = 1.6432: pink (255, 60, 150) used
        // below the axis, yellow (255, 255, 80) above, blue (50, 50, 255) out.
        const Rgb centre[3] = {{255, 99, 246}, {255, 255, 131}, {82, 82, 255}};
        for (int i = 1; i <= 3; ++i) {
            QCOMPARE(QPointF(g.StarX[i], g.StarY[i]), QPointF(want[i - 1][0], want[i - 1][1]));
            QCOMPARE(RgbText(PixelAt(pic, want[i - 1][0], want[i - 1][1])), RgbText(centre[i - 1]));
        }
        // Steps 2.5 on both axes (R = 10/5 and 8/4 = 2), major lines every
        // 10: x = 70 (-10), y = 148 (-10); minor x = 95 (-5), y = 178
        // (-17.5); the frame over the grid.
        const struct {
            int x, y;
            Rgb want;
        } pixels[] = {
            {70, 100, {47, 47, 47}},    {150, 148, {47, 47, 47}},    {95, 100, {24, 24, 24}},
            {150, 178, {24, 24, 24}},   {60, 100, {160, 160, 160}},  {280, 50, {160, 160, 160}},
            {150, 20, {160, 160, 160}}, {150, 196, {160, 160, 160}}, {100, 100, kBlack}};
        for (const auto& p : pixels) QCOMPARE(RgbText(PixelAt(pic, p.x, p.y)), RgbText(p.want));

        // The range of the used points only; point 3 is still placed.
        g.MakeGraph(*s, pic, {AnalysisY::ThetaError, AnalysisX::Theta, false});
        const int sel[3][2] = {{70, 188}, {270, 28}, {470, -132}};
        for (int i = 1; i <= 3; ++i)
            QCOMPARE(QPointF(g.StarX[i], g.StarY[i]), QPointF(sel[i - 1][0], sel[i - 1][1]));

        // One point: the range is empty, the graph fails, dots go to (0, 0).
        s->NumCalPoints = 1;
        g.MakeGraph(*s, pic, {AnalysisY::ThetaError, AnalysisX::Theta, true});
        QVERIFY(g.Graph.Failed);
        QCOMPARE(QPointF(g.StarX[1], g.StarY[1]), QPointF(0, 0));
        QCOMPARE(RgbText(PixelAt(pic, 60, 100)), RgbText({160, 160, 160}));
    }

    // Major lines every 20 px (range 1000..1026 at 10 px per unit, step
    // 0.4 for a spacing of 3 px) with labels wider than that: each label
    // is either whole and alone or not there at all, the lowest stays.
    void CrowdedLabelsGiveWay() {
        GraphInfo g;
        InitGraph(g);
        SetGraphCanvas(g, 300, 60);
        SetGraphMargins(g, 20, 10, 20, 30);
        SetGraphRange(g, 1000, 0, 1026, 1);
        ScaleGraph(g);
        cPicture pic(300, 60);
        DrawXGrid(g, pic, 3);
        const int top = g.Bottom + 3;
        cPicture alone(300, 60);  // the labels found whole in the graph
        int drawn = 0, lastRight = -100;
        for (int k = 0; k <= 13; ++k) {
            const std::string text = std::to_string(1000 + 2 * k);
            cPicture one(300, 60);
            PlaceText(one, 20 + 20 * k, top, 1, 0, g.LabelColor, text, false);
            int left = 300, right = -1;  // ink columns of the label alone
            for (int x = 0; x < 300; ++x)
                for (int y = top; y < 60; ++y)
                    if (!(PixelAt(one, x, y) == kBlack)) {
                        left = std::min(left, x);
                        right = x;
                    }
            bool whole = true;
            for (int x = left; x <= right; ++x)
                for (int y = top; y < 60; ++y)
                    whole = whole && PixelAt(one, x, y) == PixelAt(pic, x, y);
            QVERIFY(k > 0 || whole);
            if (!whole) continue;
            ++drawn;
            // The box checked is 2 columns wider than the text each side.
            QVERIFY2(left - lastRight >= 3, qPrintable(QString("label %1 touches").arg(k)));
            lastRight = right;
            PlaceText(alone, 20 + 20 * k, top, 1, 0, g.LabelColor, text, false);
        }
        QVERIFY(drawn >= 2 && drawn < 14);
        // Below the frame there is nothing but the whole labels.
        for (int y = g.Bottom + 1; y < 60; ++y)
            for (int x = 0; x < 300; ++x)
                QCOMPARE(RgbText(PixelAt(pic, x, y)), RgbText(PixelAt(alone, x, y)));
    }

    // At 900 tenths of a degree the text reads upward from its anchor: a
    // single letter lies right of the anchor and above it, within the
    // height of the font.
    void TurnedTextReadsUpwardFromItsAnchor() {
        cPicture pic(100, 100);
        pic.ForeColor = RGB(200, 208, 240);
        PrintRotated(pic, "I", 50, 60, "Arial", 14, 1, 900, false, false, false);
        int lit = 0;
        for (int y = 0; y < 100; ++y) {
            for (int x = 0; x < 100; ++x) {
                if (PixelAt(pic, x, y) == kBlack) continue;
                ++lit;
                QVERIFY2(x >= 50 && x <= 64 && y >= 46 && y <= 60,
                         qPrintable(QString("ink at %1, %2").arg(x).arg(y)));
            }
        }
        QVERIFY(lit > 3);
    }
};
AZTRUE_REGISTER_TEST(GraphTest);

#include "GraphTest.moc"
