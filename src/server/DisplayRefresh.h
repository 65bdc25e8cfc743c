// What the recalculation chain and the server object ask of the windows.
// The windows implement it to refresh themselves; a process without windows
// uses NoDisplay, so the model behaves the same with or without them.
#pragma once

#include <string>

class DisplayRefresh {
  public:
    virtual ~DisplayRefresh() = default;

    // Refreshes of the chain, one window each, called in this order.
    virtual void DisplayCalPoints() = 0;  // the Calibration Points table
    virtual void UpdateGraph() = 0;       // the main window's plot and figures
    virtual void MakeGraph() = 0;         // the Graphical Error Analysis
    virtual void DisplayData() = 0;       // the Advanced Features figures
    // Lets queued window events run, so a click is served inside a refresh.
    virtual void ProcessPendingEvents() = 0;

    // Main window lifecycle, reached by the client.
    virtual void ShowMain() = 0;     // show the main window, not modal
    virtual void KillWindows() = 0;  // close the server's windows; the process lives on
    virtual void DisposeAll() = 0;   // close every window and end the process at once
    // A calibration file was saved or loaded under this full name.
    virtual void FileNameChanged(const std::string& FullFileName) = 0;

    // The term flags were set by a preset: the Model Parameters window copies
    // them into its check boxes, starting no fit. A display without that
    // window has nothing to copy.
    virtual void EnableToChk() {}
};

// The display of a process without windows: every refresh is a no-op.
class NoDisplay : public DisplayRefresh {
  public:
    void DisplayCalPoints() override {}
    void UpdateGraph() override {}
    void MakeGraph() override {}
    void DisplayData() override {}
    void ProcessPendingEvents() override {}
    void ShowMain() override {}
    void KillWindows() override {}
    void DisposeAll() override {}
    void FileNameChanged(const std::string&) override {}
};
