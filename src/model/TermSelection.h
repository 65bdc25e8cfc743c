// Which enabled terms the last fit left out, and why: too few used points
// for them (a fit lets in two term numbers per used point), or the
// sensitivity ladder, which drops the highest terms while the inverse normal
// matrix is more sensitive than MaxSensitivity.
#pragma once

#include <cstdint>
#include <vector>

struct ModelState;

struct TermSelection {
    int16_t AllowedMaxTerm = 0;         // highest term number the used points allow
    std::vector<int16_t> TooFewPoints;  // enabled, above that number
    std::vector<int16_t> Dropped;       // allowed, left out by the ladder
    // Of the term sets that the ladder refused (each with a Sensitivity
    // above MaxSensitivity), the one of least Sensitivity: its highest term
    // number and its Sensitivity, the MaxSensitivity that would have kept
    // it. 0 when none was refused. (The Sensitivity of a set need not grow
    // with its size, so this is not always the set just above the kept one.)
    int16_t RefusedMaxTerm = 0;
    double RefusedSensitivity = 0;
};

// Takes a model after Calibrate; leaves it as it is. Terms 1 to 4 count as
// enabled always, the others by their flags.
TermSelection ExplainTermSelection(const ModelState& s);
