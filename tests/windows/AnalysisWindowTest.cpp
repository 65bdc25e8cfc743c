// The Graphical Error Analysis as an operator uses it (opened by button and
// menu, dots pressed, options switched, the window resized), and the plot
// command, whose pictures are those the windows show of the same file.
#include <QDir>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QtTest>

#include "windows/PictureBox.h"
#include "windows/ProcessWindows.h"
#include "windows/TestRegistry.h"
#include "windows/fAnalysis.h"

namespace {

const QString kSample = QStringLiteral(QT_TESTCASE_SOURCEDIR "/../data/sample.AZT");

QByteArray FileBytes(const QString& Name) {
    QFile f(Name);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// `aztrue plot Args` with no display in the environment; Err gets stderr.
int RunPlot(const QStringList& Args, QString& Err) {
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const char* v : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) env.remove(v);
    p.setProcessEnvironment(env);
    p.start(QStringLiteral(AZTRUE_BUILD_DIR "/aztrue"), QStringList{"plot"} + Args);
    if (!p.waitForFinished(120000)) return -1;
    Err = QString::fromUtf8(p.readAllStandardError());
    return p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
}

}  // namespace

class AnalysisWindowTest : public QObject {
    Q_OBJECT
  private slots:
    // Built and drawn by the chain unseen; the button and the View entry
    // show the same window. A press of any button nearer than 5 pixels to a
    // dot toggles its point and refits once; at 5 pixels nothing happens.
    // An option redraws without a fit; the plot follows the window's size.
    void PressesOptionsAndSize() {
        auto s = ClientModel(5);
        ProcessWindows p(*s);
        fMain& m = p.Windows().Main.Get();
        p.chain.CalibrateAndDisplay();
        fAnalysis* a = p.Windows().Analysis.IfLoaded();
        QVERIFY(a != nullptr && !a->isVisible());
        m.cmdAnalysis->click();
        m.menu_analysis->trigger();
        QCOMPARE(p.Windows().Analysis.IfLoaded(), a);
        QVERIFY(QTest::qWaitForWindowExposed(a));

        const struct {
            int Point, Dx, Dy;
            Qt::MouseButton Button;
            bool Toggles;
        } presses[] = {{2, 3, 4, Qt::LeftButton, false},    // 5 px
                       {2, 3, 3, Qt::RightButton, true},    // 4.24 px
                       {2, -2, 1, Qt::MiddleButton, true},  // back in
                       {4, 0, 0, Qt::LeftButton, true}};
        for (const auto& c : presses) {
            const int fits = p.display.Fits;
            const bool used = s->CalPoints[c.Point].Used;
            const QPoint at(a->Plot.StarX[c.Point] + c.Dx + PictureBox::kBorder,
                            a->Plot.StarY[c.Point] + c.Dy + PictureBox::kBorder);
            QTest::mousePress(a->picGraph, c.Button, Qt::NoModifier, at);
            QCOMPARE(s->CalPoints[c.Point].Used, c.Toggles ? !used : used);
            QCOMPARE(p.display.Fits, fits + (c.Toggles ? 1 : 0));
        }
        QCOMPARE(m.lblNum->text(), QStringLiteral("4/5"));
        // The dot of the point out of the fit is blue (50, 50, 255) x 1.6432.
        QCOMPARE(RgbText(PixelAt(a->picGraph->Picture(), a->Plot.StarX[4], a->Plot.StarY[4])),
                 RgbText({82, 82, 255}));

        const QImage before = a->picGraph->Picture().Image();
        const int fits = p.display.Fits;
        a->OptZ->click();
        QCOMPARE(p.display.Fits, fits);
        QVERIFY(a->picGraph->Picture().Image() != before);

        a->resize(800, 500);
        QTRY_COMPARE(a->picGraph->size(), QSize(800, 458));
        QCOMPARE(a->Plot.Graph.Left, 60);
        QCOMPARE(a->Plot.Graph.Right, 776);
        m.UnloadAll();
        QVERIFY(p.Windows().Analysis.IfLoaded() == nullptr);
    }

    // The eight pictures without a display; the target, the map and a
    // graph are pixel for pixel what the windows show of the same file,
    // and the file is left as it was. Failures exit as the fit command
    // does and write nothing. One graph goes to the README.
    void PlotCommandWritesTheWindowsPictures() {
        QTemporaryDir dir;
        const QString out = dir.filePath("out");
        const QByteArray sample = FileBytes(kSample);
        QString err;
        QCOMPARE(RunPlot({kSample, "--out", out}, err), 0);
        QStringList names{"errors.png", "positions.png"};
        for (const char* y : {"theta-error", "phi-error"})
            for (const char* x : {"theta", "phi", "zenith-distance"})
                names << QStringLiteral("analysis-%1-vs-%2.png").arg(y, x);
        names.sort();
        QCOMPARE(QDir(out).entryList(QDir::Files, QDir::Name), names);
        QCOMPARE(FileBytes(kSample), sample);

        auto model = std::make_unique<ModelState>();
        fMain m(*model);
        QVERIFY(m.OpenCalibrationFile(kSample.toStdString()));
        auto picture = [&out](const QString& Name) {
            return QImage(out + "/" + Name).convertToFormat(QImage::Format_RGB32);
        };
        QCOMPARE(picture("errors.png"), m.picError->Picture().Image());
        m.Option1->click();
        QCOMPARE(picture("positions.png"), m.picError->Picture().Image());
        fAnalysis& a = m.Windows().Analysis.Get();
        a.optYPhi->click();
        a.OptZ->click();
        QCOMPARE(picture("analysis-phi-error-vs-zenith-distance.png"),
                 a.picGraph->Picture().Image());

        QCOMPARE(RunPlot({"--size", "400", "--out", dir.filePath("big"), kSample}, err), 0);
        QCOMPARE(QImage(dir.filePath("big/positions.png")).size(), QSize(400, 400));
        QCOMPARE(QImage(dir.filePath("big/analysis-phi-error-vs-phi.png")).size(), QSize(400, 182));

        QFile notCal(dir.filePath("notes.AZT"));
        QVERIFY(notCal.open(QIODevice::WriteOnly) && notCal.write("hello\n") == 6);
        notCal.close();
        const struct {
            QStringList Args;
            int Code;
            QString Message;
        } failures[] = {
            {{notCal.fileName(), "--out", dir.filePath("bad")}, 3, "not a valid calibration file"},
            {{dir.filePath("none.AZT"), "--out", dir.filePath("bad")}, 2, "cannot read"},
            {{kSample, "--out", notCal.fileName() + "/sub"}, 2, "cannot make the folder"},
            {{kSample, "--size", "12", "--out", dir.filePath("bad")}, 2, "--size"},
            {{kSample}, 2, "--out DIR"},
        };
        for (const auto& f : failures) {
            QCOMPARE(RunPlot(f.Args, err), f.Code);
            QVERIFY2(err.contains(f.Message), qPrintable(err));
            QVERIFY(!QDir(dir.filePath("bad")).exists());
        }
        QFile::remove(QT_TESTCASE_SOURCEDIR "/../docs/error-graph.png");
        QVERIFY(QFile::copy(out + "/analysis-phi-error-vs-phi.png",
                            QT_TESTCASE_SOURCEDIR "/../docs/error-graph.png"));
    }
};
AZTRUE_REGISTER_TEST(AnalysisWindowTest);

#include "AnalysisWindowTest.moc"
