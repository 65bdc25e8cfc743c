#include "model/SkyChain.h"

#include <cmath>

#include "model/Constants.h"
#include "model/Frames.h"
#include "model/ModelState.h"

// Apparent place (radians) and local sidereal time (radians) to the unit
// horizon vector of the observed direction, refraction applied.
// The horizon equations are written through A = -(pi/2 + H), which keeps
// x = sin d cos L - cos d cos H sin L, y = cos d sin H,
// z = sin d sin L + cos d cos H cos L.
Vec3 ApparentToHorizon(const ModelState& s, double RA, double Dec, double LST) {
    const double c = kHalfTurn / 2 - s.Latitude * 0.0174532925;  // colatitude
    const double p = kHalfTurn / 2 - Dec;                        // polar distance
    const double H = LST - RA;                                   // hour angle
    const double A = -(kHalfTurn / 2 + H);
    Vec3 v;
    v.x = std::sin(A) * std::sin(p) * std::cos(c) + std::sin(c) * std::cos(p);
    v.y = -std::cos(A) * std::sin(p);
    v.z = std::cos(p) * std::cos(c) - std::sin(p) * std::sin(A) * std::sin(c);
    NormalizeVec(v);
    double Theta = 0;
    double Phi = 0;
    VecToAngles(v, 1, Theta, Phi);
    ApplyRefraction(s, Theta, true);
    return AnglesToVec(Theta, Phi);
}

Vec3 CelestialToHorizon(const ModelState& s, double RA, double Dec, double LST, double JD) {
    double RAApp = 0;
    double DecApp = 0;
    s.ACT.FromJ2000ToJD(JD, RA, Dec, RAApp, DecApp);
    return ApparentToHorizon(s, RAApp, DecApp, LST);
}

// Horizon vector of an observed direction back to the apparent place:
// refraction taken off, the vector turned so that Z points at the pole,
// then X = -cos d cos H and Y = cos d sin H give the hour angle.
// This direction uses the factor 3.141592654/180 for the latitude.
void HorizonToApparent(const ModelState& s, Vec3 v, double LST, double& RA, double& Dec) {
    const double c = kHalfTurn / 2 - (kHalfTurn / 180) * s.Latitude;
    double Theta = 0;
    double Phi = 0;
    VecToAngles(v, 1, Theta, Phi);
    ApplyRefraction(s, Theta, false);
    const Vec3 u = AnglesToVec(Theta, Phi);
    double X = u.x * std::cos(c) - u.z * std::sin(c);
    double Y = u.y;
    double Z = u.z * std::cos(c) + u.x * std::sin(c);
    const double n = std::sqrt(X * X + Y * Y + Z * Z);
    if (n > 0) {
        X = X / n;
        Y = Y / n;
        Z = Z / n;
    }
    const double r = std::sqrt(Y * Y + X * X);
    Dec = Atan2(Z, r);
    RA = Atan2(-Y, -X) + LST;
    if (RA > kFullTurn) RA = RA - kFullTurn;
    if (RA < 0) RA = RA + kFullTurn;
}

void HorizonToCelestial(const ModelState& s, Vec3 v, double LST, double JD, double& RA,
                        double& Dec) {
    double RAApp = 0;
    double DecApp = 0;
    HorizonToApparent(s, v, LST, RAApp, DecApp);
    s.ACT.FromJDToJ2000(JD, RAApp, DecApp, RA, Dec);
}

namespace {

// Refraction in degrees at the true altitude h (degrees): Saemundsson's
// formula scaled by the pressure and temperature factor K.
double RefractionAtTrue(const ModelState& s, double K, double h) {
    return (1.02 / 60) * K / std::tan(s.Math.DegToRad(h + 10.3 / (h + 5.11)));
}

// Refraction in degrees at the observed altitude h (degrees): Bennett's
// formula with the same factor.
double RefractionAtObserved(const ModelState& s, double K, double h) {
    return (1.0 / 60) * K / std::tan(s.Math.DegToRad(h + 7.31 / (h + 4.4)));
}

}  // namespace

// Theta is a zenith distance in radians. Forward, the true place is lifted
// by Saemundsson's refraction; back, a first value from Bennett's formula is
// corrected twice with Saemundsson's so the two directions agree closely.
// No clamps: near and below the horizon the formulas stand as they are.
void ApplyRefraction(const ModelState& s, double& Theta, bool ToApparent) {
    double K = (s.Pressure / 1010) * 283 / (273 + s.Temperature);
    if (!s.EnableRefraction) K = 0;
    const double h = 90 - Theta * 180 / kHalfTurn;
    if (ToApparent) {
        Theta = (90 - (h + RefractionAtTrue(s, K, h))) * kHalfTurn / 180;
    } else {
        const double h1 = h - RefractionAtObserved(s, K, h);
        const double h2 = h - RefractionAtTrue(s, K, h1);
        const double h3 = h - RefractionAtTrue(s, K, h2);
        Theta = (90 - h3) * kHalfTurn / 180;
    }
}
