// Axis angles, the horizon and mount frames, and encoder scaling.
// Horizon frame: x north, y west, z zenith. Mount frame: z along the primary
// axis. Theta is the angle from the primary axis, Phi the angle about it
// from +x toward +y. All angles radians, encoder values counts.
#pragma once

#include <cstdint>

#include "model/Vec3.h"

struct ModelState;

// Quadrant arctangent of Y/X with the program's half turn: X == 0 gives
// +-kHalfTurn/2 or 0; X < 0 adds kHalfTurn for Y >= 0, subtracts it for Y < 0.
double Atan2(double Y, double X);

// Unit pointing vector (sin T cos P, sin T sin P, cos T).
Vec3 AnglesToVec(double Theta, double Phi);

// (Theta, Phi) of a vector of any length; Phi in [0, 2 pi). Tsign < 0 gives
// the other axis position: Theta negated and Phi turned by a half turn.
void VecToAngles(Vec3 v, int16_t Tsign, double& Theta, double& Phi);

// Mount frame to horizon frame: ErrorNorth, ErrorWest, then on an
// equatorial mount the tilt by the colatitude.
Vec3 MountToHorizon(const ModelState& s, Vec3 v);
// The exact reverse of MountToHorizon, step by step.
Vec3 HorizonToMount(const ModelState& s, Vec3 v);

// Encoder counts to axis angles, with offsets, directions, counts per turn
// and scale factors. No wrapping.
void EncodersToAngles(const ModelState& s, double ThetaEnc, double PhiEnc, double& Theta,
                      double& Phi);
// Axis angles to encoder counts; PhiEnc is wrapped once into range.
void AnglesToEncoders(const ModelState& s, double Theta, double Phi, double& ThetaEnc,
                      double& PhiEnc);

// One-shot wrap: Phi into [0, 2 pi), Theta into (-pi, pi].
void WrapAxisAngles(double& Theta, double& Phi);
