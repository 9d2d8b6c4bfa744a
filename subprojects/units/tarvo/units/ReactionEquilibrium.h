#ifndef TARVO_UNITS_REACTIONEQUILIBRIUM_H
#define TARVO_UNITS_REACTIONEQUILIBRIUM_H

#include <tarvo/units/ReactionYield.h>

// A reaction that reaches chemical equilibrium among ideal gases. With option "equilibrium", its default,
// conv is an unknown of the unit's solver and the reaction adds one equation, ln Kist = ln K: the
// mass-action product at the unit's outlet equals the equilibrium constant from the pure components' Gibbs
// energies at Teq = Tact + deltaT. With "conv" or "z" it is a yield reaction like any other.
class ReactionEquilibrium : public ReactionYield {
public:
    ReactionEquilibrium(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                        Persistent* parent, Persistent* root);

    bool extentGiven() const override { return ReactionYield::extentGiven() || isEquilibrium(); }
    bool isEquilibrium() const override { return option.value() == "equilibrium"; }

    // K = exp(-sum coeff_i g_i(Teq, 101325 Pa) / (R Teq)), g_i of the solid for a solid, else of the gas.
    void calculateKSollwert();
    // Kist = prod (x_i P / 101325 Pa)^coeff_i.
    void calculateKIstWert(const Vector& x);
    void calculateEquilibrium(const Vector& x);
    // ln Kist - ln K, both constants taken within 2.220446049250313e-16 to 4503599627370496: the range in
    // which a double resolves the composition that they stand for.
    void calculateResidual(Value& residual) const;

    Quantity Teq{"Teq", "Equilibrium temperature", "K", this, 298.15};
    Quantity Tact{"Tact", "Actual temperature", "K", this, 298.15};
    Quantity deltaT{"deltaT", "Temperature approach to equilibrium", "K", this, 0.0};
    Quantity P{"P", "Equilibrium pressure", "Pa", this, 101325.0};
    Quantity K{"K", "Equilibrium constant Sollwert", "", this, 1.0};
    Quantity Kist{"Kist", "Equilibrium constant Ist Wert", "", this, 1.0};

private:
    // The logarithms behind K and Kist, unclamped.
    Value lnK_{0.0};
    Value lnKist_{0.0};
};

#endif
