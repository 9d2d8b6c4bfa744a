#ifndef TARVO_MODELS_TEST_H
#define TARVO_MODELS_TEST_H

#include <tarvo/flowsheet/FlowSheet.h>

#include <vector>

// The test bed of a membrane with one feed: a biogas feed into one module of the type of the option, its
// permeate and retentate to the sink, and the module's stage cut estimate driven to its result.
class Test : public virtual Model, public FlowSheet {
public:
    Test(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
         Persistent* root);

    void setup() override;
    void pre(SolutionMode, int) override {}
    void post(SolutionMode mode, int level) override;
    void makeUserEquations(std::list<Assignment*>::iterator& it) override;

    String type{"type", "the type of the multi-stage membrane model", "Membrane12Rtsc", this};
    std::vector<Quantity> recovery;
    std::vector<Quantity> purity;
};

// The purity checks of a product: a fraction below 0 or above 1, beyond rounding, is an error of `model`.
void checkPurity(Model& model, const std::vector<Quantity>& purity);

#endif
