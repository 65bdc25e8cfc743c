// A save that is cut short or cannot be made leaves the old file as it was;
// a save through a symbolic link replaces the file it names, with the
// permissions that file had.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <functional>

#include "files/FileTestSupport.h"

namespace {

// The 40 stars of the shipped sample: about 9 kB as a file.
std::unique_ptr<ModelState> SampleModel() {
    auto s = filetest::FreshModel();
    EXPECT_TRUE(LoadCalFile(*s, AZTRUE_SOURCE_DIR "/data/sample.AZT"));
    return s;
}

// SaveCalFile in a child process after `prepare`; the child's wait status,
// with exit status 1 for a save that returned false.
int SaveInChild(ModelState& s, const std::string& fileName, const std::function<void()>& prepare) {
    const pid_t pid = fork();
    if (pid == 0) {
        prepare();
        _exit(SaveCalFile(s, fileName) ? 0 : 1);
    }
    int status = -1;
    waitpid(pid, &status, 0);
    return status;
}

void LimitFileSize() {
    rlimit r{};
    getrlimit(RLIMIT_FSIZE, &r);
    r.rlim_cur = 2048;
    setrlimit(RLIMIT_FSIZE, &r);
}

// Permissions bind root only as another user.
void AsOrdinaryUser() {
    if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) _exit(2);
}

int EntriesIn(const std::string& folder) {
    int n = 0;
    for ([[maybe_unused]] const auto& e : std::filesystem::directory_iterator(folder)) ++n;
    return n;
}

TEST(AtomicSave, ASaveCutShortOrRefusedLeavesTheOldFile) {
    // clang-format off
    const struct { const char* name; std::function<void()> prepare; mode_t folder, file; bool killed; } cases[] = {
        // The default action of SIGXFSZ ends the process in the middle of the write.
        {"killed at a file-size limit", LimitFileSize, 0755, 0644, true},
        // With the signal ignored, as the program ignores it, the write fails instead.
        {"file-size limit", [] { std::signal(SIGXFSZ, SIG_IGN); LimitFileSize(); }, 0755, 0644, false},
        {"read-only folder", AsOrdinaryUser, 0555, 0666, false},
        {"write-protected file", AsOrdinaryUser, 0777, 0444, false}};
    // clang-format on
    auto s = SampleModel();
    const std::string old = filetest::JoinLines(filetest::OneStarExampleLines());
    for (const auto& c : cases) {
        filetest::TempFolder dir;
        const std::string folder = dir.File("night");
        const std::string target = folder + "/run.AZT";
        ASSERT_EQ(mkdir(folder.c_str(), 0777), 0);
        filetest::WriteBytes(target, old);
        chmod(dir.Path().c_str(), 0755);
        chmod(target.c_str(), c.file);
        chmod(folder.c_str(), c.folder);
        const int status = SaveInChild(*s, target, c.prepare);
        if (c.killed)
            EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGXFSZ)
                << c.name << " " << status;
        else
            EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1) << c.name << " " << status;
        EXPECT_TRUE(filetest::ReadBytes(target) == old) << c.name << ": the old file changed";
        // Only a killed save leaves its temporary file behind.
        EXPECT_EQ(EntriesIn(folder), c.killed ? 2 : 1) << c.name;
    }
}

TEST(AtomicSave, WritesThroughALinkAndKeepsThePermissions) {
    auto s = SampleModel();
    filetest::TempFolder dir;
    ASSERT_EQ(mkdir(dir.File("real").c_str(), 0755), 0);
    const std::string real = dir.File("real/run.AZT");
    filetest::WriteBytes(real, "old");
    chmod(real.c_str(), 0604);
    ASSERT_EQ(symlink("real/run.AZT", dir.File("link.AZT").c_str()), 0);
    const mode_t umaskBefore = umask(027);
    EXPECT_TRUE(SaveCalFile(*s, dir.File("link.AZT")));
    EXPECT_TRUE(SaveCalFile(*s, dir.File("new.AZT")));
    umask(umaskBefore);

    struct stat link {};
    struct stat file {};
    struct stat made {};
    ASSERT_EQ(lstat(dir.File("link.AZT").c_str(), &link), 0);
    EXPECT_TRUE(S_ISLNK(link.st_mode));
    ASSERT_EQ(stat(real.c_str(), &file), 0);
    EXPECT_EQ(file.st_mode & 07777, 0604u);
    // A new file gets what the umask leaves, as any file the user makes.
    ASSERT_EQ(stat(dir.File("new.AZT").c_str(), &made), 0);
    EXPECT_EQ(made.st_mode & 07777, 0640u);
    EXPECT_EQ(filetest::ReadBytes(real), filetest::ReadBytes(dir.File("new.AZT")));
    auto back = filetest::FreshModel();
    ASSERT_TRUE(LoadCalFile(*back, real));
    EXPECT_EQ(back->NumCalPoints, 40);
}

}  // namespace
