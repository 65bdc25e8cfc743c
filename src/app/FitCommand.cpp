#include "app/FitCommand.h"

#include <filesystem>
#include <fstream>
#include <memory>

#include "app/FitReport.h"
#include "files/CalFile.h"
#include "model/ModelState.h"
#include "model/Residuals.h"
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

}  // namespace

std::string FitCommandHelp() {
    return "usage: aztrue fit [--terms altaz|equatorial|all|none] [--stats] [--json] FILE\n"
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
           "  --help        show this text\n"
           "\n"
           "Exit status: 0 on success, 2 for a usage error or a file that cannot be\n"
           "read, 3 for a file that is not a valid calibration file. The file is only read.\n";
}

int RunFitCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    TermChoice choice = TermChoice::FromFile;
    bool json = false;
    bool stats = false;
    std::string file;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a == "--help" || a == "-h") {
            out << FitCommandHelp();
            return kFitOk;
        } else if (a == "--json") {
            json = true;
        } else if (a == "--stats") {
            stats = true;
        } else if (a == "--terms" || a.rfind("--terms=", 0) == 0) {
            std::string value;
            if (a == "--terms") {
                if (i + 1 >= args.size()) {
                    err << "aztrue fit: --terms needs a value: altaz, equatorial, all or none\n";
                    return kFitUsageError;
                }
                value = args[++i];
            } else {
                value = a.substr(8);
            }
            if (!ParseTermChoice(value, choice)) {
                err << "aztrue fit: unknown term set \"" << value
                    << "\"; use altaz, equatorial, all or none\n";
                return kFitUsageError;
            }
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
    Calibrate(*s);
    ComputeResiduals(*s);
    if (json)
        WriteFitReportJson(*s, file, out, stats);
    else
        WriteFitReport(*s, file, out, stats);
    return kFitOk;
}
