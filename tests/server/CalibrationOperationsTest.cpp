// Adding, reading, removing and weighing calibration points.

#include "ServerTestSupport.h"
#include "sky/NumberText.h"

namespace {

// The stored fields of a record as one line.
std::string Record(const CalPoint& p) {
    return p.Name + "|" + NumberText(p.PhiEnc) + " " + NumberText(p.ThetaEnc) + " " +
           NumberText(p.RA) + " " + NumberText(p.Dec) + " " + NumberText(p.LST) + " " +
           NumberText(p.JD) + " " + p.TimeStr + " " + p.DateStr + (p.Used ? " used" : "");
}

using AddCalPointTable = ServerTest;

TEST_F(AddCalPointTable, StoresTheRecordWithAnEmptyNameAndFits) {
    // A row behind the count, as a removal or a load leaves it, keeps no name.
    model->CalPoints[1].Name = "Vega";
    server->AddCalPoint(1.25, 0.5, 1.5, -0.25, 1.75, 2451545.0, "21:14:05", "1/2/2005");
    ASSERT_EQ(server->NumCalPoints(), 1);
    EXPECT_EQ(Record(model->CalPoints[1]),
              "|1.25 0.5 1.5 -0.25 1.75 2451545 21:14:05 1/2/2005 used");
    EXPECT_EQ(Recalculations(), 1);
}

TEST_F(AddCalPointTable, FiveHundredthFitsFiveHundredFirstIsRefused) {
    chain.SetDisplayEnabled(false);  // 499 quick adds without fits
    for (int i = 1; i <= 499; ++i)
        server->AddCalPoint(i * 0.01, 0.5, 0.3, 0.2, 1.0, 2451545.0, "", "");
    chain.SetDisplayEnabled(true);
    const int before = Recalculations();
    server->AddCalPoint(5.0, 0.5, 0.3, 0.2, 1.0, 2451545.0, "", "");
    EXPECT_EQ(server->NumCalPoints(), 500);
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
    EXPECT_EQ(Record(model->CalPoints[1]), "Deneb|2 0.2 0.6 0.3 1.1 2451545.1 t2 d2");
    EXPECT_EQ(Record(model->CalPoints[2]), "|3 0.3 0.7 0.4 1.2 2451545.2 t3 d3 used");
    // The old last record stays behind the count.
    EXPECT_EQ(Record(model->CalPoints[3]), "|3 0.3 0.7 0.4 1.2 2451545.2 t3 d3 used");
    // The last index only lowers the count.
    server->RemoveCalPoint(2);
    EXPECT_EQ(server->NumCalPoints(), 1);
    EXPECT_EQ(model->CalPoints[1].PhiEnc, 2.0);
}

TEST_F(RemoveCalPointTable, BadIndexRemovesNothingButRedraws) {
    for (int16_t bad : {int16_t{0}, int16_t{4}, int16_t{-1}}) {
        const int before = Recalculations();
        server->RemoveCalPoint(bad);
        EXPECT_EQ(server->NumCalPoints(), 3) << "index " << bad;
        EXPECT_EQ(Recalculations(), before + 1) << "index " << bad;
    }
}

using UseCalPointProperty = ThreePoints;

TEST_F(UseCalPointProperty, ReadsAndWritesTheFlagOfValidIndicesOnly) {
    EXPECT_TRUE(server->UseCalPoint(3));
    server->SetUseCalPoint(3, false);
    EXPECT_FALSE(server->UseCalPoint(3));
    EXPECT_FALSE(model->CalPoints[3].Used);
    server->SetUseCalPoint(3, true);
    EXPECT_TRUE(server->UseCalPoint(3));
    // Row 4 exists in the table but lies behind the count.
    model->CalPoints[4].Used = true;
    EXPECT_FALSE(server->UseCalPoint(0));
    EXPECT_FALSE(server->UseCalPoint(4));
    const int before = Recalculations();
    server->SetUseCalPoint(4, false);
    server->SetUseCalPoint(0, false);
    EXPECT_TRUE(model->CalPoints[4].Used);
    EXPECT_EQ(Recalculations(), before + 2);  // the chain runs in any case
}

// A point taken out of the fit drops out of it at once: six points of a
// perfect mount fit exactly, one with a Theta reading 0.01 count off spoils
// the fit until it is switched off, and it still counts among all points.
TEST_F(UseCalPointProperty, SwitchedOffPointLeavesTheFitAtOnce) {
    model->NumCalPoints = 0;
    AddSixStars(*server, 0, 0, 3);
    ASSERT_GT(model->MaxErrSel, 1e-4);  // the spoiled point pulls the fit
    server->SetUseCalPoint(3, false);
    // The five good points fit to the accuracy of the solve; the spoiled
    // point's own error is the chord of 0.01 rad, 0.0099999583.
    EXPECT_LT(model->MaxErrSel, 1e-8);
    EXPECT_NEAR(model->MaxErrAll, 0.0099999583, 1e-8);
    EXPECT_NEAR(model->CalPoints[3].DistErr, 0.0099999583, 1e-8);
}

using GetCalPointCall = ThreePoints;

TEST_F(GetCalPointCall, CopiesTheRecordAndBadIndicesLeaveTheArgumentsAlone) {
    for (int16_t index : {int16_t{2}, int16_t{0}, int16_t{4}}) {
        CalPoint p;
        p.Name = "none";
        p.PhiEnc = p.ThetaEnc = p.RA = p.Dec = p.LST = p.JD = -7;
        p.TimeStr = p.DateStr = "keep";
        p.Used = true;
        server->GetCalPoint(index, p.PhiEnc, p.ThetaEnc, p.RA, p.Dec, p.LST, p.JD, p.TimeStr,
                            p.DateStr, p.Used);
        EXPECT_EQ(Record(p), index == 2 ? "none|2 0.2 0.6 0.3 1.1 2451545.1 t2 d2 used"
                                        : "none|-7 -7 -7 -7 -7 -7 keep keep used")
            << "index " << index;
    }
    double e[5] = {-7, -7, -7, -7, -7};
    server->GetCalPointErrors(4, e[0], e[1], e[2], e[3], e[4]);
    for (double v : e) EXPECT_EQ(v, -7);
    server->GetCalPointErrors(1, e[0], e[1], e[2], e[3], e[4]);
    EXPECT_EQ(e[0], model->CalPoints[1].DistErr);
    EXPECT_GE(e[0], 0.0);  // a chord length
}

using SyncEncodersCall = ServerTest;

// The offsets are what the client adds to its raw readings: readings that
// lag the model by 0.002 and 0.003 counts give exactly those amounts, to the
// rounding of numbers near 1; readings on the model give 0.
TEST_F(SyncEncodersCall, OffsetsAreModelMinusReading) {
    double theta = 0, phi = 0, phiOff = -1, thetaOff = -1;
    server->CelestialToEncoder(1.2, 2451545.0, 0.9, 0.4, 1, theta, phi);
    server->SyncEncoders(phi, theta, 0.9, 0.4, 1.2, 2451545.0, 1, phiOff, thetaOff);
    EXPECT_EQ(phiOff, 0.0);
    EXPECT_EQ(thetaOff, 0.0);
    server->SyncEncoders(phi - 0.002, theta - 0.003, 0.9, 0.4, 1.2, 2451545.0, 1, phiOff, thetaOff);
    EXPECT_NEAR(phiOff, 0.002, 1e-12);
    EXPECT_NEAR(thetaOff, 0.003, 1e-12);
}

TEST_F(SyncEncodersCall, LeavesAFittedModelUntouched) {
    AddSixStars(*server, 0.02, -0.01);
    const auto before = std::make_unique<ModelState>(*model);
    display.calls.clear();
    double p1 = 0, t1 = 0, p2 = 0, t2 = 0;
    server->SyncEncoders(1.0, 0.7, 0.9, 0.4, 1.2, 2451545.0, 1, p1, t1);
    server->SyncEncoders(1.0, 0.7, 0.9, 0.4, 1.2, 2451545.0, 1, p2, t2);
    EXPECT_TRUE(p1 == p2 && t1 == t2);
    EXPECT_EQ(model->ErrorNorth, before->ErrorNorth);
    EXPECT_EQ(model->PhiEncOffset, before->PhiEncOffset);
    EXPECT_EQ(model->ThetaEncOffset, before->ThetaEncOffset);
    EXPECT_EQ(model->TermCoef, before->TermCoef);
    EXPECT_EQ(model->NumCalPoints, before->NumCalPoints);
    EXPECT_TRUE(display.calls.empty());
}

using TermCommands = ServerTest;

TEST_F(TermCommands, PresetsSetFlagsAndFit) {
    auto flags = [&] {
        std::string f;
        for (int k = 1; k <= 22; ++k) f += std::to_string(model->TermEnable[k]);
        return f;
    };
    server->EnableAllTerms();
    EXPECT_EQ(flags(), "1111111111111111111111");
    server->DisableAllTerms();  // keeps "Cone" and "Hub" (flags 1 and 2) as they were
    EXPECT_EQ(flags(), "1100000000000000000000");
    server->EnableTermsForEquatorial();
    EXPECT_EQ(flags(), "1111111111111100000000");
    server->EnableTermsForAltAz();
    EXPECT_EQ(flags(), "1111100001100110000000");
    EXPECT_EQ(Recalculations(), 4);
}

}  // namespace
