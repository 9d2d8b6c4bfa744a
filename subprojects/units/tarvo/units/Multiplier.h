#ifndef TARVO_UNITS_MULTIPLIER_H
#define TARVO_UNITS_MULTIPLIER_H

#include <tarvo/units/Connectivity.h>

// Copies its inlet to every outlet: the outlets together carry the inlet's flow as many times as there are
// outlets. Its balances say so, so that the check of the flowsheet does not take the copies for a leak.
class Multiplier : public Connectivity {
public:
    Multiplier(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
               Persistent* parent, Persistent* root);

    void go(SolutionMode mode, int level) override;
    Value massBalance() const override;
    Value energyBalance() const override;
};

#endif
