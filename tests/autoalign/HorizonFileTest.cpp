// The skyline of horizon files. Each elevation below is worked out by hand
// from the straight line between the two samples around it, entry 0 being
// azimuth 0, elevation 0 at both ends of the ring (0 and 360). The values
// are exact or within a few units of the last place, hence 1e-12.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "autoalign/HorizonFile.h"
#include "files/FileTestSupport.h"
#include "model/ModelState.h"

namespace {

struct Probe {
    int Az;
    double El;
};

// Reads Text as a horizon file into Hrz.
bool Read(ModelState& s, const std::string& Text, HorizonRecord& Hrz) {
    filetest::TempFolder dir;
    filetest::WriteBytes(dir.File("site.hrz"), Text);
    return ReadHorizon(s, dir.File("site.hrz"), Hrz);
}

std::string Repeated(const std::string& Line, int Times) {
    std::string text;
    for (int i = 0; i < Times; ++i) text += Line;
    return text;
}

TEST(HorizonFile, SamplesBecomeStraightLinesRoundTheRing) {
    const struct {
        const char* Name;
        std::string Text;
        std::vector<Probe> Probes;
    } cases[] = {
        // Up 30 * a / 180 to the sample, down 30 - 30 * (a - 180) / 180 to 360.
        {"one sample", "180, 30\n", {{0, 0}, {90, 15}, {180, 30}, {270, 15}, {359, 30.0 / 180}}},
        // 370 is 10: 20 * 5 / 10 = 10; behind it 20 - 20 * 175 / 350 = 10.
        {"370 wraps", "370, 20\n", {{5, 10}, {10, 20}, {185, 10}}},
        // -10 is 350: 20 * 175 / 350 = 10; behind it 20 - 20 * 5 / 10 = 10.
        {"-10 wraps", "-10, 20\r\n", {{175, 10}, {350, 20}, {355, 10}}},
        // 95 counts as 90 and -3 as 0: 90 * 45 / 90, 90 - 90 * 90 / 180.
        {"clamped", "90, 95\n270, -3\n", {{45, 45}, {90, 90}, {180, 45}, {270, 0}}},
        // A comment, a third field, and samples at 0 and 360 that entry 0
        // drops: 40 * 50 / 100 = 20 and 40 - 40 * 130 / 260 = 20.
        {"comments",
         "Trees to the south\n  100 , 40 , 7\n0, 40\n360, 40\n",
         {{0, 0}, {50, 20}, {230, 20}}},
        // Equal azimuths: the first survives (10, and 10 * 50 / 100 = 5).
        {"equal azimuths", "100, 10\n100, 50\n", {{100, 10}, {50, 5}}},
        {"no sample", "Open all round\n", {{0, 0}, {123, 0}, {359, 0}}},
        // An azimuth of 1e300 loses its whole turns at once and the read ends.
        {"huge azimuth", "1e300, 30\n", {{0, 0}}},
        // A thousand samples are allowed; all at azimuth 1, one survives.
        {"1000 samples", Repeated("1, 5\n", 1000), {{1, 5}}},
    };
    for (const auto& c : cases) {
        auto s = filetest::FreshModel();
        ASSERT_TRUE(Read(*s, c.Text, s->Horizon)) << c.Name;
        EXPECT_EQ(s->Horizon.Num, 360) << c.Name;
        EXPECT_EQ(s->Horizon.Az[123], 123) << c.Name;
        for (const Probe& p : c.Probes) {
            EXPECT_NEAR(s->Horizon.El[p.Az], p.El, 1e-12)
                << c.Name << " at azimuth " << p.Az << ": wanted " << p.El << ", got "
                << s->Horizon.El[p.Az];
        }
    }
}

TEST(HorizonFile, AFailedReadLeavesTheOldSkyline) {
    auto s = filetest::FreshModel();
    ASSERT_TRUE(Read(*s, "180, 30\n", s->Horizon));
    const struct {
        const char* Name;
        std::string Text;
    } cases[] = {
        {"1001 samples", Repeated("1, 5\n", 1001)},
        {"elevation beyond a double", "10, 1e99999\n"},
        {"azimuth beyond a double", "-1e400, 3\n"},
    };
    for (const auto& c : cases) {
        EXPECT_FALSE(Read(*s, c.Text, s->Horizon)) << c.Name;
        EXPECT_EQ(s->Horizon.El[90], 15) << c.Name;
    }
    EXPECT_FALSE(ReadHorizon(*s, "", s->Horizon));
    EXPECT_EQ(s->Horizon.El[90], 15);
}

}  // namespace
