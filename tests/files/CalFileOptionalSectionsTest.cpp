// The seven optional sections at the end of the calibration file: probed by
// label, in order, each missing one ending the reading with result true.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "FileTestSupport.h"
#include "files/CalFile.h"
#include "files/WindowHooks.h"
#include "model/ModelState.h"

namespace {

using filetest::IndexOfLine;
using filetest::LinesThrough;

// Loads the lines into a model at its defaults whose optional values are
// set to marks that neither the file nor the reader's defaults use, and
// counts the calls of the check-box hook.
class OptionalSections : public ::testing::Test {
  protected:
    void SetUp() override {
        s = std::make_unique<ModelState>();
        InitModel(*s);
        for (int k = 1; k <= 22; ++k) s->TermEnable[k] = 7;
        s->ThetaSF = 5;
        s->PhiSF = 5;
        s->EnableRefraction = true;
        s->MaxSensitivity = 999;
        SetEnableToChkHook([this] { ++enableToChkCalls; });
    }
    void TearDown() override { SetEnableToChkHook(nullptr); }

    bool Load(const std::vector<std::string>& lines, const std::string& lineEnd = "\r\n") {
        const std::string name = dir.File("sections.AZT");
        filetest::WriteBytes(name, filetest::JoinLines(lines, lineEnd));
        return LoadCalFile(*s, name);
    }

    // The flags of sections A and E as the two-star file has them.
    void ExpectFileTermFlagsA() {
        const int wanted[16] = {0, 0, 1, 0, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0};
        for (int k = 1; k <= 15; ++k) EXPECT_EQ(s->TermEnable[k], wanted[k]) << "flag " << k;
    }
    void ExpectDefaultTermFlagsA() {
        for (int k = 1; k <= 15; ++k) EXPECT_EQ(s->TermEnable[k], 1) << "flag " << k;
    }
    void ExpectDefaultTermFlagsE() {
        for (int k = 16; k <= 22; ++k) EXPECT_EQ(s->TermEnable[k], 0) << "flag " << k;
    }

