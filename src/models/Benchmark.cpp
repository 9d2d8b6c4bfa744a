#include <tarvo/models/Benchmark.h>
#include <tarvo/models/HeatingValue.h>
#include <tarvo/models/ICE.h>
#include <tarvo/utility/Log.h>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;
} // namespace

Benchmark::Benchmark(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                     Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      ReferenceFlowSheet(defaults, id, persistency, parent, root) {
    for (Quantity* q : {&LHVin, &etaL}) {
        addVariable(*q);
        q->setOutput();
    }
    if (persistency) return; // the units and streams come from the store
    TARVO_LOG(3) << "Define unit operations";
    addUnit("ICE", Defaults("ICE", "Internal combustion Engine"));
    TARVO_LOG(3) << "Define stream objects and connect";
    addStream("StreamVapor", Defaults("BiogasClean", "Clean biogas"), "source", "out", "ICE", "in");
    addStream("StreamVapor", Defaults("AirToICE", "Air to internal combustion engine"), "source", "out", "ICE", "in");
    addStream("StreamIdealLiquidVapor", Defaults("FlueGas", "Flue gases from ICE"), "ICE", "out", "sink", "in");
}

void Benchmark::setup() {
    // The units inside set themselves up first: the engine its combustion, a chain its cuts.
    FlowSheet::setup();
    TARVO_LOG(3) << "Setting input variables";
    setEngineFeeds(*this, Value(1.0, "atm"));
}

void Benchmark::makeUserEquations(std::list<Assignment*>::iterator& it) {
    designEquation(it, Q("AirToICE:Tphase.mdot"),
                   Q("AirToICE:Tphase.mdot") -
                       (Q("FlueGas:Tphase.mdotcomps", "O2") - Q("FlueGas:Tphase.mdot") * 0.01) /
                           Q("AirToICE:Tphase.w", "O2"),
                   "Q(\"AirToICE:Tphase.mdot\") - (Q(\"FlueGas:Tphase.mdotcomps\", \"O2\") - "
                   "Q(\"FlueGas:Tphase.mdot\") * 0.01) / Q(\"AirToICE:Tphase.w\", \"O2\")",
                   "Set AirToICE flow so that residual oxygen mass fraction in FlueGas is 0.01");
}

void Benchmark::post(SolutionMode, int) {
    TARVO_LOG(3) << "Entered for " << tag();
    LHVin = lowerHeatingValueFlow(*this, "BiogasClean");
    etaL = Q("ICE.We") / LHVin;
}
