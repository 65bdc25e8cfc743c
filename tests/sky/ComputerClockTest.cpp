// The computer's clock as a record, and the record as a line of text.
#include <gtest/gtest.h>
#include <time.h>

#include <chrono>
#include <cmath>

#include "sky/mTime.h"

namespace {

struct LocalReading {
    int year, month, day;
    double secondsOfDay;
};

LocalReading ReadLocal() {
    using namespace std::chrono;
    auto since = system_clock::now().time_since_epoch();
    auto whole = floor<seconds>(since);
    time_t t = static_cast<time_t>(whole.count());
    struct tm local {};
    localtime_r(&t, &local);
    double fraction = duration<double>(since - whole).count();
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
            local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec + fraction};
}

// The record lies between two readings of the local clock taken around it,
// with a millisecond of slack for the rounding of Second to 3 decimals.
TEST(ComputerClock, IsTheLocalTimeNow) {
    for (int attempt = 0; attempt < 3; ++attempt) {
        LocalReading before = ReadLocal();
        DateTimeRec d = ComputerDateTime();
        LocalReading after = ReadLocal();
        if (before.day != after.day) continue;  // midnight passed: read again
        EXPECT_EQ(d.Year, before.year);
        EXPECT_EQ(d.Month, before.month);
        EXPECT_EQ(d.Day, before.day);
        double got = d.Hour * 3600.0 + d.Minute * 60.0 + d.Second;
        EXPECT_GE(got, before.secondsOfDay - 0.001);
        EXPECT_LE(got, after.secondsOfDay + 0.001);
        EXPECT_EQ(d.TimeZone, 0.0);
        EXPECT_FALSE(d.DST);
        // Second has at most three decimals.
        double millis = d.Second * 1000;
        EXPECT_NEAR(millis, std::round(millis), 1e-6) << "Second " << d.Second;
        return;
    }
    FAIL() << "the date changed under every reading";
}

// The example line of the Test Log list, and one with a fraction, a
// half-hour zone and daylight saving.
TEST(DateTimeText, TestLogLine) {
    DateTimeRec d;
    d.Year = 2000;
    d.Month = 1;
    d.Day = 10;
    d.Hour = 5;
    d.Minute = 30;
    d.Second = 0;
    d.TimeZone = -5;
    EXPECT_EQ(DateTimeStr(d), "2000/1/10  5:30:0  (False -5)");

    d.Year = 2001;
    d.Month = 12;
    d.Day = 31;
    d.Hour = -1;
    d.Minute = 59;
    d.Second = 59.125;
    d.TimeZone = 5.5;
    d.DST = true;
    EXPECT_EQ(DateTimeStr(d), "2001/12/31  -1:59:59.125  (True 5.5)");
}

}  // namespace
