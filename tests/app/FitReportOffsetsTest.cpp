// The report's encoder offsets on encoders of any resolution, scale factor
// and direction: an imaginary mount with known offsets, its points saved as
// a calibration file and fitted by the fit command.
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

#include "app/FitCommand.h"
#include "files/CalFile.h"
#include "model/ModelState.h"
#include "model/SyntheticCalibration.h"

namespace {

double After(const std::string& text, const std::string& label) {
    const size_t at = text.find(label);
    return at == std::string::npos ? 1e300 : std::stod(text.substr(at + label.size()));
}

// The truth is in counts; an arcsecond is 1,296,000 / (counts per turn x
// scale factor) counts. With 1" of noise on 40 points the offsets of a fit
// of terms 1 to 4 scatter by well under 1", so 2" is a safe bound; the fault
// this guards against reported a few hundredths of the offset.
TEST(FitReportOffsets, ArcsecondsHoldForAnyCountsPerTurn) {
    const struct {
        double countsPerRev, scale;
        bool phiCW, thetaUp;
        double thetaCounts, phiCounts;
    } cases[] = {{1296000, 1, true, true, 300, -292},
                 {1296000, 1.0004, false, false, -450, 610},
                 {4194304, 0.9996, true, false, 1500, -2500}};
    for (const auto& c : cases) {
        auto s = std::make_unique<ModelState>();
        InitModel(*s);
        s->ThetaCountsPerRev = s->PhiCountsPerRev = c.countsPerRev;
        s->ThetaSF = s->PhiSF = c.scale;
        s->PhiPosCW = c.phiCW;
        s->ThetaPosUp = c.thetaUp;
        SyntheticMount m;
        m.ThetaEncOffset = c.thetaCounts;
        m.PhiEncOffset = c.phiCounts;
        m.NoiseRMS = 3.141592654 / 648000;
        AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
        const std::string file = ::testing::TempDir() + "offsets.AZT";
        ASSERT_TRUE(SaveCalFile(*s, file));
        std::ostringstream out, err;
        ASSERT_EQ(RunFitCommand({"--json", "--terms", "none", file}, out, err), kFitOk)
            << err.str();
        const double arcsecPerCount = 1296000 / (c.countsPerRev * c.scale);
        const std::string r = out.str();
        EXPECT_NEAR(After(r, "\"thetaCounts\": "), c.thetaCounts, 2 / arcsecPerCount) << r;
        EXPECT_NEAR(After(r, "\"phiCounts\": "), c.phiCounts, 2 / arcsecPerCount);
        EXPECT_NEAR(After(r, "\"thetaArcsec\": "), c.thetaCounts * arcsecPerCount, 2);
        EXPECT_NEAR(After(r, "\"phiArcsec\": "), c.phiCounts * arcsecPerCount, 2);
    }
}

}  // namespace
