#include "app/FitReport.h"

#include <cmath>
#include <iomanip>
#include <utility>

#include "app/FitNotes.h"
#include "app/ModelQualityReport.h"
#include "app/ReportText.h"
#include "app/ScaleSearchReport.h"
#include "model/CrossValidation.h"
#include "model/FitStatistics.h"
#include "model/FittedOffsets.h"
#include "model/ModelState.h"
#include "model/TermCaptions.h"
#include "sky/NumberText.h"

namespace {

// Encoder counts as the angle they turn the axis by, in arcseconds.
double CountsToArcsec(const ModelState& s, double counts, double countsPerRev, double scale) {
    return Arcsec(s, counts * 6.283185308 / (countsPerRev * scale));
}

std::string MountTypeText(const ModelState& s) {
    if (s.IsAltAz) return "alt-azimuth";
    return s.IsGEM ? "German equatorial" : "equatorial fork";
}

}  // namespace

void WriteFitReport(const ModelState& s, const std::string& fileName, std::ostream& out,
                    bool withStats, const ScaleSearchReport* Search) {
    const OffsetTotals f = FittedOffsets(s);
    const FitStatistics stats = ComputeFitStatistics(s);
    out << s.Version << ": fit of " << fileName << "\n\n";
    out << "Site\n";
    out << "  Latitude            " << NumberText(s.Latitude) << " deg\n";
    out << "  Longitude           " << NumberText(s.Longitude) << " deg\n";
    out << "  Temperature         " << NumberText(s.Temperature) << " C\n";
    out << "  Pressure            " << NumberText(s.Pressure) << " mbar\n";
    out << "  Refraction          " << (s.EnableRefraction ? "on" : "off") << "\n";
    out << "Mount\n";
    out << "  Type                " << MountTypeText(s) << "\n";
    out << "  Theta encoder       " << NumberText(s.ThetaCountsPerRev) << " counts per turn, scale "
        << NumberText(s.ThetaSF) << ", counts " << (s.ThetaPosUp ? "up" : "down") << "\n";
    out << "  Phi encoder         " << NumberText(s.PhiCountsPerRev) << " counts per turn, scale "
        << NumberText(s.PhiSF) << ", counts " << (s.PhiPosCW ? "clockwise" : "counter-clockwise")
        << "\n";
    out << "  Max sensitivity     " << NumberText(s.MaxSensitivity) << "\n\n";

    out << "Fit\n";
    out << "  Points used         " << s.NumPointsUsed << " of " << s.NumCalPoints << "\n";
    out << "  RMS error           all " << As(Arcsec(s, s.RMSErrAll), 2) << ", selected "
        << As(Arcsec(s, s.RMSErrSel), 2) << "\n";
    out << "  Max error           all " << As(Arcsec(s, s.MaxErrAll), 2) << ", selected "
        << As(Arcsec(s, s.MaxErrSel), 2) << "\n";
    out << "  Sensitivity         " << RoundedText(s.Sensitivity, 1) << "\n";
    out << "  Axis misalignment   " << As(std::fabs(Arcsec(s, f.North))) << " to "
        << (f.North >= 0 ? "North" : "South") << ", " << As(std::fabs(Arcsec(s, f.West))) << " to "
        << (f.West >= 0 ? "West" : "East") << "\n";
    out << "  Theta offset        " << NumberText(f.ThetaCounts) << " counts ("
        << As(CountsToArcsec(s, f.ThetaCounts, s.ThetaCountsPerRev, s.ThetaSF)) << ")\n";
    out << "  Phi offset          " << NumberText(f.PhiCounts) << " counts ("
        << As(CountsToArcsec(s, f.PhiCounts, s.PhiCountsPerRev, s.PhiSF)) << ")\n\n";

    out << "Active terms\n";
    for (int t = 5; t <= s.NumTerms; ++t) {
        if (!s.TermActive[t]) continue;
        out << "  [" << Padded(std::to_string(t), 2) << "] " << std::left << std::setw(56)
            << TermCaptionText(t) << std::right << Padded(As(Arcsec(s, s.TermCoef[t])), 10) << "\n";
    }
    out << "\n";
    WriteFitNotes(s, MakeFitNotes(s, stats), out);
    if (Search) WriteScaleSearch(s, *Search, out);
    if (withStats) WriteModelQuality(s, stats, CrossValidate(s), out);
    out << "Points (errors in arcseconds, model minus measurement)\n";
    out << "    #  Used  Name                    Dist       RA      Dec    Theta      Phi\n";
    for (int i = 1; i <= s.NumCalPoints; ++i) {
        const CalPoint& p = s.CalPoints[i];
        std::string name = p.Name.substr(0, 20);
        out << Padded(std::to_string(i), 5) << "  " << (p.Used ? "yes " : "no  ") << "  "
            << std::left << std::setw(20) << name << std::right
            << Padded(RoundedText(Arcsec(s, p.DistErr), 2), 9)
            << Padded(RoundedText(Arcsec(s, p.RAErr), 2), 9)
            << Padded(RoundedText(Arcsec(s, p.DecErr), 2), 9)
            << Padded(RoundedText(Arcsec(s, p.ThetaErr), 2), 9)
            << Padded(RoundedText(Arcsec(s, p.PhiErr), 2), 9) << "\n";
    }
}

