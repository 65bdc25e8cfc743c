// Makes data/sample.AZT: an evening of 40 calibration stars on an imaginary
// alt-az mount at latitude 33.5 with the errors stated in data/README.md.
// usage: make-sample OUTPUT.AZT
#include <cmath>
#include <iostream>
#include <memory>
#include <string>

#include "files/CalFile.h"
#include "model/ModelState.h"
#include "model/SkyChain.h"
#include "model/SyntheticCalibration.h"
#include "sky/NumberText.h"
#include "sky/mTime.h"

namespace {

constexpr double kArcmin = 3.141592654 / 10800;
constexpr double kArcsec = 3.141592654 / 648000;

struct CatalogueStar {
    const char* Name;
    double RAHours;  // J2000, hours, minutes, seconds
    double RAMin;
    double RASec;
    double DecDeg;  // J2000, sign on the degrees
    double DecMin;
    double DecSec;
};

// Bright stars of the winter evening sky, J2000 places.
const CatalogueStar kStars[] = {
    {"Hamal", 2, 7, 10.4, 23, 27, 45},
    {"Algol", 3, 8, 10.1, 40, 57, 20},
    {"Mirfak", 3, 24, 19.4, 49, 51, 40},
    {"Menkar", 3, 2, 16.8, 4, 5, 23},
    {"Aldebaran", 4, 35, 55.2, 16, 30, 33},
    {"Rigel", 5, 14, 32.3, -8, 12, 6},
    {"Capella", 5, 16, 41.4, 45, 59, 53},
    {"Bellatrix", 5, 25, 7.9, 6, 20, 59},
    {"Elnath", 5, 26, 17.5, 28, 36, 27},
    {"Alnilam", 5, 36, 12.8, -1, 12, 7},
    {"Saiph", 5, 47, 45.4, -9, 40, 11},
    {"Betelgeuse", 5, 55, 10.3, 7, 24, 25},
    {"Menkalinan", 5, 59, 31.7, 44, 56, 51},
    {"Mirzam", 6, 22, 42.0, -17, 57, 21},
    {"Alhena", 6, 37, 42.7, 16, 23, 57},
    {"Sirius", 6, 45, 8.9, -16, 42, 58},
    {"Adhara", 6, 58, 37.5, -28, 58, 20},
    {"Wezen", 7, 8, 23.5, -26, 23, 36},
    {"Gomeisa", 7, 27, 9.0, 8, 17, 22},
    {"Castor", 7, 34, 35.9, 31, 53, 18},
    {"Procyon", 7, 39, 18.1, 5, 13, 30},
    {"Pollux", 7, 45, 18.9, 28, 1, 34},
    {"Alphard", 9, 27, 35.2, -8, 39, 31},
    {"Regulus", 10, 8, 22.3, 11, 58, 2},
    {"Algieba", 10, 19, 58.4, 19, 50, 29},
    {"Merak", 11, 1, 50.5, 56, 22, 57},
    {"Dubhe", 11, 3, 43.7, 61, 45, 3},
    {"Denebola", 11, 49, 3.6, 14, 34, 19},
    {"Alioth", 12, 54, 1.7, 55, 57, 35},
    {"Mizar", 13, 23, 55.5, 54, 55, 31},
    {"Kochab", 14, 50, 42.3, 74, 9, 20},
    {"Polaris", 2, 31, 49.1, 89, 15, 51},
    {"Caph", 0, 9, 10.7, 59, 8, 59},
    {"Alpheratz", 0, 8, 23.3, 29, 5, 26},
    {"Schedar", 0, 40, 30.4, 56, 32, 14},
    {"Diphda", 0, 43, 35.4, -17, 59, 12},
    {"Navi", 0, 56, 42.5, 60, 43, 0},
    {"Mirach", 1, 9, 43.9, 35, 37, 14},
    {"Ruchbah", 1, 25, 48.9, 60, 14, 7},
    {"Almach", 2, 3, 54.0, 42, 19, 47},
    {"Deneb", 20, 41, 25.9, 45, 16, 49},
    {"Fomalhaut", 22, 57, 39.0, -29, 37, 20},
    {"Alkaid", 13, 47, 32.4, 49, 18, 48},
    {"Arcturus", 14, 15, 39.7, 19, 10, 57},
    {"Talitha", 8, 59, 12.5, 48, 2, 30},
    {"Muscida", 8, 30, 15.9, 60, 43, 5},
    {"Phecda", 11, 53, 49.8, 53, 41, 41},
    {"Megrez", 12, 15, 25.6, 57, 1, 57},
    {"Zosma", 11, 14, 6.5, 20, 31, 25},
    {"Chertan", 11, 14, 14.4, 15, 25, 46},
    {"Cor Caroli", 12, 56, 1.7, 38, 19, 6},
    {"Tania Australis", 10, 22, 19.7, 41, 29, 58},
    {"Alterf", 9, 31, 43.2, 22, 58, 5},
    {"Acubens", 8, 58, 29.2, 11, 51, 28},
    {"Asellus Australis", 8, 44, 41.1, 18, 9, 15},
    {"Tejat", 6, 22, 57.6, 22, 30, 49},
    {"Mebsuta", 6, 43, 55.9, 25, 7, 52},
    {"Wasat", 7, 20, 7.4, 21, 58, 56},
    {"Mira", 2, 19, 20.8, -2, 58, 39},
    {"Sheratan", 1, 54, 38.4, 20, 48, 29},
    {"Atik", 3, 54, 7.9, 31, 53, 1},
    {"Alcyone", 3, 47, 29.1, 24, 6, 18},
    {"Zaurak", 3, 58, 1.8, -13, 30, 31},
    {"Cursa", 5, 7, 51.0, -5, 5, 11},
    {"Phact", 5, 39, 38.9, -34, 4, 27},
};

double StarRA(const CatalogueStar& c) {
    return (c.RAHours + c.RAMin / 60 + c.RASec / 3600) * 3.141592654 / 12;
}

double StarDec(const CatalogueStar& c) {
    const double sign = c.DecDeg < 0 ? -1 : 1;
    return sign * (std::fabs(c.DecDeg) + c.DecMin / 60 + c.DecSec / 3600) * 3.141592654 / 180;
}

std::string Two(int v) {
    std::string text = std::to_string(v);
    if (text.size() < 2) text.insert(text.begin(), '0');
    return text;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: make-sample OUTPUT.AZT\n";
        return 2;
    }
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    // The file enables the terms this mount really has: "Cone" (flag 1), the
    // N=1 Phi harmonics along Phi (flag 4) and along Theta (flag 5).
    s->TermEnable[1] = 1;
    s->TermEnable[4] = 1;
    s->TermEnable[5] = 1;

