// The maths class: its constants and scalar members, the matrix product and
// copy, and Gauss-Jordan inversion with full pivoting and one right-hand side.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <vector>

#include "model/Frames.h"
#include "sky/cMath.h"

namespace {

const cMath kMath;

TEST(MathScalars, FactorsConstantsAndArctangent) {
    // 180 x 0.0174532925 = 3.14159265, 4e-9 short of the program's half turn:
    // the rounded factor is the point of DegToRad. 3.141592654 / 0.0174532925
    // = 180.000000229183118 (worked out to 30 digits outside the program), one
    // rounding at 180. RadToAS has its own factor 206264.80625, not the
    // 206264.8062 that would follow from the short pi.
    EXPECT_EQ(kMath.DegToRad(1), 0.0174532925);
    EXPECT_NEAR(3.14159265, kMath.DegToRad(180), 1e-15);
    EXPECT_EQ(kMath.RadToDeg(0.0174532925), 1.0);
    EXPECT_NEAR(180.000000229183118, kMath.RadToDeg(3.141592654), 3e-14);
    EXPECT_EQ(kMath.RadToAS(1), 206264.80625);
    EXPECT_EQ(kMath.RadToAS(2), 412529.6125);
    EXPECT_EQ(kMath.pi(), 3.141592654);
    EXPECT_EQ(kMath.SiderealRate(), 1.002737908);
    // The program's quadrant arctangent (its cases are pinned with the frames).
    EXPECT_EQ(kMath.Atan2(0, -1), 3.141592654);
    EXPECT_EQ(kMath.Atan2(-1, 0), -3.141592654 / 2);
    for (double y : {0.4, -0.4, 3.0, 0.0})
        for (double x : {0.7, -0.7, -5.0, 0.0})
            EXPECT_EQ(kMath.Atan2(y, x), Atan2(y, x)) << y << " " << x;
}

TEST(MathScalars, MinMaxGiveTheFirstOfEqualsAndTruncCutsTowardZero) {
    EXPECT_EQ(kMath.Min(1, 2), 1.0);
    EXPECT_EQ(kMath.Min(2, 1), 1.0);
    EXPECT_EQ(kMath.Max(1, 2), 2.0);
    EXPECT_EQ(kMath.Max(2, 1), 2.0);
    EXPECT_EQ(kMath.Min(-3.5, 2), -3.5);
    // +0 and -0 compare equal, so the sign shows which argument came back.
    EXPECT_FALSE(std::signbit(kMath.Min(0.0, -0.0)));
    EXPECT_TRUE(std::signbit(kMath.Min(-0.0, 0.0)));
    EXPECT_FALSE(std::signbit(kMath.Max(0.0, -0.0)));
    EXPECT_TRUE(std::signbit(kMath.Max(-0.0, 0.0)));
    // clang-format off
    const double truncs[][2] = {
        {2.7, 2}, {-2.7, -2}, {-0.5, 0}, {3, 3}, {-3, -3}, {1e15 + 0.5, 1e15}};
    // clang-format on
    for (const auto& [x, want] : truncs) EXPECT_EQ(kMath.Trunc(x), want) << x;
}

// A matrix and right-hand side of N rows, 1-based as the routines take them.
struct System {
    std::unique_ptr<Matrix> A = std::make_unique<Matrix>();
    MatrixVector B{};
};
using Row = std::vector<double>;
using Rows = std::vector<Row>;
System Make(const Rows& rows, const Row& b = {}) {
    System s;
    for (size_t i = 0; i < rows.size(); ++i)
        for (size_t j = 0; j < rows[i].size(); ++j) (*s.A)[i + 1][j + 1] = rows[i][j];
    for (size_t k = 0; k < b.size(); ++k) s.B[k + 1] = b[k];
    return s;
}

TEST(MatrixProductAndCopy, HandWorkedAndOnlyOneToN) {
    // [1 2; 3 4] x [5 6; 7 8] = [19 22; 43 50]; outside 1..N nothing is written.
    System a = Make({{1, 2}, {3, 4}}), b = Make({{5, 6}, {7, 8}}), c = Make({});
    for (auto& row : *c.A) row.fill(-9);
    kMath.MatrixXMatrix(*a.A, *b.A, *c.A, 2);
    const double want[3][4] = {{-9, -9, -9, -9}, {-9, 19, 22, -9}, {-9, 43, 50, -9}};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 4; ++j) EXPECT_EQ((*c.A)[i][j], want[i][j]) << i << "," << j;
    // Row (1e16, 1, -1e16) times ones: 1e16 + 1 rounds back to 1e16 (spacing
    // 2 there), so the sum with k rising from 1 gives 0; any other order of
    // the terms would give 1. C(1,1) is not the start of the sum.
    a = Make({{1e16, 1, -1e16}});
    b = Make({{1}, {1}, {1}});
    (*c.A)[1][1] = 42;
    kMath.MatrixXMatrix(*a.A, *b.A, *c.A, 3);
    EXPECT_EQ((*c.A)[1][1], 0.0);
    // The copy takes rows and columns 1..N only.
    for (int i = 0; i <= kMaxMatrix; ++i)
        for (int j = 0; j <= kMaxMatrix; ++j) (*a.A)[i][j] = 100 * i + j;
    for (auto& row : *b.A) row.fill(-1);
    kMath.MatrixCopy(*a.A, *b.A, 3);
    for (int i = 0; i <= 4; ++i)
        for (int j = 0; j <= 4; ++j)
            EXPECT_EQ((*b.A)[i][j], i >= 1 && i <= 3 && j >= 1 && j <= 3 ? (*a.A)[i][j] : -1)
                << i << "," << j;
}

