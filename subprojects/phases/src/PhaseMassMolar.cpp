#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/PhaseMassMolar.h>

#include <limits>

using Tarvo::Persistency::Defaults;

namespace Phase {

namespace {
constexpr double epsilon = std::numeric_limits<double>::epsilon();

const Value& componentMw(int i) { return components[i]->mw(); }
} // namespace

MassMolar::MassMolar(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                     Persistent* root)
    : Mass(defaults, id, persistency, parent, root),
      x("x", "molar fraction", NCOMPONENTS, Value(1.0 / NCOMPONENTS), this),
      ndotcomps("ndotcomps", "molar flow", NCOMPONENTS, Value(10000.0 / 18.0 / NCOMPONENTS, "kmol/h"), this) {
    addVariable(mw);
    addVariable(ndot);
    addVariable(x);
    addVariable(ndotcomps);
}

// Each product with a component's constant weight goes into the sum in one combination of derivatives: made
// apart, it takes a list of derivatives of its own, to be merged into the sum and dropped.
const Value& MassMolar::mwx() const {
    mw_.clear();
    Active& sum = mw_.active();
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const Value& weight = componentMw(i);
        x[i].dimensionless(__PRETTY_FUNCTION__);
        mw_.same(__PRETTY_FUNCTION__, weight);
        const double m = weight.toDouble();
        sum = Active::combine(sum.val() + x[i].toDouble() * m, 1, sum, m, x[i].active());
    }
    return mw_;
}

const Value& MassMolar::mww() const {
    mwInverse_.clear();
    for (int i = 0; i < NCOMPONENTS; ++i) mwInverse_ += w[i] / componentMw(i);
    if (mwInverse_.toDouble() == 0.0)
        mw_.clear();
    else
        mw_ = 1.0 / mwInverse_;
    return mw_;
}

void MassMolar::massFromMolarFlows_() {
    for (int i = 0; i < NCOMPONENTS; ++i) mdotcomps[i] = ndotcomps[i] * componentMw(i);
    fractionsOf(mdotcomps, mdot, w);
}

void MassMolar::flowsFromMassFractions_() {
    for (int i = 0; i < NCOMPONENTS; ++i) {
        mdotcomps[i] = mdot * w[i];
        ndotcomps[i] = mdotcomps[i] / componentMw(i);
    }
    fractionsOf(ndotcomps, ndot, x);
}

void MassMolar::calculateNx_() {
    requireComponents(__PRETTY_FUNCTION__);
    normalize(x);
    mw = mwx();
    mdot = ndot * mw;
    for (int i = 0; i < NCOMPONENTS; ++i) ndotcomps[i] = ndot * x[i];
    massFromMolarFlows_();
}

void MassMolar::calculateMx_() {
    requireComponents(__PRETTY_FUNCTION__);
    normalize(x);
    mw = mwx();
    ndot = mdot / mw;
    for (int i = 0; i < NCOMPONENTS; ++i) ndotcomps[i] = ndot * x[i];
    massFromMolarFlows_();
}

void MassMolar::calculateNw_() {
    requireComponents(__PRETTY_FUNCTION__);
    normalize(w);
    mw = mww();
    mdot = ndot * mw;
    flowsFromMassFractions_();
}

void MassMolar::calculateMw_() {
    requireComponents(__PRETTY_FUNCTION__);
    normalize(w);
    mw = mww();
    // All fractions 0 leave no molecular weight, and then no molar flow.
    if (mw.toDouble() == 0.0)
        ndot.clear();
    else
        ndot = mdot / mw;
    flowsFromMassFractions_();
}

void MassMolar::calculateN_() {
    requireComponents(__PRETTY_FUNCTION__);
    ndot.clear();
    for (int i = 0; i < NCOMPONENTS; ++i) ndot += ndotcomps[i];
    if (ndot.toDouble() == 0.0) {
        for (int i = 0; i < NCOMPONENTS; ++i) {
            x[i] = 1.0 / NCOMPONENTS;
            w[i] = 1.0 / NCOMPONENTS;
        }
        return;
    }
    for (int i = 0; i < NCOMPONENTS; ++i) x[i] = ndotcomps[i] / ndot;
    mw = mwx();
    mdot = ndot * mw;
    massFromMolarFlows_();
}

void MassMolar::calculateM_() {
    requireComponents(__PRETTY_FUNCTION__);
    mdot.clear();
    for (int i = 0; i < NCOMPONENTS; ++i) mdot += mdotcomps[i];
    if (mdot.toDouble() == 0.0) {
        ndot.clear();
        for (int i = 0; i < NCOMPONENTS; ++i) {
            ndotcomps[i].clear();
            w[i] = 0.0;
            x[i] = 0.0;
        }
        return;
    }
    for (int i = 0; i < NCOMPONENTS; ++i) {
        w[i] = mdotcomps[i] / mdot;
        ndotcomps[i] = mdotcomps[i] / componentMw(i);
    }
    mw = mww();
    if (mw.toDouble() == 0.0)
        ndot.clear();
    else
        ndot = mdot / mw;
    fractionsOf(ndotcomps, ndot, x);
}

void MassMolar::calculateX(const Mode& mode) {
    switch (mode) {
    case Mode::Nx: calculateNx_(); break;
    case Mode::Mx: calculateMx_(); break;
    case Mode::Nw: calculateNw_(); break;
    case Mode::Mw: calculateMw_(); break;
    case Mode::N: calculateN_(); break;
    case Mode::M: calculateM_(); break;
    default: unsupportedMode(__PRETTY_FUNCTION__, mode);
    }
}

bool MassMolar::isPure() const {
    requireComponents(__PRETTY_FUNCTION__);
    int ones = 0;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const double f = x[i].toDouble();
        if (f > 1 - 10 * epsilon)
            ++ones;
        else if (f > 10 * epsilon)
            return false;
    }
    return ones == 1;
}

Mass::Target MassMolar::presetTarget(const Mode& mode, const char* signature) {
    switch (mode) {
    case Mode::Nx:
    case Mode::Mx: return {&x, true, false};
    case Mode::N: return {&ndotcomps, true, true};
    default: return Mass::presetTarget(mode, signature);
    }
}

Mass& MassMolar::operator+=(const Mass& rhs) {
    const auto* molar = dynamic_cast<const MassMolar*>(&rhs);
    if (!molar) return Mass::operator+=(rhs);
    for (int i = 0; i < NCOMPONENTS; ++i) ndotcomps[i] += molar->ndotcomps[i];
    calculateN_();
    return *this;
}

Mass& MassMolar::operator-=(const Mass& rhs) {
    const auto* molar = dynamic_cast<const MassMolar*>(&rhs);
    if (!molar) return Mass::operator-=(rhs);
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (molar->ndotcomps[i] > ndotcomps[i])
            ndotcomps[i].clear();
        else
            ndotcomps[i] -= molar->ndotcomps[i];
    }
    calculateN_();
    return *this;
}

Mass& MassMolar::operator*=(const Value& factor) {
    Mass::operator*=(factor);
    ndot *= factor;
    for (int i = 0; i < NCOMPONENTS; ++i) ndotcomps[i] *= factor;
    return *this;
}

} // namespace Phase
