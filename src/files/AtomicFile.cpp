// POSIX file calls stand in here for the platform's file interface: the
// standard library has no flush to the disk and no way to create a file
// that must not exist yet.
#include "files/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>

namespace {

// Links followed before a chain of symbolic links counts as a loop (the
// kernel's own limit).
constexpr int kMaxLinkHops = 40;

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.find_last_of('/');
    if (slash == std::string::npos) return ".";
    if (slash == 0) return "/";
    return path.substr(0, slash);
}

// Follows symbolic links from path to the name they finally stand for, which
// need not exist yet (a link to a file still to be made). False for a loop
// or a link that cannot be read.
bool FollowLinks(std::string& path) {
    for (int hop = 0; hop < kMaxLinkHops; ++hop) {
        struct stat st {};
        if (::lstat(path.c_str(), &st) != 0 || !S_ISLNK(st.st_mode)) return true;
        // A link longer than the longest path the system takes leads nowhere.
        std::array<char, PATH_MAX> target{};
        const ssize_t n = ::readlink(path.c_str(), target.data(), target.size());
        if (n <= 0 || static_cast<std::size_t>(n) >= target.size()) return false;
        const std::string next(target.data(), static_cast<std::size_t>(n));
        path = next.front() == '/' ? next : FolderOf(path) + "/" + next;
    }
    return false;
}

// A new, empty file in folder that no one else has, opened for writing. The
// name starts with a dot, so that a temporary file left by a crash stays out
// of the file choosers. Created with the permissions a new file gets from
// the process's umask.
int CreateTemporary(const std::string& folder, std::string& name) {
    static unsigned long counter = 0;
    for (int attempt = 0; attempt < 100; ++attempt) {
        name = folder + "/.aztrue-save-" + std::to_string(::getpid()) + "-" +
               std::to_string(counter++) + ".tmp";
        const int fd = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd >= 0 || errno != EEXIST) return fd;
    }
    return -1;
}

bool WriteAll(int fd, const std::string& bytes) {
    const char* p = bytes.data();
    std::size_t left = bytes.size();
    while (left > 0) {
        const ssize_t n = ::write(fd, p, left);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        p += n;
        left -= static_cast<std::size_t>(n);
    }
    return true;
}

// The new file takes the owner, group and mode of the one it replaces. Only
// a privileged process can give a file away, so a failed change of owner is
// no failure: the group may still be kept, and otherwise the file is the
// saver's, as any file it makes. The mode is set last, as a change of owner
// clears the set-id bits.
bool KeepOwnerAndMode(int fd, const struct stat& old) {
    if (::fchown(fd, old.st_uid, old.st_gid) != 0) {
        [[maybe_unused]] const int groupKept = ::fchown(fd, static_cast<uid_t>(-1), old.st_gid);
    }
    return ::fchmod(fd, old.st_mode & 07777) == 0;
}

// Makes the rename itself lasting. Some file systems refuse to flush a
// folder; the new file is in place all the same, so this cannot fail the
// save.
void FlushFolder(const std::string& folder) {
    const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return;
    [[maybe_unused]] const int flushed = ::fsync(fd);
    ::close(fd);
}

}  // namespace

bool WriteFileAtomically(const std::string& FileName, const std::string& Bytes) {
    if (FileName.empty()) return false;
    std::string target = FileName;
    if (!FollowLinks(target)) return false;
    struct stat old {};
    const bool exists = ::stat(target.c_str(), &old) == 0;
    // Only a regular file is replaced, never a folder, device, FIFO or socket
    // of that name; and a file the user has write-protected stays as it is,
    // as it would for a program that writes into it.
    if (exists && !S_ISREG(old.st_mode)) {
        errno = S_ISDIR(old.st_mode) ? EISDIR : EINVAL;
        return false;
    }
    if (exists && ::access(target.c_str(), W_OK) != 0) return false;

    const std::string folder = FolderOf(target);
    std::string temporary;
    const int fd = CreateTemporary(folder, temporary);
    if (fd < 0) return false;
    bool ok = (!exists || KeepOwnerAndMode(fd, old)) && WriteAll(fd, Bytes) && ::fsync(fd) == 0;
    ok = ::close(fd) == 0 && ok;
    ok = ok && ::rename(temporary.c_str(), target.c_str()) == 0;
    if (!ok) {
        const int cause = errno;
        ::unlink(temporary.c_str());
        errno = cause;
        return false;
    }
    FlushFolder(folder);
    return true;
}
