// The fit: recovery of known synthetic mounts, the ladder of term numbers,
// and the iteration that moves terms 1 to 4 into offsets and rotations.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <memory>

#include "model/ModelState.h"
#include "model/Residuals.h"
#include "model/SkyChain.h"
#include "model/Solver.h"
#include "model/SyntheticCalibration.h"
#include "model/Terms.h"

namespace {

constexpr double kArcsec = 3.141592654 / 648000;

std::unique_ptr<ModelState> FreshModel() {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    return s;
}

// The alt-az mount of these tests: offsets and misalignment of some
// arcminutes, a cone error and two harmonic terms of the alt-az preset.
SyntheticMount AltAzMount() {
    SyntheticMount m;
    m.Num = 40;
    m.ErrorNorth = 2e-3;
    m.ErrorWest = -1.5e-3;
    m.ThetaEncOffset = 0.01;
    m.PhiEncOffset = -0.02;
    m.TermCoef[5] = 8e-4;   // cone
    m.TermCoef[10] = 3e-4;  // cos(Phi) along Phi
    m.TermCoef[11] = -2e-4; // sin(Phi) along Theta
    m.Seed = 7;
    return m;
}

// Without noise the fit must give back exactly the errors the points were
// made with; what is left comes from the non-iterated apparent-to-mean step
// and refraction round trip of the point maker (about 1e-8 rad), far below
// the 1e-6 rad asked for.
TEST(FitRecovery, AltAzMountWithoutNoise) {
    auto s = FreshModel();
    EnableAltAz(*s);
    const SyntheticMount m = AltAzMount();
    AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
    Calibrate(*s);
    ComputeResiduals(*s);
    EXPECT_NEAR(s->ErrorNorth, m.ErrorNorth, 1e-6);
    EXPECT_NEAR(s->ErrorWest, m.ErrorWest, 1e-6);
    EXPECT_NEAR(s->ThetaEncOffset, m.ThetaEncOffset, 1e-6);
    EXPECT_NEAR(s->PhiEncOffset, m.PhiEncOffset, 1e-6);
    for (int t = 5; t <= 46; ++t) {
        if (!s->TermActive[t]) continue;
        EXPECT_NEAR(s->TermCoef[t], m.TermCoef[t], 1e-6) << "term " << t;
    }
    EXPECT_TRUE(s->TermActive[5]);
    EXPECT_TRUE(s->TermActive[10]);
    EXPECT_TRUE(s->TermActive[11]);
    EXPECT_LT(s->RMSErrSel, 1e-6);
    EXPECT_LT(s->MaxErrSel, 1e-6);
    EXPECT_EQ(s->NumPointsUsed, 40);
}

TEST(FitRecovery, GermanEquatorialMountOnBothSidesOfThePier) {
    auto s = FreshModel();
    s->IsAltAz = false;
    s->IsGEM = true;
    EnableGEM(*s);
    SyntheticMount m;
    m.Num = 50;
    m.ErrorNorth = -1e-3;
    m.ErrorWest = 2.5e-3;
    m.ThetaEncOffset = -0.03;
    m.PhiEncOffset = 0.015;
    m.TermCoef[5] = 6e-4;   // cone
    m.TermCoef[6] = -3e-4;  // hub
    m.TermCoef[8] = 2e-4;   // cos(Theta) along Theta: tube flexure
    m.BothSidesOfPier = true;
    m.Seed = 3;
    const auto points = MakeSyntheticPoints(*s, m);
    AddSyntheticPoints(*s, points);
    Calibrate(*s);
    ComputeResiduals(*s);
    int negative = 0;
    for (int i = 1; i <= s->NumCalPoints; ++i) negative += s->CalPoints[i].AxisTheta < 0;
    EXPECT_GT(negative, 5) << "points on both sides of the pier";
    EXPECT_LT(negative, 45) << "points on both sides of the pier";
    EXPECT_NEAR(s->ErrorNorth, m.ErrorNorth, 1e-6);
    EXPECT_NEAR(s->ErrorWest, m.ErrorWest, 1e-6);
    EXPECT_NEAR(s->ThetaEncOffset, m.ThetaEncOffset, 1e-6);
    EXPECT_NEAR(s->PhiEncOffset, m.PhiEncOffset, 1e-6);
    for (int t = 5; t <= 46; ++t) {
        if (!s->TermActive[t]) continue;
        EXPECT_NEAR(s->TermCoef[t], m.TermCoef[t], 1e-6) << "term " << t;
    }
    EXPECT_LT(s->RMSErrSel, 1e-6);
}

// With noise of sigma on each axis the chord error of a point is about
// sigma x sqrt(2); fitting p parameters from 2N equations lowers the RMS by
// sqrt(1 - p / 2N). Statistics of 200 equations allow about 10 %.
TEST(FitRecovery, WithNoiseTheRMSResidualIsTheNoiseLevel) {
    auto s = FreshModel();
    s->TermEnable[1] = 1;  // cone only, besides terms 1 to 4
    SyntheticMount m = AltAzMount();
    m.TermCoef[10] = 0;
    m.TermCoef[11] = 0;
    m.Num = 100;
    m.NoiseRMS = 5 * kArcsec;
    AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
    Calibrate(*s);
    ComputeResiduals(*s);
    const double expected = m.NoiseRMS * std::sqrt(2.0) * std::sqrt(1 - 5.0 / 200);
    EXPECT_NEAR(s->RMSErrSel / expected, 1.0, 0.15) << "RMS " << s->RMSErrSel / kArcsec << " arcsec";
    // The errors are still found to a few noise-sized steps.
    EXPECT_NEAR(s->ErrorNorth, m.ErrorNorth, 5 * kArcsec);
    EXPECT_NEAR(s->TermCoef[5], m.TermCoef[5], 5 * kArcsec);
}

TEST(FitRecovery, ASecondFitGivesTheSameBits) {
    auto s = FreshModel();
    EnableAll(*s);
    SyntheticMount m = AltAzMount();
    m.NoiseRMS = 3 * kArcsec;
    AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
    Calibrate(*s);
    auto first = std::make_unique<ModelState>(*s);
    Calibrate(*s);
    EXPECT_EQ(std::memcmp(first->TermCoef.data(), s->TermCoef.data(), sizeof(double) * 47), 0);
    EXPECT_EQ(std::memcmp(&first->ErrorNorth, &s->ErrorNorth, sizeof(double)), 0);
    EXPECT_EQ(std::memcmp(&first->PhiEncOffset, &s->PhiEncOffset, sizeof(double)), 0);
    EXPECT_EQ(std::memcmp(&first->Sensitivity, &s->Sensitivity, sizeof(double)), 0);
}

std::unique_ptr<ModelState> ModelWithPoints(int n, bool allFlags) {
    auto s = FreshModel();
    if (allFlags) EnableAll(*s);
    SyntheticMount m = AltAzMount();
    m.Num = n;
    AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
    return s;
}

int CountActive(const ModelState& s) {
    int n = 0;
    for (int t = 1; t <= 46; ++t) n += s.TermActive[t];
    return n;
}

TEST(FitLadder, OnePointFitsTheTwoOffsetsExactly) {
    auto s = ModelWithPoints(1, true);
    Calibrate(*s);
    ComputeResiduals(*s);
    EXPECT_TRUE(s->TermActive[1]);
    EXPECT_TRUE(s->TermActive[2]);
    EXPECT_EQ(CountActive(*s), 2);
    // With default counts the offsets carry the whole shift.
    EXPECT_LT(std::fabs(s->TermCoef[1]), 1e-6);
    EXPECT_LT(std::fabs(s->TermCoef[2]), 1e-6);
    // Stage 2 stops once a pass moves the offsets by less than 1e-6; what it
    // leaves is a small fraction of that.
    EXPECT_LT(s->CalPoints[1].DistErr, 1e-7);
    EXPECT_EQ(s->RMSErrSel, s->MaxErrSel);
}

TEST(FitLadder, TwoPointsAllowTermsOneToFourAndThreeAllowSix) {
    auto two = ModelWithPoints(2, true);
    Calibrate(*two);
    for (int t = 1; t <= 4; ++t) EXPECT_TRUE(two->TermActive[t]) << "term " << t;
    EXPECT_EQ(CountActive(*two), 4);

    auto three = ModelWithPoints(3, true);
    three->MaxSensitivity = 1e300;
    Calibrate(*three);
    EXPECT_EQ(CountActive(*three), 6);
    EXPECT_TRUE(three->TermActive[5]);
    EXPECT_TRUE(three->TermActive[6]);
}

TEST(FitLadder, TermsOneToFourStayAfterDisablingAllFlags) {
    auto s = ModelWithPoints(3, true);
    DisableAll(*s);
    s->TermEnable[1] = 0;
    s->TermEnable[2] = 0;
    Calibrate(*s);
    for (int t = 1; t <= 4; ++t) EXPECT_TRUE(s->TermActive[t]) << "term " << t;
    EXPECT_EQ(CountActive(*s), 4);
}

TEST(FitLadder, TwentyThreePointsLetInAllFortySixTerms) {
    auto s = ModelWithPoints(23, true);
    s->MaxSensitivity = 1e300;  // stops the ladder at the first solve
    Calibrate(*s);
    EXPECT_EQ(CountActive(*s), 46);
}

TEST(FitLadder, IdenticalPointsStepDownToTheTwoOffsets) {
    auto s = ModelWithPoints(1, true);
    for (int i = 2; i <= 6; ++i) {
        s->CalPoints[i] = s->CalPoints[1];
        s->NumCalPoints = static_cast<int16_t>(i);
    }
    Calibrate(*s);
    // One direction determines two angles: anything beyond terms 1 and 2 is
    // singular and the ladder drops it.
    EXPECT_EQ(CountActive(*s), 2);
    EXPECT_LE(s->Sensitivity, s->MaxSensitivity);
}

TEST(FitLadder, ZeroMaxSensitivityDropsEveryTerm) {
    auto s = ModelWithPoints(10, true);
    s->MaxSensitivity = 0;
    Calibrate(*s);
    EXPECT_EQ(CountActive(*s), 0);
    EXPECT_EQ(s->ErrorNorth, 0.0);
    EXPECT_EQ(s->ThetaEncOffset, 0.0);
    for (int t = 1; t <= 46; ++t) EXPECT_EQ(s->TermCoef[t], 0.0) << "term " << t;
}

TEST(FitLadder, ATermWhoseFlagIsOffHasZeroCoefficient) {
    auto s = ModelWithPoints(30, false);  // the mount has a cone error, flag 1 is off
    Calibrate(*s);
    ComputeResiduals(*s);
    EXPECT_FALSE(s->TermActive[5]);
    EXPECT_EQ(s->TermCoef[5], 0.0);
    EXPECT_GT(s->RMSErrSel, 1e-5) << "the cone error stays in the residuals";
}

TEST(FitLadder, UnusedPointsTakeNoPart) {
    auto s = ModelWithPoints(10, true);
    Calibrate(*s);
    auto withExtra = std::make_unique<ModelState>(*s);
    CalPoint& extra = withExtra->CalPoints[++withExtra->NumCalPoints];
    extra = withExtra->CalPoints[1];
    extra.ThetaEnc += 0.1;  // far off: would spoil the fit if it were used
    extra.Used = false;
    Calibrate(*withExtra);
    EXPECT_EQ(withExtra->ErrorNorth, s->ErrorNorth);
    EXPECT_EQ(withExtra->TermCoef[5], s->TermCoef[5]);
}

TEST(FitWithoutPoints, IsTheIdentityModelAndKeepsSensitivity) {
    auto s = FreshModel();
    s->TermCoef[1] = 0.5;
    s->TermCoef[3] = 0.25;
    s->TermCoef[9] = 0.1;
    s->TermActive[9] = true;
    s->Sensitivity = 42;
    Calibrate(*s);
    for (int t = 1; t <= 46; ++t) {
        EXPECT_EQ(s->TermCoef[t], 0.0) << "term " << t;
        EXPECT_FALSE(s->TermActive[t]) << "term " << t;
    }
    EXPECT_EQ(s->PhiEncOffset, 0.0);
    EXPECT_EQ(s->ErrorNorth, 0.0);
    EXPECT_EQ(s->Sensitivity, 42.0);
}

TEST(FitOffsets, FollowTheEncoderDirections) {
    // The same mount seen through encoders that count the other way: the
    // offsets come out with the sign those encoders read.
    auto s = FreshModel();
    s->PhiPosCW = false;
    s->ThetaPosUp = false;
    SyntheticMount m = AltAzMount();
    m.TermCoef[5] = m.TermCoef[10] = m.TermCoef[11] = 0;
    m.Num = 20;
    AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
    Calibrate(*s);
    EXPECT_NEAR(s->ThetaEncOffset, m.ThetaEncOffset, 1e-6);
    EXPECT_NEAR(s->PhiEncOffset, m.PhiEncOffset, 1e-6);
    EXPECT_NEAR(s->ErrorNorth, m.ErrorNorth, 1e-6);
}

TEST(FitOffsets, LargeCountsPerTurnLeaveTheShiftInTermsOneAndTwo) {
    // With 8,640,000 counts per turn each pass moves the offset by the
    // coefficient (radians) as counts: the loop runs its 200 passes and the
    // first-order terms keep the bulk of the shift. The fit still matches.
    auto s = FreshModel();
    s->ThetaCountsPerRev = 8640000;
    s->PhiCountsPerRev = 8640000;
    SyntheticMount m = AltAzMount();
    m.TermCoef[5] = m.TermCoef[10] = m.TermCoef[11] = 0;
    m.ThetaEncOffset = 1000;
    m.PhiEncOffset = -500;
    m.Num = 20;
    AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
    Calibrate(*s);
    ComputeResiduals(*s);
    EXPECT_GT(std::fabs(s->TermCoef[2]), 1e-4);
    EXPECT_LT(s->RMSErrSel, 1e-5);
}

}  // namespace
