#include <tarvo/models/Makaruk2010Fig2.h>
#include <tarvo/models/Test.h>
#include <tarvo/utility/Log.h>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;
} // namespace

Makaruk2010Fig2::Makaruk2010Fig2(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                                 Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      TwoStepCascade(defaults, id, persistency, parent, root) {
    type = retrieveString(defaults, id, persistency, "typeX", "MembraneMulti12<Membrane12Rtsc>");
    addVariable(type);
    for (Quantity* q : {&power, &specificPower}) {
        addVariable(*q);
        q->setOutput();
    }
    addComponentVariables(recovery, "recovery", "recovery", "", 0.0);
    addComponentVariables(purity, "purity", "purity", "", 0.0);
    if (persistency) return; // the units and streams come from the store
    TARVO_LOG(3) << "Define unit operations";
    addUnit(type.value(), Defaults(defaults, "GMA", "Gas membrane unit A"));
    addUnit(type.value(), Defaults(defaults, "GMB", "Gas membrane unit B"));
    addUnit("MultiCompressorIntercooled2", Defaults("COMPR", "Compressor"));
    // A mixer takes as many inlets as are connected: the two streams below, whatever number it is told.
    addUnit("Mixer", Defaults("MIX", "Mixer"));
    TARVO_LOG(3) << "Define stream objects and connect";
    addStream("StreamVapor", Defaults("FEED", "System feed"), "source", "out", "MIX", "in");
    addStream("StreamVapor", Defaults("LOWP", "Combined feed"), "MIX", "out", "COMPR", "in");
    addStream("StreamVapor", Defaults("HIGHP", "Combined feed pressurized"), "COMPR", "gasout", "GMA", "feed");
    addStream("StreamLiquid", Defaults("HIGHPLIQ", "Condensate"), "COMPR", "liqout", "sink", "in");
    addStream("StreamVapor", Defaults("PERMA", "Permeate from GMA"), "GMA", "permeate", "sink", "in");
    addStream("StreamVapor", Defaults("RETEA", "Retentate from GMA"), "GMA", "retentate", "GMB", "feed");
    addStream("StreamVapor", Defaults("PERMB", "Permeate from GMB"), "GMB", "permeate", "MIX", "in");
    addStream("StreamVapor", Defaults("RETEB", "Retentate from GMB"), "GMB", "retentate", "sink", "in");
}

void Makaruk2010Fig2::setup() {
    // The units inside set themselves up first: the engine its combustion, a chain its cuts.
    FlowSheet::setup();
    TARVO_LOG(3) << "Setting input variables";
    setInput(A, Value(2800.0, "m2"));
    setInput(areaRatio, Value(4.0));
    setInput(alfa, Value(35.0));
    setModule("GMA", Value(560.0, "m2"));
    setModule("GMB", Value(2240.0, "m2"));
    setTrain(Value(10.0, "bar"));
    setFeed(*this, "FEED", Value(1.0, "bar"), Value(298.15, "K"), "Nx", Value(0.012231096146668308, "kmol/s"),
            {{"CO2", 0.4}, {"CH4", 0.6}});
    // The first estimate of the recycle.
    setFeed(*this, "PERMB", Value(1.0, "bar"), Value(298.15, "K"), "Nx", Value(5.0, "kmol/h"),
            {{"CO2", 0.9}, {"CH4", 0.1}});
    addCut("PERMB");
}

void Makaruk2010Fig2::post(SolutionMode, int) {
    TARVO_LOG(3) << "Entered for " << tag();
    productShares("RETEB", "FEED", recovery, purity);
    checkPurity(*this, purity);
    power = Q("COMPR.We");
    specificPower = power / Q("RETEB:Tphase.ndot");
}
