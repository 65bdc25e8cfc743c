// The shared number helpers: default text of a double, rounded display text,
// the integer parts and the reader of numeric text.
#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdio>
#include <random>
#include <string>

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

TEST(NumberTextDefault, FifteenSignificantDigitsWithoutTrailingZeros) {
    // 0.1 + 0.2 is 0.30000000000000004 in binary; 15 digits give 0.300000000000000,
    // and the zeros go.
    EXPECT_EQ(NumberText(0.1 + 0.2), "0.3");
    // 1/3 to 15 significant digits, worked by hand.
    EXPECT_EQ(NumberText(1.0 / 3.0), "0.333333333333333");
    // 2/3 rounds its 15th digit up.
    EXPECT_EQ(NumberText(2.0 / 3.0), "0.666666666666667");
    EXPECT_EQ(NumberText(-2.5), "-2.5");
    EXPECT_EQ(NumberText(3.141592654), "3.141592654");
}

TEST(NumberTextDefault, WholeValuesHaveNoPoint) {
    EXPECT_EQ(NumberText(12.0), "12");
    EXPECT_EQ(NumberText(-300.0), "-300");
    EXPECT_EQ(NumberText(1018.0), "1018");
}

TEST(NumberTextDefault, ZeroOfEitherSignIsPlainZero) {
    EXPECT_EQ(NumberText(0.0), "0");
    EXPECT_EQ(NumberText(-0.0), "0");
}

TEST(NumberTextDefault, SmallAndLargeValuesTakeAnExponent) {
    // %g switches to an exponent below 1e-4 and from 10^precision on.
    EXPECT_EQ(NumberText(1e-5), "1e-05");
    EXPECT_EQ(NumberText(0.0001), "0.0001");
    EXPECT_EQ(NumberText(-2.5e-7), "-2.5e-07");
    EXPECT_EQ(NumberText(123456789012345.0), "123456789012345");  // 15 digits: still plain
    EXPECT_EQ(NumberText(1e15), "1e+15");
    EXPECT_EQ(NumberText(1e20), "1e+20");
    // 123456789012345678 to 15 digits: 1.23456789012346 (the 16th digit 6 rounds up).
    EXPECT_EQ(NumberText(123456789012345678.0), "1.23456789012346e+17");
    EXPECT_EQ(NumberText(1.7976931348623157e308), "1.79769313486232e+308");
}

TEST(NumberTextDefault, AgreesWithPrintfOnRandomValues) {
    std::mt19937_64 gen(20261122);
    std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
    std::uniform_int_distribution<int> exponent(-30, 30);
    for (int i = 0; i < 2000; ++i) {
        double x = mantissa(gen) * std::pow(10.0, exponent(gen));
        EXPECT_EQ(NumberText(x), PrintfText("%.15g", x)) << "x = " << x;
    }
}

// Finds an installed locale whose decimal point is a comma and makes it the
// C locale. Returns false when none is installed.
bool SetCommaLocale() {
    const char* candidates[] = {"de_DE.UTF-8", "de_DE.utf8",  "de_DE",       "fr_FR.UTF-8",
                                "fr_FR.utf8",  "nl_NL.UTF-8", "it_IT.UTF-8", "es_ES.UTF-8",
                                "ru_RU.UTF-8", "pt_BR.UTF-8"};
    for (const char* name : candidates) {
        if (std::setlocale(LC_ALL, name) != nullptr && std::localeconv()->decimal_point[0] == ',') {
            return true;
        }
    }
    std::setlocale(LC_ALL, "C");
    return false;
}

TEST(NumberTextLocale, PointStaysUnderACommaLocale) {
    if (!SetCommaLocale()) GTEST_SKIP() << "no locale with a comma decimal point is installed";
    // The locale took: printf now writes a comma.
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.1f", 2.5);
    const std::string printfText = buf;
    const std::string numberText = NumberText(2.5);
    const std::string roundedText = RoundedText(1.25, 2);
    double parsed = 0;
    const bool pointRead = ParseNumber("1.5", parsed);
    double unchanged = 7;
    const bool commaRead = ParseNumber("1,5", unchanged);
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(printfText, "2,5");
    EXPECT_EQ(numberText, "2.5");
    EXPECT_EQ(roundedText, "1.25");
    EXPECT_TRUE(pointRead);
    EXPECT_EQ(parsed, 1.5);
    EXPECT_FALSE(commaRead);
    EXPECT_EQ(unchanged, 7);
}

