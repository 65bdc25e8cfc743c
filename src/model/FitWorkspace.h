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

// Normal equations A x = R of a list of terms (numbers in rising order).
struct NormalSystem {
    int n = 0;
    std::array<int16_t, kNumTerms + 1> TermList{};
    Matrix A{};
    MatrixVector R{};
};

// The inputs of one point's horizon vector, kept with it so that a later
// reader can tell that the vector still belongs to the point.
struct SkyInputs {
    double RA = 0;
    double Dec = 0;
    double LST = 0;
    double JD = 0;
    double Latitude = 0;
    double Temperature = 0;
    double Pressure = 0;
    bool EnableRefraction = false;
    const ModelState* Model = nullptr;
};

struct FitWorkspace {
    // Used points in table order, and where each star stands in the horizon
    // frame (refraction applied). That vector depends only on the point and
    // the site, so it is computed once per fit, not once per solve.
    int NumUsed = 0;
    std::array<int16_t, kMaxCalPoints + 1> UsedIndex{};
    std::array<Vec3, kMaxCalPoints + 1> Sky{};
    std::array<SkyInputs, kMaxCalPoints + 1> SkyOf{};  // by used index

    NormalSystem Full;   // equations of the widest term set of a fit
    NormalSystem Solve;  // the system being inverted
    TermTable B{};
    // The basis of the terms of one point, packed by component.
    std::array<std::array<double, kNumTerms + 1>, 4> Packed{};
};

// Fills NumUsed, UsedIndex and Sky from the model.
void PrepareFitWorkspace(const ModelState& s, FitWorkspace& w);

// The horizon vector of point p of the model (CelestialToHorizon of its
// place and time): taken from the last Calibrate of this thread when that fit
// computed it from the very same inputs, bit for bit, else computed.
Vec3 PointSkyVector(const ModelState& s, int p);

// One least squares solve with the offsets and rotations as they stand,
// using the prepared sky vectors.
void SolveCoefficients(ModelState& s, FitWorkspace& w);
