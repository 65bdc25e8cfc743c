// Local civil time to universal time, with its deliberate simplifications:
// whole-hour zones rounded to even, a leap test without the century rule,
// and a negative hour that stays on the local date.
#include <gtest/gtest.h>

#include "sky/mTime.h"

namespace {

DateTimeRec Local(int y, int m, int d, int h, int mi, double s, double zone, bool dst = false) {
    DateTimeRec r;
    r.Year = static_cast<int16_t>(y);
    r.Month = static_cast<int16_t>(m);
    r.Day = static_cast<int16_t>(d);
    r.Hour = static_cast<int16_t>(h);
    r.Minute = static_cast<int16_t>(mi);
    r.Second = s;
    r.TimeZone = zone;
    r.DST = dst;
    return r;
}

void ExpectDate(const DateTimeRec& r, int y, int m, int d, int h) {
    EXPECT_EQ(r.Year, y);
    EXPECT_EQ(r.Month, m);
    EXPECT_EQ(r.Day, d);
    EXPECT_EQ(r.Hour, h);
}

TEST(DaysInMonthTable, CalendarMonthsAndOutside) {
    const int days[13] = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (int m = 1; m <= 12; ++m) EXPECT_EQ(DaysInMonth(static_cast<int16_t>(m)), days[m]) << m;
    EXPECT_EQ(DaysInMonth(0), 0);
    EXPECT_EQ(DaysInMonth(13), 0);
    EXPECT_EQ(DaysInMonth(-1), 0);
}

// Hand values: 0:30 at zone -5 is 5:30 UT; minutes, seconds and the other
// fields are copied.
TEST(LocalToUniversal, WholeZone) {
    DateTimeRec u = LTToUT(Local(2000, 1, 10, 0, 30, 12.5, -5));
    ExpectDate(u, 2000, 1, 10, 5);
    EXPECT_EQ(u.Minute, 30);
    EXPECT_EQ(u.Second, 12.5);
    EXPECT_EQ(u.TimeZone, -5.0);
    EXPECT_FALSE(u.DST);
}

// Hand values of the day, month and year roll-overs.
TEST(LocalToUniversal, DateRollsForward) {
    // 23:00 at -8 is 7:00 next day; 2000 is a leap year.
    ExpectDate(LTToUT(Local(2000, 2, 28, 23, 0, 0, -8)), 2000, 2, 29, 7);
    // 2001 is not: the day after February 28 is March 1.
    ExpectDate(LTToUT(Local(2001, 2, 28, 23, 0, 0, -8)), 2001, 3, 1, 7);
    // End of a 30-day month.
    ExpectDate(LTToUT(Local(2000, 4, 30, 20, 0, 0, -8)), 2000, 5, 1, 4);
    // 20:00 at -8 on New Year's Eve is 4:00 on January 1.
    ExpectDate(LTToUT(Local(2000, 12, 31, 20, 0, 0, -8)), 2001, 1, 1, 4);
}

// The leap test has no century rule: February 1900 gets a 29th day, which
// the Gregorian calendar does not have.
TEST(LocalToUniversal, EveryFourthYearIsLeap) {
    ExpectDate(LTToUT(Local(1900, 2, 28, 23, 0, 0, -8)), 1900, 2, 29, 7);
}

// East of Greenwich early in the day the hour goes negative and the date
// stays: 2:00 at +8 is hour -6 of 1 January 2001 (hand value).
TEST(LocalToUniversal, NegativeHourStaysOnTheDate) {
    DateTimeRec u = LTToUT(Local(2001, 1, 1, 2, 0, 0, 8));
    ExpectDate(u, 2001, 1, 1, -6);
    // The universal time in radians, summed as the server's GetUTRad does it,
    // is then -6 h = -6 x 6.283185308 / 24 = -1.570796327 rad.
    double utRad = (u.Minute / 60.0 + u.Hour + u.Second / 3600.0) * 6.283185308 / 24;
    EXPECT_NEAR(utRad, -1.570796327, 1e-15);
    EXPECT_LT(utRad, 0.0);
}

// The signed hour keeps the Julian day and the sidereal time right: hour -6
// of January 1 is 18:00 of December 31.
TEST(LocalToUniversal, NegativeHourSumsStayRight) {
    DateTimeRec u = LTToUT(Local(2001, 1, 1, 2, 0, 0, 8));
    DateTimeRec same = Local(2000, 12, 31, 18, 0, 0, 0);
    EXPECT_EQ(TimeToJD(u), TimeToJD(same));
    EXPECT_EQ(LTToJD(Local(2001, 1, 1, 2, 0, 0, 8)), 2451910.25) << "2000 December 31.75";
    // The sidereal series differ by 24 x 0.002737908 h against 2400.051262 /
    // 36525 h for the day: 3e-8 h, about 1e-4 s.
    DateTimeRec g1 = UTToGST(u);
    DateTimeRec g2 = UTToGST(same);
    double s1 = g1.Hour * 3600.0 + g1.Minute * 60.0 + g1.Second;
    double s2 = g2.Hour * 3600.0 + g2.Minute * 60.0 + g2.Second;
    EXPECT_NEAR(s1, s2, 1e-3);
}

// A zone with half an hour is not honoured: the hour goes to the even
// neighbour, the minutes stay (hand values).
TEST(LocalToUniversal, HalfHourZoneGoesToEven) {
    DateTimeRec u = LTToUT(Local(2000, 6, 1, 5, 0, 0, -5.5));
    ExpectDate(u, 2000, 6, 1, 10);  // 10.5 -> 10
    EXPECT_EQ(u.Minute, 0);
    ExpectDate(LTToUT(Local(2000, 6, 1, 6, 0, 0, -5.5)), 2000, 6, 1, 12);  // 11.5 -> 12
    ExpectDate(LTToUT(Local(2000, 6, 1, 5, 0, 0, 5.5)), 2000, 6, 1, 0);    // -0.5 -> 0
    ExpectDate(LTToUT(Local(2000, 6, 1, 5, 0, 0, 6.5)), 2000, 6, 1, -2);   // -1.5 -> -2
}

// Daylight saving takes an hour off, even at midnight: the date stays.
TEST(LocalToUniversal, DaylightSavingAtMidnight) {
    DateTimeRec u = LTToUT(Local(2000, 7, 4, 0, 0, 0, 0, true));
    ExpectDate(u, 2000, 7, 4, -1);
    EXPECT_TRUE(u.DST);
    // And it comes before the roll-over: 0:00 at -8 with DST is 7:00.
    ExpectDate(LTToUT(Local(2000, 7, 4, 0, 0, 0, -8, true)), 2000, 7, 4, 7);
    ExpectDate(LTToUT(Local(2000, 7, 4, 17, 0, 0, -8, true)), 2000, 7, 5, 0);
}

}  // namespace
