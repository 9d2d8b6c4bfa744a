#ifndef TARVO_UNITS_REACTIONOXIDATIONHYDROCARBON_H
#define TARVO_UNITS_REACTIONOXIDATIONHYDROCARBON_H

#include <tarvo/units/ReactionYield.h>

// CcHh + (c + h/4) O2 -> c CO2 + (h/2) H2O, the hydrocarbon being the key. By the element balance: C c = c,
// H h = 2 (h/2), O 2 (c + h/4) = 2 c + h/2. The hydrocarbon is the component named by its formula, as
// "CH4", "C3H8" or "C10H8".
Stoichiometry hydrocarbonCombustion(int carbons, int hydrogens);

// The complete combustion of the hydrocarbon with nC carbon and nH hydrogen atoms, given as options.
class ReactionOxidationHydrocarbon : public ReactionYield {
public:
    ReactionOxidationHydrocarbon(const Tarvo::Persistency::Defaults& defaults, uint32_t id,
                                 Persistency* persistency, Persistent* parent, Persistent* root);

    Integer nC{"nC", "Number of carbon atoms of the hydrocarbon", 1, this};
    Integer nH{"nH", "Number of hydrogen atoms of the hydrocarbon", 4, this};
};

#endif
