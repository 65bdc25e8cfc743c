// Adding, reading, removing and weighing points, the sync, the term presets.
#include "ServerTestSupport.h"
#include "sky/NumberText.h"

namespace {

std::string Record(const CalPoint& p) {
    std::string r = p.Name + "|";
    for (double v : {p.PhiEnc, p.ThetaEnc, p.RA, p.Dec, p.LST, p.JD}) r += NumberText(v) + " ";
    return r + p.TimeStr + " " + p.DateStr + (p.Used ? " used" : "");
}

// Records move down over a removed one with their flags, the old last stays;
// a new one keeps no old name; bad indices do nothing; the 501st is refused.
TEST_F(ServerTest, PointRecordsAddRemoveUseAndCopy) {
    model->CalPoints[3].Name = "Vega";
    for (double i : {1, 2, 3})
        server->AddCalPoint(i, i / 10, i / 10 + 0.4, i / 10 + 0.1, 1, 2, "t", "d");
    model->CalPoints[2].Name = "Deneb";
    server->SetUseCalPoint(2, false);
    for (int16_t bad : {0, 4, -1}) server->RemoveCalPoint(bad), server->SetUseCalPoint(bad, true);
    EXPECT_TRUE(server->UseCalPoint(3) && !server->UseCalPoint(2) && !server->UseCalPoint(4));
    server->RemoveCalPoint(1);
    const std::string second = "Deneb|2 0.2 0.6 0.3 1 2 t d", third = "|3 0.3 0.7 0.4 1 2 t d used";
    const auto& row = model->CalPoints;
    EXPECT_EQ(Calls({Record(row[1]), Record(row[2]), Record(row[3])}),
              Calls({second, third, third}));
    EXPECT_EQ(std::tuple(server->NumCalPoints(), row[4].Used), std::tuple(2, false));
    for (int16_t index : {1, 0, 3}) {
        CalPoint p;
        p.PhiEnc = p.ThetaEnc = p.RA = p.Dec = p.LST = p.JD = -7, p.TimeStr = "keep", p.Used = true;
        server->GetCalPoint(index, p.PhiEnc, p.ThetaEnc, p.RA, p.Dec, p.LST, p.JD, p.TimeStr,
                            p.DateStr, p.Used);
        EXPECT_EQ(Record(p), index == 1 ? second.substr(5) : "|-7 -7 -7 -7 -7 -7 keep  used");
    }
    const int before = Recalculations();
    for (int i = 3; i <= 501; ++i) {
        chain.SetDisplayEnabled(i >= 500);  // quick adds without fits up to the 500th
        server->AddCalPoint(i, 0.5, 0.3, 0.2, 1, 2451545, "", "");
    }
    EXPECT_EQ(std::tuple(server->NumCalPoints(), row[500].PhiEnc, Recalculations() - before),
              std::tuple(500, 500.0, 1));
}

// Six stars of a perfect mount read 0.01 count more on Phi, one 0.01 more on
// Theta: it spoils the fit till switched off, then keeps its error, the
// chord of 0.01 rad, 0.0099999583; the Phi offset comes out to the solve's
// accuracy, after changed points too. Readings 0.002 and 0.003 counts
// behind the model sync to those offsets (rounding near 1), fitting nothing.
TEST_F(ServerTest, ShiftedMountSpoiledPointAndSync) {
    AddSixStars(*server, 0.01, 3);
    ASSERT_GT(model->MaxErrSel, 1e-4);
    server->SetUseCalPoint(3, false);
    double e[5] = {}, theta = 0, phi = 0, phiOff = -1, thetaOff = -1;
    server->GetCalPointErrors(3, e[0], e[1], e[2], e[3], e[4]);
    EXPECT_LT(model->MaxErrSel, 1e-8);
    EXPECT_NEAR(e[0], 0.0099999583, 1e-8);
    EXPECT_NEAR(server->PhiEncOffset(), 0.01, 1e-8);
    for (int i = 1; i <= 6; ++i) model->CalPoints[i].PhiEnc += 0.01;
    EXPECT_NEAR(server->PhiEncOffset(), 0.02, 1e-8);
    display.calls.clear();
    server->CelestialToEncoder(1.2, 2451545.0, 0.9, 0.4, 1, theta, phi);
    server->SyncEncoders(phi - 0.002, theta - 0.003, 0.9, 0.4, 1.2, 2451545, 1, phiOff, thetaOff);
    EXPECT_NEAR(phiOff, 0.002, 1e-12);
    EXPECT_NEAR(thetaOff, 0.003, 1e-12);
    EXPECT_TRUE(display.calls.empty() && server->NumCalPoints() == 6);
}

// EnableAllTerms sets every flag; DisableAllTerms keeps "Cone" and "Hub"
// (flags 1 and 2) as they were. The other presets are the model's to check.
TEST_F(ServerTest, AllTermsOnAndOff) {
    std::string flags;
    for (const auto preset : {&cAztrue::EnableAllTerms, &cAztrue::DisableAllTerms}) {
        ((*server).*preset)();
        for (int k = 1; k <= 22; ++k) flags += std::to_string(model->TermEnable[k]);
    }
    EXPECT_EQ(flags, "1111111111111111111111" "1100000000000000000000");
}

}  // namespace
