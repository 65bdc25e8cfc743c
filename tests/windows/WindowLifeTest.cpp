// Windows built at first use, met by queued calls during their load and
// dropped when closed; the scale factor search reset, stopped and closed
// under as it runs.
#include "model/ScaleErrorMount.h"
#include "server/cAztrue.h"
#include "windows/WindowsTestSupport.h"

namespace {

// A load gives the new main window its title: one change per load.
struct LoadCounter : QObject {
    bool eventFilter(QObject* o, QEvent* e) override {
        Loads += e->type() == QEvent::WindowTitleChange && qobject_cast<fMain*>(o);
        return false;
    }
    int Loads = 0;
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

}  // namespace

class WindowLifeTest : public QObject {
    Q_OBJECT
  private slots:
    // Client calls queued behind one that loads the main window run inside
    // its load and meet that one window in the order sent. A AddCalPoint, S
    // ShowAztrue, K KillAztrue; loads counted by the title each gives, main
    // windows shown after the last call. SK: the refresh of ShowAztrue loads
    // again the window that K closed.
    void QueuedCallsMeetTheWindowBeingLoaded() {
        const struct {
            QString Calls;
            int Loads, Shown;
        } cases[] = {{"AAAAAA", 1, 0}, {"SK", 2, 0}, {"ASK", 1, 0}, {"AKS", 1, 1}};
        for (const auto& c : cases) {
            auto s = ClientModel(0);
            ProcessWindows p(*s);
            cAztrue server(p.chain);
            LoadCounter counter;
            qApp->installEventFilter(&counter);
            qsizetype served = 0;
            int shown = -1;
            for (const QChar call : c.Calls) {
                QTimer::singleShot(0, [&, call] {
                    if (call == 'A') server.AddCalPoint(0.1, 0.2, 0.3, 0.4, 0.5, 2451545, "", "");
                    if (call == 'S') server.ShowAztrue();
                    if (call == 'K') server.KillAztrue();
                    if (++served < c.Calls.size()) return;
                    shown = 0;
                    for (QWidget* w : QApplication::topLevelWidgets())
                        shown += qobject_cast<fMain*>(w) && w->isVisible();
                });
            }
            QTRY_COMPARE(served, c.Calls.size());
            qApp->removeEventFilter(&counter);
            QCOMPARE(QString("%1 loads, %2 shown").arg(counter.Loads).arg(shown),
                     QString("%1 loads, %2 shown").arg(c.Loads).arg(c.Shown));
        }
    }

    // The main window's unload keeps itself and the map (the Virtual Telescope
    // goes with the rest); a client's
    // KillAztrue and Dispose keep only the map, which is never closed for
    // others. The next refit loads the main window again over the same model.
    void WhichWindowsEachCloseLeaves() {
        const std::pair<std::function<void(ProcessWindows&)>, QString> cases[] = {
            {[](ProcessWindows& p) { p.Windows().Main.Get().UnloadAll(); }, "fAutoAlign fMain"},
            {[](ProcessWindows& p) { p.display.KillWindows(); }, "fAutoAlign"},
            {[](ProcessWindows& p) { p.display.DisposeAll(); }, "fAutoAlign"}};
        for (const auto& [close, left] : cases) {
            auto s = ClientModel(3);
            ProcessWindows p(*s);
            WindowSet& ws = p.Windows();
            ws.Main.Get(), ws.Errors.Get(), ws.CalPoints.Get(), ws.Setup.Get();
            ws.Analysis.Get(), ws.Advanced.Get(), ws.Test.Get(), ws.AutoAlign.Get();
            ws.VirtualScope.Get();
            close(p);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QStringList loaded;  // the window objects still there
            for (QWidget* w : QApplication::topLevelWidgets())
                if (w->metaObject()->className()[0] == 'f') loaded << w->metaObject()->className();
            loaded.sort();
            QCOMPARE(loaded.join(' '), left);
            p.chain.CalibrateAndDisplay();
            QCOMPARE(p.display.Main().lblNum->text(), QStringLiteral("3/3"));
        }
    }

    // After 3 kept steps "Reset" sets PhiSF to 1; the next step fails against the
    // run's best and puts it back; a click then ends the run with no further step.
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

    // With no point in use nothing is better: the run ends at the 61st rejected
    // step, the factors as they were (1.00012345678 is 0.0123 %, 0.9999 -0.01 %).
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

    // Closed during a run, by hand or a client's Dispose, the window ends the run
    // with the step under way and goes once the run has returned, not before.
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
};
QTEST_MAIN(WindowLifeTest)

#include "WindowLifeTest.moc"
