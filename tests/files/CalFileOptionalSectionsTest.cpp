// The seven optional sections at the end of the calibration file: probed by
// label, in order, each missing one ending the reading with result true.

#include "FileTestSupport.h"
#include "files/WindowHooks.h"

namespace {

using filetest::Edited;
using filetest::LineEdit;

// Loads the lines into a model at its defaults whose optional values are
// set to marks that neither the file nor the reader's defaults use, and
// counts the calls of the check-box hook.
class OptionalSections : public ::testing::Test {
  protected:
    void SetUp() override {
        Reset();
        SetEnableToChkHook([this] { ++hookCalls; });
    }
    void Reset() {
        s = filetest::FreshModel();
        for (int k = 1; k <= 22; ++k) s->TermEnable[k] = 7;
        s->ThetaSF = s->PhiSF = 5;
        s->MaxSensitivity = 999;
        hookCalls = 0;
    }
    void TearDown() override { SetEnableToChkHook(nullptr); }

    // Loads and describes what the optional sections set: term flags 1-15
    // (section A) and 16-22 (E), the used flag of each point (B), the scale
    // factors (C), refraction (F), MaxSensitivity (G) and the hook calls.
    std::string Load(const std::vector<std::string>& lines, const std::string& lineEnd = "\r\n") {
        const std::string name = dir.File("sections.AZT");
        filetest::WriteBytes(name, filetest::JoinLines(lines, lineEnd));
        std::string d = LoadCalFile(*s, name) ? "A " : "failed A ";
        for (int k = 1; k <= 22; ++k)
            d += (k == 16 ? " E " : "") + std::to_string(s->TermEnable[k]);
        d += " used ";
        for (int i = 1; i <= s->NumCalPoints; ++i) d += s->CalPoints[i].Used ? "1" : "0";
        return d + " SF " + NumberText(s->ThetaSF) + " " + NumberText(s->PhiSF) + " refraction " +
               (s->EnableRefraction ? "on" : "off") + " max " + NumberText(s->MaxSensitivity) +
               " hook " + std::to_string(hookCalls);
    }

    filetest::TempFolder dir;
    std::unique_ptr<ModelState> s;
    int hookCalls = 0;
    const std::vector<std::string> full = filetest::TwoStarLines();
};

// What the complete two-star file sets, and the defaults of a missing
// section: flags A on, flags E off, points used, scale factors 1; refraction
// and MaxSensitivity have none and keep their values. The hook runs after a
// complete section A and after a complete section E.
const std::string kComplete =
    "A 010111111111110 E 1010001 used 01 SF 1.002 0.998 refraction off max 150 hook 2";
const std::string kNoneRead =
    "A 111111111111111 E 0000000 used 11 SF 1 1 refraction on max 999 hook 0";

TEST_F(OptionalSections, MissingTruncatedOrMislabelledSections) {
    // clang-format off
    const struct { std::vector<LineEdit> edits; std::string want; const char* why; } cases[] = {
        {{}, kComplete, "complete file"},
        {{{"Clock Rate Error:", 0, 1, "12.5"}}, kComplete, "the clock rate value has no effect"},
        {{{" 950 ", 0, 0, nullptr}}, kNoneRead, "file ending after Pressure"},
        {{{"Terms Enabled:", 0, 0, "Terms Enabled: "}}, kNoneRead, "trailing blank: not the label"},
        {{{" 0.998 ", 0, 0, nullptr}},
         "A 010111111111110 E 0000000 used 01 SF 1.002 0.998 refraction on max 999 hook 1",
         "file ending after section C"},
        {{{"Cal Points Used:", 0, 0, "Cal points used:"}},
         "A 010111111111110 E 0000000 used 11 SF 1 1 refraction on max 999 hook 1",
         "wrong label at B: B and all later sections take the defaults"},
        {{{"Terms Enabled:", 0, 5, nullptr}},
         "A 010111111111111 E 0000000 used 11 SF 1 1 refraction on max 999 hook 0",
         "five of fifteen flags of A: what was read stays, no hook"},
        {{{"Cal Points Used:", 0, 1, nullptr}},
         "A 010111111111110 E 0000000 used 01 SF 1 1 refraction on max 999 hook 1",
         "one of two point flags of B: the second takes the default"},
        {{{"Scale Factors, Theta, Phi:", 0, -1, nullptr}},
         "A 010111111111110 E 0000000 used 01 SF 1 1 refraction on max 999 hook 1",
         "file ending after the blank line of section B"},
        {{{"Terms Enabled:", 1, 3, nullptr}},
         "A 010111111111110 E 1010000 used 01 SF 1.002 0.998 refraction on max 999 hook 1",
         "three of seven flags of E: no hook after it"},
        // Flags of A and E are on unless exactly "0"; a point is used and
        // refraction on only for exactly "1".
        {{{"Terms Enabled:", 0, 1, " 0"}, {"Terms Enabled:", 0, 3, "00"},
          {"Terms Enabled:", 1, 2, "0 "}, {"Terms Enabled:", 1, 4, ""},
          {"Cal Points Used:", 0, 1, "True"}, {"Cal Points Used:", 0, 2, " 1"},
          {"Enable Refraction:", 0, 1, " 1"}},
         "A 111111111111110 E 1111001 used 00 SF 1.002 0.998 refraction off max 150 hook 2",
         "the \"0\" and \"1\" tests with blanks"},
    };
    // clang-format on
    for (const auto& c : cases) {
        Reset();
        EXPECT_EQ(Load(Edited(full, c.edits)), c.want) << c.why;
    }
}

TEST_F(OptionalSections, BareLineFeedsAndNoLastLineEnd) {
    // Files edited on Linux: every line ended by LF alone.
    EXPECT_EQ(Load(full, "\n"), kComplete);
    EXPECT_EQ(s->CalPoints[1].Name, "Vega");
    EXPECT_EQ(s->CalPoints[2].DateStr, "3/4/2023");
    EXPECT_EQ(s->PhiCountsPerRev, 8192);
    // A last line without its line end is read all the same.
    std::string bytes = filetest::JoinLines(full);
    bytes.resize(bytes.size() - 2);
    filetest::WriteBytes(dir.File("noend.AZT"), bytes);
    s->MaxSensitivity = 999;
    ASSERT_TRUE(LoadCalFile(*s, dir.File("noend.AZT")));
    EXPECT_EQ(s->MaxSensitivity, 150);
}

TEST_F(OptionalSections, ZeroStarsHasSectionBWithNoLines) {
    // The one-star example with its star block and its point flag removed.
    auto lines = filetest::OneStarExampleLines();
    lines[1] = " 0 ";
    lines.erase(lines.begin() + 2, lines.begin() + 17);
    lines.erase(lines.begin() + filetest::IndexOfLine(lines, "Cal Points Used:") + 1);
    lines[filetest::IndexOfLine(lines, " 300 ")] = " 250 ";
    EXPECT_EQ(Load(lines), "A 111111111111111 E 0000000 used  SF 1 1 refraction on max 250 hook 2");
    EXPECT_EQ(s->NumCalPoints, 0);
}

}  // namespace
