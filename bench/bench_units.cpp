// Unit strings are looked up only at the system's edges; this measures what one lookup costs.
#include <tarvo/value/UnitEngine.h>

#include <benchmark/benchmark.h>

static void BM_UnitToSI(benchmark::State& state) {
    const UnitEngine& engine = UnitEngine::instance();
    UnitArray exponents;
    double x = 1.0;
    for (auto _ : state) {
        x = engine.toSI(x, "kmol/h", exponents) * 3600.0;
        benchmark::DoNotOptimize(x);
    }
}
BENCHMARK(BM_UnitToSI);
