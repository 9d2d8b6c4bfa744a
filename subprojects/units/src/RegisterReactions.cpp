#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/units/MultiReactionTransfer.h>
#include <tarvo/units/ReactionEquilibrium.h>
#include <tarvo/units/ReactionOxidationHydrocarbon.h>
#include <tarvo/units/RegisterReactions.h>

#include <climits>

using Tarvo::Persistency::Defaults;
using Tarvo::Persistency::IntegerOption;
using Tarvo::Persistency::StringOption;

namespace {

// A reaction type of the catalogue: a yield or an equilibrium reaction of fixed stoichiometry. The
// species are those of the component list under their formulas; the stoichiometries that follow from a
// compound's name are written below with their element balances.
template <typename Base, const Stoichiometry& S> class ReactionFixed : public Base {
public:
    ReactionFixed(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                  Persistent* root)
        : Base(defaults, id, persistency, parent, root) {
        this->setStoichiometry(S);
    }
};

// CO2 + H2 -> CO + H2O. C 1 = 1, O 2 = 1 + 1, H 2 = 2.
const Stoichiometry waterGasShift{"CO2", {{"CO2", -1.0}, {"H2", -1.0}, {"CO", 1.0}, {"H2O", 1.0}}};
// Carbon with water to CO and H2: C + H2O -> CO + H2. C 1 = 1, H 2 = 2, O 1 = 1.
const Stoichiometry waterGasC{"C", {{"C", -1.0}, {"H2O", -1.0}, {"CO", 1.0}, {"H2", 1.0}}};
// CO + 0.5 O2 -> CO2. C 1 = 1, O 1 + 1 = 2.
const Stoichiometry oxidationCO{"CO", {{"CO", -1.0}, {"O2", -0.5}, {"CO2", 1.0}}};
// Steam reforming of an alkane, CnH2n+2 + n H2O -> n CO + (2n + 1) H2: C n = n, O n = n, H 2n + 2 + 2n =
// 2 (2n + 1).
// CH4 + H2O -> CO + 3 H2: C 1 = 1, O 1 = 1, H 4 + 2 = 6.
const Stoichiometry reformingCH4{"CH4", {{"CH4", -1.0}, {"H2O", -1.0}, {"CO", 1.0}, {"H2", 3.0}}};
// C2H6 + 2 H2O -> 2 CO + 5 H2: C 2 = 2, O 2 = 2, H 6 + 4 = 10.
const Stoichiometry reformingC2H6{"C2H6", {{"C2H6", -1.0}, {"H2O", -2.0}, {"CO", 2.0}, {"H2", 5.0}}};
// C3H8 + 3 H2O -> 3 CO + 7 H2: C 3 = 3, O 3 = 3, H 8 + 6 = 14.
const Stoichiometry reformingC3H8{"C3H8", {{"C3H8", -1.0}, {"H2O", -3.0}, {"CO", 3.0}, {"H2", 7.0}}};
// Methanol reformed by the same rule, to CO and H2, brings the oxygen for its carbon along and takes no
// water: CH3OH -> CO + 2 H2. C 1 = 1, O 1 = 1, H 4 = 4.
const Stoichiometry reformingMeOH{"CH3OH", {{"CH3OH", -1.0}, {"CO", 1.0}, {"H2", 2.0}}};
// 0.5 N2 + 1.5 H2 -> NH3, stored with the signs reversed, ammonia the key: N 1 = 1, H 3 = 3.
const Stoichiometry synthesisNH3{"NH3", {{"NH3", -1.0}, {"N2", 0.5}, {"H2", 1.5}}};
// 0.5 N2 + O2 -> NO2. N 1 = 1, O 2 = 2.
const Stoichiometry oxidationN2{"N2", {{"N2", -0.5}, {"O2", -1.0}, {"NO2", 1.0}}};
// CH3OH + 1.5 O2 -> CO2 + 2 H2O. C 1 = 1, H 4 = 4, O 1 + 3 = 2 + 2.
const Stoichiometry oxidationMeOH{"CH3OH", {{"CH3OH", -1.0}, {"O2", -1.5}, {"CO2", 1.0}, {"H2O", 2.0}}};
// Ammonia burns completely to nitrogen and water: NH3 + 0.75 O2 -> 0.5 N2 + 1.5 H2O. N 1 = 1, H 3 = 3,
// O 1.5 = 1.5.
const Stoichiometry oxidationNH3{"NH3", {{"NH3", -1.0}, {"O2", -0.75}, {"N2", 0.5}, {"H2O", 1.5}}};
// C6H5OH + 7 O2 -> 6 CO2 + 3 H2O. C 6 = 6, H 6 = 6, O 1 + 14 = 12 + 3.
const Stoichiometry oxidationPhenol{"C6H5OH", {{"C6H5OH", -1.0}, {"O2", -7.0}, {"CO2", 6.0}, {"H2O", 3.0}}};
// C + O2 -> CO2. C 1 = 1, O 2 = 2.
const Stoichiometry oxidationC{"C", {{"C", -1.0}, {"O2", -1.0}, {"CO2", 1.0}}};
// H2 + 0.5 O2 -> H2O. H 2 = 2, O 1 = 1.
const Stoichiometry oxidationH2{"H2", {{"H2", -1.0}, {"O2", -0.5}, {"H2O", 1.0}}};
// The hydrocarbons by the rule of hydrocarbonCombustion: CH4 + 2 O2 -> CO2 + 2 H2O,
// C2H6 + 3.5 O2 -> 2 CO2 + 3 H2O, C2H4 + 3 O2 -> 2 CO2 + 2 H2O.
const Stoichiometry oxidationCH4 = hydrocarbonCombustion(1, 4);
const Stoichiometry oxidationC2H6 = hydrocarbonCombustion(2, 6);
const Stoichiometry oxidationC2H4 = hydrocarbonCombustion(2, 4);

template <const Stoichiometry& S> using Yield = ReactionFixed<ReactionYield, S>;
template <const Stoichiometry& S> using Equilibrium = ReactionFixed<ReactionEquilibrium, S>;

constexpr double iconSize = 40;
const StringOption yieldOption{"option", "Calculation option", "z", ""};
const StringOption equilibriumOption{"option", "Calculation option", "equilibrium", ""};

template <typename C>
void reaction(const std::string& name, const std::string& description, const StringOption& option,
              const std::vector<IntegerOption>& integers = {}) {
    NodeFactory::registerType<C>(name, description, "option", false, integers, {option}, {}, "", iconSize,
                                 iconSize);
}

template <const Stoichiometry& S> void yield(const std::string& name, const std::string& description) {
    reaction<Yield<S>>(name, description, yieldOption);
}

template <const Stoichiometry& S> void equilibrium(const std::string& name, const std::string& description) {
    reaction<Equilibrium<S>>(name, description, equilibriumOption);
}

void hydrocarbon(const std::string& name, const std::string& description, int carbons, int hydrogens) {
    NodeFactory::registerAlias("ReactionOxidationHydrocarbon", name, description,
                               Defaults().setInteger("nC", carbons).setInteger("nH", hydrogens), "", iconSize,
                               iconSize);
}

} // namespace

