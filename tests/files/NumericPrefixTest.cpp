// The lenient number reading of the file lines.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "files/NumericPrefix.h"

namespace {

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

}  // namespace
