// The clock members: the local civil time of the clock fields as Julian
// day, universal time and local sidereal time, and the computer's clock.
#include <cmath>
#include <ctime>

#include "ServerTestSupport.h"

namespace {

class ClockMembers : public ServerTest {
  protected:
    void SetClock(int16_t y, int16_t mo, int16_t d, int16_t h, int16_t mi, double s, double zone,
                  bool dst = false) {
        server->SetYear(y);
        server->SetMonth(mo);
        server->SetDay(d);
        server->SetHour(h);
        server->SetMinute(mi);
        server->SetSecond(s);
        server->SetTimeZone(zone);
        server->SetDST(dst);
    }
};

TEST_F(ClockMembers, JulianDayAndUniversalTime) {
    // J2000.0 is JD 2451545.0 by definition: 2000 January 1, 12h universal
    // time, here as 4h local time eight hours west of Greenwich.
    SetClock(2000, 1, 1, 4, 0, 0.0, -8.0);
    EXPECT_EQ(server->GetJulianDay(), 2451545.0);
    // 2:00 at eight hours east of Greenwich is 18:00 universal time of the
    // day before: six hours before 0h, a quarter turn, kept negative.
    SetClock(2001, 1, 1, 2, 0, 0.0, 8.0);
    EXPECT_NEAR(server->GetUTRad(), -6 * 6.283185308 / 24, 1e-15);
    // Daylight saving takes an hour off: 12:30 is 11:30 universal time.
    SetClock(2001, 6, 1, 12, 30, 0.0, 0.0, true);
    EXPECT_NEAR(server->GetUTRad(), 11.5 * 6.283185308 / 24, 1e-15);
}

// 2000 January 10, 0:30 local at five hours west is 5:30 universal time;
// the IAU 1982 sidereal time (GMST = 18.697374558 h + 24.06570982441908 h
// per day from J2000.0) gives 12h 46m 15.48s at Greenwich and, 118 degrees
// west, 4h 54m 15.48s. The program's older polynomial differs by under
// 0.1 s; the tolerance is 0.2 s of time.
TEST_F(ClockMembers, LocalSiderealTimeAtTheDefaultLongitude) {
    SetClock(2000, 1, 10, 0, 30, 0.0, -5.0);
    ASSERT_EQ(server->Longitude(), -118.0);
    const double pi = 3.14159265358979323846;
    EXPECT_NEAR(server->GetLSTRad(), (4 + 54 / 60.0 + 15.48 / 3600) * pi / 12,
                0.2 / 3600 * pi / 12);
}

TEST_F(ClockMembers, ComputerDateAndTimeFillOnlyTheirOwnFields) {
    SetClock(1999, 12, 31, 23, 59, 58.5, 3.5, true);
    std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    server->LoadDateFromComputer();
    EXPECT_EQ(server->Year(), local.tm_year + 1900);
    EXPECT_EQ(server->Month(), local.tm_mon + 1);
    EXPECT_EQ(server->Day(), local.tm_mday);
    EXPECT_TRUE(server->Hour() == 23 && server->Minute() == 59 && server->Second() == 58.5);
    SetClock(1999, 12, 31, 23, 59, 58.5, 3.5, true);
    server->LoadTimeFromComputer();
    EXPECT_TRUE(server->Year() == 1999 && server->Month() == 12 && server->Day() == 31);
    // Seconds since midnight of the clock and of the member, within a minute
    // for a test that runs across a minute boundary.
    const double wanted = local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec;
    const double got = server->Hour() * 3600.0 + server->Minute() * 60.0 + server->Second();
    EXPECT_NEAR(std::fmod(got - wanted + 86400.0, 86400.0), 0.0, 60.0);
    EXPECT_TRUE(server->TimeZone() == 3.5 && server->DST());
}

}  // namespace
