// The text of a real number in the calibration file, and its independence
// of the locale.
#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdio>
#include <locale>
#include <memory>
#include <random>
#include <string>

#include "FileTestSupport.h"
#include "files/CalFile.h"
#include "model/ModelState.h"

namespace {

TEST(NumToFileStrShape, BlanksAroundNonNegativeMinusInFirstColumn) {
    // Wanted texts are the number lines of the reference one-star file.
    EXPECT_EQ(NumToFileStr(1.5), " 1.5 ");
    EXPECT_EQ(NumToFileStr(-0.25), "-0.25 ");
    EXPECT_EQ(NumToFileStr(2451545.0), " 2451545 ");
    EXPECT_EQ(NumToFileStr(-118.0), "-118 ");
    EXPECT_EQ(NumToFileStr(6.283185308), " 6.283185308 ");
    EXPECT_EQ(NumToFileStr(0.0), " 0 ");
    // Negative zero has the text "0", so it takes the blank of a
    // non-negative value.
    EXPECT_EQ(NumToFileStr(-0.0), " 0 ");
}

TEST(NumToFileStrShape, FifteenSignificantDigits) {
    // 1/3 to 15 significant digits is fifteen threes (hand count); 0.1 + 0.2
    // is 0.30000000000000004 in binary and 0.3 at 15 digits.
    EXPECT_EQ(NumToFileStr(1.0 / 3.0), " 0.333333333333333 ");
    EXPECT_EQ(NumToFileStr(0.1 + 0.2), " 0.3 ");
    EXPECT_EQ(NumToFileStr(-2.0 / 3.0), "-0.666666666666667 ");
}

TEST(NumToFileStrShape, MatchesPrintfGeneralFormatInTheCLocale) {
    // Outside reference: printf's "%.15g" in the "C" locale, with the blanks
    // of the file around it. Random values over many magnitudes, both signs,
    // include exponent forms at both ends.
    std::mt19937_64 gen(20240611);
    std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
    std::uniform_int_distribution<int> power(-30, 30);
    for (int i = 0; i < 2000; ++i) {
        const double x = mantissa(gen) * std::pow(10.0, power(gen));
        char buf[64];
        std::snprintf(buf, sizeof buf, "%.15g", x);
        std::string wanted = buf;
        if (wanted == "-0") wanted = "0";
        wanted = (wanted[0] == '-' ? "" : " ") + wanted + " ";
        ASSERT_EQ(NumToFileStr(x), wanted) << "value " << buf;
    }
}

// Switches the process to a locale with "," as decimal separator and back.
class CommaLocale {
  public:
    CommaLocale() {
        saved_ = std::setlocale(LC_ALL, nullptr);
        for (const char* name :
             {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8", "nl_NL.UTF-8",
              "ru_RU.UTF-8", "es_ES.UTF-8", "it_IT.UTF-8", "de_DE", "fr_FR"}) {
            if (std::setlocale(LC_ALL, name) &&
                std::string(std::localeconv()->decimal_point) == ",") {
                active_ = true;
                break;
            }
        }
        if (!active_) std::setlocale(LC_ALL, saved_.c_str());
    }
    ~CommaLocale() { std::setlocale(LC_ALL, saved_.c_str()); }
    bool Active() const { return active_; }

  private:
    std::string saved_;
    bool active_ = false;
};

TEST(NumToFileStrLocale, CommaLocaleStillWritesAndReadsPoint) {
    CommaLocale comma;
    if (!comma.Active()) GTEST_SKIP() << "no locale with a decimal comma is installed";
    // The locale is in force: printf itself now writes a comma.
    char buf[32];
    std::snprintf(buf, sizeof buf, "%g", 1.5);
    ASSERT_STREQ(buf, "1,5");

    EXPECT_EQ(NumToFileStr(1.5), " 1.5 ");
    EXPECT_EQ(NumToFileStr(-0.25), "-0.25 ");

    filetest::TempFolder dir;
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    for (int k = 1; k <= 15; ++k) s->TermEnable[k] = 1;
    s->NumCalPoints = 1;
    CalPoint& p = s->CalPoints[1];
    p.RA = 1.5;
    p.Dec = -0.25;
    p.ThetaEnc = 0.75;
    p.PhiEnc = 2.125;
    p.LST = 1.75;
    p.JD = 2451545;
    p.TimeStr = "21:14:05";
    p.DateStr = "1/2/2005";
    p.Used = true;
    const std::string name = dir.File("comma.AZT");
    ASSERT_TRUE(SaveCalFile(*s, name));
    // The whole file is that of the "C" locale.
    EXPECT_EQ(filetest::ReadBytes(name), filetest::JoinLines(filetest::OneStarExampleLines()));

    auto back = std::make_unique<ModelState>();
    InitModel(*back);
    ASSERT_TRUE(LoadCalFile(*back, name));
    EXPECT_EQ(back->CalPoints[1].RA, 1.5);
    EXPECT_EQ(back->CalPoints[1].Dec, -0.25);
    EXPECT_EQ(back->CalPoints[1].PhiEnc, 2.125);
}

}  // namespace
