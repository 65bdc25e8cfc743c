// Models shared by the benchmarks: a site and a fitted model with many points.
#pragma once

#include <memory>

#include "model/ModelState.h"

// A fresh alt-az model at the default site with all 22 term flags on and
// `points` calibration points of a synthetic mount with a few arcseconds of
// noise. `countsPerRev` sets both encoders' counts per turn.
std::unique_ptr<ModelState> MakeBenchModel(int points, double countsPerRev = 6.283185308);
