// The vector helpers: length, cross and dot products, and the handedness of
// the two plane rotations.
#include <cmath>
#include <random>

#include "ModelTestSupport.h"

namespace {

using modeltest::ExpectVecNear;

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

TEST(PlaneRotations, TurnZTowardPlusXAndPlusY) {
    // A right-handed turn about +y by a carries +z to (sin a, 0, cos a) and +x
    // to (cos a, 0, -sin a); one about +x by -a carries +z to (0, sin a, cos a)
    // and +y to (0, cos a, -sin a). The test is on which component gets which
    // sign. Tolerance: one rounding.
    const double s = std::sin(0.3), c = std::cos(0.3);
    ExpectVecNear({s, 0, c}, Turned(RotateXZ, {0, 0, 1}, 0.3), 1e-16, "RotateXZ of z");
    ExpectVecNear({c, 0, -s}, Turned(RotateXZ, {1, 0, 0}, 0.3), 1e-16, "RotateXZ of x");
    ExpectVecNear({0, s, c}, Turned(RotateYZ, {0, 0, 1}, 0.3), 1e-16, "RotateYZ of z");
    ExpectVecNear({0, c, -s}, Turned(RotateYZ, {0, 1, 0}, 0.3), 1e-16, "RotateYZ of y");
}

TEST(PlaneRotations, AgreeWithRodriguesForRandomVectors) {
    // RotateXZ(a) is the right-handed rotation about +y by a, RotateYZ(a) the
    // one about +x by -a. Tolerance: a few roundings on components below 2.
    std::mt19937 gen(12345);
    std::uniform_real_distribution<double> comp(-1.0, 1.0), ang(-3.0, 3.0);
    for (int n = 0; n < 50; ++n) {
        const Vec3 v{comp(gen), comp(gen), comp(gen)};
        const double a = ang(gen);
        ExpectVecNear(Rodrigues(v, {0, 1, 0}, a), Turned(RotateXZ, v, a), 2e-15, "RotateXZ");
        ExpectVecNear(Rodrigues(v, {1, 0, 0}, -a), Turned(RotateYZ, v, a), 2e-15, "RotateYZ");
    }
}

TEST(VectorProducts, HandWorkedValues) {
    // x cross y = z, y cross z = x; (1,2,3) x (4,5,6) = (-3, 6, -3);
    // 1*4 + 2*5 + 3*6 = 32; (1,2,3) - (4,5,6) = (-3,-3,-3). Small integers: exact.
    ExpectVecNear({0, 0, 1}, CrossVec({1, 0, 0}, {0, 1, 0}), 0, "x cross y");
    ExpectVecNear({1, 0, 0}, CrossVec({0, 1, 0}, {0, 0, 1}), 0, "y cross z");
    ExpectVecNear({-3, 6, -3}, CrossVec({1, 2, 3}, {4, 5, 6}), 0, "(1,2,3) x (4,5,6)");
    EXPECT_EQ(DotVec({1, 2, 3}, {4, 5, 6}), 32.0);
    ExpectVecNear({-3, -3, -3}, SubVec({1, 2, 3}, {4, 5, 6}), 0, "difference");
}

TEST(VectorLength, NormalizeScalesToUnitLengthAndKeepsZero) {
    // (3, 4, 12) has length 13 (a Pythagorean quadruple). One division each.
    Vec3 v{3, 4, 12};
    NormalizeVec(v);
    ExpectVecNear({3.0 / 13, 4.0 / 13, 12.0 / 13}, v, 1e-16, "(3,4,12)/13");
    Vec3 zero{0, 0, 0};
    NormalizeVec(zero);
    ExpectVecNear({0, 0, 0}, zero, 0, "zero vector stays zero, no NaN");
}

}  // namespace
