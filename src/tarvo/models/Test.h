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

protected:
    // The test bed of a membrane with two feeds adds a sweep of carbon dioxide on the permeate side.
    enum class Feeds { one, two };
    Test(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
         Persistent* root, Feeds feeds);

private:
    const Feeds feeds_;
};

// The test bed of a membrane with two feeds: the biogas on the retentate side, a small sweep of carbon dioxide
// on the permeate side, and the module of the type of the option between them.
class Test2 : public Test {
public:
    Test2(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
          Persistent* root)
        : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
          Test(defaults, id, persistency, parent, root, Feeds::two) {}

    // As many passes as the module inside wants, if it is a flowsheet.
    int sequential() const override;
    // As the module inside, if it is a flowsheet: one that converges only by passes takes the bed with it.
    bool simultaneousSupported() const override;
};

// The purity checks of a product: a fraction below 0 or above 1, beyond rounding, is an error of `model`.
void checkPurity(Model& model, const std::vector<Quantity>& purity);

#endif
