// The speed of the fit: Calibrate plus ComputeResiduals, and the "limit"
// figure of the arithmetic a fit cannot avoid.
#include <benchmark/benchmark.h>

#include <memory>

#include "BenchModels.h"
#include "model/Frames.h"
#include "model/Residuals.h"
#include "model/Solver.h"
#include "model/Terms.h"
#include "sky/cMath.h"

namespace {

void BM_CalibrateAndResiduals(benchmark::State& state) {
    auto s = MakeBenchModel(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        Calibrate(*s);
        ComputeResiduals(*s);
        benchmark::DoNotOptimize(s->RMSErrSel);
    }
    state.counters["rungs"] = LastFitRunInfo().Rungs;
    state.counters["passes"] = LastFitRunInfo().Passes;
    state.counters["terms"] = LastFitRunInfo().ActiveTerms;
}
BENCHMARK(BM_CalibrateAndResiduals)->Arg(23)->Arg(100)->Arg(500)->Unit(benchmark::kMillisecond);

void BM_CalibrateAndResidualsFineEncoders(benchmark::State& state) {
    auto s = MakeBenchModel(500, 8640000);
    for (auto _ : state) {
        Calibrate(*s);
        ComputeResiduals(*s);
        benchmark::DoNotOptimize(s->RMSErrSel);
    }
}
BENCHMARK(BM_CalibrateAndResidualsFineEncoders)->Unit(benchmark::kMillisecond);

void BM_CalibrateOnly(benchmark::State& state) {
    auto s = MakeBenchModel(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        Calibrate(*s);
        benchmark::DoNotOptimize(s->ErrorNorth);
    }
}
BENCHMARK(BM_CalibrateOnly)->Arg(500)->Unit(benchmark::kMillisecond);

void BM_ResidualsOnly(benchmark::State& state) {
    auto s = MakeBenchModel(static_cast<int>(state.range(0)));
    Calibrate(*s);
    for (auto _ : state) {
        ComputeResiduals(*s);
        benchmark::DoNotOptimize(s->RMSErrSel);
    }
}
BENCHMARK(BM_ResidualsOnly)->Arg(500)->Unit(benchmark::kMillisecond);

// The limit: the arithmetic the fit cannot avoid. Per pass of stage 2 and
// per used point one TermBasis and the rank-3 update of the normal matrix of
// the terms the fit keeps, and one inversion per pass, with the pass count
// and term count of a real Calibrate of the same model. The fit's report
// shows its time as a ratio to this.
void RunLimit(benchmark::State& state, int points, double countsPerRev) {
    auto s = MakeBenchModel(points, countsPerRev);
    Calibrate(*s);
    const FitRunInfo run = LastFitRunInfo();
    const int n = run.ActiveTerms;
    Matrix A{};
    MatrixVector R{};
    TermTable B{};
    for (auto _ : state) {
        for (int pass = 0; pass < run.Passes; ++pass) {
            for (int i = 1; i <= n; ++i) {
                R[i] = 0;
                for (int j = 1; j <= n; ++j) A[i][j] = 0;
            }
            for (int p = 1; p <= s->NumCalPoints; ++p) {
                double Theta = 0, Phi = 0;
                EncodersToAngles(*s, s->CalPoints[p].ThetaEnc, s->CalPoints[p].PhiEnc, Theta, Phi);
                TermBasis(Theta, Phi, B);
                for (int i = 1; i <= n; ++i) {
                    const double b1 = B[i][1], b2 = B[i][2], b3 = B[i][3];
                    R[i] = R[i] + b1 + b2 + b3;
                    double* row = A[i].data();
                    for (int j = i; j <= n; ++j) {
                        double a = row[j];
                        a = a + b1 * B[j][1];
                        a = a + b2 * B[j][2];
                        a = a + b3 * B[j][3];
                        row[j] = a;
                    }
                }
            }
            for (int i = 2; i <= n; ++i)
                for (int j = 1; j < i; ++j) A[i][j] = A[j][i] + (i == j);
            for (int i = 1; i <= n; ++i) A[i][i] = A[i][i] + 1;  // keeps it regular
            s->Math.MatrixInverse(A, R, n);
            benchmark::DoNotOptimize(R[1]);
        }
    }
    state.counters["passes"] = run.Passes;
    state.counters["terms"] = n;
}

void BM_Limit(benchmark::State& state) {
    RunLimit(state, static_cast<int>(state.range(0)), 6.283185308);
}
BENCHMARK(BM_Limit)->Arg(23)->Arg(100)->Arg(500)->Unit(benchmark::kMillisecond);

void BM_LimitFineEncoders(benchmark::State& state) {
    RunLimit(state, 500, 8640000);
}
BENCHMARK(BM_LimitFineEncoders)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
