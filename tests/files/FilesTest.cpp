// The calibration file written, read whole, short, bad or old, its text; and the trace log.
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>

#include "FileTestSupport.h"
#include "files/CodePage1252.h"
#include "files/DocumentsFolder.h"
#include "files/NumericPrefix.h"
#include "files/TraceLog.h"
#include "files/TraceLogForTests.h"
#include "files/WindowHooks.h"
#include "sky/SkyTestSupport.h"

namespace {

using namespace filetest;

TEST(CalFileWriting, ExampleBytesFlagsLineEndsRefusalsAndPendingEvents) {
    // The reference example byte for byte, each line ended by CR LF, over a longer earlier file.
    // Pending window events run first, on every call.
    TempFolder dir;
    const std::string name = dir.File("example.AZT"), flags = dir.File("flags.AZT");
    WriteBytes(name, std::string(20000, 'x'));
    int events = 0;
    SetPendingEventsHook([&] { events += fs::exists(flags) ? 1 : 100; });
    ASSERT_TRUE(SaveCalFile(*OneStarModel(), name));
    EXPECT_EQ(ReadBytes(name), JoinLines(OneStarExampleLines()));
    // A flag is "1" only when it is 1; a line end in a text would shift the later lines; names go
    // to Windows-1252 (published table: u umlaut 0xFC, euro 0x80), "?" without a form.
    auto s = OneStarModel();
    s->CalPoints[1].Name = "\u03B1 Z\u00FCrich \u20AC1";
    s->TermEnable[1] = 2, s->TermEnable[2] = -1, s->TermEnable[16] = 1;
    s->CalPoints[1].Used = s->EnableRefraction = false;
    s->CalPoints[1].TimeStr = "21:14\r\n05";
    ASSERT_TRUE(SaveCalFile(*s, flags));
    // clang-format off
    EXPECT_EQ(ReadBytes(flags), JoinLines(Edited(OneStarExampleLines(), {
        {"Terms Enabled:", 0, 1, "0"}, {"Terms Enabled:", 0, 2, "0"}, {"Terms Enabled:", 1, 1, "1"},
        {"Cal Points Used:", 0, 1, "0"}, {"Enable Refraction:", 0, 1, "0"},
        {"21:14:05", 0, 0, "21:14  05"}, {"Cal Star 1:", 0, 1, "? Z\xFCrich \x80" "1"}})));
    // clang-format on
    // Refused without points (the old file keeps its content), name, folder, or for a folder.
    EXPECT_FALSE(SaveCalFile(*FreshModel(), name) || SaveCalFile(*s, "") ||
                 SaveCalFile(*s, dir.File("none/a.AZT")) || SaveCalFile(*s, dir.path));
    SetPendingEventsHook(nullptr);
    EXPECT_EQ(events, 204) << "before the file is written, on every call";
    EXPECT_EQ(ReadBytes(name), JoinLines(OneStarExampleLines()));
}

// The example with values unlike the defaults, loaded over three old points and marks (flags 7,
// scale factor 5, MaxSensitivity 999): result, points, latitude, flags, scale factor, refraction,
// MaxSensitivity, hook calls.
std::string Loaded(const std::vector<LineEdit>& edits, const std::string& end = "\r\n") {
    // clang-format off
    Lines lines = Edited(OneStarExampleLines(), {{"Cal Star 1:", 0, 1, "V\xE9ga"},
        {" 33.5 ", 0, 0, " 47.25 "}, {"Terms Enabled:", 0, 1, "0"}, {"Cal Points Used:", 0, 1, "0"},
        {" 1 ", 1, 0, " 1.002 "}, {"Terms Enabled:", 1, 2, "1"}, {"Enable Refraction:", 0, 1, "0"},
        {" 300 ", 0, 0, " 150 "}});
    // clang-format on
    auto s = FreshModel();
    for (int i = 1; i <= 3; ++i) s->CalPoints[i].Name = "old", s->CalPoints[i].RA = 0.5 * i;
    for (int k = 1; k <= 22; ++k) s->TermEnable[k] = 7;
    s->NumCalPoints = 3, s->ThetaSF = 5, s->MaxSensitivity = 999;
    int hook = 0;
    SetEnableToChkHook([&] { ++hook; });
    TempFolder dir;
    WriteBytes(dir.File("a.AZT"), JoinLines(Edited(lines, edits), end));
    std::string d = LoadCalFile(*s, dir.File("a.AZT")) ? "ok" : "failed";
    SetEnableToChkHook(nullptr);
    const CalPoint& p = s->CalPoints[1];
    if (s->NumCalPoints) d += " " + p.Name + " " + NumberText(p.RA) + (p.Used ? "+" : "-");
    d += " n" + std::to_string(s->NumCalPoints) + " " + NumberText(s->Latitude) + " |";
    for (int k = 1; k <= 22; ++k) d += std::to_string(s->TermEnable[k]) + (k == 15 ? " " : "");
    return d + " " + NumberText(s->ThetaSF) + (s->EnableRefraction ? " on " : " off ") +
           NumberText(s->MaxSensitivity) + " " + std::to_string(hook);
}

TEST(CalFileReading, WholeShortBadAndOlderFiles) {
    // What was read before a failure stays; a count that is no 16-bit number changes nothing, a
    // negative one empties the table. Labels of the obligatory half are not read. The optional
    // sections go by exact label; the first missing one leaves it and all after at their defaults.
    // Flags are on unless exactly "0", used and refraction only for exactly "1"; the hook runs
    // after each full set of flags.
    const std::string marks = " 33.5 |777777777777777 7777777 5 on 999 0";
    // clang-format off
    const std::pair<std::vector<LineEdit>, std::string> cases[] = {
        {{{"Clock Rate Error:", 0, 1, "12.5"}},
         "ok V\u00E9ga 1.5- n1 47.25 |011111111111111 0100000 1.002 off 150 2"},
        {{{"Terms Enabled:", 0, 0, "Terms Enabled: "}},
         "ok V\u00E9ga 1.5+ n1 47.25 |111111111111111 0000000 1 on 999 0"},
        {{{" 1 ", 0, 0, "two"}}, "failed old 0.5- n3" + marks},
        {{{" 1 ", 0, 0, "-2 "}}, "failed n0" + marks},
        {{{"V\xE9ga", 0, 0, nullptr}}, "failed V\u00E9ga 0.5- n1" + marks},
        {{{"RA, Dec:", 0, 0, "x"}, {" 1.5 ", 0, 0, "  4.5 rad"}, {" 47.25 ", 0, 0, "47,75"},
          {"CW Azimuth, MaxAzCounts:", 0, 1, "tRUE"}, {"IsAltAz, IsGEM:", 0, 1, "-1"},
          {"Cal Points Used:", 0, 0, "Cal points used:"}},
         "ok V\u00E9ga 4.5+ n1 47 |011111111111111 0000000 1 on 999 1"},
        {{{"Terms Enabled:", 0, 1, " 0"}, {"Terms Enabled:", 1, 1, "0 "},
          {"Terms Enabled:", 1, 2, ""}, {"Cal Points Used:", 0, 1, " 1"},
          {"Enable Refraction:", 0, 1, " 1"}},
         "ok V\u00E9ga 1.5- n1 47.25 |111111111111111 1100000 1.002 off 150 2"}};
    // clang-format on
    for (const auto& [edits, want] : cases) EXPECT_EQ(Loaded(edits), want);
    // Files edited on Linux (LF alone); a missing file or a folder fails.
    EXPECT_EQ(Loaded({}, "\n"), Loaded({}));
    auto s = FreshModel();
    EXPECT_FALSE(LoadCalFile(*s, "/nonexistent/a.AZT") || LoadCalFile(*s, "/"));
}

TEST(CalFileReading, CountsRoundToEvenAndAbove500FailAtStar501WithFiveHundredLoaded) {
    // `count` stars in the layout of the example, the first `written` of them there, star i with RA
    // i, then the site at latitude 47.25 and no optional section, without the last line end.
    auto stars = [](double count, int written) {
        const Lines one = OneStarExampleLines();
        Lines lines = {one[0], NumToFileStr(count)};
        for (int i = 1; i <= written; ++i) {
            lines.insert(lines.end(), one.begin() + 2, one.begin() + 17);
            lines.end()[-11] = NumToFileStr(i);
        }
        lines.insert(lines.end(), one.begin() + 17, one.begin() + 39);
        lines.end()[-20] = " 47.25 ";
        TempFolder dir;
        const std::string bytes = JoinLines(lines);
        WriteBytes(dir.File("a.AZT"), bytes.substr(0, bytes.size() - 2));
        auto s = FreshModel();
        const bool ok = LoadCalFile(*s, dir.File("a.AZT"));
        return std::to_string(ok) + " " + std::to_string(s->NumCalPoints) + " " +
               NumberText(s->CalPoints[2].RA) + " " + NumberText(s->CalPoints[500].RA) + " " +
               NumberText(s->Latitude);
    };
    EXPECT_EQ(stars(2.5, 2), "1 2 2 0 47.25");
    EXPECT_EQ(stars(501, 501), "0 500 2 500 33.5");
    EXPECT_EQ(stars(900, 2), "0 500 2 0 33.5");
}

TEST(FileText, NumbersInAnyLocaleLenientlyReadAndNamesInWindows1252) {
    // Written in the default text of a double with a blank in front of a number that is not
    // negative and one behind, negative zero as " 0 ".
    EXPECT_EQ(NumToFileStr(1.5) + NumToFileStr(-0.25) + NumToFileStr(-0.0) + NumToFileStr(2e-9),
              " 1.5 -0.25  0  2e-09 ");
    char buf[64];
    // Read by the leading number: an exponent needs a digit; no number is 0; out of range an
    // infinity or 0 with its sign, 1e308 and the largest digits still in range.
    const double inf = std::numeric_limits<double>::infinity();
    // clang-format off
    for (const auto& [text, want] : {std::pair{"\t -0.25 ", -0.25}, {"12abc", 12.0}, {".5", 0.5},
             {"-2E+20", -2e20}, {"2e-x", 2.0}, {"3e2x", 300.0}, {"", 0.0}, {"- 3", 0.0},
             {"e5", 0.0}, {"-.e1", 0.0}, {"-1e999", -inf}, {"0.0001e313", inf}, {"1000e-1000", 0.0},
             {"-1e-999", -0.0}, {"0.001e311", 1e308}}) {
        // clang-format on
        const double got = NumericPrefixValue(text);
        EXPECT_TRUE(got == want && std::signbit(got) == std::signbit(want)) << text << ": " << got;
    }
    // Names: pairs from the published Windows-1252 table; every byte comes back; no form or
    // malformed UTF-8 (cut, overlong, surrogate, lead byte alone) is "?" per character or byte.
    EXPECT_EQ(Cp1252ToUtf8("\x80\x8A\x9F\xE9"), "\u20AC\u0160\u0178\u00E9");
    EXPECT_EQ(Utf8ToCp1252("\u20AC\u0160\u0178\u00E9"), "\x80\x8A\x9F\xE9");
    std::string all;
    for (int b = 1; b < 256; ++b) all += char(b);
    EXPECT_EQ(Utf8ToCp1252(Cp1252ToUtf8(all)), all);
    EXPECT_EQ(Utf8ToCp1252("\u03B1\u5317\U0001F52D!a\xFF\xC0\xAF\xED\xA0\x80\xC3"
                           "A\xE2\x82"),
              "???"
              "!a???????A??");
    // Under a decimal comma the whole file is that of the "C" locale and reads back.
    skytest::CommaLocale comma;
    if (!comma.active) GTEST_SKIP() << "no locale with a decimal comma is installed";
    std::snprintf(buf, sizeof buf, "%g", 1.5);
    ASSERT_STREQ(buf, "1,5") << "the locale is in force";
    TempFolder dir;
    ASSERT_TRUE(SaveCalFile(*OneStarModel(), dir.File("comma.AZT")));
    EXPECT_EQ(ReadBytes(dir.File("comma.AZT")), JoinLines(OneStarExampleLines()));
    auto back = FreshModel();
    ASSERT_TRUE(LoadCalFile(*back, dir.File("comma.AZT")));
    EXPECT_TRUE(back->CalPoints[1].Dec == -0.25 && back->CalPoints[1].PhiEnc == 2.125);
}

TEST(TraceLog, InTheDocumentsFolderOnlyWhileTheMarkerExistsOneDatedLinePerCall) {
    TempFolder home;
    const std::string savedHome = std::getenv("HOME") ? std::getenv("HOME") : "";
    WriteBytes(home.File("user-dirs.dirs"), "# x\nXDG_DOCUMENTS_DIR=\"$HOME/Docs\"\r\n");
    setenv("HOME", home.path.c_str(), 1);
    unsetenv("XDG_DOCUMENTS_DIR");
    EXPECT_EQ(DocumentsFolder(), home.path + "/Documents") << "without user-dirs.dirs";
    setenv("XDG_CONFIG_HOME", home.path.c_str(), 1);
    EXPECT_EQ(DocumentsFolder(), home.path + "/Docs") << "from user-dirs.dirs";
    // One file named by the local date, each line that date and time, ": ", the text and CR LF.
    const std::string folder = home.path + "/Docs/Brightfold Optics/";
    fs::create_directories(folder);
    ResetTraceLogForTests();
    LogLine("no marker");
    WriteBytes(folder + "AztrueLog-Enabled.txt", "any content");
    LogLine("Let Latitude = 47.25");
    ResetTraceLogForTests();
    const std::time_t now = std::time(nullptr);
    char date[16];
    std::strftime(date, sizeof date, "%Y-%m-%d", std::localtime(&now));
    const std::string text = ReadBytes(folder + "AztrueLog-" + date + ".txt");
    EXPECT_EQ(text.substr(0, 11) + text.substr(19),
              date + std::string(" : Let Latitude = 47.25\r\n"));
    unsetenv("XDG_CONFIG_HOME");
    setenv("HOME", savedHome.c_str(), 1);
}

}  // namespace
