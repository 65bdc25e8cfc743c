// Files that are not valid calibration files: the result is false and what
// was read before the failure stays in the model.

#include <algorithm>

#include "FileTestSupport.h"

namespace {

using filetest::Edited;
using filetest::IndexOfLine;
using filetest::LineEdit;

// A model at its defaults holding three old points and marked optional
// values, so that a load that fails early visibly leaves them.
class InvalidFiles : public ::testing::Test {
  protected:
    void SetUp() override {
        s = filetest::FreshModel();
        s->NumCalPoints = 3;
        for (int i = 1; i <= 3; ++i) {
            s->CalPoints[i].Name = "old " + std::to_string(i);
            s->CalPoints[i].RA = 0.5 * i;
            s->CalPoints[i].Dec = -0.1 * i;
        }
        for (int k = 1; k <= 22; ++k) s->TermEnable[k] = 7;
        s->ThetaSF = 5;
    }

    bool Load(const std::vector<std::string>& lines) {
        filetest::WriteBytes(dir.File("invalid.AZT"), filetest::JoinLines(lines));
        return LoadCalFile(*s, dir.File("invalid.AZT"));
    }

    // The result and the values a load reaches, in file order: the count, the
    // first two points (and the used flag of the first: true once its star is
    // read, the file's flag once section B is), site, axes, mount,
    // temperature and pressure, and whether the optional part was reached.
    std::string Loaded(const std::vector<std::string>& lines) {
        std::string d = Load(lines) ? "true n " : "false n ";
        d += std::to_string(s->NumCalPoints);
        for (int i = 1; i <= std::min<int>(s->NumCalPoints, 2); ++i) {
            const CalPoint& p = s->CalPoints[i];
            d += std::string(" [") + p.Name + " " + NumberText(p.RA) + " " + NumberText(p.Dec) +
                 " " + NumberText(p.PhiEnc) + (p.Used && i == 1 ? " used]" : "]");
        }
        return d + " lat " + NumberText(s->Latitude) + (s->PhiPosCW ? " cw " : " ccw ") +
               NumberText(s->PhiCountsPerRev) + (s->ThetaPosUp ? " up " : " down ") +
               NumberText(s->ThetaCountsPerRev) + (s->IsAltAz ? " altaz" : " eq") +
               (s->IsGEM ? " gem" : "") + " T " + NumberText(s->Temperature) + " P " +
               NumberText(s->Pressure) +
               (s->TermEnable[1] == 7 && s->TermEnable[22] == 7 && s->ThetaSF == 5
                    ? " optional untouched"
                    : " optional read");
    }

