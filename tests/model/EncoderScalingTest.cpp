// Encoder counts and axis angles: directions, counts per turn, scale factors,
// offsets and the one-shot wraps.
#include <cmath>
#include <limits>

#include "ModelTestSupport.h"
#include "model/Constants.h"
#include "model/Frames.h"

namespace {

using namespace modeltest;

constexpr double kNotChecked = std::numeric_limits<double>::quiet_NaN();

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

// EXPECT_NEAR, skipped for a wanted NaN.
void ExpectNear(double want, double got, double tol, const char* why) {
    if (std::isnan(want)) return;
    EXPECT_NEAR(want, got, tol) << why;
}

// One conversion: two inputs and the two wanted outputs (NaN: not checked).
struct Case {
    Encoders e;
    double in1, in2, want1, want2, tol;
    const char* why;
};

TEST(EncoderScale, CountsToAngles) {
    const Case cases[] = {
        // Defaults: 6.283185308 counts per turn, Theta counts up from the
        // horizon, Phi counts clockwise, against Phi. x * C / C exact for x = 1.
        {{}, 0, 0, 3.141592654 / 2, 0, 0, "ThetaEnc 0 is on the horizon"},
        {{}, 0, 1, kNotChecked, -1, 0, "PhiPosCW: PhiEnc 1 is Phi -1"},
        {{.cw = false}, 0, 1, kNotChecked, 1, 0, "counterclockwise: PhiEnc 1 is Phi 1"},
        {{.up = false}, 0, 0, 0, kNotChecked, 0, "ThetaPosUp false: ThetaEnc 0 is Theta 0"},
        // Worked out to 30 digits outside the program:
        // Phi = 6.283185308 x 9000 / (36000 x 1.001) = 1.5692270999000999...,
        // Theta = 3.141592654/2 - 6.283185308 x 700 / (4096 x 0.999)
        //       = 0.49593491392677052...; a few roundings of values near 1.
        {{36000, 1.001, 100, 4096, 0.999, 50, false},
         750,
         9100,
         0.49593491392677052,
         1.5692270999000999,
         1e-15,
         "real encoders"},
        {kReal, 750, 9100, 0.49593491392677052, -1.5692270999000999, 1e-15, "real, clockwise"},
        // Not wrapped: three turns of counts are three turns of angle, and a
        // Theta reading far above the scale gives Theta below -pi.
        {{.cw = false}, 10, 3 * 6.283185308, 3.141592654 / 2 - 10, 3 * kFullTurn, 1e-14, "no wrap"},
    };
    for (const Case& c : cases) {
        auto s = ModelWith(c.e);
        double Theta = kNotChecked, Phi = kNotChecked;
        EncodersToAngles(*s, c.in1, c.in2, Theta, Phi);
        ExpectNear(c.want1, Theta, c.tol, c.why);
        ExpectNear(c.want2, Phi, c.tol, c.why);
    }
}

TEST(EncoderScale, AnglesToCountsAndTheOneShotPhiWrap) {
    const Case cases[] = {
        // The zenith needs half of 3.141592654 counts: one rounding in Ct t / Ct.
        {{}, 0, 0, 3.141592654 / 2, 0, 2.3e-16, "zenith"},
        {{}, 0, -1, kNotChecked, 1, 0, "PhiPosCW: Phi -1 is PhiEnc 1"},
        {{}, 0, 1, kNotChecked, 6.283185308 - 1, 0, "Phi 1 is PhiEnc -1, wrapped once"},
        {{.cw = false}, 0, 1, kNotChecked, 1, 0, "counterclockwise"},
        {{.up = false}, 0.25, 0, 0.25, kNotChecked, 1e-16, "counts grow with Theta from the axis"},
        // Worked out to 30 digits outside the program, PhiPosCW true:
        // PhiEnc = -2 x 36036 / 6.283185308 + 100 = -11370.6150570213..., below
        // 0, so one scaled turn (36036) is added: 24665.3849429786705.
        // ThetaEnc = 4091.904 x (3.141592654/2 - 0.4) / 6.283185308 + 50
        //          = 812.477300731014505. A few roundings at 2.5e4 (ulp 3.6e-12).
        {kReal, 0.4, 2.0, 812.477300731014505, 24665.3849429786705, 2e-11, "real encoders"},
        // 1000 counts per turn. The wrap tests the unscaled count but steps a
        // scaled turn, and each of its two corrections acts once.
        {{.phiCounts = 1000, .phiOffset = 1000},
         0,
         0,
         kNotChecked,
         0,
         0,
         "1000 is taken to 0 (>=)"},
        {{.phiCounts = 1000, .phiSF = 1.1, .phiOffset = 1050},
         0,
         0,
         kNotChecked,
         -50,
         1e-12,
         "1050 - 1100 = -50 stays"},
        {{.phiCounts = 1000, .phiSF = 1.1, .phiOffset = -10},
         0,
         0,
         kNotChecked,
         -10,
         1e-12,
         "-10 + 1100 = 1090, then 1100 off again"},
        {{.phiCounts = 1000, .phiOffset = -1500}, 0, 0, kNotChecked, -500, 0, "one turn added"},
        {{.phiCounts = 1000, .phiOffset = 2500}, 0, 0, kNotChecked, 1500, 0, "one turn off"},
        // Theta counts are never wrapped: below 0 and above a turn stay.
        {{}, 3, 0, 3.141592654 / 2 - 3, kNotChecked, 1e-15, "Theta 3"},
        {{}, -7, 0, 3.141592654 / 2 + 7, kNotChecked, 4e-15, "Theta -7"},
    };
    for (const Case& c : cases) {
        auto s = ModelWith(c.e);
        double ThetaEnc = kNotChecked, PhiEnc = kNotChecked;
        AnglesToEncoders(*s, c.in1, c.in2, ThetaEnc, PhiEnc);
        ExpectNear(c.want1, ThetaEnc, c.tol, c.why);
        ExpectNear(c.want2, PhiEnc, c.tol, c.why);
    }
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
    // pole (cos L, 0, sin L) on an equatorial one, up to the 2.05e-10 that
    // the short colatitude exceeds the true one by.
    s->ThetaPosUp = false;
    EncodersToAngles(*s, 0, 0, Theta, Phi);
    EXPECT_EQ(MountToHorizon(*s, AnglesToVec(Theta, Phi)).z, 1.0);
    s->IsAltAz = false;
    s->Latitude = 40;
    const double L = 40 * 3.141592654 / 180;
    const Vec3 pole = MountToHorizon(*s, AnglesToVec(Theta, Phi));
    EXPECT_NEAR(std::cos(L), pole.x, 3e-10);
    EXPECT_NEAR(0.0, pole.y, 1e-15);
    EXPECT_NEAR(std::sin(L), pole.z, 3e-10);
}

TEST(EncoderScale, RoundTripInsideOneTurn) {
    auto s = ModelWith(kReal);
    for (bool cw : {false, true}) {
        for (bool up : {false, true}) {
            s->PhiPosCW = cw;
            s->ThetaPosUp = up;
            for (double t : {0.1, 0.9, 1.5, 2.8}) {
                for (double p : {-2.0, -0.3, 0.4, 2.9}) {
                    double ThetaEnc = 0, PhiEnc = 0, Theta = 0, Phi = 0;
                    AnglesToEncoders(*s, t, p, ThetaEnc, PhiEnc);
                    EncodersToAngles(*s, ThetaEnc, PhiEnc, Theta, Phi);
                    EXPECT_NEAR(t, Theta, 1e-14) << "cw " << cw << " up " << up;
                    // Phi comes back up to a whole scaled turn.
                    const double turns = (Phi - p) / kFullTurn;
                    EXPECT_NEAR(std::round(turns), turns, 1e-14)
                        << "cw " << cw << " up " << up << " p " << p;
                }
            }
        }
    }
}

TEST(AxisAngleWrap, OneShotBranchesOfBothAngles) {
    // clang-format off
    const struct { double Theta, Phi, wantTheta, wantPhi, tol; const char* why; } cases[] = {
        {0.5, -0.5, 0.5, 6.283185308 - 0.5, 0, "negative Phi: one turn added"},
        {0.5, 6.283185308, 0.5, 0, 0, "Phi exactly one turn: taken off"},
        {0.5, -7, 0.5, -7 + 6.283185308, 0, "one shot: Phi stays negative"},
        {0.5, 13, 0.5, 13 - 6.283185308, 0, "one shot: Phi stays above a turn"},
        {0.5, -1e-20, 0.5, 0, 0, "rounds up to a full turn, which the next step takes off"},
        {0.5, 2.0, 0.5, 2.0, 0, "in range: untouched"},
        {-3.141592654, 1, 3.141592654, 1, 0, "exactly minus a half turn goes to plus"},
        {3.141592654, 1, 3.141592654, 1, 0, "plus a half turn stays"},
        {3.141592654 + 0.5, 1, 0.5 - 3.141592654, 1, 1e-15, "above a half turn"},
        {-10, 1, -10 + 6.283185308, 1, 0, "one shot: Theta stays below minus a half turn"},
        {10, 1, 10 - 6.283185308, 1, 0, "one shot: Theta stays above a half turn"},
        {-1, 1, -1, 1, 0, "negative Theta in range: untouched"}};
    // clang-format on
    for (const auto& c : cases) {
        double Theta = c.Theta, Phi = c.Phi;
        WrapAxisAngles(Theta, Phi);
        EXPECT_NEAR(c.wantTheta, Theta, c.tol) << c.why;
        EXPECT_NEAR(c.wantPhi, Phi, c.tol) << c.why;
    }
}

}  // namespace