void WriteFitReportJson(const ModelState& s, const std::string& fileName, std::ostream& out,
                        bool withStats, const ScaleSearchReport* Search) {
    const OffsetTotals f = FittedOffsets(s);
    const FitStatistics stats = ComputeFitStatistics(s);
    out << "{\n";
    out << "  \"version\": " << JsonString(s.Version) << ",\n";
    out << "  \"file\": " << JsonString(fileName) << ",\n";
    out << "  \"site\": {\"latitude\": " << JsonNumber(s.Latitude)
        << ", \"longitude\": " << JsonNumber(s.Longitude)
        << ", \"temperature\": " << JsonNumber(s.Temperature)
        << ", \"pressure\": " << JsonNumber(s.Pressure)
        << ", \"refraction\": " << (s.EnableRefraction ? "true" : "false") << "},\n";
    out << "  \"mount\": {\"type\": " << JsonString(MountTypeText(s))
        << ", \"thetaCountsPerRev\": " << JsonNumber(s.ThetaCountsPerRev)
        << ", \"phiCountsPerRev\": " << JsonNumber(s.PhiCountsPerRev)
        << ", \"thetaSF\": " << JsonNumber(s.ThetaSF) << ", \"phiSF\": " << JsonNumber(s.PhiSF)
        << ", \"thetaPosUp\": " << (s.ThetaPosUp ? "true" : "false")
        << ", \"phiPosCW\": " << (s.PhiPosCW ? "true" : "false")
        << ", \"maxSensitivity\": " << JsonNumber(s.MaxSensitivity) << "},\n";
    out << "  \"pointsUsed\": " << s.NumPointsUsed << ",\n";
    out << "  \"pointsTotal\": " << s.NumCalPoints << ",\n";
    out << "  \"rmsErrorAllArcsec\": " << JsonNumber(Arcsec(s, s.RMSErrAll)) << ",\n";
    out << "  \"rmsErrorSelectedArcsec\": " << JsonNumber(Arcsec(s, s.RMSErrSel)) << ",\n";
    out << "  \"maxErrorAllArcsec\": " << JsonNumber(Arcsec(s, s.MaxErrAll)) << ",\n";
    out << "  \"maxErrorSelectedArcsec\": " << JsonNumber(Arcsec(s, s.MaxErrSel)) << ",\n";
    out << "  \"sensitivity\": " << JsonNumber(s.Sensitivity) << ",\n";
    out << "  \"axisMisalignment\": {\"northArcsec\": " << JsonNumber(Arcsec(s, f.North))
        << ", \"westArcsec\": " << JsonNumber(Arcsec(s, f.West)) << "},\n";
    out << "  \"encoderOffsets\": {\"thetaCounts\": " << JsonNumber(f.ThetaCounts)
        << ", \"phiCounts\": " << JsonNumber(f.PhiCounts) << ", \"thetaArcsec\": "
        << JsonNumber(CountsToArcsec(s, f.ThetaCounts, s.ThetaCountsPerRev, s.ThetaSF))
        << ", \"phiArcsec\": "
        << JsonNumber(CountsToArcsec(s, f.PhiCounts, s.PhiCountsPerRev, s.PhiSF)) << "},\n";
    out << "  \"terms\": [";
    bool first = true;
    for (int t = 5; t <= s.NumTerms; ++t) {
        if (!s.TermActive[t]) continue;
        const TermCaption& c = TermCaptionOf(t);
        out << (first ? "\n" : ",\n") << "    {\"number\": " << t
            << ", \"group\": " << JsonString(c.Group)
            << ", \"caption\": " << JsonString(TermCaptionText(t))
            << ", \"arcsec\": " << JsonNumber(Arcsec(s, s.TermCoef[t])) << "}";
        first = false;
    }
    out << (first ? "],\n" : "\n  ],\n");
    WriteFitNotesJson(s, MakeFitNotes(s, stats), out);
    if (Search) WriteScaleSearchJson(s, *Search, out);
    if (withStats) WriteModelQualityJson(s, stats, CrossValidate(s), out);
    out << "  \"points\": [";
    for (int i = 1; i <= s.NumCalPoints; ++i) {
        const CalPoint& p = s.CalPoints[i];
        out << (i == 1 ? "\n" : ",\n") << "    {\"index\": " << i
            << ", \"name\": " << JsonString(p.Name) << ", \"used\": " << (p.Used ? "true" : "false")
            << ", \"distArcsec\": " << JsonNumber(Arcsec(s, p.DistErr))
            << ", \"raArcsec\": " << JsonNumber(Arcsec(s, p.RAErr))
            << ", \"decArcsec\": " << JsonNumber(Arcsec(s, p.DecErr))
            << ", \"thetaArcsec\": " << JsonNumber(Arcsec(s, p.ThetaErr))
            << ", \"phiArcsec\": " << JsonNumber(Arcsec(s, p.PhiErr)) << "}";
    }
    out << (s.NumCalPoints == 0 ? "]\n" : "\n  ]\n");
    out << "}\n";
}

