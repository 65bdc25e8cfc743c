#include "app/SuggestCommand.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>

#include "app/CommandWords.h"
#include "app/ReportText.h"
#include "autoalign/AlignPoints.h"
#include "autoalign/HorizonFile.h"
#include "autoalign/NextPoints.h"
#include "files/CalFile.h"
#include "model/Constants.h"
#include "model/ModelState.h"
#include "model/Residuals.h"
#include "model/Solver.h"

namespace {

struct Options {
    std::string File;
    std::string Horizon;
    int Count = 5;
    bool Json = false;
};

// False with a message on err for a bad word.
bool ParseOptions(const std::vector<std::string>& args, Options& o, std::ostream& err) {
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a == "--json") {
            o.Json = true;
        } else if (a == "--horizon" || a == "--count") {
            if (i + 1 >= args.size()) {
                err << "aztrue suggest: " << a << " needs a value\n";
                return false;
            }
            const std::string& v = args[++i];
            if (a == "--horizon") {
                o.Horizon = v;
            } else if (!ParseWhole(v, o.Count, 1, kMaxSuggestedPoints)) {
                err << "aztrue suggest: bad value \"" << v << "\" for --count: a whole number "
                    << "from 1 to " << kMaxSuggestedPoints << "\n";
                return false;
            }
        } else if (a.size() > 1 && a[0] == '-') {
            err << "aztrue suggest: unknown option \"" << a << "\"\n" << SuggestCommandHelp();
            return false;
        } else if (o.File.empty()) {
            o.File = a;
        } else {
            err << "aztrue suggest: only one calibration file at a time\n";
            return false;
        }
    }
    if (o.File.empty()) {
        err << "aztrue suggest: no calibration file given\n" << SuggestCommandHelp();
        return false;
    }
    return true;
}

bool Readable(const std::string& file) {
    std::error_code ec;
    return std::filesystem::is_regular_file(file, ec) && std::ifstream(file).good();
}

double Azimuth(const AutoAlignPoint& p) {
    return p.Phi * 180 / kHalfTurn;
}

double Elevation(const AutoAlignPoint& p) {
    return 90 - p.Theta * 180 / kHalfTurn;
}

void WriteText(const NextPoints& next, std::ostream& out) {
    out << "Next points: " << next.Points.size() << " of the candidates, for " << next.NumFitted
        << " active terms and " << next.NumUsed << " used points\n"
        << "Point  Azimuth  Elevation  Pick  Gain\n";
    for (const SuggestedPoint& p : next.Points) {
        char line[80];
        std::snprintf(line, sizeof line, "%5d  %7.2f  %9.2f  %4d  %.4g\n", p.Point.Index,
                      Azimuth(p.Point), Elevation(p.Point), p.Pick, p.Gain);
        out << line;
    }
}

void WriteJson(const Options& o, const NextPoints& next, std::ostream& out) {
    out << "{\n  \"file\": " << JsonString(o.File) << ",\n  \"activeTerms\": " << next.NumFitted
        << ",\n  \"usedPoints\": " << next.NumUsed << ",\n  \"points\": [";
    bool first = true;
    for (const SuggestedPoint& p : next.Points) {
        out << (first ? "\n" : ",\n") << "    {\"index\": " << p.Point.Index
            << ", \"azimuth\": " << JsonNumber(Azimuth(p.Point))
            << ", \"elevation\": " << JsonNumber(Elevation(p.Point)) << ", \"pick\": " << p.Pick
            << ", \"gain\": " << JsonNumber(p.Gain) << "}";
        first = false;
    }
    out << "\n  ]\n}\n";
}

}  // namespace

std::string SuggestCommandHelp() {
    return "usage: aztrue suggest [--horizon FILE.hrz] [--count N] [--json] FILE.AZT\n"
           "\n"
           "Fits the calibration FILE.AZT and names the places in the sky where the next\n"
           "stars would pin its active terms down best: of the alignment planner's\n"
           "candidates above the skyline, the one that most shrinks the joint uncertainty\n"
           "of the terms (most multiplies the determinant of the fit's normal matrix),\n"
           "then the best one with that star added, and so on. Printed in the order to\n"
           "walk: number, azimuth (from north through east) and elevation in degrees, the\n"
           "order of choice and the factor by which that star multiplies the\n"
           "determinant (the larger, the more the star adds).\n"
           "\n"
           "  --horizon FILE  the site's skyline (azimuth, elevation lines); default flat\n"
           "  --count N       how many points, 1 to 500; default 5\n"
           "  --json          the same as JSON\n"
           "\n"
           "Exit status: 0 on success, 2 for a bad option or a file that cannot be read,\n"
           "3 for a file that is not a valid calibration file. Files are only read.\n";
}

int RunSuggestCommand(const std::vector<std::string>& args, const std::string& ProgramFolder,
                      std::ostream& out, std::ostream& err) {
    if (AsksForHelp(args)) {
        out << SuggestCommandHelp();
        return kSuggestOk;
    }
    Options o;
    if (!ParseOptions(args, o, err)) return kSuggestUsageError;
    if (!Readable(o.File)) {
        err << "aztrue suggest: cannot read \"" << o.File
            << "\": no such file, or not a readable file\n";
        return kSuggestUsageError;
    }
    if (!o.Horizon.empty() && !Readable(o.Horizon)) {
        err << "aztrue suggest: cannot read the horizon file \"" << o.Horizon
            << "\": no such file, or not a readable file\n";
        return kSuggestUsageError;
    }

    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    if (!LoadCalFile(*s, o.File)) {
        err << "The file you are trying to open is not a valid calibration file.\n";
        return kSuggestInvalidFile;
    }
    s->ProgramFolder = ProgramFolder;
    if (!o.Horizon.empty() && !ReadHorizon(*s, o.Horizon, s->Horizon)) {
        err << "aztrue suggest: the horizon file \"" << o.Horizon
            << "\" cannot be used: more than 1000 samples, or a number too large\n";
        return kSuggestUsageError;
    }
    Calibrate(*s);
    ComputeResiduals(*s);
    const NextPoints next = SuggestNextPoints(*s, o.Count);
    if (!next.Read) {
        err << "aztrue suggest: cannot read the candidate directions \""
            << (std::filesystem::path(ProgramFolder) / kPointsFileName).string() << "\"\n";
        return kSuggestUsageError;
    }
    if (next.Points.empty()) {
        err << "aztrue suggest: no point to suggest: the fit has no active term, or no "
               "candidate lies above the skyline\n";
    }
    if (o.Json)
        WriteJson(o, next, out);
    else
        WriteText(next, out);
    return kSuggestOk;
}
