#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/PhaseMassMolar.h>
#include <tarvo/units/Reaction.h>
#include <tarvo/utility/FunctionName.h>

#include <cmath>

using Tarvo::Persistency::Defaults;

Reaction::Reaction(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                   Persistent* root)
    : Model(defaults, id, persistency, parent, root) {
    for (Quantity* q : {&conv, &actconv, &z})
        addVariable(*q);
    addVariable(keycomp);
    addComponentVariables(coeff, "coeff", "Molar stoichiometric coefficient", "", 0.0);
    addComponentVariables(coeffm, "coeffm", "Mass based stoichiometric coefficient", "", 0.0);
    actconv.setOutput();
    for (Quantity& q : coeffm)
        q.setOutput();
}

void Reaction::calculate(int) {
    precalc();
    bound();
    postcalc();
}

void Reaction::setStoichiometry(const Stoichiometry& stoichiometry) {
    try {
        for (const auto& [name, coefficient] : stoichiometry.coefficients)
            coeff[components.lookup(name)] = coefficient;
        keycomp = components.lookup(stoichiometry.key);
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

void Reaction::init() {
    Phase::Mass& phase = *phase_;
    // Flows in moles or in mass, as the phase keeps them.
    const bool molar = dynamic_cast<const Phase::MassMolar*>(&phase) != nullptr;
    inletFlows_.resize(NCOMPONENTS);
    perExtent_.resize(NCOMPONENTS);
    for (int i = 0; i < NCOMPONENTS; ++i) {
        inletFlows_[i] = phase.flow(i);
        perExtent_[i] = molar ? Value(coeff[i]) : coeff[i] * components[i]->mw();
    }
    const int key = keycomp.value();
    const Value keyMass = std::fabs(coeff[key].toDouble()) * components[key]->mw();
    for (int i = 0; i < NCOMPONENTS; ++i)
        coeffm[i] = coeff[i] * components[i]->mw() / keyMass;
}
