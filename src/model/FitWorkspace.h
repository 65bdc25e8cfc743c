// Working storage of one fit, fixed in size so that the solver allocates
// nothing while it runs.
#pragma once

#include <array>
#include <cstdint>

#include "model/Constants.h"
#include "model/Terms.h"
#include "model/Vec3.h"
#include "sky/cMath.h"

struct ModelState;

struct FitWorkspace {
    // Used points in table order, and where each star stands in the horizon
    // frame (refraction applied). That vector depends only on the point and
    // the site, so it is computed once per fit, not once per solve.
    int NumUsed = 0;
    std::array<int16_t, kMaxCalPoints + 1> UsedIndex{};
    std::array<Vec3, kMaxCalPoints + 1> Sky{};

    // The normal equations of the active terms, then their solution.
    std::array<int16_t, kNumTerms + 1> TermList{};
    Matrix A{};
    MatrixVector R{};
    TermTable B{};
};

// Fills NumUsed, UsedIndex and Sky from the model.
void PrepareFitWorkspace(const ModelState& s, FitWorkspace& w);

// One least squares solve with the offsets and rotations as they stand,
// using the prepared sky vectors.
void SolveCoefficients(ModelState& s, FitWorkspace& w);
