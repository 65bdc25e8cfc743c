// A save cut short or refused leaves the old file as it was; a save through
// a symbolic link replaces the file it names and keeps its permissions.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "files/FileTestSupport.h"

namespace {

TEST(AtomicSave, CutShortOrRefusedLeavesTheOldFileAndALinkStays) {
    // clang-format off
    // The sample makes 9 kB: SIGXFSZ at its default ends the process in the
    // middle of the write. Permissions bind root only as another user.
    const auto limitSize = [] {
        rlimit r{}; getrlimit(RLIMIT_FSIZE, &r); r.rlim_cur = 2048; setrlimit(RLIMIT_FSIZE, &r); };
    const auto asUser = [] {
        if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) _exit(2); };
    const struct { const char* name; void (*prepare)(); mode_t folder, file; bool killed; }
    cases[] = {{"file-size limit", limitSize, 0755, 0644, true},
               {"read-only folder", asUser, 0555, 0666, false},
               {"write-protected file", asUser, 0777, 0444, false}};
    // clang-format on
    auto s = filetest::FreshModel();
    ASSERT_TRUE(LoadCalFile(*s, AZTRUE_SOURCE_DIR "/data/sample.AZT"));
    const std::string old = filetest::JoinLines(filetest::OneStarExampleLines());
    for (const auto& c : cases) {
        filetest::TempFolder dir;
        const std::string folder = dir.File("night"), target = folder + "/run.AZT";
        ASSERT_EQ(mkdir(folder.c_str(), 0777), 0);
        filetest::WriteBytes(target, old);
        chmod(dir.path.c_str(), 0755), chmod(target.c_str(), c.file);
        chmod(folder.c_str(), c.folder);
        const pid_t child = fork();
        if (child == 0) c.prepare(), _exit(SaveCalFile(*s, target) ? 0 : 1);
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_TRUE(c.killed ? WIFSIGNALED(status) && WTERMSIG(status) == SIGXFSZ
                             : WIFEXITED(status) && WEXITSTATUS(status) == 1)
            << c.name << ": wait status " << status;
        EXPECT_TRUE(filetest::ReadBytes(target) == old) << c.name << ": the old file changed";
        const auto entries = std::distance(std::filesystem::directory_iterator(folder), {});
        EXPECT_EQ(entries, c.killed ? 2 : 1) << c.name << ": only a killed save leaves a temporary";
    }
    filetest::TempFolder dir;
    const std::string file = dir.File("real/run.AZT"), link = dir.File("link.AZT");
    ASSERT_EQ(mkdir(dir.File("real").c_str(), 0755), 0);
    filetest::WriteBytes(file, "old"), chmod(file.c_str(), 0604);
    ASSERT_EQ(symlink("real/run.AZT", link.c_str()), 0);
    EXPECT_TRUE(SaveCalFile(*s, link) && std::filesystem::is_symlink(link));
    EXPECT_EQ(filetest::ReadBytes(file).substr(0, 28), "Number of Cal Stars:\r\n 40 \r\n");
    EXPECT_EQ(int(std::filesystem::status(file).permissions()), 0604) << "the permissions kept";
}

}  // namespace
