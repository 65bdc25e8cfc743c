#include "model/ReferenceFit.h"

#include <cmath>
#include <memory>

#include "model/Frames.h"
#include "model/ModelState.h"
#include "model/SkyChain.h"
#include "model/Solver.h"
#include "model/Terms.h"

namespace {

struct Work {
    Matrix A{};
    MatrixVector R{};
    TermTable B{};
    int TermList[47] = {};
};

// One solve: the sky chain of every used point again, the whole matrix
// summed element by element, no mirroring.
void PlainSolve(ModelState& s, Work& w) {
    int used = 0;
    for (int p = 1; p <= s.NumCalPoints; ++p) used += s.CalPoints[p].Used;
    if (used == 0 || s.NumCalPoints == 0) return;
    for (int i = 1; i <= s.NumTerms; ++i) s.TermCoef[i] = 0;
    for (int i = 1; i <= 46; ++i) {
        w.R[i] = 0;
        for (int j = 1; j <= 46; ++j) w.A[i][j] = 0;
    }
    int n = 0;
    for (int t = 1; t <= s.NumTerms; ++t)
        if (s.TermActive[t]) w.TermList[++n] = t;
    if (n == 0) return;
    for (int p = 1; p <= s.NumCalPoints; ++p) {
        const CalPoint& pt = s.CalPoints[p];
        if (!pt.Used) continue;
        const Vec3 T = HorizonToMount(s, CelestialToHorizon(s, pt.RA, pt.Dec, pt.LST, pt.JD));
        double Theta = 0, Phi = 0;
        EncodersToAngles(s, pt.ThetaEnc, pt.PhiEnc, Theta, Phi);
        const Vec3 P = AnglesToVec(Theta, Phi);
        TermBasis(Theta, Phi, w.B);
        const double Tc[4] = {0, T.x, T.y, T.z};
        const double Pc[4] = {0, P.x, P.y, P.z};
        for (int c = 1; c <= 3; ++c) {
            for (int i = 1; i <= n; ++i) {
                w.R[i] = w.R[i] + (Tc[c] - Pc[c]) * w.B[w.TermList[i]][c];
                for (int j = 1; j <= n; ++j)
                    w.A[i][j] = w.A[i][j] + w.B[w.TermList[i]][c] * w.B[w.TermList[j]][c];
            }
        }
    }
    s.Math.MatrixInverse(w.A, w.R, n);
    double largest = 0;
    for (int i = 1; i <= n; ++i)
        for (int j = 1; j <= n; ++j)
            if (std::fabs(w.A[i][j]) > largest) largest = std::fabs(w.A[i][j]);
    s.Sensitivity = largest;
    for (int i = 1; i <= n; ++i) s.TermCoef[w.TermList[i]] = w.R[i];
}

}  // namespace

void ReferenceCalibrate(ModelState& s) {
    auto w = std::make_unique<Work>();
    s.ErrorNorth = s.ErrorWest = s.ThetaEncOffset = s.PhiEncOffset = 0;
    int N = 0;
    for (int p = 1; p <= s.NumCalPoints; ++p) N += s.CalPoints[p].Used;
    int16_t MaxTerm = static_cast<int16_t>(2 * N);
    if (s.NumTerms < MaxTerm) MaxTerm = s.NumTerms;
    SelectActiveTerms(s, MaxTerm);
    while (MaxTerm > 0) {
        PlainSolve(s, *w);
        if (s.Sensitivity <= s.MaxSensitivity) break;
        if (MaxTerm == 2)
            MaxTerm = 0;
        else if (MaxTerm == 4)
            MaxTerm = 2;
        else if (MaxTerm == 5)
            MaxTerm = 4;
        else if (MaxTerm == 6)
            MaxTerm = 5;
        else
            MaxTerm = static_cast<int16_t>(MaxTerm - 2);
        SelectActiveTerms(s, MaxTerm);
    }
    if (N == 0)
        for (int i = 1; i <= 46; ++i) s.TermCoef[i] = 0;
    s.ErrorNorth = s.ErrorWest = s.ThetaEncOffset = s.PhiEncOffset = 0;
    int count = 0;
    while (true) {
        const double a = s.PhiEncOffset, b = s.ThetaEncOffset, c = s.ErrorNorth, d = s.ErrorWest;
        ++count;
        PlainSolve(s, *w);
        s.PhiEncOffset =
            s.PhiPosCW ? s.PhiEncOffset + s.TermCoef[1] : s.PhiEncOffset - s.TermCoef[1];
        s.ThetaEncOffset =
            s.ThetaPosUp ? s.ThetaEncOffset + s.TermCoef[2] : s.ThetaEncOffset - s.TermCoef[2];
        s.ErrorNorth = s.ErrorNorth + s.TermCoef[3];
        s.ErrorWest = s.ErrorWest + s.TermCoef[4];
        double D = s.Math.Max(std::fabs(s.PhiEncOffset - a), std::fabs(s.ThetaEncOffset - b));
        D = s.Math.Max(D, std::fabs(s.ErrorNorth - c));
        D = s.Math.Max(D, std::fabs(s.ErrorWest - d));
        if (D < 1e-6 || count >= 200) break;
    }
}
