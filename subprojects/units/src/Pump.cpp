#include <tarvo/streams/Stream.h>
#include <tarvo/units/Pump.h>

using Tarvo::Persistency::Defaults;

namespace {
// A pump passes its fluid on adiabatically unless told otherwise.
Defaults adiabatic(const Defaults& defaults) {
    Defaults d(defaults, defaults.tag(), defaults.description());
    if (!defaults.hasString("option")) d.setString("option", "PH");
    return d;
}
} // namespace

Pump::Pump(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
           Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      ElectricalConsumption(defaults, id, persistency, parent, root),
      FlashDrum(adiabatic(defaults), id, persistency, parent, root) {
    for (Quantity* q : {&etaM, &etaE, &rho, &Wf, &Wm, &cr})
        addVariable(*q);
    for (Quantity* q : {&rho, &Wf, &Wm, &cr})
        q->setOutput();
}

void Pump::go(SolutionMode mode, int level) {
    FlashDrum::go(mode, level);
    // Without an outlet or without flow there is nothing to pump; the drum has said so.
    if (outletstreams_.empty() || !outletstreams_[0] || !(mdotin.toDouble() > 0)) return;
    const Stream& out = *outletstreams_[0];
    rho = out.Tphase->Q("rho");
    // deltaP is the drop from inlet to outlet: a pump that raises the pressure takes a positive power.
    Wf = -mdotin * deltaP / rho;
    Wm = Wf / etaM;
    We = Wm / etaE;
    cr = out.P / deltaPMax; // deltaPMax holds the lowest inlet pressure
    calculateElectricalConsumption(0);
}
