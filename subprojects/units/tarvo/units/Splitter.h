#ifndef TARVO_UNITS_SPLITTER_H
#define TARVO_UNITS_SPLITTER_H

#include <tarvo/units/Connectivity.h>

// Separates its inlet by phase: each phase of the inlet goes whole to the outlet that holds a phase of its
// type, at the inlet's temperature and pressure. There are as many outlets as the inlet has phases.
class Splitter : public Connectivity {
public:
    Splitter(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
             Persistent* parent, Persistent* root);

    void go(SolutionMode mode, int level) override;
};

#endif
