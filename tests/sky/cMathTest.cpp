// The maths class: rounded factors, first of equals, Gauss-Jordan inversion, full pivoting.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

#include "sky/cMath.h"

namespace {

const cMath kMath;

TEST(MathScalars, RoundedFactorsFirstOfEqualsAndTrunc) {
    // The rounded factors are the point: 180.000000229183118 by hand, 206264.80625 not 206264.8062;
    // of equals the first comes back, as the sign of a zero shows.
    EXPECT_EQ(kMath.DegToRad(2), 0.034906585);
    EXPECT_NEAR(180.000000229183118, kMath.RadToDeg(3.141592654), 3e-14);
    EXPECT_EQ(kMath.RadToAS(2), 412529.6125);
    EXPECT_TRUE(kMath.Min(2, 1) == 1 && kMath.Max(1, 2) == 2 && kMath.Trunc(-2.7) == -2);
    EXPECT_TRUE(std::signbit(kMath.Min(-0.0, 0.0)) && !std::signbit(kMath.Max(0.0, -0.0)));
}

using Rows = std::vector<std::vector<double>>;

TEST(MatrixInverse, HandWorkedCasesPivotsTiesAndLimits) {
    // By hand, B = 10, 20...: an inverse to tenths; pivots off the diagonal, exact; of equal
    // candidates the last wins; a zero pivot takes 1e12 and gives false.
    // clang-format off
    const struct { Rows A; bool ok; Rows inverse; std::vector<double> x; double tol; } cases[] = {
        {{{4, 7}, {2, 6}}, true, {{0.6, -0.7}, {-0.2, 0.4}}, {-8, 6}, 1e-14},
        {{{0, 0, 2, 0}, {-4, 0, 0, 0}, {0, 0, 0, 0.5}, {0, 8, 0, 0}}, true,
         {{0, -0.25, 0, 0}, {0, 0, 0, 0.125}, {0.5, 0, 0, 0}, {0, 0, 2, 0}}, {-5, 5, 5, 60}, 0},
        {{{0, 1, 0}, {0, 0, 1}, {1, 0, 0}}, true, {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}}, {30, 10, 20},
         0},
        {{{1, 1}, {1, 1}}, false, {{1e12, -1e12}, {-1e12, 1e12 + 1}}, {-1e13, 1e13 + 20}, 0},
        {{{NAN, NAN}, {NAN, NAN}}, true, {}, {NAN, NAN}, 0}};
    // clang-format on
    for (const auto& c : cases) {
        auto A = std::make_unique<Matrix>();
        MatrixVector B{};
        const int n = static_cast<int>(c.A.size());
        for (int i = 1; i <= n; ++i) {
            for (int j = 1; j <= n; ++j) (*A)[i][j] = c.A[i - 1][j - 1];
            B[i] = 10.0 * i;
        }
        // NaN wins no pivot search, nor is it a zero pivot: the work ends within 1..N and the NaN
        // shows in the solution.
        EXPECT_EQ(kMath.MatrixInverse(*A, B, n), c.ok) << "size " << n;
        EXPECT_TRUE(B[0] == 0 && (*A)[0][0] == 0) << "row 0 is not part of the matrix";
        for (int i = 1; i <= n; ++i) {
            EXPECT_TRUE(std::fabs(c.x[i - 1] - B[i]) <= c.tol ||
                        (std::isnan(B[i]) && c.x[i - 1] != c.x[i - 1]))
                << "size " << n << ": x" << i << " wanted " << c.x[i - 1] << ", got " << B[i];
            for (int j = 1; j <= int(c.inverse.size()); ++j)
                EXPECT_NEAR(c.inverse[i - 1][j - 1], (*A)[i][j], c.tol) << n << ": " << i << j;
        }
    }
}

}  // namespace
