// The server's calibration operations: adding, reading, removing and
// weighing calibration points, and the term presets.
#include "files/TraceLog.h"
#include "model/Constants.h"
#include "model/ModelState.h"
#include "model/Residuals.h"
#include "model/Solver.h"
#include "model/Terms.h"
#include "server/TraceText.h"
#include "server/cAztrue.h"
#include "sky/NumberText.h"

void cAztrue::AddCalPoint(double PhiEnc, double ThetaEnc, double RA2000, double Dec2000, double LST,
                          double JD, const std::string& TimeStr, const std::string& DateStr) {
    LogLineWith([&] {
        return CallText("AddCalPoint",
                        {NumberText(PhiEnc), NumberText(ThetaEnc), NumberText(RA2000),
                         NumberText(Dec2000), NumberText(LST), NumberText(JD), TimeStr, DateStr});
    });
    // A full table refuses the point silently.
    if (model_.NumCalPoints >= kMaxCalPoints) return;
    model_.NumCalPoints = static_cast<int16_t>(model_.NumCalPoints + 1);
    CalPoint& p = model_.CalPoints[model_.NumCalPoints];
    // The row may hold a point left behind by a removal or a load: its star
    // name must not reach a saved file. Its residuals stay until the fit.
    p.Name.clear();
    p.Used = true;
    p.PhiEnc = PhiEnc;
    p.ThetaEnc = ThetaEnc;
    p.RA = RA2000;
    p.Dec = Dec2000;
    p.LST = LST;
    p.JD = JD;
    p.TimeStr = TimeStr;
    p.DateStr = DateStr;
    main_.CalibrateAndDisplay();
}

// How far the client's encoders stand from the model on a known star: the
// amounts to add to its raw readings. Nothing in the model changes.
void cAztrue::SyncEncoders(double PhiEnc, double ThetaEnc, double RA2000, double Dec2000,
                           double LST, double JD, int16_t Tsign, double& PhiEncOffset,
                           double& ThetaEncOffset) {
    LogLineWith([&] {
        return CallText("SyncEncoders",
                        {NumberText(PhiEnc), NumberText(ThetaEnc), NumberText(RA2000),
                         NumberText(Dec2000), NumberText(LST), NumberText(JD), IntText(Tsign)});
    });
    double thetaModel = 0;
    double phiModel = 0;
    CelestialToEncoder(LST, JD, RA2000, Dec2000, Tsign, thetaModel, phiModel);
    // No wrap: a star across the encoder zero gives nearly a full turn.
    PhiEncOffset = phiModel - PhiEnc;
    ThetaEncOffset = thetaModel - ThetaEnc;
}

void cAztrue::GetCalPoint(int16_t Index, double& PhiEnc, double& ThetaEnc, double& RA, double& Dec,
                          double& LST, double& JD, std::string& TimeStr, std::string& DateStr,
                          bool& Used) {
    LogLineWith([&] { return CallText("GetCalPoint", {IntText(Index)}); });
    if (!ValidIndex(Index)) return;
    const CalPoint& p = model_.CalPoints[Index];
    PhiEnc = p.PhiEnc;
    ThetaEnc = p.ThetaEnc;
    RA = p.RA;
    Dec = p.Dec;
    LST = p.LST;
    JD = p.JD;
    TimeStr = p.TimeStr;
    DateStr = p.DateStr;
    Used = p.Used;
}

void cAztrue::GetCalPointErrors(int16_t Index, double& DistErr, double& RAErr, double& DecErr,
                                double& ThetaErr, double& PhiErr) {
    LogLineWith([&] { return CallText("GetCalPointErrors", {IntText(Index)}); });
    // The fit runs also for a bad index.
    Calibrate(model_);
    ComputeResiduals(model_);
    if (!ValidIndex(Index)) return;
    const CalPoint& p = model_.CalPoints[Index];
    DistErr = p.DistErr;
    RAErr = p.RAErr;
    DecErr = p.DecErr;
    ThetaErr = p.ThetaErr;
    PhiErr = p.PhiErr;
}

void cAztrue::GetErrors(double& MaxErrSel, double& RMSErrSel, double& MaxErrAll,
                        double& RMSErrAll) {
    LogLine("GetErrors()");
    Calibrate(model_);
    ComputeResiduals(model_);
    MaxErrSel = model_.MaxErrSel;
    RMSErrSel = model_.RMSErrSel;
    MaxErrAll = model_.MaxErrAll;
    RMSErrAll = model_.RMSErrAll;
}

void cAztrue::RemoveCalPoint(int16_t Index) {
    LogLineWith([&] { return CallText("RemoveCalPoint", {IntText(Index)}); });
    if (ValidIndex(Index)) {
        // Whole records move, with names, flags and residuals; the old last
        // record stays behind the count.
        for (int i = Index + 1; i <= model_.NumCalPoints; ++i) {
            model_.CalPoints[i - 1] = model_.CalPoints[i];
        }
        model_.NumCalPoints = static_cast<int16_t>(model_.NumCalPoints - 1);
    }
    main_.CalibrateAndDisplay();
}

// The presets of the Model Parameters window: the flags, then its check
// boxes follow without a fit of their own, then the one fit.
void cAztrue::EnableTermsForAltAz() {
    LogLine("EnableTermsForAltAz()");
    EnableAltAz(model_);
    main_.Display().EnableToChk();
    main_.CalibrateAndDisplay();
}

void cAztrue::EnableTermsForEquatorial() {
    LogLine("EnableTermsForEquatorial()");
    EnableGEM(model_);
    main_.Display().EnableToChk();
    main_.CalibrateAndDisplay();
}

void cAztrue::EnableAllTerms() {
    LogLine("EnableAllTerms()");
    EnableAll(model_);
    main_.Display().EnableToChk();
    main_.CalibrateAndDisplay();
}

void cAztrue::DisableAllTerms() {
    LogLine("DisableAllTerms()");
    DisableAll(model_);
    main_.Display().EnableToChk();
    main_.CalibrateAndDisplay();
}
