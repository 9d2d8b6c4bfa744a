#include <tarvo/components/ComponentCatalogue.h>
#include <tarvo/components/Purecomps.h>

#include <map>

namespace {
using Maker = ComponentGeneric* (*)(const std::string& name);

// Every species of the catalogue by its class name. The gases that dissolve in water do so here, as in
// the kernel's own list.
const std::map<std::string, Maker>& makers() {
    static const std::map<std::string, Maker> table{
        {"ethanol", [](const std::string& name) -> ComponentGeneric* { return new purecomps::ethanol(name); }},
        {"methanol", [](const std::string& name) -> ComponentGeneric* { return new purecomps::methanol(name); }},
        {"O2", [](const std::string& name) -> ComponentGeneric* { return new purecomps::O2(name, true); }},
        {"N2", [](const std::string& name) -> ComponentGeneric* { return new purecomps::N2(name, true); }},
        {"NO2", [](const std::string& name) -> ComponentGeneric* { return new purecomps::NO2(name); }},
        {"methane", [](const std::string& name) -> ComponentGeneric* { return new purecomps::methane(name); }},
        {"ethane", [](const std::string& name) -> ComponentGeneric* { return new purecomps::ethane(name); }},
        {"ethylene", [](const std::string& name) -> ComponentGeneric* { return new purecomps::ethylene(name); }},
        {"propane", [](const std::string& name) -> ComponentGeneric* { return new purecomps::propane(name); }},
        {"heavy", [](const std::string& name) -> ComponentGeneric* { return new purecomps::heavy(name); }},
        {"CO", [](const std::string& name) -> ComponentGeneric* { return new purecomps::CO(name, true); }},
        {"CO2", [](const std::string& name) -> ComponentGeneric* { return new purecomps::CO2(name, true); }},
        {"H2", [](const std::string& name) -> ComponentGeneric* { return new purecomps::H2(name, true); }},
        {"acetone", [](const std::string& name) -> ComponentGeneric* { return new purecomps::acetone(name); }},
        {"propylene", [](const std::string& name) -> ComponentGeneric* { return new purecomps::propylene(name); }},
        {"etylacetate", [](const std::string& name) -> ComponentGeneric* { return new purecomps::etylacetate(name); }},
        {"nhexadecane", [](const std::string& name) -> ComponentGeneric* { return new purecomps::nhexadecane(name); }},
        {"butane", [](const std::string& name) -> ComponentGeneric* { return new purecomps::butane(name); }},
        {"pentane", [](const std::string& name) -> ComponentGeneric* { return new purecomps::pentane(name); }},
        {"benzene", [](const std::string& name) -> ComponentGeneric* { return new purecomps::benzene(name); }},
        {"ciclohexane", [](const std::string& name) -> ComponentGeneric* { return new purecomps::ciclohexane(name); }},
        {"ibutane", [](const std::string& name) -> ComponentGeneric* { return new purecomps::ibutane(name); }},
        {"ipentane", [](const std::string& name) -> ComponentGeneric* { return new purecomps::ipentane(name); }},
        {"nhexane", [](const std::string& name) -> ComponentGeneric* { return new purecomps::nhexane(name); }},
        {"nheptane", [](const std::string& name) -> ComponentGeneric* { return new purecomps::nheptane(name); }},
        {"noctane", [](const std::string& name) -> ComponentGeneric* { return new purecomps::noctane(name); }},
        {"nnonane", [](const std::string& name) -> ComponentGeneric* { return new purecomps::nnonane(name); }},
        {"ndecane", [](const std::string& name) -> ComponentGeneric* { return new purecomps::ndecane(name); }},
        {"argon", [](const std::string& name) -> ComponentGeneric* { return new purecomps::argon(name); }},
        {"helium", [](const std::string& name) -> ComponentGeneric* { return new purecomps::helium(name); }},
        {"hydrogensulfide", [](const std::string& name) -> ComponentGeneric* { return new purecomps::hydrogensulfide(name); }},
        {"ammonia", [](const std::string& name) -> ComponentGeneric* { return new purecomps::ammonia(name); }},
        {"phenol", [](const std::string& name) -> ComponentGeneric* { return new purecomps::phenol(name); }},
        {"naphthalene", [](const std::string& name) -> ComponentGeneric* { return new purecomps::naphthalene(name); }},
        {"squalane", [](const std::string& name) -> ComponentGeneric* { return new purecomps::squalane(name); }},
        {"EthyleneGlycol", [](const std::string& name) -> ComponentGeneric* { return new purecomps::EthyleneGlycol(name); }},
        {"DiethyleneGlycol", [](const std::string& name) -> ComponentGeneric* { return new purecomps::DiethyleneGlycol(name); }},
        {"TriethyleneGlycol", [](const std::string& name) -> ComponentGeneric* { return new purecomps::TriethyleneGlycol(name); }},
        {"eicosane", [](const std::string& name) -> ComponentGeneric* { return new purecomps::eicosane(name); }},
        {"nbutylene", [](const std::string& name) -> ComponentGeneric* { return new purecomps::nbutylene(name); }},
        {"hexene", [](const std::string& name) -> ComponentGeneric* { return new purecomps::hexene(name); }},
        {"Octamethyltrisiloxane", [](const std::string& name) -> ComponentGeneric* { return new purecomps::Octamethyltrisiloxane(name); }},
        {"PalmiticAcid", [](const std::string& name) -> ComponentGeneric* { return new purecomps::PalmiticAcid(name); }},
        {"Ethylhexanol", [](const std::string& name) -> ComponentGeneric* { return new purecomps::Ethylhexanol(name); }},
        {"OctylPalmitate", [](const std::string& name) -> ComponentGeneric* { return new purecomps::OctylPalmitate(name); }},
        {"oxylene", [](const std::string& name) -> ComponentGeneric* { return new purecomps::oxylene(name); }},
        {"mxylene", [](const std::string& name) -> ComponentGeneric* { return new purecomps::mxylene(name); }},
        {"pxylene", [](const std::string& name) -> ComponentGeneric* { return new purecomps::pxylene(name); }},
        {"MA", [](const std::string& name) -> ComponentGeneric* { return new purecomps::MA(name); }},
        {"BuOH", [](const std::string& name) -> ComponentGeneric* { return new purecomps::BuOH(name); }},
        {"aacid", [](const std::string& name) -> ComponentGeneric* { return new purecomps::aacid(name); }},
        {"water", [](const std::string& name) -> ComponentGeneric* { return new purecomps::water(name); }},
        {"CaO2H2", [](const std::string& name) -> ComponentGeneric* { return new purecomps::CaO2H2(name); }},
        {"NaOH", [](const std::string& name) -> ComponentGeneric* { return new purecomps::NaOH(name); }},
        {"CaF2", [](const std::string& name) -> ComponentGeneric* { return new purecomps::CaF2(name); }},
        {"CaCl2", [](const std::string& name) -> ComponentGeneric* { return new purecomps::CaCl2(name); }},
        {"NaF", [](const std::string& name) -> ComponentGeneric* { return new purecomps::NaF(name); }},
        {"NaCl", [](const std::string& name) -> ComponentGeneric* { return new purecomps::NaCl(name); }},
        {"Ni", [](const std::string& name) -> ComponentGeneric* { return new purecomps::Ni(name); }},
        {"NiF2", [](const std::string& name) -> ComponentGeneric* { return new purecomps::NiF2(name); }},
        {"FeF2", [](const std::string& name) -> ComponentGeneric* { return new purecomps::FeF2(name); }},
        {"FeCl2", [](const std::string& name) -> ComponentGeneric* { return new purecomps::FeCl2(name); }},
        {"carbon", [](const std::string& name) -> ComponentGeneric* { return new purecomps::carbon(name); }},
        {"CaCO3", [](const std::string& name) -> ComponentGeneric* { return new purecomps::CaCO3(name); }},
        {"Fe2O3", [](const std::string& name) -> ComponentGeneric* { return new purecomps::Fe2O3(name); }},
        {"Sn", [](const std::string& name) -> ComponentGeneric* { return new purecomps::Sn(name); }},
        {"ZnCl2", [](const std::string& name) -> ComponentGeneric* { return new purecomps::ZnCl2(name); }},
        {"SnO", [](const std::string& name) -> ComponentGeneric* { return new purecomps::SnO(name); }},
        {"SnO2", [](const std::string& name) -> ComponentGeneric* { return new purecomps::SnO2(name); }},
        {"Na2SO4", [](const std::string& name) -> ComponentGeneric* { return new purecomps::Na2SO4(name); }},
        {"ZnHs", [](const std::string& name) -> ComponentGeneric* { return new purecomps::ZnHs(name); }},
        {"Na2Hs", [](const std::string& name) -> ComponentGeneric* { return new purecomps::Na2Hs(name); }},
        {"ZnS", [](const std::string& name) -> ComponentGeneric* { return new purecomps::ZnS(name); }},
        {"ZnSO4", [](const std::string& name) -> ComponentGeneric* { return new purecomps::ZnSO4(name); }},
        {"ZnSO4H2O", [](const std::string& name) -> ComponentGeneric* { return new purecomps::ZnSO4H2O(name); }},
        {"silicon", [](const std::string& name) -> ComponentGeneric* { return new purecomps::silicon(name); }},
        {"silica", [](const std::string& name) -> ComponentGeneric* { return new purecomps::silica(name); }},
        {"Fe", [](const std::string& name) -> ComponentGeneric* { return new purecomps::Fe(name); }},
        {"CaO", [](const std::string& name) -> ComponentGeneric* { return new purecomps::CaO(name); }},
        {"FeO", [](const std::string& name) -> ComponentGeneric* { return new purecomps::FeO(name); }},
        {"Fe3O4", [](const std::string& name) -> ComponentGeneric* { return new purecomps::Fe3O4(name); }},
        {"Protein", [](const std::string& name) -> ComponentGeneric* { return new purecomps::Protein(name); }},
        {"Lipid", [](const std::string& name) -> ComponentGeneric* { return new purecomps::Lipid(name); }},
        {"Fiber", [](const std::string& name) -> ComponentGeneric* { return new purecomps::Fiber(name); }},
        {"Carbohydrate", [](const std::string& name) -> ComponentGeneric* { return new purecomps::Carbohydrate(name); }},
        {"Ashes", [](const std::string& name) -> ComponentGeneric* { return new purecomps::Ashes(name); }},
    };
    return table;
}
} // namespace

ComponentGeneric* newCatalogueComponent(const std::string& entry, const std::string& name) {
    const auto it = makers().find(entry);
    return it == makers().end() ? nullptr : it->second(name);
}

std::vector<std::string> catalogueEntries() {
    std::vector<std::string> names;
    for (const auto& [name, maker] : makers()) names.push_back(name);
    return names;
}
