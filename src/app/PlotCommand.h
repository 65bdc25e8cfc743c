// `aztrue plot FILE --out DIR [--size N]`: every plot of a calibration's fit
// written as PNG pictures, without a display. Built into the executable with
// the other starts that need Qt; the app library stays free of it.
#pragma once

#include <string>
#include <vector>

// args are the words after "plot"; argc and argv are the process's, for Qt.
// Exit codes are those of the fit command: 0, 2 for a usage error, a file
// that cannot be read or a folder that cannot be written, 3 for a file that
// is not a valid calibration file. The calibration file is only read.
int RunPlotCommand(int argc, char** argv, const std::vector<std::string>& args);

// The help text of the plot command.
std::string PlotCommandHelp();
