// Shared pieces of the sky tests: civil times, sexagesimal angles, a decimal-comma locale.
#pragma once

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <random>
#include <string>

#include "sky/mTime.h"

namespace skytest {

constexpr double kPi = 3.141592654;  // the program's half turn, written out

inline DateTimeRec Time(int y, int m, int d, int h = 0, int mi = 0, double s = 0, double zone = 0,
                        bool dst = false) {
    return DateTimeRec{int16_t(y), int16_t(m), int16_t(d), int16_t(h), int16_t(mi), s, zone, dst};
}

// Sexagesimal right ascension and declination to radians by hand.
inline double Hms(double h, double m, double s) {
    return (h + m / 60 + s / 3600) * kPi / 12;
}
inline double Dms(double d, double m, double s) {
    return (d + m / 60 + s / 3600) * kPi / 180;
}

// The process in a locale with a decimal comma while this lives (the test build makes one), then
// back in the "C" locale the tests run in.
struct CommaLocale {
    bool active = std::setlocale(LC_ALL, "de_DE.UTF-8") && *std::localeconv()->decimal_point == ',';
    ~CommaLocale() { std::setlocale(LC_ALL, "C"); }
};

}  // namespace skytest
