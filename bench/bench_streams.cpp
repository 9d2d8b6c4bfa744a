// A stream's flash as a flowsheet pass asks for it: the ideal vapor-liquid stream of the kernel's five
// components, recalculated from its estimate, at a two-phase state, a superheated one, and from its enthalpy.
#include <tarvo/components/ComponentCatalogue.h>
#include <tarvo/components/ListComponents.h>
#include <tarvo/core/KernelStart.h>
#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/phases/RegisterPhases.h>
#include <tarvo/streams/RegisterStreams.h>
#include <tarvo/streams/Stream.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

namespace {

std::unique_ptr<Stream> makeStream(double T, const std::string& flash) {
    Tarvo::Core::startKernel();
    registerPhases();
    registerStreams();
    std::unique_ptr<Stream> s(dynamic_cast<Stream*>(NodeFactory::create(
        "StreamIdealLiquidVapor", Tarvo::Persistency::Defaults("S", "stream"), 0, nullptr, nullptr, nullptr)));
    s->initializeNonPersistents();
    auto& total = dynamic_cast<Phase::MassMolar&>(*s->Tphase);
    const double x[] = {0.1, 0.05, 0.75, 0.08, 0.02};
    for (int i = 0; i < NCOMPONENTS; ++i) total.x[i] = x[i];
    total.ndot = Value(100.0, "kmol/h");
    s->P = Value(1.0, "atm");
    s->T = Value(T, "K");
    s->flowoption.value() = "Nx";
    s->flashoption.value() = flash;
    return s;
}

void flash(benchmark::State& state, double T) {
    auto s = makeStream(T, "PT");
    for (auto _ : state) {
        s->calculate(0);
        benchmark::DoNotOptimize(s->Tphase->totalFlow().toDouble());
    }
    state.counters["iterations"] = s->NITER_NLEFlash.value();
    s.reset();
    Tarvo::Core::stopKernel();
}

void BM_FlashPtTwoPhase(benchmark::State& state) { flash(state, 350.0); }
BENCHMARK(BM_FlashPtTwoPhase)->Unit(benchmark::kMicrosecond);

void BM_FlashPtSuperheated(benchmark::State& state) { flash(state, 420.0); }
BENCHMARK(BM_FlashPtSuperheated)->Unit(benchmark::kMicrosecond);

void BM_FlashPhTwoPhase(benchmark::State& state) {
    auto reference = makeStream(350.0, "PT");
    reference->calculate(0);
    const Value H = dynamic_cast<Phase::MassMolarProperties&>(*reference->Tphase).H;
    auto s = makeStream(330.0, "PH");
    auto& total = dynamic_cast<Phase::MassMolarProperties&>(*s->Tphase);
    for (auto _ : state) {
        s->T = Value(330.0, "K"); // the same start every time
        total.H = H;
        s->calculate(0);
        benchmark::DoNotOptimize(s->T.toDouble());
    }
    state.counters["iterations"] = s->NITER_NLEFlash.value();
    s.reset();
    reference.reset();
    Tarvo::Core::stopKernel();
    Tarvo::Core::stopKernel();
}
BENCHMARK(BM_FlashPhTwoPhase)->Unit(benchmark::kMicrosecond);

// A stream of `type` on the catalogue entries given (the kernel's five species for none), recalculated
// at (P, T) or at P and a vapor fraction.
void catalogueFlash(benchmark::State& state, const std::string& type, const std::vector<std::string>& entries,
              const std::vector<double>& x, double P, double T, const std::string& mode, double fraction = 0) {
    Tarvo::Core::startKernel();
    if (!entries.empty()) components.clear();
    for (const std::string& entry : entries) components.add(newCatalogueComponent(entry, entry));
    registerPhases();
    registerStreams();
    std::unique_ptr<Stream> s(dynamic_cast<Stream*>(
        NodeFactory::create(type, Tarvo::Persistency::Defaults("S", "stream"), 0, nullptr, nullptr, nullptr)));
    s->initializeNonPersistents();
    auto& total = dynamic_cast<Phase::MassMolar&>(*s->Tphase);
    for (int i = 0; i < NCOMPONENTS; ++i) total.x[i] = x[i];
    total.ndot = Value(100.0, "kmol/h");
    s->P = Value(P, "Pa");
    s->T = Value(T, "K");
    s->flowoption.value() = "Nx";
    s->flashoption.value() = mode;
    if (mode == "PA") dynamic_cast<Phase::Mass&>(s->child("Vphase")).fraction = fraction;
    for (auto _ : state) {
        s->calculate(0);
        benchmark::DoNotOptimize(s->Tphase->totalFlow().toDouble());
    }
    state.counters["iterations"] = s->NITER_NLEFlash.value();
    state.counters["vaporFraction"] = dynamic_cast<Phase::Mass&>(s->child("Vphase")).fraction.toDouble();
    s.reset();
    Tarvo::Core::stopKernel();
}

// The Peng-Robinson stream of a natural gas (methane, ethane, propane, n-butane 0.7 / 0.1 / 0.1 / 0.1) at
// 50 bar and 220 K, in its two-phase region: densities, K values and split from the substitution of the
// start and Newton's method on the whole system.
void BM_FlashPtPengRobinsonTwoPhase(benchmark::State& state) {
    catalogueFlash(state, "StreamPengRobinsonLiquidVapor", {"methane", "ethane", "propane", "butane"}, {0.7, 0.1, 0.1, 0.1},
             50e5, 220.0, "PT");
}
BENCHMARK(BM_FlashPtPengRobinsonTwoPhase)->Unit(benchmark::kMicrosecond);

// Ethanol / water 0.2 / 0.8 at 1.01325 bar and 360 K on a UNIFAC liquid and an ideal vapor, between its
// bubble and dew points: K values from the liquid's activity coefficients at every iteration.
void BM_FlashPtUnifacEthanolWater(benchmark::State& state) {
    catalogueFlash(state, "StreamUnifacLiquidVapor", {"ethanol", "water"}, {0.2, 0.8}, 1.01325e5, 360.0, "PT");
}
BENCHMARK(BM_FlashPtUnifacEthanolWater)->Unit(benchmark::kMicrosecond);

// PC-SAFT: propane / n-butane 0.5 / 0.5 at 6 bar and 300 K, inside the two-phase region.
void BM_FlashPtPcsaftBinary(benchmark::State& state) {
    catalogueFlash(state, "StreamPcsaftLiquidVapor", {"propane", "butane"}, {0.5, 0.5}, 6e5, 300.0, "PT");
}
BENCHMARK(BM_FlashPtPcsaftBinary)->Unit(benchmark::kMicrosecond);

// Saturated water on IAPWS-95 at 450 K's saturation pressure (0.932203564 MPa) and a vapor fraction of
// 0.3: the temperature, both densities and the split.
void BM_FlashPaIapwsSaturatedWater(benchmark::State& state) {
    catalogueFlash(state, "StreamIapwsLiquidVapor", {}, {0, 0, 1, 0, 0}, 932203.564, 400.0, "PA", 0.3);
}
BENCHMARK(BM_FlashPaIapwsSaturatedWater)->Unit(benchmark::kMicrosecond);

// GERG-2004: a natural gas with water (methane, ethane, CO2, N2, water 0.9 / 0.05 / 0.02 / 0.0295 / 0.0005)
// at 70 bar and 280 K, below its water dew point: a water-rich liquid beside the gas.
void BM_FlashPtGerg2004NaturalGasWithWater(benchmark::State& state) {
    catalogueFlash(state, "StreamGerg2004LiquidVapor", {"methane", "ethane", "CO2", "N2", "water"},
                   {0.9, 0.05, 0.02, 0.0295, 0.0005}, 70e5, 280.0, "PT");
}
BENCHMARK(BM_FlashPtGerg2004NaturalGasWithWater)->Unit(benchmark::kMicrosecond);

} // namespace
