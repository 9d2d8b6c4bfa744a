// The cost of Value arithmetic against plain doubles, and of carrying derivatives in the dense and the
// sparse store. Every variant evaluates the same chain of 25 arithmetic operations, one exp and one sqrt.
#include <tarvo/value/Value.h>

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

template <typename T> T chain(const T& a, const T& b, const T& c, const T& d, const T& e) {
    using std::exp, std::sqrt;
    const T s = a + b * c - d / e;
    const T t = s * a - b + c * d / e;
    const T u = exp(t / (a * 100.0));
    const T v = sqrt(u * u + s * s);
    const T w = v * a - u / b + c * e - d;
    return w / (a + e) - s * 0.5 + t;
}

constexpr double inputs[5] = {1.1, 2.3, 0.7, 4.2, 3.3};

template <typename T> void runChain(benchmark::State& state) {
    T a(inputs[0]), b(inputs[1]), c(inputs[2]), d(inputs[3]), e(inputs[4]);
    for (auto _ : state) {
        // Every input opaque, so that neither variant folds part of the chain into constants.
        benchmark::DoNotOptimize(a);
        benchmark::DoNotOptimize(b);
        benchmark::DoNotOptimize(c);
        benchmark::DoNotOptimize(d);
        benchmark::DoNotOptimize(e);
        T r = chain(a, b, c, d, e);
        benchmark::DoNotOptimize(r);
    }
}

void BM_DoubleChain(benchmark::State& state) { runChain<double>(state); }
BENCHMARK(BM_DoubleChain);

// No context pushed: numdir is 0, as in every calculation outside a solve.
void BM_ValueChain(benchmark::State& state) { runChain<Value>(state); }
BENCHMARK(BM_ValueChain);

// Five inputs, each the independent variable of its own direction.
void BM_ValueDense5(benchmark::State& state) {
    ActiveContext::push(5);
    Value x[5] = {inputs[0], inputs[1], inputs[2], inputs[3], inputs[4]};
    for (int i = 0; i < 5; ++i) x[i].active().setActive(i);
    for (auto _ : state) {
        Value r = chain(x[0], x[1], x[2], x[3], x[4]);
        benchmark::DoNotOptimize(r);
    }
    for (int i = 0; i < 5; ++i) x[i].active().inactivate(i);
    ActiveContext::pop();
}
BENCHMARK(BM_ValueDense5);

// 200 directions, each input depending on 3 of them, as a stream variable of a flowsheet does.
void BM_ValueSparse200(benchmark::State& state) {
    ActiveContext::push(200);
    Value x[5] = {inputs[0], inputs[1], inputs[2], inputs[3], inputs[4]};
    for (int i = 0; i < 5; ++i)
        for (int k = 0; k < 3; ++k) x[i].active().setDerivative(40 * i + 7 * k, 1.0 + k);
    for (auto _ : state) {
        Value r = chain(x[0], x[1], x[2], x[3], x[4]);
        benchmark::DoNotOptimize(r);
    }
    ActiveContext::pop();
}
BENCHMARK(BM_ValueSparse200);

} // namespace
