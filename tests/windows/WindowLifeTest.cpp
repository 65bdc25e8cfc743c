// Windows built at first use and dropped when closed; the scale factor search
// reset, stopped and closed under as it runs; the plot command, whose
// pictures are those the windows show.
#include <QDir>
#include <QProcess>

#include "model/ScaleErrorMount.h"
#include "windows/WindowsTestSupport.h"

namespace {

// A window whose load lets queued events run, as the main window's does.
struct PumpingWindow : QWidget {
    PumpingWindow() { ++Built; }
    void FormLoad() { QCoreApplication::processEvents(); }
    static inline int Built = 0;
};

// Steps kept and tried, from lblStats.
std::pair<int, int> Stats(fAdvanced& w) {
    const QStringList p = w.lblStats->text().split('/');
    return {p[0].toInt(), p[1].toInt()};
}

// The windows over a client's model whose chain lets no events run.
struct StillWindows : ProcessWindows {
    explicit StillWindows(ModelState& s) : ProcessWindows((s.ServerStarted = true, s)) {
        display.Still = true;
    }
};

// Starts a run with a click and calls Step at each pass of the run's own
// event pump until it returns true; returns when the run has ended.
void RunWith(fAdvanced& w, std::function<bool()> Step) {
    QTimer timer;
    bool done = false;
    QObject::connect(&timer, &QTimer::timeout, [&] { done = done || Step(); });
    timer.start(0);
    QTest::mouseClick(w.cmdOptSF, Qt::LeftButton);
}

// `aztrue plot Args` with no display in the environment.
int RunPlot(const QStringList& Args) {
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const char* v : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) env.remove(v);
    p.setProcessEnvironment(env);
    p.start(QStringLiteral(AZTRUE_BUILD_DIR "/aztrue"), QStringList{"plot"} + Args);
    return p.waitForFinished(120000) && p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
}

}  // namespace

class WindowLifeTest : public QObject {
    Q_OBJECT
  private slots:
    // A request that the load's event pump serves gets the window being
    // loaded; a closed window is dropped at once and built anew.
    void OneWindowUnderReentrantRequests() {
        PumpingWindow::Built = 0;
        LazyWindow<PumpingWindow> slot([] { return new PumpingWindow; });
        PumpingWindow* queued = nullptr;
        QTimer::singleShot(0, [&] { queued = &slot.Get(); });
        PumpingWindow& w = slot.Get();
        QCOMPARE(queued, &w);
        QCOMPARE(PumpingWindow::Built, 1);
        w.close();
        QVERIFY(slot.IfLoaded() == nullptr);
        QVERIFY(&slot.Get() != &w);
        QCOMPARE(PumpingWindow::Built, 2);
    }

    // The main window's unload keeps itself and the map; a client's
    // KillAztrue and Dispose keep only the map, which is never closed for
    // others; after KillAztrue the next refit loads the main window again,
    // unseen, over the same model.
    void WhichWindowsEachCloseLeaves() {
        const std::pair<std::function<void(ProcessWindows&)>, QString> cases[] = {
            {[](ProcessWindows& p) { p.Windows().Main.Get().UnloadAll(); }, "Main AutoAlign"},
            {[](ProcessWindows& p) { p.display.KillWindows(); }, "AutoAlign"},
            {[](ProcessWindows& p) { p.display.DisposeAll(); }, "AutoAlign"}};
        for (const auto& [close, left] : cases) {
            auto s = ClientModel(3);
            ProcessWindows p(*s);
            WindowSet& ws = p.Windows();
            ws.Main.Get(), ws.Errors.Get(), ws.CalPoints.Get(), ws.Setup.Get();
            ws.Analysis.Get(), ws.Advanced.Get(), ws.Test.Get(), ws.AutoAlign.Get();
            close(p);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QStringList loaded;
            for (auto [name, w] : {std::pair<QString, QWidget*>{"Main", ws.Main.IfLoaded()},
                                   {"Errors", ws.Errors.IfLoaded()}, {"CalPoints", ws.CalPoints.IfLoaded()},
                                   {"Setup", ws.Setup.IfLoaded()}, {"Analysis", ws.Analysis.IfLoaded()},
                                   {"Advanced", ws.Advanced.IfLoaded()}, {"Test", ws.Test.IfLoaded()},
                                   {"AutoAlign", ws.AutoAlign.IfLoaded()}})
                if (w) loaded << name;
            QCOMPARE(loaded.join(' '), left);
        }
        auto s = ClientModel(3);
        ProcessWindows p(*s);
        p.display.ShowMain();
        p.display.KillWindows();
        p.chain.CalibrateAndDisplay();
        QVERIFY(p.display.MainIfLoaded() && !p.display.MainIfLoaded()->isVisible());
        QCOMPARE(p.display.MainIfLoaded()->lblNum->text(), QStringLiteral("3/3"));
    }

