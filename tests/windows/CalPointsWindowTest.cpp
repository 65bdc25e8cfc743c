// The Calibration Points window as an operator uses it: "Use?" boxes and
// the buttons refitting with the main window following, rows marked by a
// press and deleted after the question, the table's cells and pixels, the
// resize rule; and the pictures of both table windows for the README.
#include <QCheckBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QtTest>

#include "windows/ProcessWindows.h"
#include "windows/TestRegistry.h"
#include "windows/fCalPoints.h"
#include "windows/fErrors.h"

namespace {

QCheckBox* UseBox(fCalPoints& w, int Row) {
    return w.findChild<QCheckBox*>(QStringLiteral("chkUse_%1").arg(Row));
}

bool RowHasRed(const cPicture& Pic, int Row) {
    for (int y = RowTop(Row) + 1; y < RowTop(Row) + 20; ++y)
        for (int x = 11; x < 580; ++x)
            if (PixelAt(Pic, x, y) == (Rgb{255, 0, 0})) return true;
    return false;
}

void PressRow(fCalPoints& w, int Row, Qt::MouseButton Button) {
    QTest::mousePress(w.picInner, Button, Qt::NoModifier, QPoint(300, RowTop(Row) + 5));
}

}  // namespace

class CalPointsWindowTest : public QObject {
    Q_OBJECT
  private slots:
    // A box or button of the window refits once, and the main window's
    // figures follow: "Selected Points" fills once a point is out.
    void UseBoxesRefitAndTheMainWindowFollows() {
        auto s = ClientModel(5);
        ProcessWindows p(*s);
        fMain& m = p.Windows().Main.Get();
        p.chain.CalibrateAndDisplay();
        m.cmdCalPoints->click();
        fCalPoints& w = *p.Windows().CalPoints.IfLoaded();
        QVERIFY(w.isVisible());
        QCOMPARE(m.lblNum->text(), QStringLiteral("5/5"));
        const struct {
            std::function<void()> Act;
            QString Num;
        } steps[] = {{[&w] { QTest::mouseClick(UseBox(w, 1), Qt::LeftButton); }, "4/5"},
                     {[&w] { QTest::mouseClick(UseBox(w, 3), Qt::LeftButton); }, "3/5"},
                     {[&w] { QTest::mouseClick(UseBox(w, 1), Qt::LeftButton); }, "4/5"},
                     {[&w] { w.cmdNone->click(); }, "0/5"},
                     {[&w] { w.cmdAll->click(); }, "5/5"}};
        for (const auto& step : steps) {
            const int fits = p.display.Fits;
            step.Act();
            QCOMPARE(p.display.Fits, fits + 1);
            QCOMPARE(m.lblNum->text(), step.Num);
            QCOMPARE(m.lblRMSSelected->text().isEmpty(), step.Num == "5/5");
            for (int r = 0; r < 5; ++r)
                QCOMPARE(UseBox(w, r)->isChecked(), s->CalPoints[r + 1].Used);
        }
    }

    // Rows marked by a press of any button turn red and enable "Delete";
    // "Yes" deletes them and refits, "No" leaves points and marks alone.
    void DeleteAfterTheQuestion() {
        const struct {
            std::vector<int> Rows;
            QMessageBox::StandardButton Answer;
            QString Question;
            QStringList Left;
        } cases[] = {
            {{1, 3},
             QMessageBox::Yes,
             "You have selected 2 stars to delete.  Proceed?",
             {"d1", "d3", "d5"}},
            {{2},
             QMessageBox::No,
             "You have selected 1 star to delete.  Proceed?",
             {"d1", "d2", "d3", "d4", "d5"}},
        };
        for (const auto& c : cases) {
            auto s = ClientModel(5);
            ProcessWindows p(*s);
            p.chain.CalibrateAndDisplay();
            fCalPoints& w = p.Windows().CalPoints.Get();
            Qt::MouseButton button = Qt::LeftButton;
            for (int r : c.Rows) {
                PressRow(w, r, button);
                button = Qt::RightButton;
                QVERIFY(RowHasRed(w.picInner->Picture(), r));
            }
            QVERIFY(!RowHasRed(w.picInner->Picture(), 0));
            QVERIFY(w.cmdDel->isEnabled());
            QString question, title;
            WhenModal<QMessageBox>([&](QMessageBox* box) {
                question = box->text();
                title = box->windowTitle();
                box->button(c.Answer)->click();
            });
            w.cmdDel->click();
            QCOMPARE(question, c.Question);
            QCOMPARE(title, QStringLiteral("Confirm Delete"));
            QStringList left;
            for (int i = 1; i <= s->NumCalPoints; ++i)
                left << QString::fromStdString(s->CalPoints[i].DateStr);
            QCOMPARE(left, c.Left);
            const bool kept = c.Answer == QMessageBox::No;
            QCOMPARE(std::count(w.RowSelected.begin(), w.RowSelected.end(), true),
                     kept ? long(c.Rows.size()) : 0L);
            QCOMPARE(w.cmdDel->isEnabled(), kept);
            QCOMPARE(p.Windows().Main.Get().lblNum->text(),
                     QStringLiteral("%1/%1").arg(c.Left.size()));
        }
    }

