#include "app/FitCommand.h"

#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>

#include "app/CommandWords.h"
#include "app/FitReport.h"
#include "app/ScaleSearchReport.h"
#include "files/CalFile.h"
#include "model/ModelState.h"
#include "model/Residuals.h"
#include "model/ScaleSearch.h"
#include "model/Solver.h"
#include "model/Terms.h"

namespace {

enum class TermChoice { FromFile, AltAz, Equatorial, All, None };

bool ParseTermChoice(const std::string& word, TermChoice& choice) {
    if (word == "altaz")
        choice = TermChoice::AltAz;
    else if (word == "equatorial")
        choice = TermChoice::Equatorial;
    else if (word == "all")
        choice = TermChoice::All;
    else if (word == "none")
        choice = TermChoice::None;
    else
        return false;
    return true;
}

void ApplyTermChoice(ModelState& s, TermChoice choice) {
    switch (choice) {
        case TermChoice::FromFile:
            break;
        case TermChoice::AltAz:
            EnableAltAz(s);
            break;
        case TermChoice::Equatorial:
            EnableGEM(s);
            break;
        case TermChoice::All:
            EnableAll(s);
            break;
        case TermChoice::None:
            // No optional term at all: the preset keeps "Cone" and "Hub" as
            // they were, a script asking for none expects them off too.
            DisableAll(s);
            s.TermEnable[1] = 0;
            s.TermEnable[2] = 0;
            break;
    }
}

// Whether args[i] is the option Name, as "--name VALUE" or "--name=VALUE".
// Value is the option's value, or nothing when it has none.
bool IsOption(const std::vector<std::string>& args, size_t& i, const std::string& Name,
              std::optional<std::string>& Value) {
    const std::string& a = args[i];
    Value.reset();
    if (a.rfind(Name + "=", 0) == 0) {
        Value = a.substr(Name.size() + 1);
    } else if (a != Name) {
        return false;
    } else if (i + 1 < args.size()) {
        Value = args[++i];
    }
    return true;
}

}  // namespace

std::string FitCommandHelp() {
    return "usage: aztrue fit [--terms altaz|equatorial|all|none] [--stats] [--json] FILE\n"
           "       aztrue fit --scale-search [--seed N] [--save OUT.AZT] [--terms SET] [--stats]\n"
           "                  [--json] FILE\n"
           "\n"
           "Loads the calibration file FILE, fits the pointing model to its points and\n"
           "prints the result: settings, error figures, axis misalignment, encoder\n"
           "offsets, every active term and the error of every point, in arcseconds,\n"
           "and which enabled terms the fit left out and why.\n"
           "\n"
           "  --terms SET   choose the correction terms before fitting instead of the\n"
           "                ones stored in the file: altaz, equatorial, all, or none\n"
           "                (none fits only the encoder offsets and axis misalignment)\n"
           "  --stats       add the model quality: each term's standard error and\n"
           "                significance, the population standard deviation, the\n"
           "                cross-validated error (one more fit per used point), outlier\n"
           "                candidates and strongly correlated terms\n"
           "  --json        print the same content as JSON\n"
           "  --scale-search\n"
           "                before the fit, search for the encoders' scale factors that\n"
           "                the linear fit cannot find (random steps of at most 1/20000,\n"
           "                kept when the RMS error of the used points falls, until 61\n"
           "                in a row fail); the report gives the factors found before\n"
           "                the points\n"
           "  --seed N      start the search's random numbers from N (0 to 4294967295,\n"
           "                default 5489, the program's own); the same seed gives the\n"
           "                same result\n"
           "  --save OUT    write the calibration with the new factors to OUT\n"
           "  --help        show this text\n"
           "\n"
           "Exit status: 0 on success, 2 for a usage error or a file that cannot be\n"
           "read, 3 for a file that is not a valid calibration file or whose fit is not\n"
           "finite, 4 when OUT cannot be written. FILE is only read; only --save writes,\n"
           "and only to OUT.\n";
}

int RunFitCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    TermChoice choice = TermChoice::FromFile;
    bool json = false;
    bool stats = false;
    bool search = false;
    ScaleSearchReport report;
    std::optional<uint32_t> seed;
    std::string file;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        std::optional<std::string> value;
        if (a == "--help" || a == "-h") {
            out << FitCommandHelp();
            return kFitOk;
        } else if (a == "--json") {
            json = true;
        } else if (a == "--stats") {
            stats = true;
        } else if (a == "--scale-search") {
            search = true;
        } else if (IsOption(args, i, "--terms", value)) {
            if (!value) {
                err << "aztrue fit: --terms needs a value: altaz, equatorial, all or none\n";
                return kFitUsageError;
            }
            if (!ParseTermChoice(*value, choice)) {
                err << "aztrue fit: unknown term set \"" << *value
                    << "\"; use altaz, equatorial, all or none\n";
                return kFitUsageError;
            }
        } else if (IsOption(args, i, "--seed", value)) {
            seed.emplace();
            if (!value || !ParseWhole<uint32_t>(*value, *seed, 0, UINT32_MAX)) {
                err << "aztrue fit: --seed needs a whole number from 0 to 4294967295\n";
                return kFitUsageError;
            }
        } else if (IsOption(args, i, "--save", value)) {
            if (!value || value->empty()) {
                err << "aztrue fit: --save needs the name of the file to write\n";
                return kFitUsageError;
            }
            report.SavedTo = *value;
        } else if (a.size() > 1 && a[0] == '-') {
            err << "aztrue fit: unknown option \"" << a << "\"\n" << FitCommandHelp();
            return kFitUsageError;
        } else if (file.empty()) {
            file = a;
        } else {
            err << "aztrue fit: only one calibration file can be fitted at a time\n";
            return kFitUsageError;
        }
    }
    if (!search && (seed || !report.SavedTo.empty())) {
        err << "aztrue fit: --seed and --save go with --scale-search\n";
        return kFitUsageError;
    }
    if (file.empty()) {
        err << "aztrue fit: no calibration file given\n" << FitCommandHelp();
        return kFitUsageError;
    }
    std::error_code ec;
    if (!std::filesystem::is_regular_file(file, ec) || !std::ifstream(file).good()) {
        err << "aztrue fit: cannot read \"" << file << "\": no such file, or not a readable file\n";
        return kFitUsageError;
    }

    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    if (!LoadCalFile(*s, file)) {
        err << "The file you are trying to open is not a valid calibration file.\n";
        return kFitInvalidFile;
    }
    s->FullFileName = file;
    ApplyTermChoice(*s, choice);
    if (!search) {
        Calibrate(*s);
        ComputeResiduals(*s);
    } else {
        report.Seed = seed.value_or(SearchRandom::kDefaultSeed);
        SearchRandom random(report.Seed);
        report.Result = RunScaleSearch(*s, random);
    }
    // A report of infinities and NaNs would look like a result to a script;
    // such a fit is refused like an invalid file, and nothing is saved.
    const std::string bad = FirstNonFiniteFigure(*s);
    if (!bad.empty()) {
        err << "aztrue fit: the fit of \"" << file << "\" gives no finite number for " << bad
            << "; check the settings and points of the file\n";
        return kFitInvalidFile;
    }
    if (search && !report.SavedTo.empty() && !SaveCalFile(*s, report.SavedTo)) {
        err << "aztrue fit: unable to save the calibration to \"" << report.SavedTo << "\"\n";
        return kFitSaveError;
    }
    const ScaleSearchReport* searched = search ? &report : nullptr;
    if (json)
        WriteFitReportJson(*s, file, out, stats, searched);
    else
        WriteFitReport(*s, file, out, stats, searched);
    return kFitOk;
}
