// Precession and the apparent place against Meeus, and their unit factors to the last bit.
#include <numbers>

#include "SkyTestSupport.h"
#include "sky/AngleUnits.h"
#include "sky/cACT.h"

namespace {

using skytest::Dms;
using skytest::Hms;

// Meeus, "Astronomical Algorithms" (2nd ed.), examples 21.b and 23.a: theta Persei carried to 2028
// November 13.19 TD (JD 2462088.69), 2h44m12.975s +49 13'39.90".
const double kRA = Hms(2, 44, 12.975), kDec = Dms(49, 13, 39.90), kJD = 2462088.69;
const cACT kACT;

const double kArcSec = 648000 / 3.141592654;  // arc seconds per radian

TEST(PlaceOfADate, MeeusThetaPerseiPrecessedAndApparent) {
    // Precessed, Meeus gives 2h46m11.331s +49 20'54.54"; without the t cubed terms (0.0001 s,
    // 0.001") to the printed rounding: 7.3e-8 and 4.8e-8 rad.
    double ra = 0, dec = 0;
    kACT.Precess(2451545.0, kJD, kRA, kDec, ra, dec);
    EXPECT_NEAR(ra, Hms(2, 46, 11.331), 7.3e-8);
    EXPECT_NEAR(dec, Dms(49, 20, 54.54), 4.8e-8);
    // Equal dates: the identity, but a negative RA comes into one turn, a full turn stays, and
    // behind the y axis the place moves by the short half turn's excess over pi.
    const double excess = 3.141592654 - std::numbers::pi;
    for (const auto& [in, want] : {std::pair{-1e-17, 6.283185308}, {4.0, 4.0 + excess}}) {
        kACT.Precess(kJD, kJD, in, 0.0, ra, dec);
        EXPECT_NEAR(ra, want, 2e-15) << "RA " << in;
        EXPECT_EQ(dec, 0.0) << "RA " << in;
    }
    // Apparent, Meeus gives 2h46m14.39s +49 21'07.45"; without the moon's nutation terms (0.2"),
    // the 2-Omega term and the eccentricity of aberration (0.34") about 1".
    const double wantRA = Hms(2, 46, 14.39), wantDec = Dms(49, 21, 7.45);
    kACT.FromJ2000ToJD(kJD, kRA, kDec, ra, dec);
    EXPECT_NEAR(ra * kArcSec, wantRA * kArcSec, 1.0);
    EXPECT_NEAR(dec * kArcSec, wantDec * kArcSec, 1.0);
    kACT.FromJDToJ2000(kJD, wantRA, wantDec, ra, dec);
    EXPECT_NEAR(ra * kArcSec, kRA * kArcSec, 1.0);
    EXPECT_NEAR(dec * kArcSec, kDec * kArcSec, 1.0);
}

// Degrees and arc seconds become radians by one factor worked out first, x * (3.141592654 / 180):
// the bits below were worked out with that order (x * 3.141592654 / 180 gives 0x1.906bdd4c240d5p+2,
// RA ...c and Dec ...c). The sun's mean anomaly at JD 2415020.0 (T = 0) is 358.47583 degrees; the
// apparent place is that of a star near Aldebaran on 2026 January 15.
TEST(UnitFactors, LastBitOfTheApparentPlace) {
    double ra = 0, dec = 0;
    kACT.FromJDToJ2000(2461061.607638889, 0x1.6fa120d187fa3p-1, 0x1.4899f098d277ep-2, ra, dec);
    const struct {
        const char* what;
        double got, want;
    } cases[] = {{"mean anomaly", DegToRadians(358.47583), 0x1.906bdd4c240d6p+2},
                 {"RA J2000", ra, 0x1.6c5792180bf2bp-1},
                 {"Dec J2000", dec, 0x1.469853665e39dp-2}};
    for (const auto& c : cases) {
        EXPECT_EQ(c.got, c.want) << c.what << std::hexfloat << ": wanted " << c.want << ", got "
                                 << c.got << ", difference " << c.got - c.want;
    }
}

}  // namespace
