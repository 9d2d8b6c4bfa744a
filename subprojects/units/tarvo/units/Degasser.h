#ifndef TARVO_UNITS_DEGASSER_H
#define TARVO_UNITS_DEGASSER_H

#include <tarvo/units/Connectivity.h>

// Separates the vapor phase of its inlet from the rest, without a flash: the vapor leaves at out1
// ("vapor"), the sum of the other phases at out2 ("condensate"), both at the inlet's state.
class Degasser : public Connectivity {
public:
    Degasser(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
             Persistent* parent, Persistent* root);

    void go(SolutionMode mode, int level) override;
};

#endif
