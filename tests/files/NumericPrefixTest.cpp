// The lenient number reading of the file lines.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "files/NumericPrefix.h"

namespace {

TEST(NumericPrefixReading, TakesTheLeadingNumber) {
    // Wanted values are the decimal numbers written in the texts.
    EXPECT_EQ(NumericPrefixValue(" 1.5 "), 1.5);
    EXPECT_EQ(NumericPrefixValue("-0.25 "), -0.25);
    EXPECT_EQ(NumericPrefixValue("+3"), 3);
    EXPECT_EQ(NumericPrefixValue("\t 2451545 "), 2451545);
    EXPECT_EQ(NumericPrefixValue("12abc"), 12);
    EXPECT_EQ(NumericPrefixValue("1,5"), 1);
    EXPECT_EQ(NumericPrefixValue(".5"), 0.5);
    EXPECT_EQ(NumericPrefixValue("5."), 5);
    EXPECT_EQ(NumericPrefixValue("1.5e-07 "), 1.5e-07);
    EXPECT_EQ(NumericPrefixValue("-2E+20"), -2e20);
    EXPECT_EQ(NumericPrefixValue("6.283185308"), 6.283185308);
}

TEST(NumericPrefixReading, ExponentNeedsADigit) {
    EXPECT_EQ(NumericPrefixValue("1e"), 1);
    EXPECT_EQ(NumericPrefixValue("1e+"), 1);
    EXPECT_EQ(NumericPrefixValue("2e-x"), 2);
    EXPECT_EQ(NumericPrefixValue("3e2x"), 300);
}

TEST(NumericPrefixReading, NoNumberGivesZero) {
    for (const char* text : {"", "   ", "abc", ".", "-", "+", "- 3", "e5", "True", "-.e1"})
        EXPECT_EQ(NumericPrefixValue(text), 0.0) << "text \"" << text << "\"";
}

TEST(NumericPrefixReading, OutOfRangeGivesInfinityOrZero) {
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(NumericPrefixValue("1e999"), inf);
    EXPECT_EQ(NumericPrefixValue("-1e999"), -inf);
    EXPECT_EQ(NumericPrefixValue("0.0001e313"), inf);
    EXPECT_EQ(NumericPrefixValue("1e-999"), 0.0);
    EXPECT_TRUE(std::signbit(NumericPrefixValue("-1e-999")));
    EXPECT_EQ(NumericPrefixValue("1000e-1000"), 0.0);
    EXPECT_EQ(NumericPrefixValue("1e99999999999999999999"), inf);
    // Within range after all: 1e308 and the largest digits before the point.
    EXPECT_EQ(NumericPrefixValue("0.001e311"), 1e308);
}

}  // namespace
