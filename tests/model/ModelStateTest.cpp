// Defaults of a fresh model and what a second InitModel keeps.
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

#include "model/ModelState.h"

namespace {

using M = ModelState;

TEST(ModelStateDefaults, ProcessStartIsAllZeroAndInitModelSetsTheTableDefaults) {
    auto s = std::make_unique<ModelState>();
    EXPECT_TRUE(!s->IsAltAz && s->NumTerms == 0 && s->Latitude == 0 && s->Version.empty());
    InitModel(*s);
    // Every value below is the default of the model's tables.
    // clang-format off
    const struct { double M::*field; double want; const char* name; } reals[] = {
        {&M::Latitude, 33.5, "Latitude"}, {&M::Longitude, -118, "Longitude"},
        {&M::Temperature, 16, "Temperature"}, {&M::Pressure, 1018, "Pressure"},
        {&M::PhiCountsPerRev, 6.283185308, "PhiCountsPerRev"},
        {&M::ThetaCountsPerRev, 6.283185308, "ThetaCountsPerRev"}, {&M::PhiSF, 1, "PhiSF"},
        {&M::ThetaSF, 1, "ThetaSF"}, {&M::MaxSensitivity, 300, "MaxSensitivity"},
        {&M::TimeZone, -8, "TimeZone"}};
    const struct { bool M::*field; bool want; const char* name; } flags[] = {
        {&M::EnableRefraction, true, "EnableRefraction"}, {&M::IsAltAz, true, "IsAltAz"},
        {&M::IsGEM, false, "IsGEM"}, {&M::PhiPosCW, true, "PhiPosCW"},
        {&M::ThetaPosUp, true, "ThetaPosUp"},
        {&M::DST, false, "DST"}, {&M::HelpersCreated, true, "HelpersCreated"}};
    // clang-format on
    for (const auto& r : reals) EXPECT_EQ((*s).*r.field, r.want) << r.name;
    for (const auto& f : flags) EXPECT_EQ((*s).*f.field, f.want) << f.name;
    EXPECT_EQ(s->NumTerms, 46);
    EXPECT_EQ(s->NumTermEnable, 22);
    EXPECT_EQ(s->Version, "Aztrue 5.32");
    EXPECT_TRUE(s->FullFileName.empty());
    EXPECT_EQ(s->AutoAlignTarget, 20);
    EXPECT_EQ(s->AutoAlignOrder, 0);
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
    EXPECT_TRUE(s->TermCoef[7] == 1e-4 && s->TermActive[7] && s->TermEnable[3] == 1);
    EXPECT_TRUE(s->Year == 2024 && s->Hour == 5 && s->Second == 12.5);
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
