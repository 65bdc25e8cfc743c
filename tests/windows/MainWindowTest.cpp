// The main window over a real fit: its figures, a press on a dot that refits,
// a double-click as one press on each picture that takes presses, Save As and
// Open with their questions and messages; angles as text.
#include <algorithm>
#include <fstream>

#include "windows/CalPointsTable.h"
#include "windows/DisplayFigures.h"
#include "windows/WindowsTestSupport.h"

namespace {

// 40 points of an alt-az mount misaligned by 2e-3 rad to the north (6.8755')
// and 1.5e-3 rad to the east (5.1566'), with encoder offsets and a cone error.
std::unique_ptr<ModelState> SyntheticRun(double NoiseRMS) {
    auto s = FreshModel();
    EnableAltAz(*s);
    SyntheticMount m{.ErrorNorth = 2e-3,
                     .ErrorWest = -1.5e-3,
                     .ThetaEncOffset = 0.01,
                     .PhiEncOffset = -0.02,
                     .NoiseRMS = NoiseRMS,
                     .Seed = 11};
    m.TermCoef[5] = 8e-4;
    AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
    return s;
}

// The centre of point K's dot, in pixels of the picture.
QPoint Dot(const fMain& w, int K) {
    return {int(std::lround(w.Plots.StarX[K])), int(std::lround(w.Plots.StarY[K]))};
}

// Answers the next message box with Button, keeping its text in Text.
void Answer(QMessageBox::StandardButton Button, QString* Text = nullptr) {
    WhenModal<QMessageBox>([=](QMessageBox* box) {
        if (Text) *Text = box->text();
        box->button(Button)->click();
    });
}

}  // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
  private slots:
    // After the default reaction (fit, residuals, redraw) the window shows
    // the misalignment the points were made with. Without noise the fit
    // recovers it to about 1e-8 rad, well inside the 2 decimals shown.
    void FiguresOfARealFit() {
        auto s = SyntheticRun(0);
        fMain w(*s);
        w.RefitAndRedraw();
        const QStringList got{w.lblErr[3]->text(), w.lblNorthDir->text(),
                              w.lblErr[4]->text(), w.lblWestDir->text(),
                              w.lblNum->text(),    w.lblRMSSelected->text()};
        QCOMPARE(got, (QStringList{"6.88'", "to North", "5.16'", "to East", "40/40", ""}));
        QCOMPARE(QString::fromStdString(w.ModelParameters().lblErr[4]), "-5.16'");
    }

    // A press on a dot takes its point out and refits (39 of 40, "Selected
    // Points" filled, the dot blue).
    void PressOnADotRefits() {
        auto s = SyntheticRun(Arcsec(30));
        fMain w(*s);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        w.RefitAndRedraw();
        const int k = 7;  // no other dot within 5 pixels of its own with this seed
        QTest::mouseClick(w.windowHandle(), Qt::LeftButton, {},
                          w.picError->mapTo(&w, Dot(w, k) + QPoint(2, 2)));  // border 2
        QVERIFY(!s->CalPoints[k].Used);
        QCOMPARE(w.lblNum->text(), QStringLiteral("39/40"));
        QVERIFY(!w.lblRMSSelected->text().isEmpty());
        QCOMPARE(PixelAt(w.picError->Picture(), Dot(w, k).x(), Dot(w, k).y()).b, 255);
    }

    // Through the window as the window system delivers it, a double-click on
    // a dot of the main or analysis plot or on a row of the Calibration Points
    // table is one press: one call of the picture's handler, one point changed
    // (counted apart, since a refit may move the dot from under the second press).
    void DoubleClickIsOnePress() {
        auto s = ClientModel(5);
        ProcessWindows p(*s);
        WindowSet& ws = p.Windows();
        const auto used = [&] {
            return std::count_if(&s->CalPoints[1], &s->CalPoints[6],
                                 [](auto& c) { return c.Used; });
        };
        const auto marked = [&] {
            const auto& r = ws.CalPoints.Get().RowSelected;
            return std::count(r.begin(), r.end(), true);
        };
        const auto dot = [](const auto& P) {
            return QPointF(P.StarX[2], P.StarY[2]).toPoint() + QPoint(1, 1) * PictureBox::kBorder;
        };
        const struct {
            QString Window;
            QWidget* Picture;
            std::function<void(double, double)>* Press;
            std::function<QPoint()> At;  // in the picture
            std::function<long()> Count;
        } cases[] = {
            {"main", ws.Main.Get().picError, &ws.Main.Get().picError->OnMouseDown,
             [&] { return dot(ws.Main.Get().Plots); }, used},
            {"analysis", ws.Analysis.Get().picGraph, &ws.Analysis.Get().picGraph->OnMouseDown,
             [&] { return dot(ws.Analysis.Get().Plot); }, used},
            {"points", ws.CalPoints.Get().picInner, &ws.CalPoints.Get().picInner->OnMouseDown,
             [] { return QPoint(300, RowTop(1) + 5); }, marked},
        };
        for (const auto& c : cases) {
            int presses = 0;
            *c.Press = [&presses, press = *c.Press](double X, double Y) { ++presses, press(X, Y); };
            c.Picture->window()->show();
            p.chain.CalibrateAndDisplay();
            QVERIFY(QTest::qWaitForWindowExposed(c.Picture->window()));
            const long before = c.Count();
            QTest::mouseDClick(c.Picture->window()->windowHandle(), Qt::LeftButton, {},
                               c.Picture->mapTo(c.Picture->window(), c.At()));
            const long changed = std::abs(c.Count() - before);
            QCOMPARE(c.Window + QString(": %1 press, %2 changed").arg(presses).arg(changed),
                     c.Window + QString(": 1 press, 1 changed"));
        }
    }

    // Save As adds ".AZT" to a bare name. Open asks first: No ends it, Yes and
    // a cancelled chooser change nothing, Yes and the saved file bring its
    // points back, name the file and refit; a file that is no calibration is said so.
    void SaveThenOpen() {
        QTemporaryDir dir;
        auto s = SyntheticRun(Arcsec(30));
        fMain w(*s);
        w.RefitAndRedraw();
        s->CalPoints[3].Used = false;
        AcceptFileDialog(dir.filePath("night"));
        w.menu_SaveCalstarFile->trigger();
        const QString saved = dir.filePath("night.AZT");
        QCOMPARE(QString::fromStdString(s->FullFileName), saved);
        QCOMPARE(w.lblFileName->text(), QStringLiteral("night.AZT"));

        s->CalPoints[3].Used = true;
        s->NumCalPoints = 5;
        QString question;
        bool chooser = false;
        Answer(QMessageBox::No, &question);
        WhenModal<QFileDialog>([&chooser](QFileDialog* d) { chooser = true, d->reject(); }, 300);
        w.menu_OpenCal->trigger();
        QTest::qWait(400);
        QCOMPARE(question, QStringLiteral("This will clear current calibration data.  Proceed?"));
        QVERIFY(!chooser);
        Answer(QMessageBox::Yes);
        WhenModal<QFileDialog>([](QFileDialog* d) { d->reject(); });
        w.menu_OpenCal->trigger();
        QCOMPARE(s->NumCalPoints, int16_t{5});

        w.lblFileName->clear();
        Answer(QMessageBox::Yes);
        AcceptFileDialog(saved);
        w.menu_OpenCal->trigger();
        QCOMPARE(s->NumCalPoints, int16_t{40});
        QVERIFY(!s->CalPoints[3].Used);
        QCOMPARE(w.lblNum->text(), QStringLiteral("39/40"));
        QCOMPARE(w.lblFileName->text(), QStringLiteral("night.AZT"));

        auto t = FreshModel();  // no points: no question before the chooser
        fMain v(*t);
        const QString notes = dir.filePath("notes.txt");
        std::ofstream(notes.toStdString()) << "not stars\r\n";
        QString message;
        AcceptFileDialog(notes);
        Answer(QMessageBox::Ok, &message);
        v.menu_OpenCal->trigger();
        QCOMPARE(message, "The file you are trying to open is not a valid calibration file.");
        QVERIFY(v.DisplayEnabled());
    }

    // Angles in the unit their unrounded size calls for, 2 decimals but 1 for
    // arcseconds (0.99999' is 59.9994", shown 60"; 0.99999 deg shows 60').
    void AnglesAsText() {
        QStringList got;
        for (double a : {0.0, -1e-9, Deg(0.5), Deg(-0.5), Deg(1.5), Deg(12.3456), Arcmin(0.99999),
                         Deg(0.99999), Arcmin(7.891), Arcsec(12.34)})
            got << QString::fromStdString(ErrStr(a));
        QCOMPARE(got, (QStringList{"0\"", "0\"", "30'", "-30'", "1.5\u00B0", "12.35\u00B0", "60\"",
                                   "60'", "7.89'", "12.3\""}));
    }
};
QTEST_MAIN(MainWindowTest)

#include "MainWindowTest.moc"
