// The fit command: options, error exits, and the report of the shipped sample.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "app/FitCommand.h"

namespace {

struct Run {
    int code = -1;
    std::string out;
    std::string err;
};

Run Fit(const std::vector<std::string>& args) {
    std::ostringstream out, err;
    Run r;
    r.code = RunFitCommand(args, out, err);
    r.out = out.str();
    r.err = err.str();
    return r;
}

TEST(FitCommandUsage, HelpPrintsTheOptions) {
    const Run r = Fit({"--help"});
    EXPECT_EQ(r.code, kFitOk);
    EXPECT_NE(r.out.find("--terms"), std::string::npos);
    EXPECT_NE(r.out.find("--json"), std::string::npos);
}

TEST(FitCommandUsage, UnknownOptionIsAUsageError) {
    const Run r = Fit({"--frobnicate", "x.AZT"});
    EXPECT_EQ(r.code, kFitUsageError);
    EXPECT_NE(r.err.find("unknown option \"--frobnicate\""), std::string::npos) << r.err;
}

TEST(FitCommandUsage, MissingFileArgumentIsAUsageError) {
    const Run r = Fit({});
    EXPECT_EQ(r.code, kFitUsageError);
    EXPECT_NE(r.err.find("no calibration file"), std::string::npos) << r.err;
}

TEST(FitCommandUsage, NonexistentFileIsAUsageError) {
    const Run r = Fit({"/nonexistent/folder/cal.AZT"});
    EXPECT_EQ(r.code, kFitUsageError);
    EXPECT_NE(r.err.find("cannot read"), std::string::npos) << r.err;
    EXPECT_TRUE(r.out.empty());
}

TEST(FitCommandUsage, UnknownTermSetIsAUsageError) {
    const Run r = Fit({"--terms", "most", "x.AZT"});
    EXPECT_EQ(r.code, kFitUsageError);
    EXPECT_NE(r.err.find("unknown term set"), std::string::npos) << r.err;
    EXPECT_EQ(Fit({"x.AZT", "--terms"}).code, kFitUsageError);
}

}  // namespace