TEST(MatrixInverse, HandWorkedCasesPivotsAndTies) {
    // 4 x = 2, exact. [4 7; 2 6]^-1 = [6 -7; -2 4] / 10, x = (-0.8, 0.6), to
    // roundings of tenths. A scaled permutation whose first pivot, 8, is off
    // the diagonal: rows are exchanged and the columns put back at the end;
    // the inverse is the transpose with reciprocals, powers of two, exact. A
    // cyclic permutation: three candidates equal 1 at the first step and the
    // last, (3,1), wins; the inverse is the transpose. [1 1; 1 1], B = (1, 2)
    // by hand: step 1, all four candidates are 1 and the last, (2,2), is the
    // pivot; row 2 stays [1 1], B2 = 2; row 1 becomes [0 -1], B1 = -1. Step
    // 2: (1,1) is 0, reciprocal 1e12, singular; row 1 -> [1e12 -1e12], B1 =
    // -1e12; row 2 -> [-1e12, 1 + 1e12], B2 = 2 + 1e12. The first of equals
    // as pivot would give 1e12 + 1 at (1,1).
    // clang-format off
    const struct { Rows A; Row B; bool ok; Rows inverse; Row x; double tol; } cases[] = {
        {{{4}}, {2}, true, {{0.25}}, {0.5}, 0},
        {{{4, 7}, {2, 6}}, {1, 2}, true, {{0.6, -0.7}, {-0.2, 0.4}}, {-0.8, 0.6}, 1e-15},
        {{{0, 0, 2, 0}, {-4, 0, 0, 0}, {0, 0, 0, 0.5}, {0, 8, 0, 0}}, {1, 2, 3, 4}, true,
         {{0, -0.25, 0, 0}, {0, 0, 0, 0.125}, {0.5, 0, 0, 0}, {0, 0, 2, 0}},
         {-0.5, 0.5, 0.5, 6}, 0},
        {{{0, 1, 0}, {0, 0, 1}, {1, 0, 0}}, {10, 20, 30}, true, {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}},
         {30, 10, 20}, 0},
        {{{1, 1}, {1, 1}}, {1, 2}, false, {{1e12, -1e12}, {-1e12, 1e12 + 1}},
         {-1e12, 1e12 + 2}, 0}};
    // clang-format on
    for (const auto& c : cases) {
        System s = Make(c.A, c.B);
        const int n = static_cast<int>(c.A.size());
        EXPECT_EQ(kMath.MatrixInverse(*s.A, s.B, n), c.ok)
            << "size " << n << (c.ok ? "" : " singular");
        for (int i = 1; i <= n; ++i) {
            EXPECT_NEAR(c.x[i - 1], s.B[i], c.tol)
                << "size " << n << (c.ok ? "" : " singular") << " x" << i;
            for (int j = 1; j <= n; ++j)
                EXPECT_NEAR(c.inverse[i - 1][j - 1], (*s.A)[i][j], c.tol)
                    << "size " << n << (c.ok ? "" : " singular") << " inverse " << i << "," << j;
        }
    }
}

