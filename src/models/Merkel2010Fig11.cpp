#include <tarvo/models/Merkel2010Fig11.h>
#include <tarvo/models/Test.h>
#include <tarvo/utility/Log.h>

#include <string>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;
} // namespace

Merkel2010Fig11::Merkel2010Fig11(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                                 Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      ReferenceFlowSheet(defaults, id, persistency, parent, root) {
    for (Quantity* q : {&A, &k1, &k2, &k3, &power}) addVariable(*q);
    power.setOutput();
    addComponentVariables(recovery, "recovery", "recovery", "", 0.0);
    addComponentVariables(purity, "purity", "purity", "", 0.0);
    if (persistency) return; // the units and streams come from the store
    TARVO_LOG(3) << "Define unit operations";
    for (const char* module : {"GM1", "GM2", "GM3"})
        addUnit("MembraneMulti12<Membrane12Cstr>",
                Defaults(module, std::string("Gas membrane unit ") + (module + 2)));
    addUnit("MultiCompressorIntercooled3", Defaults("C1", "Compressor"));
    addUnit("Mixer", Defaults("MIX", "Feed mixer"));
    addUnit("MultiCompressorIntercooled3", Defaults("C2", "Vacuum pump"));
    addUnit("MultiCompressorIntercooled3", Defaults("C3", "Vacuum pump"));
    addUnit("Compressor", Defaults("C4", "Compressor"));
    addUnit("FlashDegasser<StreamIdealLiquidVapor>", Defaults("COND", "CO2 condenser"));
    TARVO_LOG(3) << "Define stream objects and connect";
    addStream("StreamVapor", Defaults("S01", "System feed"), "source", "out", "MIX", "in");
    addStream("StreamVapor", Defaults("S04A", "Compressed recycle to GM1"), "C2", "gasout", "MIX", "in");
    addStream("StreamLiquid", Defaults("S04B", "Water condendate"), "C2", "liqout", "sink", "in");
    addStream("StreamVapor", Defaults("S01A", "Membrane feed to GM1"), "C1", "gasout", "GM1", "feed");
    addStream("StreamLiquid", Defaults("S01B", "Water condensate"), "C1", "liqout", "sink", "in");
    addStream("StreamVapor", Defaults("S01C", "Total feed to GM1"), "MIX", "out", "C1", "in");
    addStream("StreamVapor", Defaults("S02", "Permeate from membrane 1"), "GM1", "permeate", "C3", "in");
    addStream("StreamVapor", Defaults("S03", "Retentate from membrane 1 and membrane feed to GM2"), "GM1",
              "retentate", "GM2", "feed");
    addStream("StreamVapor", Defaults("S04", "Permeate from membrane 2"), "GM2", "permeate", "C2", "in");
    addStream("StreamVapor", Defaults("S05", "Retentate from membrane 2"), "GM2", "retentate", "sink", "in");
    addStream("StreamVapor", Defaults("S06", "Dry compressed permeate from membrane 1"), "C3", "gasout", "C4", "in");
    addStream("StreamLiquid", Defaults("S06A", "Water condensate"), "C3", "liqout", "sink", "in");
    addStream("StreamIdealLiquidVapor", Defaults("S06B", "Recompressed permeate"), "C4", "out", "COND", "in");
    addStream("StreamVapor", Defaults("S08", "Membrane feed to GM3"), "COND", "vapor", "GM3", "feed");
    addStream("StreamLiquid", Defaults("S07", "Water condensate"), "COND", "condensate", "sink", "in");
    addStream("StreamVapor", Defaults("S09", "Permeate from membrane 3"), "GM3", "permeate", "C4", "in");
    addStream("StreamVapor", Defaults("S10", "Retentate from membrane 3"), "GM3", "retentate", "sink", "in");
}

void Merkel2010Fig11::setup() {
    // The units inside set themselves up first: the engine its combustion, a chain its cuts.
    FlowSheet::setup();
    TARVO_LOG(3) << "Setting input variables";
    setInput(A, Value(3e6, "m2"));
    setInput(k2, Value(0.65));
    setInput(k3, Value(0.0003333333333333333));
    const std::pair<const char*, double> areas[] = {{"GM1", 1.05e6}, {"GM2", 1.95e6}, {"GM3", 1000.0}};
    for (const auto& [module, area] : areas) {
        const std::string m(module);
        setInput(Q(m + ".permeance", 0), Value(1000.0, "GPU")); // CO2
        setInput(Q(m + ".permeance", 2), Value(7000.0, "GPU")); // H2O
        setInput(Q(m + ".permeance", 3), Value(20.0, "GPU"));   // N2
        setInput(Q(m + ".deltaPretentate"), Value(100.0, "hPa"));
        setInput(Q(m + ".A"), Value(area, "m2"));
    }
    setInput(Q("GM1.Ppermeate"), Value(0.245, "bar"));
    setInput(Q("GM2.Ppermeate"), Value(0.245, "bar"));
    setInput(Q("GM3.Ppermeate"), Value(25.0, "bar"));
    const std::pair<const char*, double> trains[] = {{"C1", 2.2}, {"C2", 1.0}, {"C3", 25.0}};
    for (const auto& [train, P] : trains) {
        setCompressor(train, Value(P, "bar"), 0.8, 0.95, 0.98);
        setInput(Q(std::string(train) + ".T"), Value(313.15, "K"));
    }
    S("C4.option") = "P";
    setCompressor("C4", Value(50.0, "bar"), 0.85, 0.95, 0.98);
    // The condenser holds the temperature at the pressure of its feed.
    S("COND.option") = "DT";
    setInput(Q("COND.deltaP"), Value(0.0, "bar"));
    setInput(Q("COND.T"), Value(253.14999999999998, "K"));
    setFeed(*this, "S01", Value(1.0, "bar"), Value(298.15, "K"), "Nx", Value(20.5139298908, "kmol/s"),
            {{"CO2", 0.116}, {"H2O", 0.11}, {"N2", 0.774}});
    // The first estimates of the two recycles.
    setFeed(*this, "S04", Value(0.245, "bar"), Value(298.15, "K"), "Nx", Value(1.0, "kmol/s"),
            {{"CO2", 0.25}, {"N2", 0.75}});
    setFeed(*this, "S09", Value(1.1, "bar"), Value(298.15, "K"), "Nx", Value(1.0, "kmol/s"),
            {{"CO2", 0.05}, {"N2", 0.95}});
    addCut("S04");
    addCut("S09");
}

void Merkel2010Fig11::makeUserEquations(std::list<Assignment*>::iterator& it) {
    designEquation(it, k1, one - k2 - k3, "One - k2 - k3", "Fraction of total area to module I");
    designEquation(it, Q("GM1.A"), k1 * A, "k1 * A", "Area of module I");
    designEquation(it, Q("GM2.A"), k2 * A, "k2 * A", "Area of module II");
    designEquation(it, Q("GM3.A"), k3 * A, "k3 * A", "Area of module III");
}

void Merkel2010Fig11::post(SolutionMode, int) {
    TARVO_LOG(3) << "Entered for " << tag();
    productShares("S05", "S01", recovery, purity);
    checkPurity(*this, purity);
    power = Q("C1.We") + Q("C2.We") + Q("C3.We") + Q("C4.We");
}
