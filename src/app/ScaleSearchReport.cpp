#include "app/ScaleSearchReport.h"

#include "app/ReportText.h"
#include "model/ModelState.h"
#include "sky/NumberText.h"

namespace {

std::string Percent(double factor) {
    return RoundedText((factor - 1) * 100, 5);
}

}  // namespace

void WriteScaleSearch(const ModelState& s, const ScaleSearchReport& r, std::ostream& out) {
    const ScaleSearchRun& run = r.Result.Run;
    out << "Scale factor search (seed " << r.Seed << ")\n";
    out << "  Phi scale factor    " << RoundedText(s.PhiSF, 7) << " (" << Percent(s.PhiSF)
        << "%)\n";
    out << "  Theta scale factor  " << RoundedText(s.ThetaSF, 7) << " (" << Percent(s.ThetaSF)
        << "%)\n";
    out << "  Trials              " << NumberText(run.Trials) << ", kept "
        << NumberText(run.Successes) << "\n";
    out << "  RMS error selected  " << As(Arcsec(s, r.Result.RMSBefore), 3) << " before, "
        << As(Arcsec(s, s.RMSErrSel), 3) << " after\n";
    if (!r.SavedTo.empty()) out << "  Saved to            " << r.SavedTo << "\n";
    out << "\n";
}

void WriteScaleSearchJson(const ModelState& s, const ScaleSearchReport& r, std::ostream& out) {
    const ScaleSearchRun& run = r.Result.Run;
    out << "  \"scaleSearch\": {\"seed\": " << r.Seed << ", \"phiSF\": " << RoundedText(s.PhiSF, 7)
        << ", \"phiPercent\": " << Percent(s.PhiSF)
        << ", \"thetaSF\": " << RoundedText(s.ThetaSF, 7)
        << ", \"thetaPercent\": " << Percent(s.ThetaSF)
        << ", \"trials\": " << NumberText(run.Trials) << ", \"kept\": " << NumberText(run.Successes)
        << ", \"rmsBeforeArcsec\": " << JsonNumber(Arcsec(s, r.Result.RMSBefore))
        << ", \"rmsAfterArcsec\": " << JsonNumber(Arcsec(s, s.RMSErrSel))
        << ", \"savedTo\": " << (r.SavedTo.empty() ? "null" : JsonString(r.SavedTo)) << "},\n";
}
