// The main window over a real fit and real files: the click that refits,
// Save Calibration As and Open Calibration through Qt's chooser, their
// messages, and the chooser routine itself.
#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QtTest>
#include <cmath>

#include "model/Solver.h"
#include "model/SyntheticCalibration.h"
#include "model/Terms.h"
#include "windows/FileDialog.h"
#include "windows/PictureBox.h"
#include "windows/TestRegistry.h"
#include "windows/WindowsTestSupport.h"
#include "windows/fMain.h"

namespace {

// An alt-az mount with a misalignment of 2e-3 rad to the north (6.8755')
// and 1.5e-3 rad to the east (5.1566'), some offsets, a cone error, 40
// points; NoiseRMS spreads the dots of the target.
std::unique_ptr<ModelState> SyntheticRun(double NoiseRMS) {
    auto s = FreshModel();
    EnableAltAz(*s);
    SyntheticMount m;
    m.Num = 40;
    m.ErrorNorth = 2e-3;
    m.ErrorWest = -1.5e-3;
    m.ThetaEncOffset = 0.01;
    m.PhiEncOffset = -0.02;
    m.TermCoef[5] = 8e-4;
    m.NoiseRMS = NoiseRMS;
    m.Seed = 11;
    AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
    return s;
}

// The point whose nearest neighbour on the plot is farthest away, so that a
// click on its dot can mean only it.
int LoneliestPoint(const fMain& w, int Num) {
    int best = 1;
    double bestGap = -1;
    for (int i = 1; i <= Num; ++i) {
        double gap = 1e30;
        for (int j = 1; j <= Num; ++j) {
            if (j == i) continue;
            gap = std::min(gap, std::hypot(w.Plots.StarX[i] - w.Plots.StarX[j],
                                           w.Plots.StarY[i] - w.Plots.StarY[j]));
        }
        if (gap > bestGap) {
            bestGap = gap;
            best = i;
        }
    }
    return best;
}

void ClickPicture(fMain& w, double X, double Y) {
    QTest::mouseClick(w.picError, Qt::LeftButton, Qt::NoModifier,
                      QPoint(static_cast<int>(std::lround(X)) + PictureBox::kBorder,
                             static_cast<int>(std::lround(Y)) + PictureBox::kBorder));
}

void AnswerWarning(QMessageBox::StandardButton b) {
    WhenModal<QMessageBox>([b](QMessageBox* box) { box->button(b)->click(); });
}

}  // namespace

class RealFitWindowTest : public QObject {
    Q_OBJECT
  private slots:
    // After the default reaction (fit, residuals, redraw) the window shows
    // the misalignment the points were made with: 6.8755' to the north,
    // 5.1566' to the east. Without noise the fit recovers it to about 1e-8
    // rad (0.00003'), well inside the 2 decimals shown.
    void FiguresOfARealFit() {
        auto s = SyntheticRun(0);
        fMain w(*s);
        w.RefitAndRedraw();
        QCOMPARE(w.lblErr[3]->text(), QStringLiteral("6.88'"));
        QCOMPARE(w.lblNorthDir->text(), QStringLiteral("to North"));
        QCOMPARE(w.lblErr[4]->text(), QStringLiteral("5.16'"));
        QCOMPARE(w.lblWestDir->text(), QStringLiteral("to East"));
        QVERIFY(!w.lblNorthDir->isHidden());
        QCOMPARE(w.lblNum->text(), QStringLiteral("40/40"));
        QCOMPARE(w.lblRMSSelected->text(), QString());
        QCOMPARE(w.ModelParameters().lblErr[4], std::string("-5.16'"));
        QVERIFY(!w.ModelParameters().lblErr[5].empty());
        QVERIFY(w.DisplayEnabled());
    }

    // A click on a dot takes its point out of the fit, the fit runs again
    // and the window shows 39 of 40 with the "Selected Points" row filled; a
    // second click puts it back.
    void ClickRefits() {
        auto s = SyntheticRun(Arcsec(30));
        fMain w(*s);
        w.RefitAndRedraw();
        const int k = LoneliestPoint(w, 40);
        ClickPicture(w, w.Plots.StarX[k], w.Plots.StarY[k]);
        QVERIFY(!s->CalPoints[k].Used);
        QCOMPARE(s->NumPointsUsed, int16_t{39});
        QCOMPARE(w.lblNum->text(), QStringLiteral("39/40"));
        QVERIFY(!w.lblRMSSelected->text().isEmpty());
        QVERIFY(w.DisplayEnabled());
        // The dot of the point out of use is blue at its centre.
        const Rgb centre =
            PixelAt(w.picError->Picture(), static_cast<int>(std::lround(w.Plots.StarX[k])),
                    static_cast<int>(std::lround(w.Plots.StarY[k])));
        QVERIFY2(centre.b == 255, RgbText(centre));
        ClickPicture(w, w.Plots.StarX[k], w.Plots.StarY[k]);
        QVERIFY(s->CalPoints[k].Used);
        QCOMPARE(w.lblNum->text(), QStringLiteral("40/40"));
    }

