// Where to measure next. Of the candidate directions that the alignment
// planner keeps (Points.txt, above the skyline, outside the mount's bad
// zones), the ones where one more star would most sharpen the active terms
// of the last fit, chosen one at a time and returned in the order to walk.
// Reads the model, changes nothing in it.
#pragma once

#include <array>
#include <vector>

#include "model/AutoAlignRecords.h"
#include "model/Constants.h"

struct ModelState;
struct FitStatistics;

// The largest Count a request may ask for: the candidate table's room.
inline constexpr int kMaxSuggestedPoints = kAutoAlignTableSize - 1;

// The design rows of one star: element [c][i] is component c (1 to 3, mount
// frame x, y, z) of the basis of the active term at place i (1 to k) of the
// fit's term list, the change of the unit pointing vector per radian of the
// coefficient (unitless). A star measured there adds A^T A to the normal
// matrix, which is unitless too.
using DesignRows = std::array<std::array<double, kNumTerms + 1>, 4>;

struct SuggestedPoint {
    // Phi azimuth from north through east, Theta zenith distance, radians;
    // Index the place in the walk, 1 for the first.
    AutoAlignPoint Point;
    // det(normal matrix with this star) / det(normal matrix before it), at
    // the moment of its choice: 1 or more, unitless.
    double Gain = 1;
    int Pick = 0;  // 1 for the first chosen
};

struct NextPoints {
    bool Read = false;                   // Points.txt could be read
    int NumFitted = 0;                   // active terms of the fit
    int NumUsed = 0;                     // its used points
    std::vector<SuggestedPoint> Points;  // in walking order
};

// The design rows of a star seen in candidate direction p, for the terms of
// f. The axis angles are those of the direction in the mount frame; on a
// German mount a star east of the meridian is taken on the other side of the
// pier (Theta negative), as the program's own synthetic runs do.
void CandidateRows(const ModelState& s, const FitStatistics& f, const AutoAlignPoint& p,
                   DesignRows& A);

// Takes a model after Calibrate and ComputeResiduals; gives at most Count
// of the planner's candidates (none when the fit has no active term), each
// the one that multiplies the determinant of the normal matrix of the
// active terms the most once the earlier choices are in, then sorted into
// the walk of AutoAlignOrder.
NextPoints SuggestNextPoints(const ModelState& s, int Count);
