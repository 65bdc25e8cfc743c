// What the fit report says of a scale factor search run before the fit:
// the factors found, the steps tried and kept, the RMS before and after.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>

#include "model/ScaleSearch.h"

struct ModelState;

struct ScaleSearchReport {
    uint32_t Seed = SearchRandom::kDefaultSeed;
    ScaleSearchResult Result;
    std::string SavedTo;  // the file written with the new factors, or empty
};

// The section "Scale factor search": each factor with 7 decimals and its
// deviation from 1 in per cent with 5, the same precision; the RMS of the
// selected points in arcseconds with 3 decimals, as the window shows it.
void WriteScaleSearch(const ModelState& s, const ScaleSearchReport& r, std::ostream& out);

// The member "scaleSearch" of the JSON report, the factors rounded as above,
// followed by a comma and a line end.
void WriteScaleSearchJson(const ModelState& s, const ScaleSearchReport& r, std::ostream& out);
