// Which enabled terms a fit left out and why, checked against the fit
// itself: with MaxSensitivity raised to the least refused Sensitivity the
// ladder must keep that term set; just below it, what it kept before.
#include <gtest/gtest.h>

#include "ModelTestSupport.h"
#include "model/Solver.h"
#include "model/SyntheticCalibration.h"
#include "model/TermSelection.h"
#include "model/Terms.h"

namespace {

int HighestActive(const ModelState& s) {
    int t = 0;
    for (int i = 1; i <= s.NumTerms; ++i)
        if (s.TermActive[i]) t = i;
    return t;
}

TEST(TermSelection, NamesTooFewPointsAndTheRefusedSensitivity) {
    auto s = modeltest::FreshModel();
    SyntheticMount m;
    m.Num = 12;  // two term numbers per point: up to 24
    m.NoiseRMS = 3 * modeltest::kArcsec;
    AddSyntheticPoints(*s, MakeSyntheticPoints(*s, m));
    EnableAll(*s);
    Calibrate(*s);
    const TermSelection sel = ExplainTermSelection(*s);
    EXPECT_EQ(sel.AllowedMaxTerm, 24);
    ASSERT_EQ(sel.TooFewPoints.size(), 22u);  // 25 to 46
    EXPECT_EQ(sel.TooFewPoints.front(), 25);
    ASSERT_FALSE(sel.Dropped.empty());
    EXPECT_EQ(sel.Dropped.front(), HighestActive(*s) + 1);
    EXPECT_EQ(sel.Dropped.back(), 24);
    EXPECT_GT(sel.RefusedSensitivity, s->MaxSensitivity);
    for (double factor : {1.0, 1 - 1e-9}) {
        auto raised = std::make_unique<ModelState>(*s);
        raised->MaxSensitivity = sel.RefusedSensitivity * factor;
        Calibrate(*raised);
        const int want = factor == 1.0 ? sel.RefusedMaxTerm : HighestActive(*s);
        EXPECT_EQ(HighestActive(*raised), want) << "MaxSensitivity " << raised->MaxSensitivity;
    }
}

}  // namespace