std::string FirstNonFiniteFigure(const ModelState& s) {
    const OffsetTotals f = FittedOffsets(s);
    const std::pair<const char*, double> figures[] = {
        {"Latitude", s.Latitude},
        {"Longitude", s.Longitude},
        {"Temperature", s.Temperature},
        {"Pressure", s.Pressure},
        {"Theta counts per turn", s.ThetaCountsPerRev},
        {"Theta scale", s.ThetaSF},
        {"Phi counts per turn", s.PhiCountsPerRev},
        {"Phi scale", s.PhiSF},
        {"Max sensitivity", s.MaxSensitivity},
        {"RMS error of all points", Arcsec(s, s.RMSErrAll)},
        {"RMS error of the selected points", Arcsec(s, s.RMSErrSel)},
        {"Max error of all points", Arcsec(s, s.MaxErrAll)},
        {"Max error of the selected points", Arcsec(s, s.MaxErrSel)},
        {"Sensitivity", s.Sensitivity},
        {"Axis misalignment north", Arcsec(s, f.North)},
        {"Axis misalignment west", Arcsec(s, f.West)},
        {"Theta offset", CountsToArcsec(s, f.ThetaCounts, s.ThetaCountsPerRev, s.ThetaSF)},
        {"Phi offset", CountsToArcsec(s, f.PhiCounts, s.PhiCountsPerRev, s.PhiSF)}};
    for (const auto& [name, value] : figures)
        if (!std::isfinite(value)) return name;
    for (int t = 5; t <= s.NumTerms; ++t)
        if (s.TermActive[t] && !std::isfinite(Arcsec(s, s.TermCoef[t])))
            return "term " + std::to_string(t);
    for (int i = 1; i <= s.NumCalPoints; ++i) {
        const CalPoint& p = s.CalPoints[i];
        const double errors[] = {p.DistErr, p.RAErr, p.DecErr, p.ThetaErr, p.PhiErr};
        for (const double e : errors)
            if (!std::isfinite(Arcsec(s, e))) return "error of point " + std::to_string(i);
    }
    return {};
}
