// The description of the imaginary mount and observing run that the lower
// half of the Virtual Telescope window holds. Angles in radians, VSdT in
// minutes. It lasts as long as the program and is never written to a file.
#pragma once

#include <cstdint>

struct VirtualScopeInputs {
    // The factors from the unit of each box to the member.
    static constexpr double kDegree = 3.141592654 / 180;
    static constexpr double kArcminute = 3.141592654 / 180 / 60;
    static constexpr double kHour = 3.141592654 / 12;

    // The sample mount of the window's design: 40 points, cone 10', hub -5',
    // polar axis 15' west and -20' north, latitude 33, encoder offsets 7'
    // and -9', a point a minute from LST 5.5 hours.
    int32_t VSNum = 40;
    double VSCone = 10 * kArcminute;
    double VSHub = -5 * kArcminute;
    double VSPAW = 15 * kArcminute;
    double VSPAN = -20 * kArcminute;
    double VSLat = 33 * kDegree;
    double VSThetaOffset = 7 * kArcminute;
    double VSPhiOffset = -9 * kArcminute;
    double VSdT = 1;
    double VSLST = 5.5 * kHour;
};
