#include "windows/SmallWindowFigures.h"

#include "model/ModelState.h"
#include "sky/NumberText.h"

std::string RMSText(double RMS) {
    return RoundedText(RMS * (180 / kHalfTurn) * 3600, 3) + "\"";
}

ScaleFactorFigures ComputeScaleFactorFigures(const ModelState& s) {
    ScaleFactorFigures f;
    f.lblPhiSF = RoundedText(s.PhiSF, 6);
    f.lblThetaSF = RoundedText(s.ThetaSF, 6);
    f.lblPhiP = RoundedText((s.PhiSF - 1) * 100, 4) + "%";
    f.lblThetaP = RoundedText((s.ThetaSF - 1) * 100, 4) + "%";
    f.lblRMS = RMSText(s.RMSErrSel);
    return f;
}

SetupFigures ComputeSetupFigures(const ModelState& s) {
    SetupFigures f;
    f.lblTemp = RoundedText(s.Temperature, 0) + " C";
    f.lblPres = RoundedText(s.Pressure, 0) + " millibars";
    f.lblPhiCounts = RoundedText(s.PhiCountsPerRev, 7);
    f.lblThetaCounts = RoundedText(s.ThetaCountsPerRev, 7);
    f.lblThetaSF = RoundedText(s.ThetaSF, 7);
    f.lblPhiSF = RoundedText(s.PhiSF, 7);
    f.lblPhiDir = s.PhiPosCW ? "CW" : "CCW";
    f.lblThetaDir = s.ThetaPosUp ? "Upward" : "Downward";
    // Degrees to radians left to right as written, not by one factor.
    f.lblLat = s.Str.DecRadToStr(s.Latitude * kHalfTurn / 180, "a");
    f.lblType = s.IsAltAz ? "Alt-Az" : (s.IsGEM ? "GEM" : "Fork Eq");
    return f;
}
