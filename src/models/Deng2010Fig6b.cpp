#include <tarvo/models/Deng2010Fig6b.h>
#include <tarvo/models/Test.h>
#include <tarvo/utility/Log.h>

#include <string>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;
} // namespace

Deng2010Fig6b::Deng2010Fig6b(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                             Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      ReferenceFlowSheet(defaults, id, persistency, parent, root) {
    for (Quantity* q : {&A, &k1, &k2, &powerC1, &powerC2, &power}) addVariable(*q);
    for (Quantity* q : {&powerC1, &powerC2, &power}) q->setOutput();
    addComponentVariables(recovery, "recovery", "recovery", "", 0.0);
    addComponentVariables(purity, "purity", "purity", "", 0.0);
    if (persistency) return; // the units and streams come from the store
    TARVO_LOG(3) << "Define unit operations";
    addUnit("MembraneMulti12<Membrane12Cstr>", Defaults("MODULE1", "Gas membrane unit 1"));
    addUnit("MembraneMulti12<Membrane12Cstr>", Defaults("MODULE2", "Gas membrane unit 2"));
    addUnit("MultiCompressorIntercooled3", Defaults("C1", "Feed compressor"));
    addUnit("MultiCompressorIntercooled3", Defaults("C2", "Permeate compressor"));
    addUnit("Mixer", Defaults("MIX", "Retentate mixer"));
    TARVO_LOG(3) << "Define stream objects and connect";
    addStream("StreamVapor", Defaults("FEED", "System feed"), "source", "out", "C1", "in");
    addStream("StreamVapor", Defaults("FEED1", "Membrane 1 feed"), "C1", "gasout", "MODULE1", "feed");
    addStream("StreamLiquid", Defaults("FEED1A", "Dummy water condensate"), "C1", "liqout", "sink", "in");
    addStream("StreamVapor", Defaults("PERMEATE1", "Permeate from membrane 1"), "MODULE1", "permeate", "C2", "in");
    addStream("StreamVapor", Defaults("RETENTATE1", "Retentate from membrane 1"), "MODULE1", "retentate", "MIX",
              "in");
    addStream("StreamVapor", Defaults("FEED2", "Membrane 2 feed"), "C2", "gasout", "MODULE2", "feed");
    addStream("StreamLiquid", Defaults("FEED2A", "Dummy water condensate"), "C2", "liqout", "sink", "in");
    addStream("StreamVapor", Defaults("PERMEATE2", "Permeate from membrane 2"), "MODULE2", "permeate", "sink", "in");
    addStream("StreamVapor", Defaults("RETENTATE2", "Retentate from membrane 2"), "MODULE2", "retentate", "MIX",
              "in");
    addStream("StreamVapor", Defaults("RETENTATES", "Total retentate from membranes 1 and 2"), "MIX", "out", "sink",
              "in");
}

void Deng2010Fig6b::setup() {
    // The units inside set themselves up first: the engine its combustion, a chain its cuts.
    FlowSheet::setup();
    TARVO_LOG(3) << "Setting input variables";
    setInput(A, Value(1167.0, "m2"));
    setInput(k1, Value(0.79));
    const double permeances[] = {100.0, 3.3333333333333335, 150.0, 2.0}; // CO2, CH4, H2O, N2
    for (const char* module : {"MODULE1", "MODULE2"}) {
        const std::string m(module);
        for (int i = 0; i < 4; ++i) setInput(Q(m + ".permeance", i), Value(permeances[i], "GPU"));
        setInput(Q(m + ".Ppermeate"), Value(1.0, "bar"));
    }
    setInput(Q("MODULE1.A"), Value(921.9300000000001, "m2"));
    setInput(Q("MODULE2.A"), Value(245.07, "m2"));
    for (const std::string train : {"C1", "C2"}) {
        setCompressor(train, Value(20.0, "bar"), 0.75, 0.95, 0.98);
        setInput(Q(train + ".T"), Value(313.15, "K"));
    }
    setFeed(*this, "FEED", Value(1.2, "bar"), Value(313.15, "K"), "Nx", Value(0.012231096146668308, "kmol/s"),
            {{"CH4", 0.65}, {"CO2", 0.35}, {"H2O", 0.0}});
}

void Deng2010Fig6b::makeUserEquations(std::list<Assignment*>::iterator& it) {
    designEquation(it, k2, one - k1, "One - k1", "Fraction of total area to module I");
    designEquation(it, Q("MODULE1.A"), k1 * A, "k1 * A", "Area of module I");
    designEquation(it, Q("MODULE2.A"), k2 * A, "k2 * A", "Area of module II");
}

void Deng2010Fig6b::post(SolutionMode, int) {
    TARVO_LOG(3) << "Entered for " << tag();
    productShares("RETENTATES", "FEED", recovery, purity);
    checkPurity(*this, purity);
    powerC1 = Q("C1.We");
    powerC2 = Q("C2.We");
    power = powerC1 + powerC2;
}
