// The scalar members of the maths class and the matrix product and copy.
#include <gtest/gtest.h>

#include <cmath>

#include "model/Frames.h"
#include "sky/cMath.h"

namespace {

const cMath kMath;

TEST(AngleFactors, DegToRadUsesTheRoundedFactor) {
    // 180 x 0.0174532925 = 3.14159265, which is 4e-9 short of the program's
    // half turn: the rounded factor is the point of this member.
    EXPECT_EQ(kMath.DegToRad(1), 0.0174532925);
    EXPECT_NEAR(3.14159265, kMath.DegToRad(180), 1e-15);
    EXPECT_NEAR(4e-9, kMath.pi() - kMath.DegToRad(180), 1e-15);
}

TEST(AngleFactors, RadToDegDividesByTheSameFactor) {
    // 3.141592654 / 0.0174532925 = 180.000000229183118 (worked out to 30
    // digits outside the program). One division: one rounding at 180.
    EXPECT_EQ(kMath.RadToDeg(0.0174532925), 1.0);
    EXPECT_NEAR(180.000000229183118, kMath.RadToDeg(3.141592654), 3e-14);
}

TEST(AngleFactors, RadToASUsesItsOwnFactor) {
    // 206264.80625, not the 206264.8062 that would follow from the short pi.
    EXPECT_EQ(kMath.RadToAS(1), 206264.80625);
    EXPECT_EQ(kMath.RadToAS(2), 412529.6125);
}

TEST(MathConstants, ShortValues) {
    EXPECT_EQ(kMath.pi(), 3.141592654);
    EXPECT_EQ(kMath.SiderealRate(), 1.002737908);
}

TEST(MathArctangent, IsTheProgramsQuadrantArctangent) {
    EXPECT_EQ(kMath.Atan2(0, -1), 3.141592654);
    EXPECT_EQ(kMath.Atan2(-1, 0), -3.141592654 / 2);
    EXPECT_EQ(kMath.Atan2(0, 0), 0.0);
    for (double y : {0.4, -0.4, 3.0}) {
        for (double x : {0.7, -0.7, -5.0})
            EXPECT_EQ(kMath.Atan2(y, x), Atan2(y, x)) << y << " " << x;
    }
}

TEST(MinMax, SmallerAndLarger) {
    EXPECT_EQ(kMath.Min(1, 2), 1.0);
    EXPECT_EQ(kMath.Min(2, 1), 1.0);
    EXPECT_EQ(kMath.Max(1, 2), 2.0);
    EXPECT_EQ(kMath.Max(2, 1), 2.0);
    EXPECT_EQ(kMath.Min(-3.5, 2), -3.5);
}

TEST(MinMax, EqualArgumentsGiveTheFirst) {
    // +0 and -0 compare equal, so the sign shows which argument came back.
    EXPECT_FALSE(std::signbit(kMath.Min(0.0, -0.0)));
    EXPECT_TRUE(std::signbit(kMath.Min(-0.0, 0.0)));
    EXPECT_FALSE(std::signbit(kMath.Max(0.0, -0.0)));
    EXPECT_TRUE(std::signbit(kMath.Max(-0.0, 0.0)));
    EXPECT_EQ(kMath.Min(1, 1), 1.0);
}

TEST(Truncation, CutsTowardZero) {
    EXPECT_EQ(kMath.Trunc(2.7), 2.0);
    EXPECT_EQ(kMath.Trunc(-2.7), -2.0);
    EXPECT_EQ(kMath.Trunc(-0.5), 0.0);
    EXPECT_EQ(kMath.Trunc(3.0), 3.0);
    EXPECT_EQ(kMath.Trunc(-3.0), -3.0);
    EXPECT_EQ(kMath.Trunc(1e15 + 0.5), 1e15);
}

TEST(MatrixProduct, HandWorkedTwoByTwo) {
    // [1 2; 3 4] x [5 6; 7 8] = [19 22; 43 50].
    Matrix A{}, B{}, C{};
    A[1][1] = 1, A[1][2] = 2, A[2][1] = 3, A[2][2] = 4;
    B[1][1] = 5, B[1][2] = 6, B[2][1] = 7, B[2][2] = 8;
    for (auto& row : C) row.fill(-9);
    kMath.MatrixXMatrix(A, B, C, 2);
    EXPECT_EQ(C[1][1], 19.0);
    EXPECT_EQ(C[1][2], 22.0);
    EXPECT_EQ(C[2][1], 43.0);
    EXPECT_EQ(C[2][2], 50.0);
    // Outside 1..N nothing is written.
    EXPECT_EQ(C[0][0], -9.0);
    EXPECT_EQ(C[1][3], -9.0);
    EXPECT_EQ(C[3][1], -9.0);
}

TEST(MatrixProduct, SumsWithKRisingFromZero) {
    // Row (1e16, 1, -1e16) times a column of ones: 1e16 + 1 rounds back to
    // 1e16 (spacing 2 there), so the rising sum gives 0; any other order of
    // the terms would give 1.
    Matrix A{}, B{}, C{};
    A[1][1] = 1e16, A[1][2] = 1, A[1][3] = -1e16;
    for (int k = 1; k <= 3; ++k) B[k][1] = 1;
    C[1][1] = 42;  // must not be the start of the sum
    kMath.MatrixXMatrix(A, B, C, 3);
    EXPECT_EQ(C[1][1], 0.0);
}

TEST(MatrixCopying, CopiesOnlyOneToN) {
    Matrix A{}, B{};
    for (int i = 0; i <= kMaxMatrix; ++i)
        for (int j = 0; j <= kMaxMatrix; ++j) A[i][j] = 100 * i + j;
    for (auto& row : B) row.fill(-1);
    kMath.MatrixCopy(A, B, 3);
    for (int i = 1; i <= 3; ++i)
        for (int j = 1; j <= 3; ++j) EXPECT_EQ(B[i][j], A[i][j]) << i << "," << j;
    EXPECT_EQ(B[0][0], -1.0);
    EXPECT_EQ(B[4][4], -1.0);
    EXPECT_EQ(B[1][4], -1.0);
}

}  // namespace
