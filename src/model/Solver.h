// The calibration solver: linear least squares over the active terms, the
// ladder that drops terms while the inverse is too sensitive, and the
// iteration that moves terms 1 to 4 into the offsets and axis rotations.
#pragma once

#include <cstdint>

struct ModelState;

void SelectActiveTerms(ModelState& s, int16_t MaxTerm);
void SolveCoefficients(ModelState& s);
void Calibrate(ModelState& s);
