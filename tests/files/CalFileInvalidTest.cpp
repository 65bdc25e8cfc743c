// Files that are not valid calibration files: the result is false and what
// was read before the failure stays in the model.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "FileTestSupport.h"
#include "files/CalFile.h"
#include "model/ModelState.h"

namespace {

using filetest::IndexOfLine;
using filetest::LinesThrough;

// A model at its defaults holding three old points, so that a load that
// fails early visibly leaves them.
class InvalidFiles : public ::testing::Test {
  protected:
    void SetUp() override {
        s = std::make_unique<ModelState>();
        InitModel(*s);
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
        const std::string name = dir.File("invalid.AZT");
        filetest::WriteBytes(name, filetest::JoinLines(lines));
        return LoadCalFile(*s, name);
    }

    // Nothing of the optional defaults was set.
    void ExpectOptionalValuesUntouched() {
        for (int k = 1; k <= 22; ++k) EXPECT_EQ(s->TermEnable[k], 7) << "flag " << k;
        EXPECT_EQ(s->ThetaSF, 5);
    }

    filetest::TempFolder dir;
    std::unique_ptr<ModelState> s;
    const std::vector<std::string> full = filetest::TwoStarLines();
};

// A file of `count` stars in the layout of the two-star file; star i has
// RA i / 1000.
std::vector<std::string> ManyStarLines(int count, int starsWritten) {
    const auto two = filetest::TwoStarLines();
    std::vector<std::string> lines = {"Number of Cal Stars:", " " + std::to_string(count) + " "};
    for (int i = 1; i <= starsWritten; ++i) {
        std::vector<std::string> star(two.begin() + 2, two.begin() + 17);
        star[1] = "Cal Star " + std::to_string(i) + ":";
        star[2] = "S" + std::to_string(i);
        star[4] = " " + std::to_string(i / 1000.0) + " ";
        lines.insert(lines.end(), star.begin(), star.end());
    }
    const int settings = IndexOfLine(two, "Latitude, Longitude, TimeZone, DST:") - 1;
    const int pressure = IndexOfLine(two, " 950 ");
    lines.insert(lines.end(), two.begin() + settings, two.begin() + pressure + 1);
    return lines;
}

TEST_F(InvalidFiles, NonNumericCountChangesNothing) {
    auto lines = full;
    lines[1] = "two";
    EXPECT_FALSE(Load(lines));
    EXPECT_EQ(s->NumCalPoints, 3);
    EXPECT_EQ(s->CalPoints[1].Name, "old 1");
    EXPECT_EQ(s->Latitude, 33.5);
}

TEST_F(InvalidFiles, CountBeyondSixteenBitsIsNotANumber) {
    auto lines = full;
    lines[1] = " 40000 ";
    EXPECT_FALSE(Load(lines));
    EXPECT_EQ(s->NumCalPoints, 3);
}

TEST_F(InvalidFiles, FractionalCountRoundsHalfToEven) {
    // A 16-bit conversion of 2.5 rounds to the even 2: the two-star file
    // then loads completely.
    auto lines = full;
    lines[1] = " 2.5 ";
    EXPECT_TRUE(Load(lines));
    EXPECT_EQ(s->NumCalPoints, 2);
}

TEST_F(InvalidFiles, BadBooleanWordKeepsWhatWasRead) {
    auto lines = full;
    lines[IndexOfLine(lines, "Altitude Up, MaxAltCounts:") + 1] = "Yes";
    EXPECT_FALSE(Load(lines));
    // Read before the failure: the count, both stars, Latitude, the Phi axis.
    EXPECT_EQ(s->NumCalPoints, 2);
    EXPECT_EQ(s->CalPoints[2].Name, "Deneb");
    EXPECT_EQ(s->CalPoints[2].PhiEnc, 2500);
    EXPECT_EQ(s->Latitude, 47.25);
    EXPECT_FALSE(s->PhiPosCW);
    EXPECT_EQ(s->PhiCountsPerRev, 8192);
    // Not reached: they keep their defaults.
    EXPECT_TRUE(s->ThetaPosUp);
    EXPECT_EQ(s->ThetaCountsPerRev, 6.283185308);
    EXPECT_TRUE(s->IsAltAz);
    EXPECT_EQ(s->Temperature, 16);
    ExpectOptionalValuesUntouched();
}

TEST_F(InvalidFiles, BooleanLinesAcceptWordsInAnyCaseAndNumbers) {
    auto lines = full;
    lines[IndexOfLine(lines, "CW Azimuth, MaxAzCounts:") + 1] = "TRUE";
    lines[IndexOfLine(lines, "Altitude Up, MaxAltCounts:") + 1] = "fAlSe";
    const int mount = IndexOfLine(lines, "IsAltAz, IsGEM:");
    lines[mount + 1] = "-1";
    lines[mount + 2] = "0";
    s->ThetaPosUp = true;
    ASSERT_TRUE(Load(lines));
    EXPECT_TRUE(s->PhiPosCW);
    EXPECT_FALSE(s->ThetaPosUp);
    EXPECT_TRUE(s->IsAltAz);
    EXPECT_FALSE(s->IsGEM);
}

TEST_F(InvalidFiles, EndBeforePressureFails) {
    EXPECT_FALSE(Load(LinesThrough(full, IndexOfLine(full, "-3.5 "))));
    EXPECT_EQ(s->NumCalPoints, 2);
    EXPECT_EQ(s->Temperature, -3.5);
    EXPECT_EQ(s->Pressure, 1018);  // not reached
    ExpectOptionalValuesUntouched();
}

TEST_F(InvalidFiles, EndInsideAStarKeepsTheLinesRead) {
    EXPECT_FALSE(Load(LinesThrough(full, IndexOfLine(full, "Deneb") + 2)));
    EXPECT_EQ(s->NumCalPoints, 2);
    EXPECT_EQ(s->CalPoints[1].Name, "Vega");
    EXPECT_TRUE(s->CalPoints[1].Used);
    EXPECT_EQ(s->CalPoints[2].Name, "Deneb");
    EXPECT_EQ(s->CalPoints[2].RA, 5.41679);
    EXPECT_EQ(s->CalPoints[2].Dec, -0.2);  // not reached: the old point's value
    EXPECT_EQ(s->Latitude, 33.5);
}

TEST_F(InvalidFiles, CountOf501FailsAtStar501WithFiveHundredLoaded) {
    EXPECT_FALSE(Load(ManyStarLines(501, 501)));
    EXPECT_EQ(s->NumCalPoints, 500);
    EXPECT_EQ(s->CalPoints[500].Name, "S500");
    EXPECT_EQ(s->CalPoints[500].RA, 0.5);
    EXPECT_EQ(s->Latitude, 33.5);  // settings never reached
}

TEST_F(InvalidFiles, CountAbove500InAShortFileLeavesFiveHundred) {
    EXPECT_FALSE(Load(ManyStarLines(900, 2)));
    EXPECT_EQ(s->NumCalPoints, 500);
    EXPECT_EQ(s->CalPoints[2].Name, "S2");
}

TEST_F(InvalidFiles, CountOf500IsValid) {
    EXPECT_TRUE(Load(ManyStarLines(500, 500)));
    EXPECT_EQ(s->NumCalPoints, 500);
    EXPECT_EQ(s->CalPoints[500].RA, 0.5);
    EXPECT_EQ(s->Latitude, 47.25);
}

TEST_F(InvalidFiles, NegativeCountFailsWithAnEmptyTable) {
    auto lines = full;
    lines[1] = "-2 ";
    EXPECT_FALSE(Load(lines));
    EXPECT_EQ(s->NumCalPoints, 0);
    EXPECT_EQ(s->Latitude, 33.5);
    ExpectOptionalValuesUntouched();
}

TEST_F(InvalidFiles, MissingOrEmptyFileFails) {
    EXPECT_FALSE(LoadCalFile(*s, dir.File("absent.AZT")));
    EXPECT_FALSE(LoadCalFile(*s, dir.Path()));  // a folder
    EXPECT_FALSE(Load({}));
    EXPECT_EQ(s->NumCalPoints, 3);
    EXPECT_EQ(s->CalPoints[1].Name, "old 1");
}

TEST_F(InvalidFiles, LabelsOfTheObligatoryHalfAreNotTested) {
    auto lines = full;
    for (const char* label : {"Number of Cal Stars:", "RA, Dec:", "Time, Date:",
                              "CW Azimuth, MaxAzCounts:", "Temperature, Pressure:"})
        lines[IndexOfLine(lines, label)] = "something else";
    lines[IndexOfLine(lines, "Cal Star 2:")] = "";
    ASSERT_TRUE(Load(lines));
    EXPECT_EQ(s->CalPoints[2].RA, 5.41679);
    EXPECT_EQ(s->Pressure, 950);
    EXPECT_EQ(s->MaxSensitivity, 150);
}

TEST_F(InvalidFiles, RealLinesUseTheirLeadingNumber) {
    auto lines = full;
    lines[IndexOfLine(lines, " 4.87356 ")] = "  4.5 rad";
    lines[IndexOfLine(lines, " 0.676903 ")] = "north";
    lines[IndexOfLine(lines, " 47.25 ")] = "47,75";
    ASSERT_TRUE(Load(lines));
    EXPECT_EQ(s->CalPoints[1].RA, 4.5);
    EXPECT_EQ(s->CalPoints[1].Dec, 0);
    EXPECT_EQ(s->Latitude, 47);  // "," is no decimal point in the file
}

}  // namespace
