// A number beyond the range of a double fails the load where a failure of
// the file counts; the fit command refuses a fit that is not finite.
#include <gtest/gtest.h>

#include <sstream>

#include "app/FitCommand.h"
#include "files/FileTestSupport.h"

namespace {

TEST(NonFiniteNumbers, FailTheLoadAndTheFitCommand) {
    // clang-format off
    // The example file with its last line setting a largest sensitivity of
    // 150; the model's default is 300.
    const char* invalid = "not a valid calibration file";
    const struct { filetest::LineEdit edit; bool loads; double sens; int exit; const char* text; }
    cases[] = {
        {{"RA, Dec:", 0, 1, " 1e99999 "}, false, 300, kFitInvalidFile, invalid},
        {{"Temperature, Pressure:", 0, 2, "-1e400 "}, false, 300, kFitInvalidFile, invalid},
        // In an optional section it ends the reading as a truncated section
        // does: the load stands and the value is not taken.
        {{"Max Sensitivity:", 0, 1, " 1e99999 "}, true, 300, kFitOk, nullptr},
        // Finite numbers whose fit is not finite: no counts per turn.
        {{"CW Azimuth, MaxAzCounts:", 0, 2, " 0 "}, true, 150, kFitInvalidFile, "no finite"}};
    // clang-format on
    filetest::TempFolder dir;
    const std::string file = dir.File("run.AZT");
    const auto example =
        filetest::Edited(filetest::OneStarExampleLines(), {{"Max Sensitivity:", 0, 1, " 150 "}});
    for (const auto& c : cases) {
        const auto lines = filetest::Edited(example, {c.edit});
        filetest::WriteBytes(file, filetest::JoinLines(lines));
        auto s = filetest::FreshModel();
        EXPECT_EQ(LoadCalFile(*s, file), c.loads) << c.edit.text;
        EXPECT_EQ(s->MaxSensitivity, c.sens) << c.edit.text;
        std::ostringstream out, err;
        EXPECT_EQ(RunFitCommand({file}, out, err), c.exit) << c.edit.text << ": " << err.str();
        EXPECT_TRUE(c.text ? err.str().find(c.text) != std::string::npos : err.str().empty())
            << err.str();
    }
}

}  // namespace
