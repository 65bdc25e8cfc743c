// The 46 correction vectors, the corrected pointing vector, and the four
// ready-made sets of term flags.
#include <array>
#include <cmath>
#include <set>

#include "ModelTestSupport.h"
#include "model/Constants.h"
#include "model/Frames.h"
#include "model/Terms.h"

namespace {

using namespace modeltest;

// Axis positions to check at, radians; negative Theta included, and Phi
// outside 0..2 pi, since the model takes unwrapped angles.
const double kPositions[][2] = {{0.7, 1.3},  {-0.4, 4.0}, {2.5, -0.9},
                                {-2.9, 5.9}, {1.2, 7.5},  {0.0, 0.3}};

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
    return {Vec3{}, Vp, Vt, {cos(T), 0.0, -sin(T) * cos(P)}, {0.0, cos(T), -sin(T) * sin(P)},
            {-sin(P), cos(P), 0.0}, {-cos(T) * sin(P), cos(T) * cos(P), 0.0},                 //  1-6
            t(sin(T)), t(cos(T)), p(sin(P)), p(cos(P)), t(sin(P)), t(cos(P)),                  //  7-12
            t(sin(T) * cos(P)), t(cos(T) * cos(P)), p(sin(T) * cos(P)), p(cos(T) * cos(P)),    // 13-16
            t(sin(T) * sin(P)), t(cos(T) * sin(P)), t(sin(2 * T)), t(cos(2 * T)),              // 17-20
            p(sin(2 * P)), p(cos(2 * P)), t(sin(2 * P)), t(cos(2 * P)),                        // 21-24
            p(sin(T) * sin(P)), p(cos(T) * sin(P)), t(sin(3 * T)), t(cos(3 * T)),              // 25-28
            p(sin(3 * P)), p(cos(3 * P)), t(sin(3 * P)), t(cos(3 * P)),                        // 29-32
            t(sin(4 * P)), t(cos(4 * P)), t(sin(5 * P)), t(cos(5 * P)),                        // 33-36
            t(sin(6 * P)), t(cos(6 * P)), p(sin(4 * P)), p(cos(4 * P)),                        // 37-40
            p(sin(5 * P)), p(cos(5 * P)), t(sin(4 * T)), t(cos(4 * T)),                        // 41-44
            t(sin(5 * T)), t(cos(5 * T))};                                                     // 45-46
    // clang-format on
}

Vec3 Row(const TermTable& B, int i) {
    return Vec3{B[i][1], B[i][2], B[i][3]};
}

std::string Where(int i, double T, double P) {
    return "term " + std::to_string(i) + " at Theta " + std::to_string(T) + " Phi " +
           std::to_string(P);
}

// Central difference; step 1e-5 keeps truncation (h^2/6 ~ 2e-11) and
// rounding (eps/h ~ 2e-11) both far below the 1e-9 tolerance used with it.
template <class F>
Vec3 Derivative(F f) {
    const double h = 1e-5;
    const Vec3 a = f(h), b = f(-h);
    return Vec3{(a.x - b.x) / (2 * h), (a.y - b.y) / (2 * h), (a.z - b.z) / (2 * h)};
}

TEST(TermVectors, EveryRowMatchesItsClosedFormAndLeavesIndexZeroAlone) {
    // Products of at most four values below 1: a few roundings apart at most.
    TermTable B;
    for (auto& row : B) row.fill(7.0);
    for (const auto& [T, P] : kPositions) {
        TermBasis(T, P, B);
        const auto want = ExpectedTerms(T, P);
        for (int i = 1; i <= kNumTerms; ++i) {
            ExpectVecNear(want[i], Row(B, i), 1e-15, Where(i, T, P));
            EXPECT_EQ(B[i][0], 7.0) << "column 0 of row " << i;
        }
        for (int c = 0; c <= 3; ++c) EXPECT_EQ(B[0][c], 7.0) << "row 0 column " << c;
    }
}

