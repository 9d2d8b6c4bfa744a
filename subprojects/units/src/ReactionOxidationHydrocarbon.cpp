#include <tarvo/units/ReactionOxidationHydrocarbon.h>

#include <climits>
#include <string>

using Tarvo::Persistency::Defaults;

namespace {
// An element of a formula: the symbol, and the count unless it is 1.
std::string element(const char* symbol, int count) {
    return count == 1 ? symbol : symbol + std::to_string(count);
}
} // namespace

Stoichiometry hydrocarbonCombustion(int carbons, int hydrogens) {
    const std::string fuel = element("C", carbons) + element("H", hydrogens);
    const double c = carbons, h = hydrogens;
    return {fuel, {{fuel, -1.0}, {"O2", -(c + h / 4.0)}, {"CO2", c}, {"H2O", h / 2.0}}};
}

ReactionOxidationHydrocarbon::ReactionOxidationHydrocarbon(const Defaults& defaults, uint32_t id,
                                                           Persistency* persistency, Persistent* parent,
                                                           Persistent* root)
    : ReactionYield(defaults, id, persistency, parent, root) {
    nC = retrieveInteger(defaults, id, persistency, "nC", 0, INT_MAX, 1);
    nH = retrieveInteger(defaults, id, persistency, "nH", 0, INT_MAX, 4);
    addVariable(nC);
    addVariable(nH);
    setStoichiometry(hydrocarbonCombustion(nC.value(), nH.value()));
}
