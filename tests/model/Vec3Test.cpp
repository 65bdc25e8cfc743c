// The vector helpers: length, cross and dot products, and the handedness of
// the two plane rotations.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "model/Vec3.h"

namespace {

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

void ExpectVecNear(Vec3 want, Vec3 got, double tol, const char* what) {
    EXPECT_NEAR(want.x, got.x, tol) << what << " x";
    EXPECT_NEAR(want.y, got.y, tol) << what << " y";
    EXPECT_NEAR(want.z, got.z, tol) << what << " z";
}

TEST(PlaneRotations, RotateXZTurnsZTowardPlusX) {
    // A right-handed turn about +y by a carries +z to (sin a, 0, cos a) and +x
    // to (cos a, 0, -sin a). Values of sin and cos 0.3 are the library's; the
    // test is on which component gets which sign. Tolerance: one rounding.
    Vec3 z{0, 0, 1};
    RotateXZ(z, 0.3);
    ExpectVecNear({std::sin(0.3), 0, std::cos(0.3)}, z, 1e-16, "z axis");
    Vec3 x{1, 0, 0};
    RotateXZ(x, 0.3);
    ExpectVecNear({std::cos(0.3), 0, -std::sin(0.3)}, x, 1e-16, "x axis");
}

TEST(PlaneRotations, RotateYZTurnsZTowardPlusY) {
    // A right-handed turn about +x by -a carries +z to (0, sin a, cos a).
    Vec3 z{0, 0, 1};
    RotateYZ(z, 0.3);
    ExpectVecNear({0, std::sin(0.3), std::cos(0.3)}, z, 1e-16, "z axis");
    Vec3 y{0, 1, 0};
    RotateYZ(y, 0.3);
    ExpectVecNear({0, std::cos(0.3), -std::sin(0.3)}, y, 1e-16, "y axis");
}

TEST(PlaneRotations, AgreeWithRodriguesForRandomVectors) {
    // RotateXZ(a) is the right-handed rotation about +y by a, RotateYZ(a) the
    // one about +x by -a. Tolerance: a few roundings on components below 2.
    std::mt19937 gen(12345);
    std::uniform_real_distribution<double> comp(-1.0, 1.0);
    std::uniform_real_distribution<double> ang(-3.0, 3.0);
    for (int n = 0; n < 50; ++n) {
        const Vec3 v{comp(gen), comp(gen), comp(gen)};
        const double a = ang(gen);
        Vec3 xz = v;
        RotateXZ(xz, a);
        ExpectVecNear(Rodrigues(v, {0, 1, 0}, a), xz, 2e-15, "RotateXZ");
        Vec3 yz = v;
        RotateYZ(yz, a);
        ExpectVecNear(Rodrigues(v, {1, 0, 0}, -a), yz, 2e-15, "RotateYZ");
    }
}

TEST(VectorProducts, CrossIsRightHanded) {
    // x cross y = z, y cross z = x; (1,2,3) x (4,5,6) = (-3, 6, -3) by hand.
    const Vec3 z = CrossVec({1, 0, 0}, {0, 1, 0});
    EXPECT_EQ(z.x, 0.0);
    EXPECT_EQ(z.y, 0.0);
    EXPECT_EQ(z.z, 1.0);
    const Vec3 x = CrossVec({0, 1, 0}, {0, 0, 1});
    EXPECT_EQ(x.x, 1.0);
    const Vec3 c = CrossVec({1, 2, 3}, {4, 5, 6});
    EXPECT_EQ(c.x, -3.0);
    EXPECT_EQ(c.y, 6.0);
    EXPECT_EQ(c.z, -3.0);
}

TEST(VectorProducts, DotAndDifference) {
    // 1*4 + 2*5 + 3*6 = 32; (1,2,3) - (4,5,6) = (-3,-3,-3). Small integers: exact.
    EXPECT_EQ(DotVec({1, 2, 3}, {4, 5, 6}), 32.0);
    const Vec3 d = SubVec({1, 2, 3}, {4, 5, 6});
    EXPECT_EQ(d.x, -3.0);
    EXPECT_EQ(d.y, -3.0);
    EXPECT_EQ(d.z, -3.0);
}

TEST(VectorLength, NormalizeScalesToUnitLength) {
    // (3, 4, 12) has length 13 (a Pythagorean quadruple). One division each.
    Vec3 v{3, 4, 12};
    NormalizeVec(v);
    ExpectVecNear({3.0 / 13, 4.0 / 13, 12.0 / 13}, v, 1e-16, "(3,4,12)/13");
}

TEST(VectorLength, ZeroVectorStaysZero) {
    Vec3 v{0, 0, 0};
    NormalizeVec(v);
    EXPECT_EQ(v.x, 0.0);
    EXPECT_EQ(v.y, 0.0);
    EXPECT_EQ(v.z, 0.0);
    EXPECT_FALSE(std::isnan(v.x));
}

}  // namespace
