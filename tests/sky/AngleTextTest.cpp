// Angle text: the right ascension and declination formatters and parsers of
// cString and mStrings, the carry of rounded seconds, and the file-name and
// substring helpers.
#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <random>
#include <string>

#include "SkyTestSupport.h"
#include "sky/Sexagesimal.h"
#include "sky/cString.h"
#include "sky/mStrings.h"

namespace {

using skytest::Dms;
using skytest::Hms;
using skytest::kPi;

// Vega, J2000: RA 279.23473479 deg = 18h 36m 56.33635s (SIMBAD). By hand:
// 279.23473479 / 15 = 18.615648986 h, whose 0.015648986 h are 56.3363496 s.
const double kVegaRA = 279.23473479 * kPi / 180;
// 38.7836889444 deg, by hand 38 deg 47' 1.28020" (a declination like Vega's).
const double kVegaLikeDec = 38.7836889444 * kPi / 180;

TEST(AngleTextFormat, cStringFieldsSeparatorsAndCarry) {
    const cString str;
    const auto RA = &cString::RARadToStr;
    const auto Dec = &cString::DecRadToStr;
    // Separator "a": the unit letters and symbols. A quarter turn is 6 h, a
    // half turn 12 h. Seconds keep one decimal ("5.3" needs no padding); the
    // rounded seconds carry through all fields, and 24 h wraps to 00h. The
    // degree sign is UTF-8.
    // clang-format off
    const struct {
        std::string (cString::*format)(double, const std::string&) const;
        double angle;
        const char* separator;
        const char* want;
    } cases[] = {
        {RA, 0.0, "a", "00h00m00s"},                {RA, 0.0, ":", "00:00:00"},
        {RA, kPi / 2, "a", "06h00m00s"},            {RA, kPi, "a", "12h00m00s"},
        {RA, Hms(12, 30, 5), ":", "12:30:05"},      {RA, Hms(12, 30, 5), "a", "12h30m05s"},
        {RA, Hms(3, 4, 5), " ", "03 04 05"},        {RA, Hms(1, 2, 3), "--", "01--02--03"},
        {RA, Hms(3, 4, 5.3), ":", "03:04:5.3"},     {RA, Hms(3, 4, 15.26), ":", "03:04:15.3"},
        {RA, kVegaRA, "a", "18h36m56.3s"},          {RA, Hms(23, 59, 59.97), "a", "00h00m00s"},
        {RA, Hms(10, 59, 59.96), "a", "11h00m00s"}, {RA, Hms(10, 59, 59.94), "a", "10h59m59.9s"},
        {Dec, 0.0, "a", "00\u00B0 00' 00\""},        {Dec, 0.0, ":", "00:00:00"},
        {Dec, kPi / 4, "a", "45\xC2\xB0 00' 00\""}, {Dec, -Dms(0, 0, 1), "a", "-00\u00B0 00' 01\""},
        {Dec, -Dms(10, 20, 30), ":", "-10:20:30"},  {Dec, Dms(10, 20, 30), ":", "10:20:30"},
        {Dec, Dms(10, 59, 59.7), ":", "11:00:00"},  {Dec, Dms(10, 59, 59.2), ":", "10:59:59"},
        {Dec, kVegaLikeDec, "a", "38\u00B0 47' 01\""}};
    // clang-format on
    for (const auto& c : cases) EXPECT_EQ((str.*c.format)(c.angle, c.separator), c.want) << c.want;
}

TEST(AngleTextFormat, mStringsSymbolsDecimalsAndCarry) {
    // Seconds with decimals are not padded; 59.97 s to one decimal is 60.0
    // and carries to 24h = 00h; -0.5 h has the floor -1 as hours and 30
    // minutes; degrees have no range reduction, and 59.96" carries twice.
    const auto H = RAToHMSStr;
    const auto D = AngleToDMSStr;
    // clang-format off
    const struct {
        std::string (*format)(double, bool, int16_t);
        double angle;
        bool symbols;
        int16_t decimals;
        const char* want;
    } cases[] = {
        {H, 0.0, true, 0, "00h00m00s"},                {H, kPi / 2, true, 0, "06h00m00s"},
        {H, Hms(12, 30, 5), true, 0, "12h30m05s"},     {H, Hms(12, 30, 5), false, 0, "12 30 05"},
        {H, kVegaRA, true, 2, "18h36m56.34s"},         {H, kVegaRA, true, 4, "18h36m56.3363s"},
        {H, kVegaRA, false, 1, "18 36 56.3"},          {H, kVegaRA, true, 0, "18h36m56s"},
        {H, Hms(1, 2, 3.25), true, 2, "01h02m3.25s"}, {H, Hms(23, 59, 59.97), true, 1, "00h00m00s"},
        {H, Hms(23, 59, 59.97), true, 2, "23h59m59.97s"},
        {H, -0.5 * kPi / 12, true, 0, "-1h30m00s"},
        {D, 0.0, true, 0, "00\u00B0 00' 00\""},          {D, Dms(10, 20, 30), false, 0, "10 20 30"},
        {D, Dms(10, 20, 30), true, 0, "10\u00B0 20' 30\""},
        {D, kPi / 4, true, 0, "45\xC2\xB0 00' 00\""},
        {D, -Dms(0, 0, 1), true, 0, "-00\u00B0 00' 01\""},
        {D, -Dms(10, 20, 30.25), false, 2, "-10 20 30.25"},
        {D, kVegaLikeDec, true, 2, "38\u00B0 47' 1.28\""},
        {D, 400 * kPi / 180, false, 0, "400 00 00"},
        {D, Dms(10, 59, 59.96), false, 1, "11 00 00"}};
    // clang-format on
    for (const auto& c : cases)
        EXPECT_EQ(c.format(c.angle, c.symbols, c.decimals), c.want) << c.want;
    // The time of day: padded fields, whole seconds, a negative hour passes.
    // clang-format off
    const struct { int h, m; double s; const char* want; } times[] = {
        {7, 5, 9.99, "07:05:09"}, {23, 59, 59.999, "23:59:59"}, {0, 0, 0, "00:00:00"},
        {-3, 30, 12.5, "-3:30:12"}};
    // clang-format on
    for (const auto& t : times)
        EXPECT_EQ(TimeRecToStr(skytest::Time(2000, 1, 1, t.h, t.m, t.s)), t.want) << t.want;
}

TEST(AngleTextFormat, RoundedSecondsCarryAsTheTextRounds) {
    // 59.95 is stored as 59.950000000000003; rounded to one place it is 60.
    SexagesimalParts up{1, 10, 59.95};
    EXPECT_EQ(CarrySeconds(up, 1), "00");
    EXPECT_EQ(up.Minutes, 11.0);
    // The double just below is 59.949999999999996: its exact value rounds to
    // 59.9, although x 10 in binary gives exactly 599.5, a tie that a rounding
    // of the product would send up to 600. Test and text must agree: no carry.
    const double below = std::nextafter(59.95, 0.0);
    ASSERT_EQ(below * 10, 599.5);
    SexagesimalParts down{1, 10, below};
    EXPECT_EQ(CarrySeconds(down, 1), "59.9");
    EXPECT_EQ(down.Minutes, 10.0);
    // Whole seconds: 30.5 is a true tie to the even 30; 59.5 goes to the even
    // 60 and carries.
    SexagesimalParts tie{5, 0, 30.5}, sixty{5, 0, 59.5};
    EXPECT_EQ(CarrySeconds(tie, 0), "30");
    EXPECT_EQ(CarrySeconds(sixty, 0), "00");
    EXPECT_EQ(sixty.Minutes, 1.0);
}

struct ParseCase {
    const char* text;
    double want, tol;
};
void ExpectParses(double (*parse)(const std::string&), std::initializer_list<ParseCase> cases) {
    for (const auto& c : cases) EXPECT_NEAR(c.want, parse(c.text), c.tol) << "\"" << c.text << "\"";
}
const double kBad = -1e30;  // kBadAngleText of the mStrings parsers
const double kVegaTol = 0.5e-8 * kPi / 180, kVegaLikeTol = 1e-10 * kPi / 180;

TEST(AngleTextParse, cStringHoursMinutesSeconds) {
    // Colons or blanks; a lone number is degrees; -1 beyond a full turn,
    // below 0, for bad text, and for letters, which are no separators here.
    // 6h 15m 36s = 6.26 h: the sum of the parts rounds, so an ulp is allowed.
    // clang-format off
    ExpectParses([](const std::string& t) { return cString().StrToRARad(t); }, {
        {"12:30:00", 12.5 * kPi / 12, 0}, {"12:30", 12.5 * kPi / 12, 0},
        {"12 30 00", 12.5 * kPi / 12, 0},
        {"  12:30:00  ", 12.5 * kPi / 12, 0}, {"12:", 12 * kPi / 12, 0}, {"180", 12 * kPi / 12, 0},
        {"6:15:36", 6.26 * kPi / 12, 1e-15}, {"279.23473479", kVegaRA, 1e-15}, {"25:00:00", -1, 0},
        {"abc", -1, 0}, {"", -1, 0}, {"12:ab", -1, 0}, {"12:30:xx", -1, 0}, {"x:30:00", -1, 0},
        {"-1:00:00", -1, 0}, {"12h30m", -1, 0}});
    // clang-format on
}

TEST(AngleTextParse, mStringsRightAscension) {
    // Letters in any case, blanks or colons; partial texts; a lone number is
    // degrees; Vega both ways (SIMBAD), equal to the 8 published decimals of
    // a degree; a leading minus gives negative radians; -1e30 for bad text
    // and beyond a full turn; "--5" is "-5" (-1/3 h), below 0.
    EXPECT_EQ(kBadAngleText, kBad);
    // clang-format off
    ExpectParses(RAStrToRad, {
        {"12:30:05", Hms(12, 30, 5), 0}, {"12h30m05s", Hms(12, 30, 5), 0},
        {"12H30M05S", Hms(12, 30, 5), 0}, {"12 30 05", Hms(12, 30, 5), 0},
        {"12h 30m 05s", Hms(12, 30, 5), 0}, {"  12 h 30 m 05 s  ", Hms(12, 30, 5), 0},
        {"12h", 12 * kPi / 12, 0}, {"12h30m", 12.5 * kPi / 12, 0}, {"12h30", 12.5 * kPi / 12, 0},
        {"180", 12 * kPi / 12, 0}, {"18h36m56.33635s", kVegaRA, kVegaTol},
        {"279.23473479", kVegaRA, 1e-15},
        {"-12:30:05", -Hms(12, 30, 5), 0}, {"-12h30m05s", -Hms(12, 30, 5), 0},
        {"-1 00 00", -Hms(1, 0, 0), 0},
        {"abc", kBad, 0}, {"", kBad, 0}, {"25h", kBad, 0}, {"12hxxm", kBad, 0},
        {"12h30mxs", kBad, 0},
        {"h30m", kBad, 0}, {"--5", kBad, 0}});
    // clang-format on
}

TEST(AngleTextParse, mStringsDeclination) {
    // Separators agree, the degree sign included. +38 47' 01.2802" by hand:
    // 47/60 = 0.7833333333, 1.2802/3600 = 0.0003556111, 38.7836889444 deg.
    // Partial texts and lone numbers; no range test. A minus on the degrees
    // makes all negative; on degrees 0, or on the minutes behind them, half a
    // degree for 30 minutes; on the seconds only behind degrees and minutes 0.
    // Two minus signs, a minus anywhere else, or a missing or bad field: -1e30.
    // clang-format off
    ExpectParses(DecStrToRad, {
        {"10:20:30", Dms(10, 20, 30), 0}, {"10d20m30s", Dms(10, 20, 30), 0},
        {"10D20M30S", Dms(10, 20, 30), 0}, {"10\u00B0 20' 30\"", Dms(10, 20, 30), 0},
        {"10 20 30", Dms(10, 20, 30), 0}, {"10\u00B020'30\"", Dms(10, 20, 30), 0},
        {"+38\u00B0 47' 01.2802\"", kVegaLikeDec, kVegaLikeTol}, {"45", 45 * kPi / 180, 0},
        {"-45", -45 * kPi / 180, 0}, {"45\u00B0", 45 * kPi / 180, 0},
        {"10:30", 10.5 * kPi / 180, 0},
        {"10d30m", 10.5 * kPi / 180, 0}, {"400", 400 * kPi / 180, 0},
        {"-120:00:00", -120 * kPi / 180, 0},
        {"-10:20:30", -Dms(10, 20, 30), 0}, {"-10 20 30", -Dms(10, 20, 30), 0},
        {"-0:30:00", -0.5 * kPi / 180, 0}, {"0:-30:00", -0.5 * kPi / 180, 0},
        {"0:0:-36", -0.01 * kPi / 180, 0}, {"-00\u00B0 00' 01\"", -Dms(0, 0, 1), 0},
        {"10:-20:30", kBad, 0}, {"-10:-20:30", kBad, 0}, {"-0:-20:30", kBad, 0},
        {"0:20:-30", kBad, 0},
        {"5:0:-30", kBad, 0}, {"abc", kBad, 0}, {"", kBad, 0}, {":30:00", kBad, 0},
        {"10:xx:00", kBad, 0}, {"10:20:yy", kBad, 0}, {"-:20:30", kBad, 0}});
    // clang-format on
}

// Difference of two right ascensions across the 0/24h seam.
double RaDifference(double a, double b) {
    return std::remainder(a - b, 2 * kPi);
}

TEST(AngleTextRoundTrip, FormatThenParseRandomAngles) {
    // cString: one decimal of seconds of time, at most 0.05 s off.
    const cString str;
    std::mt19937_64 gen(7);
    std::uniform_real_distribution<double> ra(0.0, 2 * kPi), dec(-kPi, kPi);
    for (int i = 0; i < 500; ++i) {
        const double want = ra(gen) * 0.9994;  // below 6.28, clear of the 24 h wrap
        const std::string text = str.RARadToStr(want, ":");
        EXPECT_NEAR(str.StrToRARad(text), want, 0.05 / 3600 * kPi / 12 + 1e-12) << "text " << text;
    }
    // mStrings: half a unit of the last decimal of seconds (of time or of
    // arc), in radians, plus room for the rounding of the arithmetic.
    for (int16_t decimals = 0; decimals <= 4; ++decimals) {
        const double arcsec = 0.5 * std::pow(10.0, -decimals) / 3600 * kPi / 180 + 1e-12;
        const double timeSec = 0.5 * std::pow(10.0, -decimals) / 3600 * kPi / 12 + 1e-12;
        for (int i = 0; i < 400; ++i) {
            const double r = ra(gen);
            // Some angles under a degree, to exercise a "-00" degrees field.
            const double d = (i % 4 == 0) ? dec(gen) / 200 : dec(gen);
            for (bool symbols : {true, false}) {
                const std::string raText = RAToHMSStr(r, symbols, decimals);
                const std::string decText = AngleToDMSStr(d, symbols, decimals);
                EXPECT_NEAR(RaDifference(RAStrToRad(raText), r), 0.0, timeSec)
                    << raText << " of " << r;
                EXPECT_NEAR(DecStrToRad(decText), d, arcsec) << decText << " of " << d;
            }
        }
    }
}

TEST(TextHelpers, FileNameAndCharacterExtract) {
    const cString str;
    // Behind the last backslash or slash.
    // clang-format off
    const char* paths[][2] = {
        {"C:\\Stars\\M31.AZT", "M31.AZT"}, {"C:\\Stars\\", ""},
        {"/home/obs/cal/M31.AZT", "M31.AZT"}, {"/home/obs/cal/", ""}, {"M31.AZT", "M31.AZT"},
        {"", ""}, {"C:\\a/b\\c.txt", "c.txt"}, {"/a\\b/c.txt", "c.txt"}};
    // clang-format on
    for (const auto& [path, name] : paths) EXPECT_EQ(str.HasFileName(path), name) << path;
    // Characters counted from 1, UTF-8 characters not bytes ("Größe": five
    // characters, seven bytes; the degree sign is one), the end clipped.
    // clang-format off
    const struct { const char* text; int first, last; const char* want; } cases[] = {
        {"Aztrue", 2, 100, "ztrue"}, {"Aztrue", 1, 6, "Aztrue"}, {"Aztrue", 3, 3, "t"},
        {"Aztrue", 7, 6, ""},  // First = Last + 1: nothing
        {"", 1, 5, ""}, {"Aztrue", 5, 2, ""}, {"Aztrue", 0, 2, "Az"}, {"Aztrue", -4, -1, ""},
        {"Gr\u00F6\u00DFe", 3, 4, "\u00F6\u00DF"}, {"Gr\u00F6\u00DFe", 5, 100, "e"},
        {"12\u00B030'", 3, 3, "\u00B0"}, {"12\u00B030'", 4, 5, "30"}};
    // clang-format on
    for (const auto& c : cases)
        EXPECT_EQ(str.Extract(c.text, c.first, c.last), c.want)
            << c.text << " " << c.first << ".." << c.last;
}

}  // namespace
