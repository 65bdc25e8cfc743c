// From a star's place to the horizon vector of the observed direction, with
// refraction, and back. Angles radians; LST radians; JD days.
#pragma once

#include "model/Vec3.h"

struct ModelState;

Vec3 CelestialToHorizon(const ModelState& s, double RA, double Dec, double LST, double JD);
Vec3 ApparentToHorizon(const ModelState& s, double RA, double Dec, double LST);
void HorizonToCelestial(const ModelState& s, Vec3 v, double LST, double JD, double& RA,
                        double& Dec);
void HorizonToApparent(const ModelState& s, Vec3 v, double LST, double& RA, double& Dec);
// Theta is a zenith distance (radians), changed in place: ToApparent true
// lifts a true place to the observed one, false takes it back.
void ApplyRefraction(const ModelState& s, double& Theta, bool ToApparent);
