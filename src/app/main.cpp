// The aztrue executable: the desktop program, the automation server, the
// fit, plot, align-points and suggest commands and the version.
#include <csignal>
#include <iostream>
#include <string>
#include <vector>

#include "app/AlignPointsCommand.h"
#include "app/AutomationStart.h"
#include "app/DesktopOptions.h"
#include "app/FitCommand.h"
#include "app/PlotCommand.h"
#include "app/ProgramFolder.h"
#include "app/SuggestCommand.h"
#include "app/SynthCommand.h"
#include "model/ModelState.h"

namespace {

void Usage(std::ostream& out) {
    out << "usage: aztrue --automation\n"
           "       aztrue [--developer] [--developer-horizon FILE.hrz] [FILE.AZT]\n"
           "       aztrue --version\n"
           "       aztrue fit [--terms altaz|equatorial|all|none] [--json] [--stats] FILE\n"
           "       aztrue fit --scale-search [--seed N] [--save OUT.AZT] FILE\n"
           "       aztrue plot [--size N] --out DIR FILE\n"
           "       aztrue align-points [--horizon FILE.hrz] [--latitude DEG]\n"
           "                           [--mount altaz|fork|gem] [--count N]\n"
           "                           [--order NE|NW|SE|SW|Rnd] [--json]\n"
           "       aztrue suggest [--horizon FILE.hrz] [--count N] [--json] FILE.AZT\n"
           "       aztrue synth [--count N] [--cone ARCMIN] [--hub ARCMIN] [--pa-west ARCMIN]\n"
           "                    [--pa-north ARCMIN] [--latitude DEG] [--theta-offset ARCMIN]\n"
           "                    [--phi-offset ARCMIN] [--interval MIN] [--lst HOURS]\n"
           "                    [--noise ARCSEC] [--seed N] --out FILE.AZT\n";
}

}  // namespace

int main(int argc, char** argv) {
    // Under a file-size limit, a write past it raises SIGXFSZ, which would end
    // the process (and the server of every client) in the middle of a save.
    // Ignored, the write fails instead: the save returns false and the old
    // file stays.
    std::signal(SIGXFSZ, SIG_IGN);
    std::vector<std::string> args(argv + 1, argv + argc);
    if (args.size() == 1 && args[0] == "--automation") {
        return RunAutomation(argc, argv);
    }
    if (!args.empty() && args[0] == "--version") {
        ModelState state;
        InitModel(state);
        std::cout << state.Version << "\n";
        return 0;
    }
    if (!args.empty() && args[0] == "fit") {
        return RunFitCommand(std::vector<std::string>(args.begin() + 1, args.end()), std::cout,
                             std::cerr);
    }
    if (!args.empty() && args[0] == "plot") {
        return RunPlotCommand(argc, argv, std::vector<std::string>(args.begin() + 1, args.end()));
    }
    if (!args.empty() && args[0] == "align-points") {
        return RunAlignPointsCommand(std::vector<std::string>(args.begin() + 1, args.end()),
                                     FindProgramFolder(), std::cout, std::cerr);
    }
    if (!args.empty() && args[0] == "suggest") {
        return RunSuggestCommand(std::vector<std::string>(args.begin() + 1, args.end()),
                                 FindProgramFolder(), std::cout, std::cerr);
    }
    if (!args.empty() && args[0] == "synth") {
        return RunSynthCommand(std::vector<std::string>(args.begin() + 1, args.end()),
                               FindProgramFolder(), std::cout, std::cerr);
    }
    if (!args.empty() && (args[0] == "--help" || args[0] == "-h")) {
        Usage(std::cout);
        return 0;
    }
    // Otherwise the desktop program, with at most one calibration to open.
    DesktopOptions options;
    if (ParseDesktopOptions(args, options, std::cerr)) return RunDesktop(argc, argv, options);
    Usage(std::cerr);
    return 2;
}
