// The search for the encoder scale factors PhiSF and ThetaSF, which the
// linear fit cannot find since they stretch the readings themselves: a
// random walk that perturbs both factors a little, fits again and keeps the
// step only if the RMS error of the used points has fallen. The Advanced
// Features window and the fit command run the same steps.
#pragma once

#include <cstdint>
#include <random>

struct ModelState;

// Uniform numbers in [0, 1) for the search: raw 32-bit words of
// std::mt19937 divided by 2^32. The engine's sequence is fixed by the C++
// standard and no distribution stands between, so every build draws the
// same numbers from the same seed.
class SearchRandom {
  public:
    // The engine's own default seed; never the clock, so each start of the
    // program walks the same way.
    static constexpr uint32_t kDefaultSeed = std::mt19937::default_seed;
    explicit SearchRandom(uint32_t Seed = kDefaultSeed) : gen_(Seed) {}
    double Next() { return static_cast<double>(gen_()) / 4294967296.0; }

  private:
    std::mt19937 gen_;
};

// The one generator of the process, seeded with kDefaultSeed at first use.
SearchRandom& ProcessSearchRandom();

// The locals of one run of the search.
struct ScaleSearchRun {
    double BestRMS = 0;  // lowest RMSErrSel so far, radians
    double BestPhiSF = 1;
    double BestThetaSF = 1;
    double Trials = 0;     // steps tried
    double Successes = 0;  // steps kept
    int32_t Failures = 0;  // steps rejected since the last kept one

    // The 61st rejected step in a row ends a run.
    bool Exhausted() const { return Failures > 60; }
};

// Fits, measures the residuals and takes the factors and RMSErrSel as they
// stand as the best so far.
ScaleSearchRun StartScaleSearch(ModelState& s);

// One step: two draws, PhiSF's first, each factor times
// 1 + (2U - 1) / 20000; Calibrate and ComputeResiduals. A strictly lower
// RMSErrSel is kept as the new best; otherwise the best factors are put
// back (the model's fit is then that of the rejected trial until the next
// fit) and the failure is counted. True when the step was kept.
bool ScaleSearchStep(ModelState& s, ScaleSearchRun& Run, SearchRandom& Random);

// A whole run with no one to stop it: steps until the 61st rejection in a
// row, then a fit and residuals with the kept factors. Gives the run's
// figures; the RMS before is the first fit's.
struct ScaleSearchResult {
    ScaleSearchRun Run;
    double RMSBefore = 0;  // radians
};
ScaleSearchResult RunScaleSearch(ModelState& s, SearchRandom& Random);
