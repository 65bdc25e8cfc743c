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
    state.counters["points"] = static_cast<double>(s->NumCalPoints);
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

// The limit: per point one TermBasis and the rank-3 update of the 46 by 46
// normal matrix, plus one inversion, for one solve.
void BM_LimitOneSolve(benchmark::State& state) {
    auto s = MakeBenchModel(static_cast<int>(state.range(0)));
    const int n = 46;
    Matrix A{};
    MatrixVector R{};
    TermTable B{};
    for (auto _ : state) {
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
            for (int j = 1; j < i; ++j) A[i][j] = A[j][i];
        s->Math.MatrixInverse(A, R, n);
        benchmark::DoNotOptimize(R[1]);
    }
}
BENCHMARK(BM_LimitOneSolve)->Arg(500)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
