// fit --scale-search on a file with a known Phi scale error, and its bad
// options.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <sstream>

#include "app/FitCommand.h"
#include "files/CalFile.h"
#include "model/ScaleErrorMount.h"

namespace {

namespace fs = std::filesystem;

int Fit(const std::vector<std::string>& args, std::string& out, std::string& err) {
    std::ostringstream o, e;
    const int code = RunFitCommand(args, o, e);
    out = o.str();
    err = e.str();
    return code;
}

// The number after label in a report.
double After(const std::string& report, const std::string& label) {
    const size_t at = report.find(label);
    return at == std::string::npos ? 1e300 : std::stod(report.substr(at + label.size()));
}

// The search takes the 37" of the scale error down to the stars' 1" of
// noise, so below 3"; PhiSF comes within 1e-5 of the truth (a thirtieth of
// the error; 1" of noise on 40 stars leaves it about 1e-6 off). The saved
// file carries the reported factor and the input is left alone; the human
// report gives the same figures. Bad options exit 2, an output that cannot
// be written 4, with a message and no report.
TEST(ScaleSearchCommand, FindsThePhiScaleErrorAndSavesIt) {
    const fs::path dir = fs::temp_directory_path() / ("aztrue-scale-" + std::to_string(getpid()));
    fs::create_directories(dir);
    const std::string in = (dir / "in.AZT").string(), out = (dir / "out.AZT").string();
    ASSERT_TRUE(SaveCalFile(*ScaleErrorModel(), in));
    std::string report, err;
    ASSERT_EQ(Fit({"--scale-search", "--json", "--save", out, in}, report, err), kFitOk) << err;
    const std::string json = report.substr(report.find("\"scaleSearch\""));
    const double before = After(json, "\"rmsBeforeArcsec\": ");
    const double phiSF = After(json, "\"phiSF\": ");
    EXPECT_GT(before, 30) << json;
    EXPECT_LT(After(json, "\"rmsAfterArcsec\": "), 3) << json;
    EXPECT_NEAR(phiSF, kTruePhiSF, 1e-5);

    auto saved = std::make_unique<ModelState>();
    ASSERT_TRUE(LoadCalFile(*saved, out));
    EXPECT_NEAR(saved->PhiSF, phiSF, 5e-8);
    ASSERT_TRUE(LoadCalFile(*saved, in));
    EXPECT_EQ(saved->PhiSF, 1.0);

    ASSERT_EQ(Fit({"--scale-search", in}, report, err), kFitOk) << err;
    EXPECT_EQ(After(report, "Phi scale factor    "), phiSF) << report;
    EXPECT_EQ(After(report, "RMS error selected  "), std::round(before * 1000) / 1000);

    EXPECT_EQ(Fit({"--seed", "5", in}, report, err), kFitUsageError);
    EXPECT_NE(err.find("go with --scale-search"), std::string::npos) << err;
    EXPECT_EQ(Fit({"--scale-search", "--seed=-1", in}, report, err), kFitUsageError);
    EXPECT_NE(err.find("--seed needs a whole number"), std::string::npos) << err;
    const std::string nowhere = (dir / "no/such.AZT").string();
    EXPECT_EQ(Fit({"--scale-search", "--save", nowhere, in}, report, err), kFitSaveError);
    EXPECT_TRUE(report.empty()) << report;
    fs::remove_all(dir);
}

}  // namespace
