// The records of the alignment point planner that the model state holds:
// the site's skyline and the list of alignment points.
#pragma once

#include <array>
#include <cstdint>

inline constexpr int kHorizonTableSize = 1001;   // Az and El, indices 0 to 1000
inline constexpr int kAutoAlignTableSize = 501;  // AutoAlignPoints, indices 0 to 500

// The site's skyline. After a read Num is 360 and entry a holds azimuth a
// and the elevation of the skyline there, both degrees. All zero before the
// first read, which is a flat skyline at elevation 0.
struct HorizonRecord {
    std::array<double, kHorizonTableSize> Az{};
    std::array<double, kHorizonTableSize> El{};
    int16_t Num = 0;
};

// One candidate direction or alignment point, in the local horizon frame
// with +X north, +Y east, +Z zenith.
struct AutoAlignPoint {
    double X = 0;
    double Y = 0;
    double Z = 0;
    double Phi = 0;     // azimuth from north through east, radians, 0 to 2 pi
    double Theta = 0;   // zenith distance, radians
    int16_t Index = 0;  // number on the plot, 1 for the first of the list
    bool Selected = false;
};