TEST(TermVectors, LowTermsAreTheDerivativesOfPointingAndRotations) {
    // Terms 1 and 2: dP/dPhi and dP/dTheta. Terms 3 and 4: the derivatives of
    // RotateXZ and RotateYZ at angle 0, taken at P, so that small coefficients
    // act like ErrorNorth and ErrorWest.
    TermTable B{};
    for (const auto& [T, P] : kPositions) {
        TermBasis(T, P, B);
        const Vec3 v = AnglesToVec(T, P);
        auto turned = [&](void (*rotate)(Vec3&, double)) {
            return Derivative([&](double h) {
                Vec3 w = v;
                rotate(w, h);
                return w;
            });
        };
        ExpectVecNear(Derivative([&](double h) { return AnglesToVec(T, P + h); }), Row(B, 1), 1e-9,
                      Where(1, T, P));
        ExpectVecNear(Derivative([&](double h) { return AnglesToVec(T + h, P); }), Row(B, 2), 1e-9,
                      Where(2, T, P));
        ExpectVecNear(turned(RotateXZ), Row(B, 3), 1e-9, Where(3, T, P));
        ExpectVecNear(turned(RotateYZ), Row(B, 4), 1e-9, Where(4, T, P));
    }
}

TEST(TermVectors, AtTheAxisPoleAndAtTheOtherAxisPosition) {
    // Theta 0: term 1 vanishes, terms 3 and 4 are the unit x and y vectors,
    // the cone term 5 is (-sin Phi, cos Phi, 0) and not zero. Exact but for
    // the library's sine and cosine.
    TermTable B1{}, B2{};
    TermBasis(0.0, 0.8, B1);
    ExpectVecNear({0, 0, 0}, Row(B1, 1), 0, "term 1 at the pole");
    ExpectVecNear({1, 0, 0}, Row(B1, 3), 0, "term 3 at the pole");
    ExpectVecNear({0, 1, 0}, Row(B1, 4), 0, "term 4 at the pole");
    ExpectVecNear({-std::sin(0.8), std::cos(0.8), 0}, Row(B1, 5), 1e-16, "cone at the pole");
    // (-Theta, Phi + pi) points where (Theta, Phi) does, but Vt turns round,
    // Vp stays, and the cone term turns round. Tolerance: the short half turn
    // (4.1e-10 above pi) of the second position.
    const double T = 0.9, P = 2.1;
    TermBasis(T, P, B1);
    TermBasis(-T, P + kHalfTurn, B2);
    auto minus = [](Vec3 v) { return Vec3{-v.x, -v.y, -v.z}; };
    ExpectVecNear(minus(Row(B1, 2)), Row(B2, 2), 1e-9, "Vt reversed");
    ExpectVecNear(Row(B1, 1), Row(B2, 1), 1e-9, "Vp kept");
    ExpectVecNear(minus(Row(B1, 5)), Row(B2, 5), 1e-9, "cone reversed");
}

std::unique_ptr<ModelState> ModelWithRealEncoders() {
    auto s = FreshModel();
    s->PhiCountsPerRev = s->ThetaCountsPerRev = 36000;
    s->PhiSF = 1.0005;
    s->ThetaSF = 0.9995;
    s->ThetaEncOffset = 120;
    s->PhiEncOffset = -40;
    return s;
}

TEST(CorrectedPointing, WithoutActiveTermsItIsThePlainPointingVector) {
    // Coefficients of inactive terms and the flags are not read: bit for bit
    // the uncorrected vector.
    auto s = ModelWithRealEncoders();
    for (int i = 1; i <= kNumTerms; ++i) s->TermCoef[i] = 1e-3 * i;
    EnableAll(*s);
    const double readings[][2] = {{2000, 5000}, {-7000, 30000}, {15000, -100}};
    for (const auto& [thetaEnc, phiEnc] : readings) {
        double Theta = 0, Phi = 0;
        EncodersToAngles(*s, thetaEnc, phiEnc, Theta, Phi);
        ExpectVecNear(AnglesToVec(Theta, Phi), EncoderToPointing(*s, thetaEnc, phiEnc), 0,
                      "ThetaEnc " + std::to_string(thetaEnc));
    }
}

