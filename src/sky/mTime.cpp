// Civil time to universal time, Julian day and sidereal time, and a Julian
// day back to a calendar date. The sidereal series is the 1900-epoch one of
// Duffett-Smith, "Practical Astronomy with your Calculator"; the calendar
// conversions follow Meeus, "Astronomical Algorithms", chapter 7.
#include "sky/mTime.h"

#include <cmath>

#include "files/TestLogList.h"
#include "model/ModelState.h"
#include "sky/NumberText.h"
#include "sky/Rounding.h"

namespace {

// A whole number of the record's 16-bit fields. Values beyond the field's
// range are held at its limits (and NaN becomes 0) instead of being cut at
// random, so bad input can never make the conversion undefined.
int16_t ToField(double x) {
    if (std::isnan(x)) return 0;
    if (x >= 32767.0) return 32767;
    if (x <= -32768.0) return -32768;
    return static_cast<int16_t>(x);
}

// Hours, minutes and seconds of a time in hours, as the sidereal routines
// split it: Hour by Int, Minute by Int of the rest in minutes, Second what is
// left over.
void SplitHours(double G, DateTimeRec& r) {
    r.Hour = ToField(VbInt(G));
    r.Minute = ToField(VbInt((G - r.Hour) * 60));
    r.Second = (G - r.Hour - r.Minute / 60.0) * 3600;
}

}  // namespace

int16_t DaysInMonth(int16_t Month) {
    switch (Month) {
        case 1:
        case 3:
        case 5:
        case 7:
        case 8:
        case 10:
        case 12:
            return 31;
        case 4:
        case 6:
        case 9:
        case 11:
            return 30;
        case 2:
            return 28;
        default:
            return 0;
    }
}

// Local civil time to universal time. The hour is rounded to a whole number
// (halves to even), so a zone with a fraction of an hour acts as the
// neighbouring whole zone. The date moves forward over a day, month or year
// end; it never moves back: a negative hour stays, and the Julian day and
// sidereal sums take it as a signed number.
DateTimeRec LTToUT(DateTimeRec LT) {
    DateTimeRec UT = LT;
    double h = RoundHalfEven(LT.Hour - LT.TimeZone);
    if (LT.DST) h = h - 1;
    if (h >= 24) {
        UT.Day = static_cast<int16_t>(UT.Day + 1);
        h = h - 24;
        // Every fourth year is a leap year here, centuries included.
        int days = DaysInMonth(UT.Month);
        if (UT.Month == 2 && UT.Year % 4 == 0) days = days + 1;
        if (UT.Day > days) {
            UT.Day = 1;
            UT.Month = static_cast<int16_t>(UT.Month + 1);
            if (UT.Month > 12) {
                UT.Month = 1;
                UT.Year = static_cast<int16_t>(UT.Year + 1);
            }
        }
    }
    UT.Hour = ToField(h);
    return UT;
}

// Julian day of 0h of the record's date; Gregorian from 1582 October 15 on,
// Julian before.
double DateToJD(const DateTimeRec& d) {
    double y = d.Year;
    double m = d.Month;
    if (m == 1 || m == 2) {
        y = y - 1;
        m = m + 12;
    }
    double A = VbInt(y / 100);
    double B = VbInt(A / 4);
    long dateNumber = 10000L * d.Year + 100L * d.Month + d.Day;
    double correction = 0;
    if (dateNumber >= 15821015L) correction = 2 - A + B;
    return VbInt(365.25 * y) + correction + VbInt(30.6001 * (m + 1)) + d.Day + 1720994.5;
}

double TimeToJD(const DateTimeRec& UT) {
    return DateToJD(UT) + UT.Hour / 24.0 + UT.Minute / 1440.0 + UT.Second / 86400.0;
}

double LTToJD(const DateTimeRec& LT) {
    return TimeToJD(LTToUT(LT));
}

// Greenwich mean sidereal time of a universal time. The sum is brought down
// by whole days one at a time; a negative sum (dates before 1900) stays.
DateTimeRec UTToGST(const DateTimeRec& UT) {
    DateTimeRec GST = UT;
    double T = (DateToJD(UT) - 2415020.0) / 36525.0;
    double R = 6.6460656 + 2400.051262 * T + 2.581e-5 * (T * T);
    double U = UT.Hour + UT.Minute / 60.0 + UT.Second / 3600.0;
    double G = 1.002737908 * U + R;
    while (G > 24) G = G - 24;
    SplitHours(G, GST);
    return GST;
}

