// The align-points command: bad options and files, and the walk it prints
// for the shipped sample skyline.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "app/AlignPointsCommand.h"

namespace {

struct PlanRun {
    int code = -1;
    std::string out, err;
};

PlanRun Plan(const std::vector<std::string>& args,
             const std::string& Folder = std::string(AZTRUE_SOURCE_DIR) + "/data") {
    std::ostringstream out, err;
    const int code = RunAlignPointsCommand(args, Folder, out, err);
    return {code, out.str(), err.str()};
}

TEST(AlignPointsCommand, BadOptionsAndFilesExitTwo) {
    const struct {
        std::vector<std::string> args;
        const char* message;
    } cases[] = {{{"--frobnicate"}, "unknown option \"--frobnicate\""},
                 {{"--latitude", "52", "--horizon"}, "--horizon needs a value"},
                 {{"--mount", "dobson"}, "bad value \"dobson\" for --mount"},
                 {{"--count", "0"}, "bad value \"0\" for --count"},
                 {{"--latitude", "90.5"}, "bad value \"90.5\" for --latitude"},
                 {{"--horizon", "/nonexistent/site.hrz"}, "cannot read the horizon file"}};
    for (const auto& c : cases) {
        const PlanRun r = Plan(c.args);
        EXPECT_EQ(r.code, kAlignPointsUsageError) << c.message;
        EXPECT_NE(r.err.find(c.message), std::string::npos) << r.err;
        EXPECT_TRUE(r.out.empty()) << c.message;
    }
    const PlanRun noPoints = Plan({"--latitude", "52"}, "/nonexistent");
    EXPECT_EQ(noPoints.code, kAlignPointsUsageError);
    EXPECT_NE(noPoints.err.find("cannot read the candidate directions"), std::string::npos);
}

TEST(AlignPointsCommand, SampleSkylineWalksFromNorthThroughEast) {
    const std::string hrz = std::string(AZTRUE_SOURCE_DIR) + "/data/sample.hrz";
    const PlanRun r = Plan({"--horizon", hrz, "--latitude", "52", "--count", "20"});
    ASSERT_EQ(r.code, kAlignPointsOk) << r.err;
    EXPECT_EQ(r.err, "");
    std::istringstream lines(r.out);
    std::string header;
    std::getline(lines, header);
    int n = 0, number = 0;
    double az = 0, el = 0, lastAz = -1;
    while (lines >> number >> az >> el) {
        ++n;
        EXPECT_EQ(number, n);
        EXPECT_GT(az, lastAz) << "point " << n << ": the NE walk has azimuth rising";
        EXPECT_GT(el, 1) << "point " << n << ": more than 1 degree above any skyline";
        lastAz = az;
    }
    EXPECT_EQ(n, 20);
    // Without a latitude the plan is for the equator, with a warning.
    EXPECT_NE(Plan({"--count", "3"}).err.find("no --latitude given"), std::string::npos);
}

}  // namespace