    // Save As to a name without extension adds ".AZT"; Open of that file
    // after Yes brings the points back, names the file and fits again.
    void SaveThenOpen() {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        auto s = SyntheticRun(Arcsec(30));
        fMain w(*s);
        w.RefitAndRedraw();
        s->CalPoints[3].Used = false;

        QString title;
        AcceptFileDialog(dir.filePath(QStringLiteral("night")), &title);
        w.menu_SaveCalstarFile->trigger();
        QCOMPARE(title, QStringLiteral("Save Aztrue File"));
        const QString saved = dir.filePath(QStringLiteral("night.AZT"));
        QVERIFY(QFile::exists(saved));
        QCOMPARE(QString::fromStdString(s->FullFileName), saved);
        QCOMPARE(w.lblFileName->text(), QStringLiteral("night.AZT"));

        auto t = FreshModel();
        t->NumCalPoints = 1;  // something to clear, so the warning comes first
        fMain v(*t);
        QString openTitle;
        AnswerWarning(QMessageBox::Yes);
        AcceptFileDialog(saved, &openTitle);
        v.menu_OpenCal->trigger();
        QCOMPARE(openTitle, QStringLiteral("Load Aztrue File"));
        QCOMPARE(t->NumCalPoints, int16_t{40});
        QVERIFY(!t->CalPoints[3].Used);
        QCOMPARE(t->NumPointsUsed, int16_t{39});
        QCOMPARE(v.lblNum->text(), QStringLiteral("39/40"));
        QCOMPARE(v.lblFileName->text(), QStringLiteral("night.AZT"));
        QCOMPARE(QString::fromStdString(t->FullFileName), saved);
        QVERIFY(v.DisplayEnabled());
    }

    // A file that is not a calibration: the message, and the display stays on.
    void OpenInvalidFile() {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("notes.txt"));
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("these are not the stars you are looking for\r\n");
        f.close();
        auto s = FreshModel();
        fMain w(*s);
        QString seen;
        AcceptFileDialog(path);
        WhenModal<QMessageBox>([&seen](QMessageBox* box) {
            seen = box->text();
            box->button(QMessageBox::Ok)->click();
        });
        w.menu_OpenCal->trigger();
        QCOMPARE(seen, QStringLiteral(
                           "The file you are trying to open is not a valid calibration file."));
        QVERIFY(w.DisplayEnabled());
        QCOMPARE(w.lblFileName->text(), QString());
        QCOMPARE(s->FullFileName, std::string());
    }

    // A file that cannot be written: the message, and the old name stays.
    void SaveFails() {
        auto s = SyntheticRun(0);
        fMain w(*s);
        s->FullFileName = "/earlier/run.AZT";
        QString seen;
        AcceptFileDialog(QStringLiteral("/nonexistent-folder-of-aztrue/x.AZT"));
        WhenModal<QMessageBox>([&seen](QMessageBox* box) {
            seen = box->text();
            box->button(QMessageBox::Ok)->click();
        });
        w.menu_SaveCalstarFile->trigger();
        QCOMPARE(seen, QStringLiteral("Unable to save the current calibration."));
        QCOMPARE(s->FullFileName, std::string("/earlier/run.AZT"));
    }

    // The window as an operator sees it with the shipped sample calibration
    // opened and one star taken out by a click, written to the build folder
    // for the eye.
    void ScreenshotOfTheSample() {
        auto s = std::make_unique<ModelState>();
        InitModel(*s);
        fMain w(*s);
        QVERIFY(w.OpenCalibrationFile(QT_TESTCASE_SOURCEDIR "/../data/sample.AZT"));
        QCOMPARE(s->NumCalPoints, int16_t(40));
        const int k = LoneliestPoint(w, 40);
        ClickPicture(w, w.Plots.StarX[k], w.Plots.StarY[k]);
        QCOMPARE(s->NumPointsUsed, int16_t(39));
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QVERIFY(w.grab().save(QStringLiteral(AZTRUE_BUILD_DIR "/main-window-fit.png")));
        w.Option1->click();
        QVERIFY(w.grab().save(QStringLiteral(AZTRUE_BUILD_DIR "/main-window-fit-positions.png")));
    }
};
AZTRUE_REGISTER_TEST(RealFitWindowTest);

