// The site's skyline from a horizon file (text, normally ".hrz"): one
// sample a line, azimuth and elevation in degrees before and after the
// first comma, in any order; lines without a comma are comments. The
// samples become 360 elevations, one per whole degree of azimuth, joined by
// straight lines in azimuth, with elevation 0 at north at both ends of the
// ring. Files are only read.
#pragma once

#include <string>

#include "files/LoadFailure.h"
#include "model/AutoAlignRecords.h"

struct ModelState;

// The samples a file may hold.
inline constexpr int kMaxHorizonSamples = 1000;

// Reads FileName into Hrz. False when the name is empty, the file cannot be
// created (when absent) or read, it holds more than 1000 samples or a
// number too large for a double; Hrz is then left as it was, and Failure,
// if given, says why. Adds its lines to the Test Log list of s.
bool ReadHorizon(ModelState& s, const std::string& FileName, HorizonRecord& Hrz,
                 LoadFailure* Failure = nullptr);

// Trims blanks from both ends of Text and looks for the first Delimiter. If
// there is one, Field becomes the trimmed part before it and Text what
// follows it, untrimmed, and the result is true; else Field stays as it was.
bool GetField(std::string& Text, const std::string& Delimiter, std::string& Field);
