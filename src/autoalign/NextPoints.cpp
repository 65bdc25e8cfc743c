#include "autoalign/NextPoints.h"

#include <memory>

#include "autoalign/AlignPoints.h"
#include "model/FitStatistics.h"
#include "model/Frames.h"
#include "model/ModelState.h"
#include "model/Terms.h"

namespace {

using Small = std::array<std::array<double, 4>, 4>;  // 3 by 3, 1-based
// k by 3, 1-based: column c of M^-1 A^T.
using Spread = std::array<std::array<double, 4>, kNumTerms + 1>;

double Det3(const Small& H) {
    return H[1][1] * (H[2][2] * H[3][3] - H[2][3] * H[3][2]) -
           H[1][2] * (H[2][1] * H[3][3] - H[2][3] * H[3][1]) +
           H[1][3] * (H[2][1] * H[3][2] - H[2][2] * H[3][1]);
}

// Inverse of a 3 by 3 matrix by its adjugate over its determinant D.
Small Inverse3(const Small& H, double D) {
    Small R{};
    for (int i = 1; i <= 3; ++i) {
        for (int j = 1; j <= 3; ++j) {
            // Cofactor of H(j, i): the cyclic neighbours carry the sign.
            const int a = j % 3 + 1, b = (j + 1) % 3 + 1;
            const int c = i % 3 + 1, d = (i + 1) % 3 + 1;
            R[i][j] = (H[a][c] * H[b][d] - H[a][d] * H[b][c]) / D;
        }
    }
    return R;
}

// For one star with design rows A (3 by k) and the inverse normal matrix
// Minv (k by k, symmetric): P = Minv A^T and H = I + A Minv A^T (3 by 3).
// By the matrix determinant lemma, det(M + A^T A) = det(M) det(H), so det(H)
// is the factor by which the star would multiply the determinant
// (Harville, Matrix Algebra From a Statistician's Perspective, 1997, ch. 18).
// A star's basis vectors lie across its pointing, so H keeps an eigenvalue
// of 1 along it: the star adds two observations, not three.
Small GainMatrix(const Matrix& Minv, const DesignRows& A, int k, Spread& P) {
    for (int i = 1; i <= k; ++i) {
        for (int c = 1; c <= 3; ++c) {
            double sum = 0;
            for (int j = 1; j <= k; ++j) sum += Minv[i][j] * A[c][j];
            P[i][c] = sum;
        }
    }
    Small H{};
    for (int c = 1; c <= 3; ++c) {
        for (int d = 1; d <= 3; ++d) {
            double sum = c == d ? 1 : 0;
            for (int i = 1; i <= k; ++i) sum += A[c][i] * P[i][d];
            H[c][d] = sum;
        }
    }
    return H;
}

// The inverse once the star is in, by the Woodbury identity:
// (M + A^T A)^-1 = Minv - P H^-1 P^T (Golub and Van Loan, Matrix
// Computations, 4th ed., 2013, sec. 2.1.4). k^2 work instead of a new
// inversion of k^3.
void AddToInverse(Matrix& Minv, const Spread& P, const Small& H, int k) {
    const Small Hinv = Inverse3(H, Det3(H));
    for (int i = 1; i <= k; ++i) {
        double q[4] = {0, 0, 0, 0};  // row i of P H^-1
        for (int d = 1; d <= 3; ++d)
            for (int c = 1; c <= 3; ++c) q[d] += P[i][c] * Hinv[c][d];
        for (int j = 1; j <= k; ++j) Minv[i][j] -= q[1] * P[j][1] + q[2] * P[j][2] + q[3] * P[j][3];
    }
}

}  // namespace

void CandidateRows(const ModelState& s, const FitStatistics& f, const AutoAlignPoint& p,
                   DesignRows& A) {
    // The candidates' frame has +Y east, the model's horizon frame +y west.
    const Vec3 h{p.X, -p.Y, p.Z};
    const int16_t Tsign = (!s.IsAltAz && s.IsGEM && h.y < 0) ? -1 : 1;
    double Theta = 0;
    double Phi = 0;
    VecToAngles(HorizonToMount(s, h), Tsign, Theta, Phi);
    TermTable B{};
    TermBasis(Theta, Phi, B);
    A = DesignRows{};
    for (int i = 1; i <= f.NumFitted; ++i)
        for (int c = 1; c <= 3; ++c) A[c][i] = B[f.TermList[i]][c];
}

// A greedy, sequentially D-optimal choice (Fedorov, Theory of Optimal
// Experiments, 1972): each step takes the candidate of largest det(H) under
// the inverse that holds the earlier choices, the lower index on a tie. The
// normal matrix and its inverse are those of the last fit's used points.
NextPoints SuggestNextPoints(const ModelState& s, int Count) {
    NextPoints result;
    auto w = std::make_unique<ModelState>(s);
    w->TestLog = false;  // the planner's steps are not the operator's
    result.Read = ReadAutoAlignPoints(*w);
    if (!result.Read) return result;
    FilterAutoAlignPoints(*w);
    const FitStatistics f = ComputeFitStatistics(s);
    const int k = f.NumFitted;
    result.NumFitted = k;
    result.NumUsed = f.NumUsed;
    const int n = w->NumAutoAlign;
    if (k == 0 || Count <= 0) return result;

    std::vector<DesignRows> rows(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) {
        CandidateRows(s, f, w->AutoAlignPoints[i], rows[static_cast<size_t>(i)]);
        w->AutoAlignPoints[i].Selected = false;
    }
    Matrix Minv = f.Inverse;
    Spread P{};
    std::vector<SuggestedPoint> picks;
    for (int pick = 1; pick <= Count && pick <= n; ++pick) {
        int best = -1;
        double bestGain = 0;
        for (int i = 0; i < n; ++i) {
            if (w->AutoAlignPoints[i].Selected) continue;
            const double g = Det3(GainMatrix(Minv, rows[static_cast<size_t>(i)], k, P));
            if (g > bestGain) {
                bestGain = g;
                best = i;
            }
        }
        if (best < 0) break;  // no finite gain left
        w->AutoAlignPoints[best].Selected = true;
        picks.push_back({w->AutoAlignPoints[best], bestGain, pick});
        AddToInverse(Minv, P, GainMatrix(Minv, rows[static_cast<size_t>(best)], k, P), k);
    }

    // The planner's walk over the chosen ones, kept in their table order first.
    int kept = 0;
    for (int i = 0; i < n; ++i)
        if (w->AutoAlignPoints[i].Selected) w->AutoAlignPoints[kept++] = w->AutoAlignPoints[i];
    w->NumAutoAlign = kept;
    for (int i = 0; i < kept; ++i) w->AutoAlignPoints[i].Index = static_cast<int16_t>(i + 1);
    if (w->AutoAlignOrder < kOrderRnd) OrderAutoAlignPoints(*w);
    // Each point finds its pick by its direction; a pick matches once, so a
    // direction listed twice in the file comes out twice.
    std::vector<bool> matched(picks.size(), false);
    for (int i = 0; i < kept; ++i) {
        const AutoAlignPoint& p = w->AutoAlignPoints[i];
        for (size_t c = 0; c < picks.size(); ++c) {
            const AutoAlignPoint& q = picks[c].Point;
            if (matched[c] || q.X != p.X || q.Y != p.Y || q.Z != p.Z) continue;
            matched[c] = true;
            result.Points.push_back({p, picks[c].Gain, picks[c].Pick});
            break;
        }
    }
    return result;
}
