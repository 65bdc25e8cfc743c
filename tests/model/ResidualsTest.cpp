// Residuals of single points and the four summary figures.

#include "ModelTestSupport.h"
#include "model/InverseSolution.h"
#include "model/Residuals.h"
#include "model/SyntheticCalibration.h"

namespace {

using namespace modeltest;

// A perfect mount and points exactly where it looks.
std::unique_ptr<ModelState> PerfectPoints(int n, bool altAz = true, bool bothSides = false) {
    auto s = FreshModel();
    s->IsAltAz = altAz;
    SyntheticMount m;
    m.Num = n;
    m.BothSidesOfPier = bothSides;
    AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
    return s;
}

TEST(ResidualFigures, NoPointsGiveZeros) {
    auto s = FreshModel();
    s->RMSErrAll = s->MaxErrSel = 5;
    s->NumPointsUsed = 3;
    ComputeResiduals(*s);
    EXPECT_EQ(s->NumPointsUsed, 0);
    for (double figure : {s->RMSErrAll, s->RMSErrSel, s->MaxErrAll, s->MaxErrSel})
        EXPECT_EQ(figure, 0.0);
}

TEST(ResidualFigures, AnUnusedPointStillGetsItsErrors) {
    // Tolerance 0.01": the perfect points sit far closer than that.
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
    // No used point at all: the selected figures stay 0.
    for (int i = 1; i <= 5; ++i) s->CalPoints[i].Used = false;
    ComputeResiduals(*s);
    EXPECT_EQ(s->RMSErrSel, 0.0);
    EXPECT_EQ(s->MaxErrSel, 0.0);
    EXPECT_GT(s->RMSErrAll, 0.0);
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
    CalPoint& p = s->CalPoints[++s->NumCalPoints];
    p.Used = true;
    p.RA = p.LST = 0.5;
    p.Dec = 1.2;
    p.JD = 2460000.5;
    CelestialToEncoders(*s, p.LST, p.JD, p.RA, p.Dec, 1, p.ThetaEnc, p.PhiEnc);
    p.PhiEnc += 5 * kArcsec;
    if (p.PhiEnc >= s->PhiCountsPerRev) p.PhiEnc -= s->PhiCountsPerRev;
    ComputeResiduals(*s);
    EXPECT_LT(std::fabs(p.PhiErr), 10 * kArcsec);
}

TEST(ResidualSigns, NegativeAxisThetaUsesTheOtherPosition) {
    auto s = PerfectPoints(12, false, true);
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
