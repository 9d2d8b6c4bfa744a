#ifndef TARVO_PHASES_PHASEACTIVITY_H
#define TARVO_PHASES_PHASEACTIVITY_H

#include <tarvo/phases/PhaseGeneric.h>

// The registered liquid phase of the activity coefficient model T.
template <typename T> class PhaseActivity : public PhaseGeneric<T> {
public:
    PhaseActivity(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                  Persistent* parent, Persistent* root)
        : PhaseGeneric<T>(defaults, id, persistency, parent, root) {}
};

#endif
