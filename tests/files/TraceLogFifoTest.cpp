// A FIFO in the place of the day's trace log file: a line neither waits for
// a reader nor reaches one. A line that waited would hang: the alarm ends
// the test program then.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>

#include "files/FileTestSupport.h"
#include "files/TraceLog.h"
#include "files/TraceLogForTests.h"

namespace {

TEST(TraceLog, AFifoForTheLogFileIsRefusedWithoutWaiting) {
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
    for (const bool withReader : {false, true}) {
        const int reader = withReader ? open(log.c_str(), O_RDONLY | O_NONBLOCK) : -1;
        LogLine("Let Latitude = 47.25");
        if (!withReader) continue;
        char byte = 0;
        EXPECT_LE(read(reader, &byte, 1), 0) << "a line went into the FIFO";
        close(reader);
    }
    alarm(0);
    ResetTraceLogForTests();
    unsetenv("XDG_DOCUMENTS_DIR");
}

}  // namespace
