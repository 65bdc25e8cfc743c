// Encoder counts and axis angles: directions, counts per turn, scale factors,
// offsets and the one-shot wraps.

#include "ModelTestSupport.h"

namespace {

using namespace modeltest;

constexpr double kNo = NAN;  // a wanted value not checked

// Encoder settings of a case; the defaults are those of a fresh model.
struct Encoders {
    double phiCounts = 6.283185308, phiSF = 1, phiOffset = 0;
    double thetaCounts = 6.283185308, thetaSF = 1, thetaOffset = 0;
    bool cw = true, up = true;
};
// A 36000-count Phi encoder 0.1 % long and a 4096-count Theta encoder 0.1 %
// short, both with offsets.
constexpr Encoders kReal{36000, 1.001, 100, 4096, 0.999, 50};

std::unique_ptr<ModelState> ModelWith(const Encoders& e) {
    auto s = FreshModel();
    s->PhiCountsPerRev = e.phiCounts;
    s->PhiSF = e.phiSF;
    s->PhiEncOffset = e.phiOffset;
    s->ThetaCountsPerRev = e.thetaCounts;
    s->ThetaSF = e.thetaSF;
    s->ThetaEncOffset = e.thetaOffset;
    s->PhiPosCW = e.cw;
    s->ThetaPosUp = e.up;
    return s;
}

// One conversion each way: encoder settings, inputs, wanted outputs.
struct Case {
    Encoders e;
    double in1, in2, want1, want2, tol;
};
void ExpectConversions(bool toAngles, std::initializer_list<Case> cases) {
    for (const Case& c : cases) {
        double out1 = kNo, out2 = kNo;
        auto s = ModelWith(c.e);
        if (toAngles)
            EncodersToAngles(*s, c.in1, c.in2, out1, out2);
        else
            AnglesToEncoders(*s, c.in1, c.in2, out1, out2);
        EXPECT_TRUE(std::isnan(c.want1) || std::fabs(out1 - c.want1) <= c.tol)
            << "wanted " << c.want1 << " got " << out1 << " from " << c.in1 << " " << c.in2;
        EXPECT_TRUE(std::isnan(c.want2) || std::fabs(out2 - c.want2) <= c.tol)
            << "wanted " << c.want2 << " got " << out2 << " from " << c.in1 << " " << c.in2;
    }
}

TEST(EncoderScale, CountsToAngles) {
    // Defaults: 6.283185308 counts per turn, Theta counts up from the horizon
    // (ThetaEnc 0 is Theta pi/2), Phi counts clockwise against Phi; x * C / C
    // is exact for x = 1. Real encoders, worked out to 30 digits outside the
    // program: Phi = 6.283185308 x 9000 / (36000 x 1.001) = 1.5692270999000999,
    // Theta = 3.141592654/2 - 6.283185308 x 700 / (4096 x 0.999) =
    // 0.49593491392677052, a few roundings of values near 1. Not wrapped:
    // three turns of counts are three turns of angle, and a Theta reading far
    // above the scale gives Theta below -pi.
    // clang-format off
    ExpectConversions(true, {
        {{}, 0, 0, 3.141592654 / 2, 0, 0}, {{}, 0, 1, kNo, -1, 0}, {{.cw = false}, 0, 1, kNo, 1, 0},
        {{.up = false}, 0, 0, 0, kNo, 0},
        {{36000, 1.001, 100, 4096, 0.999, 50, false}, 750, 9100, 0.49593491392677052,
         1.5692270999000999, 1e-15},
        {kReal, 750, 9100, 0.49593491392677052, -1.5692270999000999, 1e-15},
        {{.cw = false}, 10, 3 * 6.283185308, 3.141592654 / 2 - 10, 3 * kFullTurn, 1e-14}});
    // clang-format on
}

TEST(EncoderScale, AnglesToCountsAndTheOneShotPhiWrap) {
    // The zenith needs half of 3.141592654 counts, one rounding in Ct t / Ct.
    // PhiPosCW: Phi -1 is PhiEnc 1, Phi 1 is PhiEnc -1 wrapped once. Counts
    // grow with Theta from the axis for ThetaPosUp false. Real encoders, by
    // hand to 30 digits: PhiEnc = -2 x 36036 / 6.283185308 + 100 =
    // -11370.6150570213, below 0, plus one scaled turn (36036):
    // 24665.3849429786705; ThetaEnc = 4091.904 x (3.141592654/2 - 0.4) /
    // 6.283185308 + 50 = 812.477300731014505; roundings at 2.5e4 (ulp
    // 3.6e-12). With 1000 counts per turn the wrap tests the unscaled count
    // (">=") but steps a scaled turn, and each of its two corrections acts
    // once: 1000 -> 0; 1050 - 1100 = -50 stays; -10 + 1100 = 1090, then 1100
    // off again; -1500 + 1000 stays negative; 2500 - 1000 stays above. Theta
    // counts are never wrapped.
    // clang-format off
    ExpectConversions(false, {
        {{}, 0, 0, 3.141592654 / 2, 0, 2.3e-16}, {{}, 0, -1, kNo, 1, 0},
        {{}, 0, 1, kNo, 6.283185308 - 1, 0},
        {{.cw = false}, 0, 1, kNo, 1, 0}, {{.up = false}, 0.25, 0, 0.25, kNo, 1e-16},
        {kReal, 0.4, 2.0, 812.477300731014505, 24665.3849429786705, 2e-11},
        {{.phiCounts = 1000, .phiOffset = 1000}, 0, 0, kNo, 0, 0},
        {{.phiCounts = 1000, .phiSF = 1.1, .phiOffset = 1050}, 0, 0, kNo, -50, 1e-12},
        {{.phiCounts = 1000, .phiSF = 1.1, .phiOffset = -10}, 0, 0, kNo, -10, 1e-12},
        {{.phiCounts = 1000, .phiOffset = -1500}, 0, 0, kNo, -500, 0},
        {{.phiCounts = 1000, .phiOffset = 2500}, 0, 0, kNo, 1500, 0},
        {{}, 3, 0, 3.141592654 / 2 - 3, kNo, 1e-15}, {{}, -7, 0, 3.141592654 / 2 + 7, kNo, 4e-15}});
    // clang-format on
}

TEST(EncoderDirections, WhereTheCountsPointInTheSky) {
    // Alt-az, defaults: counts growing clockwise seen from above carry the
    // tube from north toward east: PhiEnc 0.5 on the horizon is azimuth 0.5
    // east of north, (cos .5, -sin .5, 0), but for the 2e-10 of the short pi.
    auto s = FreshModel();
    double Theta = 0, Phi = 0;
    EncodersToAngles(*s, 0, 0.5, Theta, Phi);
    ExpectVecNear({std::cos(0.5), -std::sin(0.5), 0}, MountToHorizon(*s, AnglesToVec(Theta, Phi)),
                  1e-9, "PhiEnc 0.5");
    // ThetaPosUp false: ThetaEnc 0 is the zenith on an alt-az mount and the
    // pole (cos L, 0, sin L) on an equatorial one, up to the 2.05e-10 that the
    // short colatitude exceeds the true one by.
    s->ThetaPosUp = false;
    EncodersToAngles(*s, 0, 0, Theta, Phi);
    EXPECT_EQ(MountToHorizon(*s, AnglesToVec(Theta, Phi)).z, 1.0);
    s->IsAltAz = false;
    s->Latitude = 40;
    const double L = 40 * 3.141592654 / 180;
    ExpectVecNear({std::cos(L), 0, std::sin(L)}, MountToHorizon(*s, AnglesToVec(Theta, Phi)), 3e-10,
                  "pole");
}

TEST(EncoderScale, RoundTripInsideOneTurn) {
    // Theta comes back, Phi up to a whole scaled turn; a few roundings.
    auto s = ModelWith(kReal);
    for (int combination = 0; combination < 4; ++combination) {
        s->PhiPosCW = combination & 1;
        s->ThetaPosUp = combination & 2;
        for (double t : {0.1, 0.9, 1.5, 2.8}) {
            for (double p : {-2.0, -0.3, 0.4, 2.9}) {
                double ThetaEnc = 0, PhiEnc = 0, Theta = 0, Phi = 0;
                AnglesToEncoders(*s, t, p, ThetaEnc, PhiEnc);
                EncodersToAngles(*s, ThetaEnc, PhiEnc, Theta, Phi);
                const double turns = (Phi - p) / kFullTurn;
                EXPECT_NEAR(t, Theta, 1e-14) << "combination " << combination;
                EXPECT_NEAR(std::round(turns), turns, 1e-14)
                    << "combination " << combination << " p " << p;
            }
        }
    }
}

TEST(AxisAngleWrap, OneShotBranchesOfBothAngles) {
    // Phi: negative gets a turn added, exactly a turn is taken off, each step
    // once only; -1e-20 rounds up to a full turn, which the next step takes
    // off. Theta: exactly minus a half turn goes to plus, plus a half turn
    // stays, each step once only; in range nothing changes.
    // clang-format off
    const double cases[][5] = {  // Theta, Phi, wanted Theta, wanted Phi, tolerance
        {0.5, -0.5, 0.5, 6.283185308 - 0.5, 0}, {0.5, 6.283185308, 0.5, 0, 0},
        {0.5, -7, 0.5, -7 + 6.283185308, 0}, {0.5, 13, 0.5, 13 - 6.283185308, 0},
        {0.5, -1e-20, 0.5, 0, 0}, {0.5, 2.0, 0.5, 2.0, 0}, {-3.141592654, 1, 3.141592654, 1, 0},
        {3.141592654, 1, 3.141592654, 1, 0}, {3.141592654 + 0.5, 1, 0.5 - 3.141592654, 1, 1e-15},
        {-10, 1, -10 + 6.283185308, 1, 0}, {10, 1, 10 - 6.283185308, 1, 0}, {-1, 1, -1, 1, 0}};
    // clang-format on
    for (const auto& [theta, phi, wantTheta, wantPhi, tol] : cases) {
        double Theta = theta, Phi = phi;
        WrapAxisAngles(Theta, Phi);
        EXPECT_NEAR(wantTheta, Theta, tol) << "from " << theta << " " << phi;
        EXPECT_NEAR(wantPhi, Phi, tol) << "from " << theta << " " << phi;
    }
}

}  // namespace
