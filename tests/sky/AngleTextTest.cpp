// Angle text: the right ascension and declination formatters and parsers of
// cString and mStrings, the carry of rounded seconds, and the file-name and
// substring helpers.

#include <initializer_list>
#include <utility>

#include "SkyTestSupport.h"
#include "sky/Sexagesimal.h"
#include "sky/cString.h"
#include "sky/mStrings.h"

namespace {

using skytest::Dms;
using skytest::Hms;
using skytest::kPi;

// Vega, J2000: RA 279.23473479 deg = 18h 36m 56.33635s (SIMBAD); by hand
// 18.615648986 h, whose 0.015648986 h are 56.3363496 s. A declination like
// Vega's: 38.7836889444 deg is by hand 38 deg 47' 1.28020".
const double kVegaRA = 279.23473479 * kPi / 180;
const double kVegaLikeDec = 38.7836889444 * kPi / 180;

template <class F>
void ExpectTexts(F format, std::initializer_list<std::pair<double, const char*>> cases) {
    for (const auto& [angle, want] : cases) EXPECT_EQ(format(angle), want) << want;
}

TEST(AngleTextFormat, cStringFieldsSeparatorsAndCarry) {
    // Separator "a": unit letters and symbols. A quarter turn is 6 h, a half
    // turn 12 h. Seconds keep one decimal ("5.3" needs no padding), rounded
    // seconds carry through all fields and 24 h wraps to 00h. The degree sign
    // is UTF-8.
    const cString str;
    auto ra = [&](const char* sep) {
        return [&str, sep](double a) { return str.RARadToStr(a, sep); };
    };
    auto dec = [&](const char* sep) {
        return [&str, sep](double a) { return str.DecRadToStr(a, sep); };
    };
    // clang-format off
    ExpectTexts(ra("a"), {{0.0, "00h00m00s"}, {kPi / 2, "06h00m00s"}, {kPi, "12h00m00s"},
                          {Hms(12, 30, 5), "12h30m05s"}, {kVegaRA, "18h36m56.3s"},
                          {Hms(23, 59, 59.97), "00h00m00s"}, {Hms(10, 59, 59.96), "11h00m00s"},
                          {Hms(10, 59, 59.94), "10h59m59.9s"}});
    ExpectTexts(ra(":"), {{0.0, "00:00:00"}, {Hms(12, 30, 5), "12:30:05"},
                          {Hms(3, 4, 5.3), "03:04:5.3"}, {Hms(3, 4, 15.26), "03:04:15.3"}});
    ExpectTexts(ra(" "), {{Hms(3, 4, 5), "03 04 05"}});
    ExpectTexts(ra("--"), {{Hms(1, 2, 3), "01--02--03"}});
    ExpectTexts(dec("a"), {{0.0, "00\u00B0 00' 00\""}, {kPi / 4, "45\xC2\xB0 00' 00\""},
                           {-Dms(0, 0, 1), "-00\u00B0 00' 01\""},
                           {kVegaLikeDec, "38\u00B0 47' 01\""}});
    ExpectTexts(dec(":"), {{0.0, "00:00:00"}, {-Dms(10, 20, 30), "-10:20:30"},
                           {Dms(10, 20, 30), "10:20:30"}, {Dms(10, 59, 59.7), "11:00:00"},
                           {Dms(10, 59, 59.2), "10:59:59"}});
    // clang-format on
}

TEST(AngleTextFormat, mStringsSymbolsDecimalsAndCarry) {
    // Seconds with decimals are not padded; 59.97 s to one decimal is 60.0
    // and carries to 24h = 00h; -0.5 h has the floor -1 as hours and 30
    // minutes; degrees have no range reduction, and 59.96" carries twice.
    auto hms = [](bool symbols, int16_t decimals) {
        return [=](double a) { return RAToHMSStr(a, symbols, decimals); };
    };
    auto dms = [](bool symbols, int16_t decimals) {
        return [=](double a) { return AngleToDMSStr(a, symbols, decimals); };
    };
    // clang-format off
    ExpectTexts(hms(true, 0), {{0.0, "00h00m00s"}, {kPi / 2, "06h00m00s"},
                               {Hms(12, 30, 5), "12h30m05s"}, {kVegaRA, "18h36m56s"},
                               {-0.5 * kPi / 12, "-1h30m00s"}});
    ExpectTexts(hms(true, 1), {{Hms(23, 59, 59.97), "00h00m00s"}});
    ExpectTexts(hms(true, 2), {{kVegaRA, "18h36m56.34s"}, {Hms(1, 2, 3.25), "01h02m3.25s"},
                               {Hms(23, 59, 59.97), "23h59m59.97s"}});
    ExpectTexts(hms(true, 4), {{kVegaRA, "18h36m56.3363s"}});
    ExpectTexts(hms(false, 0), {{Hms(12, 30, 5), "12 30 05"}});
    ExpectTexts(hms(false, 1), {{kVegaRA, "18 36 56.3"}});
    ExpectTexts(dms(true, 0), {{0.0, "00\u00B0 00' 00\""}, {Dms(10, 20, 30), "10\u00B0 20' 30\""},
                               {kPi / 4, "45\xC2\xB0 00' 00\""},
                               {-Dms(0, 0, 1), "-00\u00B0 00' 01\""}});
    ExpectTexts(dms(true, 2), {{kVegaLikeDec, "38\u00B0 47' 1.28\""}});
    ExpectTexts(dms(false, 0), {{Dms(10, 20, 30), "10 20 30"}, {400 * kPi / 180, "400 00 00"}});
    ExpectTexts(dms(false, 1), {{Dms(10, 59, 59.96), "11 00 00"}});
    ExpectTexts(dms(false, 2), {{-Dms(10, 20, 30.25), "-10 20 30.25"}});
    // clang-format on
    // The time of day: padded fields, whole seconds; a negative hour passes.
    EXPECT_EQ(TimeRecToStr(skytest::Time(2000, 1, 1, 7, 5, 9.99)), "07:05:09");
    EXPECT_EQ(TimeRecToStr(skytest::Time(2000, 1, 1, 23, 59, 59.999)), "23:59:59");
    EXPECT_EQ(TimeRecToStr(skytest::Time(2000, 1, 1)), "00:00:00");
    EXPECT_EQ(TimeRecToStr(skytest::Time(2000, 1, 1, -3, 30, 12.5)), "-3:30:12");
}

TEST(AngleTextFormat, RoundedSecondsCarryAsTheTextRounds) {
    // 59.95 is stored as 59.950000000000003: to one place 60, a carry. The
    // double below, 59.949999999999996, rounds to 59.9 from its exact value
    // though x 10 gives exactly 599.5, a tie a rounding of the product would
    // send up: test and text must agree, no carry. Whole seconds: 30.5 is a
    // true tie to the even 30; 59.5 goes to the even 60 and carries.
    const double below = std::nextafter(59.95, 0.0);
    ASSERT_EQ(below * 10, 599.5);
    SexagesimalParts up{1, 10, 59.95}, down{1, 10, below}, tie{5, 0, 30.5}, sixty{5, 0, 59.5};
    EXPECT_EQ(CarrySeconds(up, 1), "00");
    EXPECT_EQ(CarrySeconds(down, 1), "59.9");
    EXPECT_EQ(CarrySeconds(tie, 0), "30");
    EXPECT_EQ(CarrySeconds(sixty, 0), "00");
    EXPECT_TRUE(up.Minutes == 11 && down.Minutes == 10 && sixty.Minutes == 1);
}

void ExpectParses(double (*parse)(const std::string&), double tol,
                  std::initializer_list<std::pair<const char*, double>> cases) {
    for (const auto& [text, want] : cases)
        EXPECT_NEAR(want, parse(text), tol) << "\"" << text << "\"";
}
double StrToRARad(const std::string& text) {
    return cString().StrToRARad(text);
}
const double kBad = -1e30;  // kBadAngleText of the mStrings parsers

TEST(AngleTextParse, cStringHoursMinutesSeconds) {
    // Colons or blanks; a lone number is degrees; -1 beyond a full turn,
    // below 0, for bad text, and for letters, which are no separators here.
    // 6h 15m 36s = 6.26 h: the sum of the parts rounds, so an ulp is allowed.
    // clang-format off
    ExpectParses(StrToRARad, 0, {
        {"12:30:00", 12.5 * kPi / 12}, {"12:30", 12.5 * kPi / 12}, {"12 30 00", 12.5 * kPi / 12},
        {"  12:30:00  ", 12.5 * kPi / 12}, {"12:", 12 * kPi / 12}, {"180", 12 * kPi / 12},
        {"25:00:00", -1}, {"abc", -1}, {"", -1}, {"12:ab", -1}, {"12:30:xx", -1}, {"x:30:00", -1},
        {"-1:00:00", -1}, {"12h30m", -1}});
    ExpectParses(StrToRARad, 1e-15, {{"6:15:36", 6.26 * kPi / 12}, {"279.23473479", kVegaRA}});
    // clang-format on
}

TEST(AngleTextParse, mStringsRightAscension) {
    // Letters in any case, blanks or colons; partial texts; a lone number is
    // degrees; a leading minus gives negative radians; -1e30 for bad text
    // and beyond a full turn; "--5" is "-5" (-1/3 h), below 0. Vega both
    // ways, equal to the 8 published decimals of a degree.
    EXPECT_EQ(kBadAngleText, kBad);
    // clang-format off
    ExpectParses(RAStrToRad, 0, {
        {"12:30:05", Hms(12, 30, 5)}, {"12h30m05s", Hms(12, 30, 5)}, {"12H30M05S", Hms(12, 30, 5)},
        {"12 30 05", Hms(12, 30, 5)}, {"12h 30m 05s", Hms(12, 30, 5)},
        {"  12 h 30 m 05 s  ", Hms(12, 30, 5)}, {"12h", 12 * kPi / 12}, {"12h30m", 12.5 * kPi / 12},
        {"12h30", 12.5 * kPi / 12}, {"180", 12 * kPi / 12}, {"-12:30:05", -Hms(12, 30, 5)},
        {"-12h30m05s", -Hms(12, 30, 5)}, {"-1 00 00", -Hms(1, 0, 0)}, {"abc", kBad}, {"", kBad},
        {"25h", kBad}, {"12hxxm", kBad}, {"12h30mxs", kBad}, {"h30m", kBad}, {"--5", kBad}});
    // clang-format on
    ExpectParses(RAStrToRad, 0.5e-8 * kPi / 180, {{"18h36m56.33635s", kVegaRA}});
    ExpectParses(RAStrToRad, 1e-15, {{"279.23473479", kVegaRA}});
}

TEST(AngleTextParse, mStringsDeclination) {
    // Separators agree, the degree sign included; partial texts and lone
    // numbers; no range test. A minus on the degrees makes all negative; on
    // degrees 0, or on the minutes behind them, half a degree for 30
    // minutes; on the seconds only behind degrees and minutes 0. Two minus
    // signs, a minus anywhere else, or a missing or bad field: -1e30.
    // +38 47' 01.2802" by hand: 47/60 = 0.7833333333, 1.2802/3600 =
    // 0.0003556111, 38.7836889444 deg.
    // Degrees become radians by the one factor kPi / 180, worked out first.
    const double kDeg = kPi / 180;
    // clang-format off
    ExpectParses(DecStrToRad, 0, {
        {"10:20:30", Dms(10, 20, 30)}, {"10d20m30s", Dms(10, 20, 30)},
        {"10D20M30S", Dms(10, 20, 30)},
        {"10\u00B0 20' 30\"", Dms(10, 20, 30)}, {"10 20 30", Dms(10, 20, 30)},
        {"10\u00B020'30\"", Dms(10, 20, 30)}, {"45", 45 * kDeg}, {"-45", -45 * kDeg},
        {"45\u00B0", 45 * kDeg}, {"10:30", 10.5 * kDeg}, {"10d30m", 10.5 * kDeg},
        {"400", 400 * kDeg}, {"-120:00:00", -120 * kDeg}, {"-10:20:30", -Dms(10, 20, 30)},
        {"-10 20 30", -Dms(10, 20, 30)}, {"-0:30:00", -0.5 * kDeg},
        {"0:-30:00", -0.5 * kDeg},
        {"0:0:-36", -0.01 * kDeg}, {"-00\u00B0 00' 01\"", -Dms(0, 0, 1)}, {"10:-20:30", kBad},
        {"-10:-20:30", kBad}, {"-0:-20:30", kBad}, {"0:20:-30", kBad}, {"5:0:-30", kBad},
        {"abc", kBad}, {"", kBad}, {":30:00", kBad}, {"10:xx:00", kBad}, {"10:20:yy", kBad},
        {"-:20:30", kBad}});
    // clang-format on
    ExpectParses(DecStrToRad, 1e-10 * kPi / 180, {{"+38\u00B0 47' 01.2802\"", kVegaLikeDec}});
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
        for (int i = 0; i < 400; ++i) {
            const double r = ra(gen);
            // Some angles under a degree, to exercise a "-00" degrees field.
            const double d = (i % 4 == 0) ? dec(gen) / 200 : dec(gen);
            for (bool symbols : {true, false}) {
                const std::string raText = RAToHMSStr(r, symbols, decimals);
                const std::string decText = AngleToDMSStr(d, symbols, decimals);
                // Across the 0/24h seam the difference is taken modulo a turn.
                EXPECT_NEAR(std::remainder(RAStrToRad(raText) - r, 2 * kPi), 0.0, arcsec * 15)
                    << raText << " of " << r;
                EXPECT_NEAR(DecStrToRad(decText), d, arcsec) << decText << " of " << d;
            }
        }
    }
}

