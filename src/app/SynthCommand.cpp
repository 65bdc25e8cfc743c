#include "app/SynthCommand.h"

#include <cmath>
#include <cstdint>
#include <memory>

#include "app/CommandWords.h"
#include "files/CalFile.h"
#include "model/Constants.h"
#include "model/ImaginaryMount.h"
#include "model/ModelState.h"
#include "model/SyntheticCalibration.h"
#include "model/Terms.h"
#include "sky/NumberText.h"

namespace {

constexpr double kArcminRad = kHalfTurn / 180 / 60;

struct Options {
    ImaginaryMount Mount;
    std::string Out;
};

// One option that takes a number: its word, the factor from the unit of the
// command line to the member, the range allowed there, and the member.
struct NumberOption {
    const char* Word;
    double Factor;
    double Low, High;
    double ImaginaryMount::*Member;
};

const NumberOption kNumberOptions[] = {
    {"--cone", kArcminRad, -600, 600, &ImaginaryMount::Cone},
    {"--hub", kArcminRad, -600, 600, &ImaginaryMount::Hub},
    {"--pa-west", kArcminRad, -600, 600, &ImaginaryMount::PAWest},
    {"--pa-north", kArcminRad, -600, 600, &ImaginaryMount::PANorth},
    {"--latitude", 1, -90, 90, &ImaginaryMount::Latitude},
    {"--theta-offset", kArcminRad, -21600, 21600, &ImaginaryMount::ThetaOffset},
    {"--phi-offset", kArcminRad, -21600, 21600, &ImaginaryMount::PhiOffset},
    {"--interval", 1, 0, 1440, &ImaginaryMount::MinutesBetween},
    {"--lst", kHalfTurn / 12, 0, 24, &ImaginaryMount::FirstLST},
    {"--noise", kHalfTurn / 180 / 3600, 0, 3600, &ImaginaryMount::NoiseRMS},
};

bool ParseValue(const std::string& a, const std::string& v, Options& o) {
    if (a == "--out") {
        o.Out = v;
        return !v.empty();
    }
    if (a == "--count") return ParseWhole(v, o.Mount.Num, 1, kMaxCalPoints);
    if (a == "--seed") return ParseWhole<uint32_t>(v, o.Mount.Seed, 0, UINT32_MAX);
    for (const NumberOption& n : kNumberOptions) {
        if (a != n.Word) continue;
        double x = 0;
        if (!ParseNumber(v, x) || !(x >= n.Low && x <= n.High)) return false;
        o.Mount.*n.Member = x * n.Factor;
        return true;
    }
    return false;
}

bool KnownOption(const std::string& a) {
    if (a == "--out" || a == "--count" || a == "--seed") return true;
    for (const NumberOption& n : kNumberOptions)
        if (a == n.Word) return true;
    return false;
}

// False with a message on err for a bad word.
bool ParseOptions(const std::vector<std::string>& args, Options& o, std::ostream& err) {
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (!KnownOption(a)) {
            err << "aztrue synth: unknown option \"" << a << "\"\n" << SynthCommandHelp();
            return false;
        }
        if (i + 1 >= args.size()) {
            err << "aztrue synth: " << a << " needs a value\n";
            return false;
        }
        const std::string& v = args[++i];
        if (!ParseValue(a, v, o)) {
            err << "aztrue synth: bad value \"" << v << "\" for " << a << "\n"
                << SynthCommandHelp();
            return false;
        }
    }
    if (o.Out.empty()) {
        err << "aztrue synth: --out FILE.AZT is needed\n" << SynthCommandHelp();
        return false;
    }
    return true;
}

// The sample mount of the Virtual Telescope's panel.
ImaginaryMount SampleMount() {
    ImaginaryMount m;
    m.Num = 40;
    m.Cone = 10 * kArcminRad;
    m.Hub = -5 * kArcminRad;
    m.PAWest = 15 * kArcminRad;
    m.PANorth = -20 * kArcminRad;
    m.Latitude = 33;
    m.ThetaOffset = 7 * kArcminRad;
    m.PhiOffset = -9 * kArcminRad;
    m.MinutesBetween = 1;
    m.FirstLST = 5.5 * kHalfTurn / 12;
    return m;
}

}  // namespace

std::string SynthCommandHelp() {
    return "usage: aztrue synth [--count N] [--cone ARCMIN] [--hub ARCMIN]\n"
           "                    [--pa-west ARCMIN] [--pa-north ARCMIN] [--latitude DEG]\n"
           "                    [--theta-offset ARCMIN] [--phi-offset ARCMIN]\n"
           "                    [--interval MIN] [--lst HOURS] [--noise ARCSEC]\n"
           "                    [--seed N] --out FILE.AZT\n"
           "\n"
           "Writes the calibration file of an imaginary alt-az mount with the errors\n"
           "given, its points where the alignment planner sends a mount at the latitude,\n"
           "one every INTERVAL sidereal minutes from the sidereal time LST. A fit with the\n"
           "alt-az terms (aztrue fit --terms altaz) finds the errors back.\n"
           "\n"
           "  --count N           points, 1 to 500; default 40\n"
           "  --cone ARCMIN       cone error (term 5); default 10\n"
           "  --hub ARCMIN        hub error (term 6); default -5\n"
           "  --pa-west ARCMIN    primary axis tipped to the west; default 15\n"
           "  --pa-north ARCMIN   primary axis tipped to the north; default -20\n"
           "  --latitude DEG      site latitude, north positive; default 33\n"
           "  --theta-offset ARCMIN  Theta encoder offset; default 7\n"
           "  --phi-offset ARCMIN    Phi encoder offset; default -9\n"
           "  --interval MIN      sidereal minutes between points, 0 to 1440; default 1\n"
           "  --lst HOURS         sidereal time of the first point, 0 to 24; default 5.5\n"
           "  --noise ARCSEC      RMS noise on the sky along each axis; default 0\n"
           "  --seed N            seed of the noise; default 1\n"
           "\n"
           "Exit status: 0 on success, 1 when the file cannot be written, 2 for a bad\n"
           "option.\n";
}

int RunSynthCommand(const std::vector<std::string>& args, const std::string& ProgramFolder,
                    std::ostream& out, std::ostream& err) {
    if (AsksForHelp(args)) {
        out << SynthCommandHelp();
        return kSynthOk;
    }
    Options o;
    o.Mount = SampleMount();
    if (!ParseOptions(args, o, err)) return kSynthUsageError;

    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    s->ProgramFolder = ProgramFolder;
    s->Latitude = o.Mount.Latitude;
    EnableAltAz(*s);
    std::vector<SyntheticPoint> points;
    std::string error;
    if (!MakeImaginaryMountPoints(*s, o.Mount, points, error)) {
        err << "aztrue synth: " << error << "\n";
        return kSynthFailed;
    }
    AddSyntheticPoints(*s, points);
    if (!SaveCalFile(*s, o.Out)) {
        err << "aztrue synth: cannot write \"" << o.Out << "\"\n";
        return kSynthFailed;
    }
    out << "wrote " << s->NumCalPoints << " points to " << o.Out << "\n";
    return kSynthOk;
}
