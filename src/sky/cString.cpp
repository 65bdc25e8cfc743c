#include "sky/cString.h"

#include <cstddef>
#include <vector>

#include "model/Constants.h"
#include "sky/NumberText.h"
#include "sky/Sexagesimal.h"
#include "sky/TextScan.h"

namespace {

// Byte offset of the first byte of each UTF-8 character. A byte that is not a
// continuation byte starts a character; a stray continuation byte at the very
// start counts as a character of its own.
std::vector<std::size_t> CharacterStarts(const std::string& s) {
    std::vector<std::size_t> starts;
    for (std::size_t i = 0; i < s.size(); ++i) {
        const auto byte = static_cast<unsigned char>(s[i]);
        if (i == 0 || (byte & 0xC0) != 0x80) starts.push_back(i);
    }
    return starts;
}

}  // namespace

// RA in radians to hours, minutes and seconds to one decimal, hours taken
// modulo 24 once. Separator "a" gives 12h30m05s, any other 12<sep>30<sep>05.
std::string cString::RARadToStr(double RA, const std::string& Separator) const {
    const SexagesimalTexts t = HourFieldTexts(RA, 1);
    if (Separator == "a") return t.Whole + "h" + t.Minutes + "m" + t.Seconds + "s";
    return t.Whole + Separator + t.Minutes + Separator + t.Seconds;
}

// Declination in radians to degrees, arcminutes and whole arcseconds, with
// "-" in front for a negative angle. Separator "a" gives 12° 30' 05".
std::string cString::DecRadToStr(double Dec, const std::string& Separator) const {
    const SexagesimalTexts t = DegreeFieldTexts(Dec, 0);
    std::string text;
    if (Separator == "a") {
        text = t.Whole + kDegreeSign + " " + t.Minutes + "' " + t.Seconds + "\"";
    } else {
        text = t.Whole + Separator + t.Minutes + Separator + t.Seconds;
    }
    return Dec < 0 ? "-" + text : text;
}

// Hours text "h:m:s" or "h m s" (minutes and seconds optional), or a lone
// number in degrees, to radians from 0 to a full turn; -1 on a bad text.
double cString::StrToRARad(const std::string& Text) const {
    const std::string text = TrimBlanks(Text);
    double hours = 0;
    const TextMark first = FindFirstKind(text, {":", " "});
    if (!first.Found) {
        double degrees = 0;
        if (!ParseNumber(text, degrees)) return -1;
        hours = degrees / 15;
    } else {
        if (!ParseNumber(TextBefore(text, first), hours)) return -1;
        const std::string rest = TextBehind(text, first);
        if (!rest.empty()) {
            const TextMark second = FindFirstKind(rest, {":", " "});
            double minutes = 0;
            if (!second.Found) {
                if (!ParseNumber(rest, minutes)) return -1;
                hours = hours + minutes / 60;
            } else {
                if (!ParseNumber(TextBefore(rest, second), minutes)) return -1;
                hours = hours + minutes / 60;
                const std::string secondsText = TextBehind(rest, second);
                if (!secondsText.empty()) {
                    double seconds = 0;
                    if (!ParseNumber(secondsText, seconds)) return -1;
                    hours = hours + seconds / 3600;
                }
            }
        }
    }
    const double R = hours * kHalfTurn / 12;
    if (R < 0 || R > kFullTurn) return -1;
    return R;
}

// The part of a path behind its last "\" or "/": empty when the path ends in
// one, the whole path when it has none.
std::string cString::HasFileName(const std::string& Path) const {
    const std::size_t i = Path.find_last_of("\\/");
    if (i == std::string::npos) return Path;
    return Path.substr(i + 1);
}

// Characters First to Last of S, counted from 1 in UTF-8 characters. Last
// beyond the end means the end; First below 1 means 1; First beyond Last
// gives empty text.
std::string cString::Extract(const std::string& S, int First, int Last) const {
    const std::vector<std::size_t> starts = CharacterStarts(S);
    const long length = static_cast<long>(starts.size());
    const long first = First < 1 ? 1 : First;
    const long last = Last > length ? length : Last;
    if (first > last) return "";
    const std::size_t begin = starts[static_cast<std::size_t>(first - 1)];
    const std::size_t end = last < length ? starts[static_cast<std::size_t>(last)] : S.size();
    return S.substr(begin, end - begin);
}
