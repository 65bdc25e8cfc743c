// Epochs, precession between two mean places, and the apparent place of a
// date (precession, nutation and annual aberration).

#include <algorithm>
#include <numbers>

#include "SkyTestSupport.h"
#include "sky/AngleUnits.h"
#include "sky/cACT.h"

namespace {

using skytest::Dms;
using skytest::Hms;

double ArcSec(double rad) {
    return rad * 648000 / 3.141592654;
}

// Meeus, "Astronomical Algorithms" (2nd ed.), examples 21.b and 23.a: the
// mean place of theta Persei of J2000.0, already carried by its proper
// motion to the date, 2h44m12.975s +49 13'39.90", on 2028 November 13.19 TD
// (JD 2462088.69).
const double kPerseiRA = Hms(2, 44, 12.975), kPerseiDec = Dms(49, 13, 39.90),
             kPerseiJD = 2462088.69;

TEST(JulianEpochs, J2000AndCentury) {
    const cACT act;
    EXPECT_EQ(act.JulianEpoch(2451545.0), 2000.0);
    EXPECT_EQ(act.JulianDay(2000.0), 2451545.0);
    EXPECT_EQ(act.JulianDay(2100.0) - act.JulianDay(2000.0), 36525.0);
    EXPECT_EQ(act.JulianEpoch(2451545.0 + 365.25), 2001.0);
}

// Precessed, Meeus gives 2h46m11.331s +49 20'54.54". The series here lacks
// the terms in t cubed (0.0001 s and 0.001" at t = 0.29 century), so it
// agrees to the rounding of the printed values: 0.001 s of right ascension
// (7.3e-8 rad) and 0.01" of declination (4.8e-8 rad).
TEST(Precession, MeeusThetaPersei) {
    double ra = 0, dec = 0;
    cACT().Precess(2451545.0, kPerseiJD, kPerseiRA, kPerseiDec, ra, dec);
    EXPECT_NEAR(ra, Hms(2, 46, 11.331), 7.3e-8);
    EXPECT_NEAR(dec, Dms(49, 20, 54.54), 4.8e-8);
}

// Equal dates make t zero and the rotation the identity; the right
// ascension only passes through the quadrant arctangent: a negative one
// comes back into one turn of 6.283185308, and behind the y axis the place
// is shifted by the program's half turn less pi (4.1e-10). Exactly one turn
// stays: -1e-17 + 6.283185308 rounds to 6.283185308.
TEST(Precession, IdentityAtEqualDates) {
    const double jd = 2460000.5, offset = 3.141592654 - std::numbers::pi;
    // clang-format off
    const struct { double ra, dec, wantRA, tol; } cases[] = {
        {0.4, 0.7, 0.4, 1e-15}, {-0.5, -0.3, 6.283185308 - 0.5, 1e-15},
        {2.0, 0.1, 2.0 + offset, 1e-15},
        {4.0, 0.1, 4.0 - 2 * std::numbers::pi + 3.141592654 * 2 - offset, 1e-15},
        {-1e-17, 0.0, 6.283185308, 0}};
    // clang-format on
    for (const auto& c : cases) {
        double ra = 0, dec = 0;
        cACT().Precess(jd, jd, c.ra, c.dec, ra, dec);
        EXPECT_NEAR(ra, c.wantRA, c.tol) << "RA " << c.ra;
        EXPECT_NEAR(dec, c.dec, c.tol) << "RA " << c.ra;
    }
}

// There and back over 50 years. Without the terms in t cubed the series for
// the way back is not the exact inverse of the way there: the two leave a
// turn about the pole of 1.6e-9 rad (0.0003"), far below the 0.005" that the
// neglected terms are worth at t = 0.5. The declination closes to rounding.
TEST(Precession, RoundTripTo2050) {
    const cACT act;
    const double j2000 = act.JulianDay(2000.0), j2050 = act.JulianDay(2050.0);
    std::mt19937 gen(2050);
    std::uniform_real_distribution<double> raDist(0.0, 6.28), decDist(-1.5, 1.5);
    for (int i = 0; i < 500; ++i) {
        const double ra0 = raDist(gen), dec0 = decDist(gen);
        double ra1 = 0, dec1 = 0, ra2 = 0, dec2 = 0;
        act.Precess(j2000, j2050, ra0, dec0, ra1, dec1);
        act.Precess(j2050, j2000, ra1, dec1, ra2, dec2);
        // The chord between the two places, the angle between them when small.
        const double dx = std::cos(ra0) * std::cos(dec0) - std::cos(ra2) * std::cos(dec2);
        const double dy = std::sin(ra0) * std::cos(dec0) - std::sin(ra2) * std::cos(dec2);
        ASSERT_LT(std::hypot(dx, dy, std::sin(dec0) - std::sin(dec2)), 2e-9)
            << "RA " << ra0 << " Dec " << dec0;
        ASSERT_NEAR(dec2, dec0, 1e-10) << "RA " << ra0 << " Dec " << dec0;
    }
}

// Apparent, Meeus gives 2h46m14.39s +49 21'07.45". The short series here
// leaves out the moon's terms of nutation (0.2" each), the 2-Omega term and
// the eccentricity terms of aberration (up to 0.34"), so it is good to
// about 1" in each coordinate, both ways.
TEST(ApparentPlace, MeeusThetaPersei) {
    const cACT act;
    const double wantRA = Hms(2, 46, 14.39), wantDec = Dms(49, 21, 7.45);
    double ra = 0, dec = 0;
    act.FromJ2000ToJD(kPerseiJD, kPerseiRA, kPerseiDec, ra, dec);
    EXPECT_NEAR(ArcSec(ra), ArcSec(wantRA), 1.0);
    EXPECT_NEAR(ArcSec(dec), ArcSec(wantDec), 1.0);
    act.FromJDToJ2000(kPerseiJD, wantRA, wantDec, ra, dec);
    EXPECT_NEAR(ArcSec(ra), ArcSec(kPerseiRA), 1.0);
    EXPECT_NEAR(ArcSec(dec), ArcSec(kPerseiDec), 1.0);
}

// The way back takes the correction at the apparent place and subtracts it
// once: it is exactly the reflection of the way there at the same place.
TEST(ApparentPlace, BackIsOneSubtraction) {
    const cACT act;
    const double jd = 2460676.5, ra = 1.2, dec = 0.9;
    double raApp = 0, decApp = 0, raBack = 0, decBack = 0;
    act.MeanToApparent(jd, ra, dec, raApp, decApp);
    act.ApparentToMean(jd, ra, dec, raBack, decBack);
    EXPECT_NEAR(raBack, ra - (raApp - ra), 1e-15);
    EXPECT_NEAR(decBack, dec - (decApp - dec), 1e-15);
    EXPECT_GT(std::abs(ArcSec(raApp - ra)), 5.0) << "the correction is tens of arc seconds";
}

// There and back returns the place to within the correction times its change
// across the correction: the correction is at most about 4.2e-4 rad (86")
// at declinations up to 1.2 rad, so the rest is below about 2e-7 rad. It is
// not exact, since the way back does not iterate.
TEST(ApparentPlace, RoundTripWithinTheSquareOfTheCorrection) {
    const cACT act;
    double largest = 0;
    for (double jd : {2451545.0, 2460676.5, 2462088.69, 2470000.5}) {
        for (double ra = 0.05; ra < 6.28; ra += 0.37) {
            for (double dec = -1.2; dec <= 1.2; dec += 0.15) {
                double raApp = 0, decApp = 0, ra0 = 0, dec0 = 0;
                act.FromJ2000ToJD(jd, ra, dec, raApp, decApp);
                act.FromJDToJ2000(jd, raApp, decApp, ra0, dec0);
                const double dRA = std::remainder(ra0 - ra, 6.283185308);
                EXPECT_NEAR(dRA, 0.0, 2e-7) << "JD " << jd << " RA " << ra << " Dec " << dec;
                EXPECT_NEAR(dec0, dec, 2e-7) << "JD " << jd << " RA " << ra << " Dec " << dec;
                largest = std::max({largest, std::abs(dRA), std::abs(dec0 - dec)});
            }
        }
    }
    EXPECT_GT(largest, 1e-9) << "a second-order rest must remain";
}

// Degrees and arc seconds become radians by one factor worked out first,
// x * (3.141592654 / 180): the bits below were worked out with that order
// (x * 3.141592654 / 180 gives 0x1.906bdd4c240d5p+2, RA ...c and Dec ...c).
// The sun's mean anomaly at JD 2415020.0 (T = 0) is 358.47583 degrees; the
// apparent place is that of a star near Aldebaran on 2026 January 15.
TEST(UnitFactors, LastBitOfTheApparentPlace) {
    double ra = 0, dec = 0;
    cACT().FromJDToJ2000(2461061.607638889, 0x1.6fa120d187fa3p-1, 0x1.4899f098d277ep-2, ra, dec);
    const struct { const char* what; double got, want; } cases[] = {
        {"mean anomaly", DegToRadians(358.47583), 0x1.906bdd4c240d6p+2},
        {"RA J2000", ra, 0x1.6c5792180bf2bp-1},
        {"Dec J2000", dec, 0x1.469853665e39dp-2}};
    for (const auto& c : cases) {
        EXPECT_EQ(c.got, c.want) << c.what << std::hexfloat << ": wanted " << c.want << ", got "
                                 << c.got << ", difference " << c.got - c.want;
    }
}

}  // namespace
