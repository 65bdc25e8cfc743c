// The shared number helpers: default text of a double, rounded display text,
// the integer parts and the reader of numeric text.

#include <cstdio>

#include "SkyTestSupport.h"
#include "sky/NumberText.h"
#include "sky/Rounding.h"

namespace {

// glibc's printf in the "C" locale, an implementation independent of the one
// under test, as a second reference for the hand-worked cases.
std::string PrintfText(const char* format, double x) {
    char buf[2048];
    std::snprintf(buf, sizeof buf, format, x);
    return buf;
}

TEST(NumberTextDefault, FifteenSignificantDigitsPlainestForm) {
    // 0.1 + 0.2 is 0.30000000000000004 in binary: 15 digits, and the zeros go.
    // 1/3 and 2/3 to 15 digits by hand, the 15th of 2/3 rounded up. Either zero
    // is "0". An exponent below 1e-4 and from 10^15 on, as %g does; the 16th
    // digit 6 of 123456789012345678 rounds up.
    // clang-format off
    const struct {
        double x;
        const char* want;
    } cases[] = {{0.1 + 0.2, "0.3"}, {1.0 / 3.0, "0.333333333333333"},
                 {2.0 / 3.0, "0.666666666666667"}, {-2.5, "-2.5"}, {3.141592654, "3.141592654"},
                 {12.0, "12"}, {-300.0, "-300"},
                 {1018.0, "1018"}, {0.0, "0"}, {-0.0, "0"}, {1e-5, "1e-05"}, {0.0001, "0.0001"},
                 {-2.5e-7, "-2.5e-07"}, {123456789012345.0, "123456789012345"}, {1e15, "1e+15"},
                 {1e20, "1e+20"}, {123456789012345678.0, "1.23456789012346e+17"},
                 {1.7976931348623157e308, "1.79769313486232e+308"}};
    // clang-format on
    for (const auto& c : cases) EXPECT_EQ(NumberText(c.x), c.want) << c.want;
    std::mt19937_64 gen(20261122);
    std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
    std::uniform_int_distribution<int> exponent(-30, 30);
    for (int i = 0; i < 2000; ++i) {
        const double x = mantissa(gen) * std::pow(10.0, exponent(gen));
        EXPECT_EQ(NumberText(x), PrintfText("%.15g", x)) << "x = " << x;
    }
}

TEST(NumberTextLocale, PointStaysUnderACommaLocale) {
    skytest::CommaLocale comma;
    if (!comma.Active()) GTEST_SKIP() << "no locale with a comma decimal point is installed";
    EXPECT_EQ(PrintfText("%.1f", 2.5), "2,5") << "the locale took";
    EXPECT_EQ(NumberText(2.5), "2.5");
    EXPECT_EQ(RoundedText(1.25, 2), "1.25");
    double parsed = 0, unchanged = 7;
    EXPECT_TRUE(ParseNumber("1.5", parsed));
    EXPECT_EQ(parsed, 1.5);
    EXPECT_FALSE(ParseNumber("1,5", unchanged));
    EXPECT_EQ(unchanged, 7);
}

TEST(RoundedText, TiesToEvenOnTheExactBinaryValueThenPlainestForm) {
    // 0.125, 0.375, 2.5, 3.5, -2.5 and -7.25 are exact in binary: true ties,
    // to the even digit. 2.675 is stored as 2.674999999999999822..., 1.005 as
    // 1.00499999999999989...: down; 59.95 as 59.95000000000000284...: up.
    // No sign once rounded to zero; negative places count as none. The exact
    // binary value of 0.1 has 55 decimals, as printf writes it.
    const std::string tenth = "0.1000000000000000055511151231257827021181583404541015625";
    // clang-format off
    const struct {
        double x;
        int places;
        std::string want;
    } cases[] = {{0.125, 2, "0.12"}, {0.375, 2, "0.38"}, {2.5, 0, "2"},        {3.5, 0, "4"},
                 {-2.5, 0, "-2"},    {-7.25, 1, "-7.2"}, {2.675, 2, "2.67"},   {1.005, 2, "1"},
                 {59.95, 1, "60"},   {1.50, 2, "1.5"},   {2.0, 3, "2"},        {12.345, 0, "12"},
                 {-0.0004, 3, "0"},  {-0.4, 0, "0"},     {-0.0, 2, "0"},       {7.6, -1, "8"},
                 {0.1, 60, tenth},   {0.1, 2000, tenth}, {1e300, 200, PrintfText("%.0f", 1e300)}};
    // clang-format on
    for (const auto& c : cases) EXPECT_EQ(RoundedText(c.x, c.places), c.want) << c.want;
    // The smallest subnormal needs all 1074 places.
    const std::string tiny = RoundedText(4.9406564584124654e-324, 1074);
    EXPECT_EQ(tiny.size(), 1076u);
    EXPECT_EQ(tiny.substr(0, 6), "0.0000");
    EXPECT_EQ(tiny.back(), '5');
    // Against printf's %.nf with its trailing zeros and "-0" taken off.
    std::mt19937_64 gen(42);
    std::uniform_real_distribution<double> value(-1000.0, 1000.0);
    std::uniform_int_distribution<int> places(0, 8);
    for (int i = 0; i < 2000; ++i) {
        const double x = value(gen);
        const int n = places(gen);
        std::string want = PrintfText(("%." + std::to_string(n) + "f").c_str(), x);
        if (want.find('.') != std::string::npos) {
            while (want.back() == '0') want.pop_back();
            if (want.back() == '.') want.pop_back();
        }
        if (want == "-0") want = "0";
        EXPECT_EQ(RoundedText(x, n), want) << "x = " << x << ", places = " << n;
    }
}

TEST(Rounding, HalfEvenFloorAndTruncation) {
    // Halves to the even neighbour, Int is the floor, Trunc cuts toward zero.
    // 2.4999999999999996 and 2.5000000000000004 are the doubles next to 2.5;
    // 2^52 + 1 is odd and whole.
    // clang-format off
    const struct {
        double x, halfEven, floor, trunc;
    } cases[] = {{10.5, 10, 10, 10},  {11.5, 12, 11, 11},  {0.5, 0, 0, 0},       {1.5, 2, 1, 1},
                 {-0.5, 0, -1, 0},    {-1.5, -2, -2, -1},  {-2.5, -2, -3, -2},   {2.7, 3, 2, 2},
                 {-2.7, -3, -3, -2},  {-2.0, -2, -2, -2},  {-3.7, -4, -4, -3},   {-3.2, -3, -4, -3},
                 {7.0, 7, 7, 7},      {0.9999999999999999, 1, 0, 0},  {2.4999999999999996, 2, 2, 2},
                 {2.5000000000000004, 3, 2, 2},  {4503599627370497.0, 4503599627370497.0,
                                                  4503599627370497.0, 4503599627370497.0}};
    // clang-format on
    for (const auto& c : cases) {
        EXPECT_EQ(RoundHalfEven(c.x), c.halfEven) << c.x;
        EXPECT_EQ(VbInt(c.x), c.floor) << c.x;
        EXPECT_EQ(VbTrunc(c.x), c.trunc) << c.x;
    }
    EXPECT_EQ(NumberText(VbTrunc(-0.5)), "0");
}

TEST(ParseNumber, AcceptsSignDigitsPointExponentAndBlanks) {
    // "0.1" reads as the nearest double, as a compiler reads the literal; too
    // small for a double is zero; 4.9e-324 is the smallest subnormal.
    // clang-format off
    const struct {
        const char* text;
        double want;
    } cases[] = {{" -1.5e3 ", -1500}, {"+.5", 0.5}, {"5.", 5}, {"12", 12}, {"2E-2", 0.02},
                 {"00030", 30}, {"0.1", 0.1}, {"1e-400", 0}, {"4.9e-324", 4.9406564584124654e-324}};
    // clang-format on
    for (const auto& c : cases) {
        double v = 7;
        EXPECT_TRUE(ParseNumber(c.text, v)) << c.text;
        EXPECT_EQ(v, c.want) << c.text;
    }
    double v = 7;
    EXPECT_TRUE(ParseNumber("-0.00001e-399", v));
    EXPECT_TRUE(v == 0.0 && std::signbit(v)) << v;
}

TEST(ParseNumber, RejectsAnythingElseAndLeavesTheValueAlone) {
    for (const char* text :
         {"",    "   ", "abc", "1.2.3", "1,5", "e5",  ".",     "-",      "+-1", "1e",
          "1e+", "1 2", "12a", "0x10",  "inf", "nan", "1e400", "-1e400", "1d3", "--1"}) {
        double v = 7;
        EXPECT_FALSE(ParseNumber(text, v)) << "text \"" << text << "\"";
        EXPECT_EQ(v, 7.0) << "text \"" << text << "\"";
    }
}

}  // namespace
