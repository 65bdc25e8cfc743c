// What the fit report says beside the figures: the enabled terms that the
// fit left out and why, and warnings when the fit is ill-conditioned.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "model/TermSelection.h"

struct ModelState;
struct FitStatistics;

struct FitNotes {
    TermSelection Selection;
    std::vector<std::string> Warnings;
};

// Takes a fitted model and the statistics of its fit.
FitNotes MakeFitNotes(const ModelState& s, const FitStatistics& f);

// The sections "Terms left out" and "Warnings", each only when not empty.
void WriteFitNotes(const ModelState& s, const FitNotes& n, std::ostream& out);

// The members "leftOutTerms" and "warnings" of the JSON report, each
// followed by a comma and a line end.
void WriteFitNotesJson(const ModelState& s, const FitNotes& n, std::ostream& out);
