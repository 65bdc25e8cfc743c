// Saving and loading again: what comes back, and the star names through the
// single-byte text of the file.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>
#include <string>

#include "FileTestSupport.h"
#include "files/CalFile.h"
#include "model/ModelState.h"

namespace {

using filetest::ReadBytes;
using filetest::TempFolder;

// Forty points and settings from a fixed generator: values over several
// magnitudes and both signs, mixed flags, and a few names.
std::unique_ptr<ModelState> RandomModel(unsigned seed) {
    std::mt19937 gen(seed);
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    std::bernoulli_distribution coin(0.5);
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    s->NumCalPoints = 40;
    for (int i = 1; i <= 40; ++i) {
        CalPoint& p = s->CalPoints[i];
        p.Name = i % 5 == 0 ? "Star " + std::to_string(i) : "";
        p.RA = (unit(gen) + 1.0) * 3.141592654;
        p.Dec = unit(gen) * 1.5707963;
        p.ThetaEnc = unit(gen) * 1e6;
        p.PhiEnc = unit(gen) * 1e-9;  // exponent form in the file
        p.LST = (unit(gen) + 1.0) * 3.141592654;
        p.JD = 2451545.0 + unit(gen) * 1e4;
        p.TimeStr = std::to_string(i) + ":00:00";
        p.DateStr = "1/" + std::to_string(i) + "/2024";
        p.Used = coin(gen);
    }
    for (int k = 1; k <= 22; ++k) s->TermEnable[k] = coin(gen) ? 1 : 0;
    s->Latitude = unit(gen) * 90;
    s->Longitude = unit(gen) * 180;
    s->PhiPosCW = coin(gen);
    s->ThetaPosUp = coin(gen);
    s->IsAltAz = coin(gen);
    s->IsGEM = coin(gen);
    s->PhiCountsPerRev = 1e6 * (1.5 + unit(gen));
    s->ThetaCountsPerRev = 1e6 * (1.5 + unit(gen));
    s->Temperature = unit(gen) * 30;
    s->Pressure = 1000 + unit(gen) * 50;
    s->ThetaSF = 1 + unit(gen) * 1e-3;
    s->PhiSF = 1 + unit(gen) * 1e-3;
    s->EnableRefraction = coin(gen);
    s->MaxSensitivity = 100 + unit(gen) * 50;
    return s;
}

// Relative difference a 15-significant-digit text can leave: half a unit in
// the 15th digit is at most 5e-15 of the value.
void ExpectFifteenDigits(double got, double wanted, const std::string& what) {
    EXPECT_NEAR(got, wanted, 5e-15 * std::fabs(wanted)) << what;
}

TEST(CalFileRoundTrip, SaveLoadSaveGivesIdenticalBytesForFortyPoints) {
    TempFolder dir;
    auto s = RandomModel(42);
    const std::string first = dir.File("first.AZT");
    const std::string second = dir.File("second.AZT");
    ASSERT_TRUE(SaveCalFile(*s, first));

    auto back = std::make_unique<ModelState>();
    InitModel(*back);
    // A load leaves Longitude alone; give it the saved model's value so the
    // second file can match the first in that line too.
    back->Longitude = s->Longitude;
    ASSERT_TRUE(LoadCalFile(*back, first));
    ASSERT_TRUE(SaveCalFile(*back, second));
    const std::string a = ReadBytes(first);
    EXPECT_GT(a.size(), 40u * 15u * 2u);
    EXPECT_EQ(a, ReadBytes(second));
}

TEST(CalFileRoundTrip, LoadRestoresEveryStarFlagAndSetting) {
    TempFolder dir;
    auto s = RandomModel(7);
    const std::string name = dir.File("all.AZT");
    ASSERT_TRUE(SaveCalFile(*s, name));
    auto back = std::make_unique<ModelState>();
    InitModel(*back);
    ASSERT_TRUE(LoadCalFile(*back, name));

    ASSERT_EQ(back->NumCalPoints, 40);
    for (int i = 1; i <= 40; ++i) {
        const CalPoint& w = s->CalPoints[i];
        const CalPoint& g = back->CalPoints[i];
        const std::string at = "point " + std::to_string(i);
        EXPECT_EQ(g.Name, w.Name) << at;
        EXPECT_EQ(g.Used, w.Used) << at;
        ExpectFifteenDigits(g.RA, w.RA, at + " RA");
        ExpectFifteenDigits(g.Dec, w.Dec, at + " Dec");
        ExpectFifteenDigits(g.ThetaEnc, w.ThetaEnc, at + " ThetaEnc");
        ExpectFifteenDigits(g.PhiEnc, w.PhiEnc, at + " PhiEnc");
        ExpectFifteenDigits(g.LST, w.LST, at + " LST");
        ExpectFifteenDigits(g.JD, w.JD, at + " JD");
        EXPECT_EQ(g.TimeStr, w.TimeStr) << at;
        EXPECT_EQ(g.DateStr, w.DateStr) << at;
    }
    for (int k = 1; k <= 22; ++k) EXPECT_EQ(back->TermEnable[k], s->TermEnable[k]) << "flag " << k;
    ExpectFifteenDigits(back->Latitude, s->Latitude, "Latitude");
    EXPECT_EQ(back->PhiPosCW, s->PhiPosCW);
    EXPECT_EQ(back->ThetaPosUp, s->ThetaPosUp);
    EXPECT_EQ(back->IsAltAz, s->IsAltAz);
    EXPECT_EQ(back->IsGEM, s->IsGEM);
    ExpectFifteenDigits(back->PhiCountsPerRev, s->PhiCountsPerRev, "PhiCountsPerRev");
    ExpectFifteenDigits(back->ThetaCountsPerRev, s->ThetaCountsPerRev, "ThetaCountsPerRev");
    ExpectFifteenDigits(back->Temperature, s->Temperature, "Temperature");
    ExpectFifteenDigits(back->Pressure, s->Pressure, "Pressure");
    ExpectFifteenDigits(back->ThetaSF, s->ThetaSF, "ThetaSF");
    ExpectFifteenDigits(back->PhiSF, s->PhiSF, "PhiSF");
    EXPECT_EQ(back->EnableRefraction, s->EnableRefraction);
    ExpectFifteenDigits(back->MaxSensitivity, s->MaxSensitivity, "MaxSensitivity");
}

TEST(CalFileRoundTrip, LongitudeTimeZoneAndDaylightKeepTheirValues) {
    TempFolder dir;
    auto s = RandomModel(3);
    const std::string name = dir.File("site.AZT");
    ASSERT_TRUE(SaveCalFile(*s, name));
    auto back = std::make_unique<ModelState>();
    InitModel(*back);
    back->Longitude = 12.25;
    back->TimeZone = 5.5;
    back->DST = true;
    ASSERT_TRUE(LoadCalFile(*back, name));
    EXPECT_EQ(back->Longitude, 12.25);
    EXPECT_EQ(back->TimeZone, 5.5);
    EXPECT_TRUE(back->DST);
}

std::unique_ptr<ModelState> OnePointNamed(const std::string& name) {
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    s->NumCalPoints = 1;
    s->CalPoints[1].Name = name;
    s->CalPoints[1].Used = true;
    return s;
}

// The name line is line 5 of the file (after count, blank and heading).
std::string NameLineBytes(const std::string& file) {
    size_t start = 0;
    for (int line = 0; line < 4; ++line) start = file.find("\r\n", start) + 2;
    return file.substr(start, file.find("\r\n", start) - start);
}

TEST(CalFileStarNames, NonAsciiNameIsWindows1252InTheFile) {
    TempFolder dir;
    // "Zürich €1" in UTF-8; Windows-1252 has ü at 0xFC and € at 0x80
    // (published code page table).
    auto s = OnePointNamed(
        "Z\xC3\xBCrich \xE2\x82\xAC"
        "1");
    const std::string name = dir.File("name.AZT");
    ASSERT_TRUE(SaveCalFile(*s, name));
    EXPECT_EQ(NameLineBytes(ReadBytes(name)),
              "Z\xFCrich \x80"
              "1");

    auto back = std::make_unique<ModelState>();
    InitModel(*back);
    ASSERT_TRUE(LoadCalFile(*back, name));
    EXPECT_EQ(back->CalPoints[1].Name, s->CalPoints[1].Name);
}

TEST(CalFileStarNames, CharacterWithoutWindows1252FormBecomesQuestionMark) {
    TempFolder dir;
    // Alpha (U+03B1) has no Windows-1252 form.
    auto s = OnePointNamed("\xCE\xB1 Cen");
    const std::string name = dir.File("alpha.AZT");
    ASSERT_TRUE(SaveCalFile(*s, name));
    EXPECT_EQ(NameLineBytes(ReadBytes(name)), "? Cen");
}

TEST(CalFileStarNames, FileMadeOnWindowsLoadsAsUtf8) {
    TempFolder dir;
    auto lines = filetest::OneStarExampleLines();
    lines[4] = "M31 \xB0 \xE9toile";  // 0xB0 degree sign, 0xE9 e acute
    const std::string name = dir.File("old.AZT");
    filetest::WriteBytes(name, filetest::JoinLines(lines));
    auto s = std::make_unique<ModelState>();
    InitModel(*s);
    ASSERT_TRUE(LoadCalFile(*s, name));
    EXPECT_EQ(s->CalPoints[1].Name, "M31 \xC2\xB0 \xC3\xA9toile");
    // Saved again, the line has the bytes it was read from.
    ASSERT_TRUE(SaveCalFile(*s, name));
    EXPECT_EQ(NameLineBytes(ReadBytes(name)), lines[4]);
}

}  // namespace
