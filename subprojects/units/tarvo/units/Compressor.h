#ifndef TARVO_UNITS_COMPRESSOR_H
#define TARVO_UNITS_COMPRESSOR_H

#include <tarvo/core/ObjectiveNleAdVertex.h>
#include <tarvo/units/Connectivity.h>
#include <tarvo/units/ElectricalConsumption.h>

#include <memory>
#include <vector>

class Node;
class Stream;

// Raises or lowers the pressure of its mixed inlets along an isentropic reference path: the inner stream
// "ISENTROPIC", of the outlet's type, takes the inlet's entropy at the outlet pressure, and the enthalpy that
// this costs, Wfis, is turned into the fluid power by the isentropic yield theta. A positive Wfis is a
// compression, which takes Wfis / theta; otherwise the machine expands and returns Wfis * theta. The
// mechanical and electrical efficiencies follow the same rule. The fluid power enters the outlet as enthalpy.
class Compressor : public Connectivity, public ElectricalConsumption, public ObjectiveNleAdVertex {
public:
    Compressor(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
               Persistent* parent, Persistent* root);
    ~Compressor() override;

    void go(SolutionMode mode, int level) override;
    // The unknowns of the outlet's flash, then those of the isentropic end state's.
    void setup_of() override;
    // One pass of the unit: the residuals of the outlet, then of the isentropic end state.
    int calculateResidualsLocal() override;
    ObjectiveNleAd* objective() override { return this; }
    // The enthalpy that the machine takes out of what flows through it: minus the fluid power.
    Value energyBalance() const override { return duty; }
    // The isentropic end state, once the unit has an outlet; null before.
    Stream* isentropic() const { return isentropic_; }

    Quantity T{"T", "Temperature", "K", this, 298.15};
    Quantity P{"P", "Pressure", "Pa", this, 101325.0};
    Quantity duty{"duty", "Duty inlet - outlet", "W", this, 0.0};
    Quantity alfa{"alfa", "Molar vapor fraction", "", this, 0.5};
    Quantity deltas{"deltas", "Entropy power", "W/K", this, 0.0};
    Quantity deltaP{"deltaP", "Pressure drop", "Pa", this, 0.0};
    Quantity flowcoefficient{"flowcoefficient", "Flow coefficient", "kg/m7", this, 1000.0};
    Quantity deltaPMax{"deltaPMax", "Maximum allowable pressure drop", "Pa", this, 0.0};
    Quantity beta{"beta", "Fraction of deltaPmax when the pressure drop limitation logic will start acting",
                  "", this, 0.9};
    Quantity Tavg{"Tavg", "Mass-weighted average inlet temperature", "K", this, 298.15};
    Integer NITER{"NITER", "Number of iterations", 0, this};
    String option{"option", "Pressure option: {PD}", "P", this};
    Quantity cr{"cr", "Compression ratio", "", this, 1.0};
    Quantity theta{"theta", "Isentropic yield", "", this, 1.0};
    Quantity Wfis{"Wfis", "Isentropic fluid power", "W", this, 0.0};
    Quantity Wf{"Wf", "Fluid power", "W", this, 0.0};
    Quantity Wm{"Wm", "Shaft power", "W", this, 0.0};
    Quantity etaM{"etaM", "Mechanical efficiency", "", this, 0.9};
    Quantity etaE{"etaE", "Electrical efficiency", "", this, 0.9};
    Quantity Tis{"Tis", "Isentropic outlet temperature", "K", this, 298.15};

private:
    // The connected streams and the isentropic end state; false, with the error, when an inlet or the outlet
    // is missing.
    bool ready_();
    // The calculation: sequentially each stream solves its own flash, otherwise each writes its residuals.
    void evaluate_(SolutionMode mode, int level);
    // The stream's flash residuals at `offset` of the unit's; returns their number.
    int flashResiduals_(Stream& stream, int offset);

    std::vector<EdgeBase*> feeds_; // the connected inlets
    // Not a child: it is made of the outlet's type at the first calculation, and not stored.
    std::unique_ptr<Node> isentropicNode_;
    Stream* isentropic_ = nullptr;
};

#endif
