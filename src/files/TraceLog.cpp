// LogLine: the optional trace log. Off unless the marker file exists; the
// log file, once opened, stays open to the end of the process.
#include "files/TraceLog.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <ctime>
#include <string>

#include "files/DocumentsFolder.h"
#include "files/TraceLogForTests.h"

namespace {

constexpr const char* kSubfolder = "/Brightfold Optics";
constexpr const char* kMarkerName = "/AztrueLog-Enabled.txt";
constexpr const char* kLogPrefix = "/AztrueLog-";

struct TraceLogState {
    std::FILE* file = nullptr;  // the open log file; none while null
    std::string folder;         // the user's documents folder, once known
    std::string marker;         // the marker's full path under that folder
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

// The marker turns the log on by existing; its content is never read. It is
// tested at every line, by one stat of a path kept ready: clients call at
// their tracking rate, and this is all a line costs while the log is off.
bool MarkerExists() {
    TraceLogState& st = State();
    // Until the folder is known, every line asks for it again.
    if (st.folder.empty() || st.marker.empty()) {
        st.folder = DocumentsFolder();
        st.marker = st.folder + kSubfolder + kMarkerName;
    }
    struct stat info {};
    return ::stat(st.marker.c_str(), &info) == 0 && !S_ISDIR(info.st_mode);
}

// The log file for appending, created if absent; null for anything but a
// regular file. A FIFO with no reader would block an ordinary open, and one
// with a reader would take the lines away: neither opens.
std::FILE* OpenLogFile(const std::string& name) {
    const int fd = ::open(name.c_str(),
                          O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0644);
    if (fd < 0) return nullptr;
    struct stat info {};
    std::FILE* file = nullptr;
    if (::fstat(fd, &info) == 0 && S_ISREG(info.st_mode) && ::fcntl(fd, F_SETFL, O_APPEND) == 0)
        file = ::fdopen(fd, "ab");
    if (!file) ::close(fd);
    return file;
}

void AppendLine(const std::string& text) {
    TraceLogState& st = State();
    if (!st.file) {
        // The date in the name is that of the opening: a run that passes
        // midnight stays in its first file. When the file cannot be opened
        // the line is lost and the next line tries again.
        const std::string name =
            st.folder + kSubfolder + kLogPrefix + LocalTimeText("%Y-%m-%d") + ".txt";
        st.file = OpenLogFile(name);
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
    if (TraceLogMarkerPresent()) AppendLogLine(Text);
}

bool TraceLogMarkerPresent() {
    try {
        return MarkerExists();
    } catch (...) {
        return false;  // the log must never disturb its caller
    }
}

void AppendLogLine(const std::string& Text) {
    try {
        AppendLine(Text);
    } catch (...) {
        // Not even a failure to build the line reaches the caller.
    }
}

void ResetTraceLogForTests() {
    TraceLogState& st = State();
    if (st.file) std::fclose(st.file);
    st.file = nullptr;
    st.folder.clear();
    st.marker.clear();
}