TEST(RoundedTextTies, TiesGoToEvenOnTheExactBinaryValue) {
    // 0.125 is exact in binary: a true tie, the even digit 2 wins.
    EXPECT_EQ(RoundedText(0.125, 2), "0.12");
    // 0.375 is exact too: the even digit is 8.
    EXPECT_EQ(RoundedText(0.375, 2), "0.38");
    // 2.5 and 3.5 are exact: even neighbours 2 and 4.
    EXPECT_EQ(RoundedText(2.5, 0), "2");
    EXPECT_EQ(RoundedText(3.5, 0), "4");
    EXPECT_EQ(RoundedText(-2.5, 0), "-2");
    // 2.675 is stored as 2.67499999999999982236431605997495353221893310546875:
    // no tie, it goes down.
    EXPECT_EQ(RoundedText(2.675, 2), "2.67");
    // 1.005 is stored as 1.00499999999999989...: down.
    EXPECT_EQ(RoundedText(1.005, 2), "1");
    // 59.95 is stored as 59.95000000000000284...: up, to 60.
    EXPECT_EQ(RoundedText(59.95, 1), "60");
}

TEST(RoundedTextForm, PlainestFormWithoutTrailingZerosOrPoint) {
    EXPECT_EQ(RoundedText(1.50, 2), "1.5");
    EXPECT_EQ(RoundedText(2.0, 3), "2");
    EXPECT_EQ(RoundedText(12.345, 0), "12");
    EXPECT_EQ(RoundedText(-7.25, 1), "-7.2");  // exact tie, even digit 2
    // A negative value that rounds to zero loses its sign.
    EXPECT_EQ(RoundedText(-0.0004, 3), "0");
    EXPECT_EQ(RoundedText(-0.4, 0), "0");
    EXPECT_EQ(RoundedText(-0.0, 2), "0");
    // Negative places count as none.
    EXPECT_EQ(RoundedText(7.6, -1), "8");
}

TEST(RoundedTextForm, ManyPlacesAndHugeValuesStillGiveText) {
    // The exact binary value of 0.1, all 55 decimals, as printf writes it.
    const std::string exactTenth = "0.1000000000000000055511151231257827021181583404541015625";
    EXPECT_EQ(RoundedText(0.1, 60), exactTenth);
    EXPECT_EQ(RoundedText(0.1, 2000), exactTenth);
    EXPECT_EQ(RoundedText(1e300, 200), PrintfText("%.0f", 1e300));
    // The smallest subnormal needs all 1074 places.
    const std::string tiny = RoundedText(4.9406564584124654e-324, 1074);
    EXPECT_EQ(tiny.size(), 1076u);
    EXPECT_EQ(tiny.substr(0, 6), "0.0000");
    EXPECT_EQ(tiny.back(), '5');
}

TEST(RoundedTextForm, AgreesWithPrintfOnRandomValues) {
    std::mt19937_64 gen(42);
    std::uniform_real_distribution<double> value(-1000.0, 1000.0);
    std::uniform_int_distribution<int> places(0, 8);
    for (int i = 0; i < 2000; ++i) {
        const double x = value(gen);
        const int n = places(gen);
        char format[16];
        std::snprintf(format, sizeof format, "%%.%df", n);
        std::string want = PrintfText(format, x);
        if (want.find('.') != std::string::npos) {
            while (want.back() == '0') want.pop_back();
            if (want.back() == '.') want.pop_back();
        }
        if (want == "-0") want = "0";
        EXPECT_EQ(RoundedText(x, n), want) << "x = " << x << ", places = " << n;
    }
}