class FileDialogTest : public QObject {
    Q_OBJECT
  private slots:
    void MakeFilterAndCutAtNull() {
        const std::string f = MakeFilter("", "Aztrue Files (*.AZT)", "*.AZT");
        QCOMPARE(f, std::string("Aztrue Files (*.AZT)\0*.AZT\0", 27));
        QCOMPARE(MakeFilter("x", "All"), std::string("xAll\0*.*\0", 9));
        QCOMPARE(CutAtNull(std::string("abc\0def", 7)), std::string("abc"));
        QCOMPARE(CutAtNull("abc"), std::string("abc"));
    }

    // The filters show with the descriptions as given, the first selected.
    void FiltersAndTitle() {
        QTemporaryDir dir;
        FileDialogArgs a;
        a.Filter = MakeFilter("", "Aztrue Files (*.AZT)", "*.AZT") +
                   MakeFilter("", "All Files (*.*)", "*.*");
        a.Title = "Load Aztrue File";
        a.InitialDir = dir.path().toStdString();
        QStringList shown;
        QString title, folder;
        WhenModal<QFileDialog>([&](QFileDialog* d) {
            title = d->windowTitle();
            folder = d->directory().absolutePath();
            if (auto* combo = d->findChild<QComboBox*>(QStringLiteral("fileTypeCombo"))) {
                for (int i = 0; i < combo->count(); ++i) shown << combo->itemText(i);
                shown << QString::number(combo->currentIndex());
            }
            d->reject();
        });
        QCOMPARE(ShowFileDialog(a), std::string());
        QCOMPARE(title, QStringLiteral("Load Aztrue File"));
        QCOMPARE(folder, QDir(dir.path()).absolutePath());
        QCOMPARE(shown, (QStringList{"Aztrue Files (*.AZT)", "All Files (*.*)", "0"}));
    }

    // A cancel after a successful choice gives an empty text, not the old name.
    void CancelAfterSuccessIsEmpty() {
        QTemporaryDir dir;
        FileDialogArgs a;
        a.OpenDialog = false;
        a.DefaultExt = "AZT";
        a.Flags = kHideReadOnly;
        AcceptFileDialog(dir.filePath(QStringLiteral("run")));
        QCOMPARE(QString::fromStdString(ShowFileDialog(a)),
                 dir.filePath(QStringLiteral("run.AZT")));
        QCOMPARE(a.Flags, kHideReadOnly);
        WhenModal<QFileDialog>([](QFileDialog* d) { d->reject(); });
        QCOMPARE(ShowFileDialog(a), std::string());
    }

    // A name with an extension keeps it; the default is added only to a bare name.
    void DefaultExtensionOnlyForBareNames() {
        QTemporaryDir dir;
        FileDialogArgs a;
        a.OpenDialog = false;
        a.DefaultExt = "AZT";
        AcceptFileDialog(dir.filePath(QStringLiteral("run.txt")));
        QCOMPARE(QString::fromStdString(ShowFileDialog(a)),
                 dir.filePath(QStringLiteral("run.txt")));
    }

    // The opening chooser hands back a name that does not exist yet.
    void OpenDoesNotTestExistence() {
        QTemporaryDir dir;
        FileDialogArgs a;
        AcceptFileDialog(dir.filePath(QStringLiteral("missing.AZT")));
        QCOMPARE(QString::fromStdString(ShowFileDialog(a)),
                 dir.filePath(QStringLiteral("missing.AZT")));
    }

    // The initial name is cut to 256 characters.
    void LongInitialNameIsCut() {
        QTemporaryDir dir;
        const std::string folder = dir.path().toStdString() + "/";
        FileDialogArgs a;
        a.FileName = folder + std::string(300, 'a');
        QString typed;
        WhenModal<QFileDialog>([&typed](QFileDialog* d) {
            if (auto* edit = d->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
                typed = edit->text();
            }
            d->reject();
        });
        QCOMPARE(ShowFileDialog(a), std::string());
        QCOMPARE(typed, QString(static_cast<qsizetype>(256 - folder.size()), 'a'));
    }

    // At most 255 characters come back: a chosen path of 255 is handed back,
    // one of 256 gives an empty text.
    void PathsBeyond255CharactersAreRefused() {
        QTemporaryDir dir;
        const QString folder = dir.path() + "/";
        FileDialogArgs a;
        const QString fits = folder + QString(255 - folder.size(), 'b');
        AcceptFileDialog(fits);
        QCOMPARE(QString::fromStdString(ShowFileDialog(a)), fits);
        AcceptFileDialog(folder + QString(256 - folder.size(), 'b'));
        QCOMPARE(ShowFileDialog(a), std::string());
    }
};
AZTRUE_REGISTER_TEST(FileDialogTest);

#include "FileMenuTest.moc"
