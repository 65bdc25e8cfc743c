// The windows of one model: each comes into being at its first use, unseen,
// and is refreshed from then on whether it is on the screen or not; closing
// one drops it. The orders in which the main window, a client's KillAztrue
// and Dispose close them are kept here.
//
// A new window plugs in with: its slot below, with the line that builds it
// in the constructor (a window takes the set, the chain and model are there);
// its place in UnloadAll, KillWindows and CloseAll; and the refresh of the
// chain that reaches it, in WindowsDisplay.
#pragma once

#include <functional>

#include "files/TestLogList.h"
#include "server/cAztrue.h"
#include "simulation/fVirtualScope.h"
#include "simulation/mVirtualScope.h"
#include "windows/LazyWindow.h"
#include "windows/fAdvanced.h"
#include "windows/fAnalysis.h"
#include "windows/fAutoAlign.h"
#include "windows/fCalPoints.h"
#include "windows/fErrors.h"
#include "windows/fMain.h"
#include "windows/fSetup.h"
#include "windows/fTest.h"

class RecalcChain;

class WindowSet {
  public:
    // Installs the copy of LoadCalFile's term flags into fErrors' check
    // boxes, and fTest's list as the Test Log list, for as long as the set
    // lives.
    explicit WindowSet(RecalcChain& Chain);
    ~WindowSet();
    WindowSet(const WindowSet&) = delete;
    WindowSet& operator=(const WindowSet&) = delete;

    RecalcChain& Chain() { return chain_; }

  private:
    RecalcChain& chain_;
    std::function<void()> previousHook_;
    TestLogSink previousSink_;

  public:
    // TestServer: the one server object of the development windows and
    // checks, on the one model. It is created here, with the main window's
    // slot, so it exists before any of them opens, and lives as long.
    cAztrue TestServer;
    LazyWindow<fMain> Main;
    LazyWindow<fErrors> Errors;
    LazyWindow<fCalPoints> CalPoints;
    LazyWindow<fSetup> Setup;
    LazyWindow<fAnalysis> Analysis;
    LazyWindow<fAdvanced> Advanced;
    // The developers' windows of the Test menu: the Test Log list and the
    // Auto Alignment map.
    LazyWindow<fTest> Test;
    LazyWindow<fAutoAlign> AutoAlign;
    // The Virtual Telescope, and the description of its imaginary mount,
    // which outlives the window.
    VirtualScopeInputs VirtualScopeDescription;
    LazyWindow<fVirtualScope> VirtualScope;

    // The main window's unload: fSetup, fCalPoints, fAnalysis, fErrors,
    // fAdvanced, fTest, fVirtualScope (fAbout belongs to the main window).
    // Never fAutoAlign.
    void UnloadAll();
    // A client's KillAztrue: fAdvanced, fAnalysis, fCalPoints, fErrors,
    // fMain, fSetup.
    void KillWindows();
    // Dispose: fAdvanced, fAnalysis, fCalPoints, fErrors, fMain, fSetup,
    // fTest, fVirtualScope.
    void CloseAll();
};
