// Text of numbers and angles: default and rounded text, the number reader, sexagesimal text.
#include <cstdio>

#include "SkyTestSupport.h"
#include "sky/NumberText.h"
#include "sky/Sexagesimal.h"
#include "sky/cString.h"
#include "sky/mStrings.h"

namespace {

using skytest::Dms;
using skytest::Hms;
using skytest::kPi;

// glibc's printf, independent of the code under test, as a reference.
std::string Printf(const std::string& format, double x) {
    char buf[2048];
    std::snprintf(buf, sizeof buf, format.c_str(), x);
    return buf;
}

TEST(NumberText, FifteenDigitsAndRoundedPlacesAsPrintfWritesThemInAnyLocale) {
    // Rounded from the exact binary value, ties to even (2.675 is 2.67499999...), no sign once
    // zero, up to the 1074 decimals of a subnormal; else printf's %.15g and %.nf.
    EXPECT_EQ(RoundedText(0.125, 2) + " " + RoundedText(2.675, 2) + " " + RoundedText(59.95, 1) +
                  " " + RoundedText(-0.0004, 3) + " " + RoundedText(7.6, -1) + " " +
                  NumberText(-0.0),
              "0.12 2.67 60 0 8 0");
    EXPECT_EQ(RoundedText(4.9406564584124654e-324, 2000),
              Printf("%.1074f", 4.9406564584124654e-324));
    std::mt19937_64 gen(20261122);
    std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
    std::uniform_int_distribution<int> exponent(-30, 30);
    for (int i = 0; i < 2000; ++i) {
        const double x = mantissa(gen) * std::pow(10.0, exponent(gen)), y = mantissa(gen) * 100;
        EXPECT_EQ(NumberText(x), Printf("%.15g", x)) << "x = " << x;
        std::string want = Printf("%." + std::to_string(i % 9) + "f", y);
        while (i % 9 > 0 && want.back() == '0') want.pop_back();
        if (want.back() == '.') want.pop_back();
        EXPECT_EQ(RoundedText(y, i % 9), want == "-0" ? "0" : want) << y << ", " << i % 9;
    }
    skytest::CommaLocale comma;
    if (!comma.active) GTEST_SKIP() << "no locale with a comma decimal point is installed";
    EXPECT_EQ(Printf("%.1f", 2.5), "2,5") << "the locale took";
    EXPECT_EQ(NumberText(2.5) + " " + RoundedText(1.25, 2), "2.5 1.25");
    double parsed = 0, unchanged = 7;
    EXPECT_TRUE(ParseNumber("1.5", parsed) && parsed == 1.5);
    EXPECT_FALSE(ParseNumber("1,5", unchanged) || unchanged != 7);
}

TEST(NumberText, ParseNumberAcceptsPlainNumbersOnlyAndLeavesTheValueAloneOtherwise) {
    // The nearest double; too small is 0 with its sign, too large (however written) no number.
    // clang-format off
    for (const auto& [text, want] : {std::pair{" -1.5e3 ", -1500.0}, {"+.5", 0.5}, {"2E-2", 0.02},
                                     {"5.", 5.0}, {"0.1", 0.1}, {"-0.00001e-399", -0.0}}) {
        // clang-format on
        double v = 7;
        EXPECT_TRUE(ParseNumber(text, v) && v == want && std::signbit(v) == std::signbit(want))
            << text << " gave " << v;
    }
    const std::string zeros(400, '0'), huge = "1" + zeros + "e-10",
                                       alsoHuge = "0.1" + zeros + "e310";
    for (const std::string text : {"", " ", "1.2.3", "1,5", "e5", ".", "+-1", "1e+", "1 2", "12a",
                                   "0x10", "inf", "-1e400", huge.c_str(), alsoHuge.c_str()}) {
        double v = 7;
        EXPECT_FALSE(ParseNumber(text, v) || v != 7) << "text \"" << text << "\" gave " << v;
    }
}

// Vega, J2000: RA 279.23473479 deg = 18h 36m 56.33635s (SIMBAD; by hand the 0.015648986 h are
// 56.3363496 s). A declination like Vega's: 38.7836889444 deg is by hand 38 deg 47' 1.28020".
const double kVegaRA = 279.23473479 * kPi / 180, kVegaDec = 38.7836889444 * kPi / 180;
const cString kStr;

double StrToRARad(const std::string& text) {
    return kStr.StrToRARad(text);
}

TEST(AngleText, FieldsSeparatorsDecimalsCarryParsersAndHelpers) {
    // Seconds with decimals are not padded; rounded seconds carry through every field, 24 h wraps
    // to 00h; -0.5 h has the floor -1 as hours; degrees are not reduced.
    const std::pair<std::string, const char*> cases[] = {
        {kStr.RARadToStr(kVegaRA, "a"), "18h36m56.3s"},
        {kStr.RARadToStr(Hms(23, 59, 59.97), "a"), "00h00m00s"},
        {kStr.DecRadToStr(-Dms(0, 0, 1), "a"), "-00\u00B0 00' 01\""},
        {RAToHMSStr(-0.5 * kPi / 12, true, 0), "-1h30m00s"},
        {RAToHMSStr(Hms(3, 4, 5.3), false, 4), "03 04 5.3"},
        {AngleToDMSStr(kVegaDec, true, 2), "38\u00B0 47' 1.28\""},
        {AngleToDMSStr(-400 * kPi / 180, false, 0), "-400 00 00"},
        {TimeRecToStr(skytest::Time(2000, 1, 1, -3, 5, 9.99)), "-3:05:09"}};
    for (const auto& [got, want] : cases) EXPECT_EQ(got, want);
    // 59.95 is stored a little above, 59.949999999999996 a little below, though x 10 gives exactly
    // 599.5: the carry follows the text.
    SexagesimalParts up{1, 10, 59.95}, down{1, 10, std::nextafter(59.95, 0.0)};
    EXPECT_EQ(CarrySeconds(up, 1) + " " + CarrySeconds(down, 1), "00 59.9");
    EXPECT_TRUE(up.Minutes == 11 && down.Minutes == 10);
    // RA: colons or blanks (mStrings letters too), a lone number is degrees, bad text -1 (mStrings
    // -1e30). Declinations: one minus, on the first field that is not 0.
    const double kDeg = kPi / 180, kBad = -1e30;
    // clang-format off
    const struct { double (*parse)(const std::string&); const char* text; double want; } texts[] = {
        {StrToRARad, "  12 30  ", 12.5 * kPi / 12}, {StrToRARad, "6:15:36", 6.26 * kPi / 12},
        {StrToRARad, "25:00:00", -1}, {StrToRARad, "12:30:xx", -1},
        {RAStrToRad, "  12 H 30 m 05 S  ", Hms(12, 30, 5)}, {RAStrToRad, "279.23473479", kVegaRA},
        {RAStrToRad, "-12:30", -12.5 * kPi / 12}, {RAStrToRad, "25h", kBad},
        {RAStrToRad, "12h30mxs", kBad}, {RAStrToRad, "--5", kBad},
        {DecStrToRad, "10\u00B020'30\"", Dms(10, 20, 30)}, {DecStrToRad, "10D30", 10.5 * kDeg},
        {DecStrToRad, "0:-30:00", -0.5 * kDeg}, {DecStrToRad, "0:0:-36", -0.01 * kDeg},
        {DecStrToRad, "10M30", kBad}, {DecStrToRad, "10:-20:30", kBad},
        {DecStrToRad, "5:0:-30", kBad}, {DecStrToRad, ":30:00", kBad}};
    // clang-format on
    for (const auto& c : texts) EXPECT_NEAR(c.want, c.parse(c.text), 2e-15) << c.text;
    // The hand value of Vega's declination has ten decimals of a degree.
    EXPECT_NEAR(kVegaDec, DecStrToRad("+38\u00B0 47' 01.2802\""), 1e-10 * kDeg);
    // The name behind the last backslash or slash; characters counted from 1 in UTF-8 ("Größe":
    // five characters, seven bytes), the end clipped.
    EXPECT_EQ(kStr.HasFileName("C:\\Stars/M31.AZT") + kStr.HasFileName("a/b\\"), "M31.AZT");
    EXPECT_EQ(kStr.Extract("Gr\u00F6\u00DFe", 3, 100) + kStr.Extract("Az", 0, 1), "\u00F6\u00DFeA");
}

}  // namespace
