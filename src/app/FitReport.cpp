#include "app/FitReport.h"

#include <cmath>
#include <iomanip>
#include <sstream>

#include "model/ModelState.h"
#include "model/TermCaptions.h"
#include "sky/NumberText.h"

namespace {

// What the report shows of a fitted model, in arcseconds where an angle.
struct FitFigures {
    double NorthTotal = 0;  // axis misalignment, radians
    double WestTotal = 0;
    double ThetaTotal = 0;  // encoder offsets, counts
    double PhiTotal = 0;
};

// The totals the main window shows: the offsets and rotations plus the
// small coefficients of terms 1 to 4 that the last solve left.
FitFigures Totals(const ModelState& s) {
    FitFigures f;
    f.PhiTotal = s.TermCoef[1] + s.PhiEncOffset;
    f.ThetaTotal = s.TermCoef[2] + s.ThetaEncOffset;
    f.NorthTotal = s.TermCoef[3] + s.ErrorNorth;
    f.WestTotal = s.TermCoef[4] + s.ErrorWest;
    return f;
}

double Arcsec(const ModelState& s, double radians) {
    return s.Math.RadToAS(radians);
}

// Encoder counts as the angle they turn the axis by, in arcseconds.
double CountsToArcsec(const ModelState& s, double counts, double countsPerRev, double scale) {
    return Arcsec(s, counts * 6.283185308 / (countsPerRev * scale));
}

std::string MountTypeText(const ModelState& s) {
    if (s.IsAltAz) return "alt-azimuth";
    return s.IsGEM ? "German equatorial" : "equatorial fork";
}

std::string As(double arcsec, int decimals = 1) {
    return RoundedText(arcsec, decimals) + "\"";
}

std::string JsonString(const std::string& text) {
    std::string outText = "\"";
    for (unsigned char c : text) {
        switch (c) {
            case '"':
                outText += "\\\"";
                break;
            case '\\':
                outText += "\\\\";
                break;
            case '\n':
                outText += "\\n";
                break;
            case '\r':
                outText += "\\r";
                break;
            case '\t':
                outText += "\\t";
                break;
            default:
                if (c < 0x20) {
                    std::ostringstream hex;
                    hex << "\\u" << std::hex << std::setw(4) << std::setfill('0')
                        << static_cast<int>(c);
                    outText += hex.str();
                } else {
                    outText += static_cast<char>(c);
                }
        }
    }
    return outText + "\"";
}

std::string JsonNumber(double x) {
    return std::isfinite(x) ? NumberText(x) : "null";
}

std::string Padded(const std::string& text, size_t width) {
    return text.size() >= width ? text : std::string(width - text.size(), ' ') + text;
}

}  // namespace

void WriteFitReport(const ModelState& s, const std::string& fileName, std::ostream& out) {
    const FitFigures f = Totals(s);
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
    out << "  Axis misalignment   " << As(std::fabs(Arcsec(s, f.NorthTotal))) << " to "
        << (f.NorthTotal >= 0 ? "North" : "South") << ", " << As(std::fabs(Arcsec(s, f.WestTotal)))
        << " to " << (f.WestTotal >= 0 ? "West" : "East") << "\n";
    out << "  Theta offset        " << NumberText(f.ThetaTotal) << " counts ("
        << As(CountsToArcsec(s, f.ThetaTotal, s.ThetaCountsPerRev, s.ThetaSF)) << ")\n";
    out << "  Phi offset          " << NumberText(f.PhiTotal) << " counts ("
        << As(CountsToArcsec(s, f.PhiTotal, s.PhiCountsPerRev, s.PhiSF)) << ")\n\n";

    out << "Active terms\n";
    for (int t = 5; t <= s.NumTerms; ++t) {
        if (!s.TermActive[t]) continue;
        out << "  [" << Padded(std::to_string(t), 2) << "] " << std::left << std::setw(56)
            << TermCaptionText(t) << std::right << Padded(As(Arcsec(s, s.TermCoef[t])), 10) << "\n";
    }
    out << "\nPoints (errors in arcseconds, model minus measurement)\n";
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

void WriteFitReportJson(const ModelState& s, const std::string& fileName, std::ostream& out) {
    const FitFigures f = Totals(s);
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
    out << "  \"axisMisalignment\": {\"northArcsec\": " << JsonNumber(Arcsec(s, f.NorthTotal))
        << ", \"westArcsec\": " << JsonNumber(Arcsec(s, f.WestTotal)) << "},\n";
    out << "  \"encoderOffsets\": {\"thetaCounts\": " << JsonNumber(f.ThetaTotal)
        << ", \"phiCounts\": " << JsonNumber(f.PhiTotal) << ", \"thetaArcsec\": "
        << JsonNumber(CountsToArcsec(s, f.ThetaTotal, s.ThetaCountsPerRev, s.ThetaSF))
        << ", \"phiArcsec\": "
        << JsonNumber(CountsToArcsec(s, f.PhiTotal, s.PhiCountsPerRev, s.PhiSF)) << "},\n";
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
