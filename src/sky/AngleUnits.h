// Degrees and arc seconds to radians with the program's short half turn
// 3.141592654. Each factor is one value, worked out first, and the angle is
// multiplied by it: x * (pi / 180) rounds differently in the last bit from
// x * pi / 180, and the results of the sky chain depend on that bit.
#pragma once

// Degrees to radians: x * (3.141592654 / 180).
double DegToRadians(double x);
// Arc seconds to radians: x * (3.141592654 / 648000).
double ArcSecToRad(double x);
