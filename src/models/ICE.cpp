#include <tarvo/models/ICE.h>
#include <tarvo/models/Inputs.h>
#include <tarvo/units/Reaction.h>

using Tarvo::Persistency::Defaults;

namespace {
// The drum holds one reaction, the combustion of methane.
Defaults withCombustion(const Defaults& defaults) {
    Defaults d(defaults, defaults.tag(), defaults.description());
    d.setInteger("nReactions", 1);
    d.setString("embeddedTypeReactions[0]", "ReactionOxidationCH4");
    return d;
}
} // namespace

ICE::ICE(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
         Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      FlashDrum(withCombustion(defaults), id, persistency, parent, root) {
    for (Quantity* q : {&eta, &We, &Wt})
        addVariable(*q);
    We.setOutput();
    Wt.setOutput();
}

void ICE::setup() {
    option = "PT";
    setInput(P, Value(1.0, "atm"));
    setInput(T, Value(353.15, "K"));
    setInput(reactions[0]->z, Value(1.0));
}

void setEngineFeeds(Model& plant, const Value& pressure) {
    setFeed(plant, "BiogasClean", pressure, Value(313.15, "K"), "Nx", Value(0.006482480957734203, "kmol/s"),
            {{"CH4", 0.55}, {"CO2", 0.4}, {"H2O", 0.05}});
    setFeed(plant, "AirToICE", Value(1.0, "atm"), Value(293.15, "K"), "Mx", Value(10000.0, "kg/h"),
            {{"O2", 0.203680243016427},
             {"N2", 0.766031694925592},
             {"H2O", 0.0299970902822426},
             {"CO2", 0.000290971775737753}});
    setInput(plant.Q("ICE.eta"), Value(0.35));
}

void ICE::go(SolutionMode mode, int level) {
    FlashDrum::go(mode, level);
    Wt = duty;
    We = eta * Wt;
}
