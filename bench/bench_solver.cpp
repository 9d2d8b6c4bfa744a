// The Newton solver on the discretised two-dimensional Bratu problem, -lap(u) = lambda exp(u) on the unit
// square with u = 0 on the boundary, from u = 0: one solve per benchmark iteration, with the Newton
// iterations as a counter. Grids of 9x11 (99 unknowns, dense LU), 10x10 (100, the first sparse size) and
// 40x50 (2000, sparse), plus the two parts of one Newton iteration at 2000 unknowns.
#include <tarvo/core/Jacobian.h>
#include <tarvo/core/ObjectiveNleAd.h>
#include <tarvo/core/SolverNleRecipesAutomatic.h>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

// lambda below the turning point of the unit square, about 6.81.
constexpr double lambda = 5.0;

class Bratu2D : public ObjectiveNleAd {
public:
    Bratu2D(int nx, int ny)
        : ObjectiveNleAd("bratu"), nx_(nx), ny_(ny), u(static_cast<std::size_t>(nx) * ny, Value(0.0)) {
        for (std::size_t k = 0; k < u.size(); ++k)
            addUnknown(&u[k], Scaler(), "u" + std::to_string(k));
    }
    Bratu2D(const Bratu2D&) = delete;

    int calculateResiduals(std::vector<Value>& r, uint32_t offset) override {
        const double ihx2 = (nx_ + 1.0) * (nx_ + 1.0), ihy2 = (ny_ + 1.0) * (ny_ + 1.0);
        for (int j = 0; j < ny_; ++j) {
            for (int i = 0; i < nx_; ++i) {
                const Value& c = at(i, j);
                Value dxx = 2.0 * c, dyy = 2.0 * c;
                if (i > 0) dxx = dxx - at(i - 1, j);
                if (i + 1 < nx_) dxx = dxx - at(i + 1, j);
                if (j > 0) dyy = dyy - at(i, j - 1);
                if (j + 1 < ny_) dyy = dyy - at(i, j + 1);
                r[offset + j * nx_ + i] = dxx * ihx2 + dyy * ihy2 - lambda * exp(c);
            }
        }
        return static_cast<int>(size());
    }
    void reset() {
        for (Value& v : u)
            v = 0.0;
    }

private:
    const Value& at(int i, int j) const { return u[static_cast<std::size_t>(j) * nx_ + i]; }
    int nx_, ny_;

public:
    std::vector<Value> u;
};

void BM_BratuSolve(benchmark::State& state) {
    Bratu2D bratu(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    const int n = static_cast<int>(bratu.size());
    SolverNleRecipesAutomatic solver(n, &bratu);
    int status = 0, newton = 0;
    for (auto _ : state) {
        bratu.reset();
        bratu.init(solver.x());
        status = solver.solve();
        newton = solver.newtonApplications();
    }
    if (status != 0) state.SkipWithError(("status " + solver.statusText(status)).c_str());
    state.counters["unknowns"] = n;
    state.counters["newton_steps"] = newton;
    state.counters["sparse"] = solver.jacobian().sparse();
}
BENCHMARK(BM_BratuSolve)->Args({9, 11})->Args({10, 10})->Args({40, 50})->Unit(benchmark::kMillisecond);

// One evaluation of F and J by the forward derivatives, into the compressed-column form.
void BM_BratuJacobian2000(benchmark::State& state) {
    Bratu2D bratu(40, 50);
    std::vector<double> x(bratu.size(), 0.1), y(bratu.size());
    Jacobian J(bratu.size());
    for (auto _ : state)
        bratu(x.data(), y.data(), &J);
    state.counters["entries"] = J.entries();
}
BENCHMARK(BM_BratuJacobian2000)->Unit(benchmark::kMillisecond);

// One sparse LU and solve of that Jacobian; the Jacobian is rebuilt outside the timing, as the
// factorisation overwrites nothing but its own factors.
void BM_BratuFactor2000(benchmark::State& state) {
    Bratu2D bratu(40, 50);
    std::vector<double> x(bratu.size(), 0.1), y(bratu.size()), b(bratu.size());
    Jacobian J(bratu.size());
    bratu(x.data(), y.data(), &J);
    int status = 0;
    for (auto _ : state) {
        b = y;
        status = J.factorAndSolve(b.data());
        benchmark::DoNotOptimize(b.data());
    }
    if (status != 0) state.SkipWithError("factorisation failed");
}
BENCHMARK(BM_BratuFactor2000)->Unit(benchmark::kMillisecond);

} // namespace
