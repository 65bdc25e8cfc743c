// The trace lines of the server members, read back from the log file. The
// documents folder of this test process is a fresh temporary folder, set
// before any line is logged, so that no test writes to the user's own log;
// the marker file exists only inside the tests that read the log.
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "ServerTestSupport.h"
#include "files/TraceLogForTests.h"

namespace {

namespace fs = std::filesystem;

// Created at static initialisation, before the first LogLine of the process
// can look for the documents folder; removed at its end.
struct TemporaryDocuments {
    TemporaryDocuments() {
        folder = fs::temp_directory_path() / ("aztrue-server-trace-" + std::to_string(getpid()));
        fs::create_directories(folder / "Brightfold Optics");
        setenv("XDG_DOCUMENTS_DIR", folder.c_str(), 1);
    }
    ~TemporaryDocuments() {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
    fs::path folder;
};
const TemporaryDocuments documents;

fs::path LogFolder() {
    return documents.folder / "Brightfold Optics";
}
fs::path Marker() {
    return LogFolder() / "AztrueLog-Enabled.txt";
}

// Every line of every log file of the folder, without its line end.
std::vector<std::string> LogLines() {
    std::vector<std::string> lines;
    for (const auto& entry : fs::directory_iterator(LogFolder())) {
        const std::string name = entry.path().filename().string();
        if (name == "AztrueLog-Enabled.txt" || name.rfind("AztrueLog-", 0) != 0) continue;
        std::ifstream in(entry.path(), std::ios::binary);
        std::string line;
        while (std::getline(in, line)) {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            lines.push_back(line);
        }
    }
    return lines;
}

// A log line is the date and time, ": " and the text of the call.
bool IsLineOf(const std::string& line, const std::string& text) {
    const std::string tail = ": " + text;
    return line.size() > tail.size() &&
           line.compare(line.size() - tail.size(), tail.size(), tail) == 0;
}

class TraceLines : public ServerTest {
  protected:
    // Each test starts as a run of its own: no file open, no lines yet.
    void SetUp() override {
        ResetTraceLogForTests();
        for (const auto& entry : fs::directory_iterator(LogFolder())) fs::remove(entry.path());
        std::ofstream(Marker()).put('\n');
    }
    void TearDown() override {
        fs::remove(Marker());
        ResetTraceLogForTests();
    }

    // Runs the calls and checks that exactly these lines were added.
    template <typename Calls>
    void ExpectLines(Calls calls, const std::vector<std::string>& texts) {
        const size_t before = LogLines().size();
        calls();
        const std::vector<std::string> lines = LogLines();
        ASSERT_EQ(lines.size(), before + texts.size());
        for (size_t i = 0; i < texts.size(); ++i) {
            EXPECT_TRUE(IsLineOf(lines[before + i], texts[i]))
                << "wanted \"" << texts[i] << "\" got \"" << lines[before + i] << "\"";
        }
    }
};

// The rate writes its own line, then those of the two field angles at the
// sidereal time -+ 7.292115846435483e-6 rad (the sky's turn in 0.1 s with
// the program's constants), in the default text of 15 digits.
TEST_F(TraceLines, FieldAngleRateWritesThreeLines) {
    ExpectLines([&] { server->GetFieldAngleRate(1.5, 2451545, 0.25, 0.5, 1); },
                {"GetFieldAngleRate(1.5, 2451545, 0.25, 0.5, 1)",
                 "GetFieldAngle(1.49999270788415, 2451545, 0.25, 0.5, 1)",
                 "GetFieldAngle(1.50000729211585, 2451545, 0.25, 0.5, 1)"});
}

// The creation's line is the first of a run.
TEST_F(TraceLines, CreationAndEnd) {
    ExpectLines([&] { cAztrue second(chain); }, {"Class_Initialize()", "Class_Terminate()"});
}

TEST_F(TraceLines, PropertyLinesKeepTheirOwnWords) {
    ExpectLines(
        [&] {
            (void)server->Temperature();
            server->SetTemperature(-2.5);
            server->SetSecond(1.5);
            server->SetMinute(7);
            server->SetPressure(1013.25);
            server->SetDST(true);
            server->SetMountType(2);
            (void)server->UseCalPoint(3);
            server->SetUseCalPoint(3, false);
            server->SetPath("/data/runs");
        },
        {"Get Termerature", "Set Temperature = -2.5", "Let Second = 1.5", "Set Minute = 7",
         "Let Pressure = 1013.25", "Set DST = True", "Let MountType = 2", "Get UseCalPoint(3)",
         "Let UseCalPoint(3, False)", "Set Path = /data/runs"});
}

TEST_F(TraceLines, CalibrationCallsListTheirArguments) {
    ExpectLines(
        [&] {
            server->AddCalPoint(2.125, 0.75, 1.5, -0.25, 1.75, 2451545, "21:14:05", "1/2/2005");
            double p = 0, t = 0;
            server->SyncEncoders(2.125, 0.75, 1.5, -0.25, 1.75, 2451545, -1, p, t);
            server->RemoveCalPoint(0);
            double a = 0, b = 0, c = 0, d = 0;
            server->GetErrors(a, b, c, d);
            (void)server->JDtoLSTRad(2451545.5);
        },
        {"AddCalPoint(2.125, 0.75, 1.5, -0.25, 1.75, 2451545, 21:14:05, 1/2/2005)",
         "SyncEncoders(2.125, 0.75, 1.5, -0.25, 1.75, 2451545, -1)",
         "CelestialToEncoder(1.75, 2451545, 1.5, -0.25, -1)", "RemoveCalPoint(0)", "GetErrors()",
         "JDtoLSTRad(2451545.5)"});
}

TEST_F(TraceLines, ConversionsAndRates) {
    ExpectLines(
        [&] {
            double x = 0, y = 0, z = 0, w = 0;
            server->EncoderToAltAz(0.5, 1e-20, x, y);
            server->GetGuideError(1, 2, 3, 4, 1, 0.001, -0.002, x, y);
            server->GetJacobian(1, 2, 3, 4, -1, x, y, z, w);
        },
        {"EncoderToAltAz(0.5, 1e-20)", "GetGuideError(1, 2, 3, 4, 1, 0.001, -0.002)",
         "GetJacobian(1, 2, 3, 4, -1)"});
}

}  // namespace
