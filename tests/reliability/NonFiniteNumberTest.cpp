// A number beyond the range of a double fails the load where a failure of
// the file counts, so the model never holds an infinity from a file; the
// fit command refuses a fit that gives no finite numbers.
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "app/FitCommand.h"
#include "files/FileTestSupport.h"

namespace {

using filetest::LineEdit;

// Whether every real number that a calibration file carries is finite.
bool FileRealsFinite(const ModelState& s) {
    bool finite = true;
    for (int i = 1; i <= s.NumCalPoints; ++i) {
        const CalPoint& p = s.CalPoints[i];
        for (const double x : {p.RA, p.Dec, p.ThetaEnc, p.PhiEnc, p.LST, p.JD})
            finite = finite && std::isfinite(x);
    }
    for (const double x : {s.Latitude, s.PhiCountsPerRev, s.ThetaCountsPerRev, s.Temperature,
                           s.Pressure, s.ThetaSF, s.PhiSF, s.MaxSensitivity})
        finite = finite && std::isfinite(x);
    return finite;
}

TEST(NonFiniteNumbers, FailTheLoadAndTheFitCommand) {
    // clang-format off
    const struct { LineEdit edit; bool loads; int exit; const char* message; } cases[] = {
        {{"RA, Dec:", 0, 1, " 1e99999 "}, false, kFitInvalidFile, "not a valid calibration file"},
        {{"Temperature, Pressure:", 0, 2, "-1e400 "}, false, kFitInvalidFile, "not a valid calibration file"},
        // In an optional section it ends the reading as a truncated section
        // does: the load stands and the value is not taken.
        {{"Max Sensitivity:", 0, 1, " 1e99999 "}, true, kFitOk, ""},
        // Finite numbers whose fit is not finite: no counts per turn.
        {{"CW Azimuth, MaxAzCounts:", 0, 2, " 0 "}, true, kFitInvalidFile, "no finite number"}};
    // clang-format on
    filetest::TempFolder dir;
    const std::string file = dir.File("run.AZT");
    for (const auto& c : cases) {
        filetest::WriteBytes(
            file, filetest::JoinLines(filetest::Edited(filetest::TwoStarLines(), {c.edit})));
        auto s = filetest::FreshModel();
        EXPECT_EQ(LoadCalFile(*s, file), c.loads) << c.edit.text;
        EXPECT_TRUE(FileRealsFinite(*s)) << c.edit.text;
        std::ostringstream out, err;
        EXPECT_EQ(RunFitCommand({file}, out, err), c.exit) << c.edit.text << ": " << err.str();
        if (c.exit == kFitOk)
            EXPECT_EQ(err.str(), "");
        else
            EXPECT_NE(err.str().find(c.message), std::string::npos) << err.str();
    }
}

}  // namespace
