// POSIX file calls stand in here for the platform's file interface: the
// standard library can neither open a path without blocking (a FIFO waits
// for a writer) nor tell a regular file from a device before reading it.
#include "files/TextLineReader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace {

// The whole content of a regular file of at most `limit` bytes into text.
// The open does not block, and nothing but a regular file is read. The
// limit holds for the bytes read too, for a file that grows meanwhile.
bool ReadRegularFile(const std::string& fileName, std::size_t limit, std::string& text) {
    const int fd = ::open(fileName.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (fd < 0) return false;
    struct stat st {};
    bool ok = ::fstat(fd, &st) == 0 && S_ISREG(st.st_mode) &&
              static_cast<unsigned long long>(st.st_size) <= limit;
    if (ok) text.reserve(static_cast<std::size_t>(st.st_size));
    char chunk[65536];
    while (ok) {
        const ssize_t n = ::read(fd, chunk, sizeof chunk);
        if (n < 0 && errno == EINTR) continue;
        if (n == 0) break;
        ok = n > 0 && text.size() + static_cast<std::size_t>(n) <= limit;
        if (ok) text.append(chunk, static_cast<std::size_t>(n));
    }
    ::close(fd);
    return ok;
}

// Whether some line of text, without its line end, is longer than limit.
bool HasLongLine(const std::string& text, std::size_t limit) {
    std::size_t run = 0;
    for (const char c : text) {
        run = (c == '\r' || c == '\n') ? 0 : run + 1;
        if (run > limit) return true;
    }
    return false;
}

}  // namespace

bool TextLineReader::Open(const std::string& FileName) {
    text_.clear();
    next_ = 0;
    linesRead_ = 0;
    if (!ReadRegularFile(FileName, kMaxFileBytes, text_) || HasLongLine(text_, kMaxLineBytes)) {
        text_.clear();
        return false;
    }
    return true;
}

bool TextLineReader::AtEnd() {
    return next_ >= text_.size();
}

bool TextLineReader::ReadLine(std::string& Line) {
    Line.clear();
    if (AtEnd()) return false;
    std::size_t end = next_;
    std::size_t after = text_.size();  // where the next line starts
    for (; end < text_.size(); ++end) {
        const char c = text_[end];
        if (c == '\n') {
            after = end + 1;
            break;
        }
        if (c == '\r') {
            after = text_.compare(end, 2, "\r\n") == 0 ? end + 2 : end + 1;
            break;
        }
    }
    Line.assign(text_, next_, end - next_);
    next_ = after;
    ++linesRead_;
    return true;
}
