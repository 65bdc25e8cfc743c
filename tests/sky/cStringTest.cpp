// Right ascension and declination text of the cString class, and its
// file-name and substring helpers.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

#include "sky/cString.h"

namespace {

// The program's half turn, written out here so that a wrong constant in the
// code shows.
constexpr double kPi = 3.141592654;

// Hours, minutes and seconds of right ascension to radians, by hand.
double Hms(double h, double m, double s) {
    return (h + m / 60 + s / 3600) * kPi / 12;
}
// Degrees, arcminutes and arcseconds to radians, by hand.
double Dms(double d, double m, double s) {
    return (d + m / 60 + s / 3600) * kPi / 180;
}

TEST(RARadToStrFormat, ZeroIsAllZeroFields) {
    const cString str;
    EXPECT_EQ(str.RARadToStr(0.0, "a"), "00h00m00s");
    EXPECT_EQ(str.RARadToStr(0.0, ":"), "00:00:00");
}

TEST(RARadToStrFormat, TwelveHoursAreAHalfTurn) {
    const cString str;
    // A quarter turn is 6 hours, a half turn 12.
    EXPECT_EQ(str.RARadToStr(kPi / 2, "a"), "06h00m00s");
    EXPECT_EQ(str.RARadToStr(kPi, "a"), "12h00m00s");
}

TEST(RARadToStrFormat, SeparatorJoinsPaddedFields) {
    const cString str;
    EXPECT_EQ(str.RARadToStr(Hms(12, 30, 5), ":"), "12:30:05");
    EXPECT_EQ(str.RARadToStr(Hms(12, 30, 5), "a"), "12h30m05s");
    EXPECT_EQ(str.RARadToStr(Hms(3, 4, 5), " "), "03 04 05");
    // Seconds keep one decimal; "5.3" is long enough to need no padding.
    EXPECT_EQ(str.RARadToStr(Hms(3, 4, 5.3), ":"), "03:04:5.3");
    EXPECT_EQ(str.RARadToStr(Hms(3, 4, 15.26), ":"), "03:04:15.3");
    // Any text other than "a" is a separator, also a longer one.
    EXPECT_EQ(str.RARadToStr(Hms(1, 2, 3), "--"), "01--02--03");
}

TEST(RARadToStrFormat, CarryRunsThroughAllFieldsAndWrapsAt24) {
    const cString str;
    EXPECT_EQ(str.RARadToStr(Hms(23, 59, 59.97), "a"), "00h00m00s");
    EXPECT_EQ(str.RARadToStr(Hms(10, 59, 59.96), "a"), "11h00m00s");
    EXPECT_EQ(str.RARadToStr(Hms(10, 59, 59.94), "a"), "10h59m59.9s");
}

TEST(RARadToStrFormat, PublishedPlaceOfVega) {
    const cString str;
    // Vega, J2000: RA 279.23473479 deg = 18h 36m 56.33635s (SIMBAD). One decimal
    // of seconds: 56.3.
    EXPECT_EQ(str.RARadToStr(279.23473479 * kPi / 180, "a"), "18h36m56.3s");
}

TEST(DecRadToStrFormat, ZeroWithSymbols) {
    const cString str;
    EXPECT_EQ(str.DecRadToStr(0.0, "a"), "00\u00B0 00' 00\"");
    EXPECT_EQ(str.DecRadToStr(0.0, ":"), "00:00:00");
}

TEST(DecRadToStrFormat, DegreeSignIsUtf8) {
    const cString str;
    const std::string text = str.DecRadToStr(kPi / 4, "a");
    EXPECT_EQ(text, "45\xC2\xB0 00' 00\"");
}

TEST(DecRadToStrFormat, NegativeAnglesGetALeadingMinus) {
    const cString str;
    // Minus one arcsecond: degrees 00 with "-" in front.
    EXPECT_EQ(str.DecRadToStr(-Dms(0, 0, 1), "a"), "-00\u00B0 00' 01\"");
    EXPECT_EQ(str.DecRadToStr(-Dms(10, 20, 30), ":"), "-10:20:30");
    EXPECT_EQ(str.DecRadToStr(Dms(10, 20, 30), ":"), "10:20:30");
}

TEST(DecRadToStrFormat, WholeSecondsCarry) {
    const cString str;
    EXPECT_EQ(str.DecRadToStr(Dms(10, 59, 59.7), ":"), "11:00:00");
    EXPECT_EQ(str.DecRadToStr(Dms(10, 59, 59.2), ":"), "10:59:59");
    // 38.7836889444 deg, by hand: 0.7836889444 x 60 = 47.0213367', 0.0213367 x 60 =
    // 1.2802" (a declination like Vega's).
    EXPECT_EQ(str.DecRadToStr(38.7836889444 * kPi / 180, "a"), "38\u00B0 47' 01\"");
}

TEST(StrToRARadParse, HoursMinutesSeconds) {
    const cString str;
    // 12h 30m is 12.5 hours; 12.5 x 3.141592654 / 12 in that order.
    EXPECT_EQ(str.StrToRARad("12:30:00"), 12.5 * 3.141592654 / 12);
    EXPECT_EQ(str.StrToRARad("12:30"), 12.5 * 3.141592654 / 12);
    EXPECT_EQ(str.StrToRARad("12 30 00"), 12.5 * 3.141592654 / 12);
    EXPECT_EQ(str.StrToRARad("  12:30:00  "), 12.5 * 3.141592654 / 12);
    EXPECT_EQ(str.StrToRARad("12:"), 12 * 3.141592654 / 12);
    // 6h 15m 36s = 6.26 hours; the sum of the parts rounds, so allow an ulp.
    EXPECT_NEAR(str.StrToRARad("6:15:36"), 6.26 * kPi / 12, 1e-15);
}

TEST(StrToRARadParse, LoneNumberIsDegrees) {
    const cString str;
    // 180 degrees is 12 hours.
    EXPECT_EQ(str.StrToRARad("180"), str.StrToRARad("12:00:00"));
    EXPECT_EQ(str.StrToRARad("180"), 12 * 3.141592654 / 12);
    EXPECT_NEAR(str.StrToRARad("279.23473479"), 279.23473479 * kPi / 180, 1e-15);
}

TEST(StrToRARadParse, BadTextOrRangeGivesMinusOne) {
    const cString str;
    EXPECT_EQ(str.StrToRARad("25:00:00"), -1.0);  // 25 hours is beyond a full turn
    EXPECT_EQ(str.StrToRARad("abc"), -1.0);
    EXPECT_EQ(str.StrToRARad(""), -1.0);
    EXPECT_EQ(str.StrToRARad("12:ab"), -1.0);
    EXPECT_EQ(str.StrToRARad("12:30:xx"), -1.0);
    EXPECT_EQ(str.StrToRARad("x:30:00"), -1.0);
    EXPECT_EQ(str.StrToRARad("-1:00:00"), -1.0);  // below 0
    EXPECT_EQ(str.StrToRARad("12h30m"), -1.0);    // letters are not separators here
}

TEST(StrToRARadParse, ReadsWhatRARadToStrWrites) {
    const cString str;
    std::mt19937_64 gen(7);
    std::uniform_real_distribution<double> ra(0.0, 6.28);
    for (int i = 0; i < 500; ++i) {
        const double want = ra(gen);
        const std::string text = str.RARadToStr(want, ":");
        const double got = str.StrToRARad(text);
        // One decimal of seconds of time: at most 0.05 s off, 0.05/3600 h.
        EXPECT_NEAR(got, want, 0.05 / 3600 * kPi / 12 + 1e-12) << "text " << text;
    }
}

TEST(HasFileNamePart, BehindTheLastBackslashOrSlash) {
    const cString str;
    EXPECT_EQ(str.HasFileName("C:\\Stars\\M31.AZT"), "M31.AZT");
    EXPECT_EQ(str.HasFileName("C:\\Stars\\"), "");
    EXPECT_EQ(str.HasFileName("/home/obs/cal/M31.AZT"), "M31.AZT");
    EXPECT_EQ(str.HasFileName("/home/obs/cal/"), "");
    EXPECT_EQ(str.HasFileName("M31.AZT"), "M31.AZT");
    EXPECT_EQ(str.HasFileName(""), "");
    EXPECT_EQ(str.HasFileName("C:\\a/b\\c.txt"), "c.txt");
    EXPECT_EQ(str.HasFileName("/a\\b/c.txt"), "c.txt");
}

TEST(ExtractCharacters, CountsFromOneAndClipsTheEnd) {
    const cString str;
    EXPECT_EQ(str.Extract("Aztrue", 2, 100), "ztrue");
    EXPECT_EQ(str.Extract("Aztrue", 1, 6), "Aztrue");
    EXPECT_EQ(str.Extract("Aztrue", 3, 3), "t");
    EXPECT_EQ(str.Extract("Aztrue", 7, 6), "");  // First = Last + 1: nothing
    EXPECT_EQ(str.Extract("", 1, 5), "");
}

TEST(ExtractCharacters, CountsUtf8CharactersNotBytes) {
    const cString str;
    // "Größe": five characters, seven bytes.
    const std::string word = "Gr\u00F6\u00DFe";
    EXPECT_EQ(str.Extract(word, 3, 4), "\u00F6\u00DF");
    EXPECT_EQ(str.Extract(word, 5, 100), "e");
    // The degree sign is one character.
    EXPECT_EQ(str.Extract("12\u00B030'", 3, 3), "\u00B0");
    EXPECT_EQ(str.Extract("12\u00B030'", 4, 5), "30");
}

TEST(ExtractCharacters, OutOfRangeArgumentsGiveText) {
    const cString str;
    EXPECT_EQ(str.Extract("Aztrue", 5, 2), "");
    EXPECT_EQ(str.Extract("Aztrue", 0, 2), "Az");
    EXPECT_EQ(str.Extract("Aztrue", -4, -1), "");
}

}  // namespace
