#include "app/AlignPointsCommand.h"

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>

#include "app/CommandWords.h"
#include "autoalign/AlignPoints.h"
#include "autoalign/HorizonFile.h"
#include "model/Constants.h"
#include "model/ModelState.h"
#include "sky/NumberText.h"

namespace {

const char* const kMountNames[] = {"altaz", "fork", "gem"};
const char* const kOrderNames[] = {"NE", "NW", "SE", "SW", "Rnd"};

struct Options {
    std::string Horizon;
    bool HasLatitude = false;
    double Latitude = 0;
    int Mount = 0;  // index into kMountNames
    int32_t Count = 20;
    int Order = kOrderNE;
    bool Json = false;
};

template <size_t N>
bool IndexOf(const char* const (&names)[N], const std::string& word, int& index) {
    for (size_t i = 0; i < N; ++i) {
        if (word == names[i]) {
            index = static_cast<int>(i);
            return true;
        }
    }
    return false;
}

// False with a message on err for a bad word.
bool ParseOptions(const std::vector<std::string>& args, Options& o, std::ostream& err) {
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a == "--json") {
            o.Json = true;
            continue;
        }
        const bool takesValue = a == "--horizon" || a == "--latitude" || a == "--mount" ||
                                a == "--count" || a == "--order";
        if (!takesValue) {
            err << "aztrue align-points: unknown option \"" << a << "\"\n";
            return false;
        }
        if (i + 1 >= args.size()) {
            err << "aztrue align-points: " << a << " needs a value\n";
            return false;
        }
        const std::string& v = args[++i];
        bool ok = true;
        if (a == "--horizon") {
            o.Horizon = v;
        } else if (a == "--latitude") {
            o.HasLatitude = true;
            ok = ParseNumber(v, o.Latitude) && std::fabs(o.Latitude) <= 90;
        } else if (a == "--mount") {
            ok = IndexOf(kMountNames, v, o.Mount);
        } else if (a == "--count") {
            ok = ParseWhole<int32_t>(v, o.Count, 1, INT32_MAX);
        } else {
            ok = IndexOf(kOrderNames, v, o.Order);
        }
        if (!ok) {
            err << "aztrue align-points: bad value \"" << v << "\" for " << a << "\n"
                << AlignPointsCommandHelp();
            return false;
        }
    }
    return true;
}

bool Readable(const std::string& file) {
    std::error_code ec;
    return std::filesystem::is_regular_file(file, ec) && std::ifstream(file).good();
}

std::string Full(double x) {
    char buf[40];
    std::snprintf(buf, sizeof buf, "%.17g", x);
    return buf;
}

void WriteText(const ModelState& s, std::ostream& out) {
    out << "Point  Azimuth  Elevation\n";
    for (int i = 0; i < s.NumAutoAlign; ++i) {
        const AutoAlignPoint& p = s.AutoAlignPoints[i];
        char line[64];
        std::snprintf(line, sizeof line, "%5d  %7.2f  %9.2f\n", p.Index, p.Phi * 180 / kHalfTurn,
                      90 - p.Theta * 180 / kHalfTurn);
        out << line;
    }
}

void WriteJson(const ModelState& s, const Options& o, std::ostream& out) {
    out << "{\n  \"latitude\": " << Full(s.Latitude) << ",\n  \"mount\": \"" << kMountNames[o.Mount]
        << "\",\n  \"order\": \"" << kOrderNames[o.Order] << "\",\n  \"count\": " << o.Count
        << ",\n  \"points\": [";
    for (int i = 0; i < s.NumAutoAlign; ++i) {
        const AutoAlignPoint& p = s.AutoAlignPoints[i];
        out << (i ? ",\n" : "\n") << "    {\"X\": " << Full(p.X) << ", \"Y\": " << Full(p.Y)
            << ", \"Z\": " << Full(p.Z) << ", \"Phi\": " << Full(p.Phi)
            << ", \"Theta\": " << Full(p.Theta) << ", \"Index\": " << p.Index << "}";
    }
    out << "\n  ]\n}\n";
}

