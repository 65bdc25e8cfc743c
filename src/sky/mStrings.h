// Richer angle formatters and the parsers of typed-in angles.
#pragma once

#include <cstdint>
#include <string>

#include "sky/mTime.h"

inline constexpr double kBadAngleText = -1e30;

// "hh:mm:ss" of a time record, each field padded to two characters.
std::string TimeRecToStr(const DateTimeRec& t);
// Hours/minutes/seconds text to radians; kBadAngleText on bad input.
double RAStrToRad(const std::string& Text);
// Degrees/minutes/seconds text to radians; kBadAngleText on bad input.
double DecStrToRad(const std::string& Text);
std::string RAToHMSStr(double Angle, bool UseSymbols, int16_t Decimals);
std::string AngleToDMSStr(double Angle, bool UseSymbols, int16_t Decimals);
