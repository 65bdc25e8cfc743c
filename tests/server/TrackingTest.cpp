// Tracking rates, guide offsets, the Jacobian and the field angle of a
// perfect mount, against the motion of the sky worked out by hand.

#include "ServerTestSupport.h"

namespace {

// The sky turns once per sidereal day of 86164.09 s (published value,
// rounded to 0.01 s): 7.2921159e-5 rad/s. Its rounding allows 4.2e-12
// rad/s either way; the program's own constants give 7.2921158e-5.
constexpr double kTruePi = 3.14159265358979323846;
const double kSkyRate = 2 * kTruePi / 86164.09;
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

TEST_F(TrackingRatesCall, PolarAxisTurnsAtTheSkyRateWithTheSignOfPhiPosCW) {
    // The sky turns clockwise seen from above the pole, the way the Phi
    // counts increase with PhiPosCW: the rate is positive, and negative for
    // counts the other way. The declination axis stands still; only rounding
    // of values near 1 divided by 0.2 s remains.
    for (bool cw : {true, false}) {
        server->SetPhiPosCW(cw);
        double thetaRate = 1, phiRate = 0;
        server->GetTrackingRates(2.0, kJD, 1.5, 0.4, 1, thetaRate, phiRate);
        EXPECT_NEAR(phiRate, cw ? kSkyRate : -kSkyRate, kSkyRateTolerance) << "PhiPosCW " << cw;
        EXPECT_NEAR(thetaRate, 0.0, 1e-12) << "PhiPosCW " << cw;
    }
}

// The Phi encoder reads the hour angle minus half a turn, so it passes its
// zero at hour angle pi. Just after that moment one evaluation reads nearly
// a full turn and the other a little above 0: the later one is the smaller
// with PhiPosCW (the difference wraps down from minus a turn) and the
// larger with counts the other way (it wraps from plus a turn).
TEST_F(TrackingRatesCall, AcrossThePhiEncoderZeroGivesTheTrueRate) {
    const double ra = 1.5, dec = 0.4, lst = ra + 3.141592654 + 0.3 * kHalfSpan;
    for (bool cw : {true, false}) {
        server->SetPhiPosCW(cw);
        double tBefore = 0, pBefore = 0, tAfter = 0, pAfter = 0;
        server->ApparentToEncoder(lst - kHalfSpan, kJD, ra, dec, 1, tBefore, pBefore);
        server->ApparentToEncoder(lst + kHalfSpan, kJD, ra, dec, 1, tAfter, pAfter);
        ASSERT_GT(std::fabs(pBefore - pAfter), 6.0)
            << "the readings must straddle the zero, PhiPosCW " << cw;
        double thetaRate = 1, phiRate = 0;
        server->GetTrackingRates(lst, kJD, ra, dec, 1, thetaRate, phiRate);
        // The angles wrap at the program's full turn 6.283185308, 8.2e-10
        // above 2 pi; across the zero that enters the difference once and
        // moves the rate by up to 4.1e-9 rad/s. Without the wrap it would be
        // about 31 rad/s.
        EXPECT_NEAR(phiRate, cw ? kSkyRate : -kSkyRate, 1e-8) << "PhiPosCW " << cw;
    }
}

using GuideAndJacobian = PerfectEquatorial;

// Counts are radians: a declination offset moves the Theta encoder by the
// same amount, a right ascension offset the Phi encoder by minus it (the
// hour angle falls as the right ascension grows); no offset moves nothing.
// As derivatives: 1 and -1 on the diagonal, 0 across; a one-sided step of
// 1e-5 on values near 1 leaves about 1e-11 of rounding.
TEST_F(GuideAndJacobian, PerfectEquatorialMountSeparatesTheAxes) {
    // clang-format off
    const struct { double dRA, dDec, wantTheta, wantPhi; } offsets[] = {
        {0, 0, 0, 0}, {0, 1e-4, 1e-4, 0}, {1e-4, 0, 0, -1e-4}};
    // clang-format on
    for (const auto& o : offsets) {
        double dTheta = 1, dPhi = 1;
        server->GetGuideError(2.0, kJD, 1.5, 0.4, 1, o.dRA, o.dDec, dTheta, dPhi);
        EXPECT_NEAR(dTheta, o.wantTheta, o.dRA + o.dDec == 0 ? 0 : 1e-12) << o.dRA << " " << o.dDec;
        EXPECT_NEAR(dPhi, o.wantPhi, o.dRA + o.dDec == 0 ? 0 : 1e-12) << o.dRA << " " << o.dDec;
    }
    double dT_dDec = 0, dT_dRA = 1, dP_dDec = 1, dP_dRA = 0;
    server->GetJacobian(2.0, kJD, 1.5, 0.4, 1, dT_dDec, dT_dRA, dP_dDec, dP_dRA);
    EXPECT_NEAR(dT_dRA, 0.0, 1e-9);
    EXPECT_NEAR(dP_dDec, 0.0, 1e-9);
    EXPECT_NEAR(dT_dDec, 1.0, 1e-9);
    EXPECT_NEAR(dP_dRA, -1.0, 1e-9);
}

// A perfect alt-azimuth mount without refraction at the default latitude
// 33.5 degrees, where the field turns as the star crosses the meridian.
class FieldAngleCall : public ServerTest {
  protected:
    void SetUp() override { server->SetEnableRefraction(false); }

