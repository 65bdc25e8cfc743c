// Next points: on a mount seen only in the east the first choice lies in the
// west, and each choice's gain is det(normal after) / det(normal before).
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <memory>

#include "autoalign/NextPoints.h"
#include "model/FitStatistics.h"
#include "model/ModelState.h"
#include "model/Residuals.h"
#include "model/Solver.h"
#include "model/SyntheticCalibration.h"
#include "model/Terms.h"

namespace {

constexpr double kDeg = 3.14159265358979323846 / 180;

// Azimuth from north through east, elevation, degrees: +X north, +Y east.
AutoAlignPoint Dir(double az, double el) {
    return {std::cos(el * kDeg) * std::cos(az * kDeg), std::cos(el * kDeg) * std::sin(az * kDeg),
            std::sin(el * kDeg)};
}

// A fitted alt-az model of 24 stars at azimuths 20 to 160 only, and
// candidates every 30 degrees at elevations 30 and 60.
struct NextPointsTest : ::testing::Test {
    std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("next-" + std::to_string(::getpid()));
    std::unique_ptr<ModelState> s = std::make_unique<ModelState>();
    std::vector<AutoAlignPoint> candidates;
    void SetUp() override {
        std::filesystem::create_directories(folder);
        std::ofstream out(folder / "Points.txt");
        out.precision(17);
        for (double el : {30, 60})
            for (double az = 15; az < 360; az += 30) candidates.push_back(Dir(az, el));
        for (const AutoAlignPoint& p : candidates) out << p.X << "\n" << p.Y << "\n" << p.Z << "\n";
        InitModel(*s);
        s->ProgramFolder = folder.string();
        SyntheticObserver observer(*s, SyntheticMount{});
        for (double az = 20; az <= 160; az += 20) {
            for (double el : {25, 45, 65}) {
                const AutoAlignPoint p = Dir(az, el);  // the model's horizon frame has +y west
                AddSyntheticPoints(*s,
                                   {observer.MeasureDirection({p.X, -p.Y, p.Z}, 1, 1, 2460000.5)});
            }
        }
        EnableAltAz(*s);
        Calibrate(*s);
        ComputeResiduals(*s);
    }
    void TearDown() override { std::filesystem::remove_all(folder); }
};

// Determinant of rows and columns 1 to k by elimination with partial pivoting.
double Det(Matrix a, int k) {
    double d = 1;
    for (int c = 1; c <= k; ++c) {
        for (int r = c + 1; r <= k; ++r)
            if (std::fabs(a[r][c]) > std::fabs(a[c][c])) std::swap(a[r], a[c]), d = -d;
        d *= a[c][c];
        for (int r = c + 1; r <= k; ++r)
            for (int j = k; j >= c; --j) a[r][j] -= a[r][c] / a[c][c] * a[c][j];
    }
    return d;
}

// N + A^T A for a star at candidate p.
Matrix Plus(const ModelState& s, const FitStatistics& f, Matrix N, const AutoAlignPoint& p) {
    DesignRows A{};
    CandidateRows(s, f, p, A);
    for (int i = 1; i <= f.NumFitted; ++i)
        for (int j = 1; j <= f.NumFitted; ++j)
            for (int c = 1; c <= 3; ++c) N[i][j] += A[c][i] * A[c][j];
    return N;
}

TEST_F(NextPointsTest, FirstChoiceOnAnEastOnlyRunLiesInTheWest) {
    const NextPoints next = SuggestNextPoints(*s, 1);
    ASSERT_EQ(next.Points.size(), 1u);
    const double az = next.Points[0].Point.Phi / kDeg;
    EXPECT_TRUE(az > 180 && az < 360) << "wanted a west azimuth, got " << az;
}

// Both determinants carry relative errors near k x Sensitivity x 1e-16,
// under 1e-11 here: 1e-9 leaves room. The first choice is also the largest
// ratio over all 24 candidates.
TEST_F(NextPointsTest, GainsAreDeterminantRatiosAndTheFirstIsTheLargest) {
    const NextPoints next = SuggestNextPoints(*s, 2);
    ASSERT_EQ(next.Points.size(), 2u);
    const FitStatistics f = ComputeFitStatistics(*s);
    const int k = f.NumFitted;
    double best = 0;
    for (const AutoAlignPoint& p : candidates)
        best = std::max(best, Det(Plus(*s, f, f.Normal, p), k) / Det(f.Normal, k));
    const bool inOrder = next.Points[0].Pick == 1;
    const SuggestedPoint& first = next.Points[inOrder ? 0 : 1];
    const SuggestedPoint& second = next.Points[inOrder ? 1 : 0];
    EXPECT_NEAR(first.Gain / best, 1, 1e-9) << "wanted " << best << ", got " << first.Gain;
    const Matrix N1 = Plus(*s, f, f.Normal, first.Point);
    const double want = Det(Plus(*s, f, N1, second.Point), k) / Det(N1, k);
    EXPECT_NEAR(second.Gain / want, 1, 1e-9) << "wanted " << want << ", got " << second.Gain;
}

}  // namespace
