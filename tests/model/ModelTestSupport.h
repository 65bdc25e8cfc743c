// Shared pieces of the model tests: fresh models, models with a known mount's points.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>
#include <string>

#include "model/Frames.h"
#include "model/ModelState.h"
#include "model/SyntheticCalibration.h"

namespace modeltest {

// True pi, only for references worked out outside the program; the program's half turn lies 4.1e-10
// above it.
constexpr double kTruePi = 3.14159265358979323846;
constexpr double kArcsec = kTruePi / 648000;

inline std::unique_ptr<ModelState> FreshModel() {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    return s;
}

// A fresh model, `settings` applied, holding the points of the mount `m`.
inline std::unique_ptr<ModelState> WithPoints(const SyntheticMount& m,
                                              void (*settings)(ModelState&) = nullptr) {
    auto s = FreshModel();
    if (settings) settings(*s);
    AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
    return s;
}

inline void ExpectVecNear(Vec3 want, Vec3 got, double tol, const std::string& what) {
    EXPECT_NEAR(want.x, got.x, tol) << what << " x";
    EXPECT_NEAR(want.y, got.y, tol) << what << " y";
    EXPECT_NEAR(want.z, got.z, tol) << what << " z";
}

}  // namespace modeltest
