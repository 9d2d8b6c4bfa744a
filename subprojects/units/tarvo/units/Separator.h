#ifndef TARVO_UNITS_SEPARATOR_H
#define TARVO_UNITS_SEPARATOR_H

#include <tarvo/core/ObjectiveNleAdVertex.h>
#include <tarvo/units/Connectivity.h>

#include <vector>

// Divides each component of its feed among nOutlets outlets by its own split fraction, outSplit[j][c];
// the last outlet takes what the others leave. The outlets leave at the temperature T, at pressures by the
// pressure option: "S" one drop per outlet (deltaPstream), otherwise the rule of pressureDrop for all.
// In a simultaneous solve the outlets' flashes and component flows are unknowns of the flowsheet, through
// this objective: with its outlet flows its own, a chain of separators keeps each unit's derivatives to its
// neighbours, where flows computed through the chain would carry the derivatives of every unit upstream.
class Separator : public Connectivity, public ObjectiveNleAdVertex {
public:
    Separator(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
              Persistent* parent, Persistent* root);

    void go(SolutionMode mode, int level) override;
    ObjectiveNleAd* objective() override { return this; }
    void setup_of() override;
    // The outlets from the feed, and the residuals of their flashes and flows at their present state.
    int calculateResidualsLocal() override;
    // The enthalpy that the unit takes out of what flows through it.
    Value energyBalance() const override { return duty; }

    Quantity T{"T", "Temperature", "K", this, 298.15};
    Quantity P{"P", "Pressure", "Pa", this, 101325.0};
    Quantity duty{"duty", "Duty inlet-outlet", "W", this, 0.0};
    Quantity deltaP{"deltaP", "Overall pressure drop", "Pa", this, 0.0};
    Quantity flowcoefficient{"flowcoefficient", "Flow coefficient", "kg/m7", this, 1000.0};
    Quantity deltaPMax{"deltaPMax", "Maximum allowable pressure drop", "Pa", this, 0.0};
    Quantity beta{"beta", "Fraction of deltaPmax when the pressure drop limitation logic wiill start acting",
                  "", this, 0.9};
    Quantity Tavg{"Tavg", "Mass-weighted average inlet temperature", "K", this, 298.15};
    String option{"option", "Pressure option: {DPKS}", "P", this};
    Integer nOutlets{"nOutlets", "The number of outlets", 2, this};
    std::vector<Quantity> outSplitTotal;
    std::vector<Quantity> deltaPstream;
    std::vector<std::vector<Quantity>> outSplit; // [outlet][component]

protected:
    // Splits that are not negative and add up to one for each component; a component whose splits to the
    // first outlets exceed one has them scaled to one, and none goes to the last outlet.
    void normalize_();
    // The outlets' flows and compositions from the feed kept by evaluate_ and the splits; with `unknown`
    // flows the outlets take the flows that the solver gave, and their differences from those of the splits
    // are the residuals of the flows; without, the flows of the splits are also the solver's next start.
    void calculateFlows_(bool unknown = false);

private:
    // Whether the unit has an inlet and all its outlets; fills the feeds.
    bool testconnect_();
    // The feed, duty, pressures, flows and temperature of the outlets, before their flashes.
    void evaluate_(int level, bool unknownFlows = false);
    // Takes the outlets' enthalpy out of the duty and adds up the balances.
    void finish_();

    std::vector<EdgeBase*> feeds_;
    std::vector<Value> feedFlows_;
    std::vector<Value> feedFractions_;
    // [outlet * components + component], kmol/s or kg/s: the flows as unknowns of a simultaneous solve, and
    // their residuals.
    std::vector<Value> outletFlows_;
    std::vector<Value> flowResiduals_;
    bool connected_ = false;
};

#endif
