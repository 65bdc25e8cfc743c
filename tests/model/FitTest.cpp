// The fit: known mounts recovered, the optimised fit bit for bit as the plain one, the ladder.
#include <algorithm>
#include <bit>
#include <numeric>
#include <vector>

#include "ModelTestSupport.h"
#include "model/Residuals.h"
#include "model/SkyChain.h"
#include "model/Solver.h"
#include "model/Terms.h"

namespace {

using namespace modeltest;

// One solve written out in the plainest way: the sky chain of every used point again, the whole
// matrix summed element by element, no mirroring.
void PlainSolve(ModelState& s) {
    if (std::none_of(&s.CalPoints[1], &s.CalPoints[s.NumCalPoints + 1],
                     [](auto& p) { return p.Used; }))
        return;
    std::vector<int> list{0};
    for (int t = 1; t <= s.NumTerms; ++t) {
        s.TermCoef[t] = 0;
        if (s.TermActive[t]) list.push_back(t);
    }
    const int n = static_cast<int>(list.size()) - 1;
    if (n == 0) return;
    auto A = std::make_unique<Matrix>();
    MatrixVector R{};
    TermTable B;
    for (int p = 1; p <= s.NumCalPoints; ++p) {
        const CalPoint& pt = s.CalPoints[p];
        if (!pt.Used) continue;
        const Vec3 T = HorizonToMount(s, CelestialToHorizon(s, pt.RA, pt.Dec, pt.LST, pt.JD));
        double Theta = 0, Phi = 0;
        EncodersToAngles(s, pt.ThetaEnc, pt.PhiEnc, Theta, Phi);
        const Vec3 P = AnglesToVec(Theta, Phi);
        TermBasis(Theta, Phi, B);
        const double d[4] = {0, T.x - P.x, T.y - P.y, T.z - P.z};
        for (int c = 1; c <= 3; ++c) {
            for (int i = 1; i <= n; ++i) {
                R[i] = R[i] + d[c] * B[list[i]][c];
                for (int j = 1; j <= n; ++j)
                    (*A)[i][j] = (*A)[i][j] + B[list[i]][c] * B[list[j]][c];
            }
        }
    }
    s.Math.MatrixInverse(*A, R, n);
    s.Sensitivity = 0;
    for (int i = 1; i <= n; ++i)
        for (int j = 1; j <= n; ++j) s.Sensitivity = std::max(s.Sensitivity, std::fabs((*A)[i][j]));
    for (int i = 1; i <= n; ++i) s.TermCoef[list[i]] = R[i];
}

// The whole fit the plain way: the ladder 46, 44, ... 6, 5, 4, 2, 0 while too sensitive, then terms
// 1 to 4 into offsets and rotations until a pass moves them less than 1e-6.
void PlainCalibrate(ModelState& s) {
    s.ErrorNorth = s.ErrorWest = s.ThetaEncOffset = s.PhiEncOffset = 0;
    const int N = std::count_if(&s.CalPoints[1], &s.CalPoints[s.NumCalPoints + 1],
                                [](auto& p) { return p.Used; });
    int MaxTerm = std::min<int>(2 * N, s.NumTerms);
    for (SelectActiveTerms(s, int16_t(MaxTerm)); MaxTerm > 0;
         SelectActiveTerms(s, int16_t(MaxTerm))) {
        PlainSolve(s);
        if (s.Sensitivity <= s.MaxSensitivity) break;
        MaxTerm -= (MaxTerm == 6 || MaxTerm == 5) ? 1 : 2;
    }
    if (N == 0) std::fill(s.TermCoef.begin() + 1, s.TermCoef.begin() + 47, 0.0);
    for (int count = 1;; ++count) {
        const double old[4] = {s.PhiEncOffset, s.ThetaEncOffset, s.ErrorNorth, s.ErrorWest};
        PlainSolve(s);
        s.PhiEncOffset += s.PhiPosCW ? s.TermCoef[1] : -s.TermCoef[1];
        s.ThetaEncOffset += s.ThetaPosUp ? s.TermCoef[2] : -s.TermCoef[2];
        s.ErrorNorth += s.TermCoef[3];
        s.ErrorWest += s.TermCoef[4];
        const double D =
            std::max({std::fabs(s.PhiEncOffset - old[0]), std::fabs(s.ErrorWest - old[3]),
                      std::fabs(s.ThetaEncOffset - old[1]), std::fabs(s.ErrorNorth - old[2])});
        if (D < 1e-6 || count >= 200) break;
    }
}

// Offsets and misalignment of some arcminutes and a few terms.
SyntheticMount Mount(int num, std::initializer_list<std::pair<int, double>> terms,
                     bool both = false, double noise = 0) {
    // clang-format off
    SyntheticMount m{.Num = num, .ErrorNorth = 2e-3, .ErrorWest = -1.5e-3, .ThetaEncOffset = 0.01,
                     .PhiEncOffset = -0.02, .NoiseRMS = noise, .Seed = 3, .BothSidesOfPier = both};
    // clang-format on
    for (const auto& [term, coef] : terms) m.TermCoef[term] = coef;
    return m;
}

TEST(FitRecovery, KnownMountsComeBack) {
    // Alt-az with its preset's terms, encoders counting the other way, German on both sides of the
    // pier, and noise. Without noise the point maker's non-iterated apparent-to-mean step leaves
    // about 1e-8 rad: 1e-6 asked. With noise sigma the RMS chord is sigma sqrt(2 (1 - p / 2N)) for
    // p parameters, 2N equations, to 15 %; the errors to 5 sigma.
    // clang-format off
    const struct { void (*settings)(ModelState&); SyntheticMount m; } cases[] = {
        {EnableAltAz, Mount(40, {{5, 8e-4}, {10, 3e-4}, {11, -2e-4}})},
        {[](ModelState& r) { r.PhiPosCW = r.ThetaPosUp = false; }, Mount(20, {})},
        {[](ModelState& r) { r.IsAltAz = false, r.IsGEM = true, EnableGEM(r); },
         Mount(50, {{5, 6e-4}, {6, -3e-4}, {8, 2e-4}}, true)},
        {[](ModelState& r) { r.TermEnable[1] = 1; }, Mount(100, {{5, 8e-4}}, false, 5 * kArcsec)}};
    // clang-format on
    for (const auto& [settings, m] : cases) {
        auto s = WithPoints(m, settings);
        Calibrate(*s);
        ComputeResiduals(*s);
        const double tol = std::max(1e-6, 5 * m.NoiseRMS);
        const std::string what = std::to_string(m.Num) + " points";
        EXPECT_NEAR(s->ErrorNorth, m.ErrorNorth, tol) << what;
        EXPECT_NEAR(s->ErrorWest, m.ErrorWest, tol) << what;
        EXPECT_NEAR(s->ThetaEncOffset, m.ThetaEncOffset, tol) << what;
        EXPECT_NEAR(s->PhiEncOffset, m.PhiEncOffset, tol) << what;
        for (int t = 5; t <= 46; ++t) {
            const double got = !s->TermActive[t] ? (m.TermCoef[t] ? NAN : 0.0) : s->TermCoef[t];
            EXPECT_NEAR(got, m.TermCoef[t], tol) << what << " term " << t;
        }
        const double rms = m.NoiseRMS * std::sqrt(2 * (1 - 5.0 / 200));
        EXPECT_NEAR(s->RMSErrSel, rms, m.NoiseRMS ? 0.15 * rms : 1e-6) << what;
        const int west = std::count_if(&s->CalPoints[1], &s->CalPoints[m.Num + 1],
                                       [](auto& p) { return p.AxisTheta < 0; });
        EXPECT_TRUE(m.BothSidesOfPier ? west > 5 && west < 45 : west == 0) << west;
    }
}

std::vector<int> ActiveTerms(const ModelState& s) {
    std::vector<int> on;
    for (int t = 1; t <= 46; ++t)
        if (s.TermActive[t]) on.push_back(t);
    return on;
}

void ExpectSameBits(double want, double got, const std::string& what) {
    EXPECT_EQ(std::bit_cast<uint64_t>(want), std::bit_cast<uint64_t>(got))
        << what << ": wanted " << want << ", got " << got << ", difference " << got - want;
}

// The optimised fit (sky vectors cached, stage 1 summed once, the first pass of stage 2 reused,
// half the matrix mirrored) gives the bits of the plain fit, and residuals after it those of a
// fresh copy.
TEST(OptimisedFit, GivesTheBitsOfThePlainFitAndOfFreshResiduals) {
    std::mt19937 gen(2024);
    std::uniform_int_distribution<int> count(0, 60), flag(0, 1), mount(0, 2);
    std::uniform_real_distribution<double> err(-3e-3, 3e-3);
    for (int trial = 0; trial < 24; ++trial) {
        auto s = FreshModel();
        const int kind = mount(gen);
        s->IsAltAz = kind == 0, s->IsGEM = kind == 2, s->PhiPosCW = flag(gen);
        s->ThetaPosUp = flag(gen);
        for (int k = 1; k <= 22; ++k) s->TermEnable[k] = int16_t(flag(gen));
        if (trial % 4 == 1) s->MaxSensitivity = 20;  // makes the ladder step down
        if (trial % 4 == 2) s->ThetaCountsPerRev = s->PhiCountsPerRev = 100000;
        // clang-format off
        SyntheticMount m{.Num = count(gen), .ErrorNorth = err(gen), .ErrorWest = err(gen),
                         .ThetaEncOffset = err(gen), .PhiEncOffset = err(gen), .NoiseRMS = 1e-5,
                         .Seed = uint32_t(trial + 1), .BothSidesOfPier = kind == 2};
        // clang-format on
        m.TermCoef[5] = err(gen) / 3, m.TermCoef[8] = err(gen) / 3;
        AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
        for (int p = 1; p <= s->NumCalPoints; ++p)
            if (flag(gen) && flag(gen)) s->CalPoints[p].Used = false;
        auto plain = std::make_unique<ModelState>(*s);
        Calibrate(*s);
        PlainCalibrate(*plain);
        const std::string at = "trial " + std::to_string(trial);
        for (auto f : {&ModelState::ErrorNorth, &ModelState::ErrorWest, &ModelState::ThetaEncOffset,
                       &ModelState::PhiEncOffset, &ModelState::Sensitivity})
            ExpectSameBits((*plain).*f, (*s).*f, at);
        EXPECT_EQ(ActiveTerms(*plain), ActiveTerms(*s)) << at;
        for (int t = 1; t <= 46; ++t)
            ExpectSameBits(plain->TermCoef[t], s->TermCoef[t], at + " term " + std::to_string(t));
        auto fresh = std::make_unique<ModelState>(*s);
        ComputeResiduals(*s);
        ComputeResiduals(*fresh);
        for (int i = 1; i <= s->NumCalPoints; ++i)
            for (auto f : {&CalPoint::DistErr, &CalPoint::RAErr, &CalPoint::DecErr,
                           &CalPoint::ThetaErr, &CalPoint::PhiErr, &CalPoint::SkyPhi})
                ExpectSameBits(fresh->CalPoints[i].*f, s->CalPoints[i].*f, at + " point");
    }
}

std::unique_ptr<ModelState> FittedAltAz(int n, double maxSensitivity, bool flags = true) {
    auto s = WithPoints(Mount(n, {{5, 8e-4}, {10, 3e-4}}), flags ? EnableAll : DisableAll);
    s->MaxSensitivity = maxSensitivity;
    Calibrate(*s);
    return s;
}

TEST(FitLadder, TermsAllowedByThePointsTheFlagsAndTheSensitivity) {
    // Two terms per point, all 46 from 23 points when a huge limit stops the ladder at once; flags
    // off, terms 1 to 4; limit 0, none. One direction six times: down the ladder to terms 1 and 2.
    // clang-format off
    const struct { int points; double limit; bool flags; int active; } cases[] = {{1, 300, true, 2},
        {2, 300, true, 4}, {3, 1e300, true, 6}, {23, 1e300, true, 46}, {3, 300, false, 4},
        {10, 0, true, 0}, {-6, 300, true, 2}};
    // clang-format on
    for (const auto& c : cases) {
        auto s = FittedAltAz(std::abs(c.points), c.limit, c.flags);
        for (int i = 2; c.points < 0 && i <= 6; ++i) s->CalPoints[i] = s->CalPoints[1];
        Calibrate(*s);
        std::vector<int> first(c.active);
        std::iota(first.begin(), first.end(), 1);
        EXPECT_EQ(ActiveTerms(*s), first) << c.points << " points";
        for (int t = c.active + 1; t <= 46; ++t) EXPECT_EQ(s->TermCoef[t], 0.0) << "term " << t;
        EXPECT_TRUE(s->Sensitivity <= c.limit || !c.active) << s->Sensitivity;
    }
    // No point in use: a plain solve changes nothing; a fit is the identity, Sensitivity kept.
    auto s = FittedAltAz(3, 300);
    for (int i = 1; i <= 3; ++i) s->CalPoints[i].Used = false;
    const double cone = s->TermCoef[5];
    s->Sensitivity = 42;
    SolveCoefficients(*s);
    EXPECT_TRUE(s->TermCoef[5] == cone && cone != 0 && s->Sensitivity == 42) << s->TermCoef[5];
    Calibrate(*s);
    const auto [low, high] = std::minmax_element(s->TermCoef.begin(), s->TermCoef.end());
    EXPECT_TRUE(*low == 0 && *high == 0 && s->ErrorNorth == 0 && s->PhiEncOffset == 0 &&
                ActiveTerms(*s).empty() && s->Sensitivity == 42);
}

}  // namespace
