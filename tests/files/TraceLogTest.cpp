// The trace log: on only while the marker exists, one dated line per call,
// one file per run opened at the first logged line.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <optional>
#include <regex>
#include <string>
#include <vector>

#include "FileTestSupport.h"
#include "files/TraceLog.h"
#include "files/TraceLogForTests.h"

namespace {

namespace fs = std::filesystem;

// Today's local date as yyyy-MM-dd.
std::string Today() {
    std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char buf[16];
    std::strftime(buf, sizeof buf, "%Y-%m-%d", &local);
    return buf;
}

// Points the documents folder at a scratch folder and starts the log
// module as a new process would.
class TraceLog : public ::testing::Test {
  protected:
    void SetUp() override {
        if (const char* v = std::getenv("XDG_DOCUMENTS_DIR")) savedDocs = v;
        if (const char* v = std::getenv("HOME")) savedHome = v;
        setenv("XDG_DOCUMENTS_DIR", docs.Path().c_str(), 1);
        ResetTraceLogForTests();
        company = docs.Path() + "/Brightfold Optics";
        marker = company + "/AztrueLog-Enabled.txt";
    }
    void TearDown() override {
        ResetTraceLogForTests();
        if (savedDocs)
            setenv("XDG_DOCUMENTS_DIR", savedDocs->c_str(), 1);
        else
            unsetenv("XDG_DOCUMENTS_DIR");
        if (savedHome) setenv("HOME", savedHome->c_str(), 1);
    }

    void TurnOn() {
        fs::create_directories(company);
        filetest::WriteBytes(marker, "");
    }

    // Log files in the subfolder, by name.
    std::vector<std::string> LogFiles() const {
        std::vector<std::string> names;
        std::error_code ec;
        for (const auto& e : fs::directory_iterator(company, ec)) {
            const std::string n = e.path().filename().string();
            if (n != "AztrueLog-Enabled.txt" && n.rfind("AztrueLog-", 0) == 0) names.push_back(n);
        }
        return names;
    }

