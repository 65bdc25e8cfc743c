// The members that reach the windows and the calibration file.
#include <filesystem>
#include <fstream>
#include <string>

#include "ServerTestSupport.h"

namespace {

namespace fs = std::filesystem;

using WindowMembers = ServerTest;

TEST_F(WindowMembers, ShowAztrueShowsThenRecalculates) {
    display.calls.clear();
    server->ShowAztrue();
    ASSERT_EQ(display.calls.size(), 6u);
    EXPECT_EQ(display.calls[0], "ShowMain");
    EXPECT_EQ(display.calls[2], "UpdateGraph");
}

TEST_F(WindowMembers, KillAztrueClosesWindowsOnly) {
    display.calls.clear();
    server->KillAztrue();
    EXPECT_EQ(display.calls, std::vector<std::string>{"KillWindows"});
    // The object lives on and still works.
    server->SetLatitude(10.0);
    EXPECT_EQ(Recalculations(), 1);
}

TEST_F(WindowMembers, DisposeEndsEverything) {
    display.calls.clear();
    server->Dispose();
    EXPECT_EQ(display.calls, std::vector<std::string>{"DisposeAll"});
}

class FileMembers : public ServerTest {
  protected:
    void SetUp() override {
        folder = fs::temp_directory_path() /
                 ("aztrue-server-files-" +
                  std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "-" +
                  ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::create_directories(folder);
    }
    void TearDown() override { fs::remove_all(folder); }
    fs::path folder;
};

TEST_F(FileMembers, SaveWithoutPointsFails) {
    const std::string name = (folder / "empty.AZT").string();
    EXPECT_FALSE(server->SaveFile(name));
    EXPECT_TRUE(server->FullFileName().empty());
    EXPECT_FALSE(fs::exists(name));
}

TEST_F(FileMembers, SaveTakesTheNameAndLoadFitsNothing) {
    server->AddCalPoint(2.125, 0.75, 1.5, -0.25, 1.75, 2451545.0, "21:14:05", "1/2/2005");
    const std::string name = (folder / "run.AZT").string();
    display.calls.clear();
    ASSERT_TRUE(server->SaveFile(name));
    EXPECT_EQ(server->FullFileName(), name);
    EXPECT_EQ(display.fileName, name);
    EXPECT_EQ(display.calls, std::vector<std::string>{"FileNameChanged"});

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
    EXPECT_EQ(display.calls, std::vector<std::string>{"FileNameChanged"});
}

TEST_F(FileMembers, FailuresKeepTheFileName) {
    server->AddCalPoint(2.125, 0.75, 1.5, -0.25, 1.75, 2451545.0, "", "");
    model->FullFileName = "before.AZT";
    EXPECT_FALSE(server->SaveFile((folder / "no-such-folder" / "x.AZT").string()));
    EXPECT_FALSE(server->LoadFile((folder / "missing.AZT").string()));
    EXPECT_EQ(server->FullFileName(), "before.AZT");
}

}  // namespace
