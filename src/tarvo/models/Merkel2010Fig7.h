#ifndef TARVO_MODELS_MERKEL2010FIG7_H
#define TARVO_MODELS_MERKEL2010FIG7_H

#include <tarvo/models/ReferenceFlowSheet.h>

#include <vector>

// The single-step membrane processes for the carbon dioxide in the flue gas of a power plant, of Merkel et
// al. (2010), Figure 7: a blower lifts the flue gas through one membrane, whose permeate a vacuum pump
// draws. Each keeps the nitrogen-rich retentate as its product.
class Merkel2010Fig7 : public ReferenceFlowSheet {
public:
    // The recoveries and purities of the retentate, and the power of the two machines.
    void post(SolutionMode mode, int level) override;

    Quantity powerC1{"powerC1", "Blower power", "W", this, 0.0};
    Quantity powerC2{"powerC2", "Vacuum pump power", "W", this, 0.0};
    Quantity power{"power", "Total energy consumption", "W", this, 0.0};
    std::vector<Quantity> recovery;
    std::vector<Quantity> purity;

protected:
    Merkel2010Fig7(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                   Persistent* parent, Persistent* root);
    // The flue gas of the plant into FEED, and the membrane's permeances and retentate pressure drop.
    void setFlueGasAndMembrane(const Value& area);
    // The permeate side of a counter-current chain, swept from its last stage.
    void setSweptSide();
    // The vacuum pump, an intercooled train to 1 bar.
    void setVacuumPump();
};

// Figure 7a with a free-flow multi-stage membrane and no sweep.
class Merkel2010Fig7a : public Merkel2010Fig7 {
public:
    Merkel2010Fig7a(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                    Persistent* parent, Persistent* root);
    void setup() override;
};

// Figure 7a with a counter-current membrane of the type of the option, swept by a small gas flow from outside.
class Merkel2010Fig7aCounterflow : public Merkel2010Fig7 {
public:
    Merkel2010Fig7aCounterflow(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                               Persistent* parent, Persistent* root);
    void setup() override;

    String type{"type", "the type of the multi-stage membrane model", "MembraneMulti22LinearCounterflow", this};
};

// Figure 7b: a part of the retentate, expanded through a valve, sweeps the permeate side of a counter-current
// membrane of the type of the option.
class Merkel2010Fig7b : public Merkel2010Fig7 {
public:
    Merkel2010Fig7b(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                    Persistent* parent, Persistent* root);
    void setup() override;

    String type{"type", "the type of the multi-stage membrane model", "MembraneMulti22RtscCounterflow", this};
};

#endif
