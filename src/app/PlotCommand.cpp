#include "app/PlotCommand.h"

#include <QApplication>
#include <QBuffer>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>

#include "app/FitCommand.h"
#include "app/FitReport.h"
#include "files/AtomicFile.h"
#include "files/CalFile.h"
#include "model/ModelState.h"
#include "model/Residuals.h"
#include "model/Solver.h"
#include "windows/PlotPictures.h"

namespace {

// Sizes that --size takes: the smallest leaves the graphs a plot inside
// their margins, the largest keeps a picture within a few tens of megabytes.
constexpr int kMinSize = 200;
constexpr int kMaxSize = 4000;

bool ParseSize(const std::string& text, int& size) {
    if (text.empty() || text.size() > 5) return false;
    for (char c : text)
        if (c < '0' || c > '9') return false;
    size = std::stoi(text);
    return size >= kMinSize && size <= kMaxSize;
}

// The value of an option given as "--name VALUE" or "--name=VALUE"; false
// when the word is not that option. A missing value is an empty text.
bool OptionValue(const std::vector<std::string>& args, size_t& i, const std::string& name,
                 std::string& value, bool& missing) {
    const std::string& a = args[i];
    if (a == name) {
        missing = i + 1 >= args.size();
        value = missing ? std::string() : args[++i];
        return true;
    }
    if (a.rfind(name + "=", 0) == 0) {
        value = a.substr(name.size() + 1);
        missing = false;
        return true;
    }
    return false;
}

// Qt's notes about the environment (no runtime folder, no session) say
// nothing about the pictures; the command's own messages are its errors.
void QuietQtNotes(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::cerr << "aztrue plot: " << message.toStdString() << "\n";
}

// The picture as PNG, replacing Path whole or not at all (WriteFileAtomically).
bool WritePng(const QImage& image, const std::string& path, std::string& why) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG")) {
        why = "the picture could not be encoded";
        return false;
    }
    if (!WriteFileAtomically(path, bytes.toStdString())) {
        why = errno == EINVAL ? "it is no regular file" : std::strerror(errno);
        return false;
    }
    return true;
}

}  // namespace

std::string PlotCommandHelp() {
    return "usage: aztrue plot [--size N] --out DIR FILE\n"
           "\n"
           "Loads the calibration file FILE, fits the pointing model to its points and\n"
           "writes every plot of the fit into the folder DIR (made if it does not exist),\n"
           "as PNG pictures drawn as the windows draw them:\n"
           "\n"
           "  errors.png      the target of the pointing errors of the main window\n"
           "  positions.png   the map of the points on the sky\n"
           "  analysis-Y-vs-X.png   the residual graphs, Y theta-error or phi-error,\n"
           "                  X theta, phi or zenith-distance, scaled by all points\n"
           "\n"
           "  --out DIR   the folder for the pictures\n"
           "  --size N    side of the two round plots and width of the graphs, in pixels,\n"
           "              from 200 to 4000; without it the pictures have the sizes of\n"
           "              the windows' plots (309, and 521 by 237)\n"
           "  --help      show this text\n"
           "\n"
           "No display is needed. Exit status: 0 on success, 2 for a usage error, a\n"
           "file that cannot be read or a folder that cannot be written, 3 for a file\n"
           "that is not a valid calibration file or whose fit is not finite. The file\n"
           "is only read.\n";
}

int RunPlotCommand(int argc, char** argv, const std::vector<std::string>& args) {
    std::string file, folder, sizeText;
    bool sizeGiven = false;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        std::string value;
        bool missing = false;
        if (a == "--help" || a == "-h") {
            std::cout << PlotCommandHelp();
            return kFitOk;
        } else if (OptionValue(args, i, "--out", value, missing)) {
            if (missing || value.empty()) {
                std::cerr << "aztrue plot: --out needs a folder\n";
                return kFitUsageError;
            }
            folder = value;
        } else if (OptionValue(args, i, "--size", value, missing)) {
            sizeText = value;
            sizeGiven = true;
        } else if (a.size() > 1 && a[0] == '-') {
            std::cerr << "aztrue plot: unknown option \"" << a << "\"\n" << PlotCommandHelp();
            return kFitUsageError;
        } else if (file.empty()) {
            file = a;
        } else {
            std::cerr << "aztrue plot: only one calibration file can be plotted at a time\n";
            return kFitUsageError;
        }
    }
    int size = 0;
    if (sizeGiven && !ParseSize(sizeText, size)) {
        std::cerr << "aztrue plot: --size takes a whole number of pixels from " << kMinSize
                  << " to " << kMaxSize << ", not \"" << sizeText << "\"\n";
        return kFitUsageError;
    }
    if (file.empty()) {
        std::cerr << "aztrue plot: no calibration file given\n" << PlotCommandHelp();
        return kFitUsageError;
    }
    if (folder.empty()) {
        std::cerr << "aztrue plot: no folder for the pictures given (--out DIR)\n";
        return kFitUsageError;
    }
    std::error_code ec;
    if (!std::filesystem::is_regular_file(file, ec) || !std::ifstream(file).good()) {
        std::cerr << "aztrue plot: cannot read \"" << file
                  << "\": no such file, or not a readable file\n";
        return kFitUsageError;
    }

    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    if (!LoadCalFile(*s, file)) {
        std::cerr << "The file you are trying to open is not a valid calibration file.\n";
        return kFitInvalidFile;
    }
    s->FullFileName = file;
    Calibrate(*s);
    ComputeResiduals(*s);
    // Dots at infinity would make pictures that look like a result.
    const std::string bad = FirstNonFiniteFigure(*s);
    if (!bad.empty()) {
        std::cerr << "aztrue plot: the fit of \"" << file << "\" gives no finite number for " << bad
                  << "; check the settings and points of the file\n";
        return kFitInvalidFile;
    }

    std::filesystem::create_directories(folder, ec);
    if (!std::filesystem::is_directory(folder, ec)) {
        std::cerr << "aztrue plot: cannot make the folder \"" << folder << "\""
                  << (ec ? ": " + ec.message() : std::string()) << "\n";
        return kFitUsageError;
    }

    // Drawn off the screen whatever the environment: the pictures need
    // fonts, never a display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(QuietQtNotes);
    QApplication app(argc, argv);
    for (const PlotPicture& p : DrawPlotPictures(*s, size)) {
        const std::string path = (std::filesystem::path(folder) / p.FileName).string();
        std::string why;
        if (!WritePng(p.Image, path, why)) {
            std::cerr << "aztrue plot: cannot write \"" << path << "\": " << why << "\n";
            return kFitUsageError;
        }
    }
    return kFitOk;
}
