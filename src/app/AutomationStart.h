// The starts of the executable that need Qt: the automation server and the
// desktop program.
#pragma once

#include <string>

// Serves clients on the D-Bus session bus; the main window exists unseen
// and appears when a client asks for it.
int RunAutomation(int argc, char** argv);

// The desktop program: the main window on the screen, with the calibration
// File open at start unless File is empty.
int RunDesktop(int argc, char** argv, const std::string& File);
