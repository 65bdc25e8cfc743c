#include "app/DesktopOptions.h"

#include <filesystem>
#include <fstream>

bool ParseDesktopOptions(const std::vector<std::string>& args, DesktopOptions& Options,
                         std::ostream& err) {
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a == "--developer") {
            Options.Developer = true;
        } else if (a == "--developer-horizon") {
            if (i + 1 >= args.size()) {
                err << "aztrue: --developer-horizon needs a horizon file\n";
                return false;
            }
            Options.Developer = true;
            Options.DeveloperHorizon = args[++i];
            // The CalPoints entry would create a missing file empty and read
            // a flat skyline: a mistyped name is caught here instead.
            std::error_code ec;
            if (!std::filesystem::is_regular_file(Options.DeveloperHorizon, ec) ||
                !std::ifstream(Options.DeveloperHorizon).good()) {
                err << "aztrue: cannot read the horizon file \"" << Options.DeveloperHorizon
                    << "\"\n";
                return false;
            }
        } else if (!a.empty() && a[0] != '-' && Options.File.empty()) {
            Options.File = a;
        } else {
            err << "aztrue: unexpected \"" << a << "\"\n";
            return false;
        }
    }
    return true;
}
