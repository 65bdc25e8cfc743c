// The scale factor search in the Advanced Features window as an operator
// runs it: a reset in the middle, stopped by a click, ended by itself, the
// window closed under it.
#include <QLabel>
#include <QPushButton>
#include <QtTest>
#include <functional>

#include "model/ScaleErrorMount.h"
#include "server/RecalcChain.h"
#include "windows/TestRegistry.h"
#include "windows/WindowsDisplay.h"
#include "windows/WindowsTestSupport.h"

namespace {

// The windows of a model whose chain lets no events run: the search's own
// pump, once per step, is then the only place where a queued click is served.
class StillDisplay : public WindowsDisplay {
  public:
    using WindowsDisplay::WindowsDisplay;
    void ProcessPendingEvents() override {}
};

struct SearchWindows {
    explicit SearchWindows(ModelState& s) : chain(s, none), display(chain, {}) {
        s.ServerStarted = true;  // the main window's load keeps the model
        chain.SetDisplay(display);
        chain.SetDisplayEnabled(true);
    }
    ~SearchWindows() { chain.SetDisplay(none); }
    fAdvanced& Shown() {
        display.Windows().Advanced.Show();
        return *display.Windows().Advanced.IfLoaded();
    }
    NoDisplay none;
    RecalcChain chain;
    StillDisplay display;
};

// Steps kept and tried, from lblStats.
std::pair<int, int> Stats(fAdvanced& w) {
    const QStringList p = w.lblStats->text().split('/');
    return {p[0].toInt(), p[1].toInt()};
}

// The texts of the labels of a window, by their names, joined by "|".
QString Texts(QWidget& w, const QString& Names) {
    QStringList texts;
    for (const QString& name : Names.split(' ')) texts << w.findChild<QLabel*>(name)->text();
    return texts.join('|');
}

// Starts a run with a click and calls Step at each pass of the run's event
// pump until Step returns true; returns when the run has ended.
void RunWith(fAdvanced& w, std::function<bool()> Step) {
    QTimer timer;
    bool done = false;
    QObject::connect(&timer, &QTimer::timeout, [&] { done = done || Step(); });
    timer.start(0);
    QTest::mouseClick(w.cmdOptSF, Qt::LeftButton);
}

}  // namespace

class AdvancedWindowTest : public QObject {
    Q_OBJECT
  private slots:
    // In the run's pump: after 3 kept steps "Reset" sets PhiSF to 1; the
    // next step starts from there, fails against the run's best and puts
    // the best back; a click then ends the run with no further step.
    void ResetThenClickDuringARun() {
        auto s = ScaleErrorModel();
        SearchWindows p(*s);
        fAdvanced& w = p.Shown();
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
        QCOMPARE(w.cmdOptSF->text(), QStringLiteral("Start Optimization"));
        QCOMPARE(s->PhiSF, best);
    }

    // With no point in use nothing can be strictly better: the run ends by
    // itself at the 61st rejected step with the factors as they were. The
    // chain's refresh builds the window unseen and writes its figures (worked
    // out by hand), before the run and again, with 6 decimals, after it.
    void RunWithNothingToGainEndsAt61() {
        auto s = FreshModel();
        s->PhiSF = 1.00012345678;
        s->ThetaSF = 0.9999;
        SearchWindows p(*s);
        p.chain.CalibrateAndDisplay();
        fAdvanced* w = p.display.Windows().Advanced.IfLoaded();
        QVERIFY(w && !w->isVisible());
        const QString names = "lblPhiSF lblPhiP lblThetaSF lblThetaP lblRMS lblRMSRate";
        const QString figures = "1.000123|0.0123%|0.9999|-0.01%|0\"|0\"";
        QCOMPARE(Texts(*w, names), figures);
        w->cmdOptSF->click();
        QCOMPARE(w->lblStats->text(), QStringLiteral("0/61"));
        QCOMPARE(w->cmdOptSF->text(), QStringLiteral("Start Optimization"));
        QCOMPARE(s->PhiSF, 1.00012345678);
        QCOMPARE(s->ThetaSF, 0.9999);
        QCOMPARE(Texts(*w, names), figures);
    }

    // The window closed during a run, by hand or by a client's KillAztrue
    // or Dispose, ends the run with the step under way; the object goes
    // once the run has returned, never while it runs.
    void ClosingTheWindowEndsTheRun() {
        const std::pair<const char*, std::function<void(SearchWindows&)>> closes[] = {
            {"by hand", [](SearchWindows& p) { p.display.Windows().Advanced.IfLoaded()->close(); }},
            {"KillAztrue", [](SearchWindows& p) { p.display.KillWindows(); }},
            {"Dispose", [](SearchWindows& p) { p.display.DisposeAll(); }}};
        for (const auto& [name, close] : closes) {
            auto s = ScaleErrorModel();
            SearchWindows p(*s);
            fAdvanced& w = p.Shown();
            QPointer<fAdvanced> first(&w);
            int closedAt = -1, last = 0;
            RunWith(w, [&, close = close] {
                last = Stats(w).second;
                if (closedAt < 0 && last >= 3) {
                    close(p);
                    closedAt = last;
                }
                return false;
            });
            QVERIFY2(last == closedAt, name);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY2(!first, name);
        }
    }
};

AZTRUE_REGISTER_TEST(AdvancedWindowTest);
#include "AdvancedWindowTest.moc"
