// The statistics interface of an automation object: the D-Bus types of its
// arrays around the calls of cAztrueStatistics.
#include <vector>

#include "autoalign/NextPoints.h"
#include "dbus/cAztrueService.h"
#include "server/cAztrueStatistics.h"

namespace {

template <typename T>
QList<T> ListOf(const std::vector<T>& Values) {
    return QList<T>(Values.begin(), Values.end());
}

}  // namespace

QList<short> cAztrueService::GetTermStatistics(QList<double>& Coef, QList<double>& Sigma) {
    std::vector<int16_t> terms;
    std::vector<double> coef;
    std::vector<double> sigma;
    statistics_->GetTermStatistics(terms, coef, sigma);
    Coef = ListOf(coef);
    Sigma = ListOf(sigma);
    return ListOf(terms);
}

double cAztrueService::GetCrossValidatedErrors(double& Max) {
    double rms = 0;
    statistics_->GetCrossValidatedErrors(rms, Max);
    return rms;
}

QList<short> cAztrueService::GetCorrelations(double Limit, QList<short>& TermB,
                                             QList<double>& Rho) {
    if (!AllFinite("GetCorrelations", {{"Limit", Limit}})) return {};
    std::vector<int16_t> termA;
    std::vector<int16_t> termB;
    std::vector<double> rho;
    statistics_->GetCorrelations(Limit, termA, termB, rho);
    TermB = ListOf(termB);
    Rho = ListOf(rho);
    return ListOf(termA);
}

QList<double> cAztrueService::SuggestPoints(short Count, QList<double>& Elevation) {
    if (Count < 0 || Count > kMaxSuggestedPoints) {
        RefuseCall(QDBusError::InvalidArgs,
                   QStringLiteral("SuggestPoints: Count must be from 0 to %1, not %2")
                       .arg(kMaxSuggestedPoints)
                       .arg(Count));
        return {};
    }
    std::vector<double> azimuth;
    std::vector<double> elevation;
    if (!statistics_->SuggestPoints(Count, azimuth, elevation)) {
        RefuseCall(QDBusError::Failed,
                   QStringLiteral("SuggestPoints: the candidate directions (Points.txt in the "
                                  "program's folder) cannot be read"));
        return {};
    }
    Elevation = ListOf(elevation);
    return ListOf(azimuth);
}