    // Field rotation of an alt-azimuth mount: rate = w cos(lat) cos(Az) /
    // cos(Alt) (the derivative of the parallactic angle). On the meridian
    // south, for declination 0, that is w cot(lat) in size: 1.1017e-4 rad/s
    // at 33.5 deg. The differences inside the field angle leave about 1e-10
    // rad/s; across the +-pi jump the program's full turn, 8.2e-10 above
    // 2 pi, enters the difference once: 4.1e-9 rad/s.
    void ExpectMeridianRate() {
        const double lat = 33.5 * kTruePi / 180;
        const double rate = server->GetFieldAngleRate(1.0, kJD, 1.0, 0.0, 1);
        EXPECT_NEAR(std::fabs(rate), kSkyRate * std::cos(lat) / std::sin(lat), 5e-9)
            << "got " << rate;
    }
};

// On the meridian south of the zenith the way up (Theta counting up) and
// the way to the pole are both due north along the meridian: angle 0.
// Turning the Theta direction, or taking the other axis position, turns
// the angle by half a turn.
TEST_F(FieldAngleCall, MeridianSouthOfZenithAndTheHalfTurns) {
    EXPECT_NEAR(server->GetFieldAngle(1.0, kJD, 1.0, 0.0, 1), 0.0, 1e-9);
    ExpectMeridianRate();
    const double a1 = server->GetFieldAngle(1.3, kJD, 1.0, 0.5, 1);
    const double a2 = server->GetFieldAngle(1.3, kJD, 1.0, 0.5, -1);
    EXPECT_NEAR(std::fabs(a1 - a2), 3.141592654, 1e-9) << "angles " << a1 << " and " << a2;
    server->SetThetaPosUp(false);
    EXPECT_NEAR(std::fabs(server->GetFieldAngle(1.0, kJD, 1.0, 0.0, 1)), 3.141592654, 1e-9);
}

// With Theta counting down the angle is half a turn on the meridian, so
// the two evaluations of the rate lie on both sides of the +-pi jump. South
// of the equator the star on the meridian stands north of the zenith, the
// angle is half a turn with Theta counting up, and the field turns the other
// way: both branches of the rate's wrap are taken.
TEST_F(FieldAngleCall, RateAcrossTheHalfTurnJump) {
    bool upward = false, downward = false;
    for (double lat : {33.5, -33.5}) {
        server->SetLatitude(lat);
        server->SetThetaPosUp(lat < 0);
        const double before = server->GetFieldAngle(1.0 - kHalfSpan, kJD, 1.0, 0.0, 1);
        const double after = server->GetFieldAngle(1.0 + kHalfSpan, kJD, 1.0, 0.0, 1);
        ASSERT_TRUE(before * after < 0 && std::fabs(before) > 3 && std::fabs(after) > 3)
            << "latitude " << lat << ": " << before << " " << after;
        (before < 0 ? upward : downward) = true;
        ExpectMeridianRate();
    }
    EXPECT_TRUE(upward && downward) << "both directions across the jump";
}

}  // namespace