// Local sidereal time from Greenwich sidereal time and the site longitude
// (degrees, east positive). Only a negative result is brought back by one
// day; an eastern site can give 24 hours or more.
DateTimeRec GSTToLST(const ModelState& s, const DateTimeRec& GST, const DateTimeRec& LT) {
    DateTimeRec LST = LT;
    double longitudeTime = -s.Longitude / 15;
    double L = GST.Hour + GST.Minute / 60.0 + GST.Second / 3600.0 - longitudeTime;
    if (L < 0) L = L + 24;
    SplitHours(L, LST);
    return LST;
}

DateTimeRec LTToLST(const ModelState& s, const DateTimeRec& LT) {
    DateTimeRec UT = LTToUT(LT);
    DateTimeRec GST = UTToGST(UT);
    if (s.TestLog) {
        AddTestLogLine(s, "LTToLST: UT = " + DateTimeStr(UT));
        AddTestLogLine(s, "LTToLST: GST = " + DateTimeStr(GST));
    }
    return GSTToLST(s, GST, LT);
}

double LTToLSTRad(const ModelState& s, const DateTimeRec& LT) {
    DateTimeRec LST = LTToLST(s, LT);
    return (LST.Hour + LST.Minute / 60.0 + LST.Second / 3600.0) * 3.141592654 / 12;
}

// Calendar date and time of day (universal) of a Julian day, Meeus chapter 7.
DateTimeRec JDToDate(double JD, const ModelState* Log) {
    DateTimeRec d;
    double Z = VbInt(JD + 0.5);
    double F = JD + 0.5 - Z;
    double A;
    if (Z < 2299161) {
        A = Z;
    } else {
        double a = VbTrunc((Z - 1867216.25) / 36524.25);
        A = Z + 1 + a - VbTrunc(a / 4);
    }
    double B = A + 1524;
    double C = VbTrunc((B - 122.1) / 365.25);
    double D = VbTrunc(365.25 * C);
    double E = VbTrunc((B - D) / 30.6001);
    d.Month = ToField(E < 13.5 ? E - 1 : E - 13);
    d.Year = ToField(d.Month > 2.5 ? C - 4716 : C - 4715);
    double dayWithFraction = B - D - VbTrunc(30.6001 * E) + F;
    d.Day = ToField(VbInt(dayWithFraction));
    double hours = (dayWithFraction - d.Day) * 24;
    d.Hour = ToField(VbInt(hours));
    double minutes = (hours - d.Hour) * 60;
    d.Minute = ToField(VbInt(minutes));
    d.Second = (minutes - d.Minute) * 60;
    if (Log && Log->TestLog) {
        AddTestLogLine(*Log, NumberText(A) + "  " + NumberText(B) + "  " + NumberText(C) + "  " +
                                 NumberText(D) + "  " + NumberText(E) + "  " + NumberText(F));
    }
    return d;
}

// Local sidereal time (radians) of a Julian day at the site longitude. The
// sidereal hours are multiplied once more by the sidereal rate, which the
// true local sidereal time of LTToLSTRad does not do: the result runs ahead
// of it by 0.002737908 of the hours summed, up to about 1.45 degrees for an
// eastern site, where the sum can pass 24 hours before the product is taken.
// Clients rely on this value as it is.
double JDtoLSTRad(const ModelState& s, double JD) {
    DateTimeRec UT = JDToDate(JD, &s);
    DateTimeRec GST = UTToGST(UT);
    if (s.TestLog) {
        AddTestLogLine(s, "JDtoLSTRad: UT = " + DateTimeStr(UT));
        AddTestLogLine(s, "JDtoLSTRad: GST = " + DateTimeStr(GST));
    }
    double L = GST.Hour + GST.Minute / 60.0 + GST.Second / 3600.0 + s.Longitude / 15;
    if (L < 0) L = L + 24;
    L = L * 1.002737908;
    if (L > 24) L = L - 24;
    return L * 3.141592654 / 12;
}

// "2000/1/10  5:30:0  (False -5)": the record for the Test Log list.
std::string DateTimeStr(const DateTimeRec& d) {
    return IntText(d.Year) + "/" + IntText(d.Month) + "/" + IntText(d.Day) + "  " +
           IntText(d.Hour) + ":" + IntText(d.Minute) + ":" + NumberText(d.Second) + "  (" +
           BoolText(d.DST) + " " + NumberText(d.TimeZone) + ")";
}
