// The text of the calibration file: real numbers written with 15 digits
// whatever the locale, the lenient reading of number lines, and star names
// in Windows-1252.

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

#include "FileTestSupport.h"
#include "files/CodePage1252.h"
#include "files/NumericPrefix.h"
#include "sky/SkyTestSupport.h"

namespace {

TEST(NumToFileStrShape, BlankOrMinusInFrontBlankBehindFifteenDigits) {
    // The number lines of the reference one-star file; negative zero has the
    // text "0" and takes the blank of a non-negative value; 1/3 and -2/3 to 15
    // significant digits (hand count); 0.1 + 0.2 is 0.30000000000000004 in
    // binary and 0.3 at 15 digits.
    // clang-format off
    const struct { double x; const char* want; } cases[] = {
        {1.5, " 1.5 "}, {-0.25, "-0.25 "}, {2451545.0, " 2451545 "}, {-118.0, "-118 "},
        {6.283185308, " 6.283185308 "}, {0.0, " 0 "}, {-0.0, " 0 "},
        {1.0 / 3.0, " 0.333333333333333 "},
        {0.1 + 0.2, " 0.3 "}, {-2.0 / 3.0, "-0.666666666666667 "}};
    // clang-format on
    for (const auto& c : cases) EXPECT_EQ(NumToFileStr(c.x), c.want);
    // Outside reference: printf's "%.15g" in the "C" locale with the blanks of
    // the file around it, over many magnitudes and both signs.
    std::mt19937_64 gen(20240611);
    std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
    std::uniform_int_distribution<int> power(-30, 30);
    for (int i = 0; i < 2000; ++i) {
        const double x = mantissa(gen) * std::pow(10.0, power(gen));
        char buf[64];
        std::snprintf(buf, sizeof buf, "%.15g", x);
        const std::string text = std::string(buf) == "-0" ? "0" : buf;
        ASSERT_EQ(NumToFileStr(x), std::string(text[0] == '-' ? "" : " ") + text + " ")
            << "value " << buf;
    }
}

TEST(NumToFileStrLocale, CommaLocaleStillWritesAndReadsPoint) {
    skytest::CommaLocale comma;
    if (!comma.active) GTEST_SKIP() << "no locale with a decimal comma is installed";
    char buf[32];
    std::snprintf(buf, sizeof buf, "%g", 1.5);
    ASSERT_STREQ(buf, "1,5") << "the locale is in force: printf itself writes a comma";
    EXPECT_EQ(NumToFileStr(-0.25), "-0.25 ");
    // The whole file is that of the "C" locale, and it reads back.
    filetest::TempFolder dir;
    const std::string name = dir.File("comma.AZT");
    ASSERT_TRUE(SaveCalFile(*filetest::OneStarModel(), name));
    EXPECT_EQ(filetest::ReadBytes(name), filetest::JoinLines(filetest::OneStarExampleLines()));
    auto back = filetest::FreshModel();
    ASSERT_TRUE(LoadCalFile(*back, name));
    EXPECT_EQ(back->CalPoints[1].RA, 1.5);
    EXPECT_EQ(back->CalPoints[1].Dec, -0.25);
    EXPECT_EQ(back->CalPoints[1].PhiEnc, 2.125);
}

TEST(NumericPrefixReading, TakesTheLeadingNumberOrZero) {
    // Wanted values are the decimal numbers the texts begin with. An exponent
    // needs a digit; no number at all gives 0; out of range gives infinity
    // or 0, and 1e308 and the largest digits before the point stay in range.
    const double inf = std::numeric_limits<double>::infinity();
    // clang-format off
    const struct { const char* text; double want; } cases[] = {
        {" 1.5 ", 1.5}, {"-0.25 ", -0.25}, {"+3", 3}, {"\t 2451545 ", 2451545}, {"12abc", 12},
        {"1,5", 1}, {".5", 0.5}, {"5.", 5}, {"1.5e-07 ", 1.5e-07}, {"-2E+20", -2e20},
        {"6.283185308", 6.283185308}, {"1e", 1}, {"1e+", 1}, {"2e-x", 2}, {"3e2x", 300},
        {"", 0}, {"   ", 0}, {"abc", 0}, {".", 0}, {"-", 0}, {"+", 0}, {"- 3", 0}, {"e5", 0},
        {"True", 0}, {"-.e1", 0}, {"1e999", inf}, {"-1e999", -inf}, {"0.0001e313", inf},
        {"1e-999", 0}, {"1000e-1000", 0}, {"1e99999999999999999999", inf}, {"0.001e311", 1e308}};
    // clang-format on
    for (const auto& c : cases)
        EXPECT_EQ(NumericPrefixValue(c.text), c.want) << "\"" << c.text << "\"";
    EXPECT_TRUE(std::signbit(NumericPrefixValue("-1e-999")));
}

TEST(CodePage1252, PublishedTableEntriesBothWaysAndEveryByteBack) {
    // Byte and UTF-8 pairs from the published Windows-1252 code page table:
    // 0x80 euro sign U+20AC, 0x82 single low-9 quotation mark U+201A, 0x8A S
    // caron U+0160, 0x92 right single quotation mark U+2019, 0x99 trade mark
    // sign U+2122, 0x9F Y diaeresis U+0178, 0xA0 no-break space, 0xB0 degree
    // sign, 0xE9 e acute, 0xFF y diaeresis (U+00A0 to U+00FF).
    // clang-format off
    const char* pairs[][2] = {
        {"A", "A"}, {"\x80", "\xE2\x82\xAC"}, {"\x82", "\xE2\x80\x9A"}, {"\x8A", "\xC5\xA0"},
        {"\x92", "\xE2\x80\x99"}, {"\x99", "\xE2\x84\xA2"}, {"\x9F", "\xC5\xB8"},
        {"\xA0", "\xC2\xA0"},
        {"\xB0", "\xC2\xB0"}, {"\xE9", "\xC3\xA9"}, {"\xFF", "\xC3\xBF"}};
    // clang-format on
    for (const auto& [cp1252, utf8] : pairs) {
        EXPECT_EQ(Cp1252ToUtf8(cp1252), utf8) << "byte " << int(uint8_t(cp1252[0]));
        EXPECT_EQ(Utf8ToCp1252(utf8), cp1252) << "byte " << int(uint8_t(cp1252[0]));
    }
    // Every byte comes back, the five the code page leaves unassigned included.
    std::string all;
    for (int b = 1; b < 256; ++b) all += static_cast<char>(b);
    EXPECT_EQ(Utf8ToCp1252(Cp1252ToUtf8(all)), all);
}

TEST(CodePage1252, CharactersWithoutAFormAndMalformedUtf8BecomeQuestionMarks) {
    // Greek alpha, two CJK characters, a 4-byte emoji; U+0081 goes back to
    // its byte. Malformed: a byte that is never UTF-8, a cut sequence, an
    // overlong "/", a surrogate half, a lead byte without continuation.
    // clang-format off
    const char* cases[][2] = {
        {"\xCE\xB1 Cen", "? Cen"}, {"\xE5\x8C\x97\xE6\x96\x97", "??"}, {"\xF0\x9F\x94\xAD!", "?!"},
        {"\xC2\x81", "\x81"}, {"a\xFF" "b", "a?b"}, {"\xC3", "?"}, {"\xC0\xAF", "??"},
        {"\xED\xA0\x80", "???"}, {"\xC3" "A", "?A"}};
    // clang-format on
    for (const auto& [utf8, want] : cases) EXPECT_EQ(Utf8ToCp1252(utf8), want);
}

}  // namespace
