// The calibration solver: linear least squares over the active terms, the
// ladder that drops terms while the inverse is too sensitive, and the
// iteration that moves terms 1 to 4 into the offsets and axis rotations.
#pragma once

#include <cstdint>

struct ModelState;

// What the last Calibrate of the thread did, for benchmarks and reports:
// how many systems it inverted in stage 1 (rungs of the ladder), how many
// passes stage 2 ran, and how many terms the model kept.
struct FitRunInfo {
    int Rungs = 0;
    int Passes = 0;
    int ActiveTerms = 0;
};
const FitRunInfo& LastFitRunInfo();

void SelectActiveTerms(ModelState& s, int16_t MaxTerm);
void SolveCoefficients(ModelState& s);
void Calibrate(ModelState& s);
