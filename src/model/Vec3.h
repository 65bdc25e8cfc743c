// Plain three-component vectors and the helpers every frame operation uses.
#pragma once

struct Vec3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

// Scales v to unit length; a vector of length 0 stays as it is.
void NormalizeVec(Vec3& v);
// Rotation in the x-z plane by Angle (right-handed about y):
// x' = x cos a + z sin a, z' = z cos a - x sin a.
void RotateXZ(Vec3& v, double Angle);
// Rotation in the y-z plane by Angle (right-handed about x by -a):
// y' = y cos a + z sin a, z' = z cos a - y sin a.
void RotateYZ(Vec3& v, double Angle);
Vec3 CrossVec(Vec3 a, Vec3 b);
double DotVec(Vec3 a, Vec3 b);
Vec3 SubVec(Vec3 a, Vec3 b);
