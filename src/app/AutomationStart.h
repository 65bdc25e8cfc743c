// The starts of the executable that need Qt: the automation server and the
// desktop program.
#pragma once

#include "app/DesktopOptions.h"

// Serves clients on the D-Bus session bus; the main window exists unseen
// and appears when a client asks for it.
int RunAutomation(int argc, char** argv);

// The desktop program: the main window on the screen, with the calibration
// file of Options open at start unless it is empty, and the developers'
// Test menu when Options asks for it.
int RunDesktop(int argc, char** argv, const DesktopOptions& Options);
