#include <tarvo/components/ListComponents.h>
#include <tarvo/units/ReactionEquilibrium.h>

#include <cmath>

using Tarvo::Persistency::Defaults;

namespace {
// The clamps of both constants, 2^-52 and 2^52, and their logarithms.
constexpr double lowest = 2.220446049250313e-16;
constexpr double highest = 4503599627370496.0;
const double lnLowest = std::log(lowest);
const double lnHighest = std::log(highest);
const Value kmolPerSecond(1.0, "kmol/s");

// The constant of the logarithm, within the clamps.
Value constant(const Value& ln) {
    if (ln.toDouble() > lnHighest) return Value(highest);
    if (ln.toDouble() < lnLowest) return Value(lowest);
    return exp(ln);
}

// The logarithm of a constant within the clamps, as a constant beyond them.
Value clamped(const Value& ln) {
    if (ln.toDouble() > lnHighest) return Value(lnHighest);
    if (ln.toDouble() < lnLowest) return Value(lnLowest);
    return ln;
}

// The logarithm within the clamps, and beyond them the clamp plus a square root of the distance: slope 1 at
// the clamp, falling off with the distance but never flat, so that Newton's method keeps a direction.
Value compressed(const Value& ln) {
    if (ln.toDouble() > lnHighest) return lnHighest + sqrt(1.0 + 2.0 * (ln - lnHighest)) - 1.0;
    if (ln.toDouble() < lnLowest) return lnLowest - sqrt(1.0 + 2.0 * (lnLowest - ln)) + 1.0;
    return ln;
}
} // namespace

ReactionEquilibrium::ReactionEquilibrium(const Defaults& defaults, uint32_t id, Persistency* persistency,
                                         Persistent* parent, Persistent* root)
    : ReactionYield(defaults, id, persistency, parent, root, "equilibrium") {
    for (Quantity* q : {&Teq, &Tact, &deltaT, &P, &K, &Kist})
        addVariable(*q);
    for (Quantity* q : {&Teq, &Tact, &P, &K, &Kist})
        q->setOutput();
}

void ReactionEquilibrium::calculateKSollwert() {
    lnK_ = 0.0;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (coeff[i].toDouble() == 0.0) continue;
        const ComponentGeneric& c = *components[i];
        const Value g = c.isSolid() ? c.gs(Teq, P0) : c.gv(Teq, P0);
        lnK_ -= coeff[i] * g / (R * Teq);
    }
    K = constant(lnK_);
}

void ReactionEquilibrium::calculateKIstWert(const Vector& x) {
    lnKist_ = 0.0;
    for (int i = 0; i < NCOMPONENTS; ++i)
        if (coeff[i].toDouble() != 0.0) lnKist_ += coeff[i] * log(x[i] * P / P0);
    Kist = constant(lnKist_);
}

void ReactionEquilibrium::calculateEquilibrium(const Vector& x) {
    Teq = Tact + deltaT;
    calculateKSollwert();
    calculateKIstWert(x);
}

void ReactionEquilibrium::calculateResidual(Value& residual) const {
    // A bypassed reaction, or one that lacks a species on each side, has no equation: conv stays where it
    // is, with a unit slope that keeps the unit's system regular.
    if (!active() || !std::isfinite(lnKist_.toDouble())) {
        residual = conv / kmolPerSecond - conv.toDouble();
        return;
    }
    residual = compressed(lnKist_) - clamped(lnK_);
}
