#include "model/FittedOffsets.h"

#include "model/Constants.h"
#include "model/ModelState.h"

// EncodersToAngles gives Phi = -+ full turn x (PhiEnc - PhiEncOffset) / Cp,
// minus when PhiPosCW: raising the offset by one count raises Phi by
// full turn / Cp when PhiPosCW, and lowers it otherwise. Theta is
// (ThetaEnc - ThetaEncOffset) x full turn / Ct, taken from a quarter turn
// when ThetaPosUp: raising the offset raises Theta when ThetaPosUp.
OffsetTotals FittedOffsets(const ModelState& s) {
    const double Cp = s.PhiSF * s.PhiCountsPerRev;
    const double Ct = s.ThetaSF * s.ThetaCountsPerRev;
    const double phiSense = s.PhiPosCW ? 1.0 : -1.0;
    const double thetaSense = s.ThetaPosUp ? 1.0 : -1.0;
    OffsetTotals t;
    t.PhiCounts = s.PhiEncOffset + phiSense * s.TermCoef[1] * Cp / kFullTurn;
    t.ThetaCounts = s.ThetaEncOffset + thetaSense * s.TermCoef[2] * Ct / kFullTurn;
    t.Phi = phiSense * kFullTurn * s.PhiEncOffset / Cp + s.TermCoef[1];
    t.Theta = thetaSense * kFullTurn * s.ThetaEncOffset / Ct + s.TermCoef[2];
    t.North = s.ErrorNorth + s.TermCoef[3];
    t.West = s.ErrorWest + s.TermCoef[4];
    return t;
}
