// The statistics of a fit against what least squares theory says, on an
// imaginary mount with known errors and known noise; and which terms the
// fit left out, against the fit itself.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <memory>
#include <numeric>
#include <vector>

#include "ModelTestSupport.h"
#include "model/CrossValidation.h"
#include "model/FitStatistics.h"
#include "model/Residuals.h"
#include "model/Solver.h"
#include "model/SyntheticCalibration.h"
#include "model/TermSelection.h"
#include "model/Terms.h"

namespace {

using modeltest::kArcsec;

// The errors of data/sample.AZT: offsets, tilt, cone (5), Phi cos(Phi) (10)
// and Theta sin(Phi) (11), with 3" of noise on each sky axis.
SyntheticMount SampleLikeMount(int num, uint32_t seed) {
    SyntheticMount m;
    m.Num = num;
    m.Seed = seed;
    m.NoiseRMS = 3 * kArcsec;
    m.ErrorNorth = 240 * kArcsec;
    m.ErrorWest = -150 * kArcsec;
    m.ThetaEncOffset = 720 * kArcsec;  // counts are radians here
    m.PhiEncOffset = -1500 * kArcsec;
    m.TermCoef[5] = 180 * kArcsec;
    m.TermCoef[10] = 40 * kArcsec;
    m.TermCoef[11] = -30 * kArcsec;
    return m;
}

std::vector<SyntheticPoint> Points(const SyntheticMount& m, double countsPerRev = kFullTurn) {
    auto site = modeltest::FreshModel();
    site->ThetaCountsPerRev = site->PhiCountsPerRev = countsPerRev;
    return MakeSyntheticPoints(*site, m);
}

// The model of those points (copies times over), fitted with terms 5 and 9
// to 12 enabled as the sample's file enables them: 9 and 12 are not in the
// mount.
std::unique_ptr<ModelState> Fitted(const std::vector<SyntheticPoint>& points, int copies = 1,
                                   double countsPerRev = kFullTurn) {
    auto s = modeltest::FreshModel();
    s->ThetaCountsPerRev = s->PhiCountsPerRev = countsPerRev;
    for (int c = 0; c < copies; ++c) AddSyntheticPoints(*s, points);
    s->TermEnable.fill(0);
    s->TermEnable[1] = s->TermEnable[4] = s->TermEnable[5] = 1;
    Calibrate(*s);
    ComputeResiduals(*s);
    return s;
}

// 200 runs that differ only in their noise; R values scatter about the true
// spread by 1/sqrt(2(R - 1)) = 5 %: standard errors within 18 % (3.5 times
// that; with three free components per point they would be 26 % low). The
// variance per axis, 71 degrees of freedom a run, within 5 % of the 3" put
// in (4 times its 1.2 %). Terms 9 and 12, not in the mount, exceed 3
// standard errors in 0.27 % of runs. Means within 4 standard errors of a
// mean plus 0.3" (the 1e-6 radians the fit's iteration may leave). Sample
// correlations scatter by (1 - rho^2) / sqrt(R - 1) <= 0.011 here: 0.05.
TEST(FitStatistics, StandardErrorsMatchTheScatterOfNoisyRuns) {
    constexpr int kRuns = 200;
    const std::map<int, double> want = {{1, -1500}, {2, 720}, {3, 240},  {4, -150}, {5, 180},
                                        {9, 0},     {10, 40}, {11, -30}, {12, 0}};
    std::map<int, std::vector<double>> values;  // arcseconds, run by run
    std::map<int, double> sigmaSq;
    double varianceSum = 0;
    int large[47] = {};
    FitStatistics f;
    for (uint32_t run = 1; run <= kRuns; ++run) {
        f = ComputeFitStatistics(*Fitted(Points(SampleLikeMount(40, run))));
        ASSERT_EQ(f.NumFitted, 9);
        varianceSum += f.AxisSigma * f.AxisSigma;
        for (const TermStatistic& t : f.Terms) {
            values[t.Term].push_back(t.Coef / kArcsec);
            sigmaSq[t.Term] += t.Sigma / kArcsec * (t.Sigma / kArcsec);
            if (std::fabs(t.Significance) > 3) ++large[t.Term];
        }
    }
    auto mean = [&](int t) {
        return std::accumulate(values[t].begin(), values[t].end(), 0.0) / kRuns;
    };
    auto covariance = [&](int a, int b) {
        double c = 0;
        for (int r = 0; r < kRuns; ++r)
            c += (values[a][r] - mean(a)) * (values[b][r] - mean(b)) / (kRuns - 1);
        return c;
    };
    for (const auto& [term, truthArcsec] : want) {
        const double scatter = std::sqrt(covariance(term, term));
        const double predicted = std::sqrt(sigmaSq[term] / kRuns);
        EXPECT_NEAR(predicted / scatter, 1.0, 0.18)
            << "term " << term << ": scatter " << scatter << "\", standard error " << predicted;
        EXPECT_NEAR(mean(term), truthArcsec, 4 * scatter / std::sqrt(kRuns) + 0.3) << term;
        if (truthArcsec == 0)
            EXPECT_LE(large[term], 4) << "term " << term << " not in the mount";
        else
            EXPECT_EQ(large[term], kRuns) << "term " << term << " of the mount";
    }
    EXPECT_NEAR(std::sqrt(varianceSum / kRuns) / kArcsec, 3.0, 0.15);
    const auto pairs = CorrelatedPairs(f, kListedCorrelation);
    ASSERT_FALSE(pairs.empty());
    for (const CorrelatedPair& p : pairs) {
        const double sample =
            covariance(p.TermA, p.TermB) /
            std::sqrt(covariance(p.TermA, p.TermA) * covariance(p.TermB, p.TermB));
        EXPECT_NEAR(p.Rho, sample, 0.05) << "terms " << p.TermA << " and " << p.TermB;
    }
}

// Every point twice: the same solution from twice the normal matrix, so the
// inverse halves; the residual sum doubles over 4N - k free components
// instead of 2N - k, so a variance scales by (2N - k) / (4N - k). The
// inverse is that of the fit's last solve, whose largest element is the
// fit's Sensitivity: also at 1,296,000 counts per turn, where the fit's
// iteration runs all 200 passes.
TEST(FitStatistics, DuplicatedPointsHalveTheInverse) {
    for (double countsPerRev : {kFullTurn, 1296000.0}) {
        const auto points = Points(SampleLikeMount(40, 7), countsPerRev);
        const auto once = Fitted(points, 1, countsPerRev);
        const FitStatistics a = ComputeFitStatistics(*once);
        const FitStatistics b = ComputeFitStatistics(*Fitted(points, 2, countsPerRev));
        ASSERT_EQ(a.NumFitted, b.NumFitted);
        const int k = a.NumFitted;
        const double ratio = (2.0 * a.NumUsed - k) / (4.0 * a.NumUsed - k);
        double largest = 0;
        for (int i = 1; i <= k; ++i)
            for (int j = 1; j <= k; ++j) largest = std::fmax(largest, std::fabs(a.Inverse[i][j]));
        EXPECT_NEAR(largest / once->Sensitivity, 1.0, 1e-9) << countsPerRev;
        for (int i = 0; i < k; ++i) {
            const TermStatistic& x = a.Terms[i];
            const TermStatistic& y = b.Terms[i];
            EXPECT_NEAR(y.Coef, x.Coef, 1e-6 * kArcsec) << "term " << x.Term;
            EXPECT_NEAR(b.Inverse[i + 1][i + 1] / a.Inverse[i + 1][i + 1], 0.5, 1e-9);
            EXPECT_NEAR(y.Sigma * y.Sigma / (x.Sigma * x.Sigma), ratio, 1e-6) << "term " << x.Term;
        }
    }
}

// Each used point against a fit made from scratch without it, read from
// ComputeResiduals as the error of a point out of use. One point carries
// 60" more than the noise: it is the one outlier candidate.
TEST(CrossValidation, MatchesARefitWithoutEachPoint) {
    std::vector<SyntheticPoint> points = Points(SampleLikeMount(30, 3));
    points[4].ThetaEnc += 60 * kArcsec;
    const auto s = Fitted(points);
    const CrossValidation cv = CrossValidate(*s);
    ASSERT_EQ(cv.Points.size(), 30u);
    double sum = 0;
    for (size_t u = 0; u < cv.Points.size(); ++u) {
        auto refit = modeltest::FreshModel();
        AddSyntheticPoints(*refit, points);
        refit->TermEnable = s->TermEnable;
        refit->CalPoints[cv.Points[u]].Used = false;
        Calibrate(*refit);
        ComputeResiduals(*refit);
        const double want = refit->CalPoints[cv.Points[u]].DistErr;
        EXPECT_NEAR(cv.Errors[u], want, 1e-12) << "point " << cv.Points[u];
        sum += want * want;
    }
    EXPECT_NEAR(cv.RMS, std::sqrt(sum / 30), 1e-12);
    EXPECT_GT(cv.RMS, s->RMSErrSel);
    EXPECT_EQ(cv.Outliers, std::vector<int16_t>{5});
    EXPECT_EQ(cv.MaxPoint, 5);
}

// Which enabled terms a fit left out and why, checked against the fit
// itself: with MaxSensitivity raised to the least refused Sensitivity the
// ladder keeps that term set; just below it, what it kept before.
int HighestActive(const ModelState& s) {
    int t = 0;
    for (int i = 1; i <= s.NumTerms; ++i)
        if (s.TermActive[i]) t = i;
    return t;
}

TEST(TermSelection, NamesTooFewPointsAndTheRefusedSensitivity) {
    auto s = modeltest::FreshModel();
    AddSyntheticPoints(*s, Points(SampleLikeMount(12, 1)));  // allow terms up to 24
    EnableAll(*s);
    Calibrate(*s);
    const TermSelection sel = ExplainTermSelection(*s);
    EXPECT_EQ(sel.AllowedMaxTerm, 24);
    ASSERT_EQ(sel.TooFewPoints.size(), 22u);  // 25 to 46
    EXPECT_EQ(sel.TooFewPoints.front(), 25);
    ASSERT_FALSE(sel.Dropped.empty());
    EXPECT_EQ(sel.Dropped.front(), HighestActive(*s) + 1);
    EXPECT_EQ(sel.Dropped.back(), 24);
    EXPECT_GT(sel.RefusedSensitivity, s->MaxSensitivity);
    for (double factor : {1.0, 1 - 1e-9}) {
        auto raised = std::make_unique<ModelState>(*s);
        raised->MaxSensitivity = sel.RefusedSensitivity * factor;
        Calibrate(*raised);
        const int want = factor == 1.0 ? sel.RefusedMaxTerm : HighestActive(*s);
        EXPECT_EQ(HighestActive(*raised), want) << "MaxSensitivity " << raised->MaxSensitivity;
    }
}

}  // namespace
