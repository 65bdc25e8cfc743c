// Tracking rates, guide offsets, the Jacobian and the field angle of perfect
// mounts without refraction, against the motion of the sky worked by hand.
#include "ServerTestSupport.h"

namespace {

// One turn per sidereal day of 86164.09 s (published, to 0.01 s): 4.2e-12.
const double kSkyRate = 2 * kTruePi / 86164.09, kHalfSpan = kSkyRate * 0.1;  // turn in 0.1 s
constexpr double kJD = 2451545.0;

// A perfect fork, counts in radians: Theta reads the declination, Phi the
// hour angle + pi, counting the way the sky turns with PhiPosCW: rate plus
// the sky's, minus it the other way; Theta stands. Just past the Phi zero a
// rate's two evaluations straddle it: unwrapped, 31 rad/s; wrapped by the
// program's full turn, 8.2e-10 above 2 pi, up to 4.1e-9 off. Guide offsets:
// declination moves Theta by as much, right ascension Phi by minus it (the
// hour angle falls); the Jacobian's step of 1e-5 leaves 1e-11.
TEST_F(ServerTest, TrackingRatesGuideOffsetsAndJacobianFollowTheSky) {
    server->SetMountType(1), server->SetEnableRefraction(false);
    const double ra = 1.5, lstAtZero = ra + 3.141592654 + 0.3 * kHalfSpan;
    for (const auto& [lst, tolerance] : {std::pair{2.0, 5e-12}, {lstAtZero, 1e-8}}) {
        for (bool cw : {false, true}) {  // PhiPosCW as the guide offsets take it last
            server->SetPhiPosCW(cw);
            double thetaRate = 1, phiRate = 0;  // gtest prints wanted, got and their difference
            server->GetTrackingRates(lst, kJD, ra, 0.4, 1, thetaRate, phiRate);
            EXPECT_NEAR(phiRate, cw ? kSkyRate : -kSkyRate, tolerance) << lst << " CW " << cw;
            EXPECT_NEAR(thetaRate, 0.0, 1e-12) << "LST " << lst << " PhiPosCW " << cw;
        }
    }
    double g[8] = {};  // dTheta, dPhi twice, then dTheta/dDec, dTheta/dRA, dPhi/dDec, dPhi/dRA
    server->GetGuideError(2.0, kJD, ra, 0.4, 1, 0, 1e-4, g[0], g[1]);
    server->GetGuideError(2.0, kJD, ra, 0.4, 1, 1e-4, 0, g[2], g[3]);
    server->GetJacobian(2.0, kJD, ra, 0.4, 1, g[4], g[5], g[6], g[7]);
    const double wanted[8] = {1e-4, 0, 0, -1e-4, 1, 0, 0, -1};
    for (int i = 0; i < 8; ++i) EXPECT_NEAR(g[i], wanted[i], i < 4 ? 1e-12 : 1e-9) << "entry " << i;
}

// Alt-azimuth at latitude +-33.5, on the meridian toward the equator: up
// and the pole lie both along it, angle 0, or half a turn for Theta down or
// the other axis position. The field turns at w cot(lat) (derivative of the
// parallactic angle at declination 0): 1.1017e-4 rad/s. At half a turn the
// rate's evaluations straddle the +-pi jump (unwrapped: 31 rad/s), on one
// branch of the wrap per latitude; the program's full turn adds 4.1e-9.
TEST_F(ServerTest, FieldAngleAndItsRateOnTheMeridian) {
    server->SetEnableRefraction(false);
    const double wanted = kSkyRate / std::tan(33.5 * kTruePi / 180);
    for (const auto& [lat, up, angle] : {std::tuple{33.5, true, 0.0}, {33.5, false, kTruePi},
                                         {-33.5, true, kTruePi}, {-33.5, false, 0.0}}) {
        server->SetLatitude(lat), server->SetThetaPosUp(up);
        const double rate = std::fabs(server->GetFieldAngleRate(1.0, kJD, 1.0, 0.0, 1));
        EXPECT_NEAR(std::fabs(server->GetFieldAngle(1.0, kJD, 1.0, 0.0, 1)), angle, 1e-9) << lat;
        EXPECT_NEAR(rate, wanted, 5e-9) << "latitude " << lat << " up " << up;
    }
    EXPECT_NEAR(std::fabs(server->GetFieldAngle(1.3, kJD, 1.0, 0.5, 1) -
                          server->GetFieldAngle(1.3, kJD, 1.0, 0.5, -1)), kTruePi, 1e-9);
}

}  // namespace
