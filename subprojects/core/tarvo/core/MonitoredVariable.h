#ifndef TARVO_CORE_MONITOREDVARIABLE_H
#define TARVO_CORE_MONITOREDVARIABLE_H

#include <string>

// An output of a sensitivity run: the quantity at `fullTag`, recorded in `unit` (the item's own unit when
// empty) after every round.
struct MonitoredVariable {
    std::string fullTag;
    std::string label;
    std::string unit;
};

#endif
