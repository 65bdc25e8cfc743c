// The server object: its creation, its properties as fields of the model,
// the clock members, and the members that reach the windows and the file.
#include <ctime>
#include <filesystem>

#include "ServerTestSupport.h"
#include "files/FileTestSupport.h"
#include "sky/NumberText.h"

namespace {

namespace fs = std::filesystem;

// The settings a client reads, on one line.
std::string Settings(const cAztrue& a) {
    return a.Version() + " lat " + NumberText(a.Latitude()) + " lon " + NumberText(a.Longitude()) +
           " T " + NumberText(a.Temperature()) + " P " + NumberText(a.Pressure()) +
           (a.EnableRefraction() ? " refraction" : "") + " zone " + NumberText(a.TimeZone()) +
           (a.DST() ? " DST" : "") + " mount " + std::to_string(a.MountType()) +
           (a.PhiPosCW() ? " cw " : " ccw ") + NumberText(a.PhiCountsPerRev()) +
           (a.ThetaPosUp() ? " up " : " down ") + NumberText(a.ThetaCountsPerRev()) + " points " +
           std::to_string(a.NumCalPoints()) + " file '" + a.FullFileName() + "'";
}

// Every value is the default of the model's tables.
const std::string kDefaults =
    "Aztrue 5.32 lat 33.5 lon -118 T 16 P 1018 refraction zone -8 mount 0 cw 6.283185308 up "
    "6.283185308 points 0 file ''";

using ServerCreation = ServerTest;

TEST_F(ServerCreation, NewObjectReadsTheModelDefaults) {
    EXPECT_EQ(Settings(*server), kDefaults);
    EXPECT_TRUE(model->ServerStarted);
    // A fit with no point is the identity: every result 0.
    for (double result : {server->ErrorNorth(), server->ErrorWest(), server->ThetaEncOffset(),
                          server->PhiEncOffset()})
        EXPECT_EQ(result, 0.0);
}

TEST_F(ServerCreation, SecondObjectSwitchesTheChainOnResetsSettingsAndKeepsPoints) {
    server->AddCalPoint(1.0, 0.5, 2.0, 0.3, 1.0, 2451545.0, "", "");
    server->SetLatitude(-12.25);
    server->SetLongitude(7.5);
    server->SetTemperature(-3.0);
    server->SetPressure(900.0);
    chain.SetDisplayEnabled(false);
    cAztrue second(chain);
    EXPECT_TRUE(chain.DisplayEnabled());
    EXPECT_EQ(Settings(second),
              "Aztrue 5.32 lat 33.5 lon -118 T 16 P 1018 refraction zone -8 mount 0 cw "
              "6.283185308 up 6.283185308 points 1 file ''");
}

TEST_F(ServerCreation, EndOfObjectClosesEverything) {
    display.calls.clear();
    server.reset();
    EXPECT_EQ(display.calls, std::vector<std::string>{"DisposeAll"});
}

using ServerProperties = ServerTest;

TEST_F(ServerProperties, WritesStoreWithoutRangeTest) {
    server->SetLatitude(123.456);  // no site has it, yet it is stored as given
    server->SetDST(true);
    server->SetPhiCountsPerRev(8192.0);
    server->SetThetaCountsPerRev(4096.0);
    server->SetPath("/data/runs");
    server->SetSecond(-1.5);
    server->SetYear(-32768);
    EXPECT_EQ(Settings(*server),
              "Aztrue 5.32 lat 123.456 lon -118 T 16 P 1018 refraction zone -8 DST mount 0 "
              "cw 8192 up 4096 points 0 file ''");
    EXPECT_EQ(model->Latitude, 123.456);
    EXPECT_EQ(server->Path(), "/data/runs");
    EXPECT_EQ(model->Second, -1.5);
    EXPECT_EQ(server->Year(), -32768);
}

using MountTypeTable = ServerTest;

TEST_F(MountTypeTable, TypesMapToTheTwoFlags) {
    // 0 alt-azimuth (IsGEM kept as it was), 1 fork equatorial, 2 German
    // equatorial; any other value leaves the mount. A read of an alt-az
    // mount ignores IsGEM.
    // clang-format off
    const struct { int16_t type; bool altAz, gem; int16_t read; } steps[] = {
        {2, false, true, 2}, {3, false, true, 2}, {-1, false, true, 2}, {0, true, true, 0},
        {1, false, false, 1}, {0, true, false, 0}};
    // clang-format on
    for (const auto& step : steps) {
        server->SetMountType(step.type);
        EXPECT_EQ(model->IsAltAz, step.altAz) << "after " << step.type;
        EXPECT_EQ(model->IsGEM, step.gem) << "after " << step.type;
        EXPECT_EQ(server->MountType(), step.read) << "after " << step.type;
    }
}

class ClockMembers : public ServerTest {
  protected:
    void SetClock(int16_t y, int16_t mo, int16_t d, int16_t h, int16_t mi, double s, double zone,
                  bool dst = false) {
        server->SetYear(y);
        server->SetMonth(mo);
        server->SetDay(d);
        server->SetHour(h);
        server->SetMinute(mi);
        server->SetSecond(s);
        server->SetTimeZone(zone);
        server->SetDST(dst);
    }
};

TEST_F(ClockMembers, JulianDayAndUniversalTime) {
    // J2000.0 is JD 2451545.0 by definition: 2000 January 1, 12h universal
    // time, here as 4h local time eight hours west of Greenwich.
    SetClock(2000, 1, 1, 4, 0, 0.0, -8.0);
    EXPECT_EQ(server->GetJulianDay(), 2451545.0);
    // 2:00 at eight hours east of Greenwich is 18:00 universal time of the
    // day before: six hours before 0h, a quarter turn, kept negative.
    SetClock(2001, 1, 1, 2, 0, 0.0, 8.0);
    EXPECT_NEAR(server->GetUTRad(), -6 * 6.283185308 / 24, 1e-15);
    // Daylight saving takes an hour off: 12:30 is 11:30 universal time.
    SetClock(2001, 6, 1, 12, 30, 0.0, 0.0, true);
    EXPECT_NEAR(server->GetUTRad(), 11.5 * 6.283185308 / 24, 1e-15);
}

// 2000 January 10, 0:30 local at five hours west is 5:30 universal time;
// the IAU 1982 sidereal time (GMST = 18.697374558 h + 24.06570982441908 h
// per day from J2000.0) gives 12h 46m 15.48s at Greenwich and, 118 degrees
// west, 4h 54m 15.48s. The program's older polynomial differs by under
// 0.1 s; the tolerance is 0.2 s of time.
TEST_F(ClockMembers, LocalSiderealTimeAtTheDefaultLongitude) {
    SetClock(2000, 1, 10, 0, 30, 0.0, -5.0);
    ASSERT_EQ(server->Longitude(), -118.0);
    const double pi = 3.14159265358979323846;
    EXPECT_NEAR(server->GetLSTRad(), (4 + 54 / 60.0 + 15.48 / 3600) * pi / 12,
                0.2 / 3600 * pi / 12);
}

TEST_F(ClockMembers, ComputerDateAndTimeFillOnlyTheirOwnFields) {
    SetClock(1999, 12, 31, 23, 59, 58.5, 3.5, true);
    std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    server->LoadDateFromComputer();
    EXPECT_EQ(server->Year(), local.tm_year + 1900);
    EXPECT_EQ(server->Month(), local.tm_mon + 1);
    EXPECT_EQ(server->Day(), local.tm_mday);
    EXPECT_TRUE(server->Hour() == 23 && server->Minute() == 59 && server->Second() == 58.5);
    SetClock(1999, 12, 31, 23, 59, 58.5, 3.5, true);
    server->LoadTimeFromComputer();
    EXPECT_TRUE(server->Year() == 1999 && server->Month() == 12 && server->Day() == 31);
    // Seconds since midnight of the clock and of the member, within a minute
    // for a test that runs across a minute boundary.
    const double wanted = local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec;
    const double got = server->Hour() * 3600.0 + server->Minute() * 60.0 + server->Second();
    EXPECT_NEAR(std::fmod(got - wanted + 86400.0, 86400.0), 0.0, 60.0);
    EXPECT_TRUE(server->TimeZone() == 3.5 && server->DST());
}

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
    filetest::TempFolder folder;
    const std::string name = folder.File("run.AZT");
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
    EXPECT_FALSE(server->SaveFile(folder.File("no-such-folder/x.AZT")));
    EXPECT_FALSE(server->LoadFile(folder.File("missing.AZT")));
    EXPECT_EQ(server->FullFileName(), "before.AZT");
}

}  // namespace
