#include "server/cAztrueStatistics.h"

#include "autoalign/NextPoints.h"
#include "files/TraceLog.h"
#include "model/Constants.h"
#include "model/CrossValidation.h"
#include "model/FitStatistics.h"
#include "model/ModelState.h"
#include "model/Residuals.h"
#include "model/Solver.h"
#include "server/ServerProcess.h"
#include "server/TraceText.h"
#include "sky/NumberText.h"

cAztrueStatistics::cAztrueStatistics(ModelState& Model) : model_(Model) {}

cAztrueStatistics::cAztrueStatistics() : cAztrueStatistics(TheModel()) {}

void cAztrueStatistics::FitAgain() {
    Calibrate(model_);
    ComputeResiduals(model_);
}

void cAztrueStatistics::GetTermStatistics(std::vector<int16_t>& Terms, std::vector<double>& Coef,
                                          std::vector<double>& Sigma) {
    LogLine("GetTermStatistics()");
    FitAgain();
    const FitStatistics f = ComputeFitStatistics(model_);
    Terms.clear();
    Coef.clear();
    Sigma.clear();
    for (const TermStatistic& t : f.Terms) {
        Terms.push_back(t.Term);
        Coef.push_back(t.Coef);
        Sigma.push_back(t.Sigma);
    }
}

void cAztrueStatistics::GetCrossValidatedErrors(double& RMS, double& Max) {
    LogLine("GetCrossValidatedErrors()");
    FitAgain();
    const CrossValidation cv = CrossValidate(model_);
    RMS = cv.RMS;
    Max = cv.Max;
}

void cAztrueStatistics::GetCorrelations(double Limit, std::vector<int16_t>& TermA,
                                        std::vector<int16_t>& TermB, std::vector<double>& Rho) {
    LogLineWith([&] { return CallText("GetCorrelations", {NumberText(Limit)}); });
    FitAgain();
    TermA.clear();
    TermB.clear();
    Rho.clear();
    for (const CorrelatedPair& p : CorrelatedPairs(ComputeFitStatistics(model_), Limit)) {
        TermA.push_back(p.TermA);
        TermB.push_back(p.TermB);
        Rho.push_back(p.Rho);
    }
}

bool cAztrueStatistics::SuggestPoints(int Count, std::vector<double>& Azimuth,
                                      std::vector<double>& Elevation) {
    LogLineWith([&] { return CallText("SuggestPoints", {IntText(Count)}); });
    Azimuth.clear();
    Elevation.clear();
    if (Count < 0 || Count > kMaxSuggestedPoints) return true;
    FitAgain();
    const NextPoints next = SuggestNextPoints(model_, Count);
    for (const SuggestedPoint& p : next.Points) {
        Azimuth.push_back(p.Point.Phi);
        Elevation.push_back(kHalfTurn / 2 - p.Point.Theta);
    }
    return next.Read;
}
