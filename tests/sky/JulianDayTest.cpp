// Julian day of a civil date and time, and the calendar date of a Julian day.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "sky/mTime.h"

namespace {

DateTimeRec Date(int y, int m, int d, int h = 0, int mi = 0, double s = 0) {
    DateTimeRec r;
    r.Year = static_cast<int16_t>(y);
    r.Month = static_cast<int16_t>(m);
    r.Day = static_cast<int16_t>(d);
    r.Hour = static_cast<int16_t>(h);
    r.Minute = static_cast<int16_t>(mi);
    r.Second = s;
    return r;
}

bool IsGregorianLeap(int y) {
    return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
}

// Published values: Meeus, "Astronomical Algorithms" (2nd ed.), chapter 7,
// the J2000.0 epoch and examples 7.a and 7.b. Julian days of dates are whole
// or half days, exact in a double, so they must come out exactly.
TEST(JulianDayOfDate, PublishedValues) {
    EXPECT_EQ(TimeToJD(Date(2000, 1, 1, 12)), 2451545.0) << "J2000.0 = 2000 January 1.5";
    EXPECT_EQ(DateToJD(Date(1600, 1, 1)), 2305447.5) << "Meeus table of chapter 7";
    EXPECT_EQ(DateToJD(Date(1987, 6, 19)) + 0.5, 2446966.0) << "1987 June 19.5";
    // Example 7.b, a date of the Julian calendar.
    EXPECT_EQ(TimeToJD(Date(333, 1, 27, 12)), 1842713.0) << "333 January 27.5";
    // Example 7.a, Sputnik: 1957 October 4.81 = JD 2436116.31. The time of day
    // 0.81 d is 19:26:24; the sum carries the rounding of the parts.
    EXPECT_NEAR(TimeToJD(Date(1957, 10, 4, 19, 26, 24)), 2436116.31, 2e-9)
        << "four ulps of the day";
}

// 1582 October 4 (Julian) was followed by October 15 (Gregorian): the two
// dates are one day apart. Meeus: 1582 October 15.0 = JD 2299160.5.
TEST(JulianDayOfDate, CalendarReformIsOneDay) {
    double before = DateToJD(Date(1582, 10, 4));
    double after = DateToJD(Date(1582, 10, 15));
    EXPECT_EQ(after, 2299160.5);
    EXPECT_EQ(after - before, 1.0);
    DateTimeRec b = JDToDate(before);
    DateTimeRec a = JDToDate(after);
    EXPECT_EQ(b.Year, 1582);
    EXPECT_EQ(b.Month, 10);
    EXPECT_EQ(b.Day, 4);
    EXPECT_EQ(a.Year, 1582);
    EXPECT_EQ(a.Month, 10);
    EXPECT_EQ(a.Day, 15);
}

TEST(DateOfJulianDay, PublishedValues) {
    DateTimeRec d = JDToDate(2451545.0);
    EXPECT_EQ(d.Year, 2000);
    EXPECT_EQ(d.Month, 1);
    EXPECT_EQ(d.Day, 1);
    EXPECT_EQ(d.Hour, 12);
    EXPECT_EQ(d.Minute, 0);
    EXPECT_EQ(d.Second, 0.0);
    EXPECT_EQ(d.TimeZone, 0.0);
    EXPECT_FALSE(d.DST);

    // Meeus example 7.c: JD 2436116.31 is 1957 October 4.81, that is 19:26:24.
    // The Julian day carries about 5e-5 s of rounding; the split of the day
    // adds a few more ulps of the hour.
    DateTimeRec s = JDToDate(2436116.31);
    EXPECT_EQ(s.Year, 1957);
    EXPECT_EQ(s.Month, 10);
    EXPECT_EQ(s.Day, 4);
    EXPECT_EQ(s.Hour, 19);
    double minutes = s.Minute + s.Second / 60;
    EXPECT_NEAR(minutes, 26.4, 1e-5) << "minute " << s.Minute << " second " << s.Second;

    // Example 7.b backwards: JD 1842713.0 is 333 January 27.5 (Julian calendar).
    DateTimeRec j = JDToDate(1842713.0);
    EXPECT_EQ(j.Year, 333);
    EXPECT_EQ(j.Month, 1);
    EXPECT_EQ(j.Day, 27);
    EXPECT_EQ(j.Hour, 12);
}

// Every date from 1600 to 2200 comes back from its Julian day: the
// Gregorian rules of the two routines agree, century years included.
TEST(DateOfJulianDay, RandomDatesComeBack) {
    std::mt19937 gen(20000110);
    std::uniform_int_distribution<int> year(1600, 2200);
    std::uniform_int_distribution<int> month(1, 12);
    for (int i = 0; i < 5000; ++i) {
        int y = year(gen);
        int m = month(gen);
        int days = DaysInMonth(static_cast<int16_t>(m)) + (m == 2 && IsGregorianLeap(y) ? 1 : 0);
        int d = std::uniform_int_distribution<int>(1, days)(gen);
        double jd = DateToJD(Date(y, m, d));
        DateTimeRec back = JDToDate(jd);
        ASSERT_EQ(back.Year, y) << y << "/" << m << "/" << d << " JD " << jd;
        ASSERT_EQ(back.Month, m) << y << "/" << m << "/" << d;
        ASSERT_EQ(back.Day, d) << y << "/" << m << "/" << d;
        ASSERT_EQ(back.Hour, 0);
        ASSERT_EQ(back.Minute, 0);
        ASSERT_EQ(back.Second, 0.0);
    }
}

// Consecutive dates are consecutive days, over month, year and century ends
// (1700, 1800, 1900 are no leap years, 2000 is).
TEST(DateOfJulianDay, DaysFollowEachOther) {
    double jd = DateToJD(Date(1600, 1, 1));
    for (int y = 1600; y <= 2200; ++y) {
        for (int m = 1; m <= 12; ++m) {
            int days =
                DaysInMonth(static_cast<int16_t>(m)) + (m == 2 && IsGregorianLeap(y) ? 1 : 0);
            for (int d = 1; d <= days; ++d) {
                ASSERT_EQ(DateToJD(Date(y, m, d)), jd) << y << "/" << m << "/" << d;
                jd += 1;
            }
        }
    }
}

// The time of day survives the trip through the Julian day to the
// resolution of a double near 2.4 million days, about 5e-5 s.
TEST(DateOfJulianDay, TimeOfDayComesBack) {
    std::mt19937 gen(1980);
    std::uniform_real_distribution<double> dayPart(0.0, 86399.0);
    for (int i = 0; i < 2000; ++i) {
        double secondsOfDay = std::floor(dayPart(gen)) + 0.25;
        int h = static_cast<int>(secondsOfDay / 3600);
        int mi = static_cast<int>((secondsOfDay - h * 3600) / 60);
        double s = secondsOfDay - h * 3600 - mi * 60;
        DateTimeRec back = JDToDate(TimeToJD(Date(2024, 7, 15, h, mi, s)));
        ASSERT_EQ(back.Day, 15);
        double got = back.Hour * 3600.0 + back.Minute * 60.0 + back.Second;
        ASSERT_NEAR(got, secondsOfDay, 1e-4);
    }
}

}  // namespace
