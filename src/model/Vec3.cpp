#include "model/Vec3.h"

#include <cmath>

void NormalizeVec(Vec3& v) {
    const double n = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
    // A zero length leaves the vector alone rather than dividing by it.
    if (n <= 0) return;
    v.x = v.x / n;
    v.y = v.y / n;
    v.z = v.z / n;
}

void RotateXZ(Vec3& v, double Angle) {
    const double c = std::cos(Angle);
    const double s = std::sin(Angle);
    const double x = v.x;  // the second line reads the old x
    v.x = x * c + v.z * s;
    v.z = v.z * c - x * s;
}

void RotateYZ(Vec3& v, double Angle) {
    const double c = std::cos(Angle);
    const double s = std::sin(Angle);
    const double y = v.y;  // the second line reads the old y
    v.y = y * c + v.z * s;
    v.z = v.z * c - y * s;
}

Vec3 CrossVec(Vec3 a, Vec3 b) {
    return Vec3{a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double DotVec(Vec3 a, Vec3 b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

Vec3 SubVec(Vec3 a, Vec3 b) {
    return Vec3{a.x - b.x, a.y - b.y, a.z - b.z};
}
