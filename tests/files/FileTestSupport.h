// Shared helpers of the file tests: a scratch folder, whole-file reads and
// writes, edits of files typed out line by line, and the two reference files.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "files/CalFile.h"
#include "model/ModelState.h"
#include "sky/NumberText.h"

namespace filetest {

// A fresh folder under the system's temporary folder, removed with all its
// content when the object goes.
class TempFolder {
  public:
    TempFolder() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "aztrue-test-XXXXXX").string();
        std::vector<char> buf(pattern.begin(), pattern.end());
        buf.push_back('\0');
        if (mkdtemp(buf.data())) path_ = buf.data();
    }
    ~TempFolder() {
        std::error_code ec;
        // Read-only subfolders left by a test must not stop the clean-up.
        for (auto it = std::filesystem::recursive_directory_iterator(path_, ec);
             !ec && it != std::filesystem::recursive_directory_iterator(); it.increment(ec))
            std::filesystem::permissions(it->path(), std::filesystem::perms::owner_all,
                                         std::filesystem::perm_options::add, ec);
        std::filesystem::remove_all(path_, ec);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::string& Path() const { return path_; }
    std::string File(const std::string& name) const { return path_ + "/" + name; }

  private:
    std::string path_;
};

inline std::string ReadBytes(const std::string& fileName) {
    std::ifstream in(fileName, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void WriteBytes(const std::string& fileName, const std::string& bytes) {
    std::ofstream out(fileName, std::ios::binary | std::ios::trunc);
    out << bytes;
}

// Every line followed by the line end.
inline std::string JoinLines(const std::vector<std::string>& lines,
                             const std::string& lineEnd = "\r\n") {
    std::string text;
    for (const auto& line : lines) text += line + lineEnd;
    return text;
}

// Position of the n-th (from 0) line equal to `text`; -1 when there is none.
inline int IndexOfLine(const std::vector<std::string>& lines, const std::string& text,
                       int occurrence = 0) {
    for (size_t i = 0; i < lines.size(); ++i)
        if (lines[i] == text && occurrence-- == 0) return static_cast<int>(i);
    return -1;
}

// One change of a typed-out file: the line `offset` below the n-th line equal
// to `label` gets `text`, or, when `text` is null, the file ends after it.
struct LineEdit {
    const char* label;
    int occurrence;
    int offset;
    const char* text;
};

inline std::vector<std::string> Edited(std::vector<std::string> lines,
                                       const std::vector<LineEdit>& edits) {
    for (const LineEdit& e : edits) {
        const size_t at = static_cast<size_t>(IndexOfLine(lines, e.label, e.occurrence) + e.offset);
        if (e.text)
            lines.at(at) = e.text;
        else
            lines.resize(at + 1);
    }
    return lines;
}

inline std::unique_ptr<ModelState> FreshModel() {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    return s;
}

// The reference one-star example of the file format, typed out line by line,
// and the model it is written from: the defaults, the first fifteen term
// flags on, and one point without a name.
inline std::vector<std::string> OneStarExampleLines() {
    // clang-format off
    return {"Number of Cal Stars:", " 1 ", "",
            "Cal Star 1:", "", "RA, Dec:", " 1.5 ", "-0.25 ", "ThetaEnc, PhiEnc:", " 0.75 ",
            " 2.125 ", "LST, JD:", " 1.75 ", " 2451545 ", "Time, Date:", "21:14:05", "1/2/2005", "",
            "Latitude, Longitude, TimeZone, DST:", " 33.5 ", "-118 ", "", "", "",
            "CW Azimuth, MaxAzCounts:", "True", " 6.283185308 ", "",
            "Altitude Up, MaxAltCounts:", "True", " 6.283185308 ", "",
            "IsAltAz, IsGEM:", "True", "False", "",
            "Temperature, Pressure:", " 16 ", " 1018 ", "",
            "Terms Enabled:", "1", "1", "1", "1", "1", "1", "1", "1", "1", "1", "1", "1", "1", "1",
            "1", "",
            "Cal Points Used:", "1", "",
            "Scale Factors, Theta, Phi:", " 1 ", " 1 ", "",
            "Clock Rate Error:", "0.0", "",
            "Terms Enabled:", "0", "0", "0", "0", "0", "0", "0", "",
            "Enable Refraction:", "1", "",
            "Max Sensitivity:", " 300 "};
    // clang-format on
}

inline std::unique_ptr<ModelState> OneStarModel() {
    auto s = FreshModel();
    for (int k = 1; k <= 15; ++k) s->TermEnable[k] = 1;
    CalPoint& p = s->CalPoints[1];
    p.RA = 1.5;
    p.Dec = -0.25;
    p.ThetaEnc = 0.75;
    p.PhiEnc = 2.125;
    p.LST = 1.75;
    p.JD = 2451545;
    p.TimeStr = "21:14:05";
    p.DateStr = "1/2/2005";
    p.Used = true;
    s->NumCalPoints = 1;
    return s;
}

// A two-star file whose every value differs from the model defaults and
// from the defaults of the optional sections, so that each test can see
// which lines were taken.
inline std::vector<std::string> TwoStarLines() {
    // clang-format off
    return {"Number of Cal Stars:", " 2 ", "",
            "Cal Star 1:", "Vega", "RA, Dec:", " 4.87356 ", " 0.676903 ", "ThetaEnc, PhiEnc:",
            " 1000 ", "-2000.5 ", "LST, JD:", " 5.1 ", " 2460000.25 ", "Time, Date:", "22:00:00",
            "3/4/2023", "",
            "Cal Star 2:", "Deneb", "RA, Dec:", " 5.41679 ", " 0.790289 ", "ThetaEnc, PhiEnc:",
            " 1500 ", " 2500 ", "LST, JD:", " 5.2 ", " 2460000.3 ", "Time, Date:", "23:10:00",
            "3/4/2023", "",
            "Latitude, Longitude, TimeZone, DST:", " 47.25 ", " 8.5 ", "", "", "",
            "CW Azimuth, MaxAzCounts:", "False", " 8192 ", "",
            "Altitude Up, MaxAltCounts:", "False", " 4096 ", "",
            "IsAltAz, IsGEM:", "False", "True", "",
            "Temperature, Pressure:", "-3.5 ", " 950 ", "",
            "Terms Enabled:", "0", "1", "0", "1", "1", "1", "1", "1", "1", "1", "1", "1", "1", "1",
            "0", "",
            "Cal Points Used:", "0", "1", "",
            "Scale Factors, Theta, Phi:", " 1.002 ", " 0.998 ", "",
            "Clock Rate Error:", "0.0", "",
            "Terms Enabled:", "1", "0", "1", "0", "0", "0", "1", "",
            "Enable Refraction:", "0", "",
            "Max Sensitivity:", " 150 "};
    // clang-format on
}

}  // namespace filetest
