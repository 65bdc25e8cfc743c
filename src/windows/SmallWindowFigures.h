// The texts of the two small windows, Advanced Features and Parameters,
// worked out from the model so that the windows only copy them into labels.
#pragma once

#include <string>

struct ModelState;

// An RMS error in radians as arcseconds with 3 decimals and the
// double-quote character.
std::string RMSText(double RMS);

// The scale factor labels of the Advanced Features window.
struct ScaleFactorFigures {
    std::string lblPhiSF;
    std::string lblThetaSF;
    std::string lblPhiP;  // (PhiSF - 1) x 100 with 4 decimals and "%"
    std::string lblThetaP;
    std::string lblRMS;  // RMSErrSel as RMSText
};

// DisplayData's figures: the factors with 6 decimals, as they stand.
ScaleFactorFigures ComputeScaleFactorFigures(const ModelState& s);

// The labels of the Parameters window, a snapshot of the site and mount.
struct SetupFigures {
    std::string lblLat;
    std::string lblTemp;
    std::string lblPres;
    std::string lblType;
    std::string lblPhiCounts;
    std::string lblPhiDir;
    std::string lblPhiSF;
    std::string lblThetaCounts;
    std::string lblThetaDir;
    std::string lblThetaSF;
};

SetupFigures ComputeSetupFigures(const ModelState& s);
