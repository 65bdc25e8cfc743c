// A star's place to the horizon and back, refraction, and the residuals of single points.
#include "ModelTestSupport.h"
#include "model/Residuals.h"
#include "model/SkyChain.h"

namespace {

using namespace modeltest;

constexpr double kDeg = kTruePi / 180;  // for independent reference values only

TEST(SkyChain, MeeusAltitudeAndAzimuthAndTheWayBack) {
    // Meeus, "Astronomical Algorithms" (2nd ed.), example 13.b: Venus at +38 55' 17", hour angle
    // 64.352133 deg, declination -6 43' 11.61": altitude 15.1249, azimuth 68.0337 from the south
    // westward, to 1e-4 deg.
    auto s = FreshModel();
    s->EnableRefraction = false;
    s->Latitude = 38.0 + 55.0 / 60 + 17.0 / 3600;
    const double dec13b = -(6.0 + 43.0 / 60 + 11.61 / 3600) * kDeg;
    const Vec3 v = ApparentToHorizon(*s, 1.0, dec13b, 1.0 + 64.352133 * kDeg);
    EXPECT_NEAR(std::asin(v.z) / kDeg, 15.1249, 1e-4);
    EXPECT_NEAR(std::atan2(-v.y, v.x) / kDeg + 360, 248.0337, 1e-4);
    // Back from the horizon with refraction: RA in one turn, Dec within a quarter turn; 10 deg
    // above the horizon the place to 1e-7 (1e-6 deg of refraction round trip is 1.7e-8 rad).
    s->EnableRefraction = true;
    std::mt19937 gen(11);
    std::uniform_real_distribution<double> ra(0, 2 * kTruePi), dec(-1.5, 1.5), lat(-89, 89);
    for (int k = 0; k < 300; ++k) {
        s->Latitude = lat(gen);
        const double LST = ra(gen), RA = ra(gen), Dec = dec(gen);
        const Vec3 h = ApparentToHorizon(*s, RA, Dec, LST);
        double ra2 = 0, dec2 = 0;
        HorizonToApparent(*s, h, LST, ra2, dec2);
        if (h.z < std::sin(10 * kDeg)) continue;
        EXPECT_NEAR(std::remainder(ra2 - RA, 2 * kTruePi) * std::cos(Dec), 0.0, 1e-7) << k;
        EXPECT_NEAR(dec2, Dec, 1e-7) << k;
    }
}

TEST(Refraction, SaemundssonForwardItsInverseBackAndNoneWhenOff) {
    // Saemundsson at 45 deg, K = 1: (1.02/60) / tan(45 + 10.3/50.11 deg) deg with true pi, 1e-10
    // from the program's factors. Back undoes forward to 1e-6 deg; the zenith itself is not lifted.
    auto s = FreshModel();
    s->Pressure = 1010, s->Temperature = 10;
    double t = 45 * 3.141592654 / 180;
    ApplyRefraction(*s, t, true);
    EXPECT_NEAR(45 - t * 180 / 3.141592654, 1.02 / 60 / std::tan((45 + 10.3 / 50.11) * kDeg), 1e-9);
    for (double alt = 5; alt <= 90; alt += 0.5) {
        const double start = (90 - alt) * 3.141592654 / 180;
        ApplyRefraction(*s, t = start, true);
        ApplyRefraction(*s, t, false);
        EXPECT_NEAR(t / kDeg, start / kDeg, 1e-6) << "alt " << alt;
    }
    s->EnableRefraction = false;
    ApplyRefraction(*s, t = 1.2, true);
    EXPECT_NEAR(t, 1.2, 1e-15) << "switched off";
}

TEST(Residuals, AreModelMinusMeasurementForEveryPointAndSummedOverTheUsedOnes) {
    // Model minus measurement, to 0.01": 10" more Theta counts (up from the horizon) is +10" of
    // Theta error; 30" more Phi counts (clockwise) +30" of Phi, 30" sin(Theta) on the sky.
    auto s = WithPoints(SyntheticMount{.Num = 5});
    CalPoint &p3 = s->CalPoints[3], &p4 = s->CalPoints[4];
    p3.ThetaEnc += 10 * kArcsec;
    p3.Used = false;
    double Theta = 0, Phi = 0;
    EncodersToAngles(*s, p4.ThetaEnc, p4.PhiEnc, Theta, Phi);
    p4.PhiEnc += 30 * kArcsec;
    ComputeResiduals(*s);
    const double sky = 30 * std::sin(Theta);
    // clang-format off
    const struct { const char* what; double got, want; } cases[] = {
        {"DistErr 3", p3.DistErr, 10}, {"ThetaErr 3", p3.ThetaErr, 10}, {"PhiErr 3", p3.PhiErr, 0},
        {"DistErr 4", p4.DistErr, sky}, {"PhiErr 4", p4.PhiErr, sky},
        {"ThetaErr 4", p4.ThetaErr, 0},
        {"MaxErrAll", s->MaxErrAll, std::max(10.0, sky)}, {"MaxErrSel", s->MaxErrSel, sky},
        {"RMSErrAll", s->RMSErrAll, std::sqrt((100 + sky * sky) / 5)}};
    // clang-format on
    for (const auto& c : cases) EXPECT_NEAR(c.got / kArcsec, c.want, 0.01) << c.what;
    EXPECT_EQ(s->NumPointsUsed, 4);
}

}  // namespace
