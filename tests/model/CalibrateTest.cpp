// The fit: recovery of known synthetic mounts, the ladder of term numbers,
// and the iteration that moves terms 1 to 4 into offsets and rotations.
#include <cstring>
#include <initializer_list>
#include <numeric>
#include <utility>

#include "ModelTestSupport.h"
#include "model/Residuals.h"
#include "model/Solver.h"
#include "model/SyntheticCalibration.h"
#include "model/Terms.h"

namespace {

using namespace modeltest;

// A synthetic mount with offsets and misalignment of some arcminutes and a
// few correction terms {number, coefficient}.
SyntheticMount Mount(int num, double north, double west, double thetaOffset, double phiOffset,
                     std::initializer_list<std::pair<int, double>> terms, uint32_t seed = 7) {
    SyntheticMount m;
    m.Num = num;
    m.ErrorNorth = north;
    m.ErrorWest = west;
    m.ThetaEncOffset = thetaOffset;
    m.PhiEncOffset = phiOffset;
    for (const auto& [term, coef] : terms) m.TermCoef[term] = coef;
    m.Seed = seed;
    return m;
}

// The alt-az mount of these tests: a cone error (term 5) and, with the
// harmonics, cos(Phi) along Phi (10) and sin(Phi) along Theta (11), all in
// the alt-az preset.
SyntheticMount AltAzMount(int num = 40, bool harmonics = true) {
    return Mount(num, 2e-3, -1.5e-3, 0.01, -0.02,
                 {{5, 8e-4}, {10, harmonics ? 3e-4 : 0}, {11, harmonics ? -2e-4 : 0}});
}

std::unique_ptr<ModelState> Fitted(const SyntheticMount& m, void (*settings)(ModelState&)) {
    auto s = FreshModel();
    settings(*s);
    AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
    Calibrate(*s);
    ComputeResiduals(*s);
    return s;
}

// Without noise the fit gives back the errors the points were made with; what
// is left comes from the non-iterated apparent-to-mean step and refraction
// round trip of the point maker (about 1e-8 rad), far below the 1e-6 asked.
void ExpectRecovered(const ModelState& s, const SyntheticMount& m, bool allTerms = true) {
    EXPECT_NEAR(s.ErrorNorth, m.ErrorNorth, 1e-6);
    EXPECT_NEAR(s.ErrorWest, m.ErrorWest, 1e-6);
    EXPECT_NEAR(s.ThetaEncOffset, m.ThetaEncOffset, 1e-6);
    EXPECT_NEAR(s.PhiEncOffset, m.PhiEncOffset, 1e-6);
    for (int t = 5; allTerms && t <= 46; ++t) {
        EXPECT_NEAR(s.TermActive[t] ? s.TermCoef[t] : 0, m.TermCoef[t], 1e-6) << "term " << t;
        EXPECT_TRUE(s.TermActive[t] || m.TermCoef[t] == 0) << "term " << t << " not found";
    }
    EXPECT_LT(s.MaxErrSel, 1e-6);
}

TEST(FitRecovery, AltAzMountWithoutNoise) {
    auto s = Fitted(AltAzMount(), EnableAltAz);
    ExpectRecovered(*s, AltAzMount());
    EXPECT_EQ(s->NumPointsUsed, 40);
    // The same mount seen through encoders that count the other way: the
    // offsets come out with the sign those encoders read.
    const SyntheticMount m = Mount(20, 2e-3, -1.5e-3, 0.01, -0.02, {});
    ExpectRecovered(*Fitted(m, [](ModelState& r) { r.PhiPosCW = r.ThetaPosUp = false; }), m, false);
}

TEST(FitRecovery, GermanEquatorialMountOnBothSidesOfThePier) {
    // Cone, hub, and cos(Theta) along Theta (tube flexure).
    SyntheticMount m =
        Mount(50, -1e-3, 2.5e-3, -0.03, 0.015, {{5, 6e-4}, {6, -3e-4}, {8, 2e-4}}, 3);
    m.BothSidesOfPier = true;
    auto s = Fitted(m, [](ModelState& r) {
        r.IsAltAz = false;
        r.IsGEM = true;
        EnableGEM(r);
    });
    int negative = 0;
    for (int i = 1; i <= s->NumCalPoints; ++i) negative += s->CalPoints[i].AxisTheta < 0;
    EXPECT_TRUE(negative > 5 && negative < 45) << negative << " points west of the pier";
    ExpectRecovered(*s, m);
}

// With noise of sigma on each axis the chord error of a point is about
// sigma x sqrt(2); fitting p parameters from 2N equations lowers the RMS by
// sqrt(1 - p / 2N). Statistics of 200 equations allow about 10 %; the
// errors are still found to a few noise-sized steps.
TEST(FitRecovery, WithNoiseTheRMSResidualIsTheNoiseLevel) {
    SyntheticMount m = AltAzMount(100, false);
    m.NoiseRMS = 5 * kArcsec;
    auto s = Fitted(m, [](ModelState& r) { r.TermEnable[1] = 1; });  // cone besides terms 1 to 4
    const double expected = m.NoiseRMS * std::sqrt(2.0) * std::sqrt(1 - 5.0 / 200);
    EXPECT_NEAR(s->RMSErrSel / expected, 1.0, 0.15)
        << "RMS " << s->RMSErrSel / kArcsec << " arcsec";
    EXPECT_NEAR(s->ErrorNorth, m.ErrorNorth, 5 * kArcsec);
    EXPECT_NEAR(s->TermCoef[5], m.TermCoef[5], 5 * kArcsec);
}

TEST(FitRecovery, ASecondFitGivesTheSameBits) {
    SyntheticMount m = AltAzMount();
    m.NoiseRMS = 3 * kArcsec;
    auto s = Fitted(m, EnableAll);
    auto first = std::make_unique<ModelState>(*s);
    Calibrate(*s);
    EXPECT_EQ(std::memcmp(first->TermCoef.data(), s->TermCoef.data(), sizeof(double) * 47), 0);
    for (double ModelState::*field :
         {&ModelState::ErrorNorth, &ModelState::PhiEncOffset, &ModelState::Sensitivity})
        EXPECT_EQ(std::memcmp(&((*first).*field), &((*s).*field), sizeof(double)), 0);
}

// With 8,640,000 counts per turn each pass moves the offset by the
// coefficient (radians) as counts: the loop runs its 200 passes and the
// first-order terms keep the bulk of the shift. The fit still matches.
TEST(FitRecovery, LargeCountsPerTurnLeaveTheShiftInTermsOneAndTwo) {
    auto s = Fitted(Mount(20, 2e-3, -1.5e-3, 1000, -500, {}),
                    [](ModelState& r) { r.ThetaCountsPerRev = r.PhiCountsPerRev = 8640000; });
    EXPECT_GT(std::fabs(s->TermCoef[2]), 1e-4);
    EXPECT_LT(s->RMSErrSel, 1e-5);
}

std::unique_ptr<ModelState> ModelWithPoints(int n, double maxSensitivity = 300,
                                            bool allFlags = true) {
    auto s = FreshModel();
    if (allFlags) EnableAll(*s);
    s->MaxSensitivity = maxSensitivity;
    AddSyntheticPoints(*s, MakeSyntheticPoints(*s, AltAzMount(n)));
    return s;
}

std::vector<int> ActiveTerms(const ModelState& s) {
    std::vector<int> on;
    for (int t = 1; t <= 46; ++t)
        if (s.TermActive[t]) on.push_back(t);
    return on;
}

TEST(FitLadder, ASensitivityEqualToTheLimitIsAccepted) {
    // The ladder stops at the first rung whose Sensitivity is at most the
    // limit. The rung a fit kept, solved alone from zero offsets as stage 1
    // solves it, gives that rung's Sensitivity: as the limit it keeps the
    // same terms, and the next double below drops the rung.
    auto s = ModelWithPoints(30);
    Calibrate(*s);
    const std::vector<int> kept = ActiveTerms(*s);
    auto rung = ModelWithPoints(30);
    for (int t : kept) rung->TermActive[t] = true;
    SolveCoefficients(*rung);
    auto again = ModelWithPoints(30, rung->Sensitivity);
    Calibrate(*again);
    EXPECT_EQ(ActiveTerms(*again), kept) << "limit " << rung->Sensitivity;
    auto below = ModelWithPoints(30, std::nextafter(rung->Sensitivity, 0.0));
    Calibrate(*below);
    EXPECT_LT(ActiveTerms(*below).size(), kept.size());
}

TEST(FitLadder, TermsAllowedByTheNumberOfPoints) {
    // 1 point: terms 1 and 2; 2 points: 1 to 4; 3 points: 6; 23 points: all
    // 46. A huge MaxSensitivity stops the ladder at the first solve.
    std::vector<int> all(46);
    std::iota(all.begin(), all.end(), 1);
    // clang-format off
    const struct { int points; double maxSensitivity; std::vector<int> active; } cases[] = {
        {1, 300, {1, 2}}, {2, 300, {1, 2, 3, 4}}, {3, 1e300, {1, 2, 3, 4, 5, 6}}, {23, 1e300, all}};
    // clang-format on
    for (const auto& c : cases) {
        auto s = ModelWithPoints(c.points, c.maxSensitivity);
        Calibrate(*s);
        EXPECT_EQ(ActiveTerms(*s), c.active) << c.points << " points";
    }
    // Terms 1 to 4 stay when every flag is off.
    auto s = ModelWithPoints(3);
    for (int k = 1; k <= 22; ++k) s->TermEnable[k] = 0;
    Calibrate(*s);
    EXPECT_EQ(ActiveTerms(*s), (std::vector<int>{1, 2, 3, 4}));
}

TEST(FitLadder, OneOrIdenticalPointsFitTheTwoOffsets) {
    // With default counts the offsets carry the whole shift. Stage 2 stops
    // once a pass moves the offsets by less than 1e-6; what it leaves is a
    // small fraction of that.
    auto s = ModelWithPoints(1);
    Calibrate(*s);
    ComputeResiduals(*s);
    EXPECT_TRUE(std::fabs(s->TermCoef[1]) < 1e-6 && std::fabs(s->TermCoef[2]) < 1e-6);
    EXPECT_LT(s->CalPoints[1].DistErr, 1e-7);
    EXPECT_EQ(s->RMSErrSel, s->MaxErrSel);
    // One direction determines two angles: with the point six times, anything
    // beyond terms 1 and 2 is singular and the ladder drops it.
    for (int i = 2; i <= 6; ++i) s->CalPoints[i] = s->CalPoints[1];
    s->NumCalPoints = 6;
    Calibrate(*s);
    EXPECT_EQ(ActiveTerms(*s), (std::vector<int>{1, 2}));
    EXPECT_LE(s->Sensitivity, s->MaxSensitivity);
}

TEST(FitLadder, FlagsOffZeroMaxSensitivityAndUnusedPoints) {
    // The mount has a cone error but flag 1 is off: term 5 stays out with a
    // zero coefficient and the error in the residuals.
    auto s = ModelWithPoints(30, 300, false);
    Calibrate(*s);
    ComputeResiduals(*s);
    EXPECT_TRUE(!s->TermActive[5] && s->TermCoef[5] == 0.0);
    EXPECT_GT(s->RMSErrSel, 1e-5);
    // An unused point far off takes no part.
    auto withExtra = std::make_unique<ModelState>(*s);
    CalPoint& extra = withExtra->CalPoints[++withExtra->NumCalPoints];
    extra = withExtra->CalPoints[1];
    extra.ThetaEnc += 0.1;
    extra.Used = false;
    Calibrate(*withExtra);
    EXPECT_EQ(withExtra->ErrorNorth, s->ErrorNorth);
    EXPECT_EQ(withExtra->TermCoef[3], s->TermCoef[3]);
    // MaxSensitivity 0 drops every term.
    s = ModelWithPoints(10, 0);
    Calibrate(*s);
    EXPECT_TRUE(ActiveTerms(*s).empty());
    EXPECT_TRUE(s->ErrorNorth == 0 && s->ThetaEncOffset == 0);
    for (int t = 1; t <= 46; ++t) EXPECT_EQ(s->TermCoef[t], 0.0) << "term " << t;
}

TEST(FitWithoutPoints, IsTheIdentityModelAndKeepsSensitivity) {
    auto s = FreshModel();
    s->TermCoef[1] = 0.5;
    s->TermCoef[3] = 0.25;
    s->TermCoef[9] = 0.1;
    s->TermActive[9] = true;
    s->Sensitivity = 42;
    Calibrate(*s);
    for (int t = 1; t <= 46; ++t) EXPECT_EQ(s->TermCoef[t], 0.0) << "term " << t;
    EXPECT_TRUE(ActiveTerms(*s).empty());
    EXPECT_TRUE(s->PhiEncOffset == 0 && s->ErrorNorth == 0);
    EXPECT_EQ(s->Sensitivity, 42.0);
}

}  // namespace
