// Civil and sidereal time: local to universal time with its deliberate
// simplifications (whole-hour zones rounded to even, a leap test without the
// century rule, a negative hour that stays on the local date), Julian days
// both ways, the computer's clock, and Greenwich and local sidereal time.
#include <time.h>

#include <chrono>
#include <memory>

#include "SkyTestSupport.h"
#include "model/ModelState.h"
#include "sky/NumberText.h"

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
        {Time(2001, 1, 1, 2, 0, 0, 8), 2001, 1, 1, -6, "east early: negative hour"},
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

double Hours(const DateTimeRec& r) {
    return r.Hour + r.Minute / 60.0 + r.Second / 3600.0;
}

void ExpectHms(const DateTimeRec& r, int h, int m, double s, double tol, const char* why) {
    EXPECT_EQ(r.Hour, h) << why;
    EXPECT_EQ(r.Minute, m) << why;
    EXPECT_NEAR(r.Second, s, tol) << why;
}

std::unique_ptr<ModelState> SiteAt(double longitude) {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    s->Longitude = longitude;
    return s;
}

TEST(GreenwichSiderealTime, PublishedAndHandValues) {
    // Duffett-Smith, "Practical Astronomy with your Calculator", section 12:
    // UT 14h36m51.67s on 1980 April 22 is GST 4h40m5.17s. The routine uses
    // that book's series, so it must agree to the 0.01 s printed.
    const DateTimeRec g = UTToGST(Time(1980, 4, 22, 14, 36, 51.67));
    ExpectHms(g, 4, 40, 5.17, 0.005, "1980 April 22");
    EXPECT_TRUE(g.Year == 1980 && g.Month == 4 && g.Day == 22) << "the date fields are copied";
    // Meeus, "Astronomical Algorithms", examples 12.a and 12.b (IAU 1982 mean
    // sidereal time): 1987 April 10, 0h UT is 13h10m46.3668s and 19h21m00s UT
    // is 8h34m57.0896s; 2000 January 1, 12h UT is 18h41m50.54841s. The 1900
    // series used here drifts from the IAU 1982 one by about 0.07 s over this
    // century, hence 0.1 s.
    // clang-format off
    const struct { DateTimeRec ut; double gstSeconds; } cases[] = {
        {Time(1987, 4, 10), 13 * 3600 + 10 * 60 + 46.3668},
        {Time(1987, 4, 10, 19, 21), 8 * 3600 + 34 * 60 + 57.0896},
        {Time(2000, 1, 1, 12), 18 * 3600 + 41 * 60 + 50.54841}};
    // clang-format on
    for (const auto& c : cases)
        EXPECT_NEAR(Hours(UTToGST(c.ut)) * 3600, c.gstSeconds, 0.1) << DateTimeStr(c.ut);
    // Before 1900 the sum is negative and is not brought up: for 1850 January
    // 1 at 0h, R = 6.6460656 + 2400.051262 T + 2.581e-5 T^2 with T = (2396758.5
    // - 2415020) / 36525 = -0.499973..., R = -1193.31385 h (hand calculation),
    // so Hour is Int(R) = -1194 and Minute Int(0.686 x 60).
    const DateTimeRec old = UTToGST(Time(1850, 1, 1));
    EXPECT_EQ(old.Hour, -1194);
    EXPECT_EQ(old.Minute, 41);
    EXPECT_NEAR(Hours(old), -1193.3138491258, 1e-9);
}

// Hand values: 2000 January 10, 0:30:00 at zone -5 is UT 5:30:00, GST
// 12h46m15.40s (the 1900 series by hand: 12h46m15.4035s), and at longitude
// -118 (7h52m west) the local sidereal time is 4h54m15.40s.
TEST(LocalSiderealTime, January2000Chain) {
    auto s = SiteAt(-118.0);
    const DateTimeRec lt = Time(2000, 1, 10, 0, 30, 0, -5);
    const DateTimeRec ut = LTToUT(lt);
    EXPECT_TRUE(ut.Hour == 5 && ut.Minute == 30);
    ExpectHms(UTToGST(ut), 12, 46, 15.40, 0.005, "GST");
    const DateTimeRec l = LTToLST(*s, lt);
    ExpectHms(l, 4, 54, 15.40, 0.005, "LST");
    EXPECT_TRUE(l.Day == 10 && l.TimeZone == -5.0) << "the date fields are the local ones";
    EXPECT_NEAR(LTToLSTRad(*s, lt), (4 + 54 / 60.0 + 15.4035 / 3600) * 3.141592654 / 12, 1e-7)
        << "0.0001 s of time is 7e-9 rad";
    // The radians add Hour first, then minutes and seconds (the server's
    // GetLSTRad adds minutes first); the two differ in the last bit.
    EXPECT_EQ(LTToLSTRad(*s, lt),
              (l.Hour + l.Minute / 60.0 + l.Second / 3600.0) * 3.141592654 / 12);
}

// Only a negative local sidereal time is brought up, once; an eastern site
// can show 24 hours or more. Hand values: GST 18h41m50.47s (2000 January 1,
// 12h UT) at longitude +150 (10 h east) gives 28h41m50.47s; GST 4h40m5.17s
// at -118 is -3h11m54.83s, brought up to 20h48m5.17s.
TEST(LocalSiderealTime, EastPast24HoursWestBelowZeroAddsOneDay) {
    const DateTimeRec east = Time(2000, 1, 1, 12), west = Time(1980, 4, 22, 14, 36, 51.67);
    ExpectHms(GSTToLST(*SiteAt(150.0), UTToGST(east), east), 28, 41, 50.47, 0.005, "east");
    ExpectHms(GSTToLST(*SiteAt(-118.0), UTToGST(west), west), 20, 48, 5.17, 0.005, "west");
}

// JDtoLSTRad multiplies the local sidereal hours once more by 1.002737908.
// Hand calculation for JD 2451545.0 (2000 January 1, 12h UT): the 1900
// series gives GST 18.6973533941 h. At longitude -118 the true local
// sidereal time is L = 18.6973533941 - 7.8666666667 = 10.8306867274 h and
// the routine gives L x 1.002737908 = 10.8603401513 h = 2.8432304033 rad,
// 0.0296534 h (0.445 degree) ahead of the true value. East of Greenwich the
// sum passes 24 h before the factor: at +100, L = 25.3640200608 h, times
// 1.002737908 is 25.4334644142 h, less 24 gives 1.4334644142 h =
// 0.3752801061 rad, while the true value is 1.3640200608 h: 1.04 degrees apart.
TEST(SiderealTimeOfJulianDay, ExtraRateFactor) {
    auto s = SiteAt(-118.0);
    const double got = JDtoLSTRad(*s, 2451545.0);
    EXPECT_NEAR(got, 2.8432304033, 1e-9);
    // The same instant as a local time at zone -8: 4:00 on January 1.
    const double trueLST = LTToLSTRad(*s, Time(2000, 1, 1, 4, 0, 0, -8));
    EXPECT_NEAR(trueLST, 10.8306867274 * 3.141592654 / 12, 1e-9);
    EXPECT_NEAR(got - trueLST, 10.8306867274 * 0.002737908 * 3.141592654 / 12, 1e-9)
        << "the difference is L x 0.002737908 hours";
    EXPECT_NEAR(JDtoLSTRad(*SiteAt(100.0), 2451545.0), 0.3752801061, 1e-9);
}

}  // namespace
