#include "model/TermSelection.h"

#include <memory>

#include "model/ModelState.h"
#include "model/Solver.h"

namespace {

// The ladder of the fit's first stage: 46, 44, ... 8, 6, 5, 4, 2, 0.
int16_t LowerRung(int16_t MaxTerm) {
    if (MaxTerm >= 8) return static_cast<int16_t>(MaxTerm - 2);
    if (MaxTerm == 6 || MaxTerm == 5) return static_cast<int16_t>(MaxTerm - 1);
    return static_cast<int16_t>(MaxTerm > 2 ? 2 : 0);
}

std::vector<int16_t> ActiveTerms(const ModelState& s) {
    std::vector<int16_t> terms;
    for (int t = 1; t <= s.NumTerms; ++t)
        if (s.TermActive[t]) terms.push_back(static_cast<int16_t>(t));
    return terms;
}

}  // namespace

// The term sets come from SelectActiveTerms itself. The refused
// Sensitivities come from walking the ladder again with the fit's own solve,
// at offsets and rotations 0 as in the fit's first stage, down to the rung
// it kept.
TermSelection ExplainTermSelection(const ModelState& s) {
    TermSelection sel;
    auto w = std::make_unique<ModelState>(s);
    int used = 0;
    for (int p = 1; p <= s.NumCalPoints; ++p) used += s.CalPoints[p].Used ? 1 : 0;
    sel.AllowedMaxTerm = static_cast<int16_t>(2 * used < s.NumTerms ? 2 * used : s.NumTerms);

    SelectActiveTerms(*w, s.NumTerms);
    const std::vector<int16_t> enabled = ActiveTerms(*w);
    SelectActiveTerms(*w, sel.AllowedMaxTerm);
    const std::vector<bool> allowedFlags(w->TermActive.begin(), w->TermActive.end());
    for (int16_t t : enabled) {
        if (!allowedFlags[t])
            sel.TooFewPoints.push_back(t);
        else if (!s.TermActive[t])
            sel.Dropped.push_back(t);
    }
    if (sel.Dropped.empty()) return sel;

    w->ErrorNorth = 0;
    w->ErrorWest = 0;
    w->ThetaEncOffset = 0;
    w->PhiEncOffset = 0;
    for (int16_t rung = sel.AllowedMaxTerm; rung > 0; rung = LowerRung(rung)) {
        SelectActiveTerms(*w, rung);
        if (ActiveTerms(*w) == ActiveTerms(s)) break;
        SolveCoefficients(*w);
        if (sel.RefusedMaxTerm == 0 || w->Sensitivity < sel.RefusedSensitivity) {
            sel.RefusedMaxTerm = rung;
            sel.RefusedSensitivity = w->Sensitivity;
        }
    }
    return sel;
}
