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
    std::string out;
    std::string err;
};

FitRun Fit(const std::vector<std::string>& args) {
    std::ostringstream out, err;
    FitRun r;
    r.code = RunFitCommand(args, out, err);
    r.out = out.str();
    r.err = err.str();
    return r;
}

TEST(FitCommandUsage, HelpPrintsTheOptions) {
    const FitRun r = Fit({"--help"});
    EXPECT_EQ(r.code, kFitOk);
    EXPECT_NE(r.out.find("--terms"), std::string::npos);
    EXPECT_NE(r.out.find("--json"), std::string::npos);
}

TEST(FitCommandUsage, UnknownOptionIsAUsageError) {
    const FitRun r = Fit({"--frobnicate", "x.AZT"});
    EXPECT_EQ(r.code, kFitUsageError);
    EXPECT_NE(r.err.find("unknown option \"--frobnicate\""), std::string::npos) << r.err;
}

TEST(FitCommandUsage, MissingFileArgumentIsAUsageError) {
    const FitRun r = Fit({});
    EXPECT_EQ(r.code, kFitUsageError);
    EXPECT_NE(r.err.find("no calibration file"), std::string::npos) << r.err;
}

TEST(FitCommandUsage, NonexistentFileIsAUsageError) {
    const FitRun r = Fit({"/nonexistent/folder/cal.AZT"});
    EXPECT_EQ(r.code, kFitUsageError);
    EXPECT_NE(r.err.find("cannot read"), std::string::npos) << r.err;
    EXPECT_TRUE(r.out.empty());
}

TEST(FitCommandUsage, UnknownTermSetIsAUsageError) {
    const FitRun r = Fit({"--terms", "most", "x.AZT"});
    EXPECT_EQ(r.code, kFitUsageError);
    EXPECT_NE(r.err.find("unknown term set"), std::string::npos) << r.err;
    EXPECT_EQ(Fit({"x.AZT", "--terms"}).code, kFitUsageError);
}

}  // namespace

namespace {

const std::string kSample = std::string(AZTRUE_SOURCE_DIR) + "/data/sample.AZT";

// Reads the number that follows `label` in the report, up to the unit.
double After(const std::string& report, const std::string& label) {
    const size_t at = report.find(label);
    if (at == std::string::npos) return 1e300;
    return std::stod(report.substr(at + label.size()));
}

// The sample was made from a mount whose errors data/README.md states; the
// fit must find them to within a few times the 3" noise of the points.
TEST(FitCommandOnSample, RecoversTheStatedErrors) {
    const FitRun r = Fit({kSample});
    ASSERT_EQ(r.code, kFitOk) << r.err;
    EXPECT_NEAR(After(r.out, "Axis misalignment   "), 240, 5) << r.out;
    EXPECT_NE(r.out.find("to North"), std::string::npos);
    EXPECT_NEAR(After(r.out, "\" to North, "), 150, 5);
    EXPECT_NE(r.out.find("to East"), std::string::npos);
    EXPECT_NEAR(After(r.out, "Cone"), 180, 5);
    EXPECT_NEAR(After(r.out, "Cos(N*Phi)"), 40, 5);   // term 10, the first such row
    EXPECT_NEAR(After(r.out, "Points used         "), 40, 0);
    EXPECT_NEAR(After(r.out, "RMS error           all "), 4.0, 1.0);
    const size_t theta = r.out.find("Theta offset");
    ASSERT_NE(theta, std::string::npos);
    EXPECT_NEAR(After(r.out.substr(theta), "counts ("), 720, 5);
    const size_t phi = r.out.find("Phi offset");
    ASSERT_NE(phi, std::string::npos);
    EXPECT_NEAR(After(r.out.substr(phi), "counts ("), -1500, 5);
}

TEST(FitCommandOnSample, TermPresetChangesTheActiveTerms) {
    const FitRun plain = Fit({kSample});
    const FitRun none = Fit({"--terms", "none", kSample});
    const FitRun all = Fit({"--terms=all", kSample});
    ASSERT_EQ(none.code, kFitOk);
    ASSERT_EQ(all.code, kFitOk);
    EXPECT_NE(plain.out.find("[ 5]"), std::string::npos);
    EXPECT_EQ(none.out.find("[ 5]"), std::string::npos) << "no optional term with --terms none";
    // All flags on: more terms than the file's three flags let in (the
    // ladder still drops those the 40 points cannot determine).
    auto rows = [](const std::string& text) {
        size_t n = 0;
        for (size_t at = text.find("\n  ["); at != std::string::npos; at = text.find("\n  [", at + 1)) ++n;
        return n;
    };
    EXPECT_GT(rows(all.out), rows(plain.out));
}

TEST(FitCommandOnSample, JsonCarriesTheSameFigures) {
    const FitRun r = Fit({"--json", kSample});
    ASSERT_EQ(r.code, kFitOk) << r.err;
    EXPECT_EQ(r.out.front(), '{');
    EXPECT_NE(r.out.find("\"pointsUsed\": 40"), std::string::npos);
    EXPECT_NEAR(After(r.out, "\"northArcsec\": "), 240, 5);
    EXPECT_NEAR(After(r.out, "\"westArcsec\": "), -150, 5);
    EXPECT_NE(r.out.find("\"name\": \"Sirius\""), std::string::npos);
}

TEST(FitCommandOnSample, AFileThatIsNotACalibrationIsRejected) {
    const std::string path = ::testing::TempDir() + "not-a-calibration.AZT";
    {
        std::ofstream bad(path);
        bad << "Number of Cal Stars:\r\nmany\r\n";
    }
    const FitRun r = Fit({path});
    EXPECT_EQ(r.code, kFitInvalidFile);
    EXPECT_EQ(r.err, "The file you are trying to open is not a valid calibration file.\n");
    EXPECT_TRUE(r.out.empty());
}

TEST(FitCommandOnSample, TheInputFileIsNotWritten) {
    std::ifstream before(kSample, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(before)), std::istreambuf_iterator<char>());
    Fit({"--terms", "all", kSample});
    std::ifstream after(kSample, std::ios::binary);
    const std::string bytesAfter((std::istreambuf_iterator<char>(after)), std::istreambuf_iterator<char>());
    EXPECT_EQ(bytes, bytesAfter);
}

}  // namespace