    filetest::TempFolder docs;
    std::string company;
    std::string marker;
    std::optional<std::string> savedDocs;
    std::optional<std::string> savedHome;
};

// One log line: date, time, ": ", the text, CR LF.
const std::regex kLine(R"((\d{4}-\d{2}-\d{2}) \d{2}:\d{2}:\d{2}: (.*)\r\n)");

// The texts of the lines of a log file; fails the test on a malformed line.
std::vector<std::string> LineTexts(const std::string& bytes) {
    std::vector<std::string> texts;
    size_t pos = 0;
    while (pos < bytes.size()) {
        const size_t end = bytes.find("\r\n", pos);
        if (end == std::string::npos) {
            ADD_FAILURE() << "line without CR LF: " << bytes.substr(pos);
            break;
        }
        const std::string line = bytes.substr(pos, end + 2 - pos);
        std::smatch m;
        if (std::regex_match(line, m, kLine))
            texts.push_back(m[2]);
        else
            ADD_FAILURE() << "malformed line: " << line;
        pos = end + 2;
    }
    return texts;
}

TEST_F(TraceLog, WithoutMarkerNoFileAppears) {
    for (int i = 0; i < 50; ++i) LogLine("Get Latitude");
    EXPECT_FALSE(fs::exists(company));
    fs::create_directories(company);
    for (int i = 0; i < 50; ++i) LogLine("Get Latitude");
    EXPECT_TRUE(LogFiles().empty());
}

TEST_F(TraceLog, MarkerTurnsOnDatedLinesEndedByCarriageReturnLineFeed) {
    TurnOn();
    const std::string before = Today();
    LogLine("Class_Initialize()");
    LogLine("Let Latitude = 47.25");
    LogLine("");
    const std::string after = Today();

    const auto files = LogFiles();
    ASSERT_EQ(files.size(), 1u);
    const std::string fileName = files[0];
    EXPECT_TRUE(fileName == "AztrueLog-" + before + ".txt" ||
                fileName == "AztrueLog-" + after + ".txt")
        << fileName;
    const std::string bytes = filetest::ReadBytes(company + "/" + fileName);
    EXPECT_EQ(LineTexts(bytes),
              (std::vector<std::string>{"Class_Initialize()", "Let Latitude = 47.25", ""}));
    // The first line's date is the date of the file's name.
    EXPECT_EQ(bytes.substr(0, 10), fileName.substr(10, 10));
}

TEST_F(TraceLog, MarkerRemovedAndRestoredDuringARun) {
    TurnOn();
    LogLine("one");
    fs::remove(marker);
    LogLine("dropped");
    filetest::WriteBytes(marker, "any content");
    LogLine("three");
    const auto files = LogFiles();
    ASSERT_EQ(files.size(), 1u);
    EXPECT_EQ(LineTexts(filetest::ReadBytes(company + "/" + files[0])),
              (std::vector<std::string>{"one", "three"}));
}

TEST_F(TraceLog, ASecondRunAppendsToTheSameDaysFile) {
    TurnOn();
    LogLine("first run");
    ResetTraceLogForTests();  // as at the start of another process
    LogLine("second run");
    const auto files = LogFiles();
    ASSERT_EQ(files.size(), 1u);
    EXPECT_EQ(LineTexts(filetest::ReadBytes(company + "/" + files[0])),
              (std::vector<std::string>{"first run", "second run"}));
}

TEST_F(TraceLog, FolderIsLookedUpOnceKnown) {
    TurnOn();
    LogLine("here");
    filetest::TempFolder elsewhere;
    setenv("XDG_DOCUMENTS_DIR", elsewhere.Path().c_str(), 1);
    LogLine("still here");
    const auto files = LogFiles();
    ASSERT_EQ(files.size(), 1u);
    EXPECT_EQ(LineTexts(filetest::ReadBytes(company + "/" + files[0])),
              (std::vector<std::string>{"here", "still here"}));
}

TEST_F(TraceLog, UnknownFolderIsAskedForAgainAtTheNextLine) {
    unsetenv("XDG_DOCUMENTS_DIR");
    unsetenv("HOME");
    LogLine("no folder");  // no documents folder: nothing, no crash
    setenv("XDG_DOCUMENTS_DIR", docs.Path().c_str(), 1);
    TurnOn();
    LogLine("found");
    const auto files = LogFiles();
    ASSERT_EQ(files.size(), 1u);
    EXPECT_EQ(LineTexts(filetest::ReadBytes(company + "/" + files[0])),
              (std::vector<std::string>{"found"}));
}

TEST_F(TraceLog, LogPathThatIsAFolderLeavesTheCallWorking) {
    TurnOn();
    // Both possible dates, in case the test runs across midnight.
    const std::string today = Today();
    fs::create_directories(company + "/AztrueLog-" + today + ".txt");
    LogLine("lost");
    LogLine("lost too");
    EXPECT_TRUE(fs::is_directory(company + "/AztrueLog-" + today + ".txt") || Today() != today);
    // Once the obstacle is gone, the next line opens the file.
    fs::remove(company + "/AztrueLog-" + today + ".txt");
    LogLine("written");
    const auto files = LogFiles();
    ASSERT_EQ(files.size(), 1u);
    EXPECT_EQ(LineTexts(filetest::ReadBytes(company + "/" + files[0])),
              (std::vector<std::string>{"written"}));
}

TEST_F(TraceLog, ReadOnlyLogFolderLeavesTheCallWorking) {
    TurnOn();
    fs::permissions(company, fs::perms::owner_read | fs::perms::owner_exec);
    // A privileged user writes into read-only folders; then the case
    // cannot be made here.
    if (access(company.c_str(), W_OK) == 0) {
        fs::permissions(company, fs::perms::owner_all);
        GTEST_SKIP() << "read-only folders are writable for this user";
    }
    LogLine("lost");
    fs::permissions(company, fs::perms::owner_all);
    EXPECT_TRUE(LogFiles().empty());
    LogLine("written");
    EXPECT_EQ(LogFiles().size(), 1u);
}

}  // namespace
