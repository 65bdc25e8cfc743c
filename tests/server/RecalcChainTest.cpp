// The recalculation every change ends in, its guard, and who runs or fits.
#include "ServerTestSupport.h"

namespace {

constexpr double kSentinel = 0.125;  // a fit result no fit of no points gives
void PlantSentinels(ModelState& s) {
    s.ErrorNorth = s.ErrorWest = s.ThetaEncOffset = s.PhiEncOffset = s.MaxErrAll = kSentinel;
}
bool Fitted(const ModelState& s) { return s.ErrorNorth != kSentinel && s.MaxErrAll != kSentinel; }

// The chain fits, then refreshes the windows in a fixed order, the first one
// already seeing the new fit. Check box events of the first three windows
// must not fit again (the chain is closed); the last two run with it open,
// so a click served among the pending events recalculates in full. Closed,
// a write only stores its value.
TEST_F(ServerTest, ChainFitsThenRefreshesAndOnlyPendingEventsReenter) {
    PlantSentinels(*model);
    display.calls.clear();
    display.onCall = [&](const std::string& name) {
        display.calls.back() += chain.DisplayEnabled() ? " open" : "";
        EXPECT_TRUE(name != "DisplayCalPoints" || Fitted(*model));
        if (name == "DisplayCalPoints" || display.calls.size() == 5) chain.CalibrateAndDisplay();
    };
    chain.CalibrateAndDisplay();
    Calls wanted;
    for (int run = 0; run < 2; ++run)
        wanted.insert(wanted.end(), {"DisplayCalPoints", "UpdateGraph", "MakeGraph",
                                     "DisplayData open", "ProcessPendingEvents open"});
    EXPECT_EQ(display.calls, wanted);
    display.onCall = nullptr, display.calls.clear(), PlantSentinels(*model);
    chain.SetDisplayEnabled(false), server->SetLatitude(40.0);
    EXPECT_TRUE(model->Latitude == 40.0 && display.calls.empty() && !Fitted(*model));
}

double out[5];  // what members give back through their arguments
// A member's call with its text: a read gives its value, the others 0.
#define READ(call) #call, [](cAztrue& a) { return double(a.call); }
#define DO(call) #call, [](cAztrue& a) { return a.call, 0.0; }

// Which members run the whole chain, and which fit without redrawing: 2 fit
// and measure the residuals, 1 fit only (reads of a result: every one of no
// points is 0), 0 leave the fit alone.
TEST_F(ServerTest, MembersThatRecalculateFitOrLeaveTheFit) {
    const struct { const char* name; double (*call)(cAztrue&); int recalculations, fits; }
    members[] = {
        {DO(SetEnableRefraction(false)), 1, 2}, {DO(SetTemperature(20)), 1, 2},
        {DO(SetPressure(1000)), 1, 2}, {DO(SetLatitude(40)), 1, 2},
        {DO(SetThetaCountsPerRev(8192)), 1, 2}, {DO(SetPhiCountsPerRev(8192)), 1, 2},
        {DO(SetPhiPosCW(true)), 1, 2}, {DO(SetThetaPosUp(true)), 1, 2}, {DO(SetMountType(3)), 1, 2},
        {DO(SetUseCalPoint(1, true)), 1, 2}, {DO(SetUseCalPoint(99, true)), 1, 2},
        {DO(AddCalPoint(0, 0, 0, 0, 0, 2451545, "", "")), 1, 2}, {DO(RemoveCalPoint(1)), 1, 2},
        {DO(RemoveCalPoint(0)), 1, 2}, {DO(ShowAztrue()), 1, 2}, {DO(EnableAllTerms()), 1, 2},
        {DO(EnableTermsForAltAz()), 1, 2}, {DO(EnableTermsForEquatorial()), 1, 2},
        {DO(DisableAllTerms()), 1, 2}, {READ(ErrorNorth()), 0, 1}, {READ(ErrorWest()), 0, 1},
        {READ(ThetaEncOffset()), 0, 1}, {READ(PhiEncOffset()), 0, 1},
        {DO(GetErrors(out[0], out[1], out[2], out[3])), 0, 2},
        {DO(GetCalPointErrors(1, out[0], out[1], out[2], out[3], out[4])), 0, 2},
        {DO(SetLongitude(12)), 0, 0}, {DO(SetTimeZone(1)), 0, 0}, {DO(SetYear(2001)), 0, 0},
        {DO(SetPath("")), 0, 0}, {DO(GetFieldAngleRate(1, 2451545, 0.5, 0.5, 1)), 0, 0},
        {DO(GetTrackingRates(1, 2451545, 0.5, 0.5, 1, out[0], out[1])), 0, 0},
        {DO(CelestialToEncoder(1, 2451545, 0.5, 0.5, 1, out[0], out[1])), 0, 0},
        {DO(EncoderToCelestial(1, 2451545, 0.5, 0.5, out[0], out[1])), 0, 0}};
    for (const auto& m : members) {
        PlantSentinels(*model);
        const int before = Recalculations();
        EXPECT_EQ(m.call(*server), 0.0) << m.name << " read no fresh fit";
        EXPECT_EQ(Recalculations() - before, m.recalculations) << m.name;
        EXPECT_EQ((model->ErrorNorth != kSentinel) + (model->MaxErrAll != kSentinel), m.fits)
            << m.name;
    }
}

}  // namespace
