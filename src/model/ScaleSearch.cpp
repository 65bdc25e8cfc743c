#include "model/ScaleSearch.h"

#include "model/ModelState.h"
#include "model/Residuals.h"
#include "model/Solver.h"

SearchRandom& ProcessSearchRandom() {
    static SearchRandom random;
    return random;
}

ScaleSearchRun StartScaleSearch(ModelState& s) {
    Calibrate(s);
    ComputeResiduals(s);
    ScaleSearchRun run;
    run.BestRMS = s.RMSErrSel;
    run.BestPhiSF = s.PhiSF;
    run.BestThetaSF = s.ThetaSF;
    return run;
}

bool ScaleSearchStep(ModelState& s, ScaleSearchRun& Run, SearchRandom& Random) {
    Run.Trials = Run.Trials + 1;
    // Each factor moves by at most 1/20000 of itself, up or down.
    const double U1 = Random.Next();
    s.PhiSF = s.PhiSF * (1 + (2 * U1 - 1) / 20000);
    const double U2 = Random.Next();
    s.ThetaSF = s.ThetaSF * (1 + (2 * U2 - 1) / 20000);
    Calibrate(s);
    ComputeResiduals(s);
    const double R = s.RMSErrSel;
    // An equal error counts as rejected.
    if (R < Run.BestRMS) {
        Run.Successes = Run.Successes + 1;
        Run.BestPhiSF = s.PhiSF;
        Run.BestThetaSF = s.ThetaSF;
        Run.Failures = 0;
        Run.BestRMS = R;
        return true;
    }
    s.PhiSF = Run.BestPhiSF;
    s.ThetaSF = Run.BestThetaSF;
    Run.Failures = Run.Failures + 1;
    return false;
}

ScaleSearchResult RunScaleSearch(ModelState& s, SearchRandom& Random) {
    ScaleSearchResult result;
    result.Run = StartScaleSearch(s);
    result.RMSBefore = result.Run.BestRMS;
    while (!result.Run.Exhausted()) ScaleSearchStep(s, result.Run, Random);
    Calibrate(s);
    ComputeResiduals(s);
    return result;
}
