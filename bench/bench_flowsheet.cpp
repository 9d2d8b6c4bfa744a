// Convergence of a flowsheet with recycles, sequential against simultaneous: a chain of 50 pairs of a mixer
// and a divider, fed at the first mixer. Every fifth divider sends 40% of its stream back to the mixer four
// pairs up, which makes 10 recycles, each opened by a cut. The streams carry mass balances only. One
// convergence per benchmark iteration from the same cold start (the flowsheet is built, scheduled and run
// through once outside the timing), with the passes or Newton iterations as a counter.
#include <tarvo/components/ListComponents.h>
#include <tarvo/core/KernelStart.h>
#include <tarvo/flowsheet/FlowSheet.h>
#include <tarvo/flowsheet/RegisterFlowsheet.h>
#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/phases/RegisterPhases.h>
#include <tarvo/streams/RegisterStreams.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/units/Divider.h>
#include <tarvo/units/RegisterUnits.h>

#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <string>
#include <unistd.h>

using Tarvo::Persistency::Defaults;
using Tarvo::Utility::CutsSolution;

namespace {

constexpr int pairs = 50;
constexpr int loopLength = 5;

class Chain : public FlowSheet {
public:
    Chain(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
          Persistent* root)
        : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
          FlowSheet(defaults, id, persistency, parent, root) {
        setCutsSolution(static_cast<CutsSolution>(defaults.getInteger("method")));
        const std::string type = "StreamSimpleLiquid";
        for (int i = 1; i <= pairs; ++i) {
            const std::string n = std::to_string(i);
            const bool recycles = i % loopLength == 0;
            addUnit("Mixer", {"M" + n, "mixer " + n});
            addUnit("Divider", Defaults("D" + n, "divider " + n).setInteger("nOutlets", recycles ? 2 : 1));
            addStream(type, {"S" + n, "mixed " + n}, "M" + n, "out", "D" + n, "in");
            if (recycles) {
                auto& divider = dynamic_cast<Divider&>(child("D" + n));
                divider.outSplit[0] = 0.6;
                divider.outSplit[1] = 0.4;
            }
        }
        addStream(type, {"FEED", "feed"}, "source", "out", "M1", "in");
        for (int i = 1; i <= pairs; ++i) {
            const std::string n = std::to_string(i);
            addStream(type, {"F" + n, "forward " + n}, "D" + n, "out",
                      i < pairs ? "M" + std::to_string(i + 1) : "sink", "in");
            if (i % loopLength == 0)
                addStream(type, {"R" + n, "recycle " + n}, "D" + n, "out",
                          "M" + std::to_string(i - loopLength + 1), "in");
        }
        auto& feed = dynamic_cast<Stream&>(child("FEED"));
        feed.Tphase->mdot = Value(3600.0, "kg/h");
        for (int i = 0; i < NCOMPONENTS; ++i)
            feed.Tphase->w[i] = 1.0 / NCOMPONENTS;
        feed.P = Value(2e5, "Pa");
        seqTol = 1e-10;
    }
    void setup() override {
        for (int i = loopLength; i <= pairs; i += loopLength)
            addCut("R" + std::to_string(i));
        FlowSheet::setup();
    }
    void pre(SolutionMode, int) override {}
    void post(SolutionMode, int) override {}
    void makeUserEquations(std::list<Assignment*>::iterator&) override {}
    int sequential() const override { return 1000; }
};

// The kernel, the types, and a folder of its own for the drawings that scheduling leaves.
struct Workspace {
    Workspace() {
        char pattern[] = "/tmp/tarvo-bench-flowsheet-XXXXXX";
        folder = mkdtemp(pattern);
        std::filesystem::current_path(folder);
        Tarvo::Utility::setVerbosityGlobal(-10);
        Tarvo::Core::startKernel();
        registerPhases();
        registerStreams();
        registerUnits();
        registerFlowsheet();
        NodeFactory::registerType<Chain>("BenchChain", "Chain of mixers and dividers", "flowsheet", true, {},
                                         {}, {}, "", 10, 10);
    }
    ~Workspace() { std::filesystem::remove_all(folder); }
    std::filesystem::path folder;
};

std::unique_ptr<Chain> coldChain(CutsSolution method) {
    static Workspace workspace;
    std::unique_ptr<Chain> chain(dynamic_cast<Chain*>(NodeFactory::create(
        "BenchChain", Defaults("CHAIN", "chain").setInteger("method", static_cast<int>(method)), 0, nullptr,
        nullptr, nullptr)));
    chain->setup();
    chain->initializeNonPersistents();
    chain->go(Calculatable::onePass, 0); // the schedule and the unknowns, before the timing
    return chain;
}

void converge(benchmark::State& state, CutsSolution method, Calculatable::SolutionMode mode) {
    int iterations = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto chain = coldChain(method);
        state.ResumeTiming();
        chain->go(mode, 0);
        state.PauseTiming();
        iterations = chain->NITER.value();
        if (!chain->errorList().empty()) state.SkipWithError(chain->errorList().front().c_str());
        chain.reset();
        state.ResumeTiming();
    }
    state.counters["iterations"] = iterations;
}

void BM_ChainSequentialDirect(benchmark::State& state) {
    converge(state, CutsSolution::direct, Calculatable::sequential);
}
BENCHMARK(BM_ChainSequentialDirect)->Unit(benchmark::kMillisecond);

void BM_ChainSequentialWegstein(benchmark::State& state) {
    converge(state, CutsSolution::wegstein, Calculatable::sequential);
}
BENCHMARK(BM_ChainSequentialWegstein)->Unit(benchmark::kMillisecond);

void BM_ChainSimultaneous(benchmark::State& state) {
    converge(state, CutsSolution::newton, Calculatable::simultaneous);
}
BENCHMARK(BM_ChainSimultaneous)->Unit(benchmark::kMillisecond);

} // namespace