    // The imaginary mount: the errors data/README.md states.
    SyntheticMount m;
    m.ThetaEncOffset = 12 * kArcmin;  // counts are radians with the default counts per turn
    m.PhiEncOffset = -25 * kArcmin;
    m.ErrorNorth = 4 * kArcmin;      // primary axis tipped 4' to the north
    m.ErrorWest = -2.5 * kArcmin;    // and 2.5' to the east
    m.TermCoef[5] = 3 * kArcmin;     // cone
    m.TermCoef[10] = 40 * kArcsec;   // Phi error as cos(Phi)
    m.TermCoef[11] = -30 * kArcsec;  // Theta error as sin(Phi)
    m.NoiseRMS = 3 * kArcsec;
    m.Seed = 20260115;
    SyntheticObserver observer(*s, m);

    // 15 January 2026 from 19:30 local time (Pacific, 8 hours west), a star
    // every 4 minutes: the first one above 20 degrees and at least 60
    // degrees of azimuth from the one before, so the stars go round the sky.
    DateTimeRec local;
    local.Year = 2026;
    local.Month = 1;
    local.Day = 15;
    local.TimeZone = s->TimeZone;
    bool taken[sizeof(kStars) / sizeof(kStars[0])] = {};
    double lastAz = -10;
    for (int k = 0; k < 40; ++k) {
        const int minutes = 19 * 60 + 30 + 4 * k;
        local.Hour = static_cast<int16_t>(minutes / 60);
        local.Minute = static_cast<int16_t>(minutes % 60);
        local.Second = 0;
        const double LST = LTToLSTRad(*s, local);
        const double JD = LTToJD(local);
        int chosen = -1;
        for (double minSeparation : {1.05, 0.5, 0.0}) {
            for (size_t i = 0; i < sizeof(kStars) / sizeof(kStars[0]) && chosen < 0; ++i) {
                if (taken[i]) continue;
                const Vec3 h =
                    CelestialToHorizon(*s, StarRA(kStars[i]), StarDec(kStars[i]), LST, JD);
                const double alt = std::asin(h.z);
                const double az = std::atan2(-h.y, h.x);
                const double separation = std::fabs(std::remainder(az - lastAz, 6.283185308));
                if (alt > 20 * 3.141592654 / 180 && alt < 80 * 3.141592654 / 180 &&
                    separation >= minSeparation) {
                    chosen = static_cast<int>(i);
                    lastAz = az;
                }
            }
            if (chosen >= 0) break;
        }
        if (chosen < 0) {
            std::cerr << "make-sample: no star above 20 degrees at point " << k + 1 << "\n";
            return 1;
        }
        taken[chosen] = true;
        SyntheticPoint p =
            observer.MeasureStar(StarRA(kStars[chosen]), StarDec(kStars[chosen]), 1, LST, JD);
        p.Name = kStars[chosen].Name;
        p.TimeStr = Two(local.Hour) + ":" + Two(local.Minute) + ":00";
        p.DateStr = "2026/1/15";
        AddSyntheticPoints(*s, {p});
    }
    if (!SaveCalFile(*s, argv[1])) {
        std::cerr << "make-sample: cannot write " << argv[1] << "\n";
        return 1;
    }
    std::cout << "wrote " << s->NumCalPoints << " stars to " << argv[1] << "\n";
    return 0;
}
