// The server's clock members: the local civil time of the clock fields
// turned into universal time, Julian day and sidereal time.
#include "files/TraceLog.h"
#include "model/Constants.h"
#include "model/ModelState.h"
#include "server/TraceText.h"
#include "server/cAztrue.h"
#include "sky/NumberText.h"
#include "sky/mTime.h"

namespace {

DateTimeRec ClockFields(const ModelState& s) {
    DateTimeRec t;
    t.Year = s.Year;
    t.Month = s.Month;
    t.Day = s.Day;
    t.Hour = s.Hour;
    t.Minute = s.Minute;
    t.Second = s.Second;
    t.TimeZone = s.TimeZone;
    t.DST = s.DST;
    return t;
}

// Hours of a record as an angle. The minutes come first in this sum; the
// last bit of the result depends on that order.
double HoursToRad(const DateTimeRec& t) {
    return (t.Minute / 60.0 + t.Hour + t.Second / 3600) * kFullTurn / 24;
}

}  // namespace

// The computer gives no time zone: only the date, or only the time, is taken.
void cAztrue::LoadDateFromComputer() {
    LogLine("LoadDateFromComputer()");
    DateTimeRec now = ComputerDateTime();
    model_.Year = now.Year;
    model_.Month = now.Month;
    model_.Day = now.Day;
}

void cAztrue::LoadTimeFromComputer() {
    LogLine("LoadTimeFromComputer()");
    DateTimeRec now = ComputerDateTime();
    model_.Hour = now.Hour;
    model_.Minute = now.Minute;
    model_.Second = now.Second;
}

double cAztrue::GetLSTRad() {
    LogLine("GetLSTRad()");
    return HoursToRad(LTToLST(model_, ClockFields(model_)));
}

double cAztrue::JDtoLSTRad(double JD) {
    LogLineWith([&] { return CallText("JDtoLSTRad", {NumberText(JD)}); });
    return ::JDtoLSTRad(model_, JD);
}

// Negative before 0h universal time on a site east of Greenwich: the hour
// of the universal time stays negative on the local date.
double cAztrue::GetUTRad() {
    LogLine("GetUTRad()");
    return HoursToRad(LTToUT(ClockFields(model_)));
}

double cAztrue::GetJulianDay() {
    LogLine("GetJulianDay()");
    return TimeToJD(LTToUT(ClockFields(model_)));
}
