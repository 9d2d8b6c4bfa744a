#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/PhaseMass.h>
#include <tarvo/utility/FunctionName.h>

#include <cassert>

using Tarvo::Persistency::Defaults;
using Tarvo::Utility::MassBalanceMode;
using Tarvo::Utility::SmartEnumerator;

namespace Phase {

namespace {
int checkedCount() {
    if (NCOMPONENTS < 1) throw ErrorRunTime("Phase::Mass::Mass", "no components defined");
    return NCOMPONENTS;
}
} // namespace

Mass::Mass(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent, Persistent* root)
    : Model(defaults, id, persistency, parent, root),
      w("w", "mass fraction", checkedCount(), Value(1.0 / NCOMPONENTS), this),
      mdotcomps("mdotcomps", "mass flow", NCOMPONENTS, Value(10000.0 / NCOMPONENTS, "kg/h"), this) {
    addVariable(fraction);
    addVariable(mdot);
    addVariable(w);
    addVariable(mdotcomps);
}

void Mass::calculate(int) { calculateX(static_cast<Mode>(representation())); }

void Mass::requireComponents(const char* signature) {
    if (NCOMPONENTS < 1) throw ErrorRunTime(Tarvo::Utility::shortFunctionName(signature), "No components defined");
}

void Mass::unsupportedMode(const char* signature, const Mode& mode) {
    throw ErrorSmartEnum(Tarvo::Utility::shortFunctionName(signature), "massbalance",
                         SmartEnumerator<MassBalanceMode>::item(mode).name());
}

void Mass::normalize(QuantityVector& fractions) {
    Value sum = 0.0;
    for (const Value& f : fractions.value()) sum += f;
    if (sum.toDouble() == 0.0) return;
    for (Value& f : fractions.value()) f /= sum;
}

void Mass::fractionsOf(const QuantityVector& flows, const Value& total, QuantityVector& fractions) {
    const bool none = total.toDouble() == 0.0;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (none)
            fractions[i] = 0.0;
        else
            fractions[i] = flows[i] / total;
    }
}

void Mass::calculateMw_() {
    requireComponents(__PRETTY_FUNCTION__);
    normalize(w);
    for (int i = 0; i < NCOMPONENTS; ++i) mdotcomps[i] = mdot * w[i];
}

void Mass::calculateM_() {
    requireComponents(__PRETTY_FUNCTION__);
    mdot.clear();
    for (int i = 0; i < NCOMPONENTS; ++i) mdot += mdotcomps[i];
    fractionsOf(mdotcomps, mdot, w);
}

void Mass::calculateX(const Mode& mode) {
    switch (mode) {
    case Mode::Mw: calculateMw_(); break;
    case Mode::M: calculateM_(); break;
    default: unsupportedMode(__PRETTY_FUNCTION__, mode);
    }
}

bool Mass::isPure() const {
    requireComponents(__PRETTY_FUNCTION__);
    int ones = 0;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const double f = w[i].toDouble();
        if (f == 1.0)
            ++ones;
        else if (f != 0.0)
            return false;
    }
    return ones == 1;
}

Mass& Mass::operator+=(const Mass& rhs) {
    for (int i = 0; i < NCOMPONENTS; ++i) mdotcomps[i] += rhs.mdotcomps[i];
    calculateM_();
    return *this;
}

Mass& Mass::operator-=(const Mass& rhs) {
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (rhs.mdotcomps[i] > mdotcomps[i])
            mdotcomps[i].clear();
        else
            mdotcomps[i] -= rhs.mdotcomps[i];
    }
    calculateM_();
    return *this;
}

Mass& Mass::operator*=(const Value& factor) {
    mdot *= factor;
    for (int i = 0; i < NCOMPONENTS; ++i) mdotcomps[i] *= factor;
    return *this;
}

Mass& Mass::addComponents(const Mass& rhs, int first, int last) {
    assert(representation() == rhs.representation());
    for (int i = first; i < last; ++i) flow(i) += rhs.flow(i);
    return *this;
}

Mass& Mass::subtractComponents(const Mass& rhs, int first, int last) {
    assert(representation() == rhs.representation());
    for (int i = first; i < last; ++i) flow(i) -= rhs.flow(i);
    return *this;
}

MassBalanceMode flowonly(const MassBalanceMode& mode) {
    switch (mode) {
    case MassBalanceMode::Nx:
    case MassBalanceMode::Nw:
    case MassBalanceMode::N: return MassBalanceMode::N;
    case MassBalanceMode::Mx:
    case MassBalanceMode::Mw:
    case MassBalanceMode::M: return MassBalanceMode::M;
    default: throw ErrorSmartEnum(TARVO_FUNCTION, "massbalance", SmartEnumerator<MassBalanceMode>::item(mode).name());
    }
}

} // namespace Phase
