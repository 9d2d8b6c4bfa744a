#ifndef TARVO_UNITS_REACTION_H
#define TARVO_UNITS_REACTION_H

#include <tarvo/core/Model.h>

#include <string>
#include <utility>
#include <vector>

namespace Phase {
class Mass;
}

// A stoichiometry by component names: the key component and the coefficients, negative for reactants.
struct Stoichiometry {
    std::string key;
    std::vector<std::pair<std::string, double>> coefficients;
};

// A reaction embedded in a unit: a stoichiometric vector and an extent, applied to the flows of one phase
// of the unit. The extent conv is in kmol/s of the reaction as written: component i changes by coeff[i]
// times conv, in kmol/s on a molar phase and in kg/s (times its molecular weight) on a mass phase.
class Reaction : public Model {
public:
    Reaction(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
             Persistent* parent, Persistent* root);

    Tarvo::Utility::Category category() const override { return Tarvo::Utility::Category::option; }
    // One step on its phase: precalc, bound, postcalc.
    void calculate(int level) override;
    void setup() override {}
    void initializeNonPersistents() override {}
    ObjectiveNleAd* objective() override { return nullptr; }

    virtual void precalc() = 0;
    virtual void bound() = 0;
    virtual void postcalc() = 0;

    // The phase whose flows the reaction changes; it belongs to the unit.
    void workOn(Phase::Mass* phase) { phase_ = phase; }
    Phase::Mass* phase() const { return phase_; }
    // Saves the phase's component flows as this reaction's inlet flows, on the basis of the phase.
    void init();
    const Value& inletFlow(int i) const { return inletFlows_[i]; }
    // The change of component i's flow at the actual extent.
    Value deltan(int i) const { return perExtent_[i] * actconv; }
    // Flow of component i per unit of extent: coeff[i] on a molar phase, coeff[i] times the molecular weight
    // on a mass phase.
    const Value& perExtent(int i) const { return perExtent_[i]; }
    const Quantity& keyCoefficient() const { return coeff[keycomp.value()]; }

    Quantity conv{"conv", "Rate of Reaction", "kmol/s", this, 0.0};
    Quantity actconv{"actconv", "Actual rate of Reaction", "kmol/s", this, 0.0};
    Quantity z{"z", "Fractional conversion in terms of key component", "", this, 0.0};
    Integer keycomp{"keycomp", "Key component", -1, this};
    std::vector<Quantity> coeff;
    // Mass of component i per mass of the key converted: the coefficients add up to zero exactly when the
    // stoichiometry conserves mass.
    std::vector<Quantity> coeffm;

protected:
    // Coefficients and key by component name; a name that the component list lacks raises its lookup error.
    void setStoichiometry(const Stoichiometry& stoichiometry);

private:
    Phase::Mass* phase_ = nullptr;
    std::vector<Value> inletFlows_;
    std::vector<Value> perExtent_;
};

#endif
