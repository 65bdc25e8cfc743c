// The pieces of one conversion, one call each, on a fitted 46-term model.
#include <benchmark/benchmark.h>

#include "BenchModels.h"
#include "model/Frames.h"
#include "model/InverseSolution.h"
#include "model/Residuals.h"
#include "model/SkyChain.h"
#include "model/Solver.h"
#include "model/Terms.h"

namespace {

std::unique_ptr<ModelState> FittedModel() {
    auto s = MakeBenchModel(500);
    s->MaxSensitivity = 1e300;  // every term stays active: the costliest model
    Calibrate(*s);
    return s;
}

void BM_CelestialToHorizon(benchmark::State& state) {
    auto s = FittedModel();
    double ra = 1.0;
    for (auto _ : state) {
        Vec3 v = CelestialToHorizon(*s, ra, 0.5, 2.0, 2460000.5);
        benchmark::DoNotOptimize(v);
        ra += 1e-9;
    }
}
BENCHMARK(BM_CelestialToHorizon);

void BM_HorizonToCelestial(benchmark::State& state) {
    auto s = FittedModel();
    const Vec3 v = CelestialToHorizon(*s, 1.0, 0.5, 2.0, 2460000.5);
    for (auto _ : state) {
        double ra = 0, dec = 0;
        HorizonToCelestial(*s, v, 2.0, 2460000.5, ra, dec);
        benchmark::DoNotOptimize(ra);
    }
}
BENCHMARK(BM_HorizonToCelestial);

void BM_TermBasis(benchmark::State& state) {
    TermTable B;
    double t = 0.5;
    for (auto _ : state) {
        TermBasis(t, 1.2, B);
        benchmark::DoNotOptimize(B);
        t += 1e-9;
    }
}
BENCHMARK(BM_TermBasis);

void BM_CelestialToEncoders(benchmark::State& state) {
    auto s = FittedModel();
    for (auto _ : state) {
        double t = 0, p = 0;
        CelestialToEncoders(*s, 2.0, 2460000.5, 1.0, 0.5, 1, t, p);
        benchmark::DoNotOptimize(t);
    }
}
BENCHMARK(BM_CelestialToEncoders);

void BM_EncodersToCelestial(benchmark::State& state) {
    auto s = FittedModel();
    double t = 0, p = 0;
    CelestialToEncoders(*s, 2.0, 2460000.5, 1.0, 0.5, 1, t, p);
    for (auto _ : state) {
        double ra = 0, dec = 0;
        EncodersToCelestial(*s, 2.0, 2460000.5, t, p, ra, dec);
        benchmark::DoNotOptimize(ra);
    }
}
BENCHMARK(BM_EncodersToCelestial);

}  // namespace
