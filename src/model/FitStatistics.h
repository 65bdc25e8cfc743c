// How well the last fit determines its terms: the normal matrix of the
// active terms and its inverse, the used points' residuals, and from them
// each term's standard error and significance, the correlation of each pair
// of terms and the population standard deviation. Reads the model, changes
// nothing in it.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "model/Constants.h"
#include "model/Vec3.h"
#include "sky/cMath.h"

struct ModelState;

// Where a fit stops deserving trust: a Sensitivity (largest element of the
// inverse normal matrix) above kIllConditioned, or two terms correlated
// beyond kFightingTerms, which the points then cannot tell apart. Pairs
// beyond kListedCorrelation are worth listing.
inline constexpr double kIllConditioned = 1000;
inline constexpr double kFightingTerms = 0.95;
inline constexpr double kListedCorrelation = 0.9;

struct TermStatistic {
    int16_t Term = 0;
    // Radians. For terms 1 to 4 the whole of what the model holds for them
    // (FittedOffsets: the offset or rotation plus the coefficient), in the
    // sense of the term; for the others the fitted coefficient.
    double Coef = 0;
    double Sigma = 0;         // standard error, radians; NaN when 2N <= k
    double Significance = 0;  // Coef / Sigma
};

struct FitStatistics {
    int NumUsed = 0;                                // N, used points
    int NumFitted = 0;                              // k, active terms
    std::array<int16_t, kNumTerms + 1> TermList{};  // 1 to k, rising
    Matrix Normal{};                                // k by k, 1-based
    Matrix Inverse{};                               // by the model's own inverter
    std::vector<Vec3> Residuals;       // of the used points in table order, mount frame
    double SumSquares = 0;             // of all residual components
    double RMS = 0;                    // the fit's RMS error of the used points, radians
    double PopulationSD = 0;           // RMS x sqrt(N / (N - k)), radians; NaN when N <= k
    double AxisSigma = 0;              // error per sky axis, radians; NaN when 2N <= k
    std::vector<TermStatistic> Terms;  // the active terms, rising
};

// Takes a model after Calibrate and ComputeResiduals (as the recalculation
// chain and every fresh read leave it); gives the statistics of that fit.
FitStatistics ComputeFitStatistics(const ModelState& s);

// RMS x sqrt(N / (N - k)), or NaN when N <= k.
double PopulationStandardDeviation(double RMS, int N, int k);

// The correlation of the active terms at places i and j (1 to k) of the
// term list: Inverse(i, j) / sqrt(Inverse(i, i) Inverse(j, j)).
double TermCorrelation(const FitStatistics& f, int i, int j);

struct CorrelatedPair {
    int16_t TermA = 0;  // the lower term number
    int16_t TermB = 0;
    double Rho = 0;
};
// Every pair of active terms whose correlation exceeds Limit in size, in the
// order of the term list; a negative Limit gives every pair.
std::vector<CorrelatedPair> CorrelatedPairs(const FitStatistics& f, double Limit);
