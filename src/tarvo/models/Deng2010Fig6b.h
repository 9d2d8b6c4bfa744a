#ifndef TARVO_MODELS_DENG2010FIG6B_H
#define TARVO_MODELS_DENG2010FIG6B_H

#include <tarvo/models/ReferenceFlowSheet.h>

#include <vector>

// Biogas upgrading in two membrane steps without recycle, of Deng (2010), Figure 6b: the first
// module's permeate is compressed again through the second module, and the retentates of both are the
// upgraded gas.
class Deng2010Fig6b : public ReferenceFlowSheet {
public:
    Deng2010Fig6b(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                  Persistent* parent, Persistent* root);

    void setup() override;
    void post(SolutionMode mode, int level) override;
    // The areas of the modules from the total and the fractions of it.
    void makeUserEquations(std::list<Assignment*>::iterator& it) override;

    Quantity A{"A", "Total area", "m2", this, 1.0};
    Quantity k1{"k1", "Fraction of total area to module I", "", this, 0.0};
    // The fraction that the set-up leaves for module II, so that the first pass starts from its areas.
    Quantity k2{"k2", "Fraction of total area to module II", "", this, 0.21};
    Quantity powerC1{"powerC1", "Blower power", "W", this, 0.0};
    Quantity powerC2{"powerC2", "Vacuum pump power", "W", this, 0.0};
    Quantity power{"power", "Total energy consumption", "W", this, 0.0};
    std::vector<Quantity> recovery;
    std::vector<Quantity> purity;
};

#endif
