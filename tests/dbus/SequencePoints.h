// The calibration points of the tests' imaginary mount: 30 stars of an
// evening on an alt-az mount at the default site (latitude 33.5, longitude
// -118), encoders of 2^22 counts per turn, a tilt of 240" to the north and
// 150" to the east, encoder offsets of 2000 and -5000 counts, a cone error
// of 180" and 2" of noise on each axis.
#pragma once

#include <memory>
#include <vector>

#include "model/ModelState.h"
#include "model/SyntheticCalibration.h"

namespace bustest {

inline constexpr double kArcsec = 3.141592654 / 648000;
inline constexpr double kSequenceCountsPerRev = 4194304;

inline SyntheticMount SequenceMount() {
    SyntheticMount m;
    m.Num = 30;
    m.ErrorNorth = 240 * kArcsec;
    m.ErrorWest = -150 * kArcsec;
    m.ThetaEncOffset = 2000;
    m.PhiEncOffset = -5000;
    m.TermCoef[5] = 180 * kArcsec;
    m.NoiseRMS = 2 * kArcsec;
    m.Seed = 6;
    m.MinutesBetween = 4;
    m.FirstJD = 2461056.64583333;
    m.FirstLST = 0.874216242018845;
    return m;
}

inline std::vector<SyntheticPoint> SequencePoints() {
    auto site = std::make_unique<ModelState>();
    InitModel(*site);
    site->ThetaCountsPerRev = kSequenceCountsPerRev;
    site->PhiCountsPerRev = kSequenceCountsPerRev;
    return MakeSyntheticPoints(*site, SequenceMount());
}

}  // namespace bustest
