#include "BenchModels.h"

#include "model/SyntheticCalibration.h"
#include "model/Terms.h"

std::unique_ptr<ModelState> MakeBenchModel(int points, double countsPerRev) {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    s->ThetaCountsPerRev = countsPerRev;
    s->PhiCountsPerRev = countsPerRev;
    EnableAll(*s);
    SyntheticMount m;
    m.Num = points;
    m.ErrorNorth = 1.2e-3;
    m.ErrorWest = -0.7e-3;
    m.ThetaEncOffset = 3e-3 * countsPerRev / 6.283185308;
    m.PhiEncOffset = -7e-3 * countsPerRev / 6.283185308;
    m.TermCoef[5] = 9e-4;
    m.TermCoef[10] = 2e-4;
    m.TermCoef[11] = -1.5e-4;
    m.NoiseRMS = 3 * 3.141592654 / 648000;
    m.MinutesBetween = 0.5;
    AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
    return s;
}