TEST(MatrixInverse, SingularSizesAndNaN) {
    // Zero matrix: false, and the work with the reciprocal 1e12 ends without NaN.
    System zero = Make({{0, 0}, {0, 0}}, {1, 2});
    EXPECT_FALSE(kMath.MatrixInverse(*zero.A, zero.B, 2));
    for (int i = 1; i <= 2; ++i)
        EXPECT_TRUE(std::isfinite(zero.B[i]) && std::isfinite((*zero.A)[i][1]) &&
                    std::isfinite((*zero.A)[i][2]));
    // Row 2 is half of row 1: after the first pivot (4) it is exactly zero.
    System rank = Make({{4, 2, 1}, {2, 1, 0.5}, {1, 1, 1}}, {1, 1, 1});
    EXPECT_FALSE(kMath.MatrixInverse(*rank.A, rank.B, 3));
    // NaN entries: no element wins the pivot search; the work still ends,
    // within rows and columns 1..N, and the NaN shows in the solution.
    const double nan = std::nan("");
    System bad = Make({{nan, nan, nan}, {nan, nan, nan}, {nan, nan, nan}}, {1, 1, 1});
    kMath.MatrixInverse(*bad.A, bad.B, 3);
    for (int i = 1; i <= 3; ++i) EXPECT_TRUE(std::isnan(bad.B[i])) << i;
    EXPECT_EQ((*bad.A)[0][0], 0.0) << "row 0 is not part of the matrix";
    EXPECT_EQ(bad.B[0], 0.0);
    // Size 0 touches nothing; more than 50 rows do not fit the pivot tables.
    System any = Make({});
    for (int i = 0; i <= kMaxMatrix; ++i) {
        any.B[i] = i + 0.5;
        for (int j = 0; j <= kMaxMatrix; ++j) (*any.A)[i][j] = i - 2.0 * j;
    }
    const Matrix A0 = *any.A;
    const MatrixVector B0 = any.B;
    EXPECT_TRUE(kMath.MatrixInverse(*any.A, any.B, 0));
    EXPECT_FALSE(kMath.MatrixInverse(*any.A, any.B, kMaxMatrix + 1));
    EXPECT_TRUE(*any.A == A0 && any.B == B0);
}

TEST(MatrixInverse, RandomWellConditioned46) {
    // R + 10 I with R uniform in (-1, 1) has its eigenvalues within about 4 of
    // 10, so it is well conditioned; its rows are then shuffled so that the
    // pivots lie off the diagonal. A known x gives B = A x; the solver must
    // recover x, and A times its inverse must be I. Tolerance 1e-12: the
    // condition number is below 10 and each sum has 46 terms.
    constexpr int N = 46;
    std::mt19937 gen(4646);
    std::uniform_real_distribution<double> u(-1, 1);
    System r, s;
    for (int i = 1; i <= N; ++i)
        for (int j = 1; j <= N; ++j) (*r.A)[i][j] = u(gen) + (i == j ? 10 : 0);
    int perm[N + 1];
    for (int i = 1; i <= N; ++i) perm[i] = i;
    std::shuffle(perm + 1, perm + N + 1, gen);
    for (int i = 1; i <= N; ++i) (*s.A)[i] = (*r.A)[perm[i]];
    MatrixVector x{};
    for (int i = 1; i <= N; ++i) x[i] = 5 * u(gen);
    for (int i = 1; i <= N; ++i)
        for (int k = 1; k <= N; ++k) s.B[i] += (*s.A)[i][k] * x[k];
    *r.A = *s.A;
    const Matrix& A0 = *r.A;
    ASSERT_TRUE(kMath.MatrixInverse(*s.A, s.B, N));
    for (int i = 1; i <= N; ++i) EXPECT_NEAR(x[i], s.B[i], 1e-12) << "x " << i;
    for (int i = 1; i <= N; ++i) {
        for (int j = 1; j <= N; ++j) {
            double left = 0, right = 0;
            for (int k = 1; k <= N; ++k) {
                left += A0[i][k] * (*s.A)[k][j];
                right += (*s.A)[i][k] * A0[k][j];
            }
            EXPECT_NEAR(i == j ? 1 : 0, left, 1e-12) << "A A^-1 at " << i << "," << j;
            EXPECT_NEAR(i == j ? 1 : 0, right, 1e-12) << "A^-1 A at " << i << "," << j;
        }
    }
}

}  // namespace
