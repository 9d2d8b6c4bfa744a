#ifndef TARVO_MODELS_UPGRADING_H
#define TARVO_MODELS_UPGRADING_H

#include <tarvo/models/TwoStepCascade.h>

#include <vector>

// A biogas plant with two-step upgrading: the raw biogas divides between the engine and the cascade; the
// first module's permeate burns in the engine with the biogas, the second's returns to the compressor. Its
// own inputs govern the areas, the selectivity, the split to the engine and the pressures; the compressor's
// discharge pressure follows the wanted pressure of the upgraded gas pass by pass.
class Upgrading : public TwoStepCascade {
public:
    Upgrading(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
              Persistent* root);

    void setup() override;
    void post(SolutionMode mode, int level) override;
    // Those of the cascade, then the split to the engine and the pressures.
    void makeUserEquations(std::list<Assignment*>::iterator& it) override;

    Quantity Pin{"Pin", "Raw biogas pressure", "bar", this, 1.0};
    Quantity Pout{"Pout", "Upgraded biogas pressure", "bar", this, 1.0};
    Quantity splitToIce{"splitToIce", "Fraction of raw biogas to ICE", "", this, 0.0};
    Quantity LHVin{"LHVin", "LHV-based thermal power input", "W", this, 0.0};
    Quantity powerConsumption{"powerConsumption", "Energy consumption", "W", this, 0.0};
    Quantity powerProduced{"powerProduced", "Energy production", "W", this, 0.0};
    Quantity power{"power", "Net energy production", "W", this, 0.0};
    Quantity specificPower{"specificPower", "Specific compressor power", "J/kmol", this, 0.0};
    std::vector<Quantity> recoveryMembrane;
    std::vector<Quantity> recoveryTotal;
    std::vector<Quantity> purity;
};

#endif
