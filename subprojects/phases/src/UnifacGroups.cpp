#include <tarvo/components/ListComponents.h>
#include <tarvo/components/Purecomps.h>
#include <tarvo/phases/UnifacGroups.h>

#include <typeindex>
#include <unordered_map>
#include <utility>

namespace Phase::Activity {

std::vector<UnifacGroups> UnifacAssignment::groups_;

void UnifacAssignment::append(UnifacGroups groups) {
    groups_.push_back(std::move(groups));
}

void UnifacAssignment::clear() {
    groups_.clear();
}

const UnifacGroups* UnifacAssignment::of(int i) {
    if (i < static_cast<int>(groups_.size())) return &groups_[i];
    return catalogueUnifacGroups(*components[i]);
}

const UnifacGroups* catalogueUnifacGroups(const ComponentGeneric& component) {
    // Water, methanol, ethanol, acetone, benzene and n-hexane as DDBST assigns them
    // (../shared/data/unifac_component_groups.csv); the others split into the published subgroups by
    // their structure, each carbon, oxygen and silicon atom in exactly one group.
    static const std::unordered_map<std::type_index, UnifacGroups> table{
        {typeid(purecomps::water), {{16, 1}}},                   // H2O
        {typeid(purecomps::methanol), {{15, 1}}},                // CH3OH
        {typeid(purecomps::ethanol), {{1, 1}, {2, 1}, {14, 1}}}, // CH3, CH2, OH
        {typeid(purecomps::acetone), {{1, 1}, {18, 1}}},         // CH3, CH3CO
        {typeid(purecomps::benzene), {{9, 6}}},                  // ACH
        {typeid(purecomps::nhexane), {{1, 2}, {2, 4}}},          // CH3, CH2
        {typeid(purecomps::ethane), {{1, 2}}},
        {typeid(purecomps::propane), {{1, 2}, {2, 1}}},
        {typeid(purecomps::butane), {{1, 2}, {2, 2}}},
        {typeid(purecomps::ibutane), {{1, 3}, {3, 1}}}, // CH3, CH
        {typeid(purecomps::pentane), {{1, 2}, {2, 3}}},
        {typeid(purecomps::ipentane), {{1, 3}, {2, 1}, {3, 1}}},
        {typeid(purecomps::nheptane), {{1, 2}, {2, 5}}},
        {typeid(purecomps::noctane), {{1, 2}, {2, 6}}},
        {typeid(purecomps::nnonane), {{1, 2}, {2, 7}}},
        {typeid(purecomps::ndecane), {{1, 2}, {2, 8}}},
        {typeid(purecomps::nhexadecane), {{1, 2}, {2, 14}}},
        {typeid(purecomps::eicosane), {{1, 2}, {2, 18}}},
        {typeid(purecomps::squalane), {{1, 8}, {2, 16}, {3, 6}}}, // 2,6,10,15,19,23-hexamethyltetracosane
        {typeid(purecomps::ciclohexane), {{2, 6}}},
        {typeid(purecomps::propylene), {{1, 1}, {5, 1}}},         // CH3, CH2=CH
        {typeid(purecomps::nbutylene), {{1, 1}, {2, 1}, {5, 1}}}, // 1-butene
        {typeid(purecomps::hexene), {{1, 1}, {2, 3}, {5, 1}}},    // 1-hexene
        {typeid(purecomps::oxylene), {{9, 4}, {11, 2}}},          // ACH, ACCH3
        {typeid(purecomps::mxylene), {{9, 4}, {11, 2}}},
        {typeid(purecomps::pxylene), {{9, 4}, {11, 2}}},
        {typeid(purecomps::naphthalene), {{9, 8}, {10, 2}}},                  // ACH, AC
        {typeid(purecomps::phenol), {{9, 5}, {17, 1}}},                       // ACH, ACOH
        {typeid(purecomps::BuOH), {{1, 1}, {2, 3}, {14, 1}}},                 // n-butanol
        {typeid(purecomps::Ethylhexanol), {{1, 2}, {2, 5}, {3, 1}, {14, 1}}}, // 2-ethylhexanol
        {typeid(purecomps::EthyleneGlycol), {{2, 2}, {14, 2}}},
        {typeid(purecomps::DiethyleneGlycol), {{2, 3}, {14, 2}, {25, 1}}}, // CH2, OH, CH2O
        {typeid(purecomps::TriethyleneGlycol), {{2, 4}, {14, 2}, {25, 2}}},
        {typeid(purecomps::etylacetate), {{1, 1}, {2, 1}, {21, 1}}}, // CH3, CH2, CH3COO
        {typeid(purecomps::MA), {{1, 1}, {21, 1}}},                  // methyl acetate
        {typeid(purecomps::aacid), {{1, 1}, {42, 1}}},               // CH3, COOH
        {typeid(purecomps::PalmiticAcid), {{1, 1}, {2, 14}, {42, 1}}},
        {typeid(purecomps::OctylPalmitate), {{1, 2}, {2, 20}, {22, 1}}},        // CH3, CH2, CH2COO
        {typeid(purecomps::Octamethyltrisiloxane), {{1, 8}, {81, 1}, {84, 2}}}, // CH3, SI, SIO
    };
    const auto found = table.find(typeid(component));
    return found == table.end() ? nullptr : &found->second;
}

} // namespace Phase::Activity
