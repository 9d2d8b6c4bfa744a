#ifndef TARVO_MODELS_CHAINSTAGES_H
#define TARVO_MODELS_CHAINSTAGES_H

#include <tarvo/persistency/NodeFactory.h>

#include <vector>

// The stage units of a membrane chain, found by their tags once: the chain hands them their share of its
// design at every pass, which lookups by tag path would make grow with the number of stages squared.
template <typename Stage> class ChainStages {
public:
    // The stages of `chain`, which names stage i (from 1) by stagename(i).
    template <typename Chain> const std::vector<Stage*>& of(const Chain& chain) {
        const int n = chain.stages.value();
        if (static_cast<int>(stages_.size()) != n) {
            stages_.clear();
            for (int i = 1; i <= n; ++i)
                stages_.push_back(my_cast<Stage*>(&chain.child(chain.stagename(i)), "ChainStages"));
        }
        return stages_;
    }

private:
    std::vector<Stage*> stages_;
};

#endif
