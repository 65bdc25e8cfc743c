// The calibration file: the points and settings of one observing run as
// single-byte text, one value per line, CR LF line ends.
#pragma once

#include <string>

struct ModelState;

// A real number as the file writes it: " 1.5 " for a non-negative value,
// "-1.5 " for a negative one; up to 15 significant digits, "." always.
std::string NumToFileStr(double x);

// Writes the points and settings of the model to FileName, replacing the
// file whole or not at all (WriteFileAtomically). False when the file cannot
// be written; the old file then stays as it was.
bool SaveCalFile(ModelState& s, const std::string& FileName);

// Reads a calibration file into the model. False when the file cannot be
// read (TextLineReader refuses it) or is not a valid calibration file, which
// includes a number line beyond the range of a double in the obligatory
// part; what was read before a failure stays in the model.
bool LoadCalFile(ModelState& s, const std::string& FileName);
