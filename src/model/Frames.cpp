#include "model/Frames.h"

#include <cmath>

#include "model/Constants.h"
#include "model/ModelState.h"

double Atan2(double Y, double X) {
    if (X == 0) {
        if (Y > 0) return kHalfTurn / 2;
        if (Y < 0) return -(kHalfTurn / 2);
        return 0;
    }
    double a = std::atan(Y / X);
    if (X < 0) {
        // Y == -0.0 counts as "0 or above", so the negative x axis is +half turn.
        if (Y >= 0) {
            a = a + kHalfTurn;
        } else {
            a = a - kHalfTurn;
        }
    }
    return a;
}

Vec3 AnglesToVec(double Theta, double Phi) {
    const double st = std::sin(Theta);
    Vec3 v{st * std::cos(Phi), st * std::sin(Phi), std::cos(Theta)};
    NormalizeVec(v);
    return v;
}

void VecToAngles(Vec3 v, int16_t Tsign, double& Theta, double& Phi) {
    const double r = std::sqrt(v.y * v.y + v.x * v.x);
    Phi = Atan2(v.y, v.x);
    if (Phi < 0) Phi = Phi + kFullTurn;
    Theta = Atan2(r, v.z);
    if (Tsign < 0) {
        Theta = -Theta;
        Phi = Phi + kHalfTurn;
        if (Phi > kFullTurn) Phi = Phi - kFullTurn;
    }
}

namespace {

// Colatitude of the site, radians: the tilt of an equatorial mount's axis
// from the zenith toward the north.
double Colatitude(const ModelState& s) {
    return kHalfTurn / 2 - kHalfTurn / 180 * s.Latitude;
}

}  // namespace

Vec3 MountToHorizon(const ModelState& s, Vec3 v) {
    RotateXZ(v, s.ErrorNorth);
    RotateYZ(v, s.ErrorWest);
    if (!s.IsAltAz) RotateXZ(v, Colatitude(s));
    return v;
}

Vec3 HorizonToMount(const ModelState& s, Vec3 v) {
    if (!s.IsAltAz) RotateXZ(v, -Colatitude(s));
    RotateYZ(v, -s.ErrorWest);
    RotateXZ(v, -s.ErrorNorth);
    return v;
}

void EncodersToAngles(const ModelState& s, double ThetaEnc, double PhiEnc, double& Theta,
                      double& Phi) {
    const double Cp = s.PhiSF * s.PhiCountsPerRev;
    const double Ct = s.ThetaSF * s.ThetaCountsPerRev;
    const double sign = s.PhiPosCW ? -1.0 : 1.0;
    Theta = (ThetaEnc - s.ThetaEncOffset) * kFullTurn / Ct;
    if (s.ThetaPosUp) Theta = kHalfTurn / 2 - Theta;
    Phi = sign * kFullTurn * (PhiEnc - s.PhiEncOffset) / Cp;
}

void AnglesToEncoders(const ModelState& s, double Theta, double Phi, double& ThetaEnc,
                      double& PhiEnc) {
    const double Cp = s.PhiSF * s.PhiCountsPerRev;
    const double Ct = s.ThetaSF * s.ThetaCountsPerRev;
    const double sign = s.PhiPosCW ? -1.0 : 1.0;
    PhiEnc = sign * Phi * Cp / kFullTurn + s.PhiEncOffset;
    const double t = s.ThetaPosUp ? kHalfTurn / 2 - Theta : Theta;
    ThetaEnc = Ct * t / kFullTurn + s.ThetaEncOffset;
    // One correction each. The upper test uses the unscaled counts per turn
    // while the step is the scaled turn, so a value can come out negative.
    if (PhiEnc < 0) PhiEnc = PhiEnc + Cp;
    if (PhiEnc >= s.PhiCountsPerRev) PhiEnc = PhiEnc - Cp;
}

void WrapAxisAngles(double& Theta, double& Phi) {
    if (Phi < 0) Phi = Phi + kFullTurn;
    if (Phi >= kFullTurn) Phi = Phi - kFullTurn;
    if (Theta <= -kHalfTurn) Theta = Theta + kFullTurn;
    if (Theta > kHalfTurn) Theta = Theta - kFullTurn;
}
