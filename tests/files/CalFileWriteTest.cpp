// The writer of the calibration file: exact bytes, and when it refuses.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "FileTestSupport.h"
#include "files/CalFile.h"
#include "files/WindowHooks.h"
#include "model/ModelState.h"

namespace {

using filetest::JoinLines;
using filetest::ReadBytes;
using filetest::TempFolder;

// The model of the reference one-star file: defaults, the first fifteen
// term flags on, and one point without a name.
std::unique_ptr<ModelState> OneStarModel() {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    for (int k = 1; k <= 15; ++k) s->TermEnable[k] = 1;
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
    s->NumCalPoints = 1;
    return s;
}

TEST(CalFileWriting, OneStarExampleComesOutByteForByte) {
    TempFolder dir;
    auto s = OneStarModel();
    const std::string name = dir.File("example.AZT");
    ASSERT_TRUE(SaveCalFile(*s, name));
    // Wanted: the reference example of the file format, typed out line by
    // line, each line ended by CR LF.
    const std::string wanted = JoinLines(filetest::OneStarExampleLines());
    const std::string got = ReadBytes(name);
    EXPECT_EQ(got, wanted);
    EXPECT_EQ(got.size(), wanted.size());
}

TEST(CalFileWriting, NoPointsWritesNothingAndKeepsTheOldFile) {
    TempFolder dir;
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    const std::string name = dir.File("old.AZT");
    filetest::WriteBytes(name, "earlier content");
    EXPECT_FALSE(SaveCalFile(*s, name));
    EXPECT_EQ(ReadBytes(name), "earlier content");
}

TEST(CalFileWriting, EmptyNameFails) {
    auto s = OneStarModel();
    EXPECT_FALSE(SaveCalFile(*s, ""));
}

TEST(CalFileWriting, UnwritableNameFails) {
    TempFolder dir;
    auto s = OneStarModel();
    EXPECT_FALSE(SaveCalFile(*s, dir.File("no such folder/cal.AZT")));
    // A folder cannot be opened as a file.
    EXPECT_FALSE(SaveCalFile(*s, dir.Path()));
}

TEST(CalFileWriting, PendingEventsRunBeforeAnythingElse) {
    TempFolder dir;
    auto s = OneStarModel();
    const std::string name = dir.File("events.AZT");
    int calls = 0;
    bool fileExistedAtCall = true;
    SetPendingEventsHook([&] {
        if (++calls == 1) fileExistedAtCall = std::filesystem::exists(name);
    });
    EXPECT_TRUE(SaveCalFile(*s, name));
    // Also before the refusal of an empty name.
    EXPECT_FALSE(SaveCalFile(*s, ""));
    SetPendingEventsHook(nullptr);
    EXPECT_EQ(calls, 2);
    EXPECT_FALSE(fileExistedAtCall);
    // With the default restored the writer still works.
    EXPECT_TRUE(SaveCalFile(*s, name));
    EXPECT_EQ(calls, 2);
}

TEST(CalFileWriting, FlagsOtherThanOneAreWrittenAsZero) {
    TempFolder dir;
    auto s = OneStarModel();
    s->TermEnable[1] = 2;   // not 1: written "0"
    s->TermEnable[2] = -1;  // the 16-bit true of the interface, still not 1
    s->TermEnable[16] = 1;  // first flag of the second section
    s->CalPoints[1].Used = false;
    s->EnableRefraction = false;
    const std::string name = dir.File("flags.AZT");
    ASSERT_TRUE(SaveCalFile(*s, name));
    auto lines = filetest::OneStarExampleLines();
    filetest::SetLineBelow(lines, "Terms Enabled:", 0, 1, "0");
    filetest::SetLineBelow(lines, "Terms Enabled:", 0, 2, "0");
    filetest::SetLineBelow(lines, "Terms Enabled:", 1, 1, "1");
    filetest::SetLineBelow(lines, "Cal Points Used:", 0, 1, "0");
    filetest::SetLineBelow(lines, "Enable Refraction:", 0, 1, "0");
    EXPECT_EQ(ReadBytes(name), JoinLines(lines));
}

TEST(CalFileWriting, ReplacesEarlierContent) {
    TempFolder dir;
    auto s = OneStarModel();
    const std::string name = dir.File("replace.AZT");
    filetest::WriteBytes(name, std::string(20000, 'x'));
    ASSERT_TRUE(SaveCalFile(*s, name));
    EXPECT_EQ(ReadBytes(name), JoinLines(filetest::OneStarExampleLines()));
}

TEST(CalFileWriting, LineEndsInsideFreeTextBecomeBlanks) {
    // A line end inside a client's time text would shift every later line.
    TempFolder dir;
    auto s = OneStarModel();
    s->CalPoints[1].TimeStr = "21:14\r\n05";
    const std::string name = dir.File("text.AZT");
    ASSERT_TRUE(SaveCalFile(*s, name));
    auto lines = filetest::OneStarExampleLines();
    lines[filetest::IndexOfLine(lines, "21:14:05")] = "21:14  05";
    EXPECT_EQ(ReadBytes(name), JoinLines(lines));
}

}  // namespace