    filetest::TempFolder dir;
    std::unique_ptr<ModelState> s;
    const std::vector<std::string> full = filetest::TwoStarLines();
};

// What the model holds before a load, and the site of the two-star file.
const std::string kOldSite = " lat 33.5 cw 6.283185308 up 6.283185308 altaz T 16 P 1018";
const std::string kOld =
    "false n 3 [old 1 0.5 -0.1 0] [old 2 1 -0.2 0]" + kOldSite + " optional untouched";
const std::string kStars = " [Vega 4.87356 0.676903 -2000.5] [Deneb 5.41679 0.790289 2500]";
const std::string kStarsRead =
    " [Vega 4.87356 0.676903 -2000.5 used] [Deneb 5.41679 0.790289 2500]";
const std::string kFileSite = " lat 47.25 ccw 8192 down 4096 eq gem T -3.5";
const std::string kWhole = "true n 2" + kStars + kFileSite + " P 950 optional read";

TEST_F(InvalidFiles, WhatIsReadBeforeAFailureStays) {
    // A count that is no 16-bit number fails and changes nothing; a negative
    // one fails with an empty table; 2.5 rounds to the even 2. Booleans are
    // "True"/"False" in any case or numbers. The obligatory half is read line
    // by line without looking at its labels; its real lines use their
    // leading number, and "," is no decimal point.
    // clang-format off
    const struct { std::vector<LineEdit> edits; std::string want; } cases[] = {
        {{{"Number of Cal Stars:", 0, 1, "two"}}, kOld},
        {{{"Number of Cal Stars:", 0, 1, " 40000 "}}, kOld},
        {{{"Number of Cal Stars:", 0, 1, "-2 "}}, "false n 0" + kOldSite + " optional untouched"},
        {{{"Number of Cal Stars:", 0, 1, " 2.5 "}}, kWhole},
        {{{"Altitude Up, MaxAltCounts:", 0, 1, "Yes"}},
         "false n 2" + kStarsRead + " lat 47.25 ccw 8192 up 6.283185308 altaz T 16 P 1018"
         " optional untouched"},
        {{{"CW Azimuth, MaxAzCounts:", 0, 1, "TRUE"}, {"Altitude Up, MaxAltCounts:", 0, 1, "fAlSe"},
          {"IsAltAz, IsGEM:", 0, 1, "-1"}, {"IsAltAz, IsGEM:", 0, 2, "0"}},
         "true n 2" + kStars + " lat 47.25 cw 8192 down 4096 altaz T -3.5 P 950 optional read"},
        {{{"-3.5 ", 0, 0, nullptr}},
         "false n 2" + kStarsRead + kFileSite + " P 1018 optional untouched"},
        {{{"Deneb", 0, 2, nullptr}},  // inside a star: its Dec not reached
         "false n 2 [Vega 4.87356 0.676903 -2000.5 used] [Deneb 5.41679 -0.2 0]" + kOldSite +
         " optional untouched"},
        {{{"Number of Cal Stars:", 0, 0, "x"}, {"RA, Dec:", 0, 0, "x"}, {"Time, Date:", 0, 0, "x"},
          {"CW Azimuth, MaxAzCounts:", 0, 0, "x"}, {"Temperature, Pressure:", 0, 0, "x"},
          {"Cal Star 2:", 0, 0, ""}}, kWhole},
        {{{" 4.87356 ", 0, 0, "  4.5 rad"}, {" 0.676903 ", 0, 0, "north"},
          {" 47.25 ", 0, 0, "47,75"}},
         "true n 2 [Vega 4.5 0 -2000.5] [Deneb 5.41679 0.790289 2500] lat 47 ccw 8192 down 4096"
         " eq gem"
         " T -3.5 P 950 optional read"}};
    // clang-format on
    for (const auto& c : cases) {
        SetUp();
        EXPECT_EQ(Loaded(Edited(full, c.edits)), c.want);
    }
    EXPECT_EQ(s->MaxSensitivity, 150) << "the optional part after the numeric prefixes";
}

TEST_F(InvalidFiles, MissingOrEmptyFileFails) {
    EXPECT_FALSE(LoadCalFile(*s, dir.File("absent.AZT")));
    EXPECT_FALSE(LoadCalFile(*s, dir.Path()));  // a folder
    EXPECT_EQ(Loaded({}), kOld);
}

// A file of `count` stars in the layout of the two-star file, of which the
// first `written` are there; star i has RA i / 1000.
std::vector<std::string> ManyStarLines(int count, int written) {
    const auto two = filetest::TwoStarLines();
    std::vector<std::string> lines = {"Number of Cal Stars:", " " + std::to_string(count) + " "};
    for (int i = 1; i <= written; ++i) {
        std::vector<std::string> star(two.begin() + 2, two.begin() + 17);
        star[1] = "Cal Star " + std::to_string(i) + ":";
        star[2] = std::string("S") + std::to_string(i);
        star[4] = std::string(" ") + std::to_string(i / 1000.0) + " ";
        lines.insert(lines.end(), star.begin(), star.end());
    }
    lines.insert(lines.end(),
                 two.begin() + IndexOfLine(two, "Latitude, Longitude, TimeZone, DST:") - 1,
                 two.begin() + IndexOfLine(two, " 950 ") + 1);
    return lines;
}

TEST_F(InvalidFiles, CountsAbove500FailAtStar501WithFiveHundredLoaded) {
    // 500 is valid; 501 fails at star 501, before the settings; a count above
    // 500 in a short file leaves 500 as the count too.
    EXPECT_TRUE(Load(ManyStarLines(500, 500)));
    EXPECT_TRUE(s->NumCalPoints == 500 && s->CalPoints[500].RA == 0.5 && s->Latitude == 47.25);
    SetUp();
    EXPECT_FALSE(Load(ManyStarLines(501, 501)));
    EXPECT_TRUE(s->NumCalPoints == 500 && s->CalPoints[500].Name == "S500" && s->Latitude == 33.5);
    EXPECT_FALSE(Load(ManyStarLines(900, 2)));
    EXPECT_TRUE(s->NumCalPoints == 500 && s->CalPoints[2].Name == "S2");
}

}  // namespace
