// `aztrue fit FILE`: load a calibration file, fit, and report; with
// --scale-search, search for the encoder scale factors first.
#pragma once

#include <ostream>
#include <string>
#include <vector>

// Exit codes of the fit command.
inline constexpr int kFitOk = 0;
inline constexpr int kFitUsageError = 2;   // unknown option, missing or unreadable file
inline constexpr int kFitInvalidFile = 3;  // not a valid calibration file, or no finite fit
inline constexpr int kFitSaveError = 4;    // the calibration could not be written

// args are the words after "fit". Writes the report to out and messages to
// err; writes a file only for --save, and only that one.
int RunFitCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// The help text of the fit command.
std::string FitCommandHelp();
