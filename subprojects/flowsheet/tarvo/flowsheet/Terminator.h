#ifndef TARVO_FLOWSHEET_TERMINATOR_H
#define TARVO_FLOWSHEET_TERMINATOR_H

#include <tarvo/units/Connectivity.h>

// The boundary of a flowsheet's graph: "source", where all feeds and the tear copies of cut streams begin,
// and "sink", where all products and the cut streams themselves end.
class Terminator : public Connectivity {
public:
    Terminator(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
               Persistent* parent, Persistent* root);

    // The source calculates its streams: the feeds of a flowsheet at the top, and the tear copies, whose
    // values the convergence has just changed. The sink has nothing to calculate.
    void go(SolutionMode mode, int level) override;
    // What enters and leaves the flowsheet is no balance of the boundary's own.
    void checkBalance() override {}

    bool isSource() const { return tag() == "source"; }
};

#endif
