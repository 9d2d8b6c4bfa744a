#ifndef TARVO_CORE_SENSITIVITYCOLUMNS_H
#define TARVO_CORE_SENSITIVITYCOLUMNS_H

#include <string>
#include <vector>

// How a reader names the variables of a sensitivity run: by label (the tag path when there is none) and by
// the unit of their values (the item's own when the input gives none).
struct SensitivityColumn {
    std::string label;
    std::string unit;
    // "label [unit]", or the label alone for a number without unit.
    std::string heading() const { return unit.empty() ? label : label + " [" + unit + "]"; }
};

struct SensitivityColumns {
    std::vector<SensitivityColumn> controlled;
    std::vector<SensitivityColumn> monitored;
};

#endif
