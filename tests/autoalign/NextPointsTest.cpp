// Where the next stars go: on a mount seen only in the east the first
// choice lies in the west, and each choice's gain is the ratio of the
// determinants of the normal matrix after and before it, worked out whole.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <utility>
#include <vector>

#include "autoalign/NextPoints.h"
#include "model/FitStatistics.h"
#include "model/ModelState.h"
#include "model/Residuals.h"
#include "model/Solver.h"
#include "model/SyntheticCalibration.h"
#include "model/Terms.h"

namespace {

constexpr double kDeg = 3.14159265358979323846 / 180;

// Azimuth from north through east and elevation, degrees, as a unit vector
// in the candidates' frame (+X north, +Y east, +Z zenith).
Vec3 East(double az, double el) {
    return {std::cos(el * kDeg) * std::cos(az * kDeg), std::cos(el * kDeg) * std::sin(az * kDeg),
            std::sin(el * kDeg)};
}

// Candidates every 30 degrees of azimuth at elevations 30 and 60, written
// as the program's candidate file into a folder of their own.
std::vector<std::pair<double, double>> WriteCandidates(const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    std::ofstream out(folder / "Points.txt");
    std::vector<std::pair<double, double>> list;
    for (double el : {30.0, 60.0}) {
        for (double az = 15; az < 360; az += 30) {
            const Vec3 v = East(az, el);
            char text[96];
            std::snprintf(text, sizeof text, "%.17g\n%.17g\n%.17g\n", v.x, v.y, v.z);
            out << text;
            list.push_back({az, el});
        }
    }
    return list;
}

// A fitted alt-az model of 24 stars at azimuths 20 to 160 only, of a mount
// with a tilt, offsets and a cone error and 2" of noise.
std::unique_ptr<ModelState> EastOnlyFit(const std::filesystem::path& folder) {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    s->IsAltAz = true;
    s->ProgramFolder = folder.string();
    SyntheticMount m;
    m.ErrorNorth = 200 * kDeg / 3600;
    m.ErrorWest = -120 * kDeg / 3600;
    m.TermCoef[5] = 90 * kDeg / 3600;
    m.NoiseRMS = 2 * kDeg / 3600;
    SyntheticObserver observer(*s, m);
    std::vector<SyntheticPoint> points;
    for (double az = 20; az <= 160; az += 20) {
        for (double el : {25.0, 45.0, 65.0}) {
            const Vec3 v = East(az, el);  // the model's horizon frame has +y west
            points.push_back(observer.MeasureDirection({v.x, -v.y, v.z}, 1, 1.0, 2460000.5));
        }
    }
    AddSyntheticPoints(*s, points);
    EnableAltAz(*s);
    Calibrate(*s);
    ComputeResiduals(*s);
    return s;
}

// Determinant by Gaussian elimination with partial pivoting.
double Det(std::vector<std::vector<double>> a) {
    const size_t n = a.size();
    double d = 1;
    for (size_t c = 0; c < n; ++c) {
        size_t p = c;
        for (size_t r = c + 1; r < n; ++r)
            if (std::fabs(a[r][c]) > std::fabs(a[p][c])) p = r;
        if (p != c) std::swap(a[p], a[c]), d = -d;
        d *= a[c][c];
        for (size_t r = c + 1; r < n; ++r)
            for (size_t j = n; j-- > c;) a[r][j] -= a[r][c] / a[c][c] * a[c][j];
    }
    return d;
}

// The normal matrix N with a star of candidate (az, el) added: N + A^T A.
std::vector<std::vector<double>> Plus(const ModelState& s, const FitStatistics& f,
                                      std::vector<std::vector<double>> N, double az, double el) {
    const Vec3 v = East(az, el);
    AutoAlignPoint p{v.x, v.y, v.z};
    DesignRows A{};
    CandidateRows(s, f, p, A);
    for (int i = 1; i <= f.NumFitted; ++i)
        for (int j = 1; j <= f.NumFitted; ++j)
            for (int c = 1; c <= 3; ++c) N[i - 1][j - 1] += A[c][i] * A[c][j];
    return N;
}

struct NextPointsTest : ::testing::Test {
    std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("next-points-" + std::to_string(::getpid()));
    void TearDown() override { std::filesystem::remove_all(folder); }
};

TEST_F(NextPointsTest, FirstChoiceOnAnEastOnlyRunLiesInTheWest) {
    WriteCandidates(folder);
    const NextPoints next = SuggestNextPoints(*EastOnlyFit(folder), 1);
    ASSERT_EQ(next.Points.size(), 1u);
    const double az = next.Points[0].Point.Phi / kDeg;
    EXPECT_TRUE(az > 180 && az < 360) << "wanted a west azimuth, got " << az;
}

// Tolerance: the determinants of a k by k matrix whose inverse's largest
// element is the fit's Sensitivity (below 1000 here) carry relative errors
// of about k x 1000 x 1e-16; 1e-9 leaves room.
TEST_F(NextPointsTest, GainsAreDeterminantRatiosAndTheFirstIsTheLargest) {
    const auto candidates = WriteCandidates(folder);
    const auto s = EastOnlyFit(folder);
    const NextPoints next = SuggestNextPoints(*s, 2);
    ASSERT_EQ(next.Points.size(), 2u);
    const FitStatistics f = ComputeFitStatistics(*s);
    std::vector<std::vector<double>> N(f.NumFitted, std::vector<double>(f.NumFitted));
    for (int i = 1; i <= f.NumFitted; ++i)
        for (int j = 1; j <= f.NumFitted; ++j) N[i - 1][j - 1] = f.Normal[i][j];
    const double before = Det(N);
    double best = 0;
    std::pair<double, double> bestAt;
    for (const auto& [az, el] : candidates) {
        const double ratio = Det(Plus(*s, f, N, az, el)) / before;
        if (ratio > best) best = ratio, bestAt = {az, el};
    }
    const SuggestedPoint* chosen[3] = {};
    for (const SuggestedPoint& p : next.Points) chosen[p.Pick] = &p;
    ASSERT_TRUE(chosen[1] && chosen[2]);
    auto azEl = [](const SuggestedPoint* p) {
        return std::pair(std::round(p->Point.Phi / kDeg), std::round(90 - p->Point.Theta / kDeg));
    };
    EXPECT_EQ(azEl(chosen[1]), bestAt);
    EXPECT_NEAR(chosen[1]->Gain / best, 1, 1e-9)
        << "wanted " << best << ", got " << chosen[1]->Gain;
    const auto N1 = Plus(*s, f, N, bestAt.first, bestAt.second);
    const auto [az2, el2] = azEl(chosen[2]);
    const double want2 = Det(Plus(*s, f, N1, az2, el2)) / Det(N1);
    EXPECT_NEAR(chosen[2]->Gain / want2, 1, 1e-9)
        << "wanted " << want2 << ", got " << chosen[2]->Gain;
}

}  // namespace
