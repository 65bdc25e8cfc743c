#include "app/ModelQualityReport.h"

#include <cmath>
#include <iomanip>
#include <string>

#include "app/ReportText.h"
#include "model/CrossValidation.h"
#include "model/FitStatistics.h"
#include "model/ModelState.h"
#include "model/TermCaptions.h"
#include "sky/NumberText.h"

namespace {

std::string Ratio(double x) {
    return std::isfinite(x) ? RoundedText(x, 1) : "-";
}

std::string PointText(const ModelState& s, int p) {
    const std::string& name = s.CalPoints[p].Name;
    return std::to_string(p) + (name.empty() ? "" : " (" + name + ")");
}

}  // namespace

void WriteModelQuality(const ModelState& s, const FitStatistics& f, const CrossValidation& cv,
                       std::ostream& out) {
    out << "Model quality (" << f.NumUsed << " used points, " << f.NumFitted << " fitted terms)\n";
    out << "  Population SD       " << As(Arcsec(s, f.PopulationSD), 2)
        << "   RMS x sqrt(N / (N - k))\n";
    out << "  Error per axis      " << As(Arcsec(s, f.AxisSigma), 2)
        << "   scatter of one sky axis the residuals show\n";
    out << "  Cross-validated     RMS " << As(Arcsec(s, cv.RMS), 2) << " (the fit's "
        << As(Arcsec(s, f.RMS), 2) << "), largest " << As(Arcsec(s, cv.Max), 2);
    if (cv.MaxPoint > 0) out << " at point " << PointText(s, cv.MaxPoint);
    out << "\n";
    out << "  Outlier candidates  ";
    if (cv.Outliers.empty()) out << "none";
    for (size_t i = 0; i < cv.Outliers.size(); ++i)
        out << (i ? ", " : "") << PointText(s, cv.Outliers[i]);
    if (std::isfinite(f.PopulationSD))
        out << " above " << As(Arcsec(s, 3 * f.PopulationSD), 2) << " (3 x population SD)\n";
    else
        out << " (no population SD: it needs more used points than fitted terms)\n";
    out << "  Term" << std::string(56, ' ') << "Value     Std error   Value/error\n";
    for (const TermStatistic& t : f.Terms) {
        out << "  [" << Padded(std::to_string(t.Term), 2) << "] " << std::left << std::setw(48)
            << TermCaptionText(t.Term) << std::right << Padded(As(Arcsec(s, t.Coef)), 12)
            << Padded(As(Arcsec(s, t.Sigma), 2), 14) << Padded(Ratio(t.Significance), 14) << "\n";
    }
    const auto pairs = CorrelatedPairs(f, kListedCorrelation);
    out << "  Correlated pairs    ";
    if (pairs.empty()) out << "none above " << NumberText(kListedCorrelation) << "\n";
    if (!pairs.empty()) out << "above " << NumberText(kListedCorrelation) << ":\n";
    for (const CorrelatedPair& p : pairs)
        out << "    [" << Padded(std::to_string(p.TermA), 2) << "] and ["
            << Padded(std::to_string(p.TermB), 2) << "]  " << RoundedText(p.Rho, 3) << "\n";
    out << "\n";
}

void WriteModelQualityJson(const ModelState& s, const FitStatistics& f, const CrossValidation& cv,
                           std::ostream& out) {
    out << "  \"modelQuality\": {\"pointsUsed\": " << f.NumUsed
        << ", \"termsFitted\": " << f.NumFitted
        << ", \"rmsArcsec\": " << JsonNumber(Arcsec(s, f.RMS))
        << ", \"populationSDArcsec\": " << JsonNumber(Arcsec(s, f.PopulationSD))
        << ", \"axisErrorArcsec\": " << JsonNumber(Arcsec(s, f.AxisSigma)) << ",\n";
    out << "    \"crossValidated\": {\"rmsArcsec\": " << JsonNumber(Arcsec(s, cv.RMS))
        << ", \"maxArcsec\": " << JsonNumber(Arcsec(s, cv.Max)) << ", \"maxPoint\": " << cv.MaxPoint
        << ", \"outliers\": [";
    for (size_t i = 0; i < cv.Outliers.size(); ++i) out << (i ? ", " : "") << cv.Outliers[i];
    out << "], \"points\": [";
    for (size_t i = 0; i < cv.Points.size(); ++i)
        out << (i ? ", " : "") << "{\"index\": " << cv.Points[i]
            << ", \"errorArcsec\": " << JsonNumber(Arcsec(s, cv.Errors[i])) << "}";
    out << "]},\n    \"terms\": [";
    for (size_t i = 0; i < f.Terms.size(); ++i) {
        const TermStatistic& t = f.Terms[i];
        out << (i ? ",\n      " : "\n      ") << "{\"number\": " << t.Term
            << ", \"valueArcsec\": " << JsonNumber(Arcsec(s, t.Coef))
            << ", \"stdErrorArcsec\": " << JsonNumber(Arcsec(s, t.Sigma))
            << ", \"significance\": " << JsonNumber(t.Significance) << "}";
    }
    out << (f.Terms.empty() ? "],\n" : "\n    ],\n") << "    \"correlatedPairs\": [";
    const auto pairs = CorrelatedPairs(f, kListedCorrelation);
    for (size_t i = 0; i < pairs.size(); ++i)
        out << (i ? ", " : "") << "{\"termA\": " << pairs[i].TermA
            << ", \"termB\": " << pairs[i].TermB << ", \"rho\": " << JsonNumber(pairs[i].Rho)
            << "}";
    out << "]},\n";
}
