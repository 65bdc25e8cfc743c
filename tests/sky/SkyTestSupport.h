// Shared pieces of the sky tests: civil times, sexagesimal angles by hand,
// and a locale with a decimal comma.
#pragma once

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>

#include "sky/mTime.h"

namespace skytest {

// The program's half turn, written out here so that a wrong constant in the
// code shows.
constexpr double kPi = 3.141592654;

inline DateTimeRec Time(int y, int m, int d, int h = 0, int mi = 0, double s = 0, double zone = 0,
                        bool dst = false) {
    return DateTimeRec{static_cast<int16_t>(y),
                       static_cast<int16_t>(m),
                       static_cast<int16_t>(d),
                       static_cast<int16_t>(h),
                       static_cast<int16_t>(mi),
                       s,
                       zone,
                       dst};
}

// Hours, minutes and seconds of right ascension, and degrees, arcminutes and
// arcseconds, to radians by hand.
inline double Hms(double h, double m, double s) {
    return (h + m / 60 + s / 3600) * kPi / 12;
}
inline double Dms(double d, double m, double s) {
    return (d + m / 60 + s / 3600) * kPi / 180;
}

// Switches the process to an installed locale whose decimal point is a comma,
// and back to the locale before at its end; Active() is false when none is
// installed.
class CommaLocale {
  public:
    CommaLocale() : saved_(std::setlocale(LC_ALL, nullptr)) {
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "fr_FR.UTF-8", "fr_FR.utf8",
                                 "nl_NL.UTF-8", "it_IT.UTF-8", "es_ES.UTF-8", "ru_RU.UTF-8"}) {
            if (std::setlocale(LC_ALL, name) && std::localeconv()->decimal_point[0] == ',') {
                active_ = true;
                return;
            }
        }
        std::setlocale(LC_ALL, saved_.c_str());
    }
    ~CommaLocale() { std::setlocale(LC_ALL, saved_.c_str()); }
    bool Active() const { return active_; }

  private:
    std::string saved_;
    bool active_ = false;
};

}  // namespace skytest
