// Precession between two mean places, and the Julian epoch.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

#include "sky/cACT.h"

namespace {

// Hours, minutes, seconds of right ascension and degrees, arc minutes, arc
// seconds of declination to radians with the program's half turn.
double RARad(double h, double m, double s) {
    return (h + m / 60 + s / 3600) * 15 * 3.141592654 / 180;
}
double DecRad(double d, double m, double s) {
    return (d + m / 60 + s / 3600) * 3.141592654 / 180;
}

// The chord between two places, which is the angle between them when small.
double Separation(double ra1, double dec1, double ra2, double dec2) {
    double dx = std::cos(ra1) * std::cos(dec1) - std::cos(ra2) * std::cos(dec2);
    double dy = std::sin(ra1) * std::cos(dec1) - std::sin(ra2) * std::cos(dec2);
    double dz = std::sin(dec1) - std::sin(dec2);
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

TEST(JulianEpochs, J2000AndCentury) {
    cACT act;
    EXPECT_EQ(act.JulianEpoch(2451545.0), 2000.0);
    EXPECT_EQ(act.JulianDay(2000.0), 2451545.0);
    EXPECT_EQ(act.JulianDay(2100.0) - act.JulianDay(2000.0), 36525.0);
    EXPECT_EQ(act.JulianEpoch(2451545.0 + 365.25), 2001.0);
}

// Published: Meeus, "Astronomical Algorithms" (2nd ed.), example 21.b. The
// mean place of theta Persei of J2000.0, already carried by its proper
// motion to the date, 2h44m12.975s +49 13'39.90", precessed to 2028 November
// 13.19 TD (JD 2462088.69) is 2h46m11.331s +49 20'54.54". The series here
// lacks the terms in t cubed (0.0001 s and 0.001" at t = 0.29 century), so
// it agrees to the rounding of the printed values: 0.001 s of right
// ascension (7.3e-8 rad) and 0.01" of declination (4.8e-8 rad).
TEST(Precession, MeeusThetaPersei) {
    cACT act;
    double ra = 0;
    double dec = 0;
    act.Precess(2451545.0, 2462088.69, RARad(2, 44, 12.975), DecRad(49, 13, 39.90), ra, dec);
    EXPECT_NEAR(ra, RARad(2, 46, 11.331), 7.3e-8);
    EXPECT_NEAR(dec, DecRad(49, 20, 54.54), 4.8e-8);
}

// Equal dates make t zero and the rotation the identity; the right
// ascension only passes through the quadrant arctangent.
TEST(Precession, IdentityAtEqualDates) {
    cACT act;
    const double jd = 2460000.5;
    double ra = 0;
    double dec = 0;
    act.Precess(jd, jd, 0.4, 0.7, ra, dec);
    EXPECT_NEAR(ra, 0.4, 1e-15);
    EXPECT_NEAR(dec, 0.7, 1e-15);

    // A negative right ascension comes back into one turn of 6.283185308.
    act.Precess(jd, jd, -0.5, -0.3, ra, dec);
    EXPECT_NEAR(ra, 6.283185308 - 0.5, 1e-15);
    EXPECT_NEAR(dec, -0.3, 1e-15);

    // Behind the y axis the arctangent is moved by the program's half turn
    // 3.141592654, which is 4.1e-10 above the true one: the place comes back
    // shifted by that much.
    const double offset = 3.141592654 - std::numbers::pi;
    act.Precess(jd, jd, 2.0, 0.1, ra, dec);
    EXPECT_NEAR(ra, 2.0 + offset, 1e-15);
    act.Precess(jd, jd, 4.0, 0.1, ra, dec);
    EXPECT_NEAR(ra, 4.0 - 2 * std::numbers::pi + 3.141592654 * 2 - offset, 1e-15);
}

// A right ascension that lands on exactly 6.283185308 stays there; only a
// larger value comes down by a turn. Just below zero, -1e-17 + 6.283185308
// rounds to 6.283185308.
TEST(Precession, ExactlyOneTurnStays) {
    cACT act;
    double ra = 0;
    double dec = 0;
    act.Precess(2451545.0, 2451545.0, -1e-17, 0.0, ra, dec);
    EXPECT_EQ(ra, 6.283185308);
    EXPECT_EQ(dec, 0.0);
}

// There and back over 50 years. Without the terms in t cubed the series for
// the way back is not the exact inverse of the way there: the two leave a
// turn about the pole of 1.6e-9 rad (0.0003"), far below the 0.005" that the
// neglected terms are worth at t = 0.5. The declination closes to rounding.
TEST(Precession, RoundTripTo2050) {
    cACT act;
    const double j2000 = act.JulianDay(2000.0);
    const double j2050 = act.JulianDay(2050.0);
    std::mt19937 gen(2050);
    std::uniform_real_distribution<double> raDist(0.0, 6.28);
    std::uniform_real_distribution<double> decDist(-1.5, 1.5);
    for (int i = 0; i < 500; ++i) {
        double ra0 = raDist(gen);
        double dec0 = decDist(gen);
        double ra1 = 0, dec1 = 0, ra2 = 0, dec2 = 0;
        act.Precess(j2000, j2050, ra0, dec0, ra1, dec1);
        act.Precess(j2050, j2000, ra1, dec1, ra2, dec2);
        ASSERT_LT(Separation(ra0, dec0, ra2, dec2), 2e-9) << "RA " << ra0 << " Dec " << dec0;
        ASSERT_NEAR(dec2, dec0, 1e-10) << "RA " << ra0 << " Dec " << dec0;
    }
}

}  // namespace
