#ifndef TARVO_MODELS_TWOSTEPCASCADE_H
#define TARVO_MODELS_TWOSTEPCASCADE_H

#include <tarvo/models/ReferenceFlowSheet.h>

// The two-step biogas upgrading cascade: one compressor feeds the membrane GMA, whose retentate the membrane
// GMB upgrades further; GMB's permeate returns to the compressor through the mixer MIX. The total area, the
// ratio of the two areas and the selectivity govern the modules.
class TwoStepCascade : public ReferenceFlowSheet {
public:
    // The module areas from the total and the ratio, and the methane permeances from the selectivity.
    void makeUserEquations(std::list<Assignment*>::iterator& it) override;

    Quantity A{"A", "Total area", "m2", this, 1.0};
    Quantity areaRatio{"areaRatio", "Ratio of A2 by A1", "", this, 1.0};
    Quantity alfa{"alfa", "Selectivity", "", this, 1.0};

protected:
    TwoStepCascade(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                   Persistent* parent, Persistent* root);
    // The permeances and area of the module `module`; the methane permeance follows from the selectivity.
    void setModule(const std::string& module, const Value& area);
    // The compressor COMPR, an intercooled train, to the pressure P.
    void setTrain(const Value& P);
};

#endif
