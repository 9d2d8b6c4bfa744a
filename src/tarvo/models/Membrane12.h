#ifndef TARVO_MODELS_MEMBRANE12_H
#define TARVO_MODELS_MEMBRANE12_H

#include <tarvo/units/Separator.h>

#include <vector>

// A lumped gas-separation module with one feed and two products: outlet 1 the permeate, outlet 2 the
// retentate. Each component's share of the feed that permeates follows from its permeation factor, the
// pressure ratio and the estimated stage cut, explicitly: the flowsheet around the module makes the estimate
// equal to the stage cut that results. The two kinds of module differ only in that share.
class Membrane12 : public Separator {
public:
    Membrane12(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
               Persistent* root);

    void go(SolutionMode mode, int level) override;
    int calculateResidualsLocal() override;

    Quantity Ppermeate{"Ppermeate", "Pressure of permeate compartment", "bar", this, 1.0};
    Quantity deltaPretentate{"deltaPretentate", "Retentate pressure drop", "bar", this, 0.0};
    Quantity A{"A", "Membrane area", "m2", this, 1.0};
    Quantity stageCutEst{"stageCutEst", "Estimated stage cut", "", this, 0.5};
    Quantity Pretentate{"Pretentate", "Pressure of retentate compartment", "bar", this, 5.0};
    Quantity stageCut{"stageCut", "Fraction of feed to permeate", "", this, 0.1};
    Quantity delta{"delta", "Pressure ratio", "", this, 1.0};
    std::vector<Quantity> permeance;
    std::vector<Quantity> permeationFactor;

protected:
    // The share of a component's feed that permeates, from its permeation factor f, the pressure ratio
    // delta and the estimated stage cut theta.
    virtual Value permeateSplit(const Value& f, const Value& delta, const Value& theta) const = 0;

private:
    // The mean feed state, pressures and splits before the separator divides the feed.
    void preCalculate_();
    // The stage cut that results.
    void postCalculate_();
};

// The retentate side has the feed's composition.
class Membrane12Rtsc : public Membrane12 {
public:
    Membrane12Rtsc(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                   Persistent* root)
        : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
          Membrane12(defaults, id, persistency, parent, root) {}

protected:
    Value permeateSplit(const Value& f, const Value& delta, const Value& theta) const override;
};

// Both compartments are perfectly mixed: the retentate side has the retentate's composition.
class Membrane12Cstr : public Membrane12 {
public:
    Membrane12Cstr(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                   Persistent* root)
        : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
          Membrane12(defaults, id, persistency, parent, root) {}

protected:
    Value permeateSplit(const Value& f, const Value& delta, const Value& theta) const override;
};

#endif
