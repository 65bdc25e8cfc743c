// Inverse of the pointing model and the end-to-end conversions between sky
// places and encoder counts. Angles radians, encoders counts.
#pragma once

#include <cstdint>

#include "model/Vec3.h"

struct ModelState;

// Nominal axis angles whose corrected image is Target (mount frame): at most
// 7 passes, stopping when the squared change is at most 1e-12.
void SolveAxisAngles(const ModelState& s, Vec3 Target, int16_t Tsign, double& Theta, double& Phi);
void VectorToEncoders(const ModelState& s, Vec3 Target, int16_t Tsign, double& ThetaEnc,
                      double& PhiEnc);
void CelestialToEncoders(const ModelState& s, double LST, double JD, double RA, double Dec,
                         int16_t Tsign, double& ThetaEnc, double& PhiEnc);
void ApparentToEncoders(const ModelState& s, double LST, double JD, double RA, double Dec,
                        int16_t Tsign, double& ThetaEnc, double& PhiEnc);
void EncodersToCelestial(const ModelState& s, double LST, double JD, double ThetaEnc, double PhiEnc,
                         double& RA, double& Dec);
void EncodersToApparent(const ModelState& s, double LST, double JD, double ThetaEnc, double PhiEnc,
                        double& RA, double& Dec);
void EncodersToAltAz(const ModelState& s, double ThetaEnc, double PhiEnc, double& Alt, double& Az);
