// The "Model quality" section of the fit report (aztrue fit --stats): each
// active term with its standard error and significance, the population
// standard deviation, the cross-validated error and its outlier candidates,
// and the strongly correlated pairs of terms. Angles in arcseconds.
#pragma once

#include <ostream>

struct ModelState;
struct FitStatistics;
struct CrossValidation;

void WriteModelQuality(const ModelState& s, const FitStatistics& f, const CrossValidation& cv,
                       std::ostream& out);

// The member "modelQuality" of the JSON report, followed by a comma and a
// line end.
void WriteModelQualityJson(const ModelState& s, const FitStatistics& f, const CrossValidation& cv,
                           std::ostream& out);
