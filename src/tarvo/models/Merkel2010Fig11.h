#ifndef TARVO_MODELS_MERKEL2010FIG11_H
#define TARVO_MODELS_MERKEL2010FIG11_H

#include <tarvo/models/ReferenceFlowSheet.h>

#include <vector>

// The three-step vacuum membrane process for the carbon dioxide in the flue gas of a power plant, of Merkel
// et al. (2010), Figure 11. The first module's permeate is compressed and the carbon dioxide condensed; the
// third module strips the condenser's vapour and its permeate returns before the last compressor; the second
// module's permeate returns to the feed. The product is the second module's retentate.
class Merkel2010Fig11 : public ReferenceFlowSheet {
public:
    Merkel2010Fig11(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                    Persistent* parent, Persistent* root);

    void setup() override;
    void post(SolutionMode mode, int level) override;
    // The areas of the modules from the total and the fractions of it.
    void makeUserEquations(std::list<Assignment*>::iterator& it) override;

    Quantity A{"A", "Total area", "m2", this, 1.0};
    // The fraction that the set-up leaves for module I, so that the first pass starts from its areas.
    Quantity k1{"k1", "Fraction of total area to module I", "", this, 0.3496666666666667};
    Quantity k2{"k2", "Fraction of total area to module II", "", this, 0.0};
    Quantity k3{"k3", "Fraction of total area to module III", "", this, 0.0};
    Quantity power{"power", "Total energy consumption for compression", "W", this, 0.0};
    std::vector<Quantity> recovery;
    std::vector<Quantity> purity;
};

#endif
