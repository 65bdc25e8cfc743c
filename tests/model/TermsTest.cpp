// The 46 correction vectors and the corrected pointing vector.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "model/Constants.h"
#include "model/Frames.h"
#include "model/ModelState.h"
#include "model/Terms.h"

namespace {

// Axis positions to check at, radians; negative Theta included, and Phi
// outside 0..2 pi, since the model takes unwrapped angles.
struct Angles {
    double Theta;
    double Phi;
};
const Angles kPositions[] = {{0.7, 1.3},  {-0.4, 4.0}, {2.5, -0.9},
                             {-2.9, 5.9}, {1.2, 7.5},  {0.0, 0.3}};

// The correction vectors written out from the table of terms, one by one:
// Vt = dP/dTheta, Vp = dP/dPhi, and the rest as products of sines and cosines
// of multiples of the angles.
Vec3 ExpectedTerm(int i, double T, double P) {
    using std::cos;
    using std::sin;
    const Vec3 Vt{cos(T) * cos(P), cos(T) * sin(P), -sin(T)};
    const Vec3 Vp{-sin(T) * sin(P), sin(T) * cos(P), 0.0};
    auto times = [](double f, Vec3 v) { return Vec3{f * v.x, f * v.y, f * v.z}; };
    switch (i) {
        case 1:
            return Vp;
        case 2:
            return Vt;
        case 3:
            return {cos(T), 0.0, -sin(T) * cos(P)};
        case 4:
            return {0.0, cos(T), -sin(T) * sin(P)};
        case 5:
            return {-sin(P), cos(P), 0.0};
        case 6:
            return {-cos(T) * sin(P), cos(T) * cos(P), 0.0};
        case 7:
            return times(sin(T), Vt);
        case 8:
            return times(cos(T), Vt);
        case 9:
            return times(sin(P), Vp);
        case 10:
            return times(cos(P), Vp);
        case 11:
            return times(sin(P), Vt);
        case 12:
            return times(cos(P), Vt);
        case 13:
            return times(sin(T) * cos(P), Vt);
        case 14:
            return times(cos(T) * cos(P), Vt);
        case 15:
            return times(sin(T) * cos(P), Vp);
        case 16:
            return times(cos(T) * cos(P), Vp);
        case 17:
            return times(sin(T) * sin(P), Vt);
        case 18:
            return times(cos(T) * sin(P), Vt);
        case 19:
            return times(sin(2 * T), Vt);
        case 20:
            return times(cos(2 * T), Vt);
        case 21:
            return times(sin(2 * P), Vp);
        case 22:
            return times(cos(2 * P), Vp);
        case 23:
            return times(sin(2 * P), Vt);
        case 24:
            return times(cos(2 * P), Vt);
        case 25:
            return times(sin(T) * sin(P), Vp);
        case 26:
            return times(cos(T) * sin(P), Vp);
        case 27:
            return times(sin(3 * T), Vt);
        case 28:
            return times(cos(3 * T), Vt);
        case 29:
            return times(sin(3 * P), Vp);
        case 30:
            return times(cos(3 * P), Vp);
        case 31:
            return times(sin(3 * P), Vt);
        case 32:
            return times(cos(3 * P), Vt);
        case 33:
            return times(sin(4 * P), Vt);
        case 34:
            return times(cos(4 * P), Vt);
        case 35:
            return times(sin(5 * P), Vt);
        case 36:
            return times(cos(5 * P), Vt);
        case 37:
            return times(sin(6 * P), Vt);
        case 38:
            return times(cos(6 * P), Vt);
        case 39:
            return times(sin(4 * P), Vp);
        case 40:
            return times(cos(4 * P), Vp);
        case 41:
            return times(sin(5 * P), Vp);
        case 42:
            return times(cos(5 * P), Vp);
        case 43:
            return times(sin(4 * T), Vt);
        case 44:
            return times(cos(4 * T), Vt);
        case 45:
            return times(sin(5 * T), Vt);
        case 46:
            return times(cos(5 * T), Vt);
        default:
            return {};
    }
}

Vec3 Row(const TermTable& B, int i) {
    return Vec3{B[i][1], B[i][2], B[i][3]};
}

void ExpectVecNear(Vec3 want, Vec3 got, double tol, const std::string& what) {
    EXPECT_NEAR(want.x, got.x, tol) << what << " x";
    EXPECT_NEAR(want.y, got.y, tol) << what << " y";
    EXPECT_NEAR(want.z, got.z, tol) << what << " z";
}

std::string Where(int i, Angles a) {
    return "term " + std::to_string(i) + " at Theta " + std::to_string(a.Theta) + " Phi " +
           std::to_string(a.Phi);
}

// Central difference of a vector function of one angle; step 1e-5 keeps
// truncation (h^2/6 ~ 2e-11) and rounding (eps/h ~ 2e-11) both far below the
// 1e-9 tolerance used with it.
template <class F>
Vec3 Derivative(F f) {
    const double h = 1e-5;
    const Vec3 a = f(h), b = f(-h);
    return Vec3{(a.x - b.x) / (2 * h), (a.y - b.y) / (2 * h), (a.z - b.z) / (2 * h)};
}

// ---------------------------------------------------------------------------

TEST(TermVectors, EveryRowMatchesItsClosedForm) {
    // Products of at most four values below 1: a few roundings apart at most.
    TermTable B{};
    for (const Angles a : kPositions) {
        TermBasis(a.Theta, a.Phi, B);
        for (int i = 1; i <= kNumTerms; ++i)
            ExpectVecNear(ExpectedTerm(i, a.Theta, a.Phi), Row(B, i), 1e-15, Where(i, a));
    }
}

TEST(TermVectors, RowZeroAndColumnZeroAreLeftAlone) {
    TermTable B;
    for (auto& row : B) row.fill(7.0);
    TermBasis(0.7, 1.3, B);
    for (int c = 0; c <= 3; ++c) EXPECT_EQ(B[0][c], 7.0) << "row 0 column " << c;
    for (int i = 1; i <= kNumTerms; ++i) {
        EXPECT_EQ(B[i][0], 7.0) << "column 0 of row " << i;
        for (int c = 1; c <= 3; ++c)
            EXPECT_NE(B[i][c], 7.0) << "row " << i << " column " << c << " not written";
    }
}

TEST(TermVectors, LowTermsAreTheDerivativesOfPointingAndRotations) {
    // Terms 1 and 2: dP/dPhi and dP/dTheta. Terms 3 and 4: the derivatives of
    // RotateXZ and RotateYZ at angle 0, taken at P, so that small coefficients
    // act like ErrorNorth and ErrorWest.
    TermTable B{};
    for (const Angles a : kPositions) {
        TermBasis(a.Theta, a.Phi, B);
        const Vec3 P = AnglesToVec(a.Theta, a.Phi);
        ExpectVecNear(Derivative([&](double h) { return AnglesToVec(a.Theta, a.Phi + h); }),
                      Row(B, 1), 1e-9, Where(1, a));
        ExpectVecNear(Derivative([&](double h) { return AnglesToVec(a.Theta + h, a.Phi); }),
                      Row(B, 2), 1e-9, Where(2, a));
        ExpectVecNear(Derivative([&](double h) {
                          Vec3 v = P;
                          RotateXZ(v, h);
                          return v;
                      }),
                      Row(B, 3), 1e-9, Where(3, a));
        ExpectVecNear(Derivative([&](double h) {
                          Vec3 v = P;
                          RotateYZ(v, h);
                          return v;
                      }),
                      Row(B, 4), 1e-9, Where(4, a));
    }
}

TEST(TermVectors, AtTheAxisPole) {
    // Theta 0: term 1 vanishes, terms 3 and 4 are the unit x and y vectors,
    // term 5 (cone) is (-sin Phi, cos Phi, 0) and not zero.
    TermTable B{};
    TermBasis(0.0, 0.8, B);
    for (int c = 1; c <= 3; ++c) EXPECT_EQ(B[1][c], 0.0) << "term 1 component " << c;
    EXPECT_EQ(B[3][1], 1.0);
    EXPECT_EQ(B[3][2], 0.0);
    EXPECT_EQ(B[3][3], 0.0);
    EXPECT_EQ(B[4][1], 0.0);
    EXPECT_EQ(B[4][2], 1.0);
    EXPECT_EQ(B[4][3], 0.0);
    EXPECT_NEAR(-std::sin(0.8), B[5][1], 1e-16);
    EXPECT_NEAR(std::cos(0.8), B[5][2], 1e-16);
    EXPECT_EQ(B[5][3], 0.0);
}

TEST(TermVectors, TheTwoAxisPositionsOfADirectionDiffer) {
    // (-Theta, Phi + pi) points where (Theta, Phi) does, but Vt turns round,
    // Vp stays, and the cone term turns round. Tolerance: the short half turn
    // (4.1e-10 above pi) used for the second position.
    const double T = 0.9, P = 2.1;
    TermTable B1{}, B2{};
    TermBasis(T, P, B1);
    TermBasis(-T, P + kHalfTurn, B2);
    ExpectVecNear(AnglesToVec(T, P), AnglesToVec(-T, P + kHalfTurn), 1e-9, "same direction");
    const Vec3 t1 = Row(B1, 2), t2 = Row(B2, 2);
    ExpectVecNear({-t1.x, -t1.y, -t1.z}, t2, 1e-9, "Vt reversed");
    ExpectVecNear(Row(B1, 1), Row(B2, 1), 1e-9, "Vp kept");
    const Vec3 c1 = Row(B1, 5), c2 = Row(B2, 5);
    ExpectVecNear({-c1.x, -c1.y, -c1.z}, c2, 1e-9, "cone reversed");
}

// ---------------------------------------------------------------------------

std::unique_ptr<ModelState> ModelWithRealEncoders() {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    s->PhiCountsPerRev = 36000;
    s->ThetaCountsPerRev = 36000;
    s->PhiSF = 1.0005;
    s->ThetaSF = 0.9995;
    s->ThetaEncOffset = 120;
    s->PhiEncOffset = -40;
    return s;
}

TEST(CorrectedPointing, WithoutActiveTermsItIsThePlainPointingVector) {
    // Coefficients of inactive terms are not read, and the flags are not
    // either: the result is bit for bit the uncorrected vector.
    auto s = ModelWithRealEncoders();
    for (int i = 1; i <= kNumTerms; ++i) s->TermCoef[i] = 1e-3 * i;
    for (int k = 1; k <= kNumTermEnable; ++k) s->TermEnable[k] = 1;
    const double readings[][2] = {{2000, 5000}, {-7000, 30000}, {15000, -100}};
    for (const auto& r : readings) {
        double Theta = 0, Phi = 0;
        EncodersToAngles(*s, r[0], r[1], Theta, Phi);
        const Vec3 want = AnglesToVec(Theta, Phi);
        const Vec3 got = EncoderToPointing(*s, r[0], r[1]);
        EXPECT_EQ(want.x, got.x) << "ThetaEnc " << r[0];
        EXPECT_EQ(want.y, got.y) << "ThetaEnc " << r[0];
        EXPECT_EQ(want.z, got.z) << "ThetaEnc " << r[0];
    }
}

TEST(CorrectedPointing, ActiveTermsAddTheirScaledVectors) {
    // C = P + sum of coefficient x term vector over active terms, made unit,
    // at a reading whose Theta is negative (beyond the axis: not wrapped).
    auto s = ModelWithRealEncoders();
    const int active[] = {1, 2, 3, 4, 5, 6, 9, 14, 23, 30, 37, 46};
    for (int i : active) {
        s->TermActive[i] = true;
        s->TermCoef[i] = 1e-4 * (i % 7 - 3) + 2e-5;
    }
    s->TermCoef[20] = 5.0;  // inactive: must be ignored
    for (const double thetaEnc : {-4000.0, 6000.0, 11000.0}) {
        const double phiEnc = 23000;
        double Theta = 0, Phi = 0;
        EncodersToAngles(*s, thetaEnc, phiEnc, Theta, Phi);
        Vec3 want = AnglesToVec(Theta, Phi);
        for (int i : active) {
            const Vec3 b = ExpectedTerm(i, Theta, Phi);
            want.x += s->TermCoef[i] * b.x;
            want.y += s->TermCoef[i] * b.y;
            want.z += s->TermCoef[i] * b.z;
        }
        const double n = std::sqrt(want.x * want.x + want.y * want.y + want.z * want.z);
        want = Vec3{want.x / n, want.y / n, want.z / n};
        ExpectVecNear(want, EncoderToPointing(*s, thetaEnc, phiEnc), 2e-15,
                      "ThetaEnc " + std::to_string(thetaEnc) + " Theta " + std::to_string(Theta));
    }
}

TEST(CorrectedPointing, SmallOffsetTermsShiftTheAngles) {
    // A coefficient e of term 1 turns Phi by e, of term 2 Theta by e, to first
    // order; the rest is of order e^2 = 1e-12.
    auto s = ModelWithRealEncoders();
    const double e = 1e-6;
    const double thetaEnc = 7000, phiEnc = 12000;
    double Theta = 0, Phi = 0;
    EncodersToAngles(*s, thetaEnc, phiEnc, Theta, Phi);
    s->TermActive[1] = true;
    s->TermCoef[1] = e;
    ExpectVecNear(AnglesToVec(Theta, Phi + e), EncoderToPointing(*s, thetaEnc, phiEnc), 2e-12,
                  "term 1");
    s->TermActive[1] = false;
    s->TermActive[2] = true;
    s->TermCoef[2] = e;
    ExpectVecNear(AnglesToVec(Theta + e, Phi), EncoderToPointing(*s, thetaEnc, phiEnc), 2e-12,
                  "term 2");
}

TEST(CorrectedPointing, FlagsChangeNothingUntilTheNextFit) {
    auto s = ModelWithRealEncoders();
    s->TermActive[7] = true;
    s->TermCoef[7] = 3e-4;
    const Vec3 before = EncoderToPointing(*s, 5000, 9000);
    EnableAll(*s);
    Vec3 after = EncoderToPointing(*s, 5000, 9000);
    EXPECT_EQ(before.x, after.x);
    EXPECT_EQ(before.y, after.y);
    EXPECT_EQ(before.z, after.z);
    DisableAll(*s);
    after = EncoderToPointing(*s, 5000, 9000);
    EXPECT_EQ(before.x, after.x);
    EXPECT_EQ(before.z, after.z);
}

}  // namespace
