// Horizon and candidate files that cannot be used: the readers refuse what
// is no regular file without blocking, and align-points tells a file it
// cannot read (exit 2) from one it read and cannot use (exit 3), naming the
// line.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <sstream>

#include "app/AlignPointsCommand.h"
#include "autoalign/AlignPoints.h"
#include "autoalign/HorizonFile.h"
#include "files/FileTestSupport.h"

namespace {

std::string Repeated(const std::string& Text, int Times) {
    std::string all;
    for (int i = 0; i < Times; ++i) all += Text;
    return all;
}

TEST(UnusableSiteFiles, NoRegularFileIsRefusedAtOnce) {
    filetest::TempFolder dir;
    ASSERT_EQ(mkfifo(dir.File("fifo").c_str(), 0644), 0);
    for (const std::string& path : {dir.File("fifo"), std::string("/dev/zero"), dir.path}) {
        auto s = filetest::FreshModel();
        s->Horizon.Num = 7;
        LoadFailure f;
        EXPECT_FALSE(ReadHorizon(*s, path, s->Horizon, &f)) << path;
        EXPECT_EQ(s->Horizon.Num, 7) << path;
        EXPECT_EQ(f.Reason, LoadFailure::Why::Unreadable) << path;
        ASSERT_EQ(symlink(path.c_str(), dir.File(kPointsFileName).c_str()), 0);
        s->ProgramFolder = dir.path;
        EXPECT_FALSE(ReadAutoAlignPoints(*s)) << path;
        EXPECT_EQ(s->NumAutoAlign, 0) << path;
        std::filesystem::remove(dir.File(kPointsFileName));
    }
}

TEST(UnusableSiteFiles, AlignPointsSaysWhichFileWhatAndWhere) {
    const std::string one = "0.6\n0\n0.8\n", site = "180, 30\n";
    const char* notFinite = "holds a number that does not fit a finite double";
    // clang-format off
    const struct { std::string horizon, points; int exit; const char* blamed; std::string message; } cases[] = {
        {"90, 5\n10, 1e99999\n", one, 3, "site.hrz", std::string("line 2 ") + notFinite},
        {"-1e400, 3\n", one, 3, "site.hrz", std::string("line 1 ") + notFinite},
        {Repeated("1, 5\n", 1001), one, 3, "site.hrz", "it holds more than 1000 samples"},
        {site, Repeated(one, 501), 0, "", ""},
        {site, Repeated(one, 502), 3, kPointsFileName, "it holds more than 501 candidates"},
        {site, one + "0.6\n0\n", 3, kPointsFileName, "it ends inside a group of three lines, at line 5"},
        {site, one + "1e99999\n0\n0\n", 3, kPointsFileName, std::string("line 4 ") + notFinite},
    };
    // clang-format on
    for (const auto& c : cases) {
        filetest::TempFolder dir;
        filetest::WriteBytes(dir.File("site.hrz"), c.horizon);
        filetest::WriteBytes(dir.File(kPointsFileName), c.points);
        std::ostringstream out, err;
        const int got = RunAlignPointsCommand(
            {"--horizon", dir.File("site.hrz"), "--latitude", "52"}, dir.path, out, err);
        const std::string wanted = c.exit ? dir.File(c.blamed) + "\" cannot be used: " + c.message : "";
        EXPECT_EQ(got, c.exit) << err.str();
        EXPECT_NE(err.str().find(wanted), std::string::npos)
            << "wanted \"" << wanted << "\" in:\n" << err.str();
        EXPECT_EQ(out.str().empty(), c.exit != 0) << wanted;
    }
}

}  // namespace
