// `aztrue suggest FILE.AZT`: where to measure the next stars so that the
// fitted terms of a calibration are pinned down best.
#pragma once

#include <ostream>
#include <string>
#include <vector>

inline constexpr int kSuggestOk = 0;
inline constexpr int kSuggestUsageError = 2;   // bad option, unreadable or unusable file
inline constexpr int kSuggestInvalidFile = 3;  // not a valid calibration file

// args are the words after "suggest"; the candidate directions come from
// Points.txt in ProgramFolder. Writes the points to out and messages to
// err; only reads files.
int RunSuggestCommand(const std::vector<std::string>& args, const std::string& ProgramFolder,
                      std::ostream& out, std::ostream& err);

std::string SuggestCommandHelp();
