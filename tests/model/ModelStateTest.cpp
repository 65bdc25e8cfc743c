// Defaults of a fresh model and what a second InitModel keeps.
#include <gtest/gtest.h>

#include <memory>

#include "model/ModelState.h"

namespace {

TEST(ModelStateDefaults, ProcessStartIsAllZero) {
    auto s = std::make_unique<ModelState>();
    EXPECT_FALSE(s->IsAltAz);
    EXPECT_EQ(s->NumTerms, 0);
    EXPECT_EQ(s->Latitude, 0.0);
    EXPECT_TRUE(s->Version.empty());
}

TEST(ModelStateDefaults, InitModelSetsTheTableDefaults) {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    // Every value below is the default of the model's tables.
    EXPECT_EQ(s->Latitude, 33.5);
    EXPECT_EQ(s->Longitude, -118.0);
    EXPECT_EQ(s->Temperature, 16.0);
    EXPECT_EQ(s->Pressure, 1018.0);
    EXPECT_TRUE(s->EnableRefraction);
    EXPECT_TRUE(s->IsAltAz);
    EXPECT_FALSE(s->IsGEM);
    EXPECT_TRUE(s->PhiPosCW);
    EXPECT_TRUE(s->ThetaPosUp);
    EXPECT_EQ(s->PhiCountsPerRev, 6.283185308);
    EXPECT_EQ(s->ThetaCountsPerRev, 6.283185308);
    EXPECT_EQ(s->PhiSF, 1.0);
    EXPECT_EQ(s->ThetaSF, 1.0);
    EXPECT_EQ(s->MaxSensitivity, 300.0);
    EXPECT_EQ(s->NumTerms, 46);
    EXPECT_EQ(s->NumTermEnable, 22);
    EXPECT_EQ(s->TimeZone, -8.0);
    EXPECT_FALSE(s->DST);
    EXPECT_EQ(s->Version, "Aztrue 5.32");
    EXPECT_TRUE(s->FullFileName.empty());
    EXPECT_EQ(s->AutoAlignTarget, 20);
    EXPECT_EQ(s->AutoAlignOrder, 0);
    EXPECT_TRUE(s->HelpersCreated);
    // Nothing sets the term flags at start: only terms 1 to 4 fit then.
    for (int k = 1; k <= 22; ++k) EXPECT_EQ(s->TermEnable[k], 0) << "flag " << k;
}

TEST(ModelStateDefaults, SecondInitModelKeepsPointsTermsAndClock) {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    s->NumCalPoints = 3;
    s->CalPoints[2].RA = 1.25;
    s->TermCoef[7] = 1e-4;
    s->TermActive[7] = true;
    s->TermEnable[3] = 1;
    s->Year = 2024;
    s->Hour = 5;
    s->Second = 12.5;
    s->Latitude = -20;
    s->Pressure = 900;
    s->TimeZone = 3;
    s->DST = true;
    s->ErrorNorth = 0.01;
    InitModel(*s);
    EXPECT_EQ(s->NumCalPoints, 3);
    EXPECT_EQ(s->CalPoints[2].RA, 1.25);
    EXPECT_EQ(s->TermCoef[7], 1e-4);
    EXPECT_TRUE(s->TermActive[7]);
    EXPECT_EQ(s->TermEnable[3], 1);
    EXPECT_EQ(s->Year, 2024);
    EXPECT_EQ(s->Hour, 5);
    EXPECT_EQ(s->Second, 12.5);
    // Settings go back to their defaults.
    EXPECT_EQ(s->Latitude, 33.5);
    EXPECT_EQ(s->Pressure, 1018.0);
    EXPECT_EQ(s->TimeZone, -8.0);
    EXPECT_FALSE(s->DST);
    EXPECT_EQ(s->ErrorNorth, 0.0);
}

TEST(ModelStateDefaults, PathStartsInTheDocumentsFolder) {
    auto s = std::make_unique<ModelState>();
    setenv("XDG_DOCUMENTS_DIR", "/tmp/aztrue-docs/", 1);
    InitModel(*s);
    unsetenv("XDG_DOCUMENTS_DIR");
    EXPECT_EQ(s->Path, "/tmp/aztrue-docs");
}

}  // namespace
