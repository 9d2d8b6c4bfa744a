#ifndef TARVO_PHASES_PHASESIMPLE_H
#define TARVO_PHASES_PHASESIMPLE_H

#include <tarvo/phases/PhaseMass.h>

// A phase of a mass-balance-only stream: component flows and mass fractions, no properties. Its type
// comes from the option typeP.
class PhaseSimple : public Phase::Mass {
public:
    PhaseSimple(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                Persistent* parent, Persistent* root);

    String typeP;
};

// The PhaseType named by an option text; a text that is none raises the enumerator error.
Tarvo::Utility::PhaseType phaseTypeOf(const std::string& text);

#endif
