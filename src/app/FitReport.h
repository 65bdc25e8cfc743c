// The report of a fit, for people (text) and for scripts (JSON).
#pragma once

#include <ostream>
#include <string>

struct ModelState;
struct ScaleSearchReport;

// Writes the site and mount settings, the point counts, the error figures,
// the sensitivity, the axis misalignment in words, the encoder offsets, every
// active term, the enabled terms the fit left out and why, warnings of an
// ill-conditioned fit, and a table of the points. Angles are in arcseconds.
// With withStats also the model quality, whose cross-validation refits the
// model once per used point; with Search, what a scale factor search found
// before the fit.
void WriteFitReport(const ModelState& s, const std::string& fileName, std::ostream& out,
                    bool withStats = false, const ScaleSearchReport* Search = nullptr);

// The same content as one JSON object.
void WriteFitReportJson(const ModelState& s, const std::string& fileName, std::ostream& out,
                        bool withStats = false, const ScaleSearchReport* Search = nullptr);

// The name of the first setting or figure of the report that is not a
// finite number (an infinity or NaN that the fit gave, for instance from
// zero counts per turn), or an empty text when all of them are finite.
std::string FirstNonFiniteFigure(const ModelState& s);
