// The writer of the calibration file: exact bytes, and when it refuses.

#include "FileTestSupport.h"
#include "files/WindowHooks.h"

namespace {

using filetest::Edited;
using filetest::JoinLines;
using filetest::OneStarExampleLines;
using filetest::ReadBytes;

TEST(CalFileWriting, OneStarExampleComesOutByteForByteOverEarlierContent) {
    // Wanted: the reference example of the file format, typed out line by
    // line, each line ended by CR LF; a longer earlier file is replaced.
    filetest::TempFolder dir;
    const std::string name = dir.File("example.AZT");
    filetest::WriteBytes(name, std::string(20000, 'x'));
    ASSERT_TRUE(SaveCalFile(*filetest::OneStarModel(), name));
    EXPECT_EQ(ReadBytes(name), JoinLines(OneStarExampleLines()));
}

TEST(CalFileWriting, FlagsOtherThanOneAndLineEndsInTextsAreWrittenSafely) {
    // A flag is written "1" only when it is 1: 2 and the interface's 16-bit
    // true -1 are "0". A line end inside a client's time text would shift
    // every later line: it becomes blanks.
    filetest::TempFolder dir;
    auto s = filetest::OneStarModel();
    s->TermEnable[1] = 2;
    s->TermEnable[2] = -1;
    s->TermEnable[16] = 1;  // first flag of the second section
    s->CalPoints[1].Used = false;
    s->EnableRefraction = false;
    s->CalPoints[1].TimeStr = "21:14\r\n05";
    ASSERT_TRUE(SaveCalFile(*s, dir.File("flags.AZT")));
    EXPECT_EQ(ReadBytes(dir.File("flags.AZT")),
              JoinLines(Edited(OneStarExampleLines(), {{"Terms Enabled:", 0, 1, "0"},
                                                       {"Terms Enabled:", 0, 2, "0"},
                                                       {"Terms Enabled:", 1, 1, "1"},
                                                       {"Cal Points Used:", 0, 1, "0"},
                                                       {"Enable Refraction:", 0, 1, "0"},
                                                       {"21:14:05", 0, 0, "21:14  05"}})));
}

TEST(CalFileWriting, RefusalsWriteNothing) {
    // No points: false, and the old file keeps its content. An empty name, a
    // missing folder, or a folder in place of the file: false.
    filetest::TempFolder dir;
    const std::string name = dir.File("old.AZT");
    filetest::WriteBytes(name, "earlier content");
    EXPECT_FALSE(SaveCalFile(*filetest::FreshModel(), name));
    EXPECT_EQ(ReadBytes(name), "earlier content");
    auto s = filetest::OneStarModel();
    EXPECT_FALSE(SaveCalFile(*s, ""));
    EXPECT_FALSE(SaveCalFile(*s, dir.File("no such folder/cal.AZT")));
    EXPECT_FALSE(SaveCalFile(*s, dir.Path()));
}

TEST(CalFileWriting, PendingEventsRunBeforeAnythingElse) {
    filetest::TempFolder dir;
    auto s = filetest::OneStarModel();
    const std::string name = dir.File("events.AZT");
    int calls = 0;
    bool fileExistedAtCall = true;
    SetPendingEventsHook([&] {
        if (++calls == 1) fileExistedAtCall = std::filesystem::exists(name);
    });
    EXPECT_TRUE(SaveCalFile(*s, name));
    EXPECT_FALSE(SaveCalFile(*s, ""));  // also before the refusal of an empty name
    SetPendingEventsHook(nullptr);
    EXPECT_EQ(calls, 2);
    EXPECT_FALSE(fileExistedAtCall);
    // With the default restored the writer still works.
    EXPECT_TRUE(SaveCalFile(*s, name));
    EXPECT_EQ(calls, 2);
}

}  // namespace
