#ifndef TARVO_MODELS_MEMBRANE22_H
#define TARVO_MODELS_MEMBRANE22_H

#include <tarvo/units/MultiExchanger.h>

#include <vector>

class MultiReactionTransfer;

// A lumped gas-separation module with two feeds and two products: couple 1 is the retentate side, fed by the
// main feed, couple 2 the permeate side, fed by the sweep. The module is an exchanger of two streams whose
// solid barely conducts heat; one transfer between the sides moves the components. Of all of a component
// that enters on both sides, the share theta leaves on the permeate side; the two kinds of module differ
// only in how they work out theta from the feeds.
class Membrane22 : public MultiExchanger {
public:
    void go(SolutionMode mode, int level) override;

    Quantity deltaPretentate{"deltaPretentate", "Retentate compartment pressure drop", "Pa", this, 0.0};
    Quantity deltaPpermeate{"deltaPpermeate", "Permeate compartment pressure drop", "Pa", this, 0.0};
    Quantity Tavg{"Tavg", "Mol weighted average inlet temperature", "K", this, 0.0};
    // An item of the modules whose theta depends on an estimated stage cut, only.
    Quantity stageCutEst{"stageCutEst", "Estimated stage cut", "", this, 0.5};
    Quantity stageCut{"stageCut", "Fraction of feed to permeate", "", this, 0.1};
    Quantity delta{"delta", "Pressure ratio", "", this, 1.0};
    Quantity N{"N", "feeds total mole flow", "kmol/s", this, 0.0};
    std::vector<Quantity> permeance;
    std::vector<Quantity> permeationFactor;
    std::vector<Quantity> lamb;

protected:
    // `estimated`: the module has the item stageCutEst.
    Membrane22(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
               Persistent* root, bool estimated);

    // What both sides bring of one component, in flows (kmol/s) and molar fractions of each side (0 for a
    // side without flow).
    struct Feeds {
        Value n0, n1, x0, x1;
    };
    // The share of the component that leaves on the permeate side; c is the component's index. Only called
    // for a component that enters.
    virtual Value permeateShare(int c, const Feeds& feeds) const = 0;

private:
    MultiReactionTransfer& transfer_() const;
    // The pressures, the mean state of the feeds and theta, before the exchanger calculates.
    void preCalculate_();
    // The stage cut that results.
    void postCalculate_();
};

// The flux is taken at the inlet compositions of both sides.
class Membrane22Rtsc : public Membrane22 {
public:
    Membrane22Rtsc(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                   Persistent* parent, Persistent* root)
        : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
          Membrane22(defaults, id, persistency, parent, root, false) {}

protected:
    Value permeateShare(int c, const Feeds& feeds) const override;
};

// The driving force uses, on each side, the mean of inlet and outlet composition; the outlets follow from theta
// and the estimated stage cut, which the flowsheet around the module drives to the stage cut that results.
class Membrane22Linear : public Membrane22 {
public:
    Membrane22Linear(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                     Persistent* parent, Persistent* root)
        : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
          Membrane22(defaults, id, persistency, parent, root, true) {}

    int calculateResidualsLocal() override;

protected:
    Value permeateShare(int c, const Feeds& feeds) const override;
};

#endif
