// The inverse of the pointing model and the end-to-end conversions.

#include "ModelTestSupport.h"
#include "model/InverseSolution.h"
#include "model/Terms.h"

namespace {

using namespace modeltest;

// A model with a handful of active terms of fitted size (arcminutes).
std::unique_ptr<ModelState> ModelWithTerms() {
    auto s = FreshModel();
    // clang-format off
    const double coefs[][2] = {
        {1, 2e-4}, {2, -3e-4}, {3, 1e-4}, {4, 2e-4}, {5, 8e-4}, {6, -2e-4}, {7, 3e-4}, {10, -1e-4},
        {21, 2e-4}, {44, 1e-4}};
    // clang-format on
    for (const auto& [term, coef] : coefs) {
        s->TermActive[static_cast<int>(term)] = true;
        s->TermCoef[static_cast<int>(term)] = coef;
    }
    s->ErrorNorth = 1e-3;
    s->ErrorWest = -2e-3;
    s->ThetaEncOffset = 0.01;
    s->PhiEncOffset = -0.02;
    return s;
}

Vec3 Unit(Vec3 v) {
    NormalizeVec(v);
    return v;
}

TEST(InverseSolution, ReturnsTheEncodersThatGaveAPointing) {
    auto s = ModelWithTerms();
    std::mt19937 gen(3);
    std::uniform_real_distribution<double> theta(-1.4, 1.4), phi(0.0, 6.28);
    for (int k = 0; k < 300; ++k) {
        const double thetaEnc = theta(gen) + 1.5707963;  // axis Theta from about -1.4 to 1.4
        const double phiEnc = phi(gen);
        double Theta = 0, Phi = 0;
        EncodersToAngles(*s, thetaEnc, phiEnc, Theta, Phi);
        if (std::fabs(Theta) < 0.05) continue;  // the axis pole has no unique Phi
        double t = 0, p = 0;
        VectorToEncoders(*s, EncoderToPointing(*s, thetaEnc, phiEnc), Theta < 0 ? -1 : 1, t, p);
        // The iteration stops once a pass changes the vector by 1e-6 rad or
        // less; with coefficients near 1e-3 the error left is about 1e-9.
        EXPECT_NEAR(t, thetaEnc, 1e-8) << "Theta " << Theta;
        EXPECT_NEAR(std::remainder(p - phiEnc, s->PhiCountsPerRev) * std::sin(Theta), 0.0, 1e-8)
            << "Theta " << Theta;
    }
}

TEST(InverseSolution, WithoutTermsGivesThePlainAnglesAndTsignPicksThePosition) {
    auto s = FreshModel();
    double t1 = 0, p1 = 0, t2 = 0, p2 = 0;
    SolveAxisAngles(*s, Unit({0.3, -0.5, 0.8}), 1, t1, p1);
    EXPECT_DOUBLE_EQ(t1, std::atan2(std::sqrt(0.3 * 0.3 + 0.5 * 0.5), 0.8));
    // Phi is left in (-pi, pi]: -0.5/0.3 lies in the fourth quadrant.
    EXPECT_DOUBLE_EQ(p1, std::atan2(-0.5, 0.3));
    // Tsign -1: Theta negated, Phi turned by the half turn, same direction.
    SolveAxisAngles(*s, Unit({0.3, 0.5, 0.8}), 1, t1, p1);
    SolveAxisAngles(*s, Unit({0.3, 0.5, 0.8}), -1, t2, p2);
    EXPECT_DOUBLE_EQ(t2, -t1);
    EXPECT_NEAR(p2, p1 + 3.141592654, 1e-15);
    ExpectVecNear(AnglesToVec(t1, p1), AnglesToVec(t2, p2), 1e-9, "both positions");
    // With terms the two positions differ by more than the mirror image.
    auto withTerms = ModelWithTerms();
    SolveAxisAngles(*withTerms, Unit({0.3, 0.5, 0.8}), 1, t1, p1);
    SolveAxisAngles(*withTerms, Unit({0.3, 0.5, 0.8}), -1, t2, p2);
    EXPECT_GT(std::fabs(t2 + t1), 1e-6);
}

TEST(InverseSolution, TsignZeroAndPositiveActLikeOne) {
    auto s = ModelWithTerms();
    const Vec3 target = Unit({0.2, 0.4, 0.7});
    double t1 = 0, p1 = 0;
    VectorToEncoders(*s, target, 1, t1, p1);
    for (int16_t Tsign : {0, 5}) {
        double t = 0, p = 0;
        VectorToEncoders(*s, target, Tsign, t, p);
        EXPECT_EQ(t, t1) << "Tsign " << Tsign;
        EXPECT_EQ(p, p1) << "Tsign " << Tsign;
    }
}

// With the default encoder settings the counts of a perfect alt-az mount
// read the altitude (Theta counts up from the horizon) and the azimuth
// (Phi counts clockwise seen from above, from north through east).
TEST(EncoderToAltAz, DefaultEncodersReadAltitudeAndAzimuth) {
    auto s = FreshModel();
    double Alt = 0, Az = 0;
    EncodersToAltAz(*s, 0.5, 1.0, Alt, Az);
    EXPECT_NEAR(Alt, 0.5, 1e-12);
    EXPECT_NEAR(Az, 1.0, 1e-12);
    EncodersToAltAz(*s, 0.2, 5.5, Alt, Az);
    EXPECT_NEAR(Alt, 0.2, 1e-12);
    // Phi comes back through the true-pi arctangent and goes to the azimuth
    // with the short full turn: they differ by 1.8e-10 per turn.
    EXPECT_NEAR(Az, 5.5, 1e-9);
}

TEST(CelestialConversions, EncodersBackToTheSamePlace) {
    auto s = ModelWithTerms();
    const double LST = 1.3, JD = 2460100.25;
    for (int16_t Tsign : {1, -1}) {
        for (double dec : {-0.3, 0.2, 0.9}) {
            double t = 0, p = 0, ra = 0, d = 0;
            CelestialToEncoders(*s, LST, JD, 1.1, dec, Tsign, t, p);
            EncodersToCelestial(*s, LST, JD, t, p, ra, d);
            // Inverse tolerance about 1e-9 plus the second-order mean place
            // of the non-iterated apparent-to-mean step.
            EXPECT_NEAR(std::remainder(ra - 1.1, 6.283185308) * std::cos(dec), 0.0, 1e-7)
                << "Tsign " << Tsign;
            EXPECT_NEAR(d, dec, 1e-7) << "Tsign " << Tsign;
            ApparentToEncoders(*s, LST, JD, 1.1, dec, Tsign, t, p);
            EncodersToApparent(*s, LST, JD, t, p, ra, d);
            EXPECT_NEAR(std::remainder(ra - 1.1, 6.283185308) * std::cos(dec), 0.0, 1e-8)
                << "Tsign " << Tsign;
            EXPECT_NEAR(d, dec, 1e-8) << "Tsign " << Tsign;
        }
    }
}

}  // namespace