    filetest::TempFolder dir;
    std::unique_ptr<ModelState> s;
    int enableToChkCalls = 0;
    const std::vector<std::string> full = filetest::TwoStarLines();
};

TEST_F(OptionalSections, CompleteFileSetsEveryValue) {
    ASSERT_TRUE(Load(full));
    ExpectFileTermFlagsA();
    const int wantedE[7] = {1, 0, 1, 0, 0, 0, 1};
    for (int k = 16; k <= 22; ++k) EXPECT_EQ(s->TermEnable[k], wantedE[k - 16]) << "flag " << k;
    EXPECT_FALSE(s->CalPoints[1].Used);
    EXPECT_TRUE(s->CalPoints[2].Used);
    EXPECT_EQ(s->ThetaSF, 1.002);
    EXPECT_EQ(s->PhiSF, 0.998);
    EXPECT_FALSE(s->EnableRefraction);
    EXPECT_EQ(s->MaxSensitivity, 150);
    EXPECT_EQ(enableToChkCalls, 2);
}

TEST_F(OptionalSections, FileEndingAfterPressureTakesTheDefaults) {
    ASSERT_TRUE(Load(LinesThrough(full, IndexOfLine(full, " 950 "))));
    ExpectDefaultTermFlagsA();
    ExpectDefaultTermFlagsE();
    EXPECT_TRUE(s->CalPoints[1].Used);
    EXPECT_TRUE(s->CalPoints[2].Used);
    EXPECT_EQ(s->ThetaSF, 1.0);
    EXPECT_EQ(s->PhiSF, 1.0);
    // No default for these two: they stay as they were.
    EXPECT_TRUE(s->EnableRefraction);
    EXPECT_EQ(s->MaxSensitivity, 999);
    EXPECT_EQ(enableToChkCalls, 0);
}

TEST_F(OptionalSections, FileEndingAfterSectionCKeepsItsScaleFactors) {
    ASSERT_TRUE(Load(LinesThrough(full, IndexOfLine(full, " 0.998 "))));
    ExpectFileTermFlagsA();
    EXPECT_FALSE(s->CalPoints[1].Used);
    EXPECT_TRUE(s->CalPoints[2].Used);
    EXPECT_EQ(s->ThetaSF, 1.002);
    EXPECT_EQ(s->PhiSF, 0.998);
    ExpectDefaultTermFlagsE();
    EXPECT_TRUE(s->EnableRefraction);
    EXPECT_EQ(s->MaxSensitivity, 999);
    EXPECT_EQ(enableToChkCalls, 1);
}

TEST_F(OptionalSections, WrongLabelAtSectionBStopsTheReading) {
    auto lines = full;
    lines[IndexOfLine(lines, "Cal Points Used:")] = "Cal points used:";
    ASSERT_TRUE(Load(lines));
    ExpectFileTermFlagsA();
    // B and all later sections take the defaults though they stand in the file.
    EXPECT_TRUE(s->CalPoints[1].Used);
    EXPECT_TRUE(s->CalPoints[2].Used);
    EXPECT_EQ(s->ThetaSF, 1.0);
    EXPECT_EQ(s->PhiSF, 1.0);
    ExpectDefaultTermFlagsE();
    EXPECT_TRUE(s->EnableRefraction);
    EXPECT_EQ(s->MaxSensitivity, 999);
    EXPECT_EQ(enableToChkCalls, 1);
}

TEST_F(OptionalSections, LabelWithTrailingBlankIsNotTheLabel) {
    auto lines = full;
    lines[IndexOfLine(lines, "Terms Enabled:")] = "Terms Enabled: ";
    ASSERT_TRUE(Load(lines));
    ExpectDefaultTermFlagsA();
    EXPECT_EQ(s->ThetaSF, 1.0);
    EXPECT_EQ(enableToChkCalls, 0);
}

TEST_F(OptionalSections, TruncatedSectionAKeepsWhatWasReadAndSkipsTheHook) {
    // Five of the fifteen flags: "0", "1", "0", "1", "1".
    ASSERT_TRUE(Load(LinesThrough(full, IndexOfLine(full, "Terms Enabled:") + 5)));
    EXPECT_EQ(s->TermEnable[1], 0);
    EXPECT_EQ(s->TermEnable[3], 0);
    for (int k : {2, 4, 5, 6, 15}) EXPECT_EQ(s->TermEnable[k], 1) << "flag " << k;
    ExpectDefaultTermFlagsE();
    EXPECT_TRUE(s->CalPoints[1].Used);
    EXPECT_EQ(enableToChkCalls, 0);
}

TEST_F(OptionalSections, TruncatedSectionBKeepsWhatWasRead) {
    ASSERT_TRUE(Load(LinesThrough(full, IndexOfLine(full, "Cal Points Used:") + 1)));
    ExpectFileTermFlagsA();
    EXPECT_FALSE(s->CalPoints[1].Used);  // read from the file
    EXPECT_TRUE(s->CalPoints[2].Used);   // default, its line is missing
    EXPECT_EQ(s->ThetaSF, 1.0);
    EXPECT_EQ(enableToChkCalls, 1);
}

TEST_F(OptionalSections, TruncatedSectionEIsNotFollowedByTheHook) {
    ASSERT_TRUE(Load(LinesThrough(full, IndexOfLine(full, "Terms Enabled:", 1) + 3)));
    EXPECT_EQ(s->TermEnable[16], 1);
    EXPECT_EQ(s->TermEnable[17], 0);
    EXPECT_EQ(s->TermEnable[18], 1);
    for (int k = 19; k <= 22; ++k) EXPECT_EQ(s->TermEnable[k], 0) << "flag " << k;
    EXPECT_EQ(enableToChkCalls, 1);
}

TEST_F(OptionalSections, FileEndingAfterTheBlankLineOfASection) {
    ASSERT_TRUE(Load(LinesThrough(full, IndexOfLine(full, "Scale Factors, Theta, Phi:") - 1)));
    EXPECT_FALSE(s->CalPoints[1].Used);
    EXPECT_EQ(s->ThetaSF, 1.0);
}

TEST_F(OptionalSections, FlagTestsDifferBetweenTermsPointsAndRefraction) {
    auto lines = full;
    const int termsA = IndexOfLine(lines, "Terms Enabled:");
    lines[termsA + 1] = " 0";  // not exactly "0": the term counts as on
    lines[termsA + 3] = "00";  // likewise
    const int termsE = IndexOfLine(lines, "Terms Enabled:", 1);
    lines[termsE + 2] = "0 ";  // on
    lines[termsE + 4] = "";    // on
    const int points = IndexOfLine(lines, "Cal Points Used:");
    lines[points + 1] = "True";                                  // not exactly "1": not used
    lines[points + 2] = " 1";                                    // not used
    lines[IndexOfLine(lines, "Enable Refraction:") + 1] = " 1";  // off
    s->EnableRefraction = true;
    ASSERT_TRUE(Load(lines));
    EXPECT_EQ(s->TermEnable[1], 1);
    EXPECT_EQ(s->TermEnable[3], 1);
    EXPECT_EQ(s->TermEnable[17], 1);
    EXPECT_EQ(s->TermEnable[19], 1);
    EXPECT_FALSE(s->CalPoints[1].Used);
    EXPECT_FALSE(s->CalPoints[2].Used);
    EXPECT_FALSE(s->EnableRefraction);
}

TEST_F(OptionalSections, ClockRateErrorValueHasNoEffect) {
    auto lines = full;
    lines[IndexOfLine(lines, "Clock Rate Error:") + 1] = "12.5";
    ASSERT_TRUE(Load(lines));
    EXPECT_EQ(s->TermEnable[16], 1);
    EXPECT_FALSE(s->EnableRefraction);
    EXPECT_EQ(s->MaxSensitivity, 150);
}

TEST_F(OptionalSections, ZeroStarsHasSectionBWithNoLines) {
    // The one-star example with its star block and its point flag removed.
    auto lines = filetest::OneStarExampleLines();
    lines[1] = " 0 ";
    lines.erase(lines.begin() + 2, lines.begin() + 17);
    lines.erase(lines.begin() + IndexOfLine(lines, "Cal Points Used:") + 1);
    lines[IndexOfLine(lines, " 300 ")] = " 250 ";
    ASSERT_TRUE(Load(lines));
    EXPECT_EQ(s->NumCalPoints, 0);
    EXPECT_EQ(s->MaxSensitivity, 250);
    EXPECT_EQ(enableToChkCalls, 2);
}

TEST_F(OptionalSections, BareLineFeedsReadLikeCarriageReturnLineFeeds) {
    ASSERT_TRUE(Load(full, "\n"));
    ExpectFileTermFlagsA();
    EXPECT_EQ(s->CalPoints[1].Name, "Vega");
    EXPECT_EQ(s->CalPoints[2].DateStr, "3/4/2023");
    EXPECT_EQ(s->PhiCountsPerRev, 8192);
    EXPECT_EQ(s->PhiSF, 0.998);
    EXPECT_EQ(s->MaxSensitivity, 150);
    EXPECT_EQ(enableToChkCalls, 2);
}

TEST_F(OptionalSections, LastLineWithoutLineEndIsRead) {
    std::string bytes = filetest::JoinLines(full);
    bytes.resize(bytes.size() - 2);
    const std::string name = dir.File("noend.AZT");
    filetest::WriteBytes(name, bytes);
    ASSERT_TRUE(LoadCalFile(*s, name));
    EXPECT_EQ(s->MaxSensitivity, 150);
}

}  // namespace
