// Creation of the server object and its properties as fields of the model.
#include <memory>

#include "ServerTestSupport.h"

namespace {

using ServerCreation = ServerTest;

TEST_F(ServerCreation, NewObjectReadsTheModelDefaults) {
    // Every expected value is the default of the model's tables.
    EXPECT_EQ(server->Version(), "Aztrue 5.32");
    EXPECT_EQ(server->Latitude(), 33.5);
    EXPECT_EQ(server->Longitude(), -118.0);
    EXPECT_EQ(server->Temperature(), 16.0);
    EXPECT_EQ(server->Pressure(), 1018.0);
    EXPECT_TRUE(server->EnableRefraction());
    EXPECT_EQ(server->TimeZone(), -8.0);
    EXPECT_FALSE(server->DST());
    EXPECT_EQ(server->MountType(), 0);
    EXPECT_TRUE(server->PhiPosCW());
    EXPECT_TRUE(server->ThetaPosUp());
    EXPECT_EQ(server->PhiCountsPerRev(), 6.283185308);
    EXPECT_EQ(server->ThetaCountsPerRev(), 6.283185308);
    EXPECT_EQ(server->NumCalPoints(), 0);
    EXPECT_TRUE(server->FullFileName().empty());
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
    EXPECT_EQ(second.NumCalPoints(), 1);
    EXPECT_EQ(second.Latitude(), 33.5);
    EXPECT_EQ(second.Longitude(), -118.0);
    EXPECT_EQ(second.Temperature(), 16.0);
    EXPECT_EQ(second.Pressure(), 1018.0);
}

TEST_F(ServerCreation, EndOfObjectClosesEverything) {
    display.calls.clear();
    server.reset();
    EXPECT_EQ(display.calls, std::vector<std::string>{"DisposeAll"});
}

using ServerProperties = ServerTest;

TEST_F(ServerProperties, WritesStoreWithoutRangeTest) {
    server->SetLatitude(123.456);  // no site has it, yet it is stored as given
    EXPECT_EQ(model->Latitude, 123.456);
    server->SetPath("/data/runs");
    EXPECT_EQ(server->Path(), "/data/runs");
    server->SetSecond(-1.5);
    EXPECT_EQ(model->Second, -1.5);
    server->SetYear(-32768);
    EXPECT_EQ(server->Year(), -32768);
    server->SetDST(true);
    EXPECT_TRUE(model->DST);
    server->SetPhiCountsPerRev(8192.0);
    server->SetThetaCountsPerRev(4096.0);
    EXPECT_EQ(model->PhiCountsPerRev, 8192.0);
    EXPECT_EQ(model->ThetaCountsPerRev, 4096.0);
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

}  // namespace
