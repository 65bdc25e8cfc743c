// The speed of the model quality figures: the statistics of a fit (one
// normal matrix and its inverse) and the cross-validation (one whole fit per
// used point), on fitted models of 23, 100 and 500 points.
#include <benchmark/benchmark.h>

#include <memory>

#include "BenchModels.h"
#include "model/CrossValidation.h"
#include "model/FitStatistics.h"
#include "model/Residuals.h"
#include "model/Solver.h"

namespace {

std::unique_ptr<ModelState> FittedBenchModel(int points, double countsPerRev = 6.283185308) {
    auto s = MakeBenchModel(points, countsPerRev);
    Calibrate(*s);
    ComputeResiduals(*s);
    return s;
}

void BM_FitStatistics(benchmark::State& state) {
    auto s = FittedBenchModel(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const FitStatistics f = ComputeFitStatistics(*s);
        benchmark::DoNotOptimize(f.AxisSigma);
    }
}
BENCHMARK(BM_FitStatistics)->Arg(23)->Arg(100)->Arg(500)->Unit(benchmark::kMillisecond);

void BM_CrossValidate(benchmark::State& state) {
    auto s = FittedBenchModel(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const CrossValidation cv = CrossValidate(*s);
        benchmark::DoNotOptimize(cv.RMS);
    }
}
BENCHMARK(BM_CrossValidate)->Arg(23)->Arg(100)->Arg(500)->Unit(benchmark::kMillisecond);

// Encoders of many counts per turn: every fit runs its 200 passes.
void BM_CrossValidateFineEncoders(benchmark::State& state) {
    auto s = FittedBenchModel(500, 8640000);
    for (auto _ : state) {
        const CrossValidation cv = CrossValidate(*s);
        benchmark::DoNotOptimize(cv.RMS);
    }
}
BENCHMARK(BM_CrossValidateFineEncoders)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
