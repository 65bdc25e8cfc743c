// A calibration with a known encoder scale error, for the tests of the
// scale factor search at every layer.
#pragma once

#include <memory>

#include "model/ModelState.h"
#include "model/SyntheticCalibration.h"
#include "model/Terms.h"

// Forty stars of an alt-az mount with a polar misalignment, a cone error,
// 1" of noise and a Phi encoder that counts 3 parts in 10,000 more per turn
// than the model, which starts from factors of 1, assumes: its fit is about
// 37" RMS.
inline constexpr double kTruePhiSF = 1.0003;
inline std::unique_ptr<ModelState> ScaleErrorModel() {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    EnableAltAz(*s);
    SyntheticMount m;
    m.NoiseRMS = kHalfTurn / 648000;
    m.ErrorNorth = 1e-3;
    m.TermCoef[5] = 5e-4;
    s->PhiSF = kTruePhiSF;
    AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
    s->PhiSF = 1;
    return s;
}
