// Splitting an angle into whole part, minutes and seconds, and the text of
// the fields, shared by the right ascension and declination formatters.
#pragma once

#include <string>

// The degree sign, UTF-8 (character 176 of the single-byte code page).
inline constexpr char kDegreeSign[] = "\u00B0";

struct SexagesimalParts {
    double Whole = 0.0;  // hours or degrees
    double Minutes = 0.0;
    double Seconds = 0.0;
};

// Takes A in hours or degrees. Whole is Int(A); with M = (A - Whole) x 60,
// Minutes is Int(M) and Seconds is (M - Minutes) x 60.
SexagesimalParts SexagesimalSplit(double A);

// Rounds the seconds to `decimals` places for display. When the rounded
// seconds reach 60 they drop by 60 and the minutes rise by 1; minutes at 60
// then drop by 60 and the whole part rises by 1. Returns the padded text of
// the rounded seconds. The test at 60 reads the same rounded value the text
// shows, so the text never says 60.
std::string CarrySeconds(SexagesimalParts& p, int decimals);

// Puts "0" in front of a text shorter than two characters: 5 gives 05,
// 5.3 stays 5.3.
std::string PadTwo(const std::string& text);

// Padded text of a whole field (hours, degrees or minutes).
std::string WholeFieldText(double v);

// The three padded field texts of an angle.
struct SexagesimalTexts {
    std::string Whole;
    std::string Minutes;
    std::string Seconds;
};

// Right ascension in radians to hours (H = RA x 12 / half turn), minutes and
// seconds rounded to `decimals` places, with the carry and the hours taken
// modulo 24 once. A negative RA passes through with negative hours.
SexagesimalTexts HourFieldTexts(double RA, int decimals);

// Angle in radians to degrees (D = Angle x 180 / half turn x sign, so D is
// not negative), minutes and seconds rounded to `decimals` places, with the
// carry and no range reduction. The sign is the caller's to write.
SexagesimalTexts DegreeFieldTexts(double Angle, int decimals);
