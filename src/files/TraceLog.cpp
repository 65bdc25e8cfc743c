// LogLine: the optional trace log. Off unless the marker file exists; the
// log file, once opened, stays open to the end of the process.
#include "files/TraceLog.h"

#include <cstdio>
#include <ctime>
#include <filesystem>
#include <string>
#include <system_error>

#include "files/DocumentsFolder.h"
#include "files/TraceLogForTests.h"

namespace {

constexpr const char* kSubfolder = "/Brightfold Optics";
constexpr const char* kMarkerName = "/AztrueLog-Enabled.txt";
constexpr const char* kLogPrefix = "/AztrueLog-";

struct TraceLogState {
    std::FILE* file = nullptr;  // the open log file; none while null
    std::string folder;         // the user's documents folder, once known
};

// Allocated once and never destroyed, so that objects torn down at process
// end can still log; the open file is closed by the end of the process.
TraceLogState& State() {
    static auto* state = new TraceLogState();
    return *state;
}

// Local date and time by a strftime pattern.
std::string LocalTimeText(const char* pattern) {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    if (!localtime_r(&now, &local)) return {};
    char buf[64];
    const size_t n = std::strftime(buf, sizeof buf, pattern, &local);
    return std::string(buf, n);
}

// The marker turns the log on by existing; its content is never read.
bool MarkerExists(const std::string& folder) {
    std::error_code ec;
    const auto status = std::filesystem::status(folder + kSubfolder + kMarkerName, ec);
    return !ec && std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

void WriteLogLine(const std::string& text) {
    TraceLogState& st = State();
    // Until the folder is known, every line asks for it again.
    if (st.folder.empty()) st.folder = DocumentsFolder();
    if (!MarkerExists(st.folder)) return;
    if (!st.file) {
        // The date in the name is that of the opening: a run that passes
        // midnight stays in its first file. When the file cannot be opened
        // the line is lost and the next line tries again.
        const std::string name =
            st.folder + kSubfolder + kLogPrefix + LocalTimeText("%Y-%m-%d") + ".txt";
        st.file = std::fopen(name.c_str(), "ab");
        if (!st.file) return;
    }
    // The general date format of this platform: "yyyy-MM-dd HH:mm:ss", local
    // time. Text of the program is UTF-8 and goes to the log as it is.
    const std::string line = LocalTimeText("%Y-%m-%d %H:%M:%S") + ": " + text + "\r\n";
    // A failed write is not reported: the log must never disturb its caller.
    std::fwrite(line.data(), 1, line.size(), st.file);
    std::fflush(st.file);
}

}  // namespace

void LogLine(const std::string& Text) {
    try {
        WriteLogLine(Text);
    } catch (...) {
        // Not even a failure to build the line reaches the caller.
    }
}

void ResetTraceLogForTests() {
    TraceLogState& st = State();
    if (st.file) std::fclose(st.file);
    st.file = nullptr;
    st.folder.clear();
}
