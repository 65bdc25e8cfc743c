#include "sky/Sexagesimal.h"

#include "model/Constants.h"
#include "sky/NumberText.h"
#include "sky/Rounding.h"

SexagesimalParts SexagesimalSplit(double A) {
    SexagesimalParts p;
    p.Whole = VbInt(A);
    const double M = (A - p.Whole) * 60;
    p.Minutes = VbInt(M);
    p.Seconds = (M - p.Minutes) * 60;
    return p;
}

std::string CarrySeconds(SexagesimalParts& p, int decimals) {
    // The value of the rounded text is the rounded value: rounding the exact
    // binary value once, for both the test and the text, keeps them in step.
    // A NaN has no rounded value and carries nothing.
    double rounded = 0.0;
    ParseNumber(RoundedText(p.Seconds, decimals), rounded);
    if (rounded >= 60) {
        p.Seconds -= 60;
        p.Minutes += 1;
    }
    if (p.Minutes >= 60) {
        p.Minutes -= 60;
        p.Whole += 1;
    }
    return PadTwo(RoundedText(p.Seconds, decimals));
}

std::string PadTwo(const std::string& text) {
    return text.size() < 2 ? "0" + text : text;
}

std::string WholeFieldText(double v) {
    return PadTwo(NumberText(v));
}

SexagesimalTexts HourFieldTexts(double RA, int decimals) {
    const double H = RA * 12 / kHalfTurn;
    SexagesimalParts p = SexagesimalSplit(H);
    SexagesimalTexts t;
    t.Seconds = CarrySeconds(p, decimals);
    if (p.Whole >= 24) p.Whole -= 24;
    t.Whole = WholeFieldText(p.Whole);
    t.Minutes = WholeFieldText(p.Minutes);
    return t;
}

SexagesimalTexts DegreeFieldTexts(double Angle, int decimals) {
    const double sign = Angle < 0 ? -1 : 1;
    const double D = Angle * 180 / kHalfTurn * sign;
    SexagesimalParts p = SexagesimalSplit(D);
    SexagesimalTexts t;
    t.Seconds = CarrySeconds(p, decimals);
    t.Whole = WholeFieldText(p.Whole);
    t.Minutes = WholeFieldText(p.Minutes);
    return t;
}
