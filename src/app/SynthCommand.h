// `aztrue synth`: writes the calibration file of an imaginary mount built
// badly on purpose, for client authors and fits to test against.
#pragma once

#include <ostream>
#include <string>
#include <vector>

inline constexpr int kSynthOk = 0;
inline constexpr int kSynthFailed = 1;      // the points or the file could not be made
inline constexpr int kSynthUsageError = 2;  // bad option or value, no --out

// args are the words after "synth"; the directions come from Points.txt in
// ProgramFolder. Writes one file, the one of --out, whole or not at all.
int RunSynthCommand(const std::vector<std::string>& args, const std::string& ProgramFolder,
                    std::ostream& out, std::ostream& err);

std::string SynthCommandHelp();
