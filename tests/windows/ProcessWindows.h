// The windows over a model of the test's own as the process has them: a
// chain, its windows' display and the set of lazily built windows, with a
// count of the chain's complete runs.
#pragma once

#include "model/SyntheticCalibration.h"
#include "model/Terms.h"
#include "server/RecalcChain.h"
#include "windows/WindowsDisplay.h"
#include "windows/WindowsTestSupport.h"

class CountingWindows : public WindowsDisplay {
  public:
    using WindowsDisplay::WindowsDisplay;
    // The last refresh of a run of the chain.
    void DisplayData() override { ++Fits; }
    int Fits = 0;
};

struct ProcessWindows {
    explicit ProcessWindows(ModelState& s) : chain(s, none), display(chain, {}) {
        chain.SetDisplay(display);
        chain.SetDisplayEnabled(true);
    }
    ~ProcessWindows() { chain.SetDisplay(none); }
    WindowSet& Windows() { return display.Windows(); }

    NoDisplay none;
    RecalcChain chain;
    CountingWindows display;
};

// A client's model of an alt-az mount with Num points of a mount with a
// cone error, all terms enabled and no sensitivity limit to speak of.
inline std::unique_ptr<ModelState> ClientModel(int Num) {
    auto s = FreshModel();
    s->ServerStarted = true;
    s->MaxSensitivity = 1e15;
    EnableAll(*s);
    SyntheticMount m;
    m.Num = Num;
    m.TermCoef[5] = 8e-4;
    m.NoiseRMS = Arcsec(3);
    AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
    for (int i = 1; i <= Num; ++i)
        s->CalPoints[i].DateStr = QStringLiteral("d%1").arg(i).toStdString();
    return s;
}
