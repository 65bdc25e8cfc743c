// The richer angle formatters and the parsers of typed-in angles.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

#include "sky/mStrings.h"

namespace {

// The program's half and full turn, written out here so that a wrong
// constant in the code shows.
constexpr double kPi = 3.141592654;
constexpr double kTwoPi = 6.283185308;

double Hms(double h, double m, double s) {
    return (h + m / 60 + s / 3600) * kPi / 12;
}
double Dms(double d, double m, double s) {
    return (d + m / 60 + s / 3600) * kPi / 180;
}

TEST(TimeRecToStrFormat, PaddedFieldsWithWholeSeconds) {
    DateTimeRec t;
    t.Hour = 7;
    t.Minute = 5;
    t.Second = 9.99;  // the whole part only: 09
    EXPECT_EQ(TimeRecToStr(t), "07:05:09");
    t.Hour = 23;
    t.Minute = 59;
    t.Second = 59.999;
    EXPECT_EQ(TimeRecToStr(t), "23:59:59");
    t.Hour = 0;
    t.Minute = 0;
    t.Second = 0;
    EXPECT_EQ(TimeRecToStr(t), "00:00:00");
    // A universal time can have a negative hour; it passes through.
    t.Hour = -3;
    t.Minute = 30;
    t.Second = 12.5;
    EXPECT_EQ(TimeRecToStr(t), "-3:30:12");
}

TEST(RAToHMSStrFormat, SymbolsOrBlanks) {
    EXPECT_EQ(RAToHMSStr(0.0, true, 0), "00h00m00s");
    EXPECT_EQ(RAToHMSStr(Hms(12, 30, 5), true, 0), "12h30m05s");
    EXPECT_EQ(RAToHMSStr(Hms(12, 30, 5), false, 0), "12 30 05");
    EXPECT_EQ(RAToHMSStr(kPi / 2, true, 0), "06h00m00s");  // quarter turn is 6 hours
}

TEST(RAToHMSStrFormat, DecimalsOfSeconds) {
    // Vega, J2000: RA 279.23473479 deg = 18h 36m 56.33635s (SIMBAD). From the
    // degrees by hand: 279.23473479 / 15 = 18.615648986 h, whose 0.015648986 h
    // are 56.3363496 s.
    const double vega = 279.23473479 * kPi / 180;
    EXPECT_EQ(RAToHMSStr(vega, true, 2), "18h36m56.34s");
    EXPECT_EQ(RAToHMSStr(vega, true, 4), "18h36m56.3363s");
    EXPECT_EQ(RAToHMSStr(vega, false, 1), "18 36 56.3");
    EXPECT_EQ(RAToHMSStr(vega, true, 0), "18h36m56s");
    // Seconds under 10 with decimals are not padded.
    EXPECT_EQ(RAToHMSStr(Hms(1, 2, 3.25), true, 2), "01h02m3.25s");
}

TEST(RAToHMSStrFormat, CarryOnTheRoundedSeconds) {
    // 59.97 s: with one decimal it is 60.0 and carries through to 24h = 00h.
    EXPECT_EQ(RAToHMSStr(Hms(23, 59, 59.97), true, 1), "00h00m00s");
    // With two decimals it stays.
    EXPECT_EQ(RAToHMSStr(Hms(23, 59, 59.97), true, 2), "23h59m59.97s");
    // No sign of its own: -0.5 h has the floor -1 as hours and 30 minutes.
    EXPECT_EQ(RAToHMSStr(-0.5 * kPi / 12, true, 0), "-1h30m00s");
}

TEST(AngleToDMSStrFormat, SymbolsOrBlanks) {
    EXPECT_EQ(AngleToDMSStr(0.0, true, 0), "00\u00B0 00' 00\"");
    EXPECT_EQ(AngleToDMSStr(Dms(10, 20, 30), true, 0), "10\u00B0 20' 30\"");
    EXPECT_EQ(AngleToDMSStr(Dms(10, 20, 30), false, 0), "10 20 30");
    EXPECT_EQ(AngleToDMSStr(kPi / 4, true, 0), "45\xC2\xB0 00' 00\"");
}

TEST(AngleToDMSStrFormat, SignDecimalsAndNoRangeReduction) {
    EXPECT_EQ(AngleToDMSStr(-Dms(0, 0, 1), true, 0), "-00\u00B0 00' 01\"");
    EXPECT_EQ(AngleToDMSStr(-Dms(10, 20, 30.25), false, 2), "-10 20 30.25");
    // 38.7836889444 deg, by hand: 47' and 1.28020" (a declination like Vega's).
    EXPECT_EQ(AngleToDMSStr(38.7836889444 * kPi / 180, true, 2), "38\u00B0 47' 1.28\"");
    // 400 degrees stays 400.
    EXPECT_EQ(AngleToDMSStr(400 * kPi / 180, false, 0), "400 00 00");
    // 59.96" to one place is 60.0: carries into minutes and degrees.
    EXPECT_EQ(AngleToDMSStr(Dms(10, 59, 59.96), false, 1), "11 00 00");
}

TEST(RAStrToRadParse, LettersBlanksAndColonsAgree) {
    const double want = Hms(12, 30, 5);
    EXPECT_EQ(RAStrToRad("12:30:05"), want);
    EXPECT_EQ(RAStrToRad("12h30m05s"), want);
    EXPECT_EQ(RAStrToRad("12H30M05S"), want);
    EXPECT_EQ(RAStrToRad("12 30 05"), want);
    EXPECT_EQ(RAStrToRad("12h 30m 05s"), want);
    EXPECT_EQ(RAStrToRad("  12 h 30 m 05 s  "), want);
}

TEST(RAStrToRadParse, PartialTextsAndDegrees) {
    EXPECT_EQ(RAStrToRad("12h"), 12 * 3.141592654 / 12);
    EXPECT_EQ(RAStrToRad("12h30m"), 12.5 * 3.141592654 / 12);
    EXPECT_EQ(RAStrToRad("12h30"), 12.5 * 3.141592654 / 12);
    // A lone number is degrees: 180 degrees is 12 hours.
    EXPECT_EQ(RAStrToRad("180"), 12 * 3.141592654 / 12);
    // Vega both ways (SIMBAD): 18h 36m 56.33635s and 279.23473479 deg, equal to
    // the 8 published decimals of a degree.
    EXPECT_NEAR(RAStrToRad("18h36m56.33635s"), 279.23473479 * kPi / 180, 0.5e-8 * kPi / 180);
    EXPECT_NEAR(RAStrToRad("279.23473479"), 279.23473479 * kPi / 180, 1e-15);
}

TEST(RAStrToRadParse, LeadingMinusGivesNegativeRadians) {
    EXPECT_EQ(RAStrToRad("-12:30:05"), -Hms(12, 30, 5));
    EXPECT_EQ(RAStrToRad("-12h30m05s"), -Hms(12, 30, 5));
    EXPECT_LT(RAStrToRad("-1 00 00"), 0.0);
}

TEST(RAStrToRadParse, BadTextGivesMinusTenToThe30) {
    EXPECT_EQ(kBadAngleText, -1e30);
    EXPECT_EQ(RAStrToRad("abc"), -1e30);
    EXPECT_EQ(RAStrToRad(""), -1e30);
    EXPECT_EQ(RAStrToRad("25h"), -1e30);  // beyond a full turn
    EXPECT_EQ(RAStrToRad("12hxxm"), -1e30);
    EXPECT_EQ(RAStrToRad("12h30mxs"), -1e30);
    EXPECT_EQ(RAStrToRad("h30m"), -1e30);
    EXPECT_EQ(RAStrToRad("--5"), -1e30);  // "-5" is -1/3 h: below 0
}

TEST(DecStrToRadParse, SeparatorsAgree) {
    const double want = Dms(10, 20, 30);
    EXPECT_EQ(DecStrToRad("10:20:30"), want);
    EXPECT_EQ(DecStrToRad("10d20m30s"), want);
    EXPECT_EQ(DecStrToRad("10D20M30S"), want);
    EXPECT_EQ(DecStrToRad("10\u00B0 20' 30\""), want);
    EXPECT_EQ(DecStrToRad("10 20 30"), want);
    EXPECT_EQ(DecStrToRad("10\u00B020'30\""), want);
    // +38 47' 01.2802" by hand: 47/60 = 0.7833333333, 1.2802/3600 = 0.0003556111,
    // 38.7836889444 deg, good to 1e-10 deg.
    EXPECT_NEAR(DecStrToRad("+38\u00B0 47' 01.2802\""), 38.7836889444 * kPi / 180,
                1e-10 * kPi / 180);
}

TEST(DecStrToRadParse, PartialTextsAndLoneNumbers) {
    EXPECT_EQ(DecStrToRad("45"), 45 * 3.141592654 / 180);
    EXPECT_EQ(DecStrToRad("-45"), -45 * 3.141592654 / 180);
    EXPECT_EQ(DecStrToRad("45\u00B0"), 45 * 3.141592654 / 180);
    EXPECT_EQ(DecStrToRad("10:30"), 10.5 * 3.141592654 / 180);
    EXPECT_EQ(DecStrToRad("10d30m"), 10.5 * 3.141592654 / 180);
}

TEST(DecStrToRadParse, SignRules) {
    // Minus on the degrees: the whole angle is negative.
    EXPECT_EQ(DecStrToRad("-10:20:30"), -Dms(10, 20, 30));
    EXPECT_LT(DecStrToRad("-10 20 30"), 0.0);
    // A minus on a degrees field of 0, or on the minutes behind it, gives
    // minus half a degree for 30 minutes.
    EXPECT_EQ(DecStrToRad("-0:30:00"), -0.5 * 3.141592654 / 180);
    EXPECT_EQ(DecStrToRad("0:-30:00"), -0.5 * 3.141592654 / 180);
    // Minus on the seconds with degrees and minutes 0.
    EXPECT_EQ(DecStrToRad("0:0:-36"), -0.01 * 3.141592654 / 180);
    EXPECT_EQ(DecStrToRad("-00\u00B0 00' 01\""), -Dms(0, 0, 1));
}

TEST(DecStrToRadParse, BadSignsAndTextsGiveMinusTenToThe30) {
    EXPECT_EQ(DecStrToRad("10:-20:30"), -1e30);   // minus on minutes, degrees not 0
    EXPECT_EQ(DecStrToRad("-10:-20:30"), -1e30);  // two minus signs
    EXPECT_EQ(DecStrToRad("-0:-20:30"), -1e30);   // two minus signs, degrees 0
    EXPECT_EQ(DecStrToRad("0:20:-30"), -1e30);    // minus on seconds, minutes not 0
    EXPECT_EQ(DecStrToRad("5:0:-30"), -1e30);     // minus on seconds, degrees not 0
    EXPECT_EQ(DecStrToRad("abc"), -1e30);
    EXPECT_EQ(DecStrToRad(""), -1e30);
    EXPECT_EQ(DecStrToRad(":30:00"), -1e30);  // degrees missing
    EXPECT_EQ(DecStrToRad("10:xx:00"), -1e30);
    EXPECT_EQ(DecStrToRad("10:20:yy"), -1e30);
    EXPECT_EQ(DecStrToRad("-:20:30"), -1e30);
}

TEST(DecStrToRadParse, NoRangeTest) {
    EXPECT_EQ(DecStrToRad("400"), 400 * 3.141592654 / 180);
    EXPECT_EQ(DecStrToRad("-120:00:00"), -120 * 3.141592654 / 180);
}

// Difference of two right ascensions across the 0/24h seam.
double RaDifference(double a, double b) {
    double d = std::fmod(a - b, kTwoPi);
    if (d > kTwoPi / 2) d -= kTwoPi;
    if (d < -kTwoPi / 2) d += kTwoPi;
    return d;
}

TEST(AngleTextRoundTrip, RAToHMSStrThroughRAStrToRad) {
    std::mt19937_64 gen(2026);
    std::uniform_real_distribution<double> ra(0.0, kTwoPi);
    for (int16_t decimals = 0; decimals <= 4; ++decimals) {
        // Half a unit of the last decimal of seconds of time, in radians, plus
        // room for the rounding of the arithmetic (about 1e-15 rad).
        const double tolerance = 0.5 * std::pow(10.0, -decimals) / 3600 * kPi / 12 + 1e-12;
        for (int i = 0; i < 400; ++i) {
            const double want = ra(gen);
            for (bool symbols : {true, false}) {
                const std::string text = RAToHMSStr(want, symbols, decimals);
                const double got = RAStrToRad(text);
                ASSERT_NE(got, kBadAngleText) << "text " << text;
                EXPECT_NEAR(RaDifference(got, want), 0.0, tolerance)
                    << "text " << text << ", wanted " << want << ", got " << got;
            }
        }
    }
}

TEST(AngleTextRoundTrip, AngleToDMSStrThroughDecStrToRad) {
    std::mt19937_64 gen(1122);
    std::uniform_real_distribution<double> angle(-kPi, kPi);
    for (int16_t decimals = 0; decimals <= 4; ++decimals) {
        // Half a unit of the last decimal of arcseconds, in radians.
        const double tolerance = 0.5 * std::pow(10.0, -decimals) / 3600 * kPi / 180 + 1e-12;
        for (int i = 0; i < 400; ++i) {
            // Some angles under a degree, to exercise a "-00" degrees field.
            const double want = (i % 4 == 0) ? angle(gen) / 200 : angle(gen);
            for (bool symbols : {true, false}) {
                const std::string text = AngleToDMSStr(want, symbols, decimals);
                const double got = DecStrToRad(text);
                ASSERT_NE(got, kBadAngleText) << "text " << text;
                EXPECT_NEAR(got, want, tolerance)
                    << "text " << text << ", wanted " << want << ", got " << got;
            }
        }
    }
}

}  // namespace
