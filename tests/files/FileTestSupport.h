// Shared pieces of the file tests: scratch folder, file bytes, line edits, the one-star file.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "files/CalFile.h"
#include "model/ModelTestSupport.h"
#include "sky/NumberText.h"

namespace filetest {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;
using modeltest::FreshModel;

// A fresh folder under the system's temporary folder, removed with its content.
struct TempFolder {
    std::string path = (fs::temp_directory_path() / "aztrue-test-XXXXXX").string();
    TempFolder() { EXPECT_TRUE(mkdtemp(path.data())) << path; }
    ~TempFolder() { fs::remove_all(path, ignored); }
    std::error_code ignored;
    std::string File(const std::string& name) const { return path + "/" + name; }
};

inline std::string ReadBytes(const std::string& name) {
    std::ifstream in(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

inline void WriteBytes(const std::string& name, const std::string& bytes) {
    std::ofstream(name, std::ios::binary) << bytes;
}

inline std::string JoinLines(const Lines& lines, const std::string& end = "\r\n") {
    std::string text;
    for (const auto& line : lines) text += line + end;
    return text;
}

// Each edit gives the line `offset` below the n-th line equal to `label` the text, or, with no
// text, ends the file after that line.
struct LineEdit {
    const char* label;
    int occurrence, offset;
    const char* text;
};
inline Lines Edited(Lines lines, const std::vector<LineEdit>& edits) {
    for (const LineEdit& e : edits) {
        size_t at = 0;
        for (int n = e.occurrence; lines.at(at) != e.label || n-- > 0;) ++at;
        if (e.text) lines.at(at + e.offset) = e.text;
        if (!e.text) lines.resize(at + e.offset + 1);
    }
    return lines;
}

// The reference example of the file format, typed out: one star without a name, the site defaults,
// the first fifteen term flags on.
inline Lines OneStarExampleLines() {
    // clang-format off
    return {"Number of Cal Stars:", " 1 ", "", "Cal Star 1:", "", "RA, Dec:", " 1.5 ", "-0.25 ",
        "ThetaEnc, PhiEnc:", " 0.75 ", " 2.125 ", "LST, JD:", " 1.75 ", " 2451545 ", "Time, Date:",
        "21:14:05", "1/2/2005", "", "Latitude, Longitude, TimeZone, DST:", " 33.5 ", "-118 ", "",
        "", "", "CW Azimuth, MaxAzCounts:", "True", " 6.283185308 ", "",
        "Altitude Up, MaxAltCounts:", "True", " 6.283185308 ", "", "IsAltAz, IsGEM:", "True",
        "False", "", "Temperature, Pressure:", " 16 ", " 1018 ", "", "Terms Enabled:", "1", "1",
        "1", "1", "1", "1", "1", "1", "1", "1", "1", "1", "1", "1", "1", "", "Cal Points Used:",
        "1", "", "Scale Factors, Theta, Phi:", " 1 ", " 1 ", "", "Clock Rate Error:", "0.0", "",
        "Terms Enabled:", "0", "0", "0", "0", "0", "0", "0", "", "Enable Refraction:", "1", "",
        "Max Sensitivity:", " 300 "};
    // clang-format on
}

// The model the example was written from.
inline std::unique_ptr<ModelState> OneStarModel() {
    auto s = FreshModel();
    for (int k = 1; k <= 15; ++k) s->TermEnable[k] = 1;
    CalPoint& p = s->CalPoints[s->NumCalPoints = 1];
    p.Used = true, p.ThetaEnc = 0.75, p.PhiEnc = 2.125, p.RA = 1.5, p.Dec = -0.25, p.LST = 1.75;
    p.JD = 2451545, p.TimeStr = "21:14:05", p.DateStr = "1/2/2005";
    return s;
}

}  // namespace filetest
