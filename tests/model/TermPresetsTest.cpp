// The four ready-made sets of term flags.
#include <gtest/gtest.h>

#include <memory>
#include <set>

#include "model/Constants.h"
#include "model/ModelState.h"
#include "model/Terms.h"

namespace {

// A model with flags set to `start` for 1..22 and markers outside the flag
// range and in the fit tables, which the presets must not touch.
std::unique_ptr<ModelState> ModelWithFlags(int16_t start) {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    for (int k = 1; k <= kNumTermEnable; ++k) s->TermEnable[k] = start;
    s->TermEnable[0] = 5;
    s->TermEnable[23] = 5;
    s->TermActive[9] = true;
    s->TermCoef[9] = 0.25;
    return s;
}

void ExpectFlags(const ModelState& s, const std::set<int>& on, const char* preset) {
    for (int k = 1; k <= kNumTermEnable; ++k)
        EXPECT_EQ(s.TermEnable[k], on.count(k) ? 1 : 0) << preset << " flag " << k;
    EXPECT_EQ(s.TermEnable[0], 5) << preset << " flag 0";
    EXPECT_EQ(s.TermEnable[23], 5) << preset << " flag 23";
    EXPECT_TRUE(s.TermActive[9]) << preset << " touched TermActive";
    EXPECT_EQ(s.TermCoef[9], 0.25) << preset << " touched TermCoef";
}

std::set<int> Range(int from, int to) {
    std::set<int> r;
    for (int k = from; k <= to; ++k) r.insert(k);
    return r;
}

TEST(TermFlagPresets, EnableAllTurnsOnEveryFlag) {
    for (int16_t start : {0, 1}) {
        auto s = ModelWithFlags(start);
        EnableAll(*s);
        ExpectFlags(*s, Range(1, 22), "EnableAll");
    }
}

TEST(TermFlagPresets, DisableAllKeepsConeAndHub) {
    auto s = ModelWithFlags(1);
    DisableAll(*s);
    ExpectFlags(*s, {1, 2}, "DisableAll from all on");

    s = ModelWithFlags(0);
    s->TermEnable[2] = 1;  // hub on, cone off: both kept as they were
    DisableAll(*s);
    ExpectFlags(*s, {2}, "DisableAll from hub only");
}

TEST(TermFlagPresets, AltAzSet) {
    for (int16_t start : {0, 1}) {
        auto s = ModelWithFlags(start);
        EnableAltAz(*s);
        ExpectFlags(*s, {1, 2, 3, 4, 5, 10, 11, 14, 15}, "EnableAltAz");
    }
}

TEST(TermFlagPresets, EquatorialSet) {
    for (int16_t start : {0, 1}) {
        auto s = ModelWithFlags(start);
        EnableGEM(*s);
        ExpectFlags(*s, Range(1, 14), "EnableGEM");
    }
}

}  // namespace