TEST(TextHelpers, FileNameAndCharacterExtract) {
    // The file name is behind the last backslash or slash. Characters count
    // from 1, UTF-8 characters not bytes ("Größe": five characters, seven
    // bytes; the degree sign is one); the end is clipped; First = Last + 1
    // gives nothing.
    const cString str;
    // clang-format off
    const char* paths[][2] = {{"C:\\Stars\\M31.AZT", "M31.AZT"}, {"C:\\Stars\\", ""},
        {"/home/obs/cal/M31.AZT", "M31.AZT"}, {"/home/obs/cal/", ""}, {"M31.AZT", "M31.AZT"},
        {"", ""}, {"C:\\a/b\\c.txt", "c.txt"}, {"/a\\b/c.txt", "c.txt"}};
    const struct { const char* text; int first, last; const char* want; } cases[] = {
        {"Aztrue", 2, 100, "ztrue"}, {"Aztrue", 1, 6, "Aztrue"}, {"Aztrue", 3, 3, "t"},
        {"Aztrue", 7, 6, ""}, {"", 1, 5, ""}, {"Aztrue", 5, 2, ""}, {"Aztrue", 0, 2, "Az"},
        {"Aztrue", -4, -1, ""}, {"Gr\u00F6\u00DFe", 3, 4, "\u00F6\u00DF"},
        {"Gr\u00F6\u00DFe", 5, 100, "e"},
        {"12\u00B030'", 3, 3, "\u00B0"}, {"12\u00B030'", 4, 5, "30"}};
    // clang-format on
    for (const auto& [path, name] : paths) EXPECT_EQ(str.HasFileName(path), name) << path;
    for (const auto& c : cases)
        EXPECT_EQ(str.Extract(c.text, c.first, c.last), c.want)
            << c.text << " " << c.first << ".." << c.last;
}

}  // namespace
