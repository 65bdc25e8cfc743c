// The 46 correction vectors, the corrected pointing vector, and the four
// ready-made sets of term flags.
#include <array>

#include "ModelTestSupport.h"
#include "model/Terms.h"

namespace {

using namespace modeltest;

// Axis positions to check at, radians; negative Theta included, and Phi
// outside 0..2 pi, since the model takes unwrapped angles.
// clang-format off
const double kPositions[][2] = {
    {0.7, 1.3}, {-0.4, 4.0}, {2.5, -0.9}, {-2.9, 5.9}, {1.2, 7.5}, {0.0, 0.3}};
// clang-format on

// The correction vectors written out from the table of terms: Vt = dP/dTheta,
// Vp = dP/dPhi, and the rest as products of sines and cosines of multiples of
// the angles along Vt (t) or Vp (p). Index = term number.
std::array<Vec3, 47> ExpectedTerms(double T, double P) {
    using std::cos;
    using std::sin;
    const Vec3 Vt{cos(T) * cos(P), cos(T) * sin(P), -sin(T)};
    const Vec3 Vp{-sin(T) * sin(P), sin(T) * cos(P), 0.0};
    auto t = [&](double f) { return Vec3{f * Vt.x, f * Vt.y, f * Vt.z}; };
    auto p = [&](double f) { return Vec3{f * Vp.x, f * Vp.y, f * Vp.z}; };
    // clang-format off
    return {Vec3{}, Vp, Vt, {cos(T), 0.0, -sin(T) * cos(P)},  // 1-3
            {0.0, cos(T), -sin(T) * sin(P)}, {-sin(P), cos(P), 0.0},  // 4-5
            {-cos(T) * sin(P), cos(T) * cos(P), 0.0},  // 6
            t(sin(T)), t(cos(T)), p(sin(P)), p(cos(P)), t(sin(P)), t(cos(P)),  // 7-12
            t(sin(T) * cos(P)), t(cos(T) * cos(P)), p(sin(T) * cos(P)), p(cos(T) * cos(P)), // 13-16
            t(sin(T) * sin(P)), t(cos(T) * sin(P)), t(sin(2 * T)), t(cos(2 * T)),  // 17-20
            p(sin(2 * P)), p(cos(2 * P)), t(sin(2 * P)), t(cos(2 * P)),  // 21-24
            p(sin(T) * sin(P)), p(cos(T) * sin(P)), t(sin(3 * T)), t(cos(3 * T)),  // 25-28
            p(sin(3 * P)), p(cos(3 * P)), t(sin(3 * P)), t(cos(3 * P)),  // 29-32
            t(sin(4 * P)), t(cos(4 * P)), t(sin(5 * P)), t(cos(5 * P)),  // 33-36
            t(sin(6 * P)), t(cos(6 * P)), p(sin(4 * P)), p(cos(4 * P)),  // 37-40
            p(sin(5 * P)), p(cos(5 * P)), t(sin(4 * T)), t(cos(4 * T)),  // 41-44
            t(sin(5 * T)), t(cos(5 * T))};  // 45-46
    // clang-format on
}

Vec3 Row(const TermTable& B, int i) {
    return Vec3{B[i][1], B[i][2], B[i][3]};
}

// Central difference; step 1e-5 keeps truncation (h^2/6 ~ 2e-11) and
// rounding (eps/h ~ 2e-11) both far below the 1e-9 tolerance used with it.
template <class F>
Vec3 Derivative(F f) {
    const double h = 1e-5;
    const Vec3 a = f(h), b = f(-h);
    return Vec3{(a.x - b.x) / (2 * h), (a.y - b.y) / (2 * h), (a.z - b.z) / (2 * h)};
}

TEST(TermVectors, EveryRowMatchesItsClosedFormAndTheLowOnesTheDerivatives) {
    // Closed forms: products of at most four values below 1, a few roundings
    // apart at most. Terms 1 and 2 are dP/dPhi and dP/dTheta; terms 3 and 4
    // the derivatives of RotateXZ and RotateYZ at angle 0, taken at P, so that
    // small coefficients act like ErrorNorth and ErrorWest. Row 0 and column
    // 0 are left alone.
    TermTable B;
    for (auto& row : B) row.fill(7.0);
    for (const auto& [T, P] : kPositions) {
        TermBasis(T, P, B);
        const auto want = ExpectedTerms(T, P);
        const std::string at = " at Theta " + std::to_string(T) + " Phi " + std::to_string(P);
        for (int i = 1; i <= kNumTerms; ++i) {
            ExpectVecNear(want[i], Row(B, i), 1e-15, "term " + std::to_string(i) + at);
            EXPECT_EQ(B[i][0], 7.0) << "column 0 of row " << i;
        }
        for (int c = 0; c <= 3; ++c) EXPECT_EQ(B[0][c], 7.0) << "row 0 column " << c;
        auto turned = [v = AnglesToVec(T, P)](void (*rotate)(Vec3&, double)) {
            return Derivative([&](double h) {
                Vec3 w = v;
                rotate(w, h);
                return w;
            });
        };
        ExpectVecNear(Derivative([&](double h) { return AnglesToVec(T, P + h); }), Row(B, 1), 1e-9,
                      "dP/dPhi" + at);
        ExpectVecNear(Derivative([&](double h) { return AnglesToVec(T + h, P); }), Row(B, 2), 1e-9,
                      "dP/dTheta" + at);
        ExpectVecNear(turned(RotateXZ), Row(B, 3), 1e-9, "RotateXZ" + at);
        ExpectVecNear(turned(RotateYZ), Row(B, 4), 1e-9, "RotateYZ" + at);
    }
}

TEST(TermVectors, TheOtherAxisPositionReversesThetaTerms) {
    // (-Theta, Phi + pi) points where (Theta, Phi) does, but Vt turns round,
    // Vp stays, and the cone term turns round. Tolerance: the short half turn
    // (4.1e-10 above pi) of the second position.
    TermTable B1{}, B2{};
    TermBasis(0.9, 2.1, B1);
    TermBasis(-0.9, 2.1 + kHalfTurn, B2);
    auto minus = [](Vec3 v) { return Vec3{-v.x, -v.y, -v.z}; };
    ExpectVecNear(minus(Row(B1, 2)), Row(B2, 2), 1e-9, "Vt reversed");
    ExpectVecNear(Row(B1, 1), Row(B2, 1), 1e-9, "Vp kept");
    ExpectVecNear(minus(Row(B1, 5)), Row(B2, 5), 1e-9, "cone reversed");
}

TEST(CorrectedPointing, IsThePlainVectorPlusTheActiveTermsMadeUnit) {
    // C = P + sum of coefficient x term vector over active terms, made unit.
    // Coefficients of inactive terms and the flags are not read, so without
    // active terms C is P bit for bit. Negative Theta (beyond the axis) is
    // not wrapped. Tolerance with terms: a few roundings.
    auto s = FreshModel();
    s->PhiCountsPerRev = s->ThetaCountsPerRev = 36000;
    s->PhiSF = 1.0005;
    s->ThetaSF = 0.9995;
    s->ThetaEncOffset = 120;
    s->PhiEncOffset = -40;
    for (int i = 1; i <= kNumTerms; ++i) s->TermCoef[i] = 1e-3 * i;
    EnableAll(*s);
    const int active[] = {1, 2, 3, 4, 5, 6, 9, 14, 23, 30, 37, 46};
    for (bool withTerms : {false, true}) {
        for (int i : active) s->TermActive[i] = withTerms;
        for (const double thetaEnc : {-4000.0, 6000.0, 15000.0}) {
            double Theta = 0, Phi = 0;
            EncodersToAngles(*s, thetaEnc, 23000, Theta, Phi);
            Vec3 w = AnglesToVec(Theta, Phi);
            const auto terms = ExpectedTerms(Theta, Phi);
            for (int i : active) {
                const double c = withTerms ? s->TermCoef[i] : 0;
                w = {w.x + c * terms[i].x, w.y + c * terms[i].y, w.z + c * terms[i].z};
            }
            const double n = withTerms ? std::sqrt(w.x * w.x + w.y * w.y + w.z * w.z) : 1;
            ExpectVecNear({w.x / n, w.y / n, w.z / n}, EncoderToPointing(*s, thetaEnc, 23000),
                          withTerms ? 2e-15 : 0, "Theta " + std::to_string(Theta));
        }
    }
}

TEST(CorrectedPointing, SmallOffsetTermsShiftTheAnglesAndFlagsWaitForTheFit) {
    // A coefficient e of term 1 turns Phi by e, of term 2 Theta by e, to first
    // order; the rest is of order e^2 = 1e-12.
    auto s = FreshModel();
    const double e = 1e-6;
    double Theta = 0, Phi = 0;
    EncodersToAngles(*s, 0.7, 1.2, Theta, Phi);
    s->TermActive[1] = true;
    s->TermCoef[1] = e;
    ExpectVecNear(AnglesToVec(Theta, Phi + e), EncoderToPointing(*s, 0.7, 1.2), 2e-12, "term 1");
    s->TermActive[1] = false;
    s->TermActive[2] = true;
    s->TermCoef[2] = e;
    const Vec3 before = EncoderToPointing(*s, 0.7, 1.2);
    ExpectVecNear(AnglesToVec(Theta + e, Phi), before, 2e-12, "term 2");
    // The flags change nothing until the next fit.
    EnableAll(*s);
    ExpectVecNear(before, EncoderToPointing(*s, 0.7, 1.2), 0, "after EnableAll");
    DisableAll(*s);
    ExpectVecNear(before, EncoderToPointing(*s, 0.7, 1.2), 0, "after DisableAll");
}

TEST(TermFlagPresets, EachSetsItsFlagsAndNothingElse) {
    // Flags 0 and 23, outside 1..22, carry the mark 5 and must keep it, and
    // so must the fit tables. DisableAll keeps cone and hub (flags 1 and 2)
    // as they were.
    // clang-format off
    const struct { void (*preset)(ModelState&); const char* start; const char* want; } cases[] = {
        {EnableAll,   "500000000000000000000005", "511111111111111111111115"},
        {EnableAll,   "511111111111111111111115", "511111111111111111111115"},
        {DisableAll,  "511111111111111111111115", "511000000000000000000005"},
        {DisableAll,  "501000000000000000000005", "501000000000000000000005"},
        {EnableAltAz, "500000000000000000000005", "511111000011001100000005"},
        {EnableAltAz, "511111111111111111111115", "511111000011001100000005"},
        {EnableGEM,   "500000000000000000000005", "511111111111111000000005"},
        {EnableGEM,   "511111111111111111111115", "511111111111111000000005"}};
    // clang-format on
    for (const auto& c : cases) {
        auto s = FreshModel();
        for (int k = 0; k <= 23; ++k) s->TermEnable[k] = static_cast<int16_t>(c.start[k] - '0');
        s->TermActive[9] = true;
        s->TermCoef[9] = 0.25;
        c.preset(*s);
        std::string flags;
        for (int k = 0; k <= 23; ++k) flags += std::to_string(s->TermEnable[k]);
        EXPECT_EQ(flags, c.want) << "from " << c.start;
        EXPECT_TRUE(s->TermActive[9] && s->TermCoef[9] == 0.25) << "from " << c.start;
    }
}

}  // namespace
