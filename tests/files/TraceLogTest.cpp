// The trace log: on only while the marker exists, one dated line per call,
// one file per run opened at the first logged line.
#include <unistd.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <optional>
#include <regex>

#include "FileTestSupport.h"
#include "files/TraceLog.h"
#include "files/TraceLogForTests.h"

namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

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

    // The texts of the lines of the one log file. Each line is the date,
    // the time, ": ", the text and CR LF; the date is that of the file name.
    Texts LoggedTexts() const {
        const auto files = LogFiles();
        if (files.size() != 1) {
            ADD_FAILURE() << files.size() << " log files";
            return {};
        }
        const std::string bytes = filetest::ReadBytes(company + "/" + files[0]);
        static const std::regex line(R"((\d{4}-\d{2}-\d{2}) \d{2}:\d{2}:\d{2}: (.*)\r\n)");
        Texts texts;
        for (size_t pos = 0, end; pos < bytes.size(); pos = end + 2) {
            end = bytes.find("\r\n", pos);
            std::smatch m;
            const std::string one =
                bytes.substr(pos, end == std::string::npos ? end : end + 2 - pos);
            if (!std::regex_match(one, m, line)) {
                ADD_FAILURE() << "malformed line: " << one;
                break;
            }
            EXPECT_EQ("AztrueLog-" + m[1].str() + ".txt", files[0]);
            texts.push_back(m[2]);
        }
        return texts;
    }

    filetest::TempFolder docs;
    const std::string company = docs.Path() + "/Brightfold Optics";
    const std::string marker = company + "/AztrueLog-Enabled.txt";
    std::optional<std::string> savedDocs, savedHome;
};

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
    EXPECT_EQ(LoggedTexts(), (Texts{"Class_Initialize()", "Let Latitude = 47.25", ""}));
    const std::string name = LogFiles().at(0);
    EXPECT_TRUE(name == "AztrueLog-" + before + ".txt" || name == "AztrueLog-" + after + ".txt")
        << name;
}

TEST_F(TraceLog, MarkerRemovedAndRestoredDuringARunAndASecondRunAppends) {
    TurnOn();
    LogLine("one");
    fs::remove(marker);
    LogLine("dropped");
    filetest::WriteBytes(marker, "any content");
    LogLine("three");
    ResetTraceLogForTests();  // as at the start of another process the same day
    LogLine("second run");
    EXPECT_EQ(LoggedTexts(), (Texts{"one", "three", "second run"}));
}

TEST_F(TraceLog, FolderIsLookedUpAgainOnlyWhileUnknown) {
    unsetenv("XDG_DOCUMENTS_DIR");
    unsetenv("HOME");
    LogLine("no folder");  // no documents folder: nothing, no crash
    setenv("XDG_DOCUMENTS_DIR", docs.Path().c_str(), 1);
    TurnOn();
    LogLine("found");
    filetest::TempFolder elsewhere;
    setenv("XDG_DOCUMENTS_DIR", elsewhere.Path().c_str(), 1);
    LogLine("still here");
    EXPECT_EQ(LoggedTexts(), (Texts{"found", "still here"}));
}

TEST_F(TraceLog, LogPathThatIsAFolderLeavesTheCallWorking) {
    TurnOn();
    const std::string today = company + "/AztrueLog-" + Today() + ".txt";
    fs::create_directories(today);
    LogLine("lost");
    LogLine("lost too");
    EXPECT_TRUE(fs::is_directory(today));
    // Once the obstacle is gone, the next line opens the file.
    fs::remove(today);
    LogLine("written");
    EXPECT_EQ(LoggedTexts(), Texts{"written"});
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
