// Mean J2000 place <-> apparent place of a date: precession, nutation and
// annual aberration.
#include <gtest/gtest.h>

#include <cmath>

#include "sky/cACT.h"

namespace {

double RARad(double h, double m, double s) {
    return (h + m / 60 + s / 3600) * 15 * 3.141592654 / 180;
}
double DecRad(double d, double m, double s) {
    return (d + m / 60 + s / 3600) * 3.141592654 / 180;
}
double ArcSec(double rad) {
    return rad * 648000 / 3.141592654;
}

// Published: Meeus, "Astronomical Algorithms" (2nd ed.), example 23.a
// following 21.b: theta Persei, J2000.0 place 2h44m12.975s +49 13'39.90"
// (proper motion to the date applied), apparent on 2028 November 13.19 TD
// at 2h46m14.39s +49 21'07.45". The short series here leaves out the moon's
// terms of nutation (0.2" each), the 2-Omega term and the eccentricity terms
// of aberration (up to 0.34"), so it is good to about 1": 1" of right
// ascension and 1" of declination.
TEST(ApparentPlace, MeeusThetaPersei) {
    cACT act;
    double ra = 0;
    double dec = 0;
    act.FromJ2000ToJD(2462088.69, RARad(2, 44, 12.975), DecRad(49, 13, 39.90), ra, dec);
    double wantRA = RARad(2, 46, 14.39);
    double wantDec = DecRad(49, 21, 7.45);
    EXPECT_NEAR(ArcSec(ra), ArcSec(wantRA), 1.0);
    EXPECT_NEAR(ArcSec(dec), ArcSec(wantDec), 1.0);

    // And back from the published apparent place to the J2000 place.
    double ra0 = 0;
    double dec0 = 0;
    act.FromJDToJ2000(2462088.69, wantRA, wantDec, ra0, dec0);
    EXPECT_NEAR(ArcSec(ra0), ArcSec(RARad(2, 44, 12.975)), 1.0);
    EXPECT_NEAR(ArcSec(dec0), ArcSec(DecRad(49, 13, 39.90)), 1.0);
}

// The way back takes the correction at the apparent place and subtracts it
// once: it is exactly the reflection of the way there at the same place.
TEST(ApparentPlace, BackIsOneSubtraction) {
    cACT act;
    const double jd = 2460676.5;
    const double ra = 1.2;
    const double dec = 0.9;
    double raApp = 0, decApp = 0, raBack = 0, decBack = 0;
    act.MeanToApparent(jd, ra, dec, raApp, decApp);
    act.ApparentToMean(jd, ra, dec, raBack, decBack);
    EXPECT_NEAR(raBack, ra - (raApp - ra), 1e-15);
    EXPECT_NEAR(decBack, dec - (decApp - dec), 1e-15);
    // The correction is tens of arc seconds.
    EXPECT_GT(std::abs(ArcSec(raApp - ra)), 5.0);
}

// There and back returns the place to within the correction times its change
// across the correction: the correction is at most about 4.2e-4 rad (86")
// at declinations up to 1.2 rad, so the rest is below about 2e-7 rad. It is
// not exact, since the way back does not iterate.
TEST(ApparentPlace, RoundTripWithinTheSquareOfTheCorrection) {
    cACT act;
    const double dates[] = {2451545.0, 2460676.5, 2462088.69, 2470000.5};
    double largest = 0;
    for (double jd : dates) {
        for (double ra = 0.05; ra < 6.28; ra += 0.37) {
            for (double dec = -1.2; dec <= 1.2; dec += 0.15) {
                double raApp = 0, decApp = 0, ra0 = 0, dec0 = 0;
                act.FromJ2000ToJD(jd, ra, dec, raApp, decApp);
                act.FromJDToJ2000(jd, raApp, decApp, ra0, dec0);
                double dRA = std::remainder(ra0 - ra, 6.283185308);
                EXPECT_NEAR(dRA, 0.0, 2e-7) << "JD " << jd << " RA " << ra << " Dec " << dec;
                EXPECT_NEAR(dec0, dec, 2e-7) << "JD " << jd << " RA " << ra << " Dec " << dec;
                largest = std::max({largest, std::abs(dRA), std::abs(dec0 - dec)});
            }
        }
    }
    EXPECT_GT(largest, 1e-9) << "a second-order rest must remain";
}

}  // namespace
