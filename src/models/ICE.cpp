#include <tarvo/models/ICE.h>
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

void setInput(Value& q, const Value& value) {
    q = value;
    q.setInput();
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

void ICE::go(SolutionMode mode, int level) {
    FlashDrum::go(mode, level);
    Wt = duty;
    We = eta * Wt;
}