// What is wrong with a file that was read, or empty when it could not be
// read at all.
std::string Unusable(const LoadFailure& f, const char* Entries, int Most) {
    const std::string line = "line " + std::to_string(f.Line);
    switch (f.Reason) {
        case LoadFailure::Why::NotFinite:
            return line + " holds a number that does not fit a finite double";
        case LoadFailure::Why::TooMany:
            return "it holds more than " + std::to_string(Most) + " " + Entries;
        case LoadFailure::Why::Truncated:
            return "it ends inside a group of three lines, at " + line;
        default:
            return {};
    }
}

// Exit status and message for a file that failed; Kind names it.
int FileFailed(const std::string& Kind, const std::string& Name, const LoadFailure& f,
               const char* Entries, int Most, std::ostream& err) {
    const std::string why = Unusable(f, Entries, Most);
    if (why.empty()) {
        err << "aztrue align-points: cannot read " << Kind << " \"" << Name
            << "\": no such file, no regular file, over 16 MB or a line over 64 kB\n";
        return kAlignPointsUsageError;
    }
    err << "aztrue align-points: " << Kind << " \"" << Name << "\" cannot be used: " << why << "\n";
    return kAlignPointsInvalidFile;
}

}  // namespace

std::string AlignPointsCommandHelp() {
    return "usage: aztrue align-points [--horizon FILE.hrz] [--latitude DEG]\n"
           "                           [--mount altaz|fork|gem] [--count N]\n"
           "                           [--order NE|NW|SE|SW|Rnd] [--json]\n"
           "\n"
           "Plans the alignment points of a calibration run: COUNT places spread evenly\n"
           "over the sky more than 1 degree above the skyline and away from the zones\n"
           "that are bad for the mount (the zenith of an alt-az mount, the celestial pole\n"
           "of an equatorial one, the meridian of a German equatorial one), printed in\n"
           "the order to walk: number, azimuth (from north through east) and elevation,\n"
           "in degrees.\n"
           "\n"
           "  --horizon FILE  the site's skyline (azimuth, elevation lines); default flat\n"
           "  --latitude DEG  the site's latitude, north positive; default 0\n"
           "  --mount TYPE    altaz (default), fork (equatorial) or gem (German equatorial)\n"
           "  --count N       how many points, 1 or more; default 20\n"
           "  --order ORDER   NE (default), NW, SE, SW: start and direction of the walk;\n"
           "                  Rnd: the order of the candidate list\n"
           "  --json          every field of each point at full precision, radians\n"
           "\n"
           "Exit status: 0 on success, 2 for a bad option or a file that cannot be read,\n"
           "3 for a file that cannot be used (too many entries, a number that does not\n"
           "fit a finite double, candidates cut off inside a group of three lines).\n";
}

int RunAlignPointsCommand(const std::vector<std::string>& args, const std::string& ProgramFolder,
                          std::ostream& out, std::ostream& err) {
    if (AsksForHelp(args)) {
        out << AlignPointsCommandHelp();
        return kAlignPointsOk;
    }
    Options o;
    if (!ParseOptions(args, o, err)) return kAlignPointsUsageError;
    if (!o.HasLatitude) {
        err << "aztrue align-points: warning: no --latitude given; planning for latitude 0 "
               "(the equator)\n";
    }

    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    s->ProgramFolder = ProgramFolder;
    s->Latitude = o.Latitude;
    s->IsAltAz = o.Mount == 0;
    s->IsGEM = o.Mount == 2;
    s->AutoAlignTarget = o.Count;
    s->AutoAlignOrder = static_cast<int16_t>(o.Order);
    if (!o.Horizon.empty()) {
        if (!Readable(o.Horizon)) {
            err << "aztrue align-points: cannot read the horizon file \"" << o.Horizon
                << "\": no such file, or not a readable file\n";
            return kAlignPointsUsageError;
        }
        LoadFailure f;
        if (!ReadHorizon(*s, o.Horizon, s->Horizon, &f))
            return FileFailed("the horizon file", o.Horizon, f, "samples", kMaxHorizonSamples, err);
    }
    LoadFailure f;
    if (!MakeAutoAlignPoints(*s, &f)) {
        const std::string points =
            (std::filesystem::path(ProgramFolder) / kPointsFileName).string();
        return FileFailed("the candidate directions", points, f, "candidates", kAutoAlignTableSize,
                          err);
    }
    if (o.Json)
        WriteJson(*s, o, out);
    else
        WriteText(*s, out);
    return kAlignPointsOk;
}
