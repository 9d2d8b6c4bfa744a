#ifndef TARVO_UNITS_MULTIREACTIONELECTROCHEMICAL_H
#define TARVO_UNITS_MULTIREACTIONELECTROCHEMICAL_H

#include <tarvo/units/MultiReaction.h>

// A stack of nCells electrochemical cells between two sides: a fuel cell (action 1) or an electrolyzer
// (action -1). The reaction is written as the cell runs it, per two electrons, with its stoichiometry in
// coeff[side]; the current density J gives the extent conv = nCells J A / (2 F). The cell voltage is the
// reversible one, from the reaction's Gibbs energy at Teq and the mass-action products of the sides, less
// the ohmic loss in a fuel cell and plus it in an electrolyzer, so that an electrolyzer always takes at
// least the reaction's Gibbs energy. Power is what the stack delivers (fuel cell) or takes (electrolyzer).
// With option "V", "I" or "J" the unit that holds the cell makes J an unknown and electricalResidual() its
// equation; without one, J is an input.
class MultiReactionElectrochemical : public MultiReaction<2> {
public:
    MultiReactionElectrochemical(const Tarvo::Persistency::Defaults& defaults, uint32_t id,
                                 Persistency* persistency, Persistent* parent, Persistent* root);

    void calculate(int level) override;
    // The cell at the unit's solid temperature and the sides' pressures; calculate() uses them.
    void atState(const Value& T, const Value& P0side, const Value& P1side);
    // E0, Kin, Kout, E and the voltages and power, from the inlet and outlet compositions of the sides.
    void calculateEquilibrium();
    bool electrical() const { return !option.value().empty(); }
    // The equation of the electrical option, dimensionless: set value minus value, per 1 V, 1 A or 1 A/m2.
    Value electricalResidual() const;
    // The power that leaves the sides' heat balance as electricity: action times Power.
    Value electricalPower() const { return action * Power; }

    Quantity action{"action", "Cell action 1 for fuelcell and -1 for electrolyzers", "", this, 1.0};
    Quantity Teq{"Teq", "Equilibrium temperature", "K", this, 298.15};
    Quantity Tact{"Tact", "Actual temperature", "K", this, 298.15};
    Quantity deltaT{"deltaT", "Temperature approach to equilibrium", "K", this, 0.0};
    Quantity Kin{"Kin", "Equilibrium constant at inlet stream compositions", "", this, 1.0};
    Quantity Kout{"Kout", "Equilibrium constant at outlet stream compositions", "", this, 1.0};
    Quantity H{"H", "Cell length", "m", this, 0.595};
    Quantity W{"W", "Cell width", "m", this, 1.195};
    Quantity A{"A", "Cell area", "m2", this, 0.0};
    Quantity nCells{"nCells", "Number of cells in a stack", "", this, 40.0};
    Quantity E0{"E0", "Thermodynamic voltage", "V", this, 0.0};
    Quantity E{"E", "Open circuit voltage OCV", "V", this, 0.0};
    Quantity Rarea{"Rarea", "Areic electrical resistance", "ohm*m2", this, 0.0};
    Quantity F{"F", "Faraday constant", "C/kmol", this, 96485339.9};
    Quantity J{"J", "Average value of current density", "A/m2", this, 0.0};
    Quantity Jset{"Jset", "Set current density used if J option", "A/m2", this, 0.0};
    Quantity I{"I", "Current", "A", this, 1.0};
    Quantity Iset{"Iset", "Set current used if I option", "A", this, 0.0};
    Quantity Voffset{"Voffset", "Correction to cell voltage to account for the effect of the microscale", "V", this,
                     0.0};
    Quantity V{"V", "Cell voltage", "V", this, 0.0};
    Quantity Vset{"Vset", "Set cell voltage used if V option", "V", this, 0.0};
    Quantity Vstack{"Vstack", "Stack voltage", "V", this, 0.0};
    Quantity Power{"Power", "Stack net power output", "W", this, 1.0};
    Quantity PowerDensity{"PowerDensity", "Stack areic power density", "W/m2", this, 0.0};
    String option;
    String averageOption;

private:
    // -action times the sum over both sides of coeff ln(x P / P0) at the given side flows.
    Value lnMassAction_(const std::array<std::vector<Value>, 2>& flows) const;

    Value pressures_[2]{Value(101325.0, "Pa"), Value(101325.0, "Pa")};
};

#endif
