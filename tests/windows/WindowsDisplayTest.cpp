// The windows as the display of the recalculation chain and of a client's
// server object: refresh order, the main window loaded unseen at first use,
// a click refitting through the chain, and the show, kill and dispose of a
// client.
#include <QLabel>
#include <QtTest>
#include <string>
#include <vector>

#include "model/ModelState.h"
#include "model/SyntheticCalibration.h"
#include "server/RecalcChain.h"
#include "server/cAztrue.h"
#include "windows/TestRegistry.h"
#include "windows/WindowsDisplay.h"
#include "windows/WindowsTestSupport.h"
#include "windows/fMain.h"

namespace {

// The windows' display with a record of every refresh the chain asks for,
// and of the chain's flag while the main window redraws.
class RecordingDisplay : public WindowsDisplay {
  public:
    RecordingDisplay(RecalcChain& Chain, std::function<void()> End)
        : WindowsDisplay(Chain, std::move(End)), chain_(Chain) {}
    void DisplayCalPoints() override { Calls.push_back("DisplayCalPoints"); }
    void UpdateGraph() override {
        Calls.push_back(chain_.DisplayEnabled() ? "UpdateGraph enabled" : "UpdateGraph");
        WindowsDisplay::UpdateGraph();
    }
    void MakeGraph() override { Calls.push_back("MakeGraph"); }
    void DisplayData() override { Calls.push_back("DisplayData"); }
    std::vector<std::string> Calls;

  private:
    RecalcChain& chain_;
};

// Twelve points of a mount with a known polar misalignment, all in use.
void AddMountPoints(ModelState& s) {
    SyntheticMount m;
    m.Num = 12;
    m.ErrorNorth = Arcmin(20);
    AddSyntheticPoints(s, MakeSyntheticPoints(s, m));
}

// Lets the deferred deletion of a closed window happen.
void DropClosedWindows() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

}  // namespace

class WindowsDisplayTest : public QObject {
    Q_OBJECT
  private slots:
    // The chain loads the main window unseen at its first refresh and
    // refreshes it in the fixed order, with the flag false while the main
    // window redraws; shown or not makes no difference.
    void ChainRefreshesTheMainWindowInOrderSeenOrNot() {
        auto s = FreshModel();
        s->ServerStarted = true;  // as a client's object leaves it
        AddMountPoints(*s);
        RecalcChain chain(*s, NoDisplayInstance());
        RecordingDisplay display(chain, {});
        chain.SetDisplay(display);
        chain.SetDisplayEnabled(true);
        QVERIFY(display.MainIfLoaded() == nullptr);

        const std::vector<std::string> order = {"DisplayCalPoints", "UpdateGraph", "MakeGraph",
                                                "DisplayData"};
        chain.CalibrateAndDisplay();
        QVERIFY(display.MainIfLoaded() != nullptr);
        fMain& w = *display.MainIfLoaded();
        QVERIFY(!w.isVisible());
        QVERIFY(display.Calls == order);
        QVERIFY(chain.DisplayEnabled());
        // The figures are the fit's: 12 points, all used.
        QCOMPARE(w.lblNum->text(), QStringLiteral("12/12"));

        display.ShowMain();
        QVERIFY(w.isVisible());
        display.Calls.clear();
        chain.CalibrateAndDisplay();
        QVERIFY(display.Calls == order);
        QVERIFY(display.MainIfLoaded() == &w);
        display.KillWindows();
        DropClosedWindows();
        QVERIFY(display.MainIfLoaded() == nullptr);
        chain.SetDisplay(NoDisplayInstance());
    }

    // A click on a dot of the main window goes through the chain: the point
    // leaves the fit and the chain runs once.
    void ClickRefitsOnceThroughTheChain() {
        auto s = FreshModel();
        s->ServerStarted = true;
        AddMountPoints(*s);
        RecalcChain chain(*s, NoDisplayInstance());
        RecordingDisplay display(chain, {});
        chain.SetDisplay(display);
        chain.SetDisplayEnabled(true);
        chain.CalibrateAndDisplay();
        fMain& w = display.Main();
        display.Calls.clear();

        w.PicErrorMouseDown(w.Plots.StarX[3], w.Plots.StarY[3]);
        QVERIFY(!s->CalPoints[3].Used);
        QCOMPARE(s->NumPointsUsed, 11);  // counted by the refit
        QCOMPARE(std::count(display.Calls.begin(), display.Calls.end(), "DisplayData"), 1L);
        QCOMPARE(w.lblNum->text(), QStringLiteral("11/12"));
        chain.SetDisplay(NoDisplayInstance());
    }

    // A client's object: ShowAztrue shows the main window, KillAztrue closes
    // it and the object works on; its next refit loads the window again,
    // unseen, without a new InitModel. Closing by hand is the same for the
    // client. Dispose closes the window and ends the process.
    void ClientShowsKillsAndDisposes() {
        auto s = std::make_unique<ModelState>();
        RecalcChain chain(*s, NoDisplayInstance());
        int ends = 0;
        WindowsDisplay display(chain, [&ends] { ++ends; });
        chain.SetDisplay(display);
        {
            cAztrue object(chain);
            object.SetLatitude(33.5);
            QVERIFY(display.MainIfLoaded() != nullptr);
            QVERIFY(!display.MainIfLoaded()->isVisible());

            object.ShowAztrue();
            QVERIFY(display.MainIfLoaded()->isVisible());
            object.KillAztrue();
            DropClosedWindows();
            QVERIFY(display.MainIfLoaded() == nullptr);
            object.SetLatitude(40);
            QCOMPARE(object.Latitude(), 40.0);
            QVERIFY(display.MainIfLoaded() != nullptr);
            QVERIFY(!display.MainIfLoaded()->isVisible());

            object.ShowAztrue();
            display.MainIfLoaded()->close();  // by hand
            DropClosedWindows();
            QVERIFY(display.MainIfLoaded() == nullptr);
            object.SetLatitude(41);
            QCOMPARE(object.Latitude(), 41.0);  // no InitModel on the reload

            QCOMPARE(ends, 0);
            object.Dispose();
            QCOMPARE(ends, 1);
            QVERIFY(display.MainIfLoaded() == nullptr);  // dropped at its close
        }
        chain.SetDisplay(NoDisplayInstance());
    }

  private:
    static DisplayRefresh& NoDisplayInstance() {
        static NoDisplay none;
        return none;
    }
};

AZTRUE_REGISTER_TEST(WindowsDisplayTest);

#include "WindowsDisplayTest.moc"
