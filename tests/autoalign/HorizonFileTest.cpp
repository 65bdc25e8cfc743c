// The skyline of horizon files. Each elevation is worked by hand from the
// straight line between the samples around it, entry 0 being azimuth 0,
// elevation 0 at both ends of the ring (0 and 360): exact or within a few
// units of the last place, hence 1e-12.
#include <gtest/gtest.h>

#include "autoalign/HorizonFile.h"
#include "files/FileTestSupport.h"

namespace {

// Each file is read over the skyline of "180, 30"; one that fails leaves it.
TEST(HorizonFile, SamplesBecomeStraightLinesRoundTheRing) {
    const std::string thousand = filetest::JoinLines(std::vector<std::string>(1000, "1, 5"), "\n");
    const struct {
        const char* Name;
        std::string Text;
        bool Ok;
        std::vector<std::pair<int, double>> Probes;  // azimuth, elevation
    } cases[] = {
        // Up 30 * a / 180 to the sample, down 30 - 30 * (a - 180) / 180 to 360.
        {"one sample", "180, 30\n", true,
         {{0, 0}, {90, 15}, {180, 30}, {270, 15}, {359, 30.0 / 180}}},
        // 370 is 10: 20 * 5 / 10 = 10; behind it 20 - 20 * 175 / 350 = 10.
        {"370 wraps", "370, 20\n", true, {{5, 10}, {10, 20}, {185, 10}}},
        // -10 is 350: 20 * 175 / 350 = 10; behind it 20 - 20 * 5 / 10 = 10.
        {"-10 wraps", "-10, 20\r\n", true, {{175, 10}, {350, 20}, {355, 10}}},
        // 95 counts as 90 and -3 as 0: 90 * 45 / 90, 90 - 90 * 90 / 180.
        {"clamped", "90, 95\n270, -3\n", true, {{45, 45}, {90, 90}, {180, 45}, {270, 0}}},
        // A comment, a third field, and samples at 0 and 360 that entry 0
        // drops: 40 * 50 / 100 = 20 and 40 - 40 * 130 / 260 = 20.
        {"comments", "Trees to the south\n  100 , 40 , 7\n0, 40\n360, 40\n", true,
         {{0, 0}, {50, 20}, {230, 20}}},
        // Equal azimuths: the first survives (10, and 10 * 50 / 100 = 5).
        {"equal azimuths", "100, 10\n100, 50\n", true, {{100, 10}, {50, 5}}},
        {"no sample", "Open all round\n", true, {{0, 0}, {123, 0}, {359, 0}}},
        // An azimuth of 1e300 loses its whole turns at once and the read ends.
        {"huge azimuth", "1e300, 30\n", true, {{0, 0}, {90, 0}}},
        // A thousand samples are allowed; all at azimuth 1, one survives.
        {"1000 samples", thousand, true, {{1, 5}, {90, 5 - 5 * 89 / 359.0}}},
        {"1001 samples", thousand + "1, 5\n", false, {{90, 15}}},
        {"elevation beyond a double", "10, 1e99999\n", false, {{90, 15}}},
        {"azimuth beyond a double", "-1e400, 3\n", false, {{90, 15}}},
        {"no file name", "", false, {{90, 15}}},
    };
    for (const auto& c : cases) {
        auto s = filetest::FreshModel();
        filetest::TempFolder dir;
        filetest::WriteBytes(dir.File("old.hrz"), "180, 30\n");
        filetest::WriteBytes(dir.File("site.hrz"), c.Text);
        ASSERT_TRUE(ReadHorizon(*s, dir.File("old.hrz"), s->Horizon));
        EXPECT_EQ(ReadHorizon(*s, c.Text.empty() ? "" : dir.File("site.hrz"), s->Horizon), c.Ok)
            << c.Name;
        EXPECT_TRUE(s->Horizon.Num == 360 && s->Horizon.Az[123] == 123) << c.Name;
        for (const auto& [az, el] : c.Probes)
            EXPECT_NEAR(s->Horizon.El[az], el, 1e-12) << c.Name << " at azimuth " << az;
    }
}

}  // namespace
