#ifndef TARVO_FLOWSHEET_MULTISTAGEONETWO_H
#define TARVO_FLOWSHEET_MULTISTAGEONETWO_H

#include <tarvo/flowsheet/FlowSheet.h>

#include <string>

// A line of nStage stages "S[i]", of the type typeT, each with a main outlet (out1) that feeds the next stage
// and a crossflow outlet (out2); the crossflows of all stages meet in the mixer MIX. The main line runs in
// streams of the type typeU: FEED into stage 0, "U[i]" from stage i to stage i + 1, OUT1 out of the last
// stage. The crossflows are of the type typeV: "V[i]" from stage i to MIX, and OUT2 out of MIX. The ports of
// the whole are in1 (FEED), out1 (OUT1) and out2 (OUT2).
class MultiStageOneTwo : public FlowSheet {
public:
    MultiStageOneTwo(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                     Persistent* parent, Persistent* root);

    void pre(SolutionMode, int) override {}
    // The pressure difference from the feed to the main product.
    void post(SolutionMode mode, int level) override;
    void makeUserEquations(std::list<Assignment*>::iterator&) override {}

    // Stage i, from 0.
    Object& stage(int i) const;

    Integer nStage{"nStage", "Number of stages", 1, this};
    Quantity deltaP{"deltaP", "Pressure difference", "Pa", this, 0.0};
};

#endif
