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
    // A fit with no point is the identity: every result 0.
    EXPECT_EQ(server->ErrorNorth(), 0.0);
    EXPECT_EQ(server->ErrorWest(), 0.0);
    EXPECT_EQ(server->ThetaEncOffset(), 0.0);
    EXPECT_EQ(server->PhiEncOffset(), 0.0);
    EXPECT_TRUE(model->ServerStarted);
}

TEST_F(ServerCreation, CreationSwitchesTheChainOn) {
    chain.SetDisplayEnabled(false);
    cAztrue second(chain);
    EXPECT_TRUE(chain.DisplayEnabled());
}

TEST_F(ServerCreation, SecondObjectResetsSettingsAndKeepsPoints) {
    server->AddCalPoint(1.0, 0.5, 2.0, 0.3, 1.0, 2451545.0, "", "");
    server->SetLatitude(-12.25);
    server->SetLongitude(7.5);
    server->SetTemperature(-3.0);
    server->SetPressure(900.0);
    cAztrue second(chain);
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
    EXPECT_EQ(server->Latitude(), 123.456);
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

TEST_F(MountTypeTable, UnknownTypeLeavesTheMount) {
    server->SetMountType(2);
    server->SetMountType(3);
    EXPECT_FALSE(model->IsAltAz);
    EXPECT_TRUE(model->IsGEM);
    EXPECT_EQ(server->MountType(), 2);
    server->SetMountType(-1);
    EXPECT_EQ(server->MountType(), 2);
}

TEST_F(MountTypeTable, ZeroThenOneClearsBothFlags) {
    server->SetMountType(2);
    server->SetMountType(0);
    EXPECT_TRUE(model->IsAltAz);
    EXPECT_TRUE(model->IsGEM);  // alt-azimuth keeps IsGEM as it was
    EXPECT_EQ(server->MountType(), 0);
    server->SetMountType(1);
    EXPECT_FALSE(model->IsAltAz);
    EXPECT_FALSE(model->IsGEM);
    EXPECT_EQ(server->MountType(), 1);
}

TEST_F(MountTypeTable, TwoIsGermanEquatorial) {
    server->SetMountType(2);
    EXPECT_EQ(server->MountType(), 2);
    EXPECT_FALSE(model->IsAltAz);
    EXPECT_TRUE(model->IsGEM);
}

TEST_F(MountTypeTable, ReadOfAltAzIgnoresIsGEM) {
    model->IsAltAz = true;
    model->IsGEM = true;
    EXPECT_EQ(server->MountType(), 0);
}

}  // namespace
