// The mount type, the members that reach the windows and the file, the log.
#include "ServerTestSupport.h"
#include "files/FileTestSupport.h"
#include "files/TraceLogForTests.h"

namespace {

// 0 alt-azimuth (the German flag kept), 1 fork, 2 German equatorial; other
// values leave the mount. The read of an alt-azimuth mount ignores the flag.
TEST_F(ServerTest, MountTypesSetTheTwoFlags) {
    for (const auto& [type, altAz, gem, read] :
         {std::tuple{2, false, true, 2}, {3, false, true, 2}, {-1, false, true, 2},
          {0, true, true, 0}, {1, false, false, 1}, {0, true, false, 0}}) {
        server->SetMountType(int16_t(type));
        EXPECT_EQ(std::tuple(model->IsAltAz, model->IsGEM, int(server->MountType())),
                  std::tuple(altAz, gem, read)) << "after " << type;
    }
}

// A second object switches the chain's display back on and puts the
// settings back to the model's defaults (latitude 33.5, longitude -118,
// 16 degrees, 1018 mbar), while the calibration points stay.
TEST_F(ServerTest, SecondObjectResetsSettingsAndKeepsPoints) {
    AddSixStars(*server);
    server->SetLatitude(-12.25), server->SetLongitude(7.5);
    server->SetTemperature(-3.0), server->SetPressure(900.0);
    chain.SetDisplayEnabled(false);
    cAztrue second(chain);
    EXPECT_EQ(std::tuple(chain.DisplayEnabled(), second.Latitude(), second.Longitude(),
                         second.Temperature(), second.Pressure(), int(second.NumCalPoints())),
              std::tuple(true, 33.5, -118.0, 16.0, 1018.0, 6));
}

// ShowAztrue shows the main window, then recalculates; KillAztrue closes
// the windows and the object still works. A save or load takes the file's
// name and tells the windows, a load fits nothing, a failure keeps the
// name. Dispose and the object's end close everything.
TEST_F(ServerTest, WindowsAndFile) {
    display.calls.clear();
    server->ShowAztrue(), server->KillAztrue(), server->SetLatitude(10.0);
    EXPECT_EQ(std::tuple(display.calls.at(0), display.calls.at(6), Recalculations()),
              std::tuple("ShowMain", "KillWindows", 2));
    filetest::TempFolder folder;
    const std::string name = folder.File("run.AZT");
    server->AddCalPoint(2.125, 0.75, 1.5, -0.25, 1.75, 2451545.0, "21:14:05", "1/2/2005");
    display.calls.clear();
    ASSERT_TRUE(server->SaveFile(name));
    model->FullFileName = "", model->NumCalPoints = 0, model->ErrorNorth = 0.5;
    ASSERT_TRUE(server->LoadFile(name));
    EXPECT_FALSE(server->SaveFile(folder.File("no/x.AZT")) || server->LoadFile(folder.File("x")));
    EXPECT_EQ(std::tuple(server->NumCalPoints(), server->FullFileName(), model->ErrorNorth),
              std::tuple(1, name, 0.5));
    server->Dispose(), server.reset();
    EXPECT_EQ(display.calls, (Calls{"FileNameChanged " + name, "FileNameChanged " + name,
                                    "DisposeAll", "DisposeAll"}));
}

// The process logs into a fresh documents folder, set before any line.
const filetest::TempFolder documents;
const bool documentsSet = setenv("XDG_DOCUMENTS_DIR", documents.path.c_str(), 1) == 0;

// The lines after the date, the time and ": ". A rate logs the field angles
// at the sidereal time -+ 7.292115846435483e-6 rad (the sky's turn in 0.1 s
// with the program's constants), in 15 digits.
TEST_F(ServerTest, MembersLogTheirOwnWordsAndArguments) {
    const std::string logs = documents.File("Brightfold Optics"), on = "/AztrueLog-Enabled.txt";
    ASSERT_TRUE(documentsSet && std::filesystem::create_directories(logs));
    filetest::WriteBytes(logs + on, "\n");
    ResetTraceLogForTests();  // the next line looks for the marker again
    double a = 0, b = 0;
    server->GetFieldAngleRate(1.5, 2451545, 0.25, 0.5, 1);
    server->SetSecond(1.5), server->SetMinute(7), server->SetDST(true), server->SetMountType(2);
    (void)server->UseCalPoint(3), server->SetUseCalPoint(3, false), (void)server->Temperature();
    server->SyncEncoders(2.125, 0.75, 1.5, -0.25, 1.75, 2451545, -1, a, b);
    server->AddCalPoint(2, 0.5, 1, 0, 1e-20, 2451545, "21:14", "1/2");
    std::filesystem::remove(logs + on);
    ResetTraceLogForTests();
    Calls got;
    for (const auto& file : std::filesystem::directory_iterator(logs)) {
        std::ifstream in(file.path(), std::ios::binary);
        for (std::string line; std::getline(in, line);)
            got.push_back(line.substr(21, line.size() - 22));  // the text without CR
    }
    EXPECT_EQ(got, (Calls{"GetFieldAngleRate(1.5, 2451545, 0.25, 0.5, 1)",
        "GetFieldAngle(1.49999270788415, 2451545, 0.25, 0.5, 1)",
        "GetFieldAngle(1.50000729211585, 2451545, 0.25, 0.5, 1)", "Let Second = 1.5",
        "Set Minute = 7", "Set DST = True", "Let MountType = 2", "Get UseCalPoint(3)",
        "Let UseCalPoint(3, False)", "Get Termerature",
        "SyncEncoders(2.125, 0.75, 1.5, -0.25, 1.75, 2451545, -1)",
        "CelestialToEncoder(1.75, 2451545, 1.5, -0.25, -1)",
        "AddCalPoint(2, 0.5, 1, 0, 1e-20, 2451545, 21:14, 1/2)"}));
}

}  // namespace
