// Greenwich and local sidereal time of a civil time or a Julian day.
#include <gtest/gtest.h>

#include <memory>

#include "SkyTestSupport.h"
#include "model/ModelState.h"
#include "sky/mTime.h"

namespace {

using skytest::Time;

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
