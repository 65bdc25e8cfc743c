#include "model/Solver.h"

#include <cmath>
#include <memory>

#include "model/FitWorkspace.h"
#include "model/Frames.h"
#include "model/ModelState.h"
#include "model/SkyChain.h"

// Term k of the flags governs term 5 (k 1), term 6 (k 2), and the pair
// 2k+1, 2k+2 for k >= 3. Terms 1 to 4 have no flag. Pairs enter together.
void SelectActiveTerms(ModelState& s, int16_t MaxTerm) {
    for (int i = 1; i <= s.NumTerms; ++i) s.TermActive[i] = false;
    for (int t = 1; t <= 4; ++t)
        if (MaxTerm >= t) s.TermActive[t] = true;
    if (MaxTerm >= 5 && s.TermEnable[1] != 0) s.TermActive[5] = true;
    if (MaxTerm >= 6 && s.TermEnable[2] != 0) s.TermActive[6] = true;
    for (int k = 3; k <= s.NumTermEnable; ++k) {
        if (MaxTerm >= 2 * k + 2 && s.TermEnable[k] != 0) {
            s.TermActive[2 * k + 1] = true;
            s.TermActive[2 * k + 2] = true;
        }
    }
}

void PrepareFitWorkspace(const ModelState& s, FitWorkspace& w) {
    w.NumUsed = 0;
    for (int p = 1; p <= s.NumCalPoints; ++p) {
        const CalPoint& pt = s.CalPoints[p];
        if (!pt.Used) continue;
        ++w.NumUsed;
        w.UsedIndex[w.NumUsed] = static_cast<int16_t>(p);
        w.Sky[w.NumUsed] = CelestialToHorizon(s, pt.RA, pt.Dec, pt.LST, pt.JD);
    }
}

// Linear least squares over the active terms: minimises, over the
// coefficients a, the sum over used points and the three components of
// (T - P - sum a B)^2, T being the star in the mount frame and P the
// nominal pointing of the encoders. Equal weights, no constant term.
// The normal matrix is filled on and above the diagonal and mirrored: each
// element is the same sum in the same order either way.
void SolveCoefficients(ModelState& s, FitWorkspace& w) {
    if (w.NumUsed == 0 || s.NumCalPoints == 0) return;

    for (int i = 1; i <= s.NumTerms; ++i) s.TermCoef[i] = 0;
    int n = 0;
    for (int t = 1; t <= s.NumTerms; ++t)
        if (s.TermActive[t]) w.TermList[++n] = static_cast<int16_t>(t);
    for (int i = 1; i <= n; ++i) {
        w.R[i] = 0;
        for (int j = 1; j <= n; ++j) w.A[i][j] = 0;
    }
    if (n == 0) return;

    // The basis of the active terms of one point, by component, packed.
    std::array<std::array<double, kNumTerms + 1>, 4> b{};
    for (int u = 1; u <= w.NumUsed; ++u) {
        const CalPoint& pt = s.CalPoints[w.UsedIndex[u]];
        const Vec3 T = HorizonToMount(s, w.Sky[u]);
        double Theta = 0;
        double Phi = 0;
        EncodersToAngles(s, pt.ThetaEnc, pt.PhiEnc, Theta, Phi);
        const Vec3 P = AnglesToVec(Theta, Phi);
        TermBasis(Theta, Phi, w.B);
        for (int c = 1; c <= 3; ++c)
            for (int i = 1; i <= n; ++i) b[c][i] = w.B[w.TermList[i]][c];
        const double d1 = T.x - P.x;
        const double d2 = T.y - P.y;
        const double d3 = T.z - P.z;
        for (int i = 1; i <= n; ++i) {
            double r = w.R[i];
            r = r + d1 * b[1][i];
            r = r + d2 * b[2][i];
            r = r + d3 * b[3][i];
            w.R[i] = r;
            const double b1 = b[1][i];
            const double b2 = b[2][i];
            const double b3 = b[3][i];
            double* row = w.A[i].data();
            for (int j = i; j <= n; ++j) {
                double a = row[j];
                a = a + b1 * b[1][j];
                a = a + b2 * b[2][j];
                a = a + b3 * b[3][j];
                row[j] = a;
            }
        }
    }
    for (int i = 2; i <= n; ++i)
        for (int j = 1; j < i; ++j) w.A[i][j] = w.A[j][i];

    // A singular system needs no branch: the inverter then works with a
    // huge reciprocal pivot, Sensitivity becomes huge and the ladder drops terms.
    s.Math.MatrixInverse(w.A, w.R, n);

    double largest = 0;
    for (int i = 1; i <= n; ++i)
        for (int j = 1; j <= n; ++j)
            if (std::fabs(w.A[i][j]) > largest) largest = std::fabs(w.A[i][j]);
    s.Sensitivity = largest;

    for (int i = 1; i <= n; ++i) s.TermCoef[w.TermList[i]] = w.R[i];
}

