// Shared pieces of the model tests: a model at its defaults, a check of
// three vector components, and the units of the reference values.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "model/Constants.h"
#include "model/Frames.h"
#include "model/ModelState.h"
#include "model/Vec3.h"

namespace modeltest {

// True pi, only for reference values worked out outside the program; the
// program's half turn 3.141592654 lies 4.1e-10 above it.
constexpr double kTruePi = 3.14159265358979323846;
constexpr double kArcsec = 3.141592654 / 648000;

inline std::unique_ptr<ModelState> FreshModel() {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    return s;
}

inline void ExpectVecNear(Vec3 want, Vec3 got, double tol, const std::string& what) {
    EXPECT_NEAR(want.x, got.x, tol) << what << " x";
    EXPECT_NEAR(want.y, got.y, tol) << what << " y";
    EXPECT_NEAR(want.z, got.z, tol) << what << " z";
}

}  // namespace modeltest
