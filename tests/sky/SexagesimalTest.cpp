// The split of an angle into whole part, minutes and seconds, and the carry
// of rounded seconds.
#include <gtest/gtest.h>

#include <cmath>

#include "sky/Sexagesimal.h"

namespace {

TEST(SexagesimalSplitParts, WholeMinutesSeconds) {
    // 12.5 hours is 12h 30m 0s; every step is exact in binary.
    SexagesimalParts p = SexagesimalSplit(12.5);
    EXPECT_EQ(p.Whole, 12.0);
    EXPECT_EQ(p.Minutes, 30.0);
    EXPECT_EQ(p.Seconds, 0.0);
    // 10.25 + 7.5/3600: 10, 15 minutes, 7.5 seconds up to the rounding of the
    // two products (a few ulps of 60).
    p = SexagesimalSplit(10.25 + 7.5 / 3600);
    EXPECT_EQ(p.Whole, 10.0);
    EXPECT_EQ(p.Minutes, 15.0);
    EXPECT_NEAR(p.Seconds, 7.5, 1e-9);
}

TEST(SexagesimalSplitParts, NegativeValuesUseTheFloor) {
    // Int is the floor: -0.5 splits as -1 whole and +30 minutes.
    const SexagesimalParts p = SexagesimalSplit(-0.5);
    EXPECT_EQ(p.Whole, -1.0);
    EXPECT_EQ(p.Minutes, 30.0);
    EXPECT_EQ(p.Seconds, 0.0);
}

TEST(SexagesimalCarry, RoundedSixtyCarriesThroughAllFields) {
    SexagesimalParts p{23, 59, 59.97};
    EXPECT_EQ(CarrySeconds(p, 1), "00");
    EXPECT_EQ(p.Minutes, 0.0);
    EXPECT_EQ(p.Whole, 24.0);  // the 24-hour reduction is the caller's
}

TEST(SexagesimalCarry, TestAtSixtyFollowsTheTextRounding) {
    // 59.95 is stored as 59.950000000000003; rounded to one place it is 60.
    SexagesimalParts up{1, 10, 59.95};
    EXPECT_EQ(CarrySeconds(up, 1), "00");
    EXPECT_EQ(up.Minutes, 11.0);
    // The double just below is 59.949999999999996: its exact value rounds to
    // 59.9, although x 10 in binary gives exactly 599.5, a tie that a rounding
    // of the product would send up to 600. Test and text must agree: no carry.
    const double below = std::nextafter(59.95, 0.0);
    ASSERT_EQ(below * 10, 599.5);
    SexagesimalParts down{1, 10, below};
    EXPECT_EQ(CarrySeconds(down, 1), "59.9");
    EXPECT_EQ(down.Minutes, 10.0);
    EXPECT_EQ(down.Whole, 1.0);
}

TEST(SexagesimalCarry, WholeSecondsTieGoesToEven) {
    // 30.5 seconds to whole seconds: a true tie, even 30.
    SexagesimalParts p{5, 0, 30.5};
    EXPECT_EQ(CarrySeconds(p, 0), "30");
    // 59.5 rounds to the even 60 and carries.
    SexagesimalParts q{5, 0, 59.5};
    EXPECT_EQ(CarrySeconds(q, 0), "00");
    EXPECT_EQ(q.Minutes, 1.0);
}

TEST(SexagesimalPadding, ShortTextsGetALeadingZero) {
    EXPECT_EQ(PadTwo("5"), "05");
    EXPECT_EQ(PadTwo("12"), "12");
    // A seconds text with a fraction is long enough already.
    EXPECT_EQ(PadTwo("5.3"), "5.3");
    EXPECT_EQ(WholeFieldText(7), "07");
    EXPECT_EQ(WholeFieldText(-3), "-3");
    EXPECT_EQ(WholeFieldText(123), "123");
}

}  // namespace
