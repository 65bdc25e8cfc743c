// Encoder counts and axis angles: directions, counts per turn, scale factors,
// offsets and the one-shot wraps.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "model/Constants.h"
#include "model/Frames.h"
#include "model/ModelState.h"

namespace {

std::unique_ptr<ModelState> DefaultModel() {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    return s;
}

// A model with a 36000-count Phi encoder 0.1 % long and a 4096-count Theta
// encoder 0.1 % short, both with offsets.
std::unique_ptr<ModelState> RealEncoderModel() {
    auto s = DefaultModel();
    s->PhiCountsPerRev = 36000;
    s->PhiSF = 1.001;
    s->PhiEncOffset = 100;
    s->ThetaCountsPerRev = 4096;
    s->ThetaSF = 0.999;
    s->ThetaEncOffset = 50;
    return s;
}

TEST(EncoderScaleDefaults, CountsAreRadiansFromTheHorizon) {
    // Default: 6.283185308 counts per turn, Theta counts upward from the horizon.
    auto s = DefaultModel();
    double Theta = 0, Phi = 0;
    EncodersToAngles(*s, 0, 0, Theta, Phi);
    EXPECT_EQ(Theta, 3.141592654 / 2) << "ThetaEnc 0 is on the horizon";
    EXPECT_EQ(Phi, 0.0);

    double ThetaEnc = 0, PhiEnc = 0;
    AnglesToEncoders(*s, 0, 0, ThetaEnc, PhiEnc);
    // The zenith needs half of 3.141592654 counts; one rounding in Ct t / Ct.
    EXPECT_NEAR(3.141592654 / 2, ThetaEnc, 2.3e-16);
}

TEST(EncoderDirections, PhiPositiveClockwiseRunsAgainstPhi) {
    // Default PhiPosCW: PhiEnc 1 is Phi -1; Phi -1 is PhiEnc 1; Phi 1 is
    // PhiEnc -1, wrapped once to 6.283185308 - 1. All exact: x * C / C with
    // C = 6.283185308 and x = 1.
    auto s = DefaultModel();
    double Theta = 0, Phi = 0;
    EncodersToAngles(*s, 0, 1, Theta, Phi);
    EXPECT_EQ(Phi, -1.0);
    double ThetaEnc = 0, PhiEnc = 0;
    AnglesToEncoders(*s, 0, -1, ThetaEnc, PhiEnc);
    EXPECT_EQ(PhiEnc, 1.0);
    AnglesToEncoders(*s, 0, 1, ThetaEnc, PhiEnc);
    EXPECT_EQ(PhiEnc, 6.283185308 - 1);
}

TEST(EncoderDirections, ClockwiseFromAboveTurnsFromNorthToEast) {
    // On an alt-az mount, counts that grow clockwise seen from above carry the
    // tube from north toward east: PhiEnc 0.5 on the horizon points at
    // azimuth 0.5 rad east of north, horizon vector (cos .5, -sin .5, 0).
    auto s = DefaultModel();
    double Theta = 0, Phi = 0;
    EncodersToAngles(*s, 0, 0.5, Theta, Phi);
    const Vec3 v = MountToHorizon(*s, AnglesToVec(Theta, Phi));
    // The short half turn puts the vector 2e-10 off the horizon.
    EXPECT_NEAR(std::cos(0.5), v.x, 1e-9);
    EXPECT_NEAR(-std::sin(0.5), v.y, 1e-9);
    EXPECT_NEAR(0.0, v.z, 1e-9);
}

TEST(EncoderDirections, CounterclockwiseCountsFollowPhi) {
    auto s = DefaultModel();
    s->PhiPosCW = false;
    double Theta = 0, Phi = 0;
    EncodersToAngles(*s, 0, 1, Theta, Phi);
    EXPECT_EQ(Phi, 1.0);
    double ThetaEnc = 0, PhiEnc = 0;
    AnglesToEncoders(*s, 0, 1, ThetaEnc, PhiEnc);
    EXPECT_EQ(PhiEnc, 1.0);
}

TEST(EncoderDirections, ThetaCountingFromTheAxis) {
    // ThetaPosUp false: ThetaEnc 0 is Theta 0, the zenith on an alt-az mount
    // and the celestial pole (cos L, 0, sin L) on an equatorial one.
    auto s = DefaultModel();
    s->ThetaPosUp = false;
    double Theta = 1, Phi = 1;
    EncodersToAngles(*s, 0, 0, Theta, Phi);
    EXPECT_EQ(Theta, 0.0);
    const Vec3 zenith = MountToHorizon(*s, AnglesToVec(Theta, Phi));
    EXPECT_EQ(zenith.z, 1.0);

    s->IsAltAz = false;
    s->Latitude = 40;
    const double L = 40 * 3.141592654 / 180;
    const Vec3 pole = MountToHorizon(*s, AnglesToVec(Theta, Phi));
    // The colatitude 3.141592654/2 - L exceeds the true one by 2.05e-10, so
    // the axis stands that far from the pole.
    EXPECT_NEAR(std::cos(L), pole.x, 3e-10);
    EXPECT_NEAR(0.0, pole.y, 1e-15);
    EXPECT_NEAR(std::sin(L), pole.z, 3e-10);

    // Counts then grow with Theta: 0.25 rad is 0.25 counts by default.
    double ThetaEnc = 0, PhiEnc = 0;
    AnglesToEncoders(*s, 0.25, 0, ThetaEnc, PhiEnc);
    EXPECT_NEAR(0.25, ThetaEnc, 1e-16);
}

TEST(EncoderCountsAndScale, AnglesFromCountsOfARealEncoder) {
    // Reference values worked out to 30 digits outside the program:
    // Phi = 6.283185308 x 9000 / (36000 x 1.001) = 1.5692270999000999...
    // Theta = 3.141592654/2 - 6.283185308 x 700 / (4096 x 0.999)
    //       = 0.49593491392677052...
    // Tolerance: a few roundings of values near 1.
    auto s = RealEncoderModel();
    s->PhiPosCW = false;
    double Theta = 0, Phi = 0;
    EncodersToAngles(*s, 750, 9100, Theta, Phi);
    EXPECT_NEAR(1.5692270999000999, Phi, 1e-15);
    EXPECT_NEAR(0.49593491392677052, Theta, 1e-15);

    s->PhiPosCW = true;
    EncodersToAngles(*s, 750, 9100, Theta, Phi);
    EXPECT_NEAR(-1.5692270999000999, Phi, 1e-15);
}

TEST(EncoderCountsAndScale, CountsFromAnglesOfARealEncoder) {
    // Worked out to 30 digits outside the program, PhiPosCW true:
    // PhiEnc = -2 x 36036 / 6.283185308 + 100 = -11370.6150570213...,
    // below 0, so one scaled turn (36036) is added: 24665.3849429786705.
    // ThetaEnc = 4091.904 x (3.141592654/2 - 0.4) / 6.283185308 + 50
    //          = 812.477300731014505.
    // Tolerance: a few roundings at 2.5e4 (ulp 3.6e-12).
    auto s = RealEncoderModel();
    double ThetaEnc = 0, PhiEnc = 0;
    AnglesToEncoders(*s, 0.4, 2.0, ThetaEnc, PhiEnc);
    EXPECT_NEAR(24665.3849429786705, PhiEnc, 2e-11);
    EXPECT_NEAR(812.477300731014505, ThetaEnc, 1e-12);
}

TEST(EncoderCountsAndScale, RoundTripInsideOneTurn) {
    auto s = RealEncoderModel();
    for (bool cw : {false, true}) {
        for (bool up : {false, true}) {
            s->PhiPosCW = cw;
            s->ThetaPosUp = up;
            for (double t : {0.1, 0.9, 1.5, 2.8}) {
                for (double p : {-2.0, -0.3, 0.4, 2.9}) {
                    double ThetaEnc = 0, PhiEnc = 0, Theta = 0, Phi = 0;
                    s->PhiEncOffset = 100;
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

TEST(EncoderCountsAndScale, AnglesAreNotWrapped) {
    // Three Phi turns of counts give three turns of angle; a Theta reading
    // far above the scale gives a Theta below -pi.
    auto s = DefaultModel();
    s->PhiPosCW = false;
    double Theta = 0, Phi = 0;
    EncodersToAngles(*s, 10, 3 * 6.283185308, Theta, Phi);
    EXPECT_NEAR(3 * kFullTurn, Phi, 1e-14);
    EXPECT_NEAR(3.141592654 / 2 - 10, Theta, 1e-15);
    EXPECT_LT(Theta, -kHalfTurn);
}

TEST(PhiEncoderWrap, ExactlyOneTurnOfCountsWrapsToZero) {
    // 1000 counts per turn; Phi 0 with offset 1000 lands on 1000, which the
    // ">=" test takes back to 0.
    auto s = DefaultModel();
    s->PhiCountsPerRev = 1000;
    s->PhiEncOffset = 1000;
    double ThetaEnc = 0, PhiEnc = 0;
    AnglesToEncoders(*s, 0, 0, ThetaEnc, PhiEnc);
    EXPECT_EQ(PhiEnc, 0.0);
}

TEST(PhiEncoderWrap, TestsUnscaledCountsButStepsAScaledTurn) {
    // 1000 counts, scale 1.1, so a scaled turn is 1100 counts. 1050 is at or
    // above 1000 and goes down by 1100 to -50, and stays there.
    auto s = DefaultModel();
    s->PhiCountsPerRev = 1000;
    s->PhiSF = 1.1;
    s->PhiEncOffset = 1050;
    double ThetaEnc = 0, PhiEnc = 0;
    AnglesToEncoders(*s, 0, 0, ThetaEnc, PhiEnc);
    EXPECT_NEAR(-50.0, PhiEnc, 1e-12);
}

TEST(PhiEncoderWrap, BothCorrectionsCanActInTurn) {
    // -10 + 1100 = 1090, which is at or above 1000, so 1100 comes off again.
    auto s = DefaultModel();
    s->PhiCountsPerRev = 1000;
    s->PhiSF = 1.1;
    s->PhiEncOffset = -10;
    double ThetaEnc = 0, PhiEnc = 0;
    AnglesToEncoders(*s, 0, 0, ThetaEnc, PhiEnc);
    EXPECT_NEAR(-10.0, PhiEnc, 1e-12);
}

TEST(PhiEncoderWrap, EachCorrectionActsOnce) {
    auto s = DefaultModel();
    s->PhiCountsPerRev = 1000;
    double ThetaEnc = 0, PhiEnc = 0;
    s->PhiEncOffset = -1500;  // one turn added: still below 0
    AnglesToEncoders(*s, 0, 0, ThetaEnc, PhiEnc);
    EXPECT_EQ(PhiEnc, -500.0);
    s->PhiEncOffset = 2500;  // one turn taken off: still a turn too high
    AnglesToEncoders(*s, 0, 0, ThetaEnc, PhiEnc);
    EXPECT_EQ(PhiEnc, 1500.0);
}

TEST(PhiEncoderWrap, ThetaCountsAreNeverWrapped) {
    // Theta 3 with defaults: 3.141592654/2 - 3 = -1.429 counts, left negative;
    // Theta -7: 8.57 counts, above a turn, left there.
    auto s = DefaultModel();
    double ThetaEnc = 0, PhiEnc = 0;
    AnglesToEncoders(*s, 3, 0, ThetaEnc, PhiEnc);
    EXPECT_NEAR(3.141592654 / 2 - 3, ThetaEnc, 1e-15);
    AnglesToEncoders(*s, -7, 0, ThetaEnc, PhiEnc);
    EXPECT_NEAR(3.141592654 / 2 + 7, ThetaEnc, 4e-15);
}

TEST(AxisAngleWrap, PhiBranches) {
    double Theta = 0.5, Phi = -0.5;
    WrapAxisAngles(Theta, Phi);
    EXPECT_EQ(Phi, 6.283185308 - 0.5) << "negative: one turn added";
    Phi = 6.283185308;
    WrapAxisAngles(Theta, Phi);
    EXPECT_EQ(Phi, 0.0) << "exactly one turn: taken off";
    Phi = -7;
    WrapAxisAngles(Theta, Phi);
    EXPECT_EQ(Phi, -7 + 6.283185308) << "one shot: stays negative";
    Phi = 13;
    WrapAxisAngles(Theta, Phi);
    EXPECT_EQ(Phi, 13 - 6.283185308) << "one shot: stays above a turn";
    Phi = -1e-20;  // rounds up to a full turn, which the next step takes off
    WrapAxisAngles(Theta, Phi);
    EXPECT_EQ(Phi, 0.0);
    Phi = 2.0;
    WrapAxisAngles(Theta, Phi);
    EXPECT_EQ(Phi, 2.0) << "in range: untouched";
    EXPECT_EQ(Theta, 0.5) << "Theta in range: untouched";
}

TEST(AxisAngleWrap, ThetaBranches) {
    double Phi = 1.0;
    double Theta = -3.141592654;
    WrapAxisAngles(Theta, Phi);
    EXPECT_EQ(Theta, 3.141592654) << "exactly minus a half turn goes to plus";
    Theta = 3.141592654;
    WrapAxisAngles(Theta, Phi);
    EXPECT_EQ(Theta, 3.141592654) << "plus a half turn stays";
    Theta = 3.141592654 + 0.5;
    WrapAxisAngles(Theta, Phi);
    EXPECT_NEAR(0.5 - 3.141592654, Theta, 1e-15);
    Theta = -10;
    WrapAxisAngles(Theta, Phi);
    EXPECT_EQ(Theta, -10 + 6.283185308) << "one shot: stays below minus a half turn";
    Theta = 10;
    WrapAxisAngles(Theta, Phi);
    EXPECT_EQ(Theta, 10 - 6.283185308) << "one shot: stays above a half turn";
    Theta = -1;
    WrapAxisAngles(Theta, Phi);
    EXPECT_EQ(Theta, -1.0) << "negative Theta in range: untouched";
    EXPECT_EQ(Phi, 1.0);
}

}  // namespace
