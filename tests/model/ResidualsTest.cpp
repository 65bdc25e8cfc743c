// Residuals of single points and the four summary figures.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "model/Frames.h"
#include "model/InverseSolution.h"
#include "model/ModelState.h"
#include "model/Residuals.h"
#include "model/Solver.h"
#include "model/SyntheticCalibration.h"

namespace {

constexpr double kArcsec = 3.141592654 / 648000;

std::unique_ptr<ModelState> FreshModel() {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    return s;
}

// A perfect mount and points exactly where it looks.
std::unique_ptr<ModelState> PerfectPoints(int n) {
    auto s = FreshModel();
    SyntheticMount m;
    m.Num = n;
    AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
    return s;
}

TEST(ResidualFigures, NoPointsGiveZeros) {
    auto s = FreshModel();
    s->RMSErrAll = 5;
    s->MaxErrSel = 5;
    s->NumPointsUsed = 3;
    ComputeResiduals(*s);
    EXPECT_EQ(s->NumPointsUsed, 0);
    EXPECT_EQ(s->RMSErrAll, 0.0);
    EXPECT_EQ(s->RMSErrSel, 0.0);
    EXPECT_EQ(s->MaxErrAll, 0.0);
    EXPECT_EQ(s->MaxErrSel, 0.0);
}

TEST(ResidualFigures, AUnusedPointStillGetsItsErrors) {
    auto s = PerfectPoints(5);
    s->CalPoints[3].ThetaEnc += 10 * kArcsec;  // 10 arcsec too high in Theta counts
    s->CalPoints[3].Used = false;
    ComputeResiduals(*s);  // on the perfect model, no fit
    EXPECT_EQ(s->NumPointsUsed, 4);
    EXPECT_NEAR(s->CalPoints[3].DistErr, 10 * kArcsec, 0.01 * kArcsec);
    // Theta counts up from the horizon: 10" more counts put the axis 10"
    // nearer the zenith, so model minus measurement of Theta is +10".
    EXPECT_NEAR(s->CalPoints[3].ThetaErr, 10 * kArcsec, 0.01 * kArcsec);
    EXPECT_NEAR(s->MaxErrAll, 10 * kArcsec, 0.01 * kArcsec);
    EXPECT_LT(s->MaxErrSel, 1e-8);
    // All five points: sqrt(100 / 5) arcsec.
    EXPECT_NEAR(s->RMSErrAll, std::sqrt(100.0 / 5) * kArcsec, 0.01 * kArcsec);
}

TEST(ResidualFigures, NoUsedPointLeavesTheSelectedFiguresAtZero) {
    auto s = PerfectPoints(3);
    for (int i = 1; i <= 3; ++i) {
        s->CalPoints[i].Used = false;
        s->CalPoints[i].PhiEnc += 20 * kArcsec;
    }
    ComputeResiduals(*s);
    EXPECT_EQ(s->RMSErrSel, 0.0);
    EXPECT_EQ(s->MaxErrSel, 0.0);
    EXPECT_GT(s->RMSErrAll, 0.0);
    EXPECT_GT(s->MaxErrAll, 0.0);
}

TEST(ResidualSigns, AreModelMinusMeasurementOnTheSky) {
    auto s = PerfectPoints(1);
    CalPoint& p = s->CalPoints[1];
    // Phi counts clockwise, so Phi runs against the counts: 30" more counts
    // put the axis 30" lower in Phi, and model minus measurement is +30" in
    // Phi, which is 30" x sin(Theta) on the sky.
    double Theta = 0, Phi = 0;
    EncodersToAngles(*s, p.ThetaEnc, p.PhiEnc, Theta, Phi);
    p.PhiEnc += 30 * kArcsec;
    ComputeResiduals(*s);
    EXPECT_NEAR(p.PhiErr, 30 * kArcsec * std::fabs(std::sin(Theta)), 0.01 * kArcsec);
    EXPECT_NEAR(p.DistErr, 30 * kArcsec * std::fabs(std::sin(Theta)), 0.01 * kArcsec);
    EXPECT_NEAR(p.ThetaErr, 0.0, 0.01 * kArcsec);
}

TEST(ResidualSigns, PhiErrorAcrossTheEncoderZeroIsSmall) {
    auto s = FreshModel();
    s->EnableRefraction = false;
    // A star due north: Phi 0, right at the wrap of the Phi encoder.
    double ThetaEnc = 0, PhiEnc = 0;
    const double LST = 0.5, JD = 2460000.5;
    CelestialToEncoders(*s, LST, JD, 0.5, 1.2, 1, ThetaEnc, PhiEnc);
    CalPoint& p = s->CalPoints[++s->NumCalPoints];
    p.Used = true;
    p.ThetaEnc = ThetaEnc;
    p.PhiEnc = PhiEnc + 5 * kArcsec;
    if (p.PhiEnc >= s->PhiCountsPerRev) p.PhiEnc -= s->PhiCountsPerRev;
    p.RA = 0.5;
    p.Dec = 1.2;
    p.LST = LST;
    p.JD = JD;
    ComputeResiduals(*s);
    EXPECT_LT(std::fabs(p.PhiErr), 10 * kArcsec);
}

TEST(ResidualSigns, NegativeAxisThetaUsesTheOtherPosition) {
    auto s = FreshModel();
    s->IsAltAz = false;
    SyntheticMount m;
    m.Num = 12;
    m.BothSidesOfPier = true;
    AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
    ComputeResiduals(*s);
    int negatives = 0;
    for (int i = 1; i <= s->NumCalPoints; ++i) {
        negatives += s->CalPoints[i].AxisTheta < 0;
        EXPECT_LT(std::fabs(s->CalPoints[i].ThetaErr), 1e-7) << "point " << i;
        EXPECT_LT(std::fabs(s->CalPoints[i].PhiErr), 1e-7) << "point " << i;
    }
    EXPECT_GT(negatives, 0);
}

}  // namespace
