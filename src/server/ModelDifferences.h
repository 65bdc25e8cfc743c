// Rates and derivatives of the whole pointing model by numerical
// differences of the conversion from an apparent place to encoders, so
// that every fitted term is in them. Inputs: sidereal time LSTRad, apparent
// place RA, Dec (radians), Julian day JD, axis position Tsign. They use the
// model of the last fit and change nothing.
#pragma once

#include <cstdint>

#include "model/Constants.h"

struct ModelState;

// Half the sidereal-time span of a rate: the turn of the sky in 0.1 s of
// civil time, about 7.2921158e-6 rad. The two evaluations at LSTRad -+ it
// lie 0.2 s apart.
inline constexpr double kSiderealHalfStep = kHalfTurn / 43200 * 0.1 * kSiderealRate;
// Civil seconds between the two evaluations of a rate.
inline constexpr double kRateSpan = 0.2;
// Step of the one-sided differences of the Jacobian, radians.
inline constexpr double kJacobianStep = 1e-5;

// Encoder rates, counts per second; a difference across the encoder zero
// is brought back by one turn of counts (without the scale factors).
void TrackingRates(const ModelState& s, double LSTRad, double JD, double RA, double Dec,
                   int16_t Tsign, double& ThetaEncRate, double& PhiEncRate);

// Encoder change, counts, for an offset dRA, dDec (radians) at one moment.
// No wrap: an offset across the encoder zero gives nearly a full turn.
void GuideError(const ModelState& s, double LSTRad, double JD, double RA, double Dec, int16_t Tsign,
                double dRA, double dDec, double& dThetaEnc, double& dPhiEnc);

// Counts per radian, one-sided differences with kJacobianStep, no wrap.
void Jacobian(const ModelState& s, double LSTRad, double JD, double RA, double Dec, int16_t Tsign,
              double& dThetaEnc_dDec, double& dThetaEnc_dRA, double& dPhiEnc_dDec,
              double& dPhiEnc_dRA);

// Angle, radians in [-pi, pi], from the direction in which the telescope
// moves as the Theta encoder counts up to the direction of the north
// celestial pole, right-handed about the star's horizon vector.
double FieldAngle(const ModelState& s, double LSTRad, double JD, double RA, double Dec,
                  int16_t Tsign);

// Rate, radians per second, from the field angles at LSTRad -+ the half
// step; a difference across the +-pi jump is brought back by a full turn.
double FieldAngleRate(double AngleBefore, double AngleAfter);
