// The inverse of the pointing model and the end-to-end conversions.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>

#include "model/Frames.h"
#include "model/InverseSolution.h"
#include "model/ModelState.h"
#include "model/Terms.h"

namespace {

std::unique_ptr<ModelState> FreshModel() {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    return s;
}

// A model with a handful of active terms of fitted size (arcminutes).
void GiveTerms(ModelState& s) {
    const double coefs[][2] = {{1, 2e-4}, {2, -3e-4}, {3, 1e-4}, {4, 2e-4}, {5, 8e-4},
                               {6, -2e-4}, {7, 3e-4}, {10, -1e-4}, {21, 2e-4}, {44, 1e-4}};
    for (const auto& c : coefs) {
        s.TermActive[static_cast<int>(c[0])] = true;
        s.TermCoef[static_cast<int>(c[0])] = c[1];
    }
    s.ErrorNorth = 1e-3;
    s.ErrorWest = -2e-3;
    s.ThetaEncOffset = 0.01;
    s.PhiEncOffset = -0.02;
}

double PhiDifference(double a, double b, double turn) { return std::remainder(a - b, turn); }

TEST(InverseSolution, ReturnsTheEncodersThatGaveAPointing) {
    auto s = FreshModel();
    GiveTerms(*s);
    std::mt19937 gen(3);
    std::uniform_real_distribution<double> theta(-1.4, 1.4), phi(0.0, 6.28);
    for (int k = 0; k < 300; ++k) {
        const double thetaEnc = theta(gen) + 1.5707963;  // axis Theta from about -1.4 to 1.4 (from the zenith)
        const double phiEnc = phi(gen);
        double Theta = 0, Phi = 0;
        EncodersToAngles(*s, thetaEnc, phiEnc, Theta, Phi);
        if (std::fabs(Theta) < 0.05) continue;  // the axis pole has no unique Phi
        const Vec3 target = EncoderToPointing(*s, thetaEnc, phiEnc);
        double t = 0, p = 0;
        VectorToEncoders(*s, target, Theta < 0 ? -1 : 1, t, p);
        // The iteration stops once a pass changes the vector by 1e-6 rad or
        // less; with coefficients near 1e-3 the error left is about 1e-9.
        EXPECT_NEAR(t, thetaEnc, 1e-8) << "Theta " << Theta;
        EXPECT_NEAR(PhiDifference(p, phiEnc, s->PhiCountsPerRev) * std::sin(Theta), 0.0, 1e-8) << "Theta " << Theta;
    }
}

TEST(InverseSolution, WithoutTermsGivesThePlainAnglesOfTheTarget) {
    auto s = FreshModel();
    Vec3 target{0.3, -0.5, 0.8};
    NormalizeVec(target);
    double Theta = 0, Phi = 0;
    SolveAxisAngles(*s, target, 1, Theta, Phi);
    EXPECT_DOUBLE_EQ(Theta, std::atan2(std::sqrt(0.3 * 0.3 + 0.5 * 0.5), 0.8));
    // Phi is left in (-pi, pi]: -0.5/0.3 lies in the fourth quadrant.
    EXPECT_DOUBLE_EQ(Phi, std::atan2(-0.5, 0.3));
}

TEST(InverseSolution, NegativeTsignTakesTheOtherAxisPosition) {
    auto s = FreshModel();
    Vec3 target{0.3, 0.5, 0.8};
    NormalizeVec(target);
    double t1 = 0, p1 = 0, t2 = 0, p2 = 0;
    SolveAxisAngles(*s, target, 1, t1, p1);
    SolveAxisAngles(*s, target, -1, t2, p2);
    EXPECT_DOUBLE_EQ(t2, -t1);
    EXPECT_NEAR(p2, p1 + 3.141592654, 1e-15);
    // Both positions point the same way.
    const Vec3 a = AnglesToVec(t1, p1), b = AnglesToVec(t2, p2);
    EXPECT_NEAR(a.x, b.x, 1e-9);
    EXPECT_NEAR(a.y, b.y, 1e-9);
    EXPECT_NEAR(a.z, b.z, 1e-9);
}

TEST(InverseSolution, TsignZeroAndPositiveActLikeOne) {
    auto s = FreshModel();
    GiveTerms(*s);
    Vec3 target{0.2, 0.4, 0.7};
    NormalizeVec(target);
    double t1 = 0, p1 = 0, t0 = 0, p0 = 0, t5 = 0, p5 = 0;
    VectorToEncoders(*s, target, 1, t1, p1);
    VectorToEncoders(*s, target, 0, t0, p0);
    VectorToEncoders(*s, target, 5, t5, p5);
    EXPECT_EQ(t0, t1);
    EXPECT_EQ(p0, p1);
    EXPECT_EQ(t5, t1);
    EXPECT_EQ(p5, p1);
}

TEST(InverseSolution, WithTermsTheTwoAxisPositionsDifferFurther) {
    auto s = FreshModel();
    GiveTerms(*s);
    Vec3 target{0.3, 0.5, 0.8};
    NormalizeVec(target);
    double t1 = 0, p1 = 0, t2 = 0, p2 = 0;
    SolveAxisAngles(*s, target, 1, t1, p1);
    SolveAxisAngles(*s, target, -1, t2, p2);
    EXPECT_GT(std::fabs(t2 + t1), 1e-6);
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
    auto s = FreshModel();
    GiveTerms(*s);
    const double LST = 1.3, JD = 2460100.25;
    for (int16_t Tsign : {1, -1}) {
        for (double dec : {-0.3, 0.2, 0.9}) {
            double t = 0, p = 0;
            CelestialToEncoders(*s, LST, JD, 1.1, dec, Tsign, t, p);
            double ra = 0, d = 0;
            EncodersToCelestial(*s, LST, JD, t, p, ra, d);
            // Inverse tolerance about 1e-9 plus the second-order mean place
            // of the non-iterated apparent-to-mean step.
            EXPECT_NEAR(std::remainder(ra - 1.1, 6.283185308) * std::cos(dec), 0.0, 1e-7) << "Tsign " << Tsign;
            EXPECT_NEAR(d, dec, 1e-7) << "Tsign " << Tsign;
            double ra2 = 0, d2 = 0, t2 = 0, p2 = 0;
            ApparentToEncoders(*s, LST, JD, 1.1, dec, Tsign, t2, p2);
            EncodersToApparent(*s, LST, JD, t2, p2, ra2, d2);
            EXPECT_NEAR(std::remainder(ra2 - 1.1, 6.283185308) * std::cos(dec), 0.0, 1e-8);
            EXPECT_NEAR(d2, dec, 1e-8);
        }
    }
}

}  // namespace
