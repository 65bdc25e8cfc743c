#include "app/AutomationStart.h"

#include <QApplication>
#include <QDBusConnection>
#include <QMenu>
#include <QString>
#include <cstdio>

#include "app/ProgramFolder.h"
#include "dbus/AutomationServer.h"
#include "dbus/ProcessEnd.h"
#include "model/ModelState.h"
#include "server/ServerProcess.h"
#include "windows/TestMenu.h"
#include "windows/WindowsDisplay.h"
#include "windows/fMain.h"

namespace {

bool HasDisplay() {
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

// The main window object gets a display back that refreshes nothing before
// the windows go away with the end of a start.
void ForgetWindows() {
    static NoDisplay noWindows;
    TheMainWindow().SetDisplay(noWindows);
}

}  // namespace

int RunAutomation(int argc, char** argv) {
    // Without a screen the server still serves: its windows are drawn
    // off the screen.
    if (!HasDisplay() && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    app.setApplicationName(QStringLiteral("Aztrue"));
    // Closing the window by hand leaves the clients attached; the process
    // ends when its objects end.
    app.setQuitOnLastWindowClosed(false);
    TheMainWindow().Model().ProgramFolder = FindProgramFolder();
    const QDBusConnection bus = QDBusConnection::sessionBus();
    WindowsDisplay windows(TheMainWindow(), [bus] { EndProcessAfterReply(bus); });
    AutomationServer server(bus);
    server.UseDisplay(windows);
    QString message;
    if (server.Publish(message) != AutomationServer::Outcome::Serving) {
        std::fprintf(stderr, "aztrue: %s\n", qPrintable(message));
        ForgetWindows();
        return 1;
    }
    // The process ends from inside the loop, when an object ends.
    const int status = app.exec();
    ForgetWindows();
    return status;
}

int RunDesktop(int argc, char** argv, const DesktopOptions& Options) {
    if (!HasDisplay() && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        std::fprintf(stderr,
                     "aztrue: no display (neither DISPLAY nor WAYLAND_DISPLAY is set); "
                     "the fit report is printed by: aztrue fit FILE\n");
        return 2;
    }
    QApplication app(argc, argv);
    app.setApplicationName(QStringLiteral("Aztrue"));
    ModelState& model = TheMainWindow().Model();
    model.ProgramFolder = FindProgramFolder();
    WindowsDisplay windows(TheMainWindow(), {});
    TheMainWindow().SetDisplay(windows);
    // The first form: its load runs InitModel, as no client started us.
    fMain& w = windows.Main();
    // The load has switched the Test menu and the Test Log off; a developer
    // gets them back.
    if (Options.Developer) {
        w.menuTest->menuAction()->setVisible(true);
        model.TestLog = true;
    }
    if (!Options.DeveloperHorizon.empty()) w.Tests->HorizonFile = Options.DeveloperHorizon;
    w.show();
    if (!Options.File.empty()) w.OpenCalibrationFile(Options.File);
    const int status = app.exec();
    ForgetWindows();
    return status;
}
