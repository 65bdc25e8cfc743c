// Files that cannot be read or used: align-points tells one it cannot read
// (exit 2) from one it read and cannot use (exit 3), naming the file and the
// line; a FIFO in the place of the trace log takes no line and blocks no
// call. A read that blocked would hang: the alarm ends the program then.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <ctime>
#include <sstream>

#include "app/AlignPointsCommand.h"
#include "autoalign/AlignPoints.h"
#include "files/FileTestSupport.h"
#include "files/TraceLog.h"
#include "files/TraceLogForTests.h"

namespace {

std::string Times(int n, const std::string& text) {
    std::string all;
    while (n-- > 0) all += text;
    return all;
}

TEST(FilesRefused, AlignPointsSaysWhichFileWhatAndWhere) {
    const std::string one = "0.6\n0\n0.8\n", site = "180, 30\n", hrz = "site.hrz";
    const std::string big = "holds a number that does not fit a finite double", fifo = "FIFO";
    // clang-format off
    const struct { std::string horizon, points; int exit; std::string blamed, message; } cases[] = {
        {"90, 5\n10, 1e99999\n", one, 3, hrz, "cannot be used: line 2 " + big},
        {Times(1001, "1, 5\n"), one, 3, hrz, "cannot be used: it holds more than 1000 samples"},
        {site, Times(501, one), 0, "", ""},
        {site, Times(502, one), 3, kPointsFileName, "cannot be used: it holds more than 501 candidates"},
        {site, one + "0.6\n0\n", 3, kPointsFileName, "it ends inside a group of three lines, at line 5"},
        {site, one + "1e99999\n0\n0\n", 3, kPointsFileName, "cannot be used: line 4 " + big},
        {site, fifo, 2, kPointsFileName, "cannot read the candidate directions"}};
    // clang-format on
    alarm(60);
    for (const auto& c : cases) {
        filetest::TempFolder dir;
        filetest::WriteBytes(dir.File(hrz), c.horizon);
        if (c.points != fifo) filetest::WriteBytes(dir.File(kPointsFileName), c.points);
        ASSERT_TRUE(c.points != fifo || mkfifo(dir.File(kPointsFileName).c_str(), 0644) == 0);
        std::ostringstream out, err;
        EXPECT_EQ(RunAlignPointsCommand({"--horizon", dir.File(hrz)}, dir.path, out, err), c.exit)
            << err.str();
        for (const std::string& wanted : {c.exit ? dir.File(c.blamed) : "", c.message})
            EXPECT_NE(err.str().find(wanted), std::string::npos)
                << "wanted: " << wanted << "\ngot: " << err.str();
        EXPECT_EQ(out.str().empty(), c.exit != 0) << c.message;
    }
    alarm(0);
}

TEST(FilesRefused, AFifoForTheTraceLogTakesNoLine) {
    filetest::TempFolder docs;
    const std::string folder = docs.File("Brightfold Optics/");
    filetest::fs::create_directories(folder);
    filetest::WriteBytes(folder + "AztrueLog-Enabled.txt", "");
    const std::time_t now = std::time(nullptr);
    char date[16];
    std::strftime(date, sizeof date, "%Y-%m-%d", std::localtime(&now));
    const std::string log = folder + "AztrueLog-" + date + ".txt";
    ASSERT_EQ(mkfifo(log.c_str(), 0644), 0);
    setenv("XDG_DOCUMENTS_DIR", docs.path.c_str(), 1);
    ResetTraceLogForTests();
    alarm(20);
    LogLine("without a reader");
    const int reader = open(log.c_str(), O_RDONLY | O_NONBLOCK);
    LogLine("with a reader");
    char byte = 0;
    EXPECT_LE(read(reader, &byte, 1), 0) << "a line went into the FIFO";
    alarm(0);
    close(reader);
    ResetTraceLogForTests();
    unsetenv("XDG_DOCUMENTS_DIR");
}

}  // namespace
