#include <tarvo/core/MonotoneRoot.h>
#include <tarvo/phases/EosInterface.h>
#include <tarvo/utility/Log.h>

#include <cmath>
#include <limits>

using Tarvo::Utility::PhaseType;

namespace {
constexpr int verbosityFile = -1;
// The local iteration of settleDensity: enough for a start, which the flash's Newton finishes.
constexpr int maxSteps = 60;
constexpr double stepTolerance = 1e-13;
// The search past a hump: a residual this small is a root, and the ends of beta's range are kept this far
// (relative) from the point where the bent pressure divides by zero.
constexpr double bracketTolerance = 1e-12;
constexpr double endGap = 1e-9;
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
} // namespace

namespace Phase {

void EosInterface::calculatePressureEos_(const Value& T, const Vector& x, PhaseType type, Value& P) {
    P = pressure(beta, T);
    corrected = false;
    const Value critical = betac(x);
    // The pressure at betac and the pseudo-critical temperature are taken only where they decide something:
    // a density evaluates this many times over while the flash starts.
    const auto Pc_ = [&] { return pressure(critical, T); };
    const auto Tcm = [&] { return pseudoCriticalTemperature(x).toDouble(); };
    TARVO_LOG(4) << "Temp = " << T.toDouble() << " Tcm = " << Tcm() << " Pcm = " << Pc_().toDouble();
    // The ideal gas's slope in beta: a fiftieth of it is the least slope that counts as stable.
    const Value s0 = density(one) * R * T;
    const bool vapor = type == PhaseType::vapor, liquid = type == PhaseType::liquid;
    const bool dense = beta.toDouble() > critical.toDouble(), light = beta.toDouble() < critical.toDouble();
    // A liquid lighter than the critical density is out of place at any T; a denser vapor below Tcm.
    const bool outOfPlace = (liquid && light) || (vapor && dense && T.toDouble() < Tcm());
    Value slope, rise;
    if (outOfPlace) {
        P = Pc_();
        slope = dpdbeta(critical, T) - s0 / 50.0;
    } else {
        rise = dpdbeta(beta, T);
        slope = rise - s0 / 50.0;
    }
    unbentSlope_ = notANumber;
    TARVO_LOG(4) << "dpdbeta = " << slope.toDouble();
    if (slope.toDouble() >= 0) {
        if (vapor && dense) {
            corrected = true;
            P = P * (critical - betaHigh) / (beta - betaHigh);
            TARVO_LOG(4) << "corrected pressure 4 = " << P.toDouble();
        } else if (liquid && light) {
            corrected = true;
            const Value ratio = (beta - betaLow) / (critical - betaLow);
            P = P * ratio * ratio * ratio;
            TARVO_LOG(4) << "corrected pressure 3 = " << P.toDouble();
        }
        if (!corrected && !outOfPlace) unbentSlope_ = rise.toDouble();
        return;
    }
    corrected = true;
    // The bend's own slope is the one that the iteration sees in beta, so the pressure under it loses its
    // derivative in beta; it keeps those in T and x, without which Newton's method cannot finish a flash
    // whose solution lies on the bend (the vapor of a compressed liquid).
    const Value plain = outOfPlace ? P : pressure(Value(beta.toDouble()), T);
    if (liquid) {
        P = slope / (beta - betaLow) / 10.0 + plain;
        TARVO_LOG(4) << "corrected pressure 1 = " << P.toDouble();
    } else {
        P = slope / (beta - betaHigh) / 10.0 + plain;
        TARVO_LOG(4) << "corrected pressure 2 = " << P.toDouble();
    }
}

Value EosInterface::calculateResiduals(const Value& P, const Value& T, const Vector& x, PhaseType type) {
    Value seen;
    calculatePressureEos_(T, x, type, seen);
    return seen / P - 1.0;
}

double EosInterface::plainResidual(double reduced, const Value& P, const Value& T, const Vector& x, PhaseType type) {
    beta = reduced;
    return calculateResiduals(P, T, x, type).toDouble();
}

bool EosInterface::Settled::nearby(const Value& Pnow, const Value& Tnow, PhaseType typeNow) const {
    return found && Pnow.toDouble() == P && typeNow == type && state.sameT(Tnow);
}

bool EosInterface::Settled::at(const Value& Pnow, const Value& Tnow, const Vector& xnow, PhaseType typeNow) const {
    return Pnow.toDouble() == P && typeNow == type && state.same(Tnow, xnow);
}

void EosInterface::settleDensity(const Value& P, const Value& T, const Vector& x, PhaseType type) {
    precompute(T, x);
    const auto residual = [&](double reduced) { return plainResidual(reduced, P, T, x, type); };
    // The slope of the residual at the point of its last evaluation, whose residual is f: the pressure's own
    // where it was left unbent, a difference quotient where it was bent.
    const auto slopeAt = [&](double reduced, double f) {
        if (std::isfinite(unbentSlope_)) return unbentSlope_ / P.toDouble();
        return (residual(reduced * (1 + 1e-7)) - f) / (1e-7 * reduced);
    };
    // A settle at the state of the last one, as the substitution of a start asks of a pure fluid at each
    // round, keeps that root where the residual there still vanishes.
    double b = settled_.root, slope = settled_.slope;
    const bool again = settled_.at(P, T, x, type) && slope > 0 &&
                       std::fabs(residual(b) / slope) <= stepTolerance * b;
    bool found = again;
    if (!again) {
        // The root of the last settle at the same (P, T) and of the same type is the start, when there was
        // one: the substitution of a start changes x by little from one round to the next, and Newton's
        // method goes on from there in a few steps where it would need several from the estimate.
        if (!settled_.nearby(P, T, type)) {
            estimate(P, T, x, type);
            b = beta.toDouble();
        }
        // Newton's method in plain numbers, kept inside (betaLow, betaMax()).
        slope = 1;
        bool converged = false;
        for (int k = 0; k < maxSteps && !converged; ++k) {
            const double f = residual(b);
            slope = slopeAt(b, f);
            if (!(slope > 0) || !std::isfinite(f)) break; // no direction: the flash goes on from here
            double next = b - f / slope;
            if (next <= betaLow) next = 0.1 * b;
            if (next >= betaMax()) next = 0.5 * (b + betaMax());
            converged = std::fabs(next - b) <= stepTolerance * b;
            b = next;
        }
        // The pressure that the phase sees is not monotone in beta where it is bent: Newton's method may stop
        // on a hump short of the flash's pressure, as a vapor does where the pressure lies above the top of
        // its own branch (a compressed liquid). The residual rises from betaLow to betaMax() past any hump,
        // so a root lies between the stop and the end on the side that the residual's sign points to.
        const double stop = converged ? 0.0 : residual(b);
        if (std::isfinite(stop) && std::fabs(stop) > bracketTolerance) {
            const double lo = stop < 0 ? b : betaLow + endGap * (b - betaLow);
            const double hi = stop < 0 ? betaMax() - endGap * (betaMax() - b) : b;
            MonotoneRoot root;
            const auto sample = [&](double reduced) {
                return MonotoneRoot::Sample{residual(reduced), notANumber};
            };
            if (root.find(sample, lo, hi, b, bracketTolerance) == MonotoneRoot::Outcome::root) {
                b = root.x();
                slope = slopeAt(b, residual(b));
                converged = true;
            }
        }
        found = converged || std::fabs(stop) <= bracketTolerance;
    }
    settled_.P = P.toDouble();
    settled_.state.take(T, x);
    settled_.type = type;
    settled_.root = b;
    settled_.slope = slope;
    settled_.found = found && slope > 0;
    // One correction in Values: the number moves by rounding only, the derivatives become those of the root.
    // Without derivatives there is nothing to correct.
    beta = b;
    if (!(slope > 0) || Active::numdir() == 0) return;
    const Value f = calculateResiduals(P, T, x, type);
    if (std::isfinite(f.toDouble())) beta = Value(b) - f / slope;
}

} // namespace Phase
