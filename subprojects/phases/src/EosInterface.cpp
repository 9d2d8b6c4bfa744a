#include <tarvo/phases/EosInterface.h>
#include <tarvo/utility/Log.h>

#include <cmath>

using Tarvo::Utility::PhaseType;

namespace {
constexpr int verbosityFile = -1;
// The local iteration of settleDensity: enough for a start, which the flash's Newton finishes.
constexpr int maxSteps = 60;
constexpr double stepTolerance = 1e-13;
} // namespace

namespace Phase {

void EosInterface::calculatePressureEos_(const Value& T, const Vector& x, PhaseType type, Value& P) {
    P = pressure(beta, T);
    corrected = false;
    const Value critical = betac(x);
    const Value Pc_ = pressure(critical, T);
    const Value Tcm = pseudoCriticalTemperature(x);
    TARVO_LOG(4) << "Temp = " << T.toDouble() << " Tcm = " << Tcm.toDouble() << " Pcm = " << Pc_.toDouble();
    // The ideal gas's slope in beta: a fiftieth of it is the least slope that counts as stable.
    const Value s0 = density(one) * R * T;
    const bool subcritical = T.toDouble() < Tcm.toDouble();
    const bool vapor = type == PhaseType::vapor, liquid = type == PhaseType::liquid;
    const bool dense = beta.toDouble() > critical.toDouble(), light = beta.toDouble() < critical.toDouble();
    const bool outOfPlace = (subcritical && ((vapor && dense) || (liquid && light))) || (!subcritical && liquid && light);
    Value slope;
    if (outOfPlace) {
        P = Pc_;
        slope = dpdbeta(critical, T) - s0 / 50.0;
    } else {
        slope = dpdbeta(beta, T) - s0 / 50.0;
    }
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
        return;
    }
    corrected = true;
    Value plain = P;
    plain.active().clearderivatives();
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

bool EosInterface::Settled::at(const Value& Pnow, const Value& Tnow, const Vector& xnow, PhaseType typeNow) const {
    if (Pnow.toDouble() != P || Tnow.toDouble() != T || typeNow != type || xnow.size() != x.size()) return false;
    for (std::size_t i = 0; i < x.size(); ++i)
        if (xnow[i].toDouble() != x[i]) return false;
    return true;
}

void EosInterface::settleDensity(const Value& P, const Value& T, const Vector& x, PhaseType type) {
    precompute(T, x);
    const auto residual = [&](double reduced) { return plainResidual(reduced, P, T, x, type); };
    // Newton's method in plain numbers, with a difference quotient for the slope of the bent pressure,
    // kept inside (betaLow, betaMax()). A settle at the state of the last one, as the substitution of a
    // start asks of a pure fluid at each round, keeps that root where the residual there still vanishes.
    double b = settled_.root, slope = settled_.slope;
    const bool again = settled_.at(P, T, x, type) && slope > 0 &&
                       std::fabs(residual(b) / slope) <= stepTolerance * b;
    if (!again) {
        estimate(P, T, x, type);
        b = beta.toDouble();
        slope = 1;
        for (int k = 0; k < maxSteps; ++k) {
            const double f = residual(b);
            const double h = 1e-7 * b;
            slope = (residual(b + h) - f) / h;
            if (!(slope > 0) || !std::isfinite(f)) break; // no direction: the flash goes on from here
            double next = b - f / slope;
            if (next <= betaLow) next = 0.1 * b;
            if (next >= betaMax()) next = 0.5 * (b + betaMax());
            const bool done = std::fabs(next - b) <= stepTolerance * b;
            b = next;
            if (done) break;
        }
    }
    settled_.P = P.toDouble();
    settled_.T = T.toDouble();
    settled_.x.resize(x.size());
    for (std::size_t i = 0; i < x.size(); ++i) settled_.x[i] = x[i].toDouble();
    settled_.type = type;
    settled_.root = b;
    settled_.slope = slope;
    // One correction in Values: the number moves by rounding only, the derivatives become those of the root.
    beta = b;
    if (!(slope > 0)) return;
    const Value f = calculateResiduals(P, T, x, type);
    if (std::isfinite(f.toDouble())) beta = Value(b) - f / slope;
}

} // namespace Phase
