// Any bytes as a calibration file. The load must not crash, hang or take an
// infinity or NaN into the model, and a file that loads must come back from
// a save and a second load: reals are written with 15 significant digits,
// so the first save rounds each once (the second load gives the same 15
// digits) and from there on every save gives the same file and every load
// the same bits.
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>

#include "FuzzCheck.h"
#include "files/CalFile.h"
#include "model/ModelState.h"
#include "sky/NumberText.h"

namespace {

std::string folder;  // private to this process, removed at its end

// The values a calibration file carries, in order, reals as their exact
// bits or as their text of 15 significant digits.
std::string Carried(const ModelState& s, bool exactBits) {
    std::string out = std::to_string(s.NumCalPoints);
    auto real = [&](double x) {
        FuzzCheck(std::isfinite(x), "the model holds no infinity or NaN from a file");
        uint64_t bits = 0;
        std::memcpy(&bits, &x, sizeof x);
        out += '|' + (exactBits ? std::to_string(bits) : NumberText(x));
    };
    auto text = [&](const std::string& t) { out += '|' + t; };
    auto flag = [&](bool b) { out += b ? "|1" : "|0"; };
    for (int i = 1; i <= s.NumCalPoints; ++i) {
        const CalPoint& p = s.CalPoints[i];
        text(p.Name);
        for (const double x : {p.RA, p.Dec, p.ThetaEnc, p.PhiEnc, p.LST, p.JD}) real(x);
        text(p.TimeStr);
        text(p.DateStr);
        flag(p.Used);
    }
    for (const double x : {s.Latitude, s.PhiCountsPerRev, s.ThetaCountsPerRev, s.Temperature,
                           s.Pressure, s.ThetaSF, s.PhiSF, s.MaxSensitivity})
        real(x);
    for (const bool b : {s.PhiPosCW, s.ThetaPosUp, s.IsAltAz, s.IsGEM, s.EnableRefraction}) flag(b);
    for (int k = 1; k <= kNumTermEnable; ++k) text(std::to_string(s.TermEnable[k]));
    return out;
}

std::string ReadFile(const std::string& name) {
    std::string bytes;
    if (std::FILE* f = std::fopen(name.c_str(), "rb")) {
        char chunk[65536];
        for (size_t n; (n = std::fread(chunk, 1, sizeof chunk, f)) > 0;) bytes.append(chunk, n);
        std::fclose(f);
    }
    return bytes;
}

bool WriteFile(const std::string& name, const uint8_t* data, size_t size) {
    std::FILE* f = std::fopen(name.c_str(), "wb");
    if (!f) return false;
    const bool written = std::fwrite(data, 1, size, f) == size;
    return std::fclose(f) == 0 && written;
}

std::unique_ptr<ModelState> Loaded(const std::string& name, bool& ok) {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    ok = LoadCalFile(*s, name);
    return s;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    std::string pattern = (std::filesystem::temp_directory_path() / "aztrue-fuzz-XXXXXX").string();
    FuzzCheck(mkdtemp(pattern.data()) != nullptr, "a private temporary folder can be made");
    folder = pattern;
    std::atexit([] { std::filesystem::remove_all(folder); });
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string input = folder + "/input.AZT";
    const std::string saved = folder + "/saved.AZT";
    FuzzCheck(WriteFile(input, data, size), "the input can be written");
    bool loaded = false;
    const auto first = Loaded(input, loaded);
    const std::string firstValues = Carried(*first, false);
    // A load that fails keeps what it read, and a count of 0 leaves nothing
    // to save: the round trip needs a valid file with at least one point.
    if (!loaded || first->NumCalPoints == 0) return 0;

    FuzzCheck(SaveCalFile(*first, saved), "a loaded calibration can be saved");
    const std::string firstFile = ReadFile(saved);
    const auto second = Loaded(saved, loaded);
    FuzzCheck(loaded, "a saved calibration loads");
    FuzzCheck(Carried(*second, false) == firstValues, "a save and a load keep every value");

    FuzzCheck(SaveCalFile(*second, saved), "a reloaded calibration can be saved");
    FuzzCheck(ReadFile(saved) == firstFile, "saving it again gives the same file");
    const auto third = Loaded(saved, loaded);
    FuzzCheck(loaded && Carried(*third, true) == Carried(*second, true),
              "loading it again gives the same bits");
    return 0;
}
