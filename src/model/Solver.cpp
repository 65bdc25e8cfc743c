#include "model/Solver.h"

#include <cmath>
#include <cstring>
#include <memory>

#include "files/TestLogList.h"
#include "model/FitWorkspace.h"
#include "model/Frames.h"
#include "model/ModelState.h"
#include "model/SkyChain.h"
#include "sky/mStrings.h"

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

namespace {

// The offsets and rotations of a pass of the fit, for the Test Log list:
// ThetaEncOffset and PhiEncOffset on one line, ErrorWest and ErrorNorth on
// the next, each as degrees, minutes and seconds.
void LogOffsets(const ModelState& s) {
    if (!s.TestLog) return;
    AddTestLogLine(s, "ThetaEncOffset = " + AngleToDMSStr(s.ThetaEncOffset, true, 2) +
                          "  PhiEncOffset = " + AngleToDMSStr(s.PhiEncOffset, true, 2));
    AddTestLogLine(s, "ErrorWest = " + AngleToDMSStr(s.ErrorWest, true, 2) +
                          "  ErrorNorth = " + AngleToDMSStr(s.ErrorNorth, true, 2));
}

SkyInputs InputsOf(const ModelState& s, const CalPoint& pt) {
    SkyInputs in;
    in.RA = pt.RA;
    in.Dec = pt.Dec;
    in.LST = pt.LST;
    in.JD = pt.JD;
    in.Latitude = s.Latitude;
    in.Temperature = s.Temperature;
    in.Pressure = s.Pressure;
    in.EnableRefraction = s.EnableRefraction;
    in.Model = &s;
    return in;
}

bool SameBits(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

bool SameInputs(const SkyInputs& a, const SkyInputs& b) {
    return a.Model == b.Model && SameBits(a.RA, b.RA) && SameBits(a.Dec, b.Dec) &&
           SameBits(a.LST, b.LST) && SameBits(a.JD, b.JD) && SameBits(a.Latitude, b.Latitude) &&
           SameBits(a.Temperature, b.Temperature) && SameBits(a.Pressure, b.Pressure) &&
           a.EnableRefraction == b.EnableRefraction;
}

// The workspace of this thread's fits, reused between fits: a fit runs at
// every parameter change and every read of a result, and allocates nothing.
FitWorkspace& ThreadWorkspace() {
    static thread_local std::unique_ptr<FitWorkspace> workspace;
    if (!workspace) workspace = std::make_unique<FitWorkspace>();
    return *workspace;
}

// Where point p stands in the used list of the workspace's last fit, or 0.
thread_local std::array<int16_t, kMaxCalPoints + 1> usedSlotOf{};

}  // namespace

void PrepareFitWorkspace(const ModelState& s, FitWorkspace& w) {
    w.NumUsed = 0;
    for (int p = 1; p <= s.NumCalPoints; ++p) {
        const CalPoint& pt = s.CalPoints[p];
        if (!pt.Used) continue;
        ++w.NumUsed;
        w.UsedIndex[w.NumUsed] = static_cast<int16_t>(p);
        w.Sky[w.NumUsed] = CelestialToHorizon(s, pt.RA, pt.Dec, pt.LST, pt.JD);
        w.SkyOf[w.NumUsed] = InputsOf(s, pt);
    }
}

Vec3 PointSkyVector(const ModelState& s, int p) {
    const CalPoint& pt = s.CalPoints[p];
    const FitWorkspace& w = ThreadWorkspace();
    const int u = usedSlotOf[p];
    if (u >= 1 && u <= w.NumUsed && w.UsedIndex[u] == p && SameInputs(w.SkyOf[u], InputsOf(s, pt)))
        return w.Sky[u];
    return CelestialToHorizon(s, pt.RA, pt.Dec, pt.LST, pt.JD);
}

namespace {

// Clears every coefficient and lists the active terms; gives their number.
int ListActiveTerms(ModelState& s, NormalSystem& sys) {
    for (int i = 1; i <= s.NumTerms; ++i) s.TermCoef[i] = 0;
    int n = 0;
    for (int t = 1; t <= s.NumTerms; ++t)
        if (s.TermActive[t]) sys.TermList[++n] = static_cast<int16_t>(t);
    sys.n = n;
    return n;
}

// Sums the normal equations of the listed terms over the used points, with
// the offsets and rotations as they stand: for each point in table order and
// each component c from 1 to 3, R(i) += (T(c) - P(c)) B(ti, c) and
// A(i, j) += B(ti, c) B(tj, c). Only the upper half is summed; the lower
// half is the same sums in the same order and is mirrored.
// Built twice, for plain x86-64 and for AVX2, the copy chosen at load time:
// wider vectors run the same additions and multiplications on the same
// elements, and contraction into fused multiply-add is off for both, so the
// sums are the same bits either way.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && !defined(AZTRUE_NO_VECTOR_CLONES)
__attribute__((target_clones("avx2", "default")))
#endif
void AccumulateNormalEquations(const ModelState& s, FitWorkspace& w, NormalSystem& sys) {
    const int n = sys.n;
    for (int i = 1; i <= n; ++i) {
        sys.R[i] = 0;
        for (int j = 1; j <= n; ++j) sys.A[i][j] = 0;
    }
    auto& b = w.Packed;
    for (int u = 1; u <= w.NumUsed; ++u) {
        const CalPoint& pt = s.CalPoints[w.UsedIndex[u]];
        const Vec3 T = HorizonToMount(s, w.Sky[u]);  // the star, mount frame
        double Theta = 0;
        double Phi = 0;
        EncodersToAngles(s, pt.ThetaEnc, pt.PhiEnc, Theta, Phi);
        const Vec3 P = AnglesToVec(Theta, Phi);  // the nominal pointing
        TermBasis(Theta, Phi, w.B);
        for (int i = 1; i <= n; ++i) {
            const int t = sys.TermList[i];
            b[1][i] = w.B[t][1];
            b[2][i] = w.B[t][2];
            b[3][i] = w.B[t][3];
        }
        const double d1 = T.x - P.x;
        const double d2 = T.y - P.y;
        const double d3 = T.z - P.z;
        for (int i = 1; i <= n; ++i) {
            const double b1 = b[1][i];
            const double b2 = b[2][i];
            const double b3 = b[3][i];
            double r = sys.R[i];
            r = r + d1 * b1;
            r = r + d2 * b2;
            r = r + d3 * b3;
            sys.R[i] = r;
            double* row = sys.A[i].data();
            const double* c1 = b[1].data();
            const double* c2 = b[2].data();
            const double* c3 = b[3].data();
            for (int j = i; j <= n; ++j) {
                double a = row[j];
                a = a + b1 * c1[j];
                a = a + b2 * c2[j];
                a = a + b3 * c3[j];
                row[j] = a;
            }
        }
    }
    for (int i = 2; i <= n; ++i)
        for (int j = 1; j < i; ++j) sys.A[i][j] = sys.A[j][i];
}

// Inverts the system in place (a singular one included: the inverter then
// works with a huge reciprocal pivot, Sensitivity becomes huge and the
// ladder drops terms), takes Sensitivity as the largest absolute element of
// the inverse and stores the solution as the coefficients.
void FinishSolve(ModelState& s, NormalSystem& sys) {
    const int n = sys.n;
    s.Math.MatrixInverse(sys.A, sys.R, n);
    double largest = 0;
    for (int i = 1; i <= n; ++i)
        for (int j = 1; j <= n; ++j)
            if (std::fabs(sys.A[i][j]) > largest) largest = std::fabs(sys.A[i][j]);
    s.Sensitivity = largest;
    for (int i = 1; i <= n; ++i) s.TermCoef[sys.TermList[i]] = sys.R[i];
}

// The equations of a subset of the terms of `full`, taken from its sums:
// each element is a sum over the same points in the same order.
void ExtractSubsystem(const NormalSystem& full, NormalSystem& sub) {
    std::array<int, kNumTerms + 1> at{};
    for (int i = 1; i <= full.n; ++i) at[full.TermList[i]] = i;
    for (int i = 1; i <= sub.n; ++i) {
        const int fi = at[sub.TermList[i]];
        sub.R[i] = full.R[fi];
        for (int j = 1; j <= sub.n; ++j) sub.A[i][j] = full.A[fi][at[sub.TermList[j]]];
    }
}

int16_t NextRung(int16_t MaxTerm) {
    if (MaxTerm >= 8) return static_cast<int16_t>(MaxTerm - 2);
    switch (MaxTerm) {
        case 6:
            return 5;
        case 5:
            return 4;
        case 4:
            return 2;
        case 2:
            return 0;
        default:
            return static_cast<int16_t>(MaxTerm - 1);  // 7, 3 and 1 never occur
    }
}

thread_local FitRunInfo lastRun;

void ZeroOffsetsAndRotations(ModelState& s) {
    s.ErrorNorth = 0;
    s.ErrorWest = 0;
    s.ThetaEncOffset = 0;
    s.PhiEncOffset = 0;
}

}  // namespace

// Linear least squares over the active terms: minimises, over the
// coefficients a, the sum over used points and the three components of
// (T - P - sum a B)^2, T being the star in the mount frame and P the nominal
// pointing of the encoders. Equal weights, no constant term. With no used
// point the coefficients and Sensitivity stay as they were; with no active
// term all coefficients are 0 and Sensitivity stays.
const FitRunInfo& LastFitRunInfo() {
    return lastRun;
}

void SolveCoefficients(ModelState& s, FitWorkspace& w) {
    if (w.NumUsed == 0 || s.NumCalPoints == 0) return;
    if (ListActiveTerms(s, w.Solve) == 0) return;
    AccumulateNormalEquations(s, w, w.Solve);
    FinishSolve(s, w.Solve);
}

void SolveCoefficients(ModelState& s) {
    auto w = std::make_unique<FitWorkspace>();
    PrepareFitWorkspace(s, *w);
    SolveCoefficients(s, *w);
}

// The whole fit, from scratch. Stage 1 lets in terms by number as the used
// points allow (two per point) and steps down the ladder 46, 44, ... 8, 6,
// 5, 4, 2, 0 while the inverse normal matrix is more sensitive than
// MaxSensitivity. Stage 2 moves the coefficients of terms 1 to 4 into the
// encoder offsets and the two axis rotations, which enter the model
// non-linearly, until the largest change is below 1e-6 or 200 passes ran.
//
// Work that gives the same numbers is done once: the sky vector of each point
// per fit; the sums of stage 1 once for the widest rung (offsets and
// rotations are all 0 on every rung, so a narrower rung's sums are a subset);
// and the first pass of stage 2, which would solve the very system that
// ended stage 1.
void Calibrate(ModelState& s) {
    FitWorkspace& w = ThreadWorkspace();
    if (s.TestLog) {
        AddTestLogLine(s, "");
        AddTestLogLine(s, "Calibrate:");
    }

    ZeroOffsetsAndRotations(s);
    PrepareFitWorkspace(s, w);
    usedSlotOf.fill(0);
    for (int u = 1; u <= w.NumUsed; ++u) usedSlotOf[w.UsedIndex[u]] = static_cast<int16_t>(u);
    const int N = w.NumUsed;
    int16_t MaxTerm = static_cast<int16_t>(2 * N);
    if (s.NumTerms < MaxTerm) MaxTerm = s.NumTerms;
    SelectActiveTerms(s, MaxTerm);
    bool stage1Solved = false;  // the last step of stage 1 was a solve that passed
    bool fullSummed = false;
    lastRun = FitRunInfo();
    while (MaxTerm > 0) {
        // SolveCoefficients, with the sums of the widest rung reused.
        if (s.NumCalPoints != 0 && ListActiveTerms(s, w.Solve) != 0) {
            if (!fullSummed) {
                w.Full.n = w.Solve.n;
                w.Full.TermList = w.Solve.TermList;
                AccumulateNormalEquations(s, w, w.Full);
                fullSummed = true;
            }
            ExtractSubsystem(w.Full, w.Solve);
            FinishSolve(s, w.Solve);
            ++lastRun.Rungs;
        }
        LogOffsets(s);
        if (s.Sensitivity <= s.MaxSensitivity) {
            stage1Solved = true;
            break;
        }
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
        // The first pass starts from zero offsets, as stage 1 did: its solve
        // is the one stage 1 ended with, already in TermCoef and Sensitivity.
        if (!(count == 1 && stage1Solved)) SolveCoefficients(s, w);
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
        if (s.TestLog) AddTestLogLine(s, "Iterating Offsets: Iter = " + std::to_string(count));
        LogOffsets(s);
    } while (!(D < 1e-6) && count < 200);
    lastRun.Passes = count;
    for (int t = 1; t <= s.NumTerms; ++t) lastRun.ActiveTerms += s.TermActive[t];
}
