// Adding, reading, removing and weighing calibration points.
#include <cmath>
#include <memory>
#include <string>

#include "ServerTestSupport.h"
#include "model/InverseSolution.h"

namespace {

using AddCalPointTable = ServerTest;

TEST_F(AddCalPointTable, StoresTheRecordAndFits) {
    server->AddCalPoint(1.25, 0.5, 1.5, -0.25, 1.75, 2451545.0, "21:14:05", "1/2/2005");
    ASSERT_EQ(server->NumCalPoints(), 1);
    const CalPoint& p = model->CalPoints[1];
    EXPECT_TRUE(p.Used);
    EXPECT_EQ(p.PhiEnc, 1.25);
    EXPECT_EQ(p.ThetaEnc, 0.5);
    EXPECT_EQ(p.RA, 1.5);
    EXPECT_EQ(p.Dec, -0.25);
    EXPECT_EQ(p.LST, 1.75);
    EXPECT_EQ(p.JD, 2451545.0);
    EXPECT_EQ(p.TimeStr, "21:14:05");
    EXPECT_EQ(p.DateStr, "1/2/2005");
    EXPECT_EQ(Recalculations(), 1);
}

TEST_F(AddCalPointTable, ReusedRowGetsAnEmptyName) {
    // A row behind the count, as a removal or a load leaves it.
    model->CalPoints[1].Name = "Vega";
    server->AddCalPoint(1.0, 0.5, 2.0, 0.3, 1.0, 2451545.0, "", "");
    EXPECT_TRUE(model->CalPoints[1].Name.empty());
}

TEST_F(AddCalPointTable, FiveHundredthFitsFiveHundredFirstIsRefused) {
    chain.SetDisplayEnabled(false);  // 499 quick adds without fits
    for (int i = 1; i <= 499; ++i)
        server->AddCalPoint(i * 0.01, 0.5, 0.3, 0.2, 1.0, 2451545.0, "", "");
    chain.SetDisplayEnabled(true);
    int before = Recalculations();
    server->AddCalPoint(5.0, 0.5, 0.3, 0.2, 1.0, 2451545.0, "", "");
    EXPECT_EQ(server->NumCalPoints(), 500);
    EXPECT_EQ(model->CalPoints[500].PhiEnc, 5.0);
    EXPECT_EQ(Recalculations(), before + 1);
    server->AddCalPoint(6.0, 0.5, 0.3, 0.2, 1.0, 2451545.0, "", "");
    EXPECT_EQ(server->NumCalPoints(), 500);
    EXPECT_EQ(model->CalPoints[500].PhiEnc, 5.0);
    EXPECT_EQ(Recalculations(), before + 1);  // a refused point changes nothing
}

class ThreePoints : public ServerTest {
  protected:
    void SetUp() override {
        server->AddCalPoint(1.0, 0.1, 0.5, 0.2, 1.0, 2451545.0, "t1", "d1");
        server->AddCalPoint(2.0, 0.2, 0.6, 0.3, 1.1, 2451545.1, "t2", "d2");
        server->AddCalPoint(3.0, 0.3, 0.7, 0.4, 1.2, 2451545.2, "t3", "d3");
        model->CalPoints[2].Name = "Deneb";
    }
};

using RemoveCalPointTable = ThreePoints;

TEST_F(RemoveCalPointTable, RowsMoveDownWithTheirFlags) {
    server->SetUseCalPoint(2, false);
    server->RemoveCalPoint(1);
    ASSERT_EQ(server->NumCalPoints(), 2);
    EXPECT_EQ(model->CalPoints[1].PhiEnc, 2.0);
    EXPECT_FALSE(model->CalPoints[1].Used);
    EXPECT_EQ(model->CalPoints[1].Name, "Deneb");
    EXPECT_EQ(model->CalPoints[1].TimeStr, "t2");
    EXPECT_EQ(model->CalPoints[2].PhiEnc, 3.0);
    EXPECT_TRUE(model->CalPoints[2].Used);
    // The old last record stays behind the count.
    EXPECT_EQ(model->CalPoints[3].PhiEnc, 3.0);
    EXPECT_EQ(model->CalPoints[3].DateStr, "d3");
}

TEST_F(RemoveCalPointTable, LastIndexOnlyLowersTheCount) {
    server->RemoveCalPoint(3);
    EXPECT_EQ(server->NumCalPoints(), 2);
    EXPECT_EQ(model->CalPoints[2].PhiEnc, 2.0);
}

TEST_F(RemoveCalPointTable, BadIndexRemovesNothingButRedraws) {
    for (int16_t bad : {int16_t{0}, int16_t{4}, int16_t{-1}}) {
        int before = Recalculations();
        server->RemoveCalPoint(bad);
        EXPECT_EQ(server->NumCalPoints(), 3) << "index " << bad;
        EXPECT_EQ(Recalculations(), before + 1) << "index " << bad;
    }
}

using UseCalPointProperty = ThreePoints;

TEST_F(UseCalPointProperty, ReadsAndWritesTheFlag) {
    EXPECT_TRUE(server->UseCalPoint(3));
    server->SetUseCalPoint(3, false);
    EXPECT_FALSE(server->UseCalPoint(3));
    EXPECT_FALSE(model->CalPoints[3].Used);
    server->SetUseCalPoint(3, true);
    EXPECT_TRUE(server->UseCalPoint(3));
}

TEST_F(UseCalPointProperty, BadIndicesReadFalseAndWriteNothing) {
    EXPECT_FALSE(server->UseCalPoint(0));
    EXPECT_FALSE(server->UseCalPoint(4));
    // Row 4 exists in the table but lies behind the count.
    model->CalPoints[4].Used = true;
    EXPECT_FALSE(server->UseCalPoint(4));
    int before = Recalculations();
    server->SetUseCalPoint(4, false);
    server->SetUseCalPoint(0, false);
    EXPECT_TRUE(model->CalPoints[4].Used);
    EXPECT_EQ(Recalculations(), before + 2);  // the chain runs in any case
}

// A point taken out of the fit drops out of it at once: six points of a
// perfect mount fit exactly, one with a Theta reading 0.01 count off spoils
// the fit until it is switched off, and it still counts among all points.
TEST_F(UseCalPointProperty, SwitchedOffPointLeavesTheFitAtOnce) {
    // Start over from an empty table.
    model->NumCalPoints = 0;
    auto perfect = std::make_unique<ModelState>();
    InitModel(*perfect);
    auto stars = SixStars();
    for (size_t i = 0; i < stars.size(); ++i) {
        const auto& star = stars[i];
        double theta = 0, phi = 0;
        CelestialToEncoders(*perfect, star.LST, star.JD, star.RA, star.Dec, 1, theta, phi);
        if (i == 2) theta += 0.01;  // point 3
        server->AddCalPoint(phi, theta, star.RA, star.Dec, star.LST, star.JD, "", "");
    }
    ASSERT_GT(model->MaxErrSel, 1e-4);  // the spoiled point pulls the fit
    server->SetUseCalPoint(3, false);
    // The five good points fit to the accuracy of the solve.
    EXPECT_LT(model->MaxErrSel, 1e-8);
    // The spoiled point's own error is the chord of 0.01 rad, 0.0099999583,
    // within the accuracy of the fit.
    EXPECT_NEAR(model->MaxErrAll, 0.0099999583, 1e-8);
    EXPECT_NEAR(model->CalPoints[3].DistErr, 0.0099999583, 1e-8);
}

using GetCalPointCall = ThreePoints;

TEST_F(GetCalPointCall, CopiesTheRecord) {
    double phi = 0, theta = 0, ra = 0, dec = 0, lst = 0, jd = 0;
    std::string ts, ds;
    bool used = false;
    server->GetCalPoint(2, phi, theta, ra, dec, lst, jd, ts, ds, used);
    EXPECT_EQ(phi, 2.0);
    EXPECT_EQ(theta, 0.2);
    EXPECT_EQ(ra, 0.6);
    EXPECT_EQ(dec, 0.3);
    EXPECT_EQ(lst, 1.1);
    EXPECT_EQ(jd, 2451545.1);
    EXPECT_EQ(ts, "t2");
    EXPECT_EQ(ds, "d2");
    EXPECT_TRUE(used);
}

TEST_F(GetCalPointCall, BadIndexLeavesOutArgumentsAlone) {
    for (int16_t bad : {int16_t{0}, int16_t{4}}) {
        double phi = -7, theta = -7, ra = -7, dec = -7, lst = -7, jd = -7;
        std::string ts = "keep", ds = "keep";
        bool used = true;
        server->GetCalPoint(bad, phi, theta, ra, dec, lst, jd, ts, ds, used);
        EXPECT_EQ(phi, -7);
        EXPECT_EQ(theta, -7);
        EXPECT_EQ(ra, -7);
        EXPECT_EQ(dec, -7);
        EXPECT_EQ(lst, -7);
        EXPECT_EQ(jd, -7);
        EXPECT_EQ(ts, "keep");
        EXPECT_EQ(ds, "keep");
        EXPECT_TRUE(used);
    }
}

TEST_F(GetCalPointCall, ErrorsOfBadIndexLeaveOutArgumentsAlone) {
    double a = -7, b = -7, c = -7, d = -7, e = -7;
    server->GetCalPointErrors(4, a, b, c, d, e);
    EXPECT_EQ(a, -7);
    EXPECT_EQ(b, -7);
    EXPECT_EQ(c, -7);
    EXPECT_EQ(d, -7);
    EXPECT_EQ(e, -7);
    server->GetCalPointErrors(1, a, b, c, d, e);
    EXPECT_EQ(a, model->CalPoints[1].DistErr);
    EXPECT_GE(a, 0.0);  // a chord length
}

using SyncEncodersCall = ServerTest;

TEST_F(SyncEncodersCall, PerfectModelGivesZero) {
    double theta = 0, phi = 0;
    server->CelestialToEncoder(1.2, 2451545.0, 0.9, 0.4, 1, theta, phi);
    double phiOff = -1, thetaOff = -1;
    server->SyncEncoders(phi, theta, 0.9, 0.4, 1.2, 2451545.0, 1, phiOff, thetaOff);
    EXPECT_EQ(phiOff, 0.0);
    EXPECT_EQ(thetaOff, 0.0);
}

// The offsets are what the client adds to its raw readings: readings that
// lag the model by 0.002 and 0.003 counts give exactly those amounts, to
// the rounding of numbers near 1.
TEST_F(SyncEncodersCall, OffsetsAreModelMinusReading) {
    double theta = 0, phi = 0;
    server->CelestialToEncoder(1.2, 2451545.0, 0.9, 0.4, 1, theta, phi);
    double phiOff = 0, thetaOff = 0;
    server->SyncEncoders(phi - 0.002, theta - 0.003, 0.9, 0.4, 1.2, 2451545.0, 1, phiOff, thetaOff);
    EXPECT_NEAR(phiOff, 0.002, 1e-12);
    EXPECT_NEAR(thetaOff, 0.003, 1e-12);
}

class SyncOnFittedModel : public ServerTest {};

TEST_F(SyncOnFittedModel, LeavesTheModelUntouched) {
    auto perfect = std::make_unique<ModelState>();
    InitModel(*perfect);
    for (const auto& star : SixStars()) {
        double theta = 0, phi = 0;
        CelestialToEncoders(*perfect, star.LST, star.JD, star.RA, star.Dec, 1, theta, phi);
        server->AddCalPoint(phi + 0.02, theta - 0.01, star.RA, star.Dec, star.LST, star.JD, "", "");
    }
    const double errorNorth = model->ErrorNorth;
    const double phiOffset = model->PhiEncOffset;
    const double thetaOffset = model->ThetaEncOffset;
    const auto coef = model->TermCoef;
    const int16_t count = model->NumCalPoints;
    display.calls.clear();
    double p1 = 0, t1 = 0, p2 = 0, t2 = 0;
    server->SyncEncoders(1.0, 0.7, 0.9, 0.4, 1.2, 2451545.0, 1, p1, t1);
    server->SyncEncoders(1.0, 0.7, 0.9, 0.4, 1.2, 2451545.0, 1, p2, t2);
    EXPECT_EQ(p1, p2);
    EXPECT_EQ(t1, t2);
    EXPECT_EQ(model->ErrorNorth, errorNorth);
    EXPECT_EQ(model->PhiEncOffset, phiOffset);
    EXPECT_EQ(model->ThetaEncOffset, thetaOffset);
    EXPECT_EQ(model->TermCoef, coef);
    EXPECT_EQ(model->NumCalPoints, count);
    EXPECT_TRUE(display.calls.empty());
}

using TermCommands = ServerTest;

TEST_F(TermCommands, PresetsSetFlagsAndFit) {
    server->EnableAllTerms();
    for (int k = 1; k <= 22; ++k) EXPECT_EQ(model->TermEnable[k], 1) << "flag " << k;
    // Disabling keeps "Cone" and "Hub" (flags 1 and 2) as they were.
    server->DisableAllTerms();
    for (int k = 1; k <= 22; ++k) EXPECT_EQ(model->TermEnable[k], k <= 2 ? 1 : 0) << "flag " << k;
    server->EnableTermsForEquatorial();
    for (int k = 1; k <= 22; ++k) EXPECT_EQ(model->TermEnable[k], k <= 14 ? 1 : 0) << "flag " << k;
    server->EnableTermsForAltAz();
    for (int k = 1; k <= 22; ++k) {
        bool on = k <= 5 || k == 10 || k == 11 || k == 14 || k == 15;
        EXPECT_EQ(model->TermEnable[k], on ? 1 : 0) << "flag " << k;
    }
    EXPECT_EQ(Recalculations(), 4);
}

}  // namespace
