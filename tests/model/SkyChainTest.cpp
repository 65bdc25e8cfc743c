// The road from an apparent place to the horizon vector and back, with and
// without refraction.

#include "ModelTestSupport.h"
#include "model/SkyChain.h"

namespace {

using namespace modeltest;

constexpr double kDeg = kTruePi / 180;  // for independent reference values only

TEST(SkyChainWithoutRefraction, MatchesTheTextbookHorizonFormulas) {
    // Horizon vector (x north, y west, z zenith) from the textbook formulas.
    // The short pi and the 0.0174532925 factor differ from true pi by about
    // 1e-10 relative; 1e-8 leaves room for the angle round trip.
    auto s = FreshModel();
    s->EnableRefraction = false;
    std::mt19937 gen(11);
    std::uniform_real_distribution<double> ra(0, 2 * kTruePi), dec(-1.5, 1.5), lat(-89, 89);
    for (int k = 0; k < 200; ++k) {
        s->Latitude = lat(gen);
        const double RA = ra(gen), d = dec(gen), LST = ra(gen), H = LST - RA,
                     L = s->Latitude * kDeg;
        const Vec3 want{std::sin(d) * std::cos(L) - std::cos(d) * std::cos(H) * std::sin(L),
                        std::cos(d) * std::sin(H),
                        std::sin(d) * std::sin(L) + std::cos(d) * std::cos(H) * std::cos(L)};
        ExpectVecNear(want, ApparentToHorizon(*s, RA, d, LST), 1e-8,
                      "lat " + std::to_string(s->Latitude));
    }
    // A southern site needs no other formula: the south celestial pole stands
    // at altitude 33.9 deg due south (-x).
    s->Latitude = -33.9;
    ExpectVecNear({-std::cos(33.9 * kDeg), 0, std::sin(33.9 * kDeg)},
                  ApparentToHorizon(*s, 0.0, -kTruePi / 2, 0.7), 1e-8, "south pole");
}

// Meeus, Astronomical Algorithms (2nd ed.), example 13.b: Venus seen from
// the US Naval Observatory (latitude +38 deg 55' 17"), hour angle
// 64.352133 deg, declination -6 deg 43' 11.61": altitude 15.1249 deg and
// azimuth 68.0337 deg measured from the south westward, that is 248.0337
// deg from north through east. Meeus gives 4 decimals: tolerance 1e-4 deg.
TEST(SkyChainWithoutRefraction, AgreesWithAPublishedAltitudeAndAzimuth) {
    auto s = FreshModel();
    s->EnableRefraction = false;
    s->Latitude = 38.0 + 55.0 / 60 + 17.0 / 3600;
    const double dec = -(6.0 + 43.0 / 60 + 11.61 / 3600) * kDeg;
    const Vec3 v = ApparentToHorizon(*s, 1.0, dec, 1.0 + 64.352133 * kDeg);
    double azFromNorthEast = std::atan2(-v.y, v.x) / kDeg;  // y is west
    if (azFromNorthEast < 0) azFromNorthEast += 360;
    EXPECT_NEAR(std::asin(v.z) / kDeg, 15.1249, 1e-4);
    EXPECT_NEAR(azFromNorthEast, 248.0337, 1e-4);
}

TEST(Refraction, AtFortyFiveDegreesIsSaemundssonsValue) {
    auto s = FreshModel();
    s->Pressure = 1010;
    s->Temperature = 10;  // K = (1010/1010) x 283/283 = 1
    double Theta = 45 * 3.141592654 / 180;
    ApplyRefraction(*s, Theta, true);
    const double liftDeg = (90 - Theta * 180 / 3.141592654) - 45;
    // Saemundsson at h = 45 deg: (1.02/60) / tan(45 + 10.3/50.11 deg) deg,
    // worked out here with true pi; the program's factors differ in the
    // tenth digit. About one arcminute, the familiar value at 45 degrees.
    EXPECT_NEAR(liftDeg, (1.02 / 60) / std::tan((45 + 10.3 / 50.11) * kDeg), 1e-9);
    EXPECT_NEAR(liftDeg * 60, 1.0, 0.02);
}

TEST(Refraction, BackwardUndoesForwardFromFiveToNinetyDegreesAndOffIsIdentity) {
    auto s = FreshModel();
    for (double alt = 5; alt <= 90; alt += 0.5) {
        double Theta = (90 - alt) * 3.141592654 / 180;
        const double start = Theta;
        ApplyRefraction(*s, Theta, true);
        // Refraction lifts the star; only at the zenith itself does the
        // formula's argument pass 90 degrees and lower it by 0.1".
        EXPECT_TRUE(alt >= 89 || Theta < start) << "refraction lifts the star, alt " << alt;
        ApplyRefraction(*s, Theta, false);
        EXPECT_NEAR(Theta * 180 / 3.141592654, start * 180 / 3.141592654, 1e-6) << "alt " << alt;
    }
    s->EnableRefraction = false;
    for (double Theta : {0.0, 0.3, 1.2, 1.55}) {
        double t = Theta;
        ApplyRefraction(*s, t, true);
        EXPECT_NEAR(t, Theta, 1e-15) << "forward, switched off";
        ApplyRefraction(*s, t, false);
        EXPECT_NEAR(t, Theta, 1e-15) << "backward, switched off";
    }
}

TEST(Refraction, LeavesTheAzimuthAlone) {
    auto s = FreshModel();
    s->EnableRefraction = false;
    const Vec3 plain = ApparentToHorizon(*s, 0.4, 0.2, 1.9);
    s->EnableRefraction = true;
    const Vec3 refracted = ApparentToHorizon(*s, 0.4, 0.2, 1.9);
    EXPECT_NEAR(std::atan2(refracted.y, refracted.x), std::atan2(plain.y, plain.x), 1e-12);
    EXPECT_GT(refracted.z, plain.z);
}

TEST(HorizonToApparentPlace, ReturnsThePlaceWithRefractionOnAndRangesHold) {
    auto s = FreshModel();
    std::mt19937 gen(5);
    std::uniform_real_distribution<double> ra(0, 2 * kTruePi), u(-1, 1);
    for (double lat : {33.5, -45.0, 0.0, 70.0}) {
        s->Latitude = lat;
        for (int k = 0; k < 100; ++k) {
            const double LST = ra(gen), RA = ra(gen), Dec = std::asin(u(gen));
            const Vec3 v = ApparentToHorizon(*s, RA, Dec, LST);
            if (v.z < std::sin(10 * kDeg))
                continue;  // refraction round trip is close only well above the horizon
            double ra2 = 0, dec2 = 0;
            HorizonToApparent(*s, v, LST, ra2, dec2);
            EXPECT_TRUE(ra2 >= 0 && ra2 <= 6.283185308) << ra2;
            // 1e-6 degree of refraction mismatch is 1.7e-8 rad on the sky.
            EXPECT_NEAR(std::remainder(ra2 - RA, 2 * kTruePi) * std::cos(Dec), 0.0, 1e-7)
                << "lat " << lat;
            EXPECT_NEAR(dec2, Dec, 1e-7) << "lat " << lat;
        }
    }
    // Any direction above the horizon: RA in one turn, Dec within the quarter turns.
    std::normal_distribution<double> n(0, 1);
    for (int k = 0; k < 200; ++k) {
        Vec3 v{n(gen), n(gen), std::fabs(n(gen)) + 0.2};
        NormalizeVec(v);
        double RA = 0, Dec = 0;
        HorizonToApparent(*s, v, 3.0, RA, Dec);
        EXPECT_TRUE(RA >= 0 && RA <= 6.283185308) << RA;
        EXPECT_TRUE(Dec >= -3.141592654 / 2 && Dec <= 3.141592654 / 2) << Dec;
    }
}

}  // namespace
