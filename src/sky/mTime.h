// Civil time, universal time, Julian day and sidereal time.
#pragma once

#include <cstdint>
#include <string>

struct ModelState;

// A civil or sidereal time. In a sidereal result only Hour, Minute and
// Second change meaning; the other fields are copied from the input.
struct DateTimeRec {
    int16_t Year = 0;
    int16_t Month = 0;
    int16_t Day = 0;
    int16_t Hour = 0;  // may be negative in a universal time, see LTToUT
    int16_t Minute = 0;
    double Second = 0.0;
    double TimeZone = 0.0;  // hours, west negative
    bool DST = false;
};

DateTimeRec ComputerDateTime();
int16_t DaysInMonth(int16_t Month);
DateTimeRec LTToUT(DateTimeRec LT);
double DateToJD(const DateTimeRec& d);
double TimeToJD(const DateTimeRec& UT);
double LTToJD(const DateTimeRec& LT);
DateTimeRec UTToGST(const DateTimeRec& UT);
// Longitude (degrees, east positive) comes from the model state.
DateTimeRec GSTToLST(const ModelState& s, const DateTimeRec& GST, const DateTimeRec& LT);
DateTimeRec LTToLST(const ModelState& s, const DateTimeRec& LT);
double LTToLSTRad(const ModelState& s, const DateTimeRec& LT);
// With Log, and its TestLog on, the steps A to F go to the Test Log list.
DateTimeRec JDToDate(double JD, const ModelState* Log = nullptr);
double JDtoLSTRad(const ModelState& s, double JD);
std::string DateTimeStr(const DateTimeRec& d);
