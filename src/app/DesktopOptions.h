// The words of a start of the desktop program: a calibration file to open
// and the developers' switches.
#pragma once

#include <ostream>
#include <string>
#include <vector>

struct DesktopOptions {
    std::string File;  // calibration file to open at start; empty: none
    // --developer: the Test menu and the Test Log list switched on after the
    // main window's load.
    bool Developer = false;
    // --developer-horizon FILE (implies --developer): the horizon file of
    // the Test menu's CalPoints entry; empty: the shipped sample.hrz.
    std::string DeveloperHorizon;
};

// False, with a message on err, for a word that is no option of the desktop
// program or a developer horizon file that cannot be read.
bool ParseDesktopOptions(const std::vector<std::string>& args, DesktopOptions& Options,
                         std::ostream& err);
