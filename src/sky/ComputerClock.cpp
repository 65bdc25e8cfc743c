// The computer's clock as a DateTimeRec, in the computer's local time.
#include <time.h>

#include <chrono>

#include "sky/Rounding.h"
#include "sky/mTime.h"

// Year, Month, Day, Hour and Minute are the local calendar fields. Second is
// the whole second plus the fraction of the seconds-since-midnight timer,
// rounded to 3 decimals. Both come from one reading of the clock, so the
// fraction always belongs to the whole second beside it. TimeZone and DST
// stay 0 and false: the computer's zone is never taken over.
DateTimeRec ComputerDateTime() {
    using namespace std::chrono;
    auto now = system_clock::now();
    auto sinceEpoch = now.time_since_epoch();
    auto wholeSeconds = floor<seconds>(sinceEpoch);
    double fraction = duration<double>(sinceEpoch - wholeSeconds).count();

    time_t t = static_cast<time_t>(wholeSeconds.count());
    struct tm local {};
    DateTimeRec d;
    if (localtime_r(&t, &local) == nullptr) return d;
    d.Year = static_cast<int16_t>(local.tm_year + 1900);
    d.Month = static_cast<int16_t>(local.tm_mon + 1);
    d.Day = static_cast<int16_t>(local.tm_mday);
    d.Hour = static_cast<int16_t>(local.tm_hour);
    d.Minute = static_cast<int16_t>(local.tm_min);
    d.Second = RoundHalfEven((local.tm_sec + fraction) * 1000) / 1000;
    return d;
}
