#ifndef TARVO_UNITS_DIVIDER_H
#define TARVO_UNITS_DIVIDER_H

#include <tarvo/units/Connectivity.h>

#include <vector>

// Cuts its inlet into nOutlets parts of the same state, by the split fractions outSplit; the last outlet
// takes what the others leave.
class Divider : public Connectivity {
public:
    Divider(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
            Persistent* parent, Persistent* root);

    void go(SolutionMode mode, int level) override;

    Integer nOutlets{"nOutlets", "Number of streams connected at outlet", 2, this};
    std::vector<Quantity> outSplit;

private:
    // Fractions that are not negative and add up to one, written back into outSplit.
    void normalize_();
};

#endif
