// Tracking rates, guide offsets, the Jacobian and the field angle of a
// perfect mount, against the motion of the sky worked out by hand.
#include <cmath>

#include "ServerTestSupport.h"

namespace {

// The sky turns once per sidereal day of 86164.09 s (published value,
// rounded to 0.01 s): 7.2921159e-5 rad/s. Its rounding allows 4.2e-12
// rad/s either way; the program's own constants give 7.2921158e-5.
const double kSkyRate = 2 * 3.14159265358979323846 / 86164.09;
constexpr double kSkyRateTolerance = 5e-12;

constexpr double kJD = 2451545.0;
// Half the sidereal-time span of a rate: the sky's turn in 0.1 s.
const double kHalfSpan = kSkyRate * 0.1;

// A perfect equatorial fork without refraction; counts are radians, so on
// this mount the Theta encoder reads the declination and the Phi encoder
// the hour angle turned by half a turn.
class PerfectEquatorial : public ServerTest {
  protected:
    void SetUp() override {
        server->SetMountType(1);
        server->SetEnableRefraction(false);
    }
};

using TrackingRatesCall = PerfectEquatorial;

TEST_F(TrackingRatesCall, PolarAxisTurnsAtTheSkyRate) {
    double thetaRate = 1, phiRate = 0;
    server->GetTrackingRates(2.0, kJD, 1.5, 0.4, 1, thetaRate, phiRate);
    // The sky turns clockwise seen from above the pole, the way the Phi
    // counts increase with PhiPosCW: the rate is positive.
    EXPECT_NEAR(phiRate, kSkyRate, kSkyRateTolerance)
        << "wanted " << kSkyRate << " got " << phiRate << " diff " << phiRate - kSkyRate;
    // The declination axis stands still; only rounding of values near 1
    // divided by 0.2 s remains.
    EXPECT_NEAR(thetaRate, 0.0, 1e-12);
}

TEST_F(TrackingRatesCall, PhiPosCWSetsTheSign) {
    server->SetPhiPosCW(false);
    double thetaRate = 1, phiRate = 0;
    server->GetTrackingRates(2.0, kJD, 1.5, 0.4, 1, thetaRate, phiRate);
    EXPECT_NEAR(phiRate, -kSkyRate, kSkyRateTolerance);
    EXPECT_NEAR(thetaRate, 0.0, 1e-12);
}

// The Phi encoder reads the hour angle minus half a turn, so it passes its
// zero at hour angle pi. Just after that moment the earlier evaluation
// reads nearly a full turn and the later one a little above 0.
TEST_F(TrackingRatesCall, AcrossThePhiEncoderZeroGivesTheTrueRate) {
    const double ra = 1.5;
    const double dec = 0.4;
    const double lst = ra + 3.141592654 + 0.3 * kHalfSpan;
    double tBefore = 0, pBefore = 0, tAfter = 0, pAfter = 0;
    server->ApparentToEncoder(lst - kHalfSpan, kJD, ra, dec, 1, tBefore, pBefore);
    server->ApparentToEncoder(lst + kHalfSpan, kJD, ra, dec, 1, tAfter, pAfter);
    ASSERT_GT(pBefore - pAfter, 6.0) << "the two readings must straddle the encoder zero";
    double thetaRate = 1, phiRate = 0;
    server->GetTrackingRates(lst, kJD, ra, dec, 1, thetaRate, phiRate);
    // The angles wrap at the program's full turn 6.283185308, 8.2e-10 above
    // 2 pi; across the zero that enters the difference once and moves the
    // rate by up to 4.1e-9 rad/s. Without the wrap it would be -31 rad/s.
    EXPECT_NEAR(phiRate, kSkyRate, 1e-8);
}

using GuideErrorCall = PerfectEquatorial;

TEST_F(GuideErrorCall, ZeroOffsetGivesZero) {
    double dTheta = 1, dPhi = 1;
    server->GetGuideError(2.0, kJD, 1.5, 0.4, 1, 0.0, 0.0, dTheta, dPhi);
    EXPECT_EQ(dTheta, 0.0);
    EXPECT_EQ(dPhi, 0.0);
}

// Counts are radians: a declination offset moves the Theta encoder by the
// same amount, a right ascension offset the Phi encoder by minus it (the
// hour angle falls as the right ascension grows). Rounding of values near
// 1 limits the agreement to about 1e-15.
TEST_F(GuideErrorCall, OffsetsMoveTheMatchingAxis) {
    double dTheta = 1, dPhi = 1;
    server->GetGuideError(2.0, kJD, 1.5, 0.4, 1, 0.0, 1e-4, dTheta, dPhi);
    EXPECT_NEAR(dTheta, 1e-4, 1e-12);
    EXPECT_NEAR(dPhi, 0.0, 1e-12);
    server->GetGuideError(2.0, kJD, 1.5, 0.4, 1, 1e-4, 0.0, dTheta, dPhi);
    EXPECT_NEAR(dTheta, 0.0, 1e-12);
    EXPECT_NEAR(dPhi, -1e-4, 1e-12);
}

using JacobianCall = PerfectEquatorial;

// The same two relations as derivatives: 1 and -1 on the diagonal, 0 across.
// A one-sided step of 1e-5 on values near 1 leaves about 1e-11 of rounding.
TEST_F(JacobianCall, PerfectEquatorialMountSeparatesTheAxes) {
    double dT_dDec = 0, dT_dRA = 1, dP_dDec = 1, dP_dRA = 0;
    server->GetJacobian(2.0, kJD, 1.5, 0.4, 1, dT_dDec, dT_dRA, dP_dDec, dP_dRA);
    EXPECT_NEAR(dT_dRA, 0.0, 1e-9);
    EXPECT_NEAR(dP_dDec, 0.0, 1e-9);
    EXPECT_NEAR(dT_dDec, 1.0, 1e-9);
    EXPECT_NEAR(dP_dRA, -1.0, 1e-9);
}

// A perfect alt-azimuth mount without refraction at the default latitude
// 33.5 degrees, where the field turns as the star crosses the meridian.
class PerfectAltAz : public ServerTest {
  protected:
    void SetUp() override { server->SetEnableRefraction(false); }
};

using FieldAngleCall = PerfectAltAz;

// On the meridian south of the zenith the way up (Theta counting up) and
// the way to the pole are both due north along the meridian: angle 0.
// Turning the Theta direction makes it half a turn.
TEST_F(FieldAngleCall, MeridianSouthOfZenith) {
    const double ra = 1.0, lst = 1.0, dec = 0.0;
    EXPECT_NEAR(server->GetFieldAngle(lst, kJD, ra, dec, 1), 0.0, 1e-9);
    server->SetThetaPosUp(false);
    EXPECT_NEAR(std::fabs(server->GetFieldAngle(lst, kJD, ra, dec, 1)), 3.141592654, 1e-9);
}

// The other axis position drives Theta the other way: the angle turns by
// half a turn.
TEST_F(FieldAngleCall, OtherAxisPositionTurnsByHalfATurn) {
    const double a1 = server->GetFieldAngle(1.3, kJD, 1.0, 0.5, 1);
    const double a2 = server->GetFieldAngle(1.3, kJD, 1.0, 0.5, -1);
    double diff = std::fabs(a1 - a2);
    EXPECT_NEAR(diff, 3.141592654, 1e-9) << "angles " << a1 << " and " << a2;
}

// Field rotation of an alt-azimuth mount: rate = w cos(lat) cos(Az)/cos(Alt)
// (the derivative of the parallactic angle). On the meridian south, for
// declination 0, that is w cot(lat) in size: 1.1017e-4 rad/s at 33.5 deg.
// The differences inside the field angle leave about 1e-10 rad/s.
TEST_F(FieldAngleCall, RateMatchesFieldRotationOnTheMeridian) {
    const double ra = 1.0, lst = 1.0, dec = 0.0;
    const double lat = 33.5 * 3.14159265358979323846 / 180;
    const double wanted = kSkyRate * std::cos(lat) / std::sin(lat);
    const double rate = server->GetFieldAngleRate(lst, kJD, ra, dec, 1);
    EXPECT_NEAR(std::fabs(rate), wanted, 1e-9) << "got " << rate;
}

// With Theta counting down the angle is half a turn on the meridian, so
// the two evaluations of the rate lie on both sides of the +-pi jump.
TEST_F(FieldAngleCall, RateAcrossTheHalfTurnJump) {
    server->SetThetaPosUp(false);
    const double ra = 1.0, lst = 1.0, dec = 0.0;
    const double before = server->GetFieldAngle(lst - kHalfSpan, kJD, ra, dec, 1);
    const double after = server->GetFieldAngle(lst + kHalfSpan, kJD, ra, dec, 1);
    ASSERT_LT(before * after, 0.0) << before << " " << after;
    ASSERT_GT(std::fabs(before), 3.0);
    ASSERT_GT(std::fabs(after), 3.0);
    const double lat = 33.5 * 3.14159265358979323846 / 180;
    const double wanted = kSkyRate * std::cos(lat) / std::sin(lat);
    const double rate = server->GetFieldAngleRate(lst, kJD, ra, dec, 1);
    EXPECT_NEAR(std::fabs(rate), wanted, 1e-9) << "got " << rate;
}

}  // namespace
