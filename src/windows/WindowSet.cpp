#include "windows/WindowSet.h"

#include "files/WindowHooks.h"
#include "server/RecalcChain.h"

WindowSet::WindowSet(RecalcChain& Chain)
    : chain_(Chain),
      TestServer(Chain, cAztrue::Attach{}),
      Main([this] { return new fMain(*this); }),
      Errors([this] { return new fErrors(*this); }),
      CalPoints([this] { return new fCalPoints(*this); }),
      Setup([this] { return new fSetup(*this); }),
      Analysis([this] { return new fAnalysis(*this); }),
      Advanced([this] { return new fAdvanced(*this); }),
      Test([] { return new fTest; }),
      AutoAlign([this] { return new fAutoAlign(chain_.Model()); }),
      VirtualScope([this] { return new fVirtualScope(*this, VirtualScopeDescription); }) {
    // A loaded file shows its flags in the check boxes at once; the window
    // comes into being for that if it does not exist yet.
    previousHook_ = SetEnableToChkHook([this] { Errors.Get().EnableToChk(); });
    // A line for the Test Log list loads fTest, unseen, if it is not there.
    previousSink_ = SetTestLogSink([this](const std::string& Line) { Test.Get().AddLine(Line); });
}

WindowSet::~WindowSet() {
    SetTestLogSink(std::move(previousSink_));
    SetEnableToChkHook(std::move(previousHook_));
}

void WindowSet::UnloadAll() {
    Setup.Close();
    CalPoints.Close();
    Analysis.Close();
    Errors.Close();
    Advanced.Close();
    Test.Close();
    VirtualScope.Close();
}

void WindowSet::KillWindows() {
    Advanced.Close();
    Analysis.Close();
    CalPoints.Close();
    Errors.Close();
    Main.Close();
    Setup.Close();
}

void WindowSet::CloseAll() {
    Advanced.Close();
    Analysis.Close();
    CalPoints.Close();
    Errors.Close();
    Main.Close();
    Setup.Close();
    Test.Close();
    VirtualScope.Close();
}
