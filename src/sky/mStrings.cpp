#include "sky/mStrings.h"

#include <cmath>

#include "model/Constants.h"
#include "sky/NumberText.h"
#include "sky/AngleUnits.h"
#include "sky/Rounding.h"
#include "sky/Sexagesimal.h"
#include "sky/TextScan.h"

namespace {

// One field of a typed-in declination: present when its text is not empty,
// negative when the text began with "-".
struct SignedField {
    bool Present = false;
    bool Negative = false;
    double Value = 0.0;
};

// Reads a field text; false when it is present but not numeric.
bool ReadSignedField(const std::string& text, SignedField& field) {
    std::string t = TrimBlanks(text);
    field = SignedField{};
    if (t.empty()) return true;
    field.Present = true;
    if (t[0] == '-') {
        field.Negative = true;
        t.erase(0, 1);
    }
    return ParseNumber(t, field.Value);
}

}  // namespace

std::string TimeRecToStr(const DateTimeRec& t) {
    return PadTwo(IntText(t.Hour)) + ":" + PadTwo(IntText(t.Minute)) + ":" +
           WholeFieldText(VbInt(t.Second));
}

// Accepts "12:30:05", "12h30m05s", "12 30 05" (minutes and seconds
// optional), a lone number in degrees, and a leading "-" that makes the
// result negative. Gives radians, or kBadAngleText when the text is bad or
// the unsigned angle lies outside 0 to a full turn.
double RAStrToRad(const std::string& Text) {
    std::string text = TrimBlanks(Text);
    double sign = 1;
    if (!text.empty() && text[0] == '-') {
        text.erase(0, 1);
        sign = -1;
    }
    double hours = 0;
    const TextMark hourMark = FindFirstKind(text, {":", "h", "H", " "});
    if (!hourMark.Found) {
        double degrees = 0;
        if (!ParseNumber(text, degrees)) return kBadAngleText;
        hours = degrees / 15;
    } else {
        if (!ParseNumber(TrimBlanks(TextBefore(text, hourMark)), hours)) return kBadAngleText;
        const std::string rest = TrimBlanks(TextBehind(text, hourMark));
        if (!rest.empty()) {
            const TextMark minuteMark = FindFirstKind(rest, {":", "m", "M", " "});
            double minutes = 0;
            if (!minuteMark.Found) {
                if (!ParseNumber(rest, minutes)) return kBadAngleText;
                hours = hours + minutes / 60;
            } else {
                if (!ParseNumber(TrimBlanks(TextBefore(rest, minuteMark)), minutes)) {
                    return kBadAngleText;
                }
                hours = hours + minutes / 60;
                std::string secondsText = TrimBlanks(TextBehind(rest, minuteMark));
                if (!secondsText.empty()) {
                    const TextMark secondMark = FindFirstKind(secondsText, {":", "s", "S"});
                    if (secondMark.Found)
                        secondsText = TrimBlanks(TextBefore(secondsText, secondMark));
                    double seconds = 0;
                    if (!ParseNumber(secondsText, seconds)) return kBadAngleText;
                    hours = hours + seconds / 3600;
                }
            }
        }
    }
    const double R = hours * kHalfTurn / 12;
    if (R >= 0 && R <= kFullTurn) return R * sign;
    return kBadAngleText;
}

// Accepts "-10:20:30", "-10d20m30s", "-10° 20' 30\"", "-10 20 30" (minutes
// and seconds optional) or a lone number in degrees. One field may carry a
// "-", and only the first field that is not 0: "-0:30" and "0:-30" both mean
// minus half a degree. Gives radians, or kBadAngleText on a bad text or a
// sum beyond the range of a double. No range test otherwise.
double DecStrToRad(const std::string& Text) {
    const std::string text = TrimBlanks(Text);
    double degreesValue = 0;
    const TextMark degreeMark = FindFirstKind(text, {":", "d", "D", kDegreeSign, " "});
    if (!degreeMark.Found) {
        if (!ParseNumber(text, degreesValue)) return kBadAngleText;
    } else {
        const std::string degreesText = TextBefore(text, degreeMark);
        std::string minutesText;
        std::string secondsText;
        const std::string rest = TrimBlanks(TextBehind(text, degreeMark));
        if (!rest.empty()) {
            minutesText = rest;
            const TextMark minuteMark = FindFirstKind(rest, {":", "m", "M", "'", " "});
            if (minuteMark.Found) {
                minutesText = TextBefore(rest, minuteMark);
                secondsText = TrimBlanks(TextBehind(rest, minuteMark));
                const TextMark secondMark = FindFirstKind(secondsText, {":", "s", "S", "\""});
                if (secondMark.Found) secondsText = TextBefore(secondsText, secondMark);
            }
        }
        SignedField d, m, s;
        if (!ReadSignedField(degreesText, d) || !d.Present) return kBadAngleText;
        if (!ReadSignedField(minutesText, m) || !ReadSignedField(secondsText, s)) {
            return kBadAngleText;
        }
        const int negatives = int{d.Negative} + int{m.Negative} + int{s.Negative};
        if (negatives >= 2) return kBadAngleText;
        if (m.Negative && d.Value != 0) return kBadAngleText;
        if (s.Negative && (d.Value != 0 || m.Value != 0)) return kBadAngleText;
        const double sign = (d.Negative ? -1 : 1) * (m.Negative ? -1 : 1) * (s.Negative ? -1 : 1);
        degreesValue = (d.Value + m.Value / 60 + s.Value / 3600) * sign;
    }
    // Fields near the largest double can add up beyond it ("1.79e308
    // 1.79e308"): an infinity is no angle, so that text is bad like any other.
    const double radians = DegToRadians(degreesValue);
    return std::isfinite(radians) ? radians : kBadAngleText;
}

// RA in radians to hours, minutes and seconds rounded to Decimals places,
// hours taken modulo 24 once. UseSymbols gives 12h30m05.25s, else
// "12 30 05.25". No sign of its own.
std::string RAToHMSStr(double Angle, bool UseSymbols, int16_t Decimals) {
    const SexagesimalTexts t = HourFieldTexts(Angle, Decimals);
    if (UseSymbols) return t.Whole + "h" + t.Minutes + "m" + t.Seconds + "s";
    return t.Whole + " " + t.Minutes + " " + t.Seconds;
}

// Angle in radians to degrees, arcminutes and arcseconds rounded to Decimals
// places, "-" in front for a negative angle, no range reduction. UseSymbols
// gives 12° 30' 05.2", else "12 30 05.2".
std::string AngleToDMSStr(double Angle, bool UseSymbols, int16_t Decimals) {
    const SexagesimalTexts t = DegreeFieldTexts(Angle, Decimals);
    std::string text;
    if (UseSymbols) {
        text = t.Whole + kDegreeSign + " " + t.Minutes + "' " + t.Seconds + "\"";
    } else {
        text = t.Whole + " " + t.Minutes + " " + t.Seconds;
    }
    return Angle < 0 ? "-" + text : text;
}
