// The one operation every change of the model ends in, its guard flag, and
// which server members run it.

#include "ServerTestSupport.h"

namespace {

// Marks the fit results and statistics with values no fit of an empty or
// perfect model can give, so that a fit shows as their disappearance.
constexpr double kSentinel = 0.125;
void PlantSentinels(ModelState& s) {
    s.ErrorNorth = s.ErrorWest = s.PhiEncOffset = s.MaxErrAll = kSentinel;
}

const std::vector<std::string> kRefreshOrder = {"DisplayCalPoints", "UpdateGraph", "MakeGraph",
                                                "DisplayData", "ProcessPendingEvents"};

using CalibrateAndDisplayChain = ServerTest;

TEST_F(CalibrateAndDisplayChain, FitsThenRefreshesInFixedOrder) {
    // Check box events of the first three windows must not fit again; the
    // last two run with the chain open again. The first window already sees
    // the new fit and its residuals.
    display.calls.clear();
    PlantSentinels(*model);
    std::vector<bool> enabledDuring;
    std::vector<double> fitDuring;
    display.onCall = [&](const std::string&) {
        enabledDuring.push_back(chain.DisplayEnabled());
        fitDuring.push_back(model->ErrorNorth + model->MaxErrAll);
    };
    chain.CalibrateAndDisplay();
    EXPECT_EQ(display.calls, kRefreshOrder);
    EXPECT_EQ(enabledDuring, (std::vector<bool>{false, false, false, true, true}));
    EXPECT_EQ(fitDuring.at(0), 0.0);
    EXPECT_TRUE(chain.DisplayEnabled());
}

TEST_F(CalibrateAndDisplayChain, DisabledDoesNothing) {
    chain.SetDisplayEnabled(false);
    display.calls.clear();
    PlantSentinels(*model);
    server->SetLatitude(40.0);
    EXPECT_EQ(model->Latitude, 40.0);  // the value is stored all the same
    EXPECT_TRUE(display.calls.empty());
    EXPECT_EQ(model->ErrorNorth, kSentinel);
    EXPECT_EQ(model->MaxErrAll, kSentinel);
}

TEST_F(CalibrateAndDisplayChain, RefreshCannotReenterButPendingClickCan) {
    display.calls.clear();
    int nestedStarts = 0;
    display.onCall = [&](const std::string& name) {
        // A check box set by a refresh tries to recalculate: refused.
        if (name == "DisplayCalPoints" && nestedStarts == 0) chain.CalibrateAndDisplay();
        // A click served among the pending events recalculates in full.
        if (name == "ProcessPendingEvents" && nestedStarts == 0) {
            ++nestedStarts;
            chain.CalibrateAndDisplay();
        }
    };
    chain.CalibrateAndDisplay();
    std::vector<std::string> expected = kRefreshOrder;
    expected.insert(expected.end(), kRefreshOrder.begin(), kRefreshOrder.end());
    EXPECT_EQ(display.calls, expected);
}

TEST_F(CalibrateAndDisplayChain, ProcessWithoutWindowsStillFits) {
    NoDisplay none;
    RecalcChain bare(*model, none);
    cAztrue plain(bare);
    PlantSentinels(*model);
    plain.SetTemperature(5.0);
    EXPECT_EQ(model->ErrorNorth, 0.0);
    EXPECT_EQ(model->MaxErrAll, 0.0);
}

// Members whose writes run the whole chain.
using MembersThatRecalculate = ServerTest;

TEST_F(MembersThatRecalculate, EachRunsTheChainOnce) {
    using Call = std::function<void(cAztrue&)>;
    // clang-format off
    const std::vector<std::pair<std::string, Call>> members = {
        {"EnableRefraction", [](cAztrue& a) { a.SetEnableRefraction(false); }},
        {"Temperature", [](cAztrue& a) { a.SetTemperature(20.0); }},
        {"Pressure", [](cAztrue& a) { a.SetPressure(1000.0); }},
        {"Latitude", [](cAztrue& a) { a.SetLatitude(40.0); }},
        {"ThetaCountsPerRev", [](cAztrue& a) { a.SetThetaCountsPerRev(6.283185308); }},
        {"PhiCountsPerRev", [](cAztrue& a) { a.SetPhiCountsPerRev(6.283185308); }},
        {"PhiPosCW", [](cAztrue& a) { a.SetPhiPosCW(true); }},
        {"ThetaPosUp", [](cAztrue& a) { a.SetThetaPosUp(true); }},
        {"MountType 0", [](cAztrue& a) { a.SetMountType(0); }},
        {"MountType 3 (changes no flag)", [](cAztrue& a) { a.SetMountType(3); }},
        {"UseCalPoint", [](cAztrue& a) { a.SetUseCalPoint(1, true); }},
        {"UseCalPoint bad", [](cAztrue& a) { a.SetUseCalPoint(99, true); }},
        {"AddCalPoint", [](cAztrue& a) { a.AddCalPoint(0, 0, 0, 0, 0, 2451545, "", ""); }},
        {"RemoveCalPoint", [](cAztrue& a) { a.RemoveCalPoint(1); }},
        {"RemoveCalPoint 0", [](cAztrue& a) { a.RemoveCalPoint(0); }},
        {"ShowAztrue", [](cAztrue& a) { a.ShowAztrue(); }},
        {"EnableTermsForAltAz", [](cAztrue& a) { a.EnableTermsForAltAz(); }},
        {"EnableTermsForEquatorial", [](cAztrue& a) { a.EnableTermsForEquatorial(); }},
        {"EnableAllTerms", [](cAztrue& a) { a.EnableAllTerms(); }},
        {"DisableAllTerms", [](cAztrue& a) { a.DisableAllTerms(); }}};
    // clang-format on
    for (const auto& [name, call] : members) {
        PlantSentinels(*model);
        int before = Recalculations();
        call(*server);
        EXPECT_EQ(Recalculations(), before + 1) << name;
        EXPECT_NE(model->ErrorNorth, kSentinel) << name << " did not fit";
        EXPECT_NE(model->MaxErrAll, kSentinel) << name << " computed no residuals";
    }
}

// Reads of fit results fit again, without redrawing anything.
using ReadsThatFit = ServerTest;

TEST_F(ReadsThatFit, EveryReadOfAFitResultFits) {
    // Reading ErrorNorth five times fits five times, and redraws nothing.
    display.calls.clear();
    for (int i = 0; i < 5; ++i) {
        model->ErrorNorth = kSentinel;
        EXPECT_EQ(server->ErrorNorth(), 0.0) << "read " << i + 1 << " answered without a fit";
    }
    model->ErrorWest = kSentinel;
    EXPECT_EQ(server->ErrorWest(), 0.0);
    model->ThetaEncOffset = kSentinel;
    EXPECT_EQ(server->ThetaEncOffset(), 0.0);
    model->PhiEncOffset = kSentinel;
    EXPECT_EQ(server->PhiEncOffset(), 0.0);
    EXPECT_TRUE(display.calls.empty());
    // A solve over six points has a non-zero inverse.
    AddSixStars(*server);
    const double fitted = model->Sensitivity;
    ASSERT_GT(fitted, 0.0);
    model->Sensitivity = -1.0;
    EXPECT_EQ(server->Sensitivity(), fitted);
}

// The fit behind a read follows points changed since the last one: the
// client's encoders all read 0.01 count more on the Phi axis than a perfect
// mount, so the fitted Phi offset is that shift, recovered to the accuracy
// of the solve, far below the 0.01 steps.
TEST_F(ReadsThatFit, ReadFollowsChangedPoints) {
    AddSixStars(*server, 0.01);
    for (int step = 1; step <= 5; ++step) {
        EXPECT_NEAR(server->PhiEncOffset(), 0.01 * step, 1e-8) << "after shift " << step;
        for (int i = 1; i <= model->NumCalPoints; ++i) model->CalPoints[i].PhiEnc += 0.01;
    }
}

TEST_F(ReadsThatFit, ErrorQueriesFitAndMeasure) {
    display.calls.clear();
    double e[5] = {-1, -1, -1, -1, -1};
    PlantSentinels(*model);
    server->GetErrors(e[0], e[1], e[2], e[3]);
    EXPECT_EQ(model->ErrorNorth, 0.0);
    EXPECT_EQ(e[2], 0.0);  // no points: every figure 0
    PlantSentinels(*model);
    server->GetCalPointErrors(1, e[0], e[1], e[2], e[3],
                              e[4]);  // bad index: the fit runs all the same
    EXPECT_EQ(model->ErrorNorth, 0.0);
    EXPECT_EQ(model->MaxErrAll, 0.0);
    EXPECT_TRUE(display.calls.empty());
}

// Members that change no fit and redraw nothing.
using MembersThatDoNotFit = ServerTest;

TEST_F(MembersThatDoNotFit, ClockSiteAndConversionsLeaveTheFit) {
    display.calls.clear();
    PlantSentinels(*model);
    server->SetLongitude(12.0);
    server->SetTimeZone(1.0);
    server->SetDST(true);
    server->SetYear(2001);
    server->SetMonth(2);
    server->SetDay(3);
    server->SetHour(4);
    server->SetMinute(5);
    server->SetSecond(6.5);
    server->SetPath("/tmp");
    double t = 0, p = 0, ra = 0, dec = 0;
    server->CelestialToEncoder(1.0, 2451545.0, 0.5, 0.5, 1, t, p);
    server->EncoderToCelestial(1.0, 2451545.0, t, p, ra, dec);
    server->GetTrackingRates(1.0, 2451545.0, 0.5, 0.5, 1, t, p);
    server->GetFieldAngleRate(1.0, 2451545.0, 0.5, 0.5, 1);
    std::string ts, ds;
    bool used = false;
    server->GetCalPoint(1, t, p, ra, dec, ra, dec, ts, ds, used);
    (void)server->UseCalPoint(1);
    (void)server->NumCalPoints();
    (void)server->MountType();
    EXPECT_TRUE(display.calls.empty());
    EXPECT_EQ(model->ErrorNorth, kSentinel);
    EXPECT_EQ(model->PhiEncOffset, kSentinel);
    EXPECT_EQ(model->MaxErrAll, kSentinel);
}

}  // namespace
