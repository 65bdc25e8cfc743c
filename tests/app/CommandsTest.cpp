// The commands run in the test process: exit codes and messages for bad
// options and files, and their reports against reference values.
#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <sstream>

#include "app/AlignPointsCommand.h"
#include "app/FitCommand.h"
#include "files/CalFile.h"
#include "files/FileTestSupport.h"
#include "model/ScaleErrorMount.h"
#include "model/SyntheticCalibration.h"

namespace {

const std::string kData = AZTRUE_SOURCE_DIR "/data", kSample = kData + "/sample.AZT";

struct CommandRun { int code; std::string out, err; };
CommandRun Command(const std::vector<std::string>& args, bool align = false,
               const std::string& folder = kData) {
    std::ostringstream out, err;
    const int code = align ? RunAlignPointsCommand(args, folder, out, err)
                           : RunFitCommand(args, out, err);
    return {code, out.str(), err.str()};
}

// The number that follows `label` in a report; 1e300 when the label is missing.
double After(const std::string& report, const std::string& label) {
    const size_t at = report.find(label);
    return at == std::string::npos ? 1e300 : std::stod(report.substr(at + label.size()));
}

TEST(CommandUsage, ExitCodesAndMessages) {
    const std::string notCal = ::testing::TempDir() + "not-a-calibration.AZT";
    std::ofstream(notCal) << "Number of Cal Stars:\r\nmany\r\n";
    const std::string nowhere = ::testing::TempDir() + "no/such.AZT";
    const struct {
        bool align;
        std::vector<std::string> args;
        int code;
        std::string message, folder = kData;
    } cases[] = {
        {false, {"--help"}, kFitOk, "--json"},
        {false, {"--frobnicate", "x.AZT"}, kFitUsageError, "unknown option \"--frobnicate\""},
        {false, {}, kFitUsageError, "no calibration file"},
        {false, {"/nonexistent/folder/cal.AZT"}, kFitUsageError, "cannot read"},
        {false, {"--terms", "most", "x.AZT"}, kFitUsageError, "unknown term set"},
        {false, {"x.AZT", "--terms"}, kFitUsageError, "--terms needs a value"},
        {false, {"--seed", "5", kSample}, kFitUsageError, "go with --scale-search"},
        {false, {"--scale-search", "--seed=-1", kSample}, kFitUsageError, "--seed needs a whole"},
        {false, {"--scale-search", "--save", nowhere, kSample}, kFitSaveError, "unable to save"},
        {false, {notCal}, kFitInvalidFile,
         "The file you are trying to open is not a valid calibration file.\n"},
        {true, {"--frobnicate"}, 2, "unknown option \"--frobnicate\""},
        {true, {"--latitude", "52", "--horizon"}, 2, "--horizon needs a value"},
        {true, {"--mount", "dobson"}, 2, "bad value \"dobson\" for --mount"},
        {true, {"--count", "0"}, 2, "bad value \"0\" for --count"},
        {true, {"--latitude", "90.5"}, 2, "bad value \"90.5\" for --latitude"},
        {true, {"--horizon", "/nonexistent/site.hrz"}, 2, "cannot read the horizon file"},
        {true, {"--latitude", "52"}, 2, "cannot read the candidate directions", "/nonexistent"},
        {true, {"--count", "3"}, kAlignPointsOk, "no --latitude given"}};  // only a warning
    for (const auto& c : cases) {
        const CommandRun r = Command(c.args, c.align, c.folder);
        EXPECT_EQ(r.code, c.code) << c.message;
        const std::string& text = c.args.size() == 1 && c.args[0] == "--help" ? r.out : r.err;
        EXPECT_NE(text.find(c.message), std::string::npos) << "wanted " << c.message << ", got "
                                                           << text;
        EXPECT_TRUE(c.code == 0 || r.out.empty()) << c.message << ": a report after an error";
    }
}

// data/README.md states the errors of the mount behind the sample; the fit
// finds them to within a few times the 3" noise of the points, in the
// report and in its JSON form.
TEST(FitReport, SampleGivesTheStatedErrors) {
    const CommandRun r = Command({kSample}), json = Command({"--json", kSample});
    ASSERT_TRUE(r.code == kFitOk && json.code == kFitOk) << r.err << json.err;
    const struct { const std::string* text; const char* label; double wanted, tol; } rows[] = {
        {&r.out, "Axis misalignment   ", 240, 5}, {&r.out, "\" to North, ", 150, 5},
        {&r.out, "Cone", 180, 5}, {&r.out, "Cos(N*Phi)", 40, 5},  // term 10, the first such row
        {&r.out, "Points used         ", 40, 0}, {&r.out, "RMS error           all ", 4, 1},
        {&r.out, "counts (", 720, 5}, {&json.out, "\"pointsUsed\": ", 40, 0},  // Theta first
        {&json.out, "\"northArcsec\": ", 240, 5}, {&json.out, "\"westArcsec\": ", -150, 5}};
    for (const auto& row : rows)
        EXPECT_NEAR(After(*row.text, row.label), row.wanted, row.tol) << row.label;
    EXPECT_NEAR(After(r.out.substr(r.out.find("Phi offset")), "counts ("), -1500, 5);
    EXPECT_NE(r.out.find("\" to East"), std::string::npos) << r.out;
    EXPECT_NE(json.out.find("\"name\": \"Sirius\""), std::string::npos) << json.out;
}

// "none" drops the optional terms, "all" lets in more than the file's three
// flags (the ladder still drops those 40 points cannot determine); nothing
// is written to the input file.
TEST(FitReport, TermSetsChangeTheRowsAndTheInputStays) {
    const std::string before = filetest::ReadBytes(kSample);
    size_t rows[3] = {};
    const std::vector<std::string> runs[3] = {{"--terms", "none", kSample}, {kSample},
                                              {"--terms=all", kSample}};
    for (int i = 0; i < 3; ++i) {
        const std::string text = Command(runs[i]).out;
        for (size_t at = text.find("\n  ["); at != text.npos; at = text.find("\n  [", at + 1))
            ++rows[i];
    }
    EXPECT_TRUE(rows[0] == 0 && rows[1] > 0 && rows[2] > rows[1])
        << "term rows: none " << rows[0] << ", the file's " << rows[1] << ", all " << rows[2];
    EXPECT_EQ(filetest::ReadBytes(kSample), before);
}

// Imaginary mounts with known offsets in counts, saved and fitted: an
// arcsecond is 1,296,000 / (counts per turn x scale factor) counts. With 1"
// of noise on 40 points the offsets of a fit of terms 1 to 4 scatter well
// under 1", so 2" is safe; the fault this guards against was off by a few
// hundredths of the offset.
TEST(FitReport, OffsetsHoldForAnyCountsPerTurn) {
    const struct { double countsPerRev, scale; bool phiCW, thetaUp; double theta, phi; } cases[] = {
        {1296000, 1, true, true, 300, -292}, {1296000, 1.0004, false, false, -450, 610},
        {4194304, 0.9996, true, false, 1500, -2500}};
    const std::string file = ::testing::TempDir() + "offsets.AZT";
    for (const auto& c : cases) {
        auto s = filetest::FreshModel();
        s->ThetaCountsPerRev = s->PhiCountsPerRev = c.countsPerRev;
        s->ThetaSF = s->PhiSF = c.scale;
        s->PhiPosCW = c.phiCW, s->ThetaPosUp = c.thetaUp;
        SyntheticMount m;
        m.ThetaEncOffset = c.theta, m.PhiEncOffset = c.phi, m.NoiseRMS = 3.141592654 / 648000;
        AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
        ASSERT_TRUE(SaveCalFile(*s, file));
        const CommandRun r = Command({"--json", "--terms", "none", file});
        const double perCount = 1296000 / (c.countsPerRev * c.scale);  // arcseconds
        EXPECT_NEAR(After(r.out, "\"thetaCounts\": "), c.theta, 2 / perCount) << r.out << r.err;
        EXPECT_NEAR(After(r.out, "\"phiCounts\": "), c.phi, 2 / perCount);
        EXPECT_NEAR(After(r.out, "\"thetaArcsec\": "), c.theta * perCount, 2);
        EXPECT_NEAR(After(r.out, "\"phiArcsec\": "), c.phi * perCount, 2);
    }
}

// The search takes the 37" of a known Phi scale error down to the stars' 1"
// of noise, below 3"; PhiSF comes within 1e-5 of the truth (a thirtieth of
// the error; the noise leaves 1e-6). The saved file carries the reported
// factor, the input its own; the human report gives the same figures.
TEST(ScaleSearchReport, FindsThePhiScaleErrorAndSavesIt) {
    const std::string in = ::testing::TempDir() + "scale-in.AZT", out = in + ".out.AZT";
    ASSERT_TRUE(SaveCalFile(*ScaleErrorModel(), in));
    const CommandRun json = Command({"--scale-search", "--json", "--save", out, in});
    ASSERT_EQ(json.code, kFitOk) << json.err;
    const std::string search = json.out.substr(json.out.find("\"scaleSearch\""));
    const double before = After(search, "\"rmsBeforeArcsec\": ");
    const double phiSF = After(search, "\"phiSF\": ");
    EXPECT_GT(before, 30) << search;
    EXPECT_LT(After(search, "\"rmsAfterArcsec\": "), 3) << search;
    EXPECT_NEAR(phiSF, kTruePhiSF, 1e-5);
    auto saved = std::make_unique<ModelState>();
    ASSERT_TRUE(LoadCalFile(*saved, out));
    EXPECT_NEAR(saved->PhiSF, phiSF, 5e-8);
    ASSERT_TRUE(LoadCalFile(*saved, in));
    EXPECT_EQ(saved->PhiSF, 1.0);
    const CommandRun text = Command({"--scale-search", in});
    EXPECT_EQ(After(text.out, "Phi scale factor    "), phiSF) << text.out;
    EXPECT_EQ(After(text.out, "RMS error selected  "), std::round(before * 1000) / 1000);
}

// The shipped skyline at latitude 52: twenty points numbered in order, the
// north-east walk with the azimuth rising, each more than 1 degree up.
TEST(AlignPointsReport, SampleSkylineWalksFromNorthThroughEast) {
    const CommandRun r =
        Command({"--horizon", kData + "/sample.hrz", "--latitude", "52", "--count", "20"}, true);
    ASSERT_EQ(r.code, kAlignPointsOk) << r.err;
    EXPECT_EQ(r.err, "");
    std::istringstream lines(r.out.substr(r.out.find('\n') + 1));  // after the header
    int n = 0, number = 0;
    double az = 0, el = 0, lastAz = -1;
    while (lines >> number >> az >> el) {
        EXPECT_EQ(number, ++n);
        EXPECT_GT(az, lastAz) << "point " << n;
        EXPECT_GT(el, 1) << "point " << n;
        lastAz = az;
    }
    EXPECT_EQ(n, 20);
}

}  // namespace
