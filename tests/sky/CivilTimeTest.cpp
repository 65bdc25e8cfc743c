// Civil time: local to universal time with its deliberate simplifications
// (whole-hour zones rounded to even, a leap test without the century rule, a
// negative hour that stays on the local date), Julian days both ways, and
// the computer's clock.
#include <gtest/gtest.h>
#include <time.h>

#include <chrono>
#include <cmath>
#include <random>
#include <string>

#include "SkyTestSupport.h"
#include "sky/NumberText.h"
#include "sky/mTime.h"

namespace {

using skytest::Time;

// Every field of a record, to compare records in one line.
std::string Fields(const DateTimeRec& r) {
    return std::to_string(r.Year) + "/" + std::to_string(r.Month) + "/" + std::to_string(r.Day) +
           " " + std::to_string(r.Hour) + ":" + std::to_string(r.Minute) + ":" +
           NumberText(r.Second) + " zone " + NumberText(r.TimeZone) + (r.DST ? " DST" : "");
}

TEST(LocalToUniversal, ZonesRollOversEvenHoursAndDaylightSaving) {
    EXPECT_EQ(DaysInMonth(0), 0);
    EXPECT_EQ(DaysInMonth(13), 0);
    EXPECT_EQ(DaysInMonth(-1), 0);
    const int days[13] = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (int m = 1; m <= 12; ++m) EXPECT_EQ(DaysInMonth(static_cast<int16_t>(m)), days[m]) << m;
    // Hand values.
    // clang-format off
    const struct { DateTimeRec local; int y, m, d, h; const char* why; } cases[] = {
        {Time(2000, 1, 10, 0, 30, 12.5, -5), 2000, 1, 10, 5, "0:30 at zone -5 is 5:30"},
        {Time(2000, 2, 28, 23, 0, 0, -8), 2000, 2, 29, 7, "2000 is a leap year"},
        {Time(2001, 2, 28, 23, 0, 0, -8), 2001, 3, 1, 7, "2001 is not"},
        {Time(2000, 4, 30, 20, 0, 0, -8), 2000, 5, 1, 4, "end of a 30-day month"},
        {Time(2000, 12, 31, 20, 0, 0, -8), 2001, 1, 1, 4, "New Year's Eve"},
        {Time(1900, 2, 28, 23, 0, 0, -8), 1900, 2, 29, 7, "no century rule: 1900 has February 29"},
        {Time(2001, 1, 1, 2, 0, 0, 8), 2001, 1, 1, -6, "east early in the day: the hour goes negative"},
        {Time(2000, 6, 1, 5, 0, 0, -5.5), 2000, 6, 1, 10, "half-hour zone: 10.5 -> 10"},
        {Time(2000, 6, 1, 6, 0, 0, -5.5), 2000, 6, 1, 12, "11.5 -> 12"},
        {Time(2000, 6, 1, 5, 0, 0, 5.5), 2000, 6, 1, 0, "-0.5 -> 0"},
        {Time(2000, 6, 1, 5, 0, 0, 6.5), 2000, 6, 1, -2, "-1.5 -> -2"},
        {Time(2000, 7, 4, 0, 0, 0, 0, true), 2000, 7, 4, -1, "DST takes an hour off at midnight"},
        {Time(2000, 7, 4, 0, 0, 0, -8, true), 2000, 7, 4, 7, "DST before the roll-over"},
        {Time(2000, 7, 4, 17, 0, 0, -8, true), 2000, 7, 5, 0, "DST, then the roll-over"}};
    // clang-format on
    for (const auto& c : cases) {
        // Minutes, seconds, zone and flag are copied.
        const DateTimeRec& l = c.local;
        EXPECT_EQ(Fields(LTToUT(l)),
                  Fields(Time(c.y, c.m, c.d, c.h, l.Minute, l.Second, l.TimeZone, l.DST)))
            << c.why;
    }
}

// The signed hour keeps the Julian day and the sidereal time right: hour -6
// of January 1 is 18:00 of December 31.
TEST(LocalToUniversal, NegativeHourSumsStayRight) {
    const DateTimeRec u = LTToUT(Time(2001, 1, 1, 2, 0, 0, 8));
    const DateTimeRec same = Time(2000, 12, 31, 18);
    // Summed as the server's GetUTRad does: -6 x 6.283185308 / 24 = -1.570796327.
    EXPECT_NEAR((u.Minute / 60.0 + u.Hour + u.Second / 3600.0) * 6.283185308 / 24, -1.570796327,
                1e-15);
    EXPECT_EQ(TimeToJD(u), TimeToJD(same));
    EXPECT_EQ(LTToJD(Time(2001, 1, 1, 2, 0, 0, 8)), 2451910.25) << "2000 December 31.75";
    // The sidereal series differ by 24 x 0.002737908 h against 2400.051262 /
    // 36525 h for the day: 3e-8 h, about 1e-4 s.
    const DateTimeRec g1 = UTToGST(u), g2 = UTToGST(same);
    EXPECT_NEAR(g1.Hour * 3600.0 + g1.Minute * 60.0 + g1.Second,
                g2.Hour * 3600.0 + g2.Minute * 60.0 + g2.Second, 1e-3);
}

// Published values: Meeus, "Astronomical Algorithms" (2nd ed.), chapter 7,
// the J2000.0 epoch and examples 7.a to 7.c. Julian days of whole and half
// days are exact in a double, so they must come out exactly; the date's own
// Julian day is that of its midnight.
TEST(JulianDay, PublishedValuesBothWays) {
    // clang-format off
    const struct { DateTimeRec t; double jd, jdTol, secondsTol; const char* why; } cases[] = {
        {Time(2000, 1, 1, 12), 2451545.0, 0, 0, "J2000.0 = 2000 January 1.5"},
        {Time(1600, 1, 1), 2305447.5, 0, 0, "Meeus table of chapter 7"},
        {Time(1987, 6, 19, 12), 2446966.0, 0, 0, "1987 June 19.5"},
        {Time(333, 1, 27, 12), 1842713.0, 0, 0, "333 January 27.5, Julian calendar (7.b)"},
        // 1582 October 4 (Julian) was followed by October 15 (Gregorian).
        {Time(1582, 10, 15), 2299160.5, 0, 0, "first Gregorian day"},
        {Time(1582, 10, 4), 2299159.5, 0, 0, "last Julian day, one day before"},
        // Sputnik, 1957 October 4.81 = 19:26:24 (7.a, 7.c): the sum carries the
        // rounding of the parts (four ulps of the day), and the Julian day
        // about 5e-5 s, and the split of the day a few ulps more.
        {Time(1957, 10, 4, 19, 26, 24), 2436116.31, 2e-9, 6e-4, "Sputnik"}};
    // clang-format on
    for (const auto& c : cases) {
        EXPECT_NEAR(TimeToJD(c.t), c.jd, c.jdTol) << c.why;
        EXPECT_EQ(DateToJD(c.t), std::floor(c.jd - 0.5) + 0.5) << c.why;
        DateTimeRec d = JDToDate(c.jd);
        EXPECT_NEAR(d.Minute * 60 + d.Second, c.t.Minute * 60 + c.t.Second, c.secondsTol) << c.why;
        d.Minute = c.t.Minute;
        d.Second = c.t.Second;
        EXPECT_EQ(Fields(d), Fields(c.t)) << c.why;
    }
}

// Every date from 1600 to 2200 (so any random choice of them too) is the day
// after the one before, over month, year and century ends (1700, 1800, 1900
// are no leap years, 2000 is), and comes back from its Julian day.
TEST(JulianDay, EveryDateFrom1600To2200FollowsAndComesBack) {
    double jd = DateToJD(Time(1600, 1, 1));
    for (int y = 1600; y <= 2200; ++y) {
        const bool leap = (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
        for (int m = 1; m <= 12; ++m) {
            for (int d = 1; d <= DaysInMonth(static_cast<int16_t>(m)) + (m == 2 && leap);
                 ++d, jd += 1) {
                ASSERT_EQ(DateToJD(Time(y, m, d)), jd) << y << "/" << m << "/" << d;
                ASSERT_EQ(Fields(JDToDate(jd)), Fields(Time(y, m, d)));
            }
        }
    }
}

// The time of day survives the trip through the Julian day to the
// resolution of a double near 2.4 million days, about 5e-5 s.
TEST(JulianDay, TimeOfDayComesBack) {
    std::mt19937 gen(1980);
    std::uniform_real_distribution<double> dayPart(0.0, 86399.0);
    for (int i = 0; i < 2000; ++i) {
        const double secondsOfDay = std::floor(dayPart(gen)) + 0.25;
        const int h = static_cast<int>(secondsOfDay / 3600);
        const int mi = static_cast<int>((secondsOfDay - h * 3600) / 60);
        const DateTimeRec back =
            JDToDate(TimeToJD(Time(2024, 7, 15, h, mi, secondsOfDay - h * 3600 - mi * 60)));
        ASSERT_EQ(back.Day, 15);
        ASSERT_NEAR(back.Hour * 3600.0 + back.Minute * 60.0 + back.Second, secondsOfDay, 1e-4);
    }
}

// The record lies between two readings of the local clock taken around it,
// with a millisecond of slack for the rounding of Second to 3 decimals.
TEST(ComputerClock, IsTheLocalTimeNow) {
    auto readLocal = [](struct tm& local) {
        using namespace std::chrono;
        const auto since = system_clock::now().time_since_epoch();
        const auto whole = floor<seconds>(since);
        const time_t t = static_cast<time_t>(whole.count());
        localtime_r(&t, &local);
        return local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec +
               duration<double>(since - whole).count();
    };
    for (int attempt = 0; attempt < 3; ++attempt) {
        struct tm before {
        }, after{};
        const double start = readLocal(before);
        const DateTimeRec d = ComputerDateTime();
        const double end = readLocal(after);
        if (before.tm_mday != after.tm_mday) continue;  // midnight passed: read again
        EXPECT_EQ(d.Year, before.tm_year + 1900);
        EXPECT_EQ(d.Month, before.tm_mon + 1);
        EXPECT_EQ(d.Day, before.tm_mday);
        const double got = d.Hour * 3600.0 + d.Minute * 60.0 + d.Second;
        EXPECT_TRUE(got >= start - 0.001 && got <= end + 0.001)
            << start << " " << got << " " << end;
        EXPECT_TRUE(d.TimeZone == 0 && !d.DST);
        EXPECT_NEAR(d.Second * 1000, std::round(d.Second * 1000), 1e-6) << "at most 3 decimals";
        return;
    }
    FAIL() << "the date changed under every reading";
}

// The example line of the Test Log list, and one with a fraction, a
// half-hour zone and daylight saving.
TEST(DateTimeText, TestLogLine) {
    EXPECT_EQ(DateTimeStr(Time(2000, 1, 10, 5, 30, 0, -5)), "2000/1/10  5:30:0  (False -5)");
    EXPECT_EQ(DateTimeStr(Time(2001, 12, 31, -1, 59, 59.125, 5.5, true)),
              "2001/12/31  -1:59:59.125  (True 5.5)");
}

}  // namespace
