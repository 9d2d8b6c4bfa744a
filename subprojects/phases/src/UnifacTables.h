#ifndef TARVO_PHASES_SRC_UNIFACTABLES_H
#define TARVO_PHASES_SRC_UNIFACTABLES_H

#include <vector>

namespace Phase::Activity {

struct UnifacSubgroup {
    int subgroup;
    int mainGroup;
    double R; // volume parameter
    double Q; // surface parameter
};

struct UnifacInteraction {
    int m; // main groups
    int n;
    double a; // K
};

// The published tables, in subgroup order and in (m, n) order (UnifacTables.cpp, generated).
const std::vector<UnifacSubgroup>& unifacSubgroups();
const std::vector<UnifacInteraction>& unifacInteractions();

} // namespace Phase::Activity

#endif
