#ifndef TARVO_MODELS_CHAINSTAGES_H
#define TARVO_MODELS_CHAINSTAGES_H

#include <tarvo/persistency/NodeFactory.h>

#include <vector>

// The stage units of a membrane chain, found by their tags until the chain's children change: the chain hands
// them their share of its design at every pass, where a tag path built and looked up for every quantity of
// every stage cost more than the handing itself.
template <typename Stage> class ChainStages {
public:
    // The stages of `chain`, which names stage i (from 1) by stagename(i).
    template <typename Chain> const std::vector<Stage*>& of(const Chain& chain) {
        if (version_ == chain.childrenVersion()) return stages_;
        stages_.clear();
        for (int i = 1; i <= chain.stages.value(); ++i)
            stages_.push_back(my_cast<Stage*>(&chain.child(chain.stagename(i)), "ChainStages"));
        version_ = chain.childrenVersion();
        return stages_;
    }

private:
    std::vector<Stage*> stages_;
    unsigned version_ = ~0u; // the chain's children's version that stages_ holds
};

#endif
