// Cross-validated error of a fit: each used point measured against the fit
// made without it. A model whose cross-validated RMS is much worse than its
// own RMS has more terms than its points carry. Costs one whole fit per used
// point, so it runs on request only, never in the recalculation chain.
#pragma once

#include <cstdint>
#include <vector>

struct ModelState;

struct CrossValidation {
    std::vector<int16_t> Points;  // the used points, table order
    std::vector<double> Errors;   // sky error of each under the fit without it, radians
    double RMS = 0;               // of Errors, radians; 0 without used points
    double Max = 0;               // largest of Errors, radians
    int16_t MaxPoint = 0;         // the point with the largest error, 0 if none
    // Points whose cross-validated error exceeds three population standard
    // deviations of the fit (none when that is not defined, N <= k).
    std::vector<int16_t> Outliers;
};

// Takes a model after Calibrate and ComputeResiduals; leaves it as it is.
// For each used point: Calibrate on a copy of the model with that point out
// of use, then the point's error as ComputeResiduals measures it (the chord
// between the star and the model's pointing in the mount frame).
CrossValidation CrossValidate(const ModelState& s);
