// Saving and loading again: what comes back, and the star names through the
// single-byte text of the file.

#include <random>

#include "FileTestSupport.h"

namespace {

using filetest::ReadBytes;

// Forty points and settings from a fixed generator: values over several
// magnitudes and both signs, mixed flags, and a few names.
std::unique_ptr<ModelState> RandomModel(unsigned seed) {
    std::mt19937 gen(seed);
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    std::bernoulli_distribution coin(0.5);
    auto s = filetest::FreshModel();
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

// Every value the file keeps, each real to the 15 significant digits the
// file has: a value read back from its 15-digit text has the same text.
std::string FileValues(const ModelState& s) {
    auto n = [](double x) { return NumberText(x) + " "; };
    std::string t = std::to_string(s.NumCalPoints) + " points\n";
    for (int i = 1; i <= s.NumCalPoints; ++i) {
        const CalPoint& p = s.CalPoints[i];
        t += p.Name + "|" + n(p.RA) + n(p.Dec) + n(p.ThetaEnc) + n(p.PhiEnc) + n(p.LST) + n(p.JD) +
             p.TimeStr + "|" + p.DateStr + (p.Used ? " used\n" : "\n");
    }
    for (int k = 1; k <= 22; ++k) t += std::to_string(s.TermEnable[k]);
    return t + " " + n(s.Latitude) + n(s.PhiPosCW) + n(s.ThetaPosUp) + n(s.IsAltAz) + n(s.IsGEM) +
           n(s.PhiCountsPerRev) + n(s.ThetaCountsPerRev) + n(s.Temperature) + n(s.Pressure) +
           n(s.ThetaSF) + n(s.PhiSF) + n(s.EnableRefraction) + n(s.MaxSensitivity);
}

TEST(CalFileRoundTrip, LoadRestoresEverythingAndSaveLoadSaveGivesIdenticalBytes) {
    filetest::TempFolder dir;
    auto s = RandomModel(42);
    ASSERT_TRUE(SaveCalFile(*s, dir.File("first.AZT")));
    auto back = filetest::FreshModel();
    // A load leaves Longitude, TimeZone and DST alone: the values of the
    // model it loads into stay. Longitude of the saved model lets the second
    // file match the first in that line too.
    back->Longitude = s->Longitude;
    back->TimeZone = 5.5;
    back->DST = true;
    ASSERT_TRUE(LoadCalFile(*back, dir.File("first.AZT")));
    EXPECT_EQ(FileValues(*back), FileValues(*s));
    EXPECT_TRUE(back->Longitude == s->Longitude && back->TimeZone == 5.5 && back->DST);
    ASSERT_TRUE(SaveCalFile(*back, dir.File("second.AZT")));
    const std::string first = ReadBytes(dir.File("first.AZT"));
    EXPECT_GT(first.size(), 40u * 15u * 2u);
    EXPECT_EQ(first, ReadBytes(dir.File("second.AZT")));
}

// The name line of a one-point file (after count, blank and heading).
std::string NameLineBytes(const std::string& file) {
    size_t start = 0;
    for (int line = 0; line < 4; ++line) start = file.find("\r\n", start) + 2;
    return file.substr(start, file.find("\r\n", start) - start);
}

TEST(CalFileStarNames, Windows1252InTheFileUtf8InTheProgram) {
    // "Zürich €1" in UTF-8; Windows-1252 has ü at 0xFC and € at 0x80
    // (published code page table). Alpha (U+03B1) has no Windows-1252 form.
    filetest::TempFolder dir;
    const std::string name = dir.File("name.AZT");
    auto s = filetest::OneStarModel();
    s->CalPoints[1].Name =
        "Z\xC3\xBCrich \xE2\x82\xAC"
        "1";
    ASSERT_TRUE(SaveCalFile(*s, name));
    EXPECT_EQ(NameLineBytes(ReadBytes(name)),
              "Z\xFCrich \x80"
              "1");
    auto back = filetest::FreshModel();
    ASSERT_TRUE(LoadCalFile(*back, name));
    EXPECT_EQ(back->CalPoints[1].Name, s->CalPoints[1].Name);
    s->CalPoints[1].Name = "\xCE\xB1 Cen";
    ASSERT_TRUE(SaveCalFile(*s, name));
    EXPECT_EQ(NameLineBytes(ReadBytes(name)), "? Cen");
    // A file made on Windows: 0xB0 degree sign, 0xE9 e acute. Saved again,
    // the line has the bytes it was read from.
    auto lines = filetest::OneStarExampleLines();
    lines[4] = "M31 \xB0 \xE9toile";
    filetest::WriteBytes(name, filetest::JoinLines(lines));
    ASSERT_TRUE(LoadCalFile(*back, name));
    EXPECT_EQ(back->CalPoints[1].Name, "M31 \xC2\xB0 \xC3\xA9toile");
    ASSERT_TRUE(SaveCalFile(*back, name));
    EXPECT_EQ(NameLineBytes(ReadBytes(name)), lines[4]);
}

}  // namespace
