// The vector helpers, the quadrant arctangent, axis angles, and the
// rotations between the mount and the horizon frame.

#include "ModelTestSupport.h"

namespace {

using namespace modeltest;

// Rodrigues' formula for a right-handed rotation of v about the unit axis u by
// a: v cos a + (u x v) sin a + u (u . v)(1 - cos a). Written out here so the
// plane rotations are checked against the textbook rotation, not themselves.
Vec3 Rodrigues(Vec3 v, Vec3 u, double a) {
    const Vec3 uxv{u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x};
    const double udv = u.x * v.x + u.y * v.y + u.z * v.z;
    const double c = std::cos(a), s = std::sin(a);
    return Vec3{v.x * c + uxv.x * s + u.x * udv * (1 - c),
                v.y * c + uxv.y * s + u.y * udv * (1 - c),
                v.z * c + uxv.z * s + u.z * udv * (1 - c)};
}

Vec3 Turned(void (*rotate)(Vec3&, double), Vec3 v, double a) {
    rotate(v, a);
    return v;
}

TEST(PlaneRotations, AgreeWithRodriguesForRandomVectors) {
    // RotateXZ(a) is the right-handed rotation about +y by a (+z turns toward
    // +x), RotateYZ(a) the one about +x by -a (+z turns toward +y). Tolerance:
    // a few roundings on components below 2.
    std::mt19937 gen(12345);
    std::uniform_real_distribution<double> comp(-1.0, 1.0), ang(-3.0, 3.0);
    for (int n = 0; n < 50; ++n) {
        const Vec3 v{comp(gen), comp(gen), comp(gen)};
        const double a = ang(gen);
        ExpectVecNear(Rodrigues(v, {0, 1, 0}, a), Turned(RotateXZ, v, a), 2e-15, "RotateXZ");
        ExpectVecNear(Rodrigues(v, {1, 0, 0}, -a), Turned(RotateYZ, v, a), 2e-15, "RotateYZ");
    }
}

TEST(VectorHelpers, ProductsDifferenceAndLengthByHand) {
    // x cross y = z, y cross z = x; (1,2,3) x (4,5,6) = (-3, 6, -3);
    // 1*4 + 2*5 + 3*6 = 32; (1,2,3) - (4,5,6) = (-3,-3,-3). Small integers: exact.
    ExpectVecNear({0, 0, 1}, CrossVec({1, 0, 0}, {0, 1, 0}), 0, "x cross y");
    ExpectVecNear({1, 0, 0}, CrossVec({0, 1, 0}, {0, 0, 1}), 0, "y cross z");
    ExpectVecNear({-3, 6, -3}, CrossVec({1, 2, 3}, {4, 5, 6}), 0, "(1,2,3) x (4,5,6)");
    EXPECT_EQ(DotVec({1, 2, 3}, {4, 5, 6}), 32.0);
    ExpectVecNear({-3, -3, -3}, SubVec({1, 2, 3}, {4, 5, 6}), 0, "difference");
    // (3, 4, 12) has length 13 (a Pythagorean quadruple). One division each.
    Vec3 v{3, 4, 12};
    NormalizeVec(v);
    ExpectVecNear({3.0 / 13, 4.0 / 13, 12.0 / 13}, v, 1e-16, "(3,4,12)/13");
    Vec3 zero{0, 0, 0};
    NormalizeVec(zero);
    ExpectVecNear({0, 0, 0}, zero, 0, "zero vector stays zero, no NaN");
}

// What the short half turn adds over pi; checks against references made
// with true pi allow for it.
constexpr double kDelta = 3.141592654 - kTruePi;
constexpr double kShortPiSlack = 1e-9;

TEST(QuadrantArctangent, ExactOnTheAxesAndShiftedByTheShortPiElsewhere) {
    // On the axes a fixed fraction of 3.141592654, exactly; -0 counts as "0
    // or above" (the C library gives -pi for atan2(-0, -1)).
    // clang-format off
    const struct { double y, x, want; } axes[] = {
        {0, -1, 3.141592654}, {-1, 0, -3.141592654 / 2}, {1, 0, 3.141592654 / 2}, {0, 0, 0},
        {0, 5, 0}, {-2.5, 0, -3.141592654 / 2}, {-0.0, -1, 3.141592654}};
    // clang-format on
    for (const auto& c : axes) EXPECT_EQ(c.want, Atan2(c.y, c.x)) << "Y " << c.y << " X " << c.x;
    EXPECT_LT(std::atan2(-0.0, -1.0), 0.0) << "library reference for contrast";
    // Right half plane: the library's atan2 to a rounding. Left half plane:
    // the program's half turn instead of pi, so (3.141592654 - pi) more with
    // the sign of the half turn. Tolerance: two roundings of values near 3.
    const double yx[][2] = {{1, 1},    {1, -1},    {-1, -1},  {-1, 1},
                            {0.3, -2}, {-0.3, -2}, {5, 0.01}, {-1e-8, -1}};
    for (const auto& [y, x] : yx)
        EXPECT_NEAR(std::atan2(y, x) + (x < 0 ? (y >= 0 ? 1 : -1) * kDelta : 0), Atan2(y, x), 2e-15)
            << y << " " << x;
    std::mt19937 gen(7);
    std::uniform_real_distribution<double> u(-10, 10);
    for (int n = 0; n < 200; ++n) {
        const double a = Atan2(u(gen), u(gen));
        EXPECT_TRUE(a >= -kHalfTurn && a <= kHalfTurn) << a;
    }
}

TEST(AxisAnglesOfVector, AnglesToVecIsThePointingVector) {
    // Theta pi/2, Phi 0: +x; Theta 0.5, Phi pi/2: (0, sin .5, cos .5); Theta 0
    // is the axis for any Phi, exactly.
    ExpectVecNear({1, 0, 0}, AnglesToVec(kHalfTurn / 2, 0), kShortPiSlack, "horizon north");
    ExpectVecNear({0, std::sin(0.5), std::cos(0.5)}, AnglesToVec(0.5, kHalfTurn / 2), kShortPiSlack,
                  "toward +y");
    ExpectVecNear({0, 0, 1}, AnglesToVec(0, 2.7), 0, "axis");
    // The other axis position (Tsign -1) points the same way, to the short
    // half turn times sin Theta.
    ExpectVecNear(AnglesToVec(0.6, 1.0), AnglesToVec(-0.6, 1.0 + kHalfTurn), kShortPiSlack,
                  "other position");
}

TEST(AxisAnglesOfVector, CasesOfVecToAngles) {
    // An alt-az direction at azimuth A (north through east) and altitude h:
    // x = cos h cos A (north), y = -cos h sin A (west), z = sin h gives the
    // zenith distance and minus the azimuth in 0..2pi, to a rounding. Tsign
    // -1 negates Theta and turns Phi by the half turn; in the third quadrant
    // Atan2 subtracts the short half turn, the full turn is added, then the
    // half turn and its wrap, so the short constants cancel to 4 - pi. Half
    // turn plus half turn is exactly the full turn, not above it: kept. Any
    // length; X == 0 gives exact quarter turns; the zero vector gives zeros.
    const double A = 1.0, h = 0.5;
    const Vec3 altAz{std::cos(h) * std::cos(A), -std::cos(h) * std::sin(A), std::sin(h)};
    // clang-format off
    const struct { Vec3 v; int16_t Tsign; double Theta, Phi, tol; } cases[] = {
        {altAz, 1, kTruePi / 2 - h, kFullTurn - A, 1e-15},
        {AnglesToVec(0.6, 1.0), -1, -0.6, 1.0 + kHalfTurn, 4e-15},
        {AnglesToVec(0.6, 4.0), -1, -0.6, 4.0 - kTruePi, 4e-15},
        {{-1, 0, 0}, -1, -3.141592654 / 2, 6.283185308, 0}, {{0, 0, 5}, 1, 0, 0, 0},
        {{0, 3, 0}, 1, kHalfTurn / 2, kHalfTurn / 2, 0},
        {{0, -3, 0}, 1, kHalfTurn / 2, -kHalfTurn / 2 + kFullTurn, 0},
        {{0, 0, 0}, 1, 0, 0, 0}, {{0, 0, 0}, -1, 0, kHalfTurn, 0}};
    // clang-format on
    for (const auto& c : cases) {
        double Theta = 1, Phi = 1;
        VecToAngles(c.v, c.Tsign, Theta, Phi);
        EXPECT_NEAR(c.Theta, Theta, c.tol) << "case " << &c - cases;
        EXPECT_NEAR(c.Phi, Phi, c.tol) << "case " << &c - cases;
    }
}

TEST(AxisAnglesOfVector, RoundTripWithPositiveTsign) {
    // Theta in (0, pi) and Phi in [0, 2 pi) come back, but every quadrant
    // correction of Atan2 uses 3.141592654: off by 0, 1 or 2 times kDelta.
    // Tolerance on the rest: a few roundings through sin, cos and atan.
    std::mt19937 gen(99);
    std::uniform_real_distribution<double> th(0.01, 3.13), ph(0.0, 6.28);
    for (int n = 0; n < 100; ++n) {
        const double t = th(gen), p = ph(gen);
        double Theta = 0, Phi = 0;
        VecToAngles(AnglesToVec(t, p), 1, Theta, Phi);
        // Theta past the horizon comes from z < 0, where the half turn is added.
        EXPECT_NEAR(t + (t > kTruePi / 2 ? kDelta : 0), Theta, 1e-14)
            << "Theta " << t << " Phi " << p;
        const double m = std::round((Phi - p) / kDelta);
        EXPECT_TRUE(m >= 0 && m <= 2) << m;
        EXPECT_NEAR(p + m * kDelta, Phi, 1e-14) << "Theta " << t << " Phi " << p << " m " << m;
    }
}

TEST(MountFrameRoundTrip, HorizonToMountUndoesMountToHorizon) {
    // Random errors up to 0.1 rad, latitudes pole to pole, both mount types.
    // Five rotations of a unit vector: a few roundings per component.
    auto s = FreshModel();
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
    // A perfect alt-az mount frame is the horizon frame, bit for bit.
    auto plain = FreshModel();
    ExpectVecNear({0.3, -0.4, 0.866}, HorizonToMount(*plain, {0.3, -0.4, 0.866}), 0, "alt-az");
}

// The colatitude 3.141592654/2 - L of an equatorial mount is half of kDelta
// more than the true one, so a perfect mount's axis stands that small angle
// north of the true pole and every mount vector is the true one turned by
// it about y. To first order (the second is 2e-20):
Vec3 TurnedByHalfShortPiExcess(Vec3 v) {
    const double a = -kDelta / 2;
    return Vec3{v.x + v.z * a, v.y, v.z - v.x * a};
}

TEST(EquatorialMountFrame, PoleIsTheAxisAndStarsSitAtHourAngleAndDeclination) {
    // The pole lies in the horizon frame at (cos L, 0, sin L), L by the
    // program's factor 3.141592654/180. A star at hour angle H and
    // declination d (textbook horizon formulae) is seen by a perfect mount at
    // (-cos d cos H, cos d sin H, sin d): +x at 12 h, +y at 6 h (west).
    // Tolerance: a few roundings.
    auto s = FreshModel();
    s->IsAltAz = false;
    for (double latDeg : {33.5, -20.0, 60.0, 0.0, 89.0}) {
        s->Latitude = latDeg;
        const double L = latDeg * 3.141592654 / 180;
        const Vec3 m = HorizonToMount(*s, {std::cos(L), 0, std::sin(L)});
        ExpectVecNear(TurnedByHalfShortPiExcess({0, 0, 1}), m, 1e-15, "pole");
        ExpectVecNear({0, 0, 1}, m, 2.1e-10, "pole, to the accuracy of the short pi");
        const double Hs[] = {0.0, 1.2, -2.0, 3.0, 4.5}, ds[] = {0.3, -0.5, 1.1, 0.0, -1.3};
        for (int n = 0; n < 5; ++n) {
            const double H = Hs[n], d = ds[n];
            const Vec3 star{std::sin(d) * std::cos(L) - std::cos(d) * std::cos(H) * std::sin(L),
                            std::cos(d) * std::sin(H),
                            std::sin(d) * std::sin(L) + std::cos(d) * std::cos(H) * std::cos(L)};
            const Vec3 want{-std::cos(d) * std::cos(H), std::cos(d) * std::sin(H), std::sin(d)};
            ExpectVecNear(TurnedByHalfShortPiExcess(want), HorizonToMount(*s, star), 2e-15,
                          "star at latitude " + std::to_string(latDeg));
        }
    }
}

TEST(ErrorRotationSigns, NorthTipsTowardPlusXWestTowardPlusYNorthFirst) {
    // By hand: sin 0.01 = 0.009999833334166664 and cos 0.01 = 0.9999500004166653
    // (series x - x^3/6 + x^5/120 and 1 - x^2/2 + x^4/24). North first, then
    // west: (sin e, cos e sin w, cos e cos w); the other order is 6e-6 away.
    const double e = 0.02, w = 0.03;
    // clang-format off
    const struct { double north, west; Vec3 want; } cases[] = {
        {0.01, 0, {0.009999833334166664, 0, 0.9999500004166653}},
        {0, 0.01, {0, 0.009999833334166664, 0.9999500004166653}},
        {e, w, {std::sin(e), std::cos(e) * std::sin(w), std::cos(e) * std::cos(w)}}};
    // clang-format on
    for (const auto& c : cases) {
        auto s = FreshModel();
        s->ErrorNorth = c.north;
        s->ErrorWest = c.west;
        ExpectVecNear(
            c.want, MountToHorizon(*s, {0, 0, 1}), 1e-16,
            "axis with north " + std::to_string(c.north) + " west " + std::to_string(c.west));
    }
    // Equatorial: ErrorNorth e lowers the polar axis toward north to altitude
    // L - e, less the half excess of the short pi in the colatitude.
    auto s = FreshModel();
    s->IsAltAz = false;
    s->ErrorNorth = 0.001;
    const Vec3 axis = MountToHorizon(*s, {0, 0, 1});
    EXPECT_GT(axis.x, 0.0) << "toward north";
    EXPECT_NEAR(0.0, axis.y, 1e-16);
    EXPECT_NEAR(33.5 * 3.141592654 / 180 - 0.001 - kDelta / 2, std::asin(axis.z), 1e-15);
}

}  // namespace
