// The speed of the client's calls on the in-process server class, on a model
// with all 46 terms active, and of reading and writing a 500-point file.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>
#include <random>
#include <string>

#include "BenchModels.h"
#include "files/CalFile.h"
#include "server/DisplayRefresh.h"
#include "server/RecalcChain.h"
#include "server/cAztrue.h"

namespace {

// A server over its own model whose 46 terms are all active with
// coefficients of fitted size (up to a few arcminutes).
struct FittedServer {
    std::unique_ptr<ModelState> model = std::make_unique<ModelState>();
    NoDisplay display;
    RecalcChain chain{*model, display};
    std::unique_ptr<cAztrue> server = std::make_unique<cAztrue>(chain);

    FittedServer() {
        std::mt19937 gen(46);
        std::uniform_real_distribution<double> coef(-5e-4, 5e-4);
        for (int t = 1; t <= 46; ++t) {
            model->TermActive[t] = true;
            model->TermCoef[t] = coef(gen);
        }
        model->ErrorNorth = 1e-3;
        model->ErrorWest = -2e-3;
        model->ThetaEncOffset = 3e-3;
        model->PhiEncOffset = -4e-3;
    }
};

constexpr double kLST = 2.0;
constexpr double kJD = 2460000.5;

void BM_CelestialToEncoder(benchmark::State& state) {
    FittedServer f;
    double ra = 1.0;
    for (auto _ : state) {
        double t = 0, p = 0;
        f.server->CelestialToEncoder(kLST, kJD, ra, 0.5, 1, t, p);
        benchmark::DoNotOptimize(t);
        ra += 1e-7;  // a star that moves, as in tracking
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_CelestialToEncoder);

void BM_EncoderToCelestial(benchmark::State& state) {
    FittedServer f;
    double t = 0, p = 0;
    f.server->CelestialToEncoder(kLST, kJD, 1.0, 0.5, 1, t, p);
    for (auto _ : state) {
        double ra = 0, dec = 0;
        f.server->EncoderToCelestial(kLST, kJD, t, p, ra, dec);
        benchmark::DoNotOptimize(ra);
        t += 1e-7;
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_EncoderToCelestial);

void BM_GetTrackingRates(benchmark::State& state) {
    FittedServer f;
    double ra = 1.0;
    for (auto _ : state) {
        double tr = 0, pr = 0;
        f.server->GetTrackingRates(kLST, kJD, ra, 0.5, 1, tr, pr);
        benchmark::DoNotOptimize(tr);
        ra += 1e-7;
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_GetTrackingRates);

void BM_GetFieldAngleRate(benchmark::State& state) {
    FittedServer f;
    double ra = 1.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(f.server->GetFieldAngleRate(kLST, kJD, ra, 0.5, 1));
        ra += 1e-7;
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_GetFieldAngleRate);

std::string TempFile(const char* name) {
    return std::string("/tmp/aztrue-bench-") + name;
}

void BM_SaveCalFile500(benchmark::State& state) {
    auto s = MakeBenchModel(500);
    const std::string path = TempFile("save.AZT");
    for (auto _ : state) benchmark::DoNotOptimize(SaveCalFile(*s, path));
    std::remove(path.c_str());
}
BENCHMARK(BM_SaveCalFile500)->Unit(benchmark::kMillisecond);

void BM_LoadCalFile500(benchmark::State& state) {
    auto s = MakeBenchModel(500);
    const std::string path = TempFile("load.AZT");
    SaveCalFile(*s, path);
    auto target = std::make_unique<ModelState>();
    InitModel(*target);
    for (auto _ : state) benchmark::DoNotOptimize(LoadCalFile(*target, path));
    std::remove(path.c_str());
}
BENCHMARK(BM_LoadCalFile500)->Unit(benchmark::kMillisecond);

}  // namespace
