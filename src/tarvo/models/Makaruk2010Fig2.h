#ifndef TARVO_MODELS_MAKARUK2010FIG2_H
#define TARVO_MODELS_MAKARUK2010FIG2_H

#include <tarvo/models/TwoStepCascade.h>

#include <vector>

// Biogas upgrading in the two-step cascade with a low-pressure feed, of Makaruk et al. (2010), Figure 2: the
// raw biogas joins the second module's permeate before the one compressor; the first module's permeate is the
// off-gas, the second's retentate the upgraded gas. The modules are of the type of the option.
class Makaruk2010Fig2 : public TwoStepCascade {
public:
    Makaruk2010Fig2(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                    Persistent* parent, Persistent* root);

    void setup() override;
    void post(SolutionMode mode, int level) override;

    String type{"type", "the type of the multi-stage membrane model", "MembraneMulti12<Membrane12Rtsc>", this};
    Quantity power{"power", "Energy consumption", "W", this, 0.0};
    Quantity specificPower{"specificPower", "Specific compressor power", "J/kmol", this, 0.0};
    std::vector<Quantity> recovery;
    std::vector<Quantity> purity;
};

#endif
