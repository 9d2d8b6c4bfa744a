#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/phases/ActivityNrtl.h>
#include <tarvo/phases/ActivityUnifac.h>
#include <tarvo/phases/KwongRedlichSoave.h>
#include <tarvo/phases/PengRobinson.h>
#include <tarvo/phases/PhaseActivity.h>
#include <tarvo/phases/PhaseEos.h>
#include <tarvo/phases/PhaseGeneric.h>
#include <tarvo/phases/PhaseGerg2004.h>
#include <tarvo/phases/PhaseIapws.h>
#include <tarvo/phases/PhaseIdeal.h>
#include <tarvo/phases/PhasePcsaft.h>
#include <tarvo/phases/VanDerWaals.h>
#include <tarvo/phases/PhaseSimple.h>
#include <tarvo/phases/PhaseSimpleTotal.h>
#include <tarvo/phases/PhaseTotal.h>
#include <tarvo/phases/RegisterPhases.h>

#include <cctype>

using Tarvo::Persistency::Defaults;
using Tarvo::Persistency::StringOption;

namespace {
constexpr double iconSize = 40;

std::string capitalized(std::string word) {
    word[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(word[0])));
    return word;
}

// A fluid phase on the equation-of-state model M, registered as `name` with its vapor and liquid aliases.
template <typename M> void equationOfState(const std::string& name, const std::string& equation) {
    const std::string description = "phase based on the " + equation + " equation of state";
    NodeFactory::registerType<PhaseGeneric<M>>(
        name, description, "phase", false, {},
        {StringOption{"typeP", "the phase type", "liquid", "phaseTypeEnum1"}}, {}, "", iconSize, iconSize);
    for (const std::string type : {"vapor", "liquid"}) {
        NodeFactory::registerAlias(name, name + "<" + type + ">", capitalized(type) + " " + description,
                                   Defaults().setString("typeP", type), "", iconSize, iconSize);
    }
}

// A liquid phase on an activity coefficient model: always liquid, so no type option.
template <typename M> void activityModel(const std::string& name, const std::string& description) {
    NodeFactory::registerType<PhaseActivity<M>>(name, description, "phase", false, {}, {}, {}, "", iconSize,
                                                iconSize);
}
} // namespace

void registerPhases() {
    if (NodeFactory::registered("PhaseSimple")) return;
    const std::vector<std::string> allTypes{"vapor", "liquid", "solid"};

    NodeFactory::registerType<PhaseSimple>("PhaseSimple", "Simple, mass-balance only phase", "phase", false, {},
                                           {StringOption{"typeP", "the phase type", "vapor", "phaseTypeEnum"}}, {},
                                           "", iconSize, iconSize);
    for (const std::string& type : allTypes) {
        NodeFactory::registerAlias("PhaseSimple", "PhaseSimple<" + type + ">",
                                   "Simple, mass-balance only, " + type + " phase",
                                   Defaults().setString("typeP", type), "", iconSize, iconSize);
    }
    NodeFactory::registerType<PhaseSimpleTotal>("PhaseSimpleTotal", "Total phase model for simple mass-balance only",
                                                "phase", false, {}, {}, {}, "", iconSize, iconSize);
    NodeFactory::registerType<PhaseTotal>("PhaseTotal", "Total phase model for mass and molar-balance", "phase",
                                          false, {}, {}, {}, "", iconSize, iconSize);
    NodeFactory::registerType<PhaseGeneric<Phase::Ideal>>(
        "PhaseIdeal", "ideal phase", "phase", false, {},
        {StringOption{"typeP", "the phase type", "liquid", "phaseTypeEnum"}}, {}, "", iconSize, iconSize);
    for (const std::string& type : allTypes) {
        NodeFactory::registerAlias("PhaseIdeal", "PhaseIdeal<" + type + ">", capitalized(type) + " ideal phase",
                                   Defaults().setString("typeP", type), "", iconSize, iconSize);
    }
    equationOfState<Phase::Iapws>("PhaseIapws", "IAPWS-95");
    activityModel<Phase::Activity::Nrtl1>("PhaseNrtl1",
                                          "Liquid phase based on the Non Random Two Liquids activity coefficient model "
                                          "in the original formulation with temperature-independent bij");
    activityModel<Phase::Activity::Nrtl2>("PhaseNrtl2",
                                          "Liquid phase based on the Non Random Two Liquids activity coefficient model "
                                          "with temperature-dependent bij and alfaij");
    activityModel<Phase::Activity::Unifac>("PhaseUnifac", "Liquid phase based on the UNIFAC activity coefficient model");
    equationOfState<Phase::Pcsaft>("PhasePcsaft", "PC-SAFT");
    equationOfState<Phase::Gerg2004>("PhaseGerg2004", "GERG2004");
    equationOfState<Phase::Eos<Phase::EosCubic::VanDerWaals>>("PhaseVanDerWaals", "Van der Waals");
    equationOfState<Phase::Eos<Phase::EosCubic::PengRobinson>>("PhasePengRobinson", "Peng-Robinson");
    equationOfState<Phase::Eos<Phase::EosCubic::KwongRedlichSoave>>("PhaseKwongRedlichSoave", "Kwong-Redlich-Soave");
}
