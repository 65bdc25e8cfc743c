// The display of a process with windows: the chain's refreshes reach the
// windows of its set, each of which comes into being unseen at its first
// use, and the client's show, kill and dispose act on the real windows.
#pragma once

#include <functional>
#include <string>

#include "server/DisplayRefresh.h"
#include "windows/WindowSet.h"

class RecalcChain;
class fMain;

class WindowsDisplay : public DisplayRefresh {
  public:
    // Chain is the main window object whose model the windows show.
    // EndProcess ends the process once the reply to the current call has
    // left; it runs after every window has closed.
    WindowsDisplay(RecalcChain& Chain, std::function<void()> EndProcess);
    ~WindowsDisplay() override;
    WindowsDisplay(const WindowsDisplay&) = delete;
    WindowsDisplay& operator=(const WindowsDisplay&) = delete;

    WindowSet& Windows() { return windows_; }
    // The main window, loaded unseen if it does not exist yet. A closed
    // main window is dropped, so the next use loads it again.
    fMain& Main() { return windows_.Main.Get(); }
    // The main window if it is loaded, else null.
    fMain* MainIfLoaded() const { return windows_.Main.IfLoaded(); }

    void DisplayCalPoints() override;
    void UpdateGraph() override;
    void MakeGraph() override;
    void DisplayData() override;
    void ProcessPendingEvents() override;

    void ShowMain() override;
    void KillWindows() override;
    void DisposeAll() override;
    void FileNameChanged(const std::string& FullFileName) override;
    void EnableToChk() override;

  private:
    RecalcChain& chain_;
    std::function<void()> endProcess_;
    WindowSet windows_;
};