void SolveCoefficients(ModelState& s) {
    auto w = std::make_unique<FitWorkspace>();
    PrepareFitWorkspace(s, *w);
    SolveCoefficients(s, *w);
}

namespace {

// One rung down the ladder of term numbers: 46, 44, ... 8, 6, 5, 4, 2, 0.
int16_t NextRung(int16_t MaxTerm) {
    if (MaxTerm >= 8) return static_cast<int16_t>(MaxTerm - 2);
    switch (MaxTerm) {
        case 6: return 5;
        case 5: return 4;
        case 4: return 2;
        case 2: return 0;
        default: return static_cast<int16_t>(MaxTerm - 1);  // 7, 3 and 1 never occur
    }
}

void ZeroOffsetsAndRotations(ModelState& s) {
    s.ErrorNorth = 0;
    s.ErrorWest = 0;
    s.ThetaEncOffset = 0;
    s.PhiEncOffset = 0;
}

}  // namespace

// The whole fit, from scratch. Stage 1 lets in terms by number as the used
// points allow (two per point) and steps down the ladder while the inverse
// normal matrix is more sensitive than MaxSensitivity. Stage 2 moves the
// coefficients of terms 1 to 4 into the encoder offsets and the two axis
// rotations, which enter the model non-linearly, until the largest change is
// below 1e-6 or 200 passes have run.
void Calibrate(ModelState& s) {
    // The workspace is reused between fits: a fit runs at every parameter
    // change and every read of a result, and must not allocate.
    static thread_local std::unique_ptr<FitWorkspace> workspace;
    if (!workspace) workspace = std::make_unique<FitWorkspace>();
    FitWorkspace& w = *workspace;

    ZeroOffsetsAndRotations(s);
    PrepareFitWorkspace(s, w);
    const int16_t N = static_cast<int16_t>(w.NumUsed);
    int16_t MaxTerm = static_cast<int16_t>(2 * N);
    if (s.NumTerms < MaxTerm) MaxTerm = s.NumTerms;
    SelectActiveTerms(s, MaxTerm);
    while (MaxTerm > 0) {
        SolveCoefficients(s, w);
        if (s.Sensitivity <= s.MaxSensitivity) break;
        MaxTerm = NextRung(MaxTerm);
        SelectActiveTerms(s, MaxTerm);
    }

    // With no point in use the solve returns before clearing the
    // coefficients; clear them here so that an empty fit is the identity
    // model with zero offsets. Sensitivity keeps its last value.
    if (N == 0) {
        for (int i = 1; i <= s.NumTerms; ++i) s.TermCoef[i] = 0;
    }

    ZeroOffsetsAndRotations(s);
    int count = 0;
    double D = 0;
    do {
        const double oldPhi = s.PhiEncOffset;
        const double oldTheta = s.ThetaEncOffset;
        const double oldNorth = s.ErrorNorth;
        const double oldWest = s.ErrorWest;
        ++count;
        SolveCoefficients(s, w);
        if (s.PhiPosCW)
            s.PhiEncOffset = s.PhiEncOffset + s.TermCoef[1];
        else
            s.PhiEncOffset = s.PhiEncOffset - s.TermCoef[1];
        if (s.ThetaPosUp)
            s.ThetaEncOffset = s.ThetaEncOffset + s.TermCoef[2];
        else
            s.ThetaEncOffset = s.ThetaEncOffset - s.TermCoef[2];
        s.ErrorNorth = s.ErrorNorth + s.TermCoef[3];
        s.ErrorWest = s.ErrorWest + s.TermCoef[4];
        D = s.Math.Max(std::fabs(s.PhiEncOffset - oldPhi), std::fabs(s.ThetaEncOffset - oldTheta));
        D = s.Math.Max(D, std::fabs(s.ErrorNorth - oldNorth));
        D = s.Math.Max(D, std::fabs(s.ErrorWest - oldWest));
    } while (!(D < 1e-6) && count < 200);
}
