#ifndef TARVO_PHASES_UNIFACGROUPS_H
#define TARVO_PHASES_UNIFACGROUPS_H

#include <map>
#include <vector>

class ComponentGeneric;

namespace Phase::Activity {

// The UNIFAC subgroups of each component: subgroup number to its count in the molecule.
using UnifacGroups = std::map<int, int>;

// The process-wide group assignment, one map per component in the order of the component list. Application
// code appends maps before a UNIFAC phase is built; a component without one takes the groups that
// catalogueUnifacGroups gives its catalogue entry.
class UnifacAssignment {
public:
    static void append(UnifacGroups groups);
    static void clear();
    // The groups of component i; null for a component that has none.
    static const UnifacGroups* of(int i);

private:
    static std::vector<UnifacGroups> groups_;
};

// The groups of a species of the component catalogue; null for one that the published groups cannot
// describe (the permanent gases, the solids, the pseudo-component).
const UnifacGroups* catalogueUnifacGroups(const ComponentGeneric& component);

} // namespace Phase::Activity

#endif
