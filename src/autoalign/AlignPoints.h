// Alignment point lists for a calibration run. The candidates are the
// directions of Points.txt in the program's folder (s.ProgramFolder): three
// lines a candidate, X, Y and Z of a unit vector in the local horizon frame
// (+X north, +Y east, +Z zenith), at most 501 candidates. The list keeps
// those more than 1 degree above the skyline and outside the zones that are
// bad for the mount, picks AutoAlignTarget of them by a greedy
// farthest-point rule, and puts them in the order to walk. No random numbers:
// the same inputs always give the same list.
#pragma once

#include <string>

#include "files/LoadFailure.h"
#include "model/Vec3.h"

struct ModelState;

inline constexpr const char* kPointsFileName = "Points.txt";

// The orders of the list (AutoAlignOrder).
enum AutoAlignOrders : int {
    kOrderNE = 0,  // from just east of north, azimuth rising
    kOrderNW = 1,  // from just west of north, azimuth falling
    kOrderSE = 2,  // from just east of south, azimuth falling
    kOrderSW = 3,  // from just west of south, azimuth rising
    kOrderRnd = 4  // the order of Points.txt
};

// Replaces the list from Points.txt, Horizon, Latitude, IsAltAz, IsGEM,
// AutoAlignTarget and AutoAlignOrder. The list goes on even when Points.txt
// fails, with what the table held; the result says whether it was read, and
// Failure, if given, why not.
bool MakeAutoAlignPoints(ModelState& s, LoadFailure* Failure = nullptr);

// Reads the candidates and their Phi and Theta into the table and sets
// NumAutoAlign. A file that cannot be read, that ends inside a group of
// three lines, holds a 502nd candidate or a number too large for a double
// leaves the table and NumAutoAlign as they were and gives false, with the
// reason in Failure if given.
bool ReadAutoAlignPoints(ModelState& s, LoadFailure* Failure = nullptr);

// Keeps, in their order, the candidates more than 1 degree above the
// skyline and outside the mount's zones: the zenith cap (0.15 radian) of an
// alt-az mount, the celestial pole (straight-line distance 0.15) of an
// equatorial one, and the meridian plane (|Y| below 0.05) of a German one.
void FilterAutoAlignPoints(ModelState& s);

// Sorts the list into the walk of AutoAlignOrder (0 to 3) and numbers it.
void OrderAutoAlignPoints(ModelState& s);

// Separation of table entries I and J: their straight-line distance, and
// for an alt-az mount also half the difference in Theta and a fifth of the
// difference in azimuth (the shorter way round), radians.
double PointDistance(const ModelState& s, int I, int J);

// The celestial pole of the site at Latitude: the zenith turned toward the
// north (south for a negative latitude) by the colatitude.
Vec3 CelestialPole(const ModelState& s);
