// The display of the automation process while it has no windows: the
// refreshes of the chain do nothing, but pending events run where the chain
// lets them, and the end of the last window ends the process.
#pragma once

#include <QDBusConnection>
#include <string>

#include "server/DisplayRefresh.h"

class AutomationDisplay : public DisplayRefresh {
  public:
    // Bus is the connection whose replies must leave before the process ends.
    explicit AutomationDisplay(const QDBusConnection& Bus);

    void DisplayCalPoints() override {}
    void UpdateGraph() override {}
    void MakeGraph() override {}
    void DisplayData() override {}
    // Serves what is queued: D-Bus calls, and later window events.
    void ProcessPendingEvents() override;

    // No window exists yet to show or to close.
    void ShowMain() override {}
    void KillWindows() override {}
    // Ends the process once the current call's reply has been sent.
    void DisposeAll() override;
    void FileNameChanged(const std::string&) override {}

  private:
    QDBusConnection bus_;
};
