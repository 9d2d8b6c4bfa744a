// The cost of what a flash asks of a phase at every iteration: a balance, the properties at (P, T) and
// the fugacity coefficients, for the ideal model. The sums over the components' routes should dominate:
// the phase layer adds no allocation and no string work of its own.
#include <tarvo/components/ComponentCatalogue.h>
#include <tarvo/components/ListComponents.h>
#include <tarvo/core/KernelStart.h>
#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/phases/ActivityUnifac.h>
#include <tarvo/phases/PhaseGeneric.h>
#include <tarvo/phases/PhaseGerg2004.h>
#include <tarvo/phases/PhaseIapws.h>
#include <tarvo/phases/RegisterPhases.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace {

using Mode = Tarvo::Utility::MassBalanceMode;

// A phase of the kernel's five components at a fixed composition, made as a stream makes it.
std::unique_ptr<Phase::Generic> makePhase(const std::string& type) {
    Tarvo::Core::startKernel();
    registerPhases();
    std::unique_ptr<Phase::Generic> phase(dynamic_cast<Phase::Generic*>(
        NodeFactory::create(type, Tarvo::Persistency::Defaults("P", "phase"), 0, nullptr, nullptr, nullptr)));
    const double x[] = {0.2, 0.3, 0.1, 0.25, 0.15};
    for (int i = 0; i < NCOMPONENTS; ++i) phase->x[i] = x[i];
    phase->ndot = Value(100.0, "kmol/h");
    phase->calculate(0);
    return phase;
}

void BM_BalanceNx(benchmark::State& state) {
    auto phase = makePhase("PhaseIdeal<vapor>");
    for (auto _ : state) {
        phase->calculateX(Mode::Nx);
        benchmark::DoNotOptimize(phase->mdot.toDouble());
    }
    phase.reset();
    Tarvo::Core::stopKernel();
}
BENCHMARK(BM_BalanceNx);

void BM_BalanceM(benchmark::State& state) {
    auto phase = makePhase("PhaseIdeal<vapor>");
    for (auto _ : state) {
        phase->calculateX(Mode::M);
        benchmark::DoNotOptimize(phase->ndot.toDouble());
    }
    phase.reset();
    Tarvo::Core::stopKernel();
}
BENCHMARK(BM_BalanceM);

void BM_PropertiesIdealVapor(benchmark::State& state) {
    auto phase = makePhase("PhaseIdeal<vapor>");
    const Value P(2.0, "bar"), T(400.0, "K");
    for (auto _ : state) {
        phase->calculateProperties(P, T, true);
        benchmark::DoNotOptimize(phase->g.toDouble());
    }
    phase.reset();
    Tarvo::Core::stopKernel();
}
BENCHMARK(BM_PropertiesIdealVapor);

void BM_PropertiesIdealLiquid(benchmark::State& state) {
    auto phase = makePhase("PhaseIdeal<liquid>");
    const Value P(2.0, "bar"), T(300.0, "K");
    for (auto _ : state) {
        phase->calculateProperties(P, T, true);
        benchmark::DoNotOptimize(phase->g.toDouble());
    }
    phase.reset();
    Tarvo::Core::stopKernel();
}
BENCHMARK(BM_PropertiesIdealLiquid);

// The density alone: the phase layer around one short model call.
void BM_DensityIdealVapor(benchmark::State& state) {
    auto phase = makePhase("PhaseIdeal<vapor>");
    const Value P(2.0, "bar"), T(400.0, "K");
    for (auto _ : state) benchmark::DoNotOptimize(phase->calculate_rho(P, T).toDouble());
    phase.reset();
    Tarvo::Core::stopKernel();
}
BENCHMARK(BM_DensityIdealVapor);

void BM_FugacitiesIdealLiquid(benchmark::State& state) {
    auto phase = makePhase("PhaseIdeal<liquid>");
    const Value P(2.0, "bar"), T(300.0, "K");
    for (auto _ : state) {
        phase->prepare(T);
        phase->preparefugacity(P, T);
        double sum = 0;
        for (int i = 0; i < NCOMPONENTS; ++i) sum += phase->fugacity(i).toDouble();
        benchmark::DoNotOptimize(sum);
    }
    phase.reset();
    Tarvo::Core::stopKernel();
}
BENCHMARK(BM_FugacitiesIdealLiquid);

