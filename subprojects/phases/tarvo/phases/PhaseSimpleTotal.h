#ifndef TARVO_PHASES_PHASESIMPLETOTAL_H
#define TARVO_PHASES_PHASESIMPLETOTAL_H

#include <tarvo/phases/PhaseMass.h>
#include <tarvo/phases/Total.h>

// The total of a mass-balance-only stream.
class PhaseSimpleTotal : public Phase::Mass, public Phase::Total {
public:
    PhaseSimpleTotal(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                     Persistent* parent, Persistent* root)
        : Mass(defaults, id, persistency, parent, root) {}
};

#endif
