#include "autoalign/AlignPoints.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "autoalign/CombSort.h"
#include "files/TestLogList.h"
#include "model/Constants.h"
#include "model/Frames.h"
#include "model/ModelState.h"
#include "sky/NumberText.h"

namespace {

// The number of valid entries, kept inside the table.
int Count(const ModelState& s) {
    return std::clamp(s.NumAutoAlign, 0, kAutoAlignTableSize);
}

double Distance(const AutoAlignPoint& a, const AutoAlignPoint& b) {
    const double dx = b.X - a.X;
    const double dy = b.Y - a.Y;
    const double dz = b.Z - a.Z;
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

// Moves the entries with Selected true down without gaps, in their order,
// and returns their number.
int CompactSelected(ModelState& s) {
    int kept = 0;
    for (int i = 0; i < Count(s); ++i) {
        if (s.AutoAlignPoints[i].Selected) s.AutoAlignPoints[kept++] = s.AutoAlignPoints[i];
    }
    return kept;
}

// The first point: the candidate nearest (squared straight-line distance)
// to a seed high in the south-west, or the north-west in the southern
// hemisphere; the lower index wins a tie. Gives its index, -1 for none.
int NearestToSeed(const ModelState& s, double& BestSquared) {
    Vec3 seed{s.Latitude >= 0 ? -0.4 : 0.4, -0.4, 0.8};
    NormalizeVec(seed);
    BestSquared = 1E+30;
    int best = -1;
    for (int i = 0; i < Count(s); ++i) {
        const AutoAlignPoint& p = s.AutoAlignPoints[i];
        const double dx = p.X - seed.x;
        const double dy = p.Y - seed.y;
        const double dz = p.Z - seed.z;
        const double d = dx * dx + dy * dy + dz * dz;
        if (d < BestSquared) {
            BestSquared = d;
            best = i;
        }
    }
    return best;
}

// The unselected candidate farthest (by PointDistance) from its nearest
// selected one; the lower index wins a tie. -1 when none is farther than 0.
int Farthest(const ModelState& s) {
    double best = 0;
    int pick = -1;
    for (int i = 0; i < Count(s); ++i) {
        if (s.AutoAlignPoints[i].Selected) continue;
        double nearest = 1E+30;
        for (int j = 0; j < Count(s); ++j) {
            if (!s.AutoAlignPoints[j].Selected) continue;
            const double d = PointDistance(s, i, j);
            if (d < nearest) nearest = d;
        }
        if (nearest > best) {
            best = nearest;
            pick = i;
        }
    }
    return pick;
}

}  // namespace

Vec3 CelestialPole(const ModelState& s) {
    double a = kHalfTurn / 2 - (kHalfTurn / 180) * std::fabs(s.Latitude);
    if (s.Latitude < 0) a = -a;
    Vec3 pole{0, 0, 1};
    RotateXZ(pole, a);
    return pole;
}

void FilterAutoAlignPoints(ModelState& s) {
    const Vec3 pole = CelestialPole(s);
    AddTestLogLine(s, NumberText(pole.x) + "  " + NumberText(pole.y) + "  " + NumberText(pole.z));
    const AutoAlignPoint poleEntry{pole.x, pole.y, pole.z};
    for (int i = 0; i < Count(s); ++i) {
        AutoAlignPoint& p = s.AutoAlignPoints[i];
        // The skyline at the candidate's azimuth, between whole degrees.
        const double Az = p.Phi * 180 / kHalfTurn;
        const int A = static_cast<int>(Az);
        int B = A + 1;
        if (B > 359) B = 0;
        const double H = s.Horizon.El[A] + (s.Horizon.El[B] - s.Horizon.El[A]) * (Az - A);
        const double E = 90 - p.Theta * 180 / kHalfTurn;
        p.Selected = H + 1 < E;
        if (!s.IsAltAz && Distance(p, poleEntry) < 0.15) p.Selected = false;
        if (s.IsAltAz && p.Theta < 0.15) p.Selected = false;
        if (!s.IsAltAz && s.IsGEM && std::fabs(p.Y) < 0.05) p.Selected = false;
    }
    s.NumAutoAlign = CompactSelected(s);
}

double PointDistance(const ModelState& s, int I, int J) {
    const AutoAlignPoint& a = s.AutoAlignPoints[I];
    const AutoAlignPoint& b = s.AutoAlignPoints[J];
    const double D = Distance(a, b);
    if (!s.IsAltAz) return D;
    const double dT = std::fabs(b.Theta - a.Theta);
    double dP = std::fabs(b.Phi - a.Phi);
    if (dP > kHalfTurn) dP = kFullTurn - dP;
    return D + 0.5 * dT + 0.2 * dP;
}

void OrderAutoAlignPoints(ModelState& s) {
    const int n = Count(s);
    auto& pts = s.AutoAlignPoints;
    // The southern orders sort by the azimuth turned half round, so that
    // the walk starts at south.
    const bool fromSouth = s.AutoAlignOrder == kOrderSE || s.AutoAlignOrder == kOrderSW;
    if (fromSouth) {
        for (int i = 0; i < n; ++i) {
            pts[i].Phi = pts[i].Phi + kHalfTurn;
            if (pts[i].Phi >= kFullTurn) pts[i].Phi = pts[i].Phi - kFullTurn;
        }
    }
    CombSort(
        n / 2, n - 1, [&](int j, int i) { return pts[j].Phi > pts[i].Phi; },
        [&](int j, int i) { std::swap(pts[j], pts[i]); });
    if (fromSouth) {
        for (int i = 0; i < n; ++i) {
            pts[i].Phi = pts[i].Phi - kHalfTurn;
            if (pts[i].Phi < 0) pts[i].Phi = pts[i].Phi + kFullTurn;
        }
    }
    if (s.AutoAlignOrder == kOrderNW || s.AutoAlignOrder == kOrderSE) {
        std::reverse(pts.begin(), pts.begin() + n);
    }
    for (int i = 0; i < n; ++i) pts[i].Index = static_cast<int16_t>(i + 1);
}

bool MakeAutoAlignPoints(ModelState& s, LoadFailure* Failure) {
    const bool read = ReadAutoAlignPoints(s, Failure);
    AddTestLogLine(s, "AutoAlign Points read = " + IntText(s.NumAutoAlign));
    FilterAutoAlignPoints(s);
    AddTestLogLine(s, "NumAutoAlign = " + IntText(s.NumAutoAlign));
    for (AutoAlignPoint& p : s.AutoAlignPoints) p.Selected = false;

    double bestSquared = 0;
    const int first = NearestToSeed(s, bestSquared);
    if (first >= 0) {
        s.AutoAlignPoints[first].Selected = true;
        // The straight-line distance, not its square that the choice compares.
        AddTestLogLine(s, "First Point, Index = " + IntText(first) +
                              "  Dist = " + RoundedText(std::sqrt(bestSquared), 5));
    }
    // Once no candidate is left to pick, the further passes change nothing.
    for (int k = 2; k <= s.AutoAlignTarget; ++k) {
        const int pick = Farthest(s);
        if (pick < 0) break;
        s.AutoAlignPoints[pick].Selected = true;
    }

    s.NumAutoAlign = CompactSelected(s);
    for (int i = 0; i < Count(s); ++i) s.AutoAlignPoints[i].Index = static_cast<int16_t>(i + 1);
    if (s.AutoAlignOrder < kOrderRnd) OrderAutoAlignPoints(s);
    for (int i = 0; i < Count(s); ++i) AddTestLogLine(s, IntText(s.AutoAlignPoints[i].Index));
    return read;
}
