#include <tarvo/components/ListComponents.h>
#include <tarvo/models/HeatingValue.h>
#include <tarvo/models/ICE.h>
#include <tarvo/models/Upgrading.h>
#include <tarvo/utility/Log.h>

#include <string>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;
} // namespace

Upgrading::Upgrading(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                     Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      TwoStepCascade(defaults, id, persistency, parent, root) {
    for (Quantity* q : {&Pin, &Pout, &splitToIce}) addVariable(*q);
    for (Quantity* q : {&LHVin, &powerConsumption, &powerProduced, &power, &specificPower}) {
        addVariable(*q);
        q->setOutput();
    }
    addComponentVariables(recoveryMembrane, "recoveryMembrane", "membrane recovery", "", 0.0);
    addComponentVariables(recoveryTotal, "recoveryTotal", "overall recovery", "", 0.0);
    addComponentVariables(purity, "purity", "purity", "", 0.0);
    if (persistency) return; // the units and streams come from the store
    TARVO_LOG(3) << "Define unit operations";
    // Two outlets: to a divider, the number of streams that the plant gives is its number of outlets.
    addUnit("Divider", Defaults("TEE", "Biogas divider").setInteger("nOutlets", 2));
    addUnit("MembraneMulti12<Membrane12Cstr>", Defaults("GMA", "Gas membrane unit A"));
    addUnit("MembraneMulti12<Membrane12Cstr>", Defaults("GMB", "Gas membrane unit B"));
    addUnit("MultiCompressorIntercooled2", Defaults("COMPR", "Compressor"));
    // A mixer takes as many inlets as are connected: the two streams below, whatever number it is told.
    addUnit("Mixer", Defaults("MIX", "Mixer"));
    addUnit("ICE", Defaults("ICE", "Internal combustion Engine"));
    TARVO_LOG(3) << "Define stream objects and connect";
    addStream("StreamVapor", Defaults("BiogasClean", "Clean biogas"), "source", "out", "TEE", "in");
    addStream("StreamVapor", Defaults("BiogasCleanICE", "Clean biogas a ICE"), "TEE", "out1", "ICE", "in");
    addStream("StreamVapor", Defaults("BiogasCleanGM", "Clean biogas a separazione"), "TEE", "out2", "MIX", "in");
    addStream("StreamVapor", Defaults("LOWP", "Combined feed"), "MIX", "out", "COMPR", "in");
    addStream("StreamVapor", Defaults("HIGHP", "Combined feed pressurized"), "COMPR", "gasout", "GMA", "feed");
    addStream("StreamLiquid", Defaults("HIGHPLIQ", "Condensate"), "COMPR", "liqout", "sink", "in");
    addStream("StreamVapor", Defaults("PERMA", "Permeate from GMA - purge stream"), "GMA", "permeate", "ICE", "in");
    addStream("StreamVapor", Defaults("RETEA", "Retentate from GMA"), "GMA", "retentate", "GMB", "feed");
    addStream("StreamVapor", Defaults("PERMB", "Permeate from GMB"), "GMB", "permeate", "MIX", "in");
    addStream("StreamVapor", Defaults("RETEB", "Retentate from GMB - upgraded biogas"), "GMB", "retentate", "sink",
              "in");
    addStream("StreamVapor", Defaults("AirToICE", "Air to internal combustion engine"), "source", "out", "ICE", "in");
    addStream("StreamIdealLiquidVapor", Defaults("FlueGas", "Flue gases from ICE"), "ICE", "out", "sink", "in");
}

void Upgrading::setup() {
    // The units inside set themselves up first: the engine its combustion, a chain its cuts.
    FlowSheet::setup();
    TARVO_LOG(3) << "Setting input variables";
    setInput(A, Value(250.0, "m2"));
    setInput(areaRatio, Value(1.0));
    setInput(alfa, Value(35.0));
    setInput(Pin, Value(1.2, "bar"));
    setInput(Pout, Value(25.0, "bar"));
    setInput(splitToIce, Value(0.2));
    const std::pair<const char*, double> areas[] = {{"GMA", 280.0}, {"GMB", 1120.0}};
    for (const auto& [module, area] : areas) {
        const std::string m(module);
        setModule(m, Value(area, "m2"));
        setInput(Q(m + ".permeance", 2), Value(150.0, "GPU")); // H2O
        setInput(Q(m + ".Ppermeate"), Value(1.2, "bar"));
        setInput(Q(m + ".deltaPretentate"), Value(0.5, "bar"));
    }
    setTrain(Value(6.0, "bar"));
    // The user equations set the split from splitToIce at the first pass.
    setInput(Q("TEE.outSplit", 0), Value(0.5));
    setEngineFeeds(*this, Value(1.2, "bar"));
    // The first estimate of the recycle.
    setFeed(*this, "PERMB", Value(1.0, "bar"), Value(298.15, "K"), "Nx", Value(2.5, "kmol/h"),
            {{"CO2", 0.9}, {"CH4", 0.1}});
    addCut("PERMB");
}

void Upgrading::makeUserEquations(std::list<Assignment*>::iterator& it) {
    TwoStepCascade::makeUserEquations(it);
    designEquation(it, Q("TEE.outSplit", 0), splitToIce, "splitToIce", "Split to ICE");
    // The discharge pressure moves by the distance between the wanted and the actual pressure of the product.
    designEquation(it, Q("COMPR.P"), Q("COMPR.P") + Pout - Q("RETEB.P"), "Q(\"COMPR.P\") + Pout - Q(\"RETEB.P\")",
                   "Compressor pressure");
    designEquation(it, Q("GMA.Ppermeate"), Pin, "Pin", "Module A permeate pressure");
    designEquation(it, Q("GMB.Ppermeate"), Pin, "Pin", "Module B permeate pressure");
    designEquation(it, Q("BiogasClean.P"), Pin, "Pin", "Raw biogas pressure");
}

void Upgrading::post(SolutionMode, int) {
    TARVO_LOG(3) << "Entered for " << tag();
    productShares("RETEB", "BiogasCleanGM", recoveryMembrane, purity);
    for (int i = 0; i < NCOMPONENTS; ++i)
        recoveryTotal[i] = Q("RETEB:Tphase.ndotcomps", i) / Q("BiogasClean:Tphase.ndotcomps", i);
    powerConsumption = Q("COMPR.We");
    powerProduced = Q("ICE.We");
    specificPower = powerConsumption / Q("RETEB:Tphase.ndot");
    power = powerProduced - powerConsumption;
    LHVin = lowerHeatingValueFlow(*this, "BiogasClean");
}
