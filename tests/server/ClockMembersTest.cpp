// The clock members: the local civil time of the clock fields as Julian
// day, universal time and local sidereal time.
#include <chrono>
#include <cmath>
#include <ctime>

#include "ServerTestSupport.h"

namespace {

using ClockMembers = ServerTest;

void SetClock(cAztrue& a, int16_t y, int16_t mo, int16_t d, int16_t h, int16_t mi, double s,
              double zone) {
    a.SetYear(y);
    a.SetMonth(mo);
    a.SetDay(d);
    a.SetHour(h);
    a.SetMinute(mi);
    a.SetSecond(s);
    a.SetTimeZone(zone);
    a.SetDST(false);
}

// J2000.0 is JD 2451545.0 by definition: 2000 January 1, 12h universal
// time, here as 4h local time eight hours west of Greenwich.
TEST_F(ClockMembers, JulianDayOfJ2000) {
    SetClock(*server, 2000, 1, 1, 4, 0, 0.0, -8.0);
    EXPECT_EQ(server->GetJulianDay(), 2451545.0);
}

// 2:00 at eight hours east of Greenwich is 18:00 universal time of the
// day before: six hours before 0h, a quarter turn, kept negative.
TEST_F(ClockMembers, UniversalTimeBeforeMidnightIsNegative) {
    SetClock(*server, 2001, 1, 1, 2, 0, 0.0, 8.0);
    EXPECT_NEAR(server->GetUTRad(), -6 * 6.283185308 / 24, 1e-15);
}

TEST_F(ClockMembers, DaylightSavingTakesAnHourOff) {
    SetClock(*server, 2001, 6, 1, 12, 30, 0.0, 0.0);
    server->SetDST(true);
    // 11:30 universal time.
    EXPECT_NEAR(server->GetUTRad(), 11.5 * 6.283185308 / 24, 1e-15);
}

// 2000 January 10, 0:30 local at five hours west is 5:30 universal time;
// the IAU 1982 sidereal time (GMST = 18.697374558 h + 24.06570982441908 h
// per day from J2000.0) gives 12h 46m 15.48s at Greenwich and, 118 degrees
// west, 4h 54m 15.48s. The program's older polynomial differs by under
// 0.1 s; the tolerance is 0.2 s of time.
TEST_F(ClockMembers, LocalSiderealTimeAtTheDefaultLongitude) {
    SetClock(*server, 2000, 1, 10, 0, 30, 0.0, -5.0);
    ASSERT_EQ(server->Longitude(), -118.0);
    const double wanted = (4 + 54 / 60.0 + 15.48 / 3600) * 3.14159265358979323846 / 12;
    const double tolerance = 0.2 / 3600 * 3.14159265358979323846 / 12;
    EXPECT_NEAR(server->GetLSTRad(), wanted, tolerance);
}

TEST_F(ClockMembers, ComputerDateFillsOnlyTheDate) {
    SetClock(*server, 1999, 12, 31, 23, 59, 58.5, 3.5);
    std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    server->LoadDateFromComputer();
    EXPECT_EQ(server->Year(), local.tm_year + 1900);
    EXPECT_EQ(server->Month(), local.tm_mon + 1);
    EXPECT_EQ(server->Day(), local.tm_mday);
    EXPECT_EQ(server->Hour(), 23);
    EXPECT_EQ(server->Minute(), 59);
    EXPECT_EQ(server->Second(), 58.5);
    EXPECT_EQ(server->TimeZone(), 3.5);
}

TEST_F(ClockMembers, ComputerTimeFillsOnlyTheTime) {
    SetClock(*server, 1999, 12, 31, 23, 59, 58.5, 3.5);
    server->SetDST(true);
    std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    server->LoadTimeFromComputer();
    EXPECT_EQ(server->Year(), 1999);
    EXPECT_EQ(server->Month(), 12);
    EXPECT_EQ(server->Day(), 31);
    // Seconds since midnight of the clock and of the member, within a
    // minute for a test that runs across a minute boundary.
    const double wanted = local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec;
    const double got = server->Hour() * 3600.0 + server->Minute() * 60.0 + server->Second();
    EXPECT_NEAR(std::fmod(got - wanted + 86400.0, 86400.0), 0.0, 60.0);
    EXPECT_EQ(server->TimeZone(), 3.5);
    EXPECT_TRUE(server->DST());
}

}  // namespace
