// The cost of the component routes that a flash evaluates in its inner loops, against the same vapor
// pressure form on plain doubles. Outside a solve (no directions) a route should cost little more than
// its arithmetic: no allocation, no unit lookup.
#include <tarvo/components/ListComponents.h>
#include <tarvo/components/Purecomps.h>

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

const purecomps::water& water() {
    static const purecomps::water w("H2O");
    return w;
}

const purecomps::CO2& co2() {
    static const purecomps::CO2 c("CO2", true);
    return c;
}

// Water's Antoine form on doubles, as the route evaluates it inside its range.
void BM_PsatDouble(benchmark::State& state) {
    double t = 350.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(t);
        double p = std::exp(73.649 - 7258.2 / t - 7.3037 * std::log(t) + 4.1653e-6 * std::pow(t, 2.0));
        benchmark::DoNotOptimize(p);
    }
}
BENCHMARK(BM_PsatDouble);

void BM_Psat(benchmark::State& state) {
    Value T(350.0, "K");
    for (auto _ : state) {
        benchmark::DoNotOptimize(T);
        Value p = water().psat(T);
        benchmark::DoNotOptimize(p);
    }
}
BENCHMARK(BM_Psat);

void BM_HeatVaporDippr(benchmark::State& state) {
    Value T(350.0, "K"), P(1e5, "Pa");
    for (auto _ : state) {
        benchmark::DoNotOptimize(T);
        Value h = co2().hv(T, P);
        benchmark::DoNotOptimize(h);
    }
}
BENCHMARK(BM_HeatVaporDippr);

void BM_HeatLiquidWater(benchmark::State& state) {
    Value T(350.0, "K"), P(1e5, "Pa");
    for (auto _ : state) {
        benchmark::DoNotOptimize(T);
        Value h = water().hl(T, P);
        benchmark::DoNotOptimize(h);
    }
}
BENCHMARK(BM_HeatLiquidWater);

void BM_KvliHenry(benchmark::State& state) {
    Value T(320.0, "K"), P(2e5, "Pa");
    for (auto _ : state) {
        benchmark::DoNotOptimize(T);
        Value k = co2().kvli(T, P);
        benchmark::DoNotOptimize(k);
    }
}
BENCHMARK(BM_KvliHenry);

void BM_TransportWater(benchmark::State& state) {
    Value T(350.0, "K"), P(1e5, "Pa");
    for (auto _ : state) {
        benchmark::DoNotOptimize(T);
        Value mu = water().mul(T), k = water().kl(T), s = water().sigma(T), mv = water().muv(T, P);
        benchmark::DoNotOptimize(mu);
        benchmark::DoNotOptimize(k);
        benchmark::DoNotOptimize(s);
        benchmark::DoNotOptimize(mv);
    }
}
BENCHMARK(BM_TransportWater);

} // namespace
