// The draws of the scale factor search and the order of their use.
#include <gtest/gtest.h>

#include "model/ScaleErrorMount.h"
#include "model/ScaleSearch.h"

namespace {

// The C++ standard ([rand.predef]) fixes the 10000th word of a
// default-constructed std::mt19937 (seed 5489) at 4123659995; the
// generator gives it over 2^32, exactly, as no distribution stands between.
// A step takes PhiSF from the first of its two draws: from that word U,
// PhiSF goes from 1 to 1 + (2U - 1) / 20000 = 1.0000460114410845 (worked
// out by hand; the tolerance is the last bits of the double), kept as the
// Phi encoder reads long; ThetaSF moves by its own draw, at most 1/20000.
TEST(ScaleSearch, DrawsTheStandardWordsPhiSFFirst) {
    SearchRandom random, copy;
    for (int i = 1; i < 10000; ++i) {
        random.Next();
        copy.Next();
    }
    EXPECT_EQ(copy.Next() * 4294967296.0, 4123659995.0);
    auto s = ScaleErrorModel();
    ScaleSearchRun run = StartScaleSearch(*s);
    ASSERT_TRUE(ScaleSearchStep(*s, run, random));
    EXPECT_NEAR(s->PhiSF, 1.0000460114410845, 1e-15);
    EXPECT_NE(s->ThetaSF, 1.0);
    EXPECT_NEAR(s->ThetaSF, 1.0, 1.0 / 20000);
}

}  // namespace
