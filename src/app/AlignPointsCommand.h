// `aztrue align-points`: plans the alignment points of a calibration run
// for a site's skyline and prints them in the order to walk.
#pragma once

#include <ostream>
#include <string>
#include <vector>

inline constexpr int kAlignPointsOk = 0;
inline constexpr int kAlignPointsUsageError = 2;   // bad option, a file that cannot be read
inline constexpr int kAlignPointsInvalidFile = 3;  // a file read that cannot be used

// args are the words after "align-points"; the candidate directions come
// from Points.txt in ProgramFolder. Writes the list to out and messages to
// err; only reads files.
int RunAlignPointsCommand(const std::vector<std::string>& args, const std::string& ProgramFolder,
                          std::ostream& out, std::ostream& err);

std::string AlignPointsCommandHelp();
