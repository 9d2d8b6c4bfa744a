#ifndef TARVO_MODELS_MEMBRANEMULTI12_H
#define TARVO_MODELS_MEMBRANEMULTI12_H

#include <tarvo/flowsheet/FlowSheet.h>
#include <tarvo/models/ChainStages.h>
#include <tarvo/models/Membrane12.h>

#include <string>
#include <vector>

// A membrane with one feed as a series of lumped modules on the retentate side, whose permeates are mixed:
// the chain approximates the concentration profile along a real module. Area and retentate pressure drop are
// shared equally among the stages; every stage's estimated stage cut is driven to its result.
class MembraneMulti12 : public virtual Model, public FlowSheet {
public:
    MembraneMulti12(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                    Persistent* parent, Persistent* root);

    // "GM<i>", for i from 1 to the number of stages.
    std::string stagename(int i) const;

    void setup() override;
    void pre(SolutionMode mode, int level) override;
    void post(SolutionMode mode, int level) override;
    void makeUserEquations(std::list<Assignment*>::iterator& it) override;
    // The stages converge their stage cut estimates by passes: some for each stage.
    int sequential() const override;

    String typeV{"typeV", "the type of the membrane model", "Membrane12Rtsc", this};
    Quantity A{"A", "Membrane area", "m2", this, 1.0};
    Quantity deltaPretentate{"deltaPretentate", "Retentate pressure drop", "bar", this, 0.0};
    Quantity Ppermeate{"Ppermeate", "Pressure of permeate compartment", "bar", this, 1.0};
    Quantity stageCut{"stageCut", "Fraction of feed to permeate", "", this, 0.5};
    Integer stages{"stages", "total number of stages", 10, this};
    std::vector<Quantity> outSplit;
    std::vector<Quantity> permeance;

private:
    // The stages, the mixer of the permeates and the streams between them.
    void build_();

    ChainStages<Membrane12> stageUnits_;
};

#endif
