#include "windows/DisplayFigures.h"

#include <cmath>

#include "model/FitStatistics.h"
#include "model/ModelState.h"
#include "sky/NumberText.h"

std::string ErrStr(double Value) {
    const double Degrees = Value * 180 / kHalfTurn;
    std::string Text = RoundedText(Degrees, 2) + "\u00B0";
    if (std::fabs(Degrees) < 1) {
        const double Minutes = Value * 180 * 60 / kHalfTurn;
        Text = RoundedText(Minutes, 2) + "'";
        if (std::fabs(Minutes) < 1) {
            const double Seconds = Value * 180 * 3600 / kHalfTurn;
            Text = RoundedText(Seconds, 1) + "\"";
        }
    }
    return Text;
}

std::string TermTipText(double Sigma, double Significance) {
    if (!std::isfinite(Sigma)) return "Standard error unknown: no more observations than terms";
    return "Standard error " + ErrStr(Sigma) + ", significance " + RoundedText(Significance, 1);
}

DisplayFigures ComputeDisplayFigures(const ModelState& s) {
    DisplayFigures f;
    MainFigures& m = f.Main;
    ModelParameterFigures& e = f.Parameters;

    // The encoder offsets are counts; they are added and shown as radians,
    // which they are with the default counts per turn.
    const double PhiTotal = s.TermCoef[1] + s.PhiEncOffset;
    const double ThetaTotal = s.TermCoef[2] + s.ThetaEncOffset;
    const double NorthTotal = s.TermCoef[3] + s.ErrorNorth;
    const double WestTotal = s.TermCoef[4] + s.ErrorWest;

    e.lblTheta0 = ErrStr(ThetaTotal);
    e.lblPhi0 = ErrStr(PhiTotal);

    m.lblNorthDir = NorthTotal >= 0 ? "to North" : "to South";
    m.lblWestDir = WestTotal >= 0 ? "to West" : "to East";

    // The main window shows the size and says the direction in words; the
    // Model Parameters window shows the signed value.
    if (s.TermActive[3]) {
        m.lblErr3 = ErrStr(std::fabs(NorthTotal));
        e.lblErr[3] = ErrStr(NorthTotal);
        m.NorthDirVisible = true;
    }
    if (s.TermActive[4]) {
        m.lblErr4 = ErrStr(std::fabs(WestTotal));
        e.lblErr[4] = ErrStr(WestTotal);
        m.WestDirVisible = true;
    }
    for (int i = 5; i <= s.NumTerms && i <= kNumTerms; ++i) {
        if (s.TermActive[static_cast<size_t>(i)]) {
            e.lblErr[static_cast<size_t>(i)] = ErrStr(s.TermCoef[static_cast<size_t>(i)]);
        }
    }

    for (const TermStatistic& t : ComputeFitStatistics(s).Terms)
        e.TermTip[static_cast<size_t>(t.Term)] = TermTipText(t.Sigma, t.Significance);

    m.lblRMSSelected = e.lblRMSSelected = ErrStr(s.RMSErrSel);
    m.lblMaxSelected = e.lblMaxSelected = ErrStr(s.MaxErrSel);
    m.lblMaxAll = e.lblMaxAll = ErrStr(s.MaxErrAll);
    m.lblRMSAll = e.lblRMSAll = ErrStr(s.RMSErrAll);

    e.chkRefraction = s.EnableRefraction;
    e.txtMaxSensitivity = RoundedText(s.MaxSensitivity, 1);

    // The colour limit is the fixed 300, not MaxSensitivity.
    m.SensitivityColor = e.SensitivityColor =
        s.Sensitivity <= 300 ? kSensitivityOkColor : kSensitivityHighColor;
    m.lblSensitivity = e.lblSensitivity =
        s.Sensitivity >= 10000 ? "> 9999" : RoundedText(s.Sensitivity, 0);

    m.lblNum = IntText(s.NumPointsUsed) + "/" + IntText(s.NumCalPoints);

    // The row "Selected Points" stays blank while all points are in use.
    if (s.NumPointsUsed == s.NumCalPoints) {
        m.lblRMSSelected.clear();
        m.lblMaxSelected.clear();
        e.lblRMSSelected.clear();
        e.lblMaxSelected.clear();
    }
    return f;
}
