// Any bytes as a calibration file. The load must not crash, hang or take an
// infinity or NaN into the model, and a file that loads must come back from
// a save and a second load: reals are written with 15 significant digits,
// so the first save rounds each once (the second load gives the same 15
// digits) and from there on every save gives the same file and every load
// the same bits.
#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "FuzzCheck.h"
#include "FuzzFiles.h"
#include "files/CalFile.h"
#include "model/ModelState.h"
#include "sky/NumberText.h"

namespace {

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

std::unique_ptr<ModelState> Loaded(const std::string& name, bool& ok) {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    ok = LoadCalFile(*s, name);
    return s;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    MakeScratchFolder();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string input = WriteScratchFile("input.AZT", data, size);
    const std::string saved = ScratchFolder() + "/saved.AZT";
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