    // Cells worked out by hand: Theta from -half to +half a turn, Phi from
    // 0 to a full turn, the error with one decimal below 1000".
    void CellsOfAPoint() {
        auto s = FreshModel();
        const struct {
            double Theta, Phi, ErrArcsec;
            std::string WantTheta, WantPhi, WantErr;
        } cases[] = {
            {-0.5, 1.0, 999.94, "-28° 38' 52\"", "57° 17' 45\"", "999.9\""},
            {4.0, -1.0, 1000.4, "-130° 49' 01\"", "302° 42' 15\"", "1000\""},
        };
        for (const auto& c : cases) {
            CalPoint& pt = s->CalPoints[3];
            pt.AxisTheta = c.Theta;
            pt.AxisPhi = c.Phi;
            pt.DistErr = Arcsec(c.ErrArcsec);
            const auto cells = CalPointCells(*s, 3);
            QCOMPARE(cells[0], std::string(" 3"));
            QCOMPARE(cells[5], c.WantTheta);
            QCOMPARE(cells[6], c.WantPhi);
            QCOMPARE(cells[7], c.WantErr);
        }
    }

    // The table's frame, grid and colours, the row under a press, and the
    // picture's size; the boxes stand on their rows.
    void TableGeometry() {
        auto s = ClientModel(2);
        ProcessWindows p(*s);
        fCalPoints& w = p.Windows().CalPoints.Get();
        const cPicture& pic = w.picInner->Picture();
        QCOMPARE(QSize(pic.ScaleWidth(), pic.ScaleHeight()), QSize(645, 85));
        const struct {
            int x, y;
            Rgb want;
        } pixels[] = {{5, 5, {250, 250, 250}},   {20, 35, {210, 210, 210}},
                      {35, 20, {210, 210, 210}}, {580, 50, {210, 210, 210}},
                      {10, 50, {0, 0, 0}},       {644, 50, {0, 0, 0}},
                      {300, 12, {0, 0, 0}},      {300, 75, {0, 0, 0}}};
        for (const auto& px : pixels) QCOMPARE(RgbText(PixelAt(pic, px.x, px.y)), RgbText(px.want));
        QCOMPARE(UseBox(w, 1)->geometry().topLeft(), QPoint(585, 57));
        const int rows[][2] = {{34, -1}, {35, 0}, {55, 0}, {56, 1}, {75, 2}};
        for (const auto& r : rows) QCOMPARE(RowAt(r[0]), r[1]);
        PressRow(w, 2, Qt::LeftButton);  // below the last row
        QVERIFY(!w.cmdDel->isEnabled());
    }

    // The frame fills the window but for the buttons' strip, which keeps its
    // distance from the bottom; the table scrolls sideways only while it is
    // wider than the frame.
    void ResizeKeepsTheButtonsDown() {
        auto s = ClientModel(5);
        ProcessWindows p(*s);
        p.Windows().CalPoints.Show();
        fCalPoints& w = *p.Windows().CalPoints.IfLoaded();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QCOMPARE(w.size(), QSize(586, 365));
        QVERIFY(w.picOuter->horizontalScrollBar()->isVisible());
        w.resize(900, 600);
        QTRY_COMPARE(w.cmdDel->y(), 570);
        QCOMPARE(w.picOuter->geometry(), QRect(5, 5, 895, 565));
        QCOMPARE(w.Label1->y(), 575);
        QTRY_VERIFY(!w.picOuter->horizontalScrollBar()->isVisible());
    }

    // The two windows over the shipped sample, as the README shows them:
    // one point taken out and one row marked.
    void ScreenshotsForTheReadme() {
        auto s = std::make_unique<ModelState>();
        fMain m(*s);
        QVERIFY(m.OpenCalibrationFile(QT_TESTCASE_SOURCEDIR "/../data/sample.AZT"));
        m.cmdCalPoints->click();
        m.cmdMountErrors->click();
        WindowSet& set = m.Windows();
        fCalPoints& c = *set.CalPoints.IfLoaded();
        c.resize(675, fCalPoints::kInnerHeight);  // every column in sight
        QTest::mouseClick(UseBox(c, 4), Qt::LeftButton);
        PressRow(c, 6, Qt::LeftButton);
        fErrors& e = *set.Errors.IfLoaded();
        QVERIFY(QTest::qWaitForWindowExposed(&e));
        QVERIFY(e.grab().save(QT_TESTCASE_SOURCEDIR "/../docs/model-parameters.png"));
        QVERIFY(c.grab().save(QT_TESTCASE_SOURCEDIR "/../docs/calibration-points.png"));
    }
};
AZTRUE_REGISTER_TEST(CalPointsWindowTest);

#include "CalPointsWindowTest.moc"
