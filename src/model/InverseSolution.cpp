#include "model/InverseSolution.h"

#include <cmath>

#include "model/Constants.h"
#include "model/Frames.h"
#include "model/ModelState.h"
#include "model/SkyChain.h"
#include "model/Terms.h"

namespace {

// Vector to axis angles for the iteration. Unlike VecToAngles, Phi stays in
// (-pi, pi] for Tsign >= 0: AnglesToEncoders wraps the counts later.
void AngleStep(const Vec3& v, int16_t Tsign, double& Theta, double& Phi) {
    Phi = Atan2(v.y, v.x);
    const double r = std::sqrt(v.x * v.x + v.y * v.y);
    Theta = Atan2(r, v.z);
    if (Tsign < 0) {
        Theta = -Theta;
        Phi = Phi + kHalfTurn;
        if (Phi > kFullTurn) Phi = Phi - kFullTurn;
    }
}

}  // namespace

// Fixed-point iteration P = unit(Target - sum c B(P)): at most 7 passes,
// ending early once the squared change of the vector is at most 1e-12
// (a change of 1e-6 rad). Reaching 7 passes is not reported.
void SolveAxisAngles(const ModelState& s, Vec3 Target, int16_t Tsign, double& Theta, double& Phi) {
    Vec3 v = Target;
    AngleStep(v, Tsign, Theta, Phi);
    int passes = 0;
    double E = 1.0;
    TermTable B;
    while (passes < 7 && E > 1e-12) {
        ++passes;
        const Vec3 v0 = v;
        TermBasis(Theta, Phi, B);
        v = Target;
        for (int i = 1; i <= s.NumTerms; ++i) {
            if (!s.TermActive[i]) continue;
            const double coef = s.TermCoef[i];
            v.x = v.x - coef * B[i][1];
            v.y = v.y - coef * B[i][2];
            v.z = v.z - coef * B[i][3];
        }
        const double n = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
        v.x = v.x / n;
        v.y = v.y / n;
        v.z = v.z / n;
        AngleStep(v, Tsign, Theta, Phi);
        E = (v0.x - v.x) * (v0.x - v.x) + (v0.y - v.y) * (v0.y - v.y) + (v0.z - v.z) * (v0.z - v.z);
    }
}

void VectorToEncoders(const ModelState& s, Vec3 Target, int16_t Tsign, double& ThetaEnc,
                      double& PhiEnc) {
    double Theta = 0;
    double Phi = 0;
    SolveAxisAngles(s, Target, Tsign, Theta, Phi);
    AnglesToEncoders(s, Theta, Phi, ThetaEnc, PhiEnc);
}

void CelestialToEncoders(const ModelState& s, double LST, double JD, double RA, double Dec,
                         int16_t Tsign, double& ThetaEnc, double& PhiEnc) {
    const Vec3 H = CelestialToHorizon(s, RA, Dec, LST, JD);
    VectorToEncoders(s, HorizonToMount(s, H), Tsign, ThetaEnc, PhiEnc);
}

void ApparentToEncoders(const ModelState& s, double LST, double /*JD*/, double RA, double Dec,
                        int16_t Tsign, double& ThetaEnc, double& PhiEnc) {
    const Vec3 H = ApparentToHorizon(s, RA, Dec, LST);
    VectorToEncoders(s, HorizonToMount(s, H), Tsign, ThetaEnc, PhiEnc);
}

void EncodersToCelestial(const ModelState& s, double LST, double JD, double ThetaEnc, double PhiEnc,
                         double& RA, double& Dec) {
    const Vec3 C = EncoderToPointing(s, ThetaEnc, PhiEnc);
    HorizonToCelestial(s, MountToHorizon(s, C), LST, JD, RA, Dec);
}

void EncodersToApparent(const ModelState& s, double LST, double /*JD*/, double ThetaEnc,
                        double PhiEnc, double& RA, double& Dec) {
    const Vec3 C = EncoderToPointing(s, ThetaEnc, PhiEnc);
    HorizonToApparent(s, MountToHorizon(s, C), LST, RA, Dec);
}

// The altitude (radians) at which the telescope is seen to point, refraction
// left in, and the azimuth from north through east in [0, 2 pi].
void EncodersToAltAz(const ModelState& s, double ThetaEnc, double PhiEnc, double& Alt, double& Az) {
    const Vec3 C = EncoderToPointing(s, ThetaEnc, PhiEnc);
    const Vec3 H = MountToHorizon(s, C);
    double Theta = 0;
    double Phi = 0;
    VecToAngles(H, 1, Theta, Phi);
    Alt = kHalfTurn / 2 - Theta;
    Az = -Phi;
    if (Az < 0) Az = Az + kFullTurn;
    if (Az > kFullTurn) Az = Az - kFullTurn;
}
