// Where the program finds its own data files (Points.txt, sample.hrz).
#pragma once

#include <string>

// The first folder that holds Points.txt of: the executable's folder (a
// build folder), the data folder of an installation beside the executable's
// folder (bin/../share/aztrue, wherever the installation was moved), and the
// data folder of the installation as configured. The last when none does.
std::string FindProgramFolder();
