// NumToFileStr and SaveCalFile: the writer of the calibration file.
#include <string>

#include "files/AtomicFile.h"
#include "files/CalFile.h"
#include "files/CalFileLabels.h"
#include "files/CodePage1252.h"
#include "files/WindowHooks.h"
#include "model/ModelState.h"
#include "sky/NumberText.h"

std::string NumToFileStr(double x) {
    std::string text = NumberText(x);
    for (char& c : text)
        if (c == ',') c = '.';
    text += ' ';
    if (text.front() != '-') text.insert(text.begin(), ' ');
    return text;
}

namespace {

// Collects the lines of the file, each with its CR LF.
class LineSink {
  public:
    void Line(const std::string& text) {
        bytes_ += text;
        bytes_ += "\r\n";
    }
    void Blank() { Line(""); }
    void Real(double x) { Line(NumToFileStr(x)); }
    void Word(bool b) { Line(b ? "True" : "False"); }
    void Flag(bool on) { Line(on ? "1" : "0"); }

    // Free text in the program's UTF-8 as a Windows-1252 line. A line end
    // inside the text would split it over two lines and shift every later
    // line of the file, so it is written as a blank.
    void FreeText(const std::string& text) {
        std::string line = Utf8ToCp1252(text);
        for (char& c : line)
            if (c == '\r' || c == '\n') c = ' ';
        Line(line);
    }

    const std::string& Bytes() const { return bytes_; }

  private:
    std::string bytes_;
};

void WriteStars(const ModelState& s, LineSink& out) {
    namespace L = CalFileLabel;
    out.Line(L::kCount);
    // The count in the shape of a non-negative real: blank, digits, blank.
    std::string count(1, ' ');
    count += IntText(s.NumCalPoints);
    count += ' ';
    out.Line(count);
    for (int i = 1; i <= s.NumCalPoints; ++i) {
        const CalPoint& p = s.CalPoints[i];
        out.Blank();
        std::string heading = L::kStarPrefix;
        heading += IntText(i);
        heading += ':';
        out.Line(heading);
        out.FreeText(p.Name);
        out.Line(L::kRADec);
        out.Real(p.RA);
        out.Real(p.Dec);
        out.Line(L::kEncoders);
        out.Real(p.ThetaEnc);
        out.Real(p.PhiEnc);
        out.Line(L::kLSTJD);
        out.Real(p.LST);
        out.Real(p.JD);
        out.Line(L::kTimeDate);
        out.FreeText(p.TimeStr);
        out.FreeText(p.DateStr);
    }
}

void WriteSettings(const ModelState& s, LineSink& out) {
    namespace L = CalFileLabel;
    out.Blank();
    out.Line(L::kSite);
    out.Real(s.Latitude);
    out.Real(s.Longitude);
    out.Blank();  // no time zone is stored
    out.Blank();  // no daylight flag is stored
    out.Blank();
    out.Line(L::kPhiAxis);
    out.Word(s.PhiPosCW);
    out.Real(s.PhiCountsPerRev);
    out.Blank();
    out.Line(L::kThetaAxis);
    out.Word(s.ThetaPosUp);
    out.Real(s.ThetaCountsPerRev);
    out.Blank();
    out.Line(L::kMountType);
    out.Word(s.IsAltAz);
    out.Word(s.IsGEM);
    out.Blank();
    out.Line(L::kAtmosphere);
    out.Real(s.Temperature);
    out.Real(s.Pressure);
}

void WriteOptionalSections(const ModelState& s, LineSink& out) {
    namespace L = CalFileLabel;
    out.Blank();
    out.Line(L::kTermsEnabled);
    for (int k = 1; k <= L::kFirstTermFlags; ++k) out.Flag(s.TermEnable[k] == 1);

    out.Blank();
    out.Line(L::kPointsUsed);
    for (int i = 1; i <= s.NumCalPoints; ++i) out.Flag(s.CalPoints[i].Used);

    out.Blank();
    out.Line(L::kScaleFactors);
    out.Real(s.ThetaSF);
    out.Real(s.PhiSF);

    out.Blank();
    out.Line(L::kClockRateError);
    out.Line(L::kClockRateErrorValue);

    out.Blank();
    out.Line(L::kTermsEnabled);
    for (int k = L::kFirstTermFlags + 1; k <= kNumTermEnable; ++k) out.Flag(s.TermEnable[k] == 1);

    out.Blank();
    out.Line(L::kEnableRefraction);
    out.Flag(s.EnableRefraction);

    out.Blank();
    out.Line(L::kMaxSensitivity);
    out.Real(s.MaxSensitivity);
}

}  // namespace

bool SaveCalFile(ModelState& s, const std::string& FileName) {
    RunPendingEvents();
    if (FileName.empty()) return false;
    // With no point there is nothing to keep, and a file of that name keeps
    // its content. A count beyond the table cannot be written either.
    if (s.NumCalPoints <= 0 || s.NumCalPoints > kMaxCalPoints) return false;
    try {
        LineSink out;
        WriteStars(s, out);
        WriteSettings(s, out);
        WriteOptionalSections(s, out);
        return WriteFileAtomically(FileName, out.Bytes());
    } catch (...) {
        return false;
    }
}
