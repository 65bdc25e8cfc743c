// The text of a real number in the calibration file, and its independence
// of the locale.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <random>
#include <string>

#include "FileTestSupport.h"
#include "files/CalFile.h"
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
    if (!comma.Active()) GTEST_SKIP() << "no locale with a decimal comma is installed";
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

}  // namespace
