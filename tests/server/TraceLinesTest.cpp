// The trace lines of the server members, read back from the log file. The
// documents folder of this test process is a fresh temporary folder, set
// before any line is logged, so that no test writes to the user's own log;
// the marker file exists only inside the tests that read the log.
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "ServerTestSupport.h"
#include "files/TraceLogForTests.h"

namespace {

namespace fs = std::filesystem;

// Created at static initialisation, before the first LogLine of the process
// can look for the documents folder; removed at its end.
struct TemporaryDocuments {
    TemporaryDocuments() {
        fs::create_directories(logs);
        setenv("XDG_DOCUMENTS_DIR", folder.c_str(), 1);
    }
    ~TemporaryDocuments() {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
    const fs::path folder =
        fs::temp_directory_path() / ("aztrue-server-trace-" + std::to_string(getpid()));
    const fs::path logs = folder / "Brightfold Optics";
    const fs::path marker = logs / "AztrueLog-Enabled.txt";
};
const TemporaryDocuments documents;

class TraceLines : public ServerTest {
  protected:
    // Each test starts as a run of its own: no file open, no lines yet.
    void SetUp() override {
        ResetTraceLogForTests();
        for (const auto& entry : fs::directory_iterator(documents.logs)) fs::remove(entry.path());
        std::ofstream(documents.marker).put('\n');
    }
    void TearDown() override {
        fs::remove(documents.marker);
        ResetTraceLogForTests();
    }

    // Runs the calls and checks that they added exactly these texts, each
    // behind the date, the time and ": " on a line of its own.
    template <typename Calls>
    void ExpectLines(Calls calls, const std::vector<std::string>& texts) {
        calls();
        std::vector<std::string> got;
        for (const auto& entry : fs::directory_iterator(documents.logs)) {
            if (entry.path() == documents.marker) continue;
            std::ifstream in(entry.path(), std::ios::binary);
            for (std::string line; std::getline(in, line);)
                got.push_back(line.size() > 21 && line.back() == '\r'
                                  ? line.substr(21, line.size() - 22)
                                  : line);
        }
        EXPECT_EQ(got, texts);
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
