#include "autoalign/HorizonFile.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <utility>

#include "autoalign/HorizonTable.h"
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
// elevation 0; h.Num becomes their count. False on any failure, with its
// reason in why.
bool ReadSamples(ModelState& s, const std::string& FileName, HorizonRecord& h, LoadFailure& why) {
    TextLineReader in;
    const auto fail = [&](LoadFailure::Why Reason) {
        why = {Reason, in.LinesRead()};
        return false;
    };
    if (FileName.empty() || !CreateIfAbsent(FileName) || !in.Open(FileName))
        return fail(LoadFailure::Why::Unreadable);
    int count = 0;
    std::string line;
    std::string field;
    while (!in.AtEnd()) {
        in.ReadLine(line);
        AddTestLogLine(s, "String Input:" + Cp1252ToUtf8(line));
        if (!GetField(line, ",", field)) continue;
        const double az = NumericPrefixValue(field);
        const double el = NumericPrefixValue(line);
        // The skyline never holds an infinity read from a file.
        if (!std::isfinite(az) || !std::isfinite(el)) return fail(LoadFailure::Why::NotFinite);
        // The numbers as the line gives them, before the range rules.
        AddTestLogLine(s, "Az,El: " + NumberText(az) + "  " + NumberText(el));
        if (count == kMaxHorizonSamples) return fail(LoadFailure::Why::TooMany);
        ++count;
        h.Az[count] = IntoTurn(az);
        h.El[count] = ClampElevation(el);
    }
    AddTestLogLine(s, "");
    h.Num = static_cast<int16_t>(count);
    return true;
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

bool ReadHorizon(ModelState& s, const std::string& FileName, HorizonRecord& Hrz,
                 LoadFailure* Failure) {
    AddTestLogLine(s, "Read Horizon:");
    // A local record, all zero, so that a failure leaves Hrz untouched.
    HorizonRecord h;
    LoadFailure why;
    if (!ReadSamples(s, FileName, h, why)) {
        if (Failure) *Failure = why;
        return false;
    }
    HorizonFromSamples(h, Hrz);
    return true;
}