// The activity coefficients of a UNIFAC liquid of ethanol, water, acetone and benzene (7 subgroups) at a
// new temperature, as the flash asks for them at every iteration: the temperature-dependent interactions
// and pure-component terms, then the mixture's.
void BM_UnifacGammaFourComponents(benchmark::State& state) {
    Tarvo::Core::startKernel();
    components.clear();
    for (const char* entry : {"ethanol", "water", "acetone", "benzene"})
        components.add(newCatalogueComponent(entry, entry));
    Phase::Activity::Unifac unifac;
    const Vector x{Value(0.1), Value(0.4), Value(0.3), Value(0.2)};
    double T = 330.0;
    for (auto _ : state) {
        unifac.prepare(Value(T, "K"), x);
        benchmark::DoNotOptimize(unifac.gamma()[0].val());
        T = T == 330.0 ? 331.0 : 330.0;
    }
    Tarvo::Core::stopKernel();
}
BENCHMARK(BM_UnifacGammaFourComponents)->Unit(benchmark::kMicrosecond);

// One IAPWS-95 evaluation at (T, rho): the ideal and residual parts with their derivatives in plain
// numbers, and the enthalpy and pressure of the phase, which evaluate them in Values.
void BM_Iapws95HelmholtzDouble(benchmark::State& state) {
    const double delta = 838.025 / 322.0, tau = 647.096 / 500.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(Phase::Iapws95::residual(delta, tau).dd);
        benchmark::DoNotOptimize(Phase::Iapws95::ideal(delta, tau).tt);
    }
}
BENCHMARK(BM_Iapws95HelmholtzDouble);

void BM_Iapws95PropertiesActive(benchmark::State& state) {
    Tarvo::Core::startKernel();
    {
        Phase::Iapws water;
        Vector x(NCOMPONENTS, Value(0.0));
        x[2] = 1.0;
        const Value P(1e7, "Pa");
        double T = 500.0;
        water.beta = 838.025 / 322.0;
        for (auto _ : state) {
            // A new temperature each time: the phase keeps its parts while its state stands.
            const Value t(T, "K");
            benchmark::DoNotOptimize(water.calculate_H_(P, t, x).toDouble());
            benchmark::DoNotOptimize(water.calculate_P_(water.density(water.beta), t, x, one).toDouble());
            T = T == 500.0 ? 501.0 : 500.0;
        }
    }
    Tarvo::Core::stopKernel();
}
BENCHMARK(BM_Iapws95PropertiesActive);

// One GERG-2004 pressure of a five-component natural gas (methane, ethane, propane, CO2, N2) at a new
// density each time, as the flash's density iteration asks for it (argument 0), or at a new density and
// temperature (argument 1): the terms' sums at (delta, tau), with the powers of tau kept while T stands,
// and the pressure in Values.
void BM_Gerg2004PressureFiveComponents(benchmark::State& state) {
    Tarvo::Core::startKernel();
    components.clear();
    for (const char* entry : {"methane", "ethane", "propane", "CO2", "N2"})
        components.add(newCatalogueComponent(entry, entry));
    {
        Phase::Gerg2004 gas;
        const Vector x{Value(0.85), Value(0.06), Value(0.03), Value(0.02), Value(0.04)};
        gas.precompute(Value(300.0, "K"), x);
        int k = 0;
        for (auto _ : state) {
            k = (k + 1) % 1000;
            const Value beta(0.05 + 1e-5 * k), T(state.range(0) ? 300.0 + 0.01 * k : 300.0, "K");
            benchmark::DoNotOptimize(gas.pressure(beta, T).toDouble());
        }
    }
    Tarvo::Core::stopKernel();
}
BENCHMARK(BM_Gerg2004PressureFiveComponents)->Arg(0)->Arg(1);

} // namespace
