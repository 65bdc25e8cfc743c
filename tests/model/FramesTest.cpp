// The quadrant arctangent, vectors and axis angles, and the rotations between
// the mount and the horizon frame.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>

#include "model/Constants.h"
#include "model/Frames.h"
#include "model/ModelState.h"

namespace {

const double kTruePi = std::acos(-1.0);
// The program's half turn lies 4.1e-10 above pi. Checks against outside
// references that use true pi allow for that.
constexpr double kShortPiSlack = 1e-9;

void ExpectVecNear(Vec3 want, Vec3 got, double tol, const char* what) {
    EXPECT_NEAR(want.x, got.x, tol) << what << " x";
    EXPECT_NEAR(want.y, got.y, tol) << what << " y";
    EXPECT_NEAR(want.z, got.z, tol) << what << " z";
}

std::unique_ptr<ModelState> DefaultModel() {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    return s;
}

// Horizon-frame vector of a star (x north, y west, z zenith) from the
// textbook formulae, all angles radians.
Vec3 StarInHorizon(double H, double d, double L) {
    return Vec3{std::sin(d) * std::cos(L) - std::cos(d) * std::cos(H) * std::sin(L),
                std::cos(d) * std::sin(H),
                std::sin(d) * std::sin(L) + std::cos(d) * std::cos(H) * std::cos(L)};
}

// ---------------------------------------------------------------------------

TEST(QuadrantArctangent, AxisCasesUseTheShortHalfTurn) {
    // On the axes the result is a fixed fraction of 3.141592654, exactly.
    EXPECT_EQ(Atan2(0, -1), 3.141592654);
    EXPECT_EQ(Atan2(-1, 0), -3.141592654 / 2);
    EXPECT_EQ(Atan2(1, 0), 3.141592654 / 2);
    EXPECT_EQ(Atan2(0, 0), 0.0);
    EXPECT_EQ(Atan2(0, 5), 0.0);
    EXPECT_EQ(Atan2(-2.5, 0), -3.141592654 / 2);
}

TEST(QuadrantArctangent, NegativeZeroOrdinateCountsAsNonNegative) {
    // Unlike the C library (which gives -pi), -0 is "0 or above" here.
    EXPECT_EQ(Atan2(-0.0, -1), 3.141592654);
    EXPECT_LT(std::atan2(-0.0, -1.0), 0.0) << "library reference for contrast";
}

TEST(QuadrantArctangent, QuadrantsMatchTheLibraryPlusTheShortPiOffset) {
    // In the right half plane the result is the library's atan2 to a rounding;
    // in the left half plane it carries the program's half turn instead of pi,
    // so it differs from the library by exactly (3.141592654 - pi) with the
    // sign of the half turn added. Tolerance: two roundings of values near 3.
    const double ys[] = {1, 1, -1, -1, 0.3, -0.3, 5, -1e-8};
    const double xs[] = {1, -1, -1, 1, -2, -2, 0.01, -1};
    for (int n = 0; n < 8; ++n) {
        const double y = ys[n], x = xs[n];
        double want = std::atan2(y, x);
        if (x < 0) want += (y >= 0 ? 1 : -1) * (3.141592654 - kTruePi);
        EXPECT_NEAR(want, Atan2(y, x), 2e-15) << "Y " << y << " X " << x;
    }
}

TEST(QuadrantArctangent, RangeIsOneTurnAroundZero) {
    std::mt19937 gen(7);
    std::uniform_real_distribution<double> u(-10, 10);
    for (int n = 0; n < 200; ++n) {
        const double a = Atan2(u(gen), u(gen));
        EXPECT_GE(a, -kHalfTurn);
        EXPECT_LE(a, kHalfTurn);
    }
}

// ---------------------------------------------------------------------------

TEST(AxisAnglesOfVector, AltAzHorizonDirectionGivesZenithDistanceAndMinusAzimuth) {
    // A star at azimuth A (north through east) and altitude h lies at
    // x = cos h cos A (north), y = -cos h sin A (west, so east is -y),
    // z = sin h. Its angles are Theta = pi/2 - h, Phi = 2 pi - A.
    const double A = 1.0, h = 0.5;
    const Vec3 v{std::cos(h) * std::cos(A), -std::cos(h) * std::sin(A), std::sin(h)};
    double Theta = 0, Phi = 0;
    VecToAngles(v, 1, Theta, Phi);
    EXPECT_NEAR(kTruePi / 2 - h, Theta, 1e-15) << "zenith distance";
    EXPECT_NEAR(kFullTurn - A, Phi, 1e-15) << "minus azimuth, in 0..2pi";
}

TEST(AxisAnglesOfVector, AnglesToVecIsThePointingVector) {
    // Theta pi/2, Phi 0: the +x axis; Theta 0.5, Phi pi/2: (0, sin .5, cos .5).
    ExpectVecNear({1, 0, 0}, AnglesToVec(kHalfTurn / 2, 0), kShortPiSlack, "horizon north");
    ExpectVecNear({0, std::sin(0.5), std::cos(0.5)}, AnglesToVec(0.5, kHalfTurn / 2), kShortPiSlack,
                  "toward +y");
    // Theta 0 is the axis itself for any Phi.
    ExpectVecNear({0, 0, 1}, AnglesToVec(0, 2.7), 0, "axis");
}

TEST(AxisAnglesOfVector, NegativeTsignGivesTheOtherAxisPosition) {
    // Same direction, Theta negated and Phi turned by the half turn.
    const Vec3 v = AnglesToVec(0.6, 1.0);
    double Theta = 0, Phi = 0;
    VecToAngles(v, -1, Theta, Phi);
    EXPECT_NEAR(-0.6, Theta, 1e-15);
    EXPECT_NEAR(1.0 + kHalfTurn, Phi, 4e-15);
    // The half turn of 3.141592654 is 4.1e-10 more than pi, which moves the
    // direction by that much times sin Theta.
    ExpectVecNear(v, AnglesToVec(Theta, Phi), kShortPiSlack, "same direction");

    // Phi 4 lies in the third quadrant: Atan2 subtracts the short half turn,
    // the full turn is added, then the half turn and its wrap. What is left
    // is 4 - pi exactly, the short constants cancelling.
    VecToAngles(AnglesToVec(0.6, 4.0), -1, Theta, Phi);
    EXPECT_NEAR(4.0 - kTruePi, Phi, 4e-15);
    EXPECT_NEAR(-0.6, Theta, 1e-15);
}

TEST(AxisAnglesOfVector, HalfTurnPlusHalfTurnIsNotWrapped) {
    // (-1, 0, 0) has Phi exactly 3.141592654; turned by the half turn it is
    // exactly the full turn, which is not above the full turn and stays.
    double Theta = 0, Phi = 0;
    VecToAngles({-1, 0, 0}, -1, Theta, Phi);
    EXPECT_EQ(Phi, 6.283185308);
    EXPECT_EQ(Theta, -3.141592654 / 2);
}

TEST(AxisAnglesOfVector, AnyLengthIsAccepted) {
    double Theta = 1, Phi = 1;
    VecToAngles({0, 0, 5}, 1, Theta, Phi);
    EXPECT_EQ(Theta, 0.0);
    EXPECT_EQ(Phi, 0.0);
    // (0, 3, 0): both angles come from the X == 0 branch, exact quarter turns.
    VecToAngles({0, 3, 0}, 1, Theta, Phi);
    EXPECT_EQ(Theta, kHalfTurn / 2);
    EXPECT_EQ(Phi, kHalfTurn / 2);
    // (0, -3, 0): -quarter turn + full turn.
    VecToAngles({0, -3, 0}, 1, Theta, Phi);
    EXPECT_EQ(Phi, -kHalfTurn / 2 + kFullTurn);
}

TEST(AxisAnglesOfVector, ZeroVectorGivesZeroAngles) {
    double Theta = 1, Phi = 1;
    VecToAngles({0, 0, 0}, 1, Theta, Phi);
    EXPECT_EQ(Theta, 0.0);
    EXPECT_EQ(Phi, 0.0);
    VecToAngles({0, 0, 0}, -1, Theta, Phi);
    EXPECT_EQ(Theta, 0.0);
    EXPECT_EQ(Phi, kHalfTurn);
}

TEST(AxisAnglesOfVector, RoundTripWithPositiveTsign) {
    // Theta in (0, pi) and Phi in [0, 2 pi) come back, except that every
    // quadrant correction of Atan2 uses 3.141592654: the result is off by a
    // whole number 0, 1 or 2 of (3.141592654 - pi). Tolerance on the rest: a
    // few roundings through sin, cos and atan.
    const double delta = 3.141592654 - kTruePi;
    std::mt19937 gen(99);
    std::uniform_real_distribution<double> th(0.01, 3.13), ph(0.0, 6.28);
    for (int n = 0; n < 100; ++n) {
        const double t = th(gen), p = ph(gen);
        double Theta = 0, Phi = 0;
        VecToAngles(AnglesToVec(t, p), 1, Theta, Phi);
        // Theta past the horizon comes from z < 0, where the half turn is added.
        const double thetaShift = t > kTruePi / 2 ? delta : 0;
        EXPECT_NEAR(t + thetaShift, Theta, 1e-14) << "Theta " << t << " Phi " << p;
        const double m = std::round((Phi - p) / delta);
        EXPECT_GE(m, 0.0);
        EXPECT_LE(m, 2.0);
        EXPECT_NEAR(p + m * delta, Phi, 1e-14) << "Theta " << t << " Phi " << p << " m " << m;
    }
}

// ---------------------------------------------------------------------------

TEST(MountFrameRoundTrip, HorizonToMountUndoesMountToHorizon) {
    // Random errors up to 0.1 rad, latitudes from pole to pole, both mount
    // types. Five rotations of a unit vector: a few roundings per component.
    auto s = DefaultModel();
    std::mt19937 gen(2024);
    std::uniform_real_distribution<double> err(-0.1, 0.1), lat(-90, 90), comp(-1, 1);
    for (int n = 0; n < 200; ++n) {
        s->IsAltAz = (n % 2 == 0);
        s->ErrorNorth = err(gen);
        s->ErrorWest = err(gen);
        s->Latitude = lat(gen);
        Vec3 v{comp(gen), comp(gen), comp(gen)};
        NormalizeVec(v);
        ExpectVecNear(v, HorizonToMount(*s, MountToHorizon(*s, v)), 4e-15, "mount->horizon->mount");
        ExpectVecNear(v, MountToHorizon(*s, HorizonToMount(*s, v)), 4e-15,
                      "horizon->mount->horizon");
    }
}

TEST(MountFrameRoundTrip, PerfectAltAzMountFrameIsTheHorizonFrame) {
    auto s = DefaultModel();
    const Vec3 v{0.3, -0.4, 0.866};
    const Vec3 m = HorizonToMount(*s, v);
    EXPECT_EQ(m.x, v.x);
    EXPECT_EQ(m.y, v.y);
    EXPECT_EQ(m.z, v.z);
}

// The colatitude of an equatorial mount is 3.141592654/2 - L, half of
// (3.141592654 - pi) more than the true colatitude. So a perfect mount's axis
// stands that small angle north of the true pole, and every mount vector is
// the true one turned by it about y. This turns v by that angle the way the
// model does, to first order (the second order is 2e-20).
Vec3 TurnedByHalfShortPiExcess(Vec3 v) {
    const double a = -(3.141592654 - kTruePi) / 2;
    return Vec3{v.x + v.z * a, v.y, v.z - v.x * a};
}

TEST(EquatorialMountFrame, NorthCelestialPoleIsTheMountAxis) {
    // The pole (declination 90 degrees) lies in the horizon frame at
    // (cos L, 0, sin L), which the mount sees at (0, 0, 1) turned by the short
    // pi excess: (-2.05e-10, 0, 1). The latitude goes to radians with the
    // program's factor 3.141592654/180, as the model does. Tolerance: a few
    // roundings.
    auto s = DefaultModel();
    s->IsAltAz = false;
    for (double latDeg : {33.5, -20.0, 60.0, 0.0, 89.0}) {
        s->Latitude = latDeg;
        const double L = latDeg * 3.141592654 / 180;
        const Vec3 pole{std::cos(L), 0, std::sin(L)};
        const Vec3 m = HorizonToMount(*s, pole);
        ExpectVecNear(TurnedByHalfShortPiExcess({0, 0, 1}), m, 1e-15, "pole");
        ExpectVecNear({0, 0, 1}, m, 2.1e-10, "pole, to the accuracy of the short pi");
    }
}

TEST(EquatorialMountFrame, StarAtHourAngleAndDeclination) {
    // A perfect equatorial mount sees a star at (-cos d cos H, cos d sin H, sin d):
    // +x at hour angle 12 h, +y at hour angle 6 h (west); turned as above.
    auto s = DefaultModel();
    s->IsAltAz = false;
    s->Latitude = 33.5;
    const double L = 33.5 * 3.141592654 / 180;
    const double Hs[] = {0.0, 1.2, -2.0, 3.0, 4.5};
    const double ds[] = {0.3, -0.5, 1.1, 0.0, -1.3};
    for (int n = 0; n < 5; ++n) {
        const double H = Hs[n], d = ds[n];
        const Vec3 want{-std::cos(d) * std::cos(H), std::cos(d) * std::sin(H), std::sin(d)};
        ExpectVecNear(TurnedByHalfShortPiExcess(want), HorizonToMount(*s, StarInHorizon(H, d, L)),
                      2e-15, "star");
    }
}

TEST(ErrorRotationSigns, PositiveErrorNorthTipsAxisTowardPlusX) {
    // Hand calculation: the mount z axis turned by 0.01 rad toward +x is
    // (sin 0.01, 0, cos 0.01) = (0.009999833334166664, 0, 0.9999500004166653)
    // by the series x - x^3/6 + x^5/120 and 1 - x^2/2 + x^4/24.
    auto s = DefaultModel();
    s->ErrorNorth = 0.01;
    ExpectVecNear({0.009999833334166664, 0, 0.9999500004166653}, MountToHorizon(*s, {0, 0, 1}),
                  1e-16, "axis with ErrorNorth");
}

TEST(ErrorRotationSigns, PositiveErrorWestTipsAxisTowardPlusY) {
    auto s = DefaultModel();
    s->ErrorWest = 0.01;
    ExpectVecNear({0, 0.009999833334166664, 0.9999500004166653}, MountToHorizon(*s, {0, 0, 1}),
                  1e-16, "axis with ErrorWest");
}

TEST(ErrorRotationSigns, NorthTurnComesBeforeWestTurn) {
    // Turning the axis first by e toward x, then by w toward y:
    // (sin e, cos e sin w, cos e cos w). The other order would give
    // (cos w sin e, sin w, cos w cos e), 6e-6 away in x and y.
    auto s = DefaultModel();
    s->ErrorNorth = 0.02;
    s->ErrorWest = 0.03;
    const double e = 0.02, w = 0.03;
    ExpectVecNear({std::sin(e), std::cos(e) * std::sin(w), std::cos(e) * std::cos(w)},
                  MountToHorizon(*s, {0, 0, 1}), 1e-16, "axis");
}

TEST(ErrorRotationSigns, EquatorialErrorNorthLowersThePolarAxisTowardNorth) {
    // With ErrorNorth e the polar axis points north at altitude L - e, less
    // the half excess of the short pi in the colatitude (see above).
    auto s = DefaultModel();
    s->IsAltAz = false;
    s->Latitude = 33.5;
    s->ErrorNorth = 0.001;
    const Vec3 axis = MountToHorizon(*s, {0, 0, 1});
    const double L = 33.5 * 3.141592654 / 180;
    EXPECT_GT(axis.x, 0.0) << "toward north";
    EXPECT_NEAR(0.0, axis.y, 1e-16);
    const double halfExcess = (3.141592654 - kTruePi) / 2;
    EXPECT_NEAR(L - 0.001 - halfExcess, std::asin(axis.z), 1e-15) << "altitude of the axis";
}

}  // namespace
