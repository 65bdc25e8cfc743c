#include "model/FitStatistics.h"

#include <cmath>
#include <limits>
#include <memory>

#include "model/FitWorkspace.h"
#include "model/FittedOffsets.h"
#include "model/Frames.h"
#include "model/ModelState.h"
#include "model/Terms.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// The offsets and rotations of the fit's last solve. Stage 1 of Calibrate
// only chooses the active terms, solving with offsets and rotations at 0.
// Stage 2 solves again with them as they stand and then adds the solved
// coefficients of terms 1 to 4 to them, pass after pass; the model keeps the
// coefficients of its last solve and the offsets after the last addition.
// Taking that addition back gives the offsets of the last solve (to the
// rounding of one addition), and with them its normal equations, whose
// inverse has the fit's Sensitivity as its largest element. (When stage 2
// stopped after one pass, its solve is the one that ended stage 1, at
// offsets 0, which is again what this gives.)
void TakeBackLastAddition(ModelState& w) {
    if (w.PhiPosCW)
        w.PhiEncOffset = w.PhiEncOffset - w.TermCoef[1];
    else
        w.PhiEncOffset = w.PhiEncOffset + w.TermCoef[1];
    if (w.ThetaPosUp)
        w.ThetaEncOffset = w.ThetaEncOffset - w.TermCoef[2];
    else
        w.ThetaEncOffset = w.ThetaEncOffset + w.TermCoef[2];
    w.ErrorNorth = w.ErrorNorth - w.TermCoef[3];
    w.ErrorWest = w.ErrorWest - w.TermCoef[4];
}

}  // namespace

double PopulationStandardDeviation(double RMS, int N, int k) {
    if (N <= k) return kNaN;
    return RMS * std::sqrt(static_cast<double>(N) / (N - k));
}

// The normal equations are summed as the solver sums them, in the same
// order: for each used point in table order, T the star in the mount frame,
// P the nominal pointing of its encoders and B the model's term basis there,
// A(i, j) gains B(ti, c) B(tj, c) for the components c = 1, 2, 3. The
// residual of a point is T - P - sum of TermCoef(ti) B(ti), the very vector
// whose squares the fit minimised.
//
// Degrees of freedom: T and P are unit vectors and every basis vector is at
// right angles to P, so a residual lies in the plane across the pointing (to
// second order in the error): a point has two free components, not three.
// The N used points give 2N observations for k coefficients, and with noise
// of s on each sky axis SumSquares averages (2N - k) s^2. The coefficients
// then scatter with the covariance s^2 A^-1 (the basis lies in the same
// plane as the noise), so the standard error of term i is
// sqrt(SumSquares / (2N - k) x Inverse(i, i)). The population standard
// deviation is the figure other pointing tools quote, RMS x sqrt(N / (N - k)),
// with the RMS of the errors on the sky.
FitStatistics ComputeFitStatistics(const ModelState& s) {
    FitStatistics f;
    auto w = std::make_unique<ModelState>(s);
    TakeBackLastAddition(*w);
    int k = 0;
    for (int t = 1; t <= s.NumTerms; ++t)
        if (s.TermActive[t]) f.TermList[++k] = static_cast<int16_t>(t);
    f.NumFitted = k;

    TermTable B{};
    for (int p = 1; p <= s.NumCalPoints; ++p) {
        const CalPoint& pt = s.CalPoints[p];
        if (!pt.Used) continue;
        const Vec3 T = HorizonToMount(*w, PointSkyVector(s, p));
        double Theta = 0;
        double Phi = 0;
        EncodersToAngles(*w, pt.ThetaEnc, pt.PhiEnc, Theta, Phi);
        const Vec3 P = AnglesToVec(Theta, Phi);
        TermBasis(Theta, Phi, B);
        double r[4] = {0, T.x - P.x, T.y - P.y, T.z - P.z};
        for (int i = 1; i <= k; ++i) {
            const int ti = f.TermList[i];
            for (int c = 1; c <= 3; ++c) r[c] = r[c] - s.TermCoef[ti] * B[ti][c];
            for (int j = 1; j <= k; ++j) {
                const int tj = f.TermList[j];
                double a = f.Normal[i][j];
                a = a + B[ti][1] * B[tj][1];
                a = a + B[ti][2] * B[tj][2];
                a = a + B[ti][3] * B[tj][3];
                f.Normal[i][j] = a;
            }
        }
        f.Residuals.push_back(Vec3{r[1], r[2], r[3]});
        f.SumSquares = f.SumSquares + r[1] * r[1] + r[2] * r[2] + r[3] * r[3];
    }
    const int N = static_cast<int>(f.Residuals.size());
    f.NumUsed = N;
    f.Inverse = f.Normal;
    MatrixVector unused{};
    if (k > 0) s.Math.MatrixInverse(f.Inverse, unused, k);

    f.RMS = s.RMSErrSel;
    f.PopulationSD = PopulationStandardDeviation(f.RMS, N, k);
    const double variance = 2 * N > k ? f.SumSquares / (2 * N - k) : kNaN;
    f.AxisSigma = std::sqrt(variance);

    const OffsetTotals whole = FittedOffsets(s);
    const double low[5] = {0, whole.Phi, whole.Theta, whole.North, whole.West};
    for (int i = 1; i <= k; ++i) {
        TermStatistic ts;
        ts.Term = f.TermList[i];
        ts.Coef = ts.Term <= 4 ? low[ts.Term] : s.TermCoef[ts.Term];
        ts.Sigma = std::sqrt(variance * f.Inverse[i][i]);
        ts.Significance = ts.Coef / ts.Sigma;
        f.Terms.push_back(ts);
    }
    return f;
}

double TermCorrelation(const FitStatistics& f, int i, int j) {
    const double d = f.Inverse[i][i] * f.Inverse[j][j];
    if (!(d > 0)) return kNaN;
    return f.Inverse[i][j] / std::sqrt(d);
}

std::vector<CorrelatedPair> CorrelatedPairs(const FitStatistics& f, double Limit) {
    std::vector<CorrelatedPair> pairs;
    for (int i = 1; i <= f.NumFitted; ++i) {
        for (int j = i + 1; j <= f.NumFitted; ++j) {
            const double rho = TermCorrelation(f, i, j);
            if (std::fabs(rho) > Limit) pairs.push_back({f.TermList[i], f.TermList[j], rho});
        }
    }
    return pairs;
}
