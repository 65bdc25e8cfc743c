// Axis angles, frames, encoder counts, correction vectors, term presets, model defaults.
#include <cstdlib>

#include "ModelTestSupport.h"
#include "model/InverseSolution.h"
#include "model/TermCaptions.h"
#include "model/Terms.h"

namespace {

using namespace modeltest;
using std::cos, std::sin;

constexpr double kDelta = 3.141592654 - kTruePi;  // what the short half turn adds

TEST(AxisAngles, QuadrantArctangentBothDirectionsAndTheOneShotWraps) {
    // On the axes a fraction of 3.141592654, exactly; -0 is "0 or above". Elsewhere the library's
    // atan2 to two roundings, in the left half plane plus the short half turn's excess.
    // clang-format off
    for (const auto& [y, x, want] : {std::tuple{0.0, -1.0, 3.141592654}, {-0.0, -1.0, 3.141592654},
             {-2.5, 0.0, -3.141592654 / 2}, {1.0, 0.0, 3.141592654 / 2}, {0.0, 0.0, 0.0},
             {0.3, -2.0, std::atan2(0.3, -2.0) + kDelta},
             {-0.3, -2.0, std::atan2(-0.3, -2.0) - kDelta}})
        EXPECT_NEAR(want, Atan2(y, x), 2e-15 * (y != 0 && x != 0)) << "Y " << y << " X " << x;
    // (cos h cos A, -cos h sin A, sin h) is zenith distance h and minus azimuth A in 0..2 pi. Tsign
    // -1 negates Theta and turns Phi a half turn, a full turn kept.
    for (const auto& [v, Tsign, wantTheta, wantPhi, tol] : {
             std::tuple{Vec3{cos(0.5) * cos(1.0), -cos(0.5) * sin(1.0), sin(0.5)}, 1,
                        kTruePi / 2 - 0.5, kFullTurn - 1, 1e-15},
             {Vec3{-3, 0, 0}, -1, -3.141592654 / 2, 6.283185308, 0.0}}) {
        // clang-format on
        double Theta = 1, Phi = 1;
        VecToAngles(v, int16_t(Tsign), Theta, Phi);
        EXPECT_NEAR(wantTheta, Theta, tol) << "Phi wanted " << wantPhi;
        EXPECT_NEAR(wantPhi, Phi, tol) << "Theta wanted " << wantTheta;
    }
    // WrapAxisAngles: each step once; -1e-20 rounds up to a turn, which the next step takes off;
    // minus a half turn of Theta goes to plus.
    for (const auto& [theta, phi, wantTheta, wantPhi] :
         {std::tuple{-kHalfTurn, -1e-20, kHalfTurn, 0.0},
          {kHalfTurn, -7.0, kHalfTurn, -7 + kFullTurn},
          {10.0, 13.0, 10 - kFullTurn, 13 - kFullTurn}}) {
        double Theta = theta, Phi = phi;
        WrapAxisAngles(Theta, Phi);
        EXPECT_TRUE(Theta == wantTheta && Phi == wantPhi) << theta << " " << phi;
    }
    EXPECT_EQ(DotVec({1, 2, 3}, {4, 5, 6}), 32.0);
}

TEST(MountFrame, ErrorsTipTheAxisNorthFirstAndAnEquatorialAxisIsThePole) {
    // sin and cos of 0.01 from their series, by hand. North first, then west: (sin e, cos e sin w,
    // cos e cos w); the other order is 6e-6 away.
    const double s1 = 0.009999833334166664, c1 = 0.9999500004166653;
    auto s = FreshModel();
    for (const auto& [north, west, want] :
         {std::tuple{0.01, 0.0, Vec3{s1, 0, c1}},
          {0.02, 0.01, Vec3{sin(0.02), cos(0.02) * s1, cos(0.02) * c1}}}) {
        s->ErrorNorth = north, s->ErrorWest = west;
        ExpectVecNear(want, MountToHorizon(*s, {0, 0, 1}), 1e-16, "north, west");
    }
    // Equatorial: a star at hour angle H, declination d (textbook horizon formulae) sits at (-cos d
    // cos H, cos d sin H, sin d), tilted about y by the short colatitude's kDelta / 2.
    s->ErrorNorth = s->ErrorWest = 0, s->IsAltAz = false;
    for (double latDeg : {33.5, -20.0, 89.0}) {
        s->Latitude = latDeg;
        const double L = latDeg * 3.141592654 / 180, a = kDelta / 2;
        for (const auto& [H, d] : {std::pair{0.0, kTruePi / 2}, {1.2, 0.3}, {-2.0, -0.5}}) {
            const Vec3 star{sin(d) * cos(L) - cos(d) * cos(H) * sin(L), cos(d) * sin(H),
                            sin(d) * sin(L) + cos(d) * cos(H) * cos(L)};
            const Vec3 w{-cos(d) * cos(H), cos(d) * sin(H), sin(d)};
            ExpectVecNear({w.x - w.z * a, w.y, w.z + w.x * a}, HorizonToMount(*s, star), 2e-15,
                          "latitude " + std::to_string(latDeg));
        }
    }
}

TEST(EncoderScale, CountsAnglesDirectionsAndTheOneShotPhiWrap) {
    // Default counts are radians, Theta up from the horizon, Phi clockwise from above: they read
    // altitude and azimuth (to the short pi, 1.8e-10 per turn).
    double Theta = 0, Phi = 0, ThetaEnc = 0, PhiEnc = 0;
    EncodersToAltAz(*FreshModel(), 0.2, 5.5, Theta, Phi);
    EXPECT_TRUE(std::fabs(Theta - 0.2) < 1e-12 && std::fabs(Phi - 5.5) < 1e-9)
        << Theta << " " << Phi;
    // Real encoders, by hand to 30 digits with pi = 3.141592654: Theta = pi/2 - 2 pi 700 / (4096 x
    // 0.999), Phi = -2 pi 9000 / (36000 x 1.001); back, 4091.904 (pi/2 - 0.4) / 2 pi + 50 and -2 x
    // 36036 / 2 pi + 100 plus a scaled turn.
    auto s = FreshModel();
    s->PhiCountsPerRev = 36000, s->PhiSF = 1.001, s->PhiEncOffset = 100;
    s->ThetaCountsPerRev = 4096, s->ThetaSF = 0.999, s->ThetaEncOffset = 50;
    EncodersToAngles(*s, 750, 9100, Theta, Phi);
    EXPECT_NEAR(Theta, 0.49593491392677052, 1e-15);
    EXPECT_NEAR(Phi, -1.5692270999000999, 1e-15);
    AnglesToEncoders(*s, 0.4, 2.0, ThetaEnc, PhiEnc);
    EXPECT_NEAR(ThetaEnc, 812.477300731014505, 2e-11);
    EXPECT_NEAR(PhiEnc, 24665.3849429786705, 2e-11);
    // The Phi wrap tests the unscaled count but steps a scaled turn, each correction once: 1050 -
    // 1100 = -50; -10 + 1100 = 1090, then -1100.
    for (const auto& [offset, want] : {std::pair{1050.0, -50.0}, {-10.0, -10.0}}) {
        s->PhiCountsPerRev = 1000, s->PhiSF = 1.1, s->PhiEncOffset = offset;
        AnglesToEncoders(*s, 0.3, 0, ThetaEnc, PhiEnc);
        EXPECT_NEAR(PhiEnc, want, 1e-12) << "offset " << offset;
    }
}

TEST(TermVectors, EveryRowMatchesTheTableOfTerms) {
    // The table written out: Vp = dP/dPhi, Vt = dP/dTheta, the rotations, cone and hub, then terms
    // 7 to 46 as Vt (t) or Vp (p) times factors of Theta and Phi: 0 none, a..f sin(1..6 x), A..F
    // cos(1..6 x).
    const char* table =
        "ta0tA0p0ap0At0at0AtaAtAApaApAAtaatAatb0tB0p0bp0Bt0bt0BpaapAatc0tC0p0cp0C"
        "t0ct0Ct0dt0Dt0et0Et0ft0Fp0dp0Dp0ep0Etd0tD0te0tE0";
    auto factor = [](char code, double x) {
        if (code == '0') return 1.0;
        return code >= 'a' ? sin((code - 'a' + 1) * x) : cos((code - 'A' + 1) * x);
    };
    TermTable B;
    for (const auto& [T, P] : {std::pair{0.7, 1.3}, {-0.4, 4.0}, {2.5, -0.9}, {-2.9, 7.5}}) {
        TermBasis(T, P, B);
        const Vec3 Vt{cos(T) * cos(P), cos(T) * sin(P), -sin(T)};
        const Vec3 Vp{-sin(T) * sin(P), sin(T) * cos(P), 0};
        // clang-format off
        const Vec3 low[7] = {{}, Vp, Vt, {cos(T), 0, -sin(T) * cos(P)},
                             {0, cos(T), -sin(T) * sin(P)}, {-sin(P), cos(P), 0},
                             {-cos(T) * sin(P), cos(T) * cos(P), 0}};
        // clang-format on
        for (int i = 1; i <= kNumTerms; ++i) {
            const char* c = table + 3 * std::max(i - 7, 0);
            const double f = i < 7 ? 1 : factor(c[1], T) * factor(c[2], P);
            const Vec3 V = i < 7 ? low[i] : c[0] == 't' ? Vt : Vp;
            ExpectVecNear({f * V.x, f * V.y, f * V.z}, {B[i][1], B[i][2], B[i][3]}, 1e-15,
                          "term " + std::to_string(i) + " at " + std::to_string(T));
        }
    }
}

TEST(ModelDefaults, InitModelTermFlagPresetsAndCaptions) {
    // InitModel sets the model's table of defaults, the Path to the documents folder and no term
    // flag, and keeps points, terms and clock.
    auto s = std::make_unique<ModelState>();
    s->NumCalPoints = 3, s->TermCoef[7] = 1e-4, s->Hour = 5, s->ErrorNorth = 0.01;
    setenv("XDG_DOCUMENTS_DIR", "/tmp/aztrue-docs/", 1);
    InitModel(*s);
    unsetenv("XDG_DOCUMENTS_DIR");
    EXPECT_EQ(std::tuple(s->Latitude, s->Longitude, s->Temperature, s->Pressure, s->PhiCountsPerRev,
                         s->ThetaSF, s->MaxSensitivity, s->TimeZone, s->ErrorNorth, s->TermCoef[7]),
              std::tuple(33.5, -118.0, 16.0, 1018.0, 6.283185308, 1.0, 300.0, -8.0, 0.0, 1e-4));
    EXPECT_EQ(std::tuple(s->EnableRefraction, s->IsAltAz, s->IsGEM, s->PhiPosCW, s->ThetaPosUp,
                         s->DST, s->HelpersCreated),
              std::tuple(true, true, false, true, true, false, true));
    EXPECT_EQ(std::tuple(s->NumTerms, s->NumTermEnable, s->AutoAlignTarget, s->AutoAlignOrder,
                         s->NumCalPoints, s->Hour, s->TermEnable[1]),
              std::tuple(46, 22, 20, 0, 3, 5, 0));
    EXPECT_EQ(s->Version + " " + s->Path, "Aztrue 5.32 /tmp/aztrue-docs");
    // Presets write flags 1 to 22 only (0 and 23 carry the mark 5).
    for (const auto& [preset, start, want] :
         {std::tuple{&EnableAltAz, "511111111111111111111115", "511111000011001100000005"},
          {&EnableGEM, "511111111111111111111115", "511111111111111000000005"}}) {
        for (int k = 0; k <= 23; ++k) s->TermEnable[k] = int16_t(start[k] - '0');
        preset(*s);
        std::string flags;
        for (int k = 0; k <= 23; ++k) flags += std::to_string(s->TermEnable[k]);
        EXPECT_EQ(flags, want) << "from " << start;
    }
    // A report names a term by its group, row and column, trimmed.
    EXPECT_EQ(TermCaptionText(1) + "; " + TermCaptionText(7) + "; " + TermCaptionText(47),
              "Encoder Offsets, Phi; Theta Corrections, N=1, Sin(N*Theta); , ");
}

}  // namespace
