#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/PhaseMass.h>
#include <tarvo/units/ReactionYield.h>
#include <tarvo/utility/FunctionName.h>

using Tarvo::Persistency::Defaults;

namespace {
// A change of flow below this, in kmol/s, consumes the component.
constexpr double consumed = 2.220446049250313e-15;
// A consumed component that limits the extent keeps this share of its inlet flow, so that rounding cannot
// take its flow below zero.
constexpr double margin = 1e-12;
// The starting conversion of the key when none is given.
constexpr double startingConversion = 0.001;
} // namespace

ReactionYield::ReactionYield(const Defaults& defaults, uint32_t id, Persistency* persistency,
                             Persistent* parent, Persistent* root)
    : ReactionYield(defaults, id, persistency, parent, root, "z") {}

ReactionYield::ReactionYield(const Defaults& defaults, uint32_t id, Persistency* persistency,
                             Persistent* parent, Persistent* root, const std::string& defaultOption)
    : Reaction(defaults, id, persistency, parent, root) {
    option = retrieveString(defaults, id, persistency, "option", defaultOption);
    addVariable(option);
}

bool ReactionYield::ready_() {
    if (!phase()) {
        reportError("Nothing connected, nothing to do");
        conv.clear();
        z.clear();
        return false;
    }
    if (!(phase()->totalFlow().toDouble() > 0.0)) {
        reportError("Zero inlet streams, bypassing block");
        return false;
    }
    const int key = keycomp.value();
    if (key < 0) {
        reportError("keycomp uninitialized, bypassing block");
        return false;
    }
    // A key outside the reaction cannot measure its conversion either.
    if (key >= NCOMPONENTS || coeff[key].toDouble() == 0.0) {
        reportError("incorrect keycomp, bypassing block");
        return false;
    }
    return true;
}

void ReactionYield::precalc() {
    resetErrors();
    active_ = ready_();
    if (!active_) return;
    init();
    const int key = keycomp.value();
    if (option.value() == "z") {
        if (inletFlow(key).toDouble() == 0.0)
            reportWarning("Zero flow of key component " + components[key]->name);
        actconv = -inletFlow(key) * z / perExtent(key);
    } else if (extentGiven()) {
        actconv = conv;
    } else {
        active_ = false;
        throw ErrorBrowsing::unsupportedOption(TARVO_FUNCTION, option.value(), "Calculation option",
                                               fullTag(), type());
    }
}

void ReactionYield::bound() {
    if (!active_) return;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (!(coeff[i].toDouble() * actconv.toDouble() < -consumed)) continue;
        if (!(inletFlow(i) < -deltan(i))) continue;
        reportWarning("Conversion too high for component " + components[i]->name);
        // The extent that leaves the margin of component i; its derivatives are those of that flow.
        actconv = -inletFlow(i) / perExtent(i) * (1.0 - margin);
    }
}

void ReactionYield::recordExtent_() {
    // Of conv and z, the one given stays as the user gave it; the other follows from the actual extent.
    if (option.value() == "z") conv = actconv;
    const int key = keycomp.value();
    if (option.value() != "z")
        z = inletFlow(key).toDouble() == 0.0 ? Value(0.0) : -actconv * perExtent(key) / inletFlow(key);
}

void ReactionYield::postcalc() {
    if (!active_) return;
    recordExtent_();
    Phase::Mass& phase = *this->phase();
    Value& total = phase.totalFlow();
    total.clear();
    for (int i = 0; i < NCOMPONENTS; ++i) {
        phase.flow(i) = inletFlow(i) + deltan(i);
        total += phase.flow(i);
    }
}

void ReactionYield::scaleExtent(double factor) {
    if (!active_) return;
    actconv *= factor;
    recordExtent_();
}

Value ReactionYield::estimate() const {
    return z.toDouble() > 0.0 ? Value(z) : Value(startingConversion);
}

void ReactionYield::estimateExtent() {
    if (!ready_()) return;
    init();
    const int key = keycomp.value();
    conv = -inletFlow(key) * estimate() / perExtent(key);
}