void registerReactions() {
    if (NodeFactory::registered("ReactionYield")) return;
    reaction<ReactionYield>("ReactionYield", "Reaction with a given extent or fractional conversion",
                            yieldOption);
    yield<waterGasShift>("ReactionWaterGasShift", "Reverse water-gas shift CO2 + H2 -> CO + H2O");
    yield<waterGasC>("ReactionWaterGasC", "Water-gas reaction of carbon C + H2O -> CO + H2");
    equilibrium<oxidationCH4>("ReactionOxidationEquilibriumCH4",
                              "Methane combustion CH4 + 2 O2 -> CO2 + 2 H2O at equilibrium");
    yield<oxidationCO>("ReactionOxidationCO", "Carbon monoxide oxidation CO + 0.5 O2 -> CO2");
    yield<reformingCH4>("ReactionReformingCH4", "Methane steam reforming CH4 + H2O -> CO + 3 H2");
    yield<reformingC3H8>("ReactionReformingC3H8", "Propane steam reforming C3H8 + 3 H2O -> 3 CO + 7 H2");
    equilibrium<waterGasShift>("ReactionWaterGasShiftEquilibrium",
                               "Reverse water-gas shift CO2 + H2 -> CO + H2O at equilibrium");
    equilibrium<reformingCH4>("ReactionReformingEquilibriumCH4",
                              "Methane steam reforming CH4 + H2O -> CO + 3 H2 at equilibrium");
    equilibrium<reformingC3H8>("ReactionReformingEquilibriumC3H8",
                               "Propane steam reforming C3H8 + 3 H2O -> 3 CO + 7 H2 at equilibrium");
    yield<reformingC2H6>("ReactionReformingC2H6", "Ethane steam reforming C2H6 + 2 H2O -> 2 CO + 5 H2");
    equilibrium<reformingC2H6>("ReactionReformingEquilibriumC2H6",
                               "Ethane steam reforming C2H6 + 2 H2O -> 2 CO + 5 H2 at equilibrium");
    yield<oxidationMeOH>("ReactionOxidationMeOH", "Methanol combustion CH3OH + 1.5 O2 -> CO2 + 2 H2O");
    yield<reformingMeOH>("ReactionReformingMeOH", "Methanol reforming CH3OH -> CO + 2 H2");
    equilibrium<reformingMeOH>("ReactionReformingEquilibriumMeOH",
                               "Methanol reforming CH3OH -> CO + 2 H2 at equilibrium");
    yield<synthesisNH3>("ReactionSynthesisNH3", "Ammonia synthesis 0.5 N2 + 1.5 H2 -> NH3, ammonia the key");
    equilibrium<synthesisNH3>("ReactionSynthesisEquilibriumNH3",
                              "Ammonia synthesis 0.5 N2 + 1.5 H2 -> NH3 at equilibrium, ammonia the key");
    yield<oxidationN2>("ReactionOxidationN2", "Nitrogen oxidation 0.5 N2 + O2 -> NO2");
    equilibrium<oxidationN2>("ReactionOxidationEquilibriumN2",
                             "Nitrogen oxidation 0.5 N2 + O2 -> NO2 at equilibrium");
    yield<oxidationNH3>("ReactionOxidationNH3", "Ammonia combustion NH3 + 0.75 O2 -> 0.5 N2 + 1.5 H2O");
    yield<oxidationPhenol>("ReactionOxidationPhenol", "Phenol combustion C6H5OH + 7 O2 -> 6 CO2 + 3 H2O");
    yield<oxidationC>("ReactionOxidationC", "Carbon combustion C + O2 -> CO2");
    yield<oxidationH2>("ReactionOxidationH2", "Hydrogen combustion H2 + 0.5 O2 -> H2O");
    yield<oxidationCH4>("ReactionOxidationCH4", "Methane combustion CH4 + 2 O2 -> CO2 + 2 H2O");
    yield<oxidationC2H6>("ReactionOxidationC2H6", "Ethane combustion C2H6 + 3.5 O2 -> 2 CO2 + 3 H2O");
    yield<oxidationC2H4>("ReactionOxidationC2H4", "Ethylene combustion C2H4 + 3 O2 -> 2 CO2 + 2 H2O");
    reaction<ReactionOxidationHydrocarbon>(
        "ReactionOxidationHydrocarbon", "Hydrocarbon combustion CcHh + (c + h/4) O2 -> c CO2 + h/2 H2O",
        yieldOption,
        {{"nC", "Number of carbon atoms of the hydrocarbon", 1, 0, INT_MAX},
         {"nH", "Number of hydrogen atoms of the hydrocarbon", 4, 0, INT_MAX}});
    hydrocarbon("ReactionOxidationHydrocarbon<3,8>", "Propane combustion C3H8 + 5 O2 -> 3 CO2 + 4 H2O", 3, 8);
    hydrocarbon("ReactionOxidationHydrocarbon<4,10>", "Butane combustion C4H10 + 6.5 O2 -> 4 CO2 + 5 H2O", 4,
                10);
    hydrocarbon("ReactionOxidationHydrocarbon<5,12>", "Pentane combustion C5H12 + 8 O2 -> 5 CO2 + 6 H2O", 5,
                12);
    hydrocarbon("ReactionOxidationHydrocarbon<6,14>", "Hexane combustion C6H14 + 9.5 O2 -> 6 CO2 + 7 H2O", 6,
                14);
    hydrocarbon("ReactionOxidationNaphthalene", "Naphthalene combustion C10H8 + 12 O2 -> 10 CO2 + 4 H2O", 10,
                8);
    NodeFactory::registerType<MultiReaction<2>>("MultiReaction<2>", "Reaction across two sides of a unit",
                                                "option", false, {}, {}, {}, "", iconSize, iconSize);
    NodeFactory::registerType<MultiReactionTransfer>("MultiReactionTransfer",
                                                     "Transfer of components between two sides by fractions",
                                                     "option", false, {}, {}, {}, "", iconSize, iconSize);
}