TEST(RoundingHalfEven, HalvesGoToTheEvenNeighbour) {
    EXPECT_EQ(RoundHalfEven(10.5), 10.0);
    EXPECT_EQ(RoundHalfEven(11.5), 12.0);
    EXPECT_EQ(RoundHalfEven(0.5), 0.0);
    EXPECT_EQ(RoundHalfEven(1.5), 2.0);
    EXPECT_EQ(RoundHalfEven(-0.5), 0.0);
    EXPECT_EQ(RoundHalfEven(-1.5), -2.0);
    EXPECT_EQ(RoundHalfEven(-2.5), -2.0);
}

TEST(RoundingHalfEven, NonHalvesGoToTheNearest) {
    EXPECT_EQ(RoundHalfEven(2.4999999999999996), 2.0);  // largest double below 2.5
    EXPECT_EQ(RoundHalfEven(2.5000000000000004), 3.0);  // smallest double above 2.5
    EXPECT_EQ(RoundHalfEven(-3.7), -4.0);
    EXPECT_EQ(RoundHalfEven(-3.2), -3.0);
    EXPECT_EQ(RoundHalfEven(7.0), 7.0);
    EXPECT_EQ(RoundHalfEven(4503599627370497.0), 4503599627370497.0);  // 2^52 + 1, odd and whole
}

TEST(RoundingIntParts, IntIsFloor) {
    EXPECT_EQ(VbInt(2.7), 2.0);
    EXPECT_EQ(VbInt(-2.7), -3.0);
    EXPECT_EQ(VbInt(-2.0), -2.0);
    EXPECT_EQ(VbInt(-0.5), -1.0);
    EXPECT_EQ(VbInt(0.9999999999999999), 0.0);
}

TEST(RoundingIntParts, TruncCutsTowardZero) {
    EXPECT_EQ(VbTrunc(2.7), 2.0);
    EXPECT_EQ(VbTrunc(-2.7), -2.0);
    EXPECT_EQ(VbTrunc(-0.5), 0.0);
    EXPECT_EQ(NumberText(VbTrunc(-0.5)), "0");
    EXPECT_EQ(VbTrunc(-3.0), -3.0);
}

TEST(ParseNumberAccepts, SignDigitsPointExponentAndBlanks) {
    double v = 0;
    EXPECT_TRUE(ParseNumber(" -1.5e3 ", v));
    EXPECT_EQ(v, -1500.0);
    EXPECT_TRUE(ParseNumber("+.5", v));
    EXPECT_EQ(v, 0.5);
    EXPECT_TRUE(ParseNumber("5.", v));
    EXPECT_EQ(v, 5.0);
    EXPECT_TRUE(ParseNumber("12", v));
    EXPECT_EQ(v, 12.0);
    EXPECT_TRUE(ParseNumber("2E-2", v));
    EXPECT_EQ(v, 0.02);
    EXPECT_TRUE(ParseNumber("00030", v));
    EXPECT_EQ(v, 30.0);
    // The nearest double, as a compiler reads the same literal.
    EXPECT_TRUE(ParseNumber("0.1", v));
    EXPECT_EQ(v, 0.1);
}

TEST(ParseNumberAccepts, TooSmallForADoubleIsZero) {
    double v = 7;
    EXPECT_TRUE(ParseNumber("1e-400", v));
    EXPECT_EQ(v, 0.0);
    v = 7;
    EXPECT_TRUE(ParseNumber("-0.00001e-399", v));
    EXPECT_EQ(v, 0.0);
    EXPECT_TRUE(std::signbit(v));
    EXPECT_TRUE(ParseNumber("4.9e-324", v));  // the smallest subnormal
    EXPECT_EQ(v, 4.9406564584124654e-324);
}

TEST(ParseNumberRejects, AnythingElseAndLeavesTheValueAlone) {
    const char* bad[] = {"",    "   ", "abc",   "1.2.3",  "1,5", "e5",  ".",
                         "-",   "+-1", "1e",    "1e+",    "1 2", "12a", "0x10",
                         "inf", "nan", "1e400", "-1e400", "1d3", "--1"};
    for (const char* text : bad) {
        double v = 7;
        EXPECT_FALSE(ParseNumber(text, v)) << "text \"" << text << "\"";
        EXPECT_EQ(v, 7.0) << "text \"" << text << "\"";
    }
}

}  // namespace
