// The members that reach the windows and the calibration file.
#include <filesystem>
#include <string>

#include "ServerTestSupport.h"

namespace {

namespace fs = std::filesystem;
using Calls = std::vector<std::string>;
using WindowMembers = ServerTest;

TEST_F(WindowMembers, ShowKillAndDispose) {
    // ShowAztrue shows the main window, then recalculates.
    display.calls.clear();
    server->ShowAztrue();
    EXPECT_EQ(display.calls, (Calls{"ShowMain", "DisplayCalPoints", "UpdateGraph", "MakeGraph",
                                    "DisplayData", "ProcessPendingEvents"}));
    // KillAztrue closes the windows only: the object lives on and still works.
    display.calls.clear();
    server->KillAztrue();
    EXPECT_EQ(display.calls, Calls{"KillWindows"});
    server->SetLatitude(10.0);
    EXPECT_EQ(Recalculations(), 1);
    display.calls.clear();
    server->Dispose();
    EXPECT_EQ(display.calls, Calls{"DisposeAll"});
}

class FileMembers : public ServerTest {
  protected:
    void SetUp() override { fs::create_directories(folder); }
    void TearDown() override { fs::remove_all(folder); }
    const fs::path folder = fs::temp_directory_path() /
                            ("aztrue-server-files-" +
                             std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
                             "-" + ::testing::UnitTest::GetInstance()->current_test_info()->name());
    const std::string name = (folder / "run.AZT").string();
};

TEST_F(FileMembers, SaveTakesTheNameAndLoadFitsNothing) {
    EXPECT_FALSE(server->SaveFile(name)) << "no points";
    EXPECT_TRUE(server->FullFileName().empty());
    EXPECT_FALSE(fs::exists(name));
    server->AddCalPoint(2.125, 0.75, 1.5, -0.25, 1.75, 2451545.0, "21:14:05", "1/2/2005");
    display.calls.clear();
    ASSERT_TRUE(server->SaveFile(name));
    EXPECT_EQ(server->FullFileName(), name);
    EXPECT_EQ(display.fileName, name);
    EXPECT_EQ(display.calls, Calls{"FileNameChanged"});
    // A load replaces the points and settings, and leaves the fit alone.
    model->FullFileName.clear();
    model->NumCalPoints = 0;
    model->Latitude = 0.0;
    model->ErrorNorth = 0.125;
    display.calls.clear();
    ASSERT_TRUE(server->LoadFile(name));
    EXPECT_EQ(server->NumCalPoints(), 1);
    EXPECT_EQ(model->CalPoints[1].PhiEnc, 2.125);
    EXPECT_EQ(model->Latitude, 33.5);
    EXPECT_EQ(server->FullFileName(), name);
    EXPECT_EQ(model->ErrorNorth, 0.125);
    EXPECT_EQ(display.calls, Calls{"FileNameChanged"});
    // Failures keep the file name.
    model->FullFileName = "before.AZT";
    EXPECT_FALSE(server->SaveFile((folder / "no-such-folder" / "x.AZT").string()));
    EXPECT_FALSE(server->LoadFile((folder / "missing.AZT").string()));
    EXPECT_EQ(server->FullFileName(), "before.AZT");
}

}  // namespace
