#ifndef TARVO_UNITS_SELECTOR_H
#define TARVO_UNITS_SELECTOR_H

#include <tarvo/units/Connectivity.h>

// Passes one of its inlets on to its outlet; the others end here, and its balances count them as gone.
class Selector : public Connectivity {
public:
    Selector(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
             Persistent* parent, Persistent* root);

    void go(SolutionMode mode, int level) override;
    Value massBalance() const override;
    Value energyBalance() const override;

    Integer selectedInlet{"selectedInlet", "Selected inlet stream", 0, this}; // 0-based
};

#endif