    // In the run's pump: after 3 kept steps "Reset" sets PhiSF to 1; the next
    // step starts from there, fails against the run's best and puts the best
    // back; a click then ends the run with no further step.
    void ScaleSearchResetThenStopped() {
        auto s = ScaleErrorModel();
        StillWindows p(*s);
        fAdvanced& w = p.Windows().Advanced.Get();
        double best = 0, afterReset = 0, afterNextStep = 0;
        std::pair<int, int> atReset{0, -1}, atClick;
        RunWith(w, [&] {
            if (atReset.second < 0 && Stats(w).first >= 3) {
                atReset = Stats(w);
                best = s->PhiSF;
                QTest::mouseClick(w.cmdPhi, Qt::LeftButton);
                afterReset = s->PhiSF;
            } else if (atReset.second >= 0 && Stats(w) != atReset) {
                atClick = Stats(w);
                afterNextStep = s->PhiSF;
                QTest::mouseClick(w.cmdOptSF, Qt::LeftButton);
                return true;
            }
            return false;
        });
        QVERIFY(best > 1);
        QCOMPARE(afterReset, 1.0);
        QCOMPARE(atClick, std::make_pair(atReset.first, atReset.second + 1));
        QCOMPARE(afterNextStep, best);
        QCOMPARE(Stats(w), atClick);
        QCOMPARE(s->PhiSF, best);
    }

    // With no point in use nothing is strictly better: the run ends by
    // itself at the 61st rejected step with the factors as they were, shown
    // by their deviation (1.00012345678 is 0.0123 %, 0.9999 is -0.01 %).
    void ScaleSearchEndsAtThe61stRejection() {
        auto s = FreshModel();
        s->PhiSF = 1.00012345678;
        s->ThetaSF = 0.9999;
        StillWindows p(*s);
        fAdvanced& w = p.Windows().Advanced.Get();
        w.cmdOptSF->click();
        QCOMPARE(s->PhiSF, 1.00012345678);
        const QStringList got{w.lblStats->text(), w.lblPhiP->text(), w.lblThetaP->text()};
        QCOMPARE(got, (QStringList{"0/61", "0.0123%", "-0.01%"}));
    }

    // The window closed during a run, by hand or by a client's Dispose, ends
    // the run with the step under way; the object goes once the run has
    // returned, never while it runs.
    void ClosingTheWindowEndsTheRun() {
        for (bool byHand : {true, false}) {
            auto s = ScaleErrorModel();
            StillWindows p(*s);
            p.Windows().Advanced.Show();
            QPointer<fAdvanced> w = p.Windows().Advanced.IfLoaded();
            int closedAt = -1, last = 0;
            RunWith(*w, [&] {
                last = Stats(*w).second;
                if (closedAt < 0 && last >= 3) {
                    byHand ? (void)w->close() : p.display.DisposeAll();
                    closedAt = last;
                }
                return false;
            });
            QCOMPARE(last, closedAt);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY(!w);
        }
    }

    // The plot command writes, without a display, the pictures the windows
    // show of the same file; a file that is no calibration exits 3 and
    // writes nothing. One graph goes to the README.
    void PlotCommandWritesTheWindowsPictures() {
        QTemporaryDir dir;
        const QString out = dir.filePath("out");
        QCOMPARE(RunPlot({kSample, "--out", out}), 0);
        QCOMPARE(QDir(out).entryList(QDir::Files).size(), 8);
        auto model = std::make_unique<ModelState>();
        fMain m(*model);
        QVERIFY(m.OpenCalibrationFile(kSample.toStdString()));
        auto picture = [&out](const char* Name) {
            return QImage(out + "/" + Name).convertToFormat(QImage::Format_RGB32);
        };
        QCOMPARE(picture("errors.png"), m.picError->Picture().Image());
        fAnalysis& a = m.Windows().Analysis.Get();
        a.optYPhi->click();
        a.OptZ->click();
        QCOMPARE(picture("analysis-phi-error-vs-zenith-distance.png"), a.picGraph->Picture().Image());
        QCOMPARE(RunPlot({out + "/errors.png", "--out", dir.filePath("bad")}), 3);
        QVERIFY(!QDir(dir.filePath("bad")).exists());
        QFile::remove(QT_TESTCASE_SOURCEDIR "/../docs/error-graph.png");
        QVERIFY(QFile::copy(out + "/analysis-phi-error-vs-phi.png",
                            QT_TESTCASE_SOURCEDIR "/../docs/error-graph.png"));
    }
};
QTEST_MAIN(WindowLifeTest)

#include "WindowLifeTest.moc"
