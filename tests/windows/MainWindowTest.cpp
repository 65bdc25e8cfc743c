// The main window: its load, the figures it shows, the graph options, the
// click that takes a point in or out of the fit, the File menu with its
// messages and the About window.
#include <QAction>
#include <QFileDialog>
#include <QLabel>
#include <QLayout>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>
#include <cmath>

#include "windows/PictureBox.h"
#include "windows/TestRegistry.h"
#include "windows/WindowsTestSupport.h"
#include "windows/fAbout.h"
#include "windows/fMain.h"

namespace {

QString Text(const QLabel* l) {
    return l->text();
}

// Three points with residuals as a fit would leave them, the second out of
// use, on a 40' scale.
void AddThreePoints(ModelState& s) {
    s.NumCalPoints = 3;
    s.NumPointsUsed = 2;
    const double errs[4][2] = {{0, 0}, {10, -5}, {-8, 24}, {-24, -16}};
    for (int i = 1; i <= 3; ++i) {
        CalPoint& p = s.CalPoints[i];
        p.Used = i != 2;
        p.PhiErr = Arcmin(errs[i][0]);
        p.ThetaErr = Arcmin(errs[i][1]);
        p.AxisTheta = i == 3 ? -0.5 : 0.5;
        p.SkyTheta = 0.2 * i;
        p.SkyPhi = 1.9 * i;
    }
    s.MaxErrAll = Arcmin(30);
    s.RMSErrAll = Arcmin(17);
    s.MaxErrSel = Arcmin(29);
    s.RMSErrSel = Arcmin(20);
    s.Sensitivity = 12;
}

// A click on picError at a whole pixel of the picture.
void ClickPicture(fMain& w, int X, int Y) {
    QTest::mouseClick(w.picError, Qt::LeftButton, Qt::NoModifier,
                      QPoint(X + PictureBox::kBorder, Y + PictureBox::kBorder));
}

}  // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
  private slots:
    // Started by hand: InitModel runs, the caption is the version, the Test
    // menu is off, TestLog cleared, the direction words hidden, the file name
    // empty, the graph options at "Errors" and "All Points".
    void LoadStandAlone() {
        auto s = std::make_unique<ModelState>();
        s->TestLog = true;
        fMain w(*s);
        QCOMPARE(s->Version, std::string("Aztrue 5.32"));
        QCOMPARE(s->MaxSensitivity, 300.0);
        QCOMPARE(w.windowTitle(), QStringLiteral("Aztrue 5.32"));
        QVERIFY(!s->TestLog);
        QVERIFY(!w.menuTest->menuAction()->isVisible());
        QVERIFY(w.DisplayEnabled());
        QVERIFY(w.lblNorthDir->isHidden());
        QVERIFY(w.lblWestDir->isHidden());
        QCOMPARE(Text(w.lblFileName), QString());
        QVERIFY(w.optError->isChecked());
        QVERIFY(w.optAll->isChecked());
        QCOMPARE(w.Plots.GraphColor, RGB(60, 60, 60));
        for (int i = 3; i <= 46; ++i) QCOMPARE(w.ModelParameters().lblErr[i], std::string());
    }

    // Started by a client: the settings the client made stay.
    void LoadAsServerKeepsTheModel() {
        auto s = FreshModel();
        s->ServerStarted = true;
        s->Latitude = -12.5;
        fMain w(*s);
        QCOMPARE(s->Latitude, -12.5);
    }

    // Inner area 325 by 492 below the menu bar, not resizable; picError is a
    // 313-pixel square, border included, with a black inside.
    void FixedSizeAndPicture() {
        auto s = FreshModel();
        fMain w(*s);
        QCOMPARE(w.centralWidget()->size(), QSize(325, 492));
        // All rows fit the fixed area: nothing is squeezed below its minimum.
        const QSize need = w.centralWidget()->layout()->minimumSize();
        QVERIFY2(need.width() <= 325 && need.height() <= 492,
                 qPrintable(
                     QStringLiteral("layout needs %1 x %2").arg(need.width()).arg(need.height())));
        QCOMPARE(w.minimumSize(), w.maximumSize());
        QCOMPARE(w.picError->size(), QSize(313, 313));
        QCOMPARE(w.picError->Picture().ScaleWidth(), 309);
        QCOMPARE(PixelAt(w.picError->Picture(), 1, 1), (Rgb{0, 0, 0}));
    }

    // The labels take the figures of the model: 2 of 3 used, so the
    // "Selected Points" row is filled; a sensitivity above 300 turns red.
    void FiguresOnTheLabels() {
        auto s = FreshModel();
        fMain w(*s);
        AddThreePoints(*s);
        s->Sensitivity = 301;
        s->TermActive[3] = true;
        s->ErrorNorth = Arcmin(-2.5);
        w.DisplayErrors();
        QCOMPARE(Text(w.lblNum), QStringLiteral("2/3"));
        QCOMPARE(Text(w.lblMaxAll), QStringLiteral("30'"));
        QCOMPARE(Text(w.lblRMSAll), QStringLiteral("17'"));
        QCOMPARE(Text(w.lblMaxSelected), QStringLiteral("29'"));
        QCOMPARE(Text(w.lblRMSSelected), QStringLiteral("20'"));
        QCOMPARE(Text(w.lblErr[3]), QStringLiteral("2.5'"));
        QCOMPARE(Text(w.lblNorthDir), QStringLiteral("to South"));
        QVERIFY(!w.lblNorthDir->isHidden());
        QVERIFY(w.lblWestDir->isHidden());
        QCOMPARE(Text(w.lblSensitivity), QStringLiteral("301"));
        QCOMPARE(w.lblSensitivity->palette().color(QPalette::WindowText), QColor(255, 0, 0));
        QCOMPARE(w.lblSen1->palette().color(QPalette::WindowText), QColor(255, 0, 0));
        QCOMPARE(w.ModelParameters().lblErr[3], std::string("-2.5'"));

        s->CalPoints[2].Used = true;
        s->NumPointsUsed = 3;
        s->Sensitivity = 300;
        w.DisplayErrors();
        QCOMPARE(Text(w.lblNum), QStringLiteral("3/3"));
        QCOMPARE(Text(w.lblMaxSelected), QString());
        QCOMPARE(Text(w.lblRMSSelected), QString());
        QCOMPARE(w.lblSensitivity->palette().color(QPalette::WindowText), QColor(0, 0, 0));
    }

    // Each of the four options redraws at once: "Positions" draws the sky
    // map, "Selected Points" scales the target by MaxErrSel.
    void OptionsRedraw() {
        auto s = FreshModel();
        fMain w(*s);
        AddThreePoints(*s);
        s->MaxErrSel = Arcmin(70);
        cPicture want(309, 309);
        cSkyPlots plots;

        QTest::mouseClick(w.Option1, Qt::LeftButton);
        QVERIFY(w.Option1->isChecked());
        plots.DrawGeo(*s, want);
        QVERIFY(w.picError->Picture().Image() == want.Image());

        QTest::mouseClick(w.optError, Qt::LeftButton);
        plots.DrawError(*s, want, true);
        QVERIFY(w.picError->Picture().Image() == want.Image());

        QTest::mouseClick(w.optSelected, Qt::LeftButton);
        plots.DrawError(*s, want, false);
        QVERIFY(w.picError->Picture().Image() == want.Image());
        cPicture all(309, 309);
        plots.DrawError(*s, all, true);
        QVERIFY(!(all.Image() == want.Image()));
        QCOMPARE(Text(w.lblNum), QStringLiteral("2/3"));
    }

    // The 5-pixel rule, with stars put at exact places: 4.9 pixels toggles,
    // exactly 5 (a 3-4-5 triangle) does not.
    void ClickWithinFivePixelsToggles() {
        auto s = FreshModel();
        fMain w(*s);
        int changes = 0;
        w.OnModelChanged = [&changes] { ++changes; };
        s->NumCalPoints = 2;
        s->CalPoints[1].Used = true;
        s->CalPoints[2].Used = true;
        w.Plots.StarX[1] = 100.1;
        w.Plots.StarY[1] = 100;
        w.Plots.StarX[2] = 200;
        w.Plots.StarY[2] = 200;

        ClickPicture(w, 105, 100);  // 4.9 from star 1
        QVERIFY(!s->CalPoints[1].Used);
        QCOMPARE(changes, 1);
        ClickPicture(w, 105, 100);  // and back again
        QVERIFY(s->CalPoints[1].Used);
        QCOMPARE(changes, 2);

        ClickPicture(w, 203, 204);  // exactly 5.0 from star 2
        QVERIFY(s->CalPoints[2].Used);
        ClickPicture(w, 205, 200);  // 5.0 along the axis
        QVERIFY(s->CalPoints[2].Used);
        QCOMPARE(changes, 2);
        ClickPicture(w, 203, 203);  // 4.24
        QVERIFY(!s->CalPoints[2].Used);
        QCOMPARE(changes, 3);
    }

    // Of two stars at the same distance the lower index toggles, whichever
    // side it is on; a nearer star of higher index wins.
    void TieGoesToTheLowerIndex() {
        auto s = FreshModel();
        fMain w(*s);
        w.OnModelChanged = [] {};
        s->NumCalPoints = 3;
        for (int i = 1; i <= 3; ++i) s->CalPoints[i].Used = true;
        w.Plots.StarX[1] = 157;
        w.Plots.StarY[1] = 150;
        w.Plots.StarX[2] = 151;
        w.Plots.StarY[2] = 150;
        w.Plots.StarX[3] = 154;
        w.Plots.StarY[3] = 153;
        ClickPicture(w, 154, 150);  // 3 from all three
        QVERIFY(!s->CalPoints[1].Used);
        QVERIFY(s->CalPoints[2].Used);
        QVERIFY(s->CalPoints[3].Used);
        ClickPicture(w, 153, 150);  // 2 from star 2, 4 from star 1
        QVERIFY(!s->CalPoints[2].Used);
        QVERIFY(!s->CalPoints[1].Used);
    }

    // No points: a click does nothing and starts no fit.
    void ClickWithoutPointsDoesNothing() {
        auto s = FreshModel();
        fMain w(*s);
        int changes = 0;
        w.OnModelChanged = [&changes] { ++changes; };
        ClickPicture(w, 154, 154);
        QCOMPARE(changes, 0);
    }

    // A click on a dot as the target drew it, with a redraw through the
    // callback: the dot turns from yellow to blue.
    void ClickOnDrawnDotTogglesAndRedraws() {
        auto s = FreshModel();
        fMain w(*s);
        AddThreePoints(*s);
        w.OnModelChanged = [&w] { w.UpdateGraph(); };
        w.UpdateGraph();
        // Point 1 at (185.75, 138.125), dot at (186, 138).
        QCOMPARE(PixelAt(w.picError->Picture(), 186, 138), (Rgb{255, 255, 131}));
        ClickPicture(w, 186, 138);
        QVERIFY(!s->CalPoints[1].Used);
        QCOMPARE(PixelAt(w.picError->Picture(), 186, 138), (Rgb{82, 82, 255}));
        // The same works on the sky map.
        QTest::mouseClick(w.Option1, Qt::LeftButton);
        const int x = static_cast<int>(std::lround(w.Plots.StarX[3]));
        const int y = static_cast<int>(std::lround(w.Plots.StarY[3]));
        ClickPicture(w, x, y);
        QVERIFY(!s->CalPoints[3].Used);
    }

    // While DisplayEnabled is false the default reaction neither fits nor
    // redraws.
    void DisabledDisplayDoesNotRedraw() {
        auto s = FreshModel();
        fMain w(*s);
        AddThreePoints(*s);
        w.SetDisplayEnabled(false);
        const QImage before = w.picError->Picture().Image();
        w.RefitAndRedraw();
        QVERIFY(w.picError->Picture().Image() == before);
        QCOMPARE(Text(w.lblNum), QStringLiteral("0/0"));
    }

    // Save without points: the message, and no chooser.
    void SaveWithoutPoints() {
        auto s = FreshModel();
        fMain w(*s);
        QString seen;
        WhenModal<QMessageBox>([&seen](QMessageBox* box) {
            seen = box->text();
            box->button(QMessageBox::Ok)->click();
        });
        w.menu_SaveCalstarFile->trigger();
        QCOMPARE(seen, QStringLiteral("There are no calibration points to save."));
    }

    // Open with points asks first; No ends it before any chooser shows.
    void OpenAsksBeforeClearing() {
        auto s = FreshModel();
        fMain w(*s);
        AddThreePoints(*s);
        QString text, title;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        bool hasYes = false;
        bool chooser = false;
        WhenModal<QMessageBox>([&](QMessageBox* box) {
            text = box->text();
            title = box->windowTitle();
            icon = box->icon();
            hasYes = box->button(QMessageBox::Yes) != nullptr;
            box->button(QMessageBox::No)->click();
        });
        WhenModal<QFileDialog>(
            [&chooser](QFileDialog* d) {
                chooser = true;
                d->reject();
            },
            300);
        w.menu_OpenCal->trigger();
        QTest::qWait(400);
        QCOMPARE(text, QStringLiteral("This will clear current calibration data.  Proceed?"));
        QCOMPARE(title, QStringLiteral("Warning"));
        QCOMPARE(icon, QMessageBox::Warning);
        QVERIFY(hasYes);
        QVERIFY(!chooser);
        QCOMPARE(s->NumCalPoints, int16_t{3});
    }

    // Yes, then a cancelled chooser: nothing changes.
    void OpenCancelledChangesNothing() {
        auto s = FreshModel();
        fMain w(*s);
        AddThreePoints(*s);
        s->FullFileName = "/nowhere/run.AZT";
        QString chooserTitle;
        WhenModal<QMessageBox>([](QMessageBox* box) { box->button(QMessageBox::Yes)->click(); });
        WhenModal<QFileDialog>([&chooserTitle](QFileDialog* d) {
            chooserTitle = d->windowTitle();
            d->reject();
        });
        w.menu_OpenCal->trigger();
        QCOMPARE(chooserTitle, QStringLiteral("Load Aztrue File"));
        QCOMPARE(s->FullFileName, std::string("/nowhere/run.AZT"));
        QCOMPARE(s->NumCalPoints, int16_t{3});
        QVERIFY(w.DisplayEnabled());
    }

    // The About entry shows one modeless window titled "About Aztrue"; Exit
    // closes it with the main window.
    void AboutAndExit() {
        auto s = FreshModel();
        fMain w(*s);
        w.show();
        w.menuAbout->trigger();
        QVERIFY(w.About != nullptr);
        QCOMPARE(w.About->windowTitle(), QStringLiteral("About Aztrue"));
        QVERIFY(w.About->isVisible());
        QVERIFY(!w.About->isModal());
        fAbout* first = w.About;
        w.menuAbout->trigger();
        QCOMPARE(w.About, first);
        w.menu_exit->trigger();
        QVERIFY(!w.About->isVisible());
        QVERIFY(!w.isVisible());
    }

    // The menus: File with its three entries, View, the hidden Test menu, About.
    void MenuBar() {
        auto s = FreshModel();
        fMain w(*s);
        QStringList top;
        for (QAction* a : w.menuBar()->actions()) {
            if (a->isVisible()) top << a->text().remove('&');
        }
        QCOMPARE(top, (QStringList{"File", "View", "About"}));
        QCOMPARE(w.menu_OpenCal->text().remove('&'), QStringLiteral("Open Calibration..."));
        QCOMPARE(w.menu_SaveCalstarFile->text().remove('&'),
                 QStringLiteral("Save Calibration As..."));
        QCOMPARE(w.menu_exit->text().remove('&'), QStringLiteral("Exit"));
    }
};
AZTRUE_REGISTER_TEST(MainWindowTest);

#include "MainWindowTest.moc"
