// The fit command: options, error exits, and the report of the shipped sample.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "app/FitCommand.h"

namespace {

struct FitRun {
    int code = -1;
    std::string out, err;
};

FitRun Fit(const std::vector<std::string>& args) {
    std::ostringstream out, err;
    const int code = RunFitCommand(args, out, err);
    return {code, out.str(), err.str()};
}

const std::string kSample = std::string(AZTRUE_SOURCE_DIR) + "/data/sample.AZT";

std::string Bytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

TEST(FitCommandUsage, HelpAndUsageErrors) {
    const FitRun help = Fit({"--help"});
    EXPECT_EQ(help.code, kFitOk);
    EXPECT_NE(help.out.find("--terms"), std::string::npos);
    EXPECT_NE(help.out.find("--json"), std::string::npos);
    // Unknown option, no file, a file that cannot be read, an unknown or
    // missing term set: exit 2 with a message on stderr, no report.
    const struct {
        std::vector<std::string> args;
        const char* message;
    } cases[] = {{{"--frobnicate", "x.AZT"}, "unknown option \"--frobnicate\""},
                 {{}, "no calibration file"},
                 {{"/nonexistent/folder/cal.AZT"}, "cannot read"},
                 {{"--terms", "most", "x.AZT"}, "unknown term set"},
                 {{"x.AZT", "--terms"}, ""}};
    for (const auto& c : cases) {
        const FitRun r = Fit(c.args);
        EXPECT_EQ(r.code, kFitUsageError) << c.message;
        EXPECT_NE(r.err.find(c.message), std::string::npos) << r.err;
        EXPECT_TRUE(r.out.empty()) << c.message;
    }
}

// Reads the number that follows `label` in the report, up to the unit.
double After(const std::string& report, const std::string& label) {
    const size_t at = report.find(label);
    return at == std::string::npos ? 1e300 : std::stod(report.substr(at + label.size()));
}

// The sample was made from a mount whose errors data/README.md states; the
// fit must find them to within a few times the 3" noise of the points.
TEST(FitCommandOnSample, RecoversTheStatedErrorsAlsoInJson) {
    const FitRun r = Fit({kSample});
    ASSERT_EQ(r.code, kFitOk) << r.err;
    EXPECT_NEAR(After(r.out, "Axis misalignment   "), 240, 5) << r.out;
    EXPECT_NE(r.out.find("to North"), std::string::npos);
    EXPECT_NEAR(After(r.out, "\" to North, "), 150, 5);
    EXPECT_NE(r.out.find("to East"), std::string::npos);
    EXPECT_NEAR(After(r.out, "Cone"), 180, 5);
    EXPECT_NEAR(After(r.out, "Cos(N*Phi)"), 40, 5);  // term 10, the first such row
    EXPECT_EQ(After(r.out, "Points used         "), 40);
    EXPECT_NEAR(After(r.out, "RMS error           all "), 4.0, 1.0);
    EXPECT_NEAR(After(r.out.substr(r.out.find("Theta offset")), "counts ("), 720, 5);
    EXPECT_NEAR(After(r.out.substr(r.out.find("Phi offset")), "counts ("), -1500, 5);
    const FitRun json = Fit({"--json", kSample});
    ASSERT_EQ(json.code, kFitOk) << json.err;
    EXPECT_EQ(json.out.front(), '{');
    EXPECT_NE(json.out.find("\"pointsUsed\": 40"), std::string::npos);
    EXPECT_NEAR(After(json.out, "\"northArcsec\": "), 240, 5);
    EXPECT_NEAR(After(json.out, "\"westArcsec\": "), -150, 5);
    EXPECT_NE(json.out.find("\"name\": \"Sirius\""), std::string::npos);
}

TEST(FitCommandOnSample, TermPresetChangesTheActiveTermsAndTheInputStays) {
    const std::string before = Bytes(kSample);
    const FitRun plain = Fit({kSample});
    const FitRun none = Fit({"--terms", "none", kSample});
    const FitRun all = Fit({"--terms=all", kSample});
    ASSERT_TRUE(none.code == kFitOk && all.code == kFitOk);
    EXPECT_NE(plain.out.find("[ 5]"), std::string::npos);
    EXPECT_EQ(none.out.find("[ 5]"), std::string::npos) << "no optional term with --terms none";
    // All flags on: more terms than the file's three flags let in (the
    // ladder still drops those the 40 points cannot determine).
    auto rows = [](const std::string& text) {
        size_t n = 0;
        for (size_t at = text.find("\n  ["); at != std::string::npos;
             at = text.find("\n  [", at + 1))
            ++n;
        return n;
    };
    EXPECT_GT(rows(all.out), rows(plain.out));
    EXPECT_EQ(Bytes(kSample), before) << "nothing is written to the input file";
}

TEST(FitCommandOnSample, AFileThatIsNotACalibrationIsRejected) {
    const std::string path = ::testing::TempDir() + "not-a-calibration.AZT";
    std::ofstream(path) << "Number of Cal Stars:\r\nmany\r\n";
    const FitRun r = Fit({path});
    EXPECT_EQ(r.code, kFitInvalidFile);
    EXPECT_EQ(r.err, "The file you are trying to open is not a valid calibration file.\n");
    EXPECT_TRUE(r.out.empty());
}

}  // namespace
