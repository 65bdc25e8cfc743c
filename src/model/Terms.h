// The 46 correction terms of the pointing model and the term flag presets.
// C = P(Theta, Phi) + sum over active terms i of TermCoef(i) x B(i; Theta, Phi)
#pragma once

#include <array>

#include "model/Constants.h"
#include "model/Vec3.h"

struct ModelState;

// B(term, component): rows 1..46 are terms, columns 1..3 are x, y, z.
// Row 0 and column 0 are never touched.
using TermTable = std::array<std::array<double, 4>, kNumTerms + 1>;

// Fills all 138 elements of B for the axis angles (radians).
void TermBasis(double Theta, double Phi, TermTable& B);

// Corrected unit pointing vector, mount frame, for an encoder position.
Vec3 EncoderToPointing(const ModelState& s, double ThetaEnc, double PhiEnc);

// Flag presets: write TermEnable only, start no fit.
void EnableAll(ModelState& s);
void DisableAll(ModelState& s);
void EnableAltAz(ModelState& s);
void EnableGEM(ModelState& s);
