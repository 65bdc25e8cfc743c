// LoadCalFile: the reader of the calibration file. It writes straight into
// the live model as it goes; what was read before a failure stays.
#include <cctype>
#include <cmath>
#include <cstdint>
#include <string>

#include "files/CalFile.h"
#include "files/CalFileLabels.h"
#include "files/CodePage1252.h"
#include "files/NumericPrefix.h"
#include "files/TextLineReader.h"
#include "files/WindowHooks.h"
#include "model/ModelState.h"
#include "sky/NumberText.h"
#include "sky/Rounding.h"

namespace {

// Thrown by every failing read; LoadCalFile has the one handler for it.
struct ReadFailure {};

// The reads of the file, each of which either gives its value or fails.
class CalFileInput {
  public:
    explicit CalFileInput(TextLineReader& in) : in_(in) {}

    bool AtEnd() { return in_.AtEnd(); }

    // The next line as it stands; reading past the end fails.
    std::string Line() {
        std::string line;
        if (!in_.ReadLine(line)) throw ReadFailure{};
        return line;
    }

    void Skip() { Line(); }

    // Free text of the file's code page, as the program's UTF-8.
    std::string FreeText() { return Cp1252ToUtf8(Line()); }

    // The numeric-prefix reading: any text gives a number, but one beyond
    // the range of a double (1e99999) fails, so that the model never holds
    // an infinity read from a file. In an optional section this ends the
    // reading like a truncated section: the result stays true and the value
    // is not taken.
    double Real() {
        const double value = NumericPrefixValue(Line());
        if (!std::isfinite(value)) throw ReadFailure{};
        return value;
    }

    // A 16-bit integer: a number, rounded half to even, inside -32768 to
    // 32767; anything else fails.
    int16_t Integer() {
        double value = 0;
        if (!ParseNumber(Line(), value)) throw ReadFailure{};
        value = RoundHalfEven(value);
        if (!(value >= -32768.0 && value <= 32767.0)) throw ReadFailure{};
        return static_cast<int16_t>(value);
    }

    // True or False in any letter case (blanks around allowed), or a number
    // with 0 for false and anything else for true; anything else fails.
    bool Boolean() {
        const std::string line = Line();
        double value = 0;
        if (ParseNumber(line, value)) return value != 0.0;
        const std::string word = LowerTrimmed(line);
        if (word == "true") return true;
        if (word == "false") return false;
        throw ReadFailure{};
    }

  private:
    static std::string LowerTrimmed(const std::string& text) {
        size_t first = text.find_first_not_of(" \t");
        if (first == std::string::npos) return {};
        size_t last = text.find_last_not_of(" \t");
        std::string word = text.substr(first, last - first + 1);
        for (char& c : word) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        return word;
    }