TEST(CorrectedPointing, ActiveTermsAddTheirScaledVectors) {
    // C = P + sum of coefficient x term vector over active terms, made unit,
    // also where Theta is negative (beyond the axis: not wrapped).
    auto s = ModelWithRealEncoders();
    const int active[] = {1, 2, 3, 4, 5, 6, 9, 14, 23, 30, 37, 46};
    for (int i : active) {
        s->TermActive[i] = true;
        s->TermCoef[i] = 1e-4 * (i % 7 - 3) + 2e-5;
    }
    s->TermCoef[20] = 5.0;  // inactive: must be ignored
    for (const double thetaEnc : {-4000.0, 6000.0, 11000.0}) {
        double Theta = 0, Phi = 0;
        EncodersToAngles(*s, thetaEnc, 23000, Theta, Phi);
        Vec3 want = AnglesToVec(Theta, Phi);
        const auto terms = ExpectedTerms(Theta, Phi);
        for (int i : active) {
            want.x += s->TermCoef[i] * terms[i].x;
            want.y += s->TermCoef[i] * terms[i].y;
            want.z += s->TermCoef[i] * terms[i].z;
        }
        const double n = std::sqrt(want.x * want.x + want.y * want.y + want.z * want.z);
        ExpectVecNear({want.x / n, want.y / n, want.z / n}, EncoderToPointing(*s, thetaEnc, 23000),
                      2e-15, "Theta " + std::to_string(Theta));
    }
}

TEST(CorrectedPointing, SmallOffsetTermsShiftTheAnglesAndFlagsWaitForTheFit) {
    // A coefficient e of term 1 turns Phi by e, of term 2 Theta by e, to first
    // order; the rest is of order e^2 = 1e-12.
    auto s = ModelWithRealEncoders();
    const double e = 1e-6;
    double Theta = 0, Phi = 0;
    EncodersToAngles(*s, 7000, 12000, Theta, Phi);
    s->TermActive[1] = true;
    s->TermCoef[1] = e;
    ExpectVecNear(AnglesToVec(Theta, Phi + e), EncoderToPointing(*s, 7000, 12000), 2e-12, "term 1");
    s->TermActive[1] = false;
    s->TermActive[2] = true;
    s->TermCoef[2] = e;
    const Vec3 before = EncoderToPointing(*s, 7000, 12000);
    ExpectVecNear(AnglesToVec(Theta + e, Phi), before, 2e-12, "term 2");
    // The flags change nothing until the next fit.
    EnableAll(*s);
    ExpectVecNear(before, EncoderToPointing(*s, 7000, 12000), 0, "after EnableAll");
    DisableAll(*s);
    ExpectVecNear(before, EncoderToPointing(*s, 7000, 12000), 0, "after DisableAll");
}

TEST(TermFlagPresets, EachSetsItsFlagsAndNothingElse) {
    // Flags outside 1..22 and the fit tables carry marks that must stay.
    std::set<int> all, gem;
    for (int k = 1; k <= 22; ++k) all.insert(k);
    for (int k = 1; k <= 14; ++k) gem.insert(k);
    const struct {
        void (*preset)(ModelState&);
        int16_t start;
        std::set<int> on;
        const char* name;
    } cases[] = {{EnableAll, 0, all, "EnableAll"},
                 {EnableAll, 1, all, "EnableAll"},
                 {DisableAll, 1, {1, 2}, "DisableAll from all on"},  // keeps cone and hub
                 {EnableAltAz, 0, {1, 2, 3, 4, 5, 10, 11, 14, 15}, "EnableAltAz"},
                 {EnableAltAz, 1, {1, 2, 3, 4, 5, 10, 11, 14, 15}, "EnableAltAz"},
                 {EnableGEM, 0, gem, "EnableGEM"},
                 {EnableGEM, 1, gem, "EnableGEM"}};
    for (const auto& c : cases) {
        auto s = FreshModel();
        for (int k = 1; k <= kNumTermEnable; ++k) s->TermEnable[k] = c.start;
        s->TermEnable[0] = s->TermEnable[23] = 5;
        s->TermActive[9] = true;
        s->TermCoef[9] = 0.25;
        c.preset(*s);
        for (int k = 1; k <= kNumTermEnable; ++k)
            EXPECT_EQ(s->TermEnable[k], c.on.count(k) ? 1 : 0)
                << c.name << " from " << c.start << " flag " << k;
        EXPECT_EQ(s->TermEnable[0], 5) << c.name;
        EXPECT_EQ(s->TermEnable[23], 5) << c.name;
        EXPECT_TRUE(s->TermActive[9] && s->TermCoef[9] == 0.25) << c.name << " touched the fit";
    }
    // Hub on, cone off: DisableAll keeps both as they were.
    auto s = FreshModel();
    s->TermEnable[2] = 1;
    DisableAll(*s);
    EXPECT_EQ(s->TermEnable[1], 0);
    EXPECT_EQ(s->TermEnable[2], 1);
}

}  // namespace
