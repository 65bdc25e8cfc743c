// Mean J2000 place <-> apparent place of a date.
// Precession: the IAU 1976 angles zeta, z, theta (Lieske 1979, as in Meeus,
// "Astronomical Algorithms", chapter 21), without the terms in t cubed.
// Nutation and aberration: the first-order corrections in place of Meeus
// chapter 23, with a two-term nutation and the 1900-epoch solar series.
#include "sky/cACT.h"

#include <cmath>

#include "sky/AngleUnits.h"

double ArcSecToRad(double x) {
    return x * (3.141592654 / 648000);
}
double DegToRadians(double x) {
    return x * (3.141592654 / 180);
}

namespace {

// Nutation and annual aberration (radians) of the place (a, d) at JD. The
// same correction serves both directions; angles are not reduced to one
// turn before the trigonometric functions take them.
void ApparentCorrection(double JD, double a, double d, double& dRA, double& dDec) {
    // Julian centuries from 1900 January 0.5.
    double T = (JD - 2415020.0) / 36525.0;
    double L = DegToRadians(279.6967 + 36000.7689 * T);    // sun's mean longitude
    double M = DegToRadians(358.47583 + 35999.04975 * T);  // sun's mean anomaly
    double C = (1.91946 - 0.004789 * T) * std::sin(M) + 0.0201 * std::sin(2 * M);
    double S = DegToRadians(C) + L;                                   // sun's true longitude
    double W = DegToRadians(259.1833 - 1934.142 * T);                 // moon's ascending node
    double dPsi = -17.2327 * std::sin(W) - 1.2729 * std::sin(2 * L);  // arc seconds
    double dEps = 9.21 * std::cos(W) + 0.5522 * std::cos(2 * L);      // arc seconds
    double e = DegToRadians(23.452294 - 0.0130125 * T);               // mean obliquity

    // Nutation in place, arc seconds.
    double N1 = (std::cos(e) + std::sin(a) * std::sin(e) * std::tan(d)) * dPsi -
                std::tan(d) * std::cos(a) * dEps;
    double N2 = std::sin(e) * std::cos(a) * dPsi + std::sin(a) * dEps;
    // Annual aberration in place, arc seconds, constant 20.49".
    double B1 = -20.49 * (std::cos(a) * std::cos(S) * std::cos(e) + std::sin(a) * std::sin(S)) /
                std::cos(d);
    double B2 = -20.49 * (std::cos(S) * std::cos(e) *
                              (std::tan(e) * std::cos(d) - std::sin(a) * std::sin(d)) +
                          std::cos(a) * std::sin(d) * std::sin(S));

    dRA = DegToRadians((N1 + B1) / 3600);
    dDec = DegToRadians((N2 + B2) / 3600);
}

}  // namespace

void cACT::FromJ2000ToJD(double JD, double RA, double Dec, double& RAApp, double& DecApp) const {
    double J0 = JulianDay(2000.0);
    double RAMean = 0;
    double DecMean = 0;
    Precess(J0, JD, RA, Dec, RAMean, DecMean);
    MeanToApparent(JD, RAMean, DecMean, RAApp, DecApp);
}

void cACT::FromJDToJ2000(double JD, double RAApp, double DecApp, double& RA, double& Dec) const {
    double RAMean = 0;
    double DecMean = 0;
    ApparentToMean(JD, RAApp, DecApp, RAMean, DecMean);
    double J0 = JulianDay(2000.0);
    Precess(JD, J0, RAMean, DecMean, RA, Dec);
}

void cACT::MeanToApparent(double JD, double RA, double Dec, double& RAApp, double& DecApp) const {
    double dRA = 0;
    double dDec = 0;
    ApparentCorrection(JD, RA, Dec, dRA, dDec);
    RAApp = RA + dRA;
    DecApp = Dec + dDec;
}

// One subtraction, no iteration: the correction is taken at the apparent
// place, so this undoes MeanToApparent only to second order.
void cACT::ApparentToMean(double JD, double RAApp, double DecApp, double& RA, double& Dec) const {
    double dRA = 0;
    double dDec = 0;
    ApparentCorrection(JD, RAApp, DecApp, dRA, dDec);
    RA = RAApp - dRA;
    Dec = DecApp - dDec;
}

double cACT::JulianEpoch(double JD) const {
    return 2000 + (JD - 2451545.0) / 365.25;
}

double cACT::JulianDay(double Epoch) const {
    return (Epoch - 2000) * 365.25 + 2451545.0;
}

// Rotates the mean place of JD1 to the mean place of JD2. RA comes out in 0
// to 6.283185308.
void cACT::Precess(double JD1, double JD2, double RA1, double Dec1, double& RA2,
                   double& Dec2) const {
    double E1 = JulianEpoch(JD1);
    double E2 = JulianEpoch(JD2);
    double T = (E1 - 2000) / 100;  // centuries from J2000 to the start
    double t = (E2 - E1) / 100;    // centuries of the step

    // Arc seconds.
    double A = 2306.2181 + 1.39656 * T - 0.000139 * (T * T);
    double B = 2004.3109 - 0.8533 * T - 0.000217 * (T * T);
    double zeta = A * t + (0.30188 - 0.000345 * T) * (t * t);
    double z = A * t + (1.09468 + 0.000066 * T) * (t * t);
    double theta = B * t + (-0.42665 - 0.000217 * T) * (t * t);
    zeta = ArcSecToRad(zeta);
    z = ArcSecToRad(z);
    theta = ArcSecToRad(theta);

    double cZeta = std::cos(zeta);
    double sZeta = std::sin(zeta);
    double cZ = std::cos(z);
    double sZ = std::sin(z);
    double cTheta = std::cos(theta);
    double sTheta = std::sin(theta);

    double Pxx = cZeta * cTheta * cZ - sZ * sZeta;
    double Pxy = -sZeta * cTheta * cZ - sZ * cZeta;
    double Pxz = -sTheta * cZ;
    double Pyx = cZeta * cTheta * sZ + sZeta * cZ;
    double Pyy = -sZeta * cTheta * sZ + cZeta * cZ;
    double Pyz = -sTheta * sZ;
    double Pzx = sTheta * cZeta;
    double Pzy = -sZeta * sTheta;
    double Pzz = cTheta;

    double x = std::cos(RA1) * std::cos(Dec1);
    double y = std::sin(RA1) * std::cos(Dec1);
    double zz = std::sin(Dec1);
    double x2 = Pxx * x + Pxy * y + Pxz * zz;
    double y2 = Pyx * x + Pyy * y + Pyz * zz;
    double z2 = Pzx * x + Pzy * y + Pzz * zz;

    double r = std::sqrt(x2 * x2 + y2 * y2);
    Dec2 = Atn2(z2, r);
    RA2 = Atn2(y2, x2);
    if (RA2 < 0) RA2 = RA2 + 6.283185308;
    // Exactly a full turn stays; only a larger value comes down.
    if (RA2 > 6.283185308) RA2 = RA2 - 6.283185308;
}

// Arctangent of Y/X in all four quadrants, with the program's half turn.
double cACT::Atn2(double Y, double X) const {
    double a;
    if (X == 0) {
        if (Y > 0) {
            a = 3.141592654 / 2;
        } else if (Y < 0) {
            a = -3.141592654 / 2;
        } else {
            a = 0;
        }
    } else {
        a = std::atan(Y / X);
    }
    if (X < 0) {
        if (Y < 0) {
            a = a - 3.141592654;
        } else {
            a = a + 3.141592654;
        }
    }
    return a;
}