    TextLineReader& in_;
};

// Line 2 of the file and the fifteen lines of each star.
void ReadStars(ModelState& s, CalFileInput& in) {
    in.Skip();
    const int16_t count = in.Integer();
    if (count < 0) {
        // A negative count is no table size: the file is invalid and the
        // model keeps an empty table rather than a count it cannot hold.
        s.NumCalPoints = 0;
        throw ReadFailure{};
    }
    // The table ends at 500: a larger count is stored as 500 and fails at
    // star 501, so the model never holds a count beyond its table.
    s.NumCalPoints = count > kMaxCalPoints ? static_cast<int16_t>(kMaxCalPoints) : count;
    for (int i = 1; i <= count; ++i) {
        if (i > kMaxCalPoints) throw ReadFailure{};
        CalPoint& p = s.CalPoints[i];
        in.Skip();  // blank
        in.Skip();  // "Cal Star i:"
        p.Name = in.FreeText();
        in.Skip();
        p.RA = in.Real();
        p.Dec = in.Real();
        in.Skip();
        p.ThetaEnc = in.Real();
        p.PhiEnc = in.Real();
        in.Skip();
        p.LST = in.Real();
        p.JD = in.Real();
        in.Skip();
        p.TimeStr = in.FreeText();
        p.DateStr = in.FreeText();
        p.Used = true;
    }
}

// The twenty-two settings lines. Longitude, TimeZone and DST are not
// taken from the file: a load leaves them as they were.
void ReadSettings(ModelState& s, CalFileInput& in) {
    in.Skip();
    in.Skip();
    s.Latitude = in.Real();
    in.Skip();  // Longitude
    in.Skip();  // time zone, never stored
    in.Skip();  // daylight flag, never stored
    in.Skip();
    in.Skip();
    s.PhiPosCW = in.Boolean();
    s.PhiCountsPerRev = in.Real();
    in.Skip();
    in.Skip();
    s.ThetaPosUp = in.Boolean();
    s.ThetaCountsPerRev = in.Real();
    in.Skip();
    in.Skip();
    s.IsAltAz = in.Boolean();
    s.IsGEM = in.Boolean();
    in.Skip();
    in.Skip();
    s.Temperature = in.Real();
    s.Pressure = in.Real();
}

// What the optional sections carry, for files that lack them.
void SetOptionalDefaults(ModelState& s) {
    for (int k = 1; k <= CalFileLabel::kFirstTermFlags; ++k) s.TermEnable[k] = 1;
    for (int k = CalFileLabel::kFirstTermFlags + 1; k <= kNumTermEnable; ++k) s.TermEnable[k] = 0;
    for (int i = 1; i <= s.NumCalPoints; ++i) s.CalPoints[i].Used = true;
    s.ThetaSF = 1.0;
    s.PhiSF = 1.0;
}

// The blank line and the label of an optional section. False when the file
// ends before either, or the label is not exactly the section's.
bool FindSection(CalFileInput& in, const char* label) {
    if (in.AtEnd()) return false;
    in.Skip();
    if (in.AtEnd()) return false;
    return in.Line() == label;
}

// Sections A to G in order; the first one missing ends the reading.
void ReadOptionalSections(ModelState& s, CalFileInput& in) {
    namespace L = CalFileLabel;
    if (!FindSection(in, L::kTermsEnabled)) return;
    // Term flags count as on unless they are exactly "0".
    for (int k = 1; k <= L::kFirstTermFlags; ++k)
        if (in.Line() == "0") s.TermEnable[k] = 0;
    RunEnableToChk();

    if (!FindSection(in, L::kPointsUsed)) return;
    // A point counts as used only when its line is exactly "1".
    for (int i = 1; i <= s.NumCalPoints; ++i) s.CalPoints[i].Used = in.Line() == "1";

    if (!FindSection(in, L::kScaleFactors)) return;
    s.ThetaSF = in.Real();
    s.PhiSF = in.Real();

    if (!FindSection(in, L::kClockRateError)) return;
    in.Skip();  // kept for old files; no value of the model

    if (!FindSection(in, L::kTermsEnabled)) return;
    for (int k = L::kFirstTermFlags + 1; k <= kNumTermEnable; ++k)
        s.TermEnable[k] = in.Line() == "0" ? 0 : 1;
    RunEnableToChk();

    if (!FindSection(in, L::kEnableRefraction)) return;
    s.EnableRefraction = in.Line() == "1";

    if (!FindSection(in, L::kMaxSensitivity)) return;
    s.MaxSensitivity = in.Real();
}

}  // namespace

bool LoadCalFile(ModelState& s, const std::string& FileName) {
    bool result = false;
    try {
        TextLineReader file;
        if (!file.Open(FileName)) return false;
        CalFileInput in(file);
        ReadStars(s, in);
        ReadSettings(s, in);
        // From here on the file is valid, whatever follows.
        result = true;
        SetOptionalDefaults(s);
        ReadOptionalSections(s, in);
    } catch (...) {
        // Every failure, of the file or of its text, ends the load with the
        // result reached so far; the file closes with the reader.
    }
    return result;
}
