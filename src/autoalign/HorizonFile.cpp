#include "autoalign/HorizonFile.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <utility>

#include "autoalign/CombSort.h"
#include "files/CodePage1252.h"
#include "files/NumericPrefix.h"
#include "files/TestLogList.h"
#include "files/TextLineReader.h"
#include "model/ModelState.h"
#include "sky/NumberText.h"

namespace {

// The reader opens its file in a mode that creates it when absent, so a
// name that does not exist yet reads as an empty file: a flat skyline. An
// existing file is never opened for writing (a read-only file reads, and a
// pipe never blocks the reader).
bool CreateIfAbsent(const std::string& FileName) {
    std::error_code ec;
    if (std::filesystem::exists(FileName, ec)) return true;
    if (ec) return false;
    return std::ofstream(FileName, std::ios::app).is_open();
}

// Azimuth into 0 to 360 degrees by whole turns, one at a time as the file
// format has always done. A number of a million degrees or more first loses
// its whole turns at once, exactly, so that the steps end.
double IntoTurn(double Az) {
    if (std::fabs(Az) >= 1e6) Az = std::fmod(Az, 360.0);
    while (Az < 0) Az = Az + 360;
    while (Az >= 360) Az = Az - 360;
    return Az;
}

double ClampElevation(double El) {
    if (El < 0) return 0;
    if (El > 90) return 90;
    return El;
}

// Reads the samples into entries 1 on of h, entry 0 staying azimuth 0,
// elevation 0; h.Num becomes their count. False on any failure.
bool ReadSamples(ModelState& s, const std::string& FileName, HorizonRecord& h) {
    if (FileName.empty() || !CreateIfAbsent(FileName)) return false;
    TextLineReader in;
    if (!in.Open(FileName)) return false;
    int count = 0;
    std::string line;
    std::string field;
    while (!in.AtEnd()) {
        if (!in.ReadLine(line)) return false;
        AddTestLogLine(s, "String Input:" + Cp1252ToUtf8(line));
        if (!GetField(line, ",", field)) continue;
        const double az = NumericPrefixValue(field);
        const double el = NumericPrefixValue(line);
        // The skyline never holds an infinity read from a file.
        if (!std::isfinite(az) || !std::isfinite(el)) return false;
        // The numbers as the line gives them, before the range rules.
        AddTestLogLine(s, "Az,El: " + NumberText(az) + "  " + NumberText(el));
        if (count == kMaxHorizonSamples) return false;
        ++count;
        h.Az[count] = IntoTurn(az);
        h.El[count] = ClampElevation(el);
    }
    AddTestLogLine(s, "");
    h.Num = static_cast<int16_t>(count);
    return true;
}

// Keeps the first of each run of equal azimuths of the sorted entries 1 to
// h.Num; entry 0 (azimuth 0) drops every sample at azimuth 0. Returns the
// count kept. In place: entry i - 1 is never overwritten before entry i is
// compared with it.
int DropDuplicates(HorizonRecord& h) {
    int kept = 0;
    for (int i = 1; i <= h.Num; ++i) {
        if (h.Az[i] > h.Az[i - 1]) {
            ++kept;
            h.Az[kept] = h.Az[i];
            h.El[kept] = h.El[i];
        }
    }
    return kept;
}

// The table of 360 elevations from the M sorted samples of h (and entry 0),
// by straight lines in azimuth; behind the last sample the line runs back
// to entry 0 at 360 degrees.
void BuildTable(const HorizonRecord& h, int M, HorizonRecord& Hrz) {
    int k = 1;
    for (int a = 0; a <= 359; ++a) {
        double el = h.El[0];
        if (M != 0) {
            while (h.Az[k] < a && k < M) ++k;
            const bool behindLast = h.Az[k] < a;
            const int left = behindLast ? k : k - 1;
            const int right = behindLast ? 0 : k;
            const double Az1 = h.Az[left];
            const double El1 = h.El[left];
            const double Az2 = h.Az[right] == 0 ? 360 : h.Az[right];
            const double El2 = h.El[right];
            el = Az2 > Az1 ? (El2 - El1) * (a - Az1) / (Az2 - Az1) + El1 : El1;
        }
        Hrz.Az[a] = a;
        Hrz.El[a] = el;
    }
    Hrz.Num = 360;
}

}  // namespace

bool GetField(std::string& Text, const std::string& Delimiter, std::string& Field) {
    const size_t first = Text.find_first_not_of(' ');
    if (first == std::string::npos) {
        Text.clear();
    } else {
        Text = Text.substr(first, Text.find_last_not_of(' ') - first + 1);
    }
    const size_t at = Text.find(Delimiter);
    if (Delimiter.empty() || at == std::string::npos) return false;
    std::string before = Text.substr(0, at);
    const size_t last = before.find_last_not_of(' ');
    before.resize(last == std::string::npos ? 0 : last + 1);
    Field = std::move(before);
    Text = Text.substr(at + Delimiter.size());
    return true;
}

void SortHorizon(HorizonRecord& Hrz) {
    int n = Hrz.Num;
    if (n < 0) n = 0;
    if (n > kHorizonTableSize - 1) n = kHorizonTableSize - 1;
    CombSort(
        n / 2, n, [&](int j, int i) { return Hrz.Az[j] > Hrz.Az[i]; },
        [&](int j, int i) {
            std::swap(Hrz.Az[j], Hrz.Az[i]);
            std::swap(Hrz.El[j], Hrz.El[i]);
        });
}

bool ReadHorizon(ModelState& s, const std::string& FileName, HorizonRecord& Hrz) {
    AddTestLogLine(s, "Read Horizon:");
    // A local record, all zero, so that a failure leaves Hrz untouched.
    HorizonRecord h;
    if (!ReadSamples(s, FileName, h)) return false;
    SortHorizon(h);
    BuildTable(h, DropDuplicates(h), Hrz);
    return true;
}
