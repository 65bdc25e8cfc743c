// The optimised fit (cached sky vectors, stage 1 summed once, the first pass
// of stage 2 reused, the symmetric half mirrored) gives the same bits as the
// plain step-by-step fit, on random point sets.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <random>
#include <utility>

#include "model/ModelState.h"
#include "model/ReferenceFit.h"
#include "model/Residuals.h"
#include "model/Solver.h"
#include "model/SyntheticCalibration.h"
#include "model/Terms.h"

namespace {

bool SameBits(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

void ExpectSameFit(const ModelState& want, const ModelState& got, int trial) {
    EXPECT_TRUE(SameBits(want.ErrorNorth, got.ErrorNorth)) << "trial " << trial;
    EXPECT_TRUE(SameBits(want.ErrorWest, got.ErrorWest)) << "trial " << trial;
    EXPECT_TRUE(SameBits(want.ThetaEncOffset, got.ThetaEncOffset)) << "trial " << trial;
    EXPECT_TRUE(SameBits(want.PhiEncOffset, got.PhiEncOffset)) << "trial " << trial;
    EXPECT_TRUE(SameBits(want.Sensitivity, got.Sensitivity))
        << "trial " << trial << " wanted " << want.Sensitivity << " got " << got.Sensitivity;
    for (int t = 1; t <= 46; ++t) {
        EXPECT_EQ(want.TermActive[t], got.TermActive[t]) << "trial " << trial << " term " << t;
        EXPECT_TRUE(SameBits(want.TermCoef[t], got.TermCoef[t]))
            << "trial " << trial << " term " << t << " wanted " << want.TermCoef[t] << " got "
            << got.TermCoef[t];
    }
}

TEST(OptimisedFit, GivesTheBitsOfThePlainFitOnRandomPointSets) {
    std::mt19937 gen(2024);
    std::uniform_int_distribution<int> count(0, 60), flag(0, 1), mount(0, 2);
    std::uniform_real_distribution<double> err(-3e-3, 3e-3);
    for (int trial = 0; trial < 24; ++trial) {
        auto s = std::make_unique<ModelState>();
        InitModel(*s);
        const int kind = mount(gen);
        s->IsAltAz = kind == 0;
        s->IsGEM = kind == 2;
        s->PhiPosCW = flag(gen);
        s->ThetaPosUp = flag(gen);
        for (int k = 1; k <= 22; ++k) s->TermEnable[k] = static_cast<int16_t>(flag(gen));
        if (trial % 4 == 1) s->MaxSensitivity = 20;  // makes the ladder step down
        if (trial % 4 == 2) s->ThetaCountsPerRev = s->PhiCountsPerRev = 100000;
        SyntheticMount m;
        m.Num = count(gen);
        m.ErrorNorth = err(gen);
        m.ErrorWest = err(gen);
        m.ThetaEncOffset = err(gen);
        m.PhiEncOffset = err(gen);
        m.TermCoef[5] = err(gen) / 3;
        m.TermCoef[8] = err(gen) / 3;
        m.NoiseRMS = 1e-5;
        m.BothSidesOfPier = kind == 2;
        m.Seed = static_cast<uint32_t>(trial + 1);
        AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
        for (int p = 1; p <= s->NumCalPoints; ++p)
            if (flag(gen) && flag(gen)) s->CalPoints[p].Used = false;
        auto plain = std::make_unique<ModelState>(*s);
        Calibrate(*s);
        ReferenceCalibrate(*plain);
        ExpectSameFit(*plain, *s, trial);
    }
}

}  // namespace

namespace {

// The residuals take each used star's horizon vector from the fit that just
// ran; a copy of the model at another address computes them afresh. Both
// must give the same bits.
TEST(OptimisedFit, ResidualsAfterAFitGiveTheBitsOfFreshResiduals) {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    EnableAll(*s);
    SyntheticMount m;
    m.Num = 60;
    m.ErrorNorth = 1e-3;
    m.TermCoef[5] = 4e-4;
    m.NoiseRMS = 2e-5;
    AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
    s->CalPoints[7].Used = false;
    Calibrate(*s);
    auto fresh = std::make_unique<ModelState>(*s);
    ComputeResiduals(*s);
    ComputeResiduals(*fresh);
    for (int i = 1; i <= s->NumCalPoints; ++i) {
        const CalPoint& a = fresh->CalPoints[i];
        const CalPoint& b = s->CalPoints[i];
        for (auto [want, got] : {std::pair{a.DistErr, b.DistErr},
                                 {a.RAErr, b.RAErr},
                                 {a.DecErr, b.DecErr},
                                 {a.ThetaErr, b.ThetaErr},
                                 {a.PhiErr, b.PhiErr},
                                 {a.SkyTheta, b.SkyTheta},
                                 {a.SkyPhi, b.SkyPhi}}) {
            EXPECT_TRUE(SameBits(want, got))
                << "point " << i << " wanted " << want << " got " << got;
        }
    }
    EXPECT_TRUE(SameBits(fresh->RMSErrAll, s->RMSErrAll));
    EXPECT_TRUE(SameBits(fresh->MaxErrSel, s->MaxErrSel));
}

}  // namespace
