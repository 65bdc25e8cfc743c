#include "app/FitNotes.h"

#include <sstream>

#include "app/ReportText.h"
#include "model/FitStatistics.h"
#include "model/ModelState.h"
#include "model/TermCaptions.h"
#include "sky/NumberText.h"

namespace {

// "[ 7]" in a column of terms, "[7]" in a sentence.
std::string TermTag(int t, size_t width = 2) {
    std::string tag = "[";
    tag += Padded(std::to_string(t), width);
    tag += "]";
    return tag;
}

std::string TooFewText(const TermSelection& sel) {
    return "Too few points: the used points allow terms up to " +
           std::to_string(sel.AllowedMaxTerm) + " (two per point)";
}

std::string LadderText(const ModelState& s, const TermSelection& sel) {
    return "Dropped by the sensitivity ladder: every larger term set had a Sensitivity above "
           "MaxSensitivity " +
           NumberText(s.MaxSensitivity) + "; the least, " + RoundedText(sel.RefusedSensitivity, 1) +
           ", with terms up to " + std::to_string(sel.RefusedMaxTerm);
}

// A warning on lines of at most 96 characters, broken at blanks, the
// following lines indented further.
void WriteWrapped(const std::string& text, std::ostream& out) {
    constexpr size_t kWidth = 96;
    std::istringstream words(text);
    std::string word;
    std::string line = "  ";
    bool bare = true;  // nothing but the indent yet
    while (words >> word) {
        if (!bare && line.size() + 1 + word.size() > kWidth) {
            out << line << "\n";
            line = "    ";
            bare = true;
        }
        if (!bare) line += ' ';
        line += word;
        bare = false;
    }
    out << line << "\n";
}

void WriteTermList(const std::vector<int16_t>& terms, std::ostream& out) {
    for (int t : terms) out << "    " << TermTag(t) << " " << TermCaptionText(t) << "\n";
}

}  // namespace

FitNotes MakeFitNotes(const ModelState& s, const FitStatistics& f) {
    FitNotes n;
    n.Selection = ExplainTermSelection(s);
    if (f.NumFitted > 0 && s.Sensitivity > kIllConditioned) {
        n.Warnings.push_back("the fit is ill-conditioned: its Sensitivity of " +
                             RoundedText(s.Sensitivity, 1) + " is above " +
                             NumberText(kIllConditioned) +
                             ", so small errors of the points move the terms a lot");
    }
    const std::vector<CorrelatedPair> pairs = CorrelatedPairs(f, kFightingTerms);
    if (!pairs.empty()) {
        std::string text = "terms correlated above " + NumberText(kFightingTerms) +
                           ", which the points barely separate:";
        for (size_t i = 0; i < pairs.size(); ++i) {
            text += i ? ", " : " ";
            text += TermTag(pairs[i].TermA, 1) + " and " + TermTag(pairs[i].TermB, 1) + " (" +
                    RoundedText(pairs[i].Rho, 3) + ")";
        }
        n.Warnings.push_back(text);
    }
    return n;
}

void WriteFitNotes(const ModelState& s, const FitNotes& n, std::ostream& out) {
    const TermSelection& sel = n.Selection;
    if (!sel.TooFewPoints.empty() || !sel.Dropped.empty()) {
        out << "Terms left out\n";
        if (!sel.TooFewPoints.empty()) {
            out << "  " << TooFewText(sel) << "\n";
            WriteTermList(sel.TooFewPoints, out);
        }
        if (!sel.Dropped.empty()) {
            out << "  " << LadderText(s, sel) << "\n";
            WriteTermList(sel.Dropped, out);
        }
        out << "\n";
    }
    if (!n.Warnings.empty()) {
        out << "Warnings\n";
        for (const std::string& w : n.Warnings) WriteWrapped(w, out);
        out << "\n";
    }
}

void WriteFitNotesJson(const ModelState& s, const FitNotes& n, std::ostream& out) {
    const TermSelection& sel = n.Selection;
    out << "  \"leftOutTerms\": [";
    bool first = true;
    auto item = [&](int t, const std::string& reason) {
        out << (first ? "\n" : ",\n") << "    {\"number\": " << t
            << ", \"caption\": " << JsonString(TermCaptionText(t))
            << ", \"reason\": " << JsonString(reason) << "}";
        first = false;
    };
    for (int t : sel.TooFewPoints) item(t, TooFewText(sel));
    for (int t : sel.Dropped) item(t, LadderText(s, sel));
    out << (first ? "],\n" : "\n  ],\n");
    out << "  \"warnings\": [";
    for (size_t i = 0; i < n.Warnings.size(); ++i)
        out << (i == 0 ? "\n    " : ",\n    ") << JsonString(n.Warnings[i]);
    out << (n.Warnings.empty() ? "],\n" : "\n  ],\n");
}
