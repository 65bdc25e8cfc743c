// Gauss-Jordan inversion with full pivoting and one right-hand side.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>

#include "sky/cMath.h"

namespace {

const cMath kMath;

TEST(MatrixInverseSmall, OneByOne) {
    // 4 inverts to 0.25 and 4 x = 2 has x = 0.5, exactly.
    Matrix A{};
    MatrixVector B{};
    A[1][1] = 4;
    B[1] = 2;
    EXPECT_TRUE(kMath.MatrixInverse(A, B, 1));
    EXPECT_EQ(A[1][1], 0.25);
    EXPECT_EQ(B[1], 0.5);
}

TEST(MatrixInverseSmall, HandWorkedTwoByTwo) {
    // [4 7; 2 6]^-1 = [6 -7; -2 4] / 10; with B = (1, 2): x = (-0.8, 0.6).
    // Tolerance: a few roundings of tenths.
    Matrix A{};
    MatrixVector B{};
    A[1][1] = 4, A[1][2] = 7, A[2][1] = 2, A[2][2] = 6;
    B[1] = 1, B[2] = 2;
    EXPECT_TRUE(kMath.MatrixInverse(A, B, 2));
    EXPECT_NEAR(0.6, A[1][1], 1e-15);
    EXPECT_NEAR(-0.7, A[1][2], 1e-15);
    EXPECT_NEAR(-0.2, A[2][1], 1e-15);
    EXPECT_NEAR(0.4, A[2][2], 1e-15);
    EXPECT_NEAR(-0.8, B[1], 1e-15);
    EXPECT_NEAR(0.6, B[2], 1e-15);
}

TEST(MatrixInverseSmall, SizeZeroTouchesNothing) {
    Matrix A;
    MatrixVector B;
    for (int i = 0; i <= kMaxMatrix; ++i) {
        B[i] = i + 0.5;
        for (int j = 0; j <= kMaxMatrix; ++j) A[i][j] = i - 2.0 * j;
    }
    const Matrix A0 = A;
    const MatrixVector B0 = B;
    EXPECT_TRUE(kMath.MatrixInverse(A, B, 0));
    EXPECT_TRUE(A == A0);
    EXPECT_TRUE(B == B0);
}

TEST(MatrixInverseSmall, SizeBeyondTheTablesIsRefused) {
    // More than 50 rows do not fit the pivot tables: nothing is done.
    Matrix A{};
    MatrixVector B{};
    A[1][1] = 4;
    EXPECT_FALSE(kMath.MatrixInverse(A, B, kMaxMatrix + 1));
    EXPECT_EQ(A[1][1], 4.0);
}

TEST(MatrixInversePivoting, ScaledPermutationNeedsRowAndColumnExchanges) {
    // Non-zeros A(1,3) = 2, A(2,1) = -4, A(3,4) = 0.5, A(4,2) = 8: the first
    // pivot, 8, is off the diagonal, so rows are exchanged and the columns put
    // back at the end. The inverse is the transpose with reciprocals, and with
    // B = (1,2,3,4): x1 = 2/-4, x2 = 4/8, x3 = 1/2, x4 = 3/0.5. Powers of two:
    // everything is exact.
    Matrix A{};
    MatrixVector B{};
    A[1][3] = 2, A[2][1] = -4, A[3][4] = 0.5, A[4][2] = 8;
    B[1] = 1, B[2] = 2, B[3] = 3, B[4] = 4;
    EXPECT_TRUE(kMath.MatrixInverse(A, B, 4));
    Matrix want{};
    want[3][1] = 0.5, want[1][2] = -0.25, want[4][3] = 2, want[2][4] = 0.125;
    for (int i = 1; i <= 4; ++i)
        for (int j = 1; j <= 4; ++j) EXPECT_EQ(want[i][j], A[i][j]) << "inverse " << i << "," << j;
    EXPECT_EQ(B[1], -0.5);
    EXPECT_EQ(B[2], 0.5);
    EXPECT_EQ(B[3], 0.5);
    EXPECT_EQ(B[4], 6.0);
}

TEST(MatrixInversePivoting, CyclicPermutationOfEqualEntries) {
    // Three candidates equal 1 at the first step and the last, (3,1), wins;
    // the inverse of a permutation is its transpose, exactly.
    Matrix A{};
    MatrixVector B{};
    A[1][2] = 1, A[2][3] = 1, A[3][1] = 1;
    B[1] = 10, B[2] = 20, B[3] = 30;
    EXPECT_TRUE(kMath.MatrixInverse(A, B, 3));
    Matrix want{};
    want[2][1] = 1, want[3][2] = 1, want[1][3] = 1;
    for (int i = 1; i <= 3; ++i)
        for (int j = 1; j <= 3; ++j) EXPECT_EQ(want[i][j], A[i][j]) << "inverse " << i << "," << j;
    // x2 = 10, x3 = 20, x1 = 30.
    EXPECT_EQ(B[1], 30.0);
    EXPECT_EQ(B[2], 10.0);
    EXPECT_EQ(B[3], 20.0);
}

TEST(MatrixInverseSingular, ZeroMatrixGivesFalse) {
    Matrix A{};
    MatrixVector B{};
    B[1] = 1, B[2] = 2;
    EXPECT_FALSE(kMath.MatrixInverse(A, B, 2));
    // The work went on with the reciprocal 1e12 and ended without NaN.
    for (int i = 1; i <= 2; ++i) {
        EXPECT_TRUE(std::isfinite(B[i])) << i;
        for (int j = 1; j <= 2; ++j) EXPECT_TRUE(std::isfinite(A[i][j])) << i << "," << j;
    }
}

TEST(MatrixInverseSingular, RankDeficientMatrixGivesFalse) {
    // Row 2 is half of row 1, so after the first pivot (4) it is exactly zero
    // and a later pivot is an exact 0.
    Matrix A{};
    MatrixVector B{};
    A[1][1] = 4, A[1][2] = 2, A[1][3] = 1;
    A[2][1] = 2, A[2][2] = 1, A[2][3] = 0.5;
    A[3][1] = 1, A[3][2] = 1, A[3][3] = 1;
    B[1] = 1, B[2] = 1, B[3] = 1;
    EXPECT_FALSE(kMath.MatrixInverse(A, B, 3));
}

TEST(MatrixInverseSingular, LastEqualCandidateWinsAndZeroPivotUses1e12) {
    // Hand trace of [1 1; 1 1] with B = (1, 2):
    // step 1: all four candidates are 1; the last, (2,2), is the pivot.
    //   Row 2 stays [1 1], B2 = 2. Row 1: d = 1 -> [0 -1], B1 = -1.
    // step 2: only (1,1) is left and it is 0: reciprocal 1e12, the matrix is
    //   singular. Row 1 -> [1e12 -1e12], B1 = -1e12. Row 2: d = 1 ->
    //   [-1e12, 1 + 1e12], B2 = 2 + 1e12.
    // Taking the first of equals instead would give A(1,1) = 1e12 + 1.
    Matrix A{};
    MatrixVector B{};
    A[1][1] = 1, A[1][2] = 1, A[2][1] = 1, A[2][2] = 1;
    B[1] = 1, B[2] = 2;
    EXPECT_FALSE(kMath.MatrixInverse(A, B, 2));
    EXPECT_EQ(A[1][1], 1e12);
    EXPECT_EQ(A[1][2], -1e12);
    EXPECT_EQ(A[2][1], -1e12);
    EXPECT_EQ(A[2][2], 1e12 + 1);
    EXPECT_EQ(B[1], -1e12);
    EXPECT_EQ(B[2], 1e12 + 2);
}

TEST(MatrixInverseSingular, NaNEntriesPassThrough) {
    // No element can win the pivot search; the work still ends, within rows
    // and columns 1..N, and the NaN shows in the solution.
    Matrix A{};
    MatrixVector B{};
    for (int i = 1; i <= 3; ++i) {
        B[i] = 1;
        for (int j = 1; j <= 3; ++j) A[i][j] = std::nan("");
    }
    kMath.MatrixInverse(A, B, 3);
    for (int i = 1; i <= 3; ++i) EXPECT_TRUE(std::isnan(B[i])) << i;
    EXPECT_EQ(A[0][0], 0.0) << "row 0 is not part of the matrix";
    EXPECT_EQ(B[0], 0.0);
}

TEST(MatrixInverseLarge, RandomWellConditioned46) {
    // R + 10 I with R uniform in (-1, 1) has its eigenvalues within about 4 of
    // 10, so it is well conditioned; its rows are then shuffled so that the
    // pivots lie off the diagonal. A known x gives B = A x; the solver must
    // recover x, and A times its inverse must be I. Tolerance 1e-12: the
    // condition number is below 10 and each sum has 46 terms.
    constexpr int N = 46;
    std::mt19937 gen(4646);
    std::uniform_real_distribution<double> u(-1, 1);
    Matrix R{};
    for (int i = 1; i <= N; ++i)
        for (int j = 1; j <= N; ++j) R[i][j] = u(gen) + (i == j ? 10 : 0);
    int perm[N + 1];
    for (int i = 1; i <= N; ++i) perm[i] = i;
    std::shuffle(perm + 1, perm + N + 1, gen);
    auto A = std::make_unique<Matrix>();
    for (int i = 1; i <= N; ++i) (*A)[i] = R[perm[i]];
    MatrixVector x{}, B{};
    for (int i = 1; i <= N; ++i) x[i] = 5 * u(gen);
    for (int i = 1; i <= N; ++i) {
        double sum = 0;
        for (int k = 1; k <= N; ++k) sum += (*A)[i][k] * x[k];
        B[i] = sum;
    }
    const Matrix A0 = *A;

    ASSERT_TRUE(kMath.MatrixInverse(*A, B, N));
    for (int i = 1; i <= N; ++i) EXPECT_NEAR(x[i], B[i], 1e-12) << "x " << i;
    for (int i = 1; i <= N; ++i) {
        for (int j = 1; j <= N; ++j) {
            double left = 0, right = 0;
            for (int k = 1; k <= N; ++k) {
                left += A0[i][k] * (*A)[k][j];
                right += (*A)[i][k] * A0[k][j];
            }
            const double id = i == j ? 1 : 0;
            EXPECT_NEAR(id, left, 1e-12) << "A A^-1 at " << i << "," << j;
            EXPECT_NEAR(id, right, 1e-12) << "A^-1 A at " << i << "," << j;
        }
    }
}

}  // namespace
