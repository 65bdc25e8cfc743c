// The synth command: the file of an imaginary mount, and a fit of it with
// the alt-az terms (as `aztrue fit --terms altaz` does) that finds the
// errors back; bad options exit 2 and write nothing.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <memory>
#include <sstream>

#include "app/SynthCommand.h"
#include "files/CalFile.h"
#include "model/ModelState.h"
#include "model/Solver.h"
#include "model/Terms.h"

namespace {

constexpr double kArcmin = 3.141592654 / 10800;  // the program's arcminute
const std::string kData = std::string(AZTRUE_SOURCE_DIR) + "/data";

struct Wanted {
    double Cone, Hub, PAWest, PANorth, Latitude, ThetaOffset, PhiOffset;  // arcmin, deg
    int Count;
};

TEST(SynthCommand, AFitOfItsFileFindsTheErrorsBack) {
    const std::string file = testing::TempDir() + "synth.AZT";
    const struct {
        std::vector<std::string> args;
        Wanted w;
    } cases[] = {
        // The defaults: the sample values of the Virtual Telescope's panel.
        {{}, {10, -5, 15, -20, 33, 7, -9, 40}},
        {{"--count",    "25", "--cone",     "-3",  "--hub",          "4",  "--pa-west",    "-6",
          "--pa-north", "8",  "--latitude", "-41", "--theta-offset", "-2", "--phi-offset", "30",
          "--interval", "3",  "--lst",      "20"},
         {-3, 4, -6, 8, -41, -2, 30, 25}},
    };
    for (const auto& c : cases) {
        std::vector<std::string> args = c.args;
        args.insert(args.end(), {"--out", file});
        std::ostringstream out, err;
        ASSERT_EQ(RunSynthCommand(args, kData, out, err), kSynthOk) << err.str();
        auto s = std::make_unique<ModelState>();
        InitModel(*s);
        ASSERT_TRUE(LoadCalFile(*s, file));
        EXPECT_EQ(s->NumCalPoints, c.w.Count);
        EXPECT_EQ(s->Latitude, c.w.Latitude);
        EnableAltAz(*s);
        Calibrate(*s);
        // Noise-free points made by the fit's own chain; what is left is of
        // second order in the errors (the fit is linear in the coefficients,
        // the model normalises its vector): about 0.005" for 20'.
        const struct {
            const char* Name;
            double Given, Found;
        } values[] = {
            {"cone", c.w.Cone, s->TermCoef[5]},
            {"hub", c.w.Hub, s->TermCoef[6]},
            {"PA west", c.w.PAWest, s->ErrorWest + s->TermCoef[4]},
            {"PA north", c.w.PANorth, s->ErrorNorth + s->TermCoef[3]},
            {"Theta offset", c.w.ThetaOffset, s->ThetaEncOffset + s->TermCoef[2]},
            {"Phi offset", c.w.PhiOffset, s->PhiEncOffset + s->TermCoef[1]},
        };
        for (const auto& v : values) {
            const double diff = (v.Found - v.Given * kArcmin) / kArcmin * 60;
            EXPECT_LT(std::fabs(diff), 0.02)
                << v.Name << ": wanted " << v.Given << "', got " << v.Found / kArcmin
                << "', difference " << diff << "\"";
        }
    }
}

TEST(SynthCommand, BadOptionsExitTwoAndWriteNothing) {
    const std::string file = testing::TempDir() + "bad-synth.AZT";
    std::filesystem::remove(file);
    const std::vector<std::string> cases[] = {
        {"--count", "501", "--out", file}, {"--latitude", "north", "--out", file},
        {"--noise", "-1", "--out", file},  {"--cone", "1"},
        {"--twist", "1", "--out", file},   {"--out"}};
    for (const auto& args : cases) {
        std::ostringstream out, err;
        EXPECT_EQ(RunSynthCommand(args, kData, out, err), kSynthUsageError) << args[0];
        EXPECT_NE(err.str().find("aztrue synth: "), std::string::npos) << args[0];
        EXPECT_FALSE(std::filesystem::exists(file)) << args[0];
    }
}

}  // namespace
