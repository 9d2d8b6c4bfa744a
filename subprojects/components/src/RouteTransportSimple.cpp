#include <tarvo/components/RouteTransportSimple.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

#include "UnitValues.h"

#include <algorithm>
#include <cmath>

using namespace componentUnits;

namespace {

constexpr double t20 = 293.15; // K, where the given values hold

// 1 - T / Tc, held at 0 above the critical point.
double distanceToCritical(double t, double tc) {
    return std::max(0.0, 1 - t / tc);
}

} // namespace

RouteTransportSimple::RouteTransportSimple(const Value& sigma0, const Value& kl0, const Value& kv0,
                                           const Value& mul0, const Value& muv0) {
    try {
        sigma0_ = sigma0.checkuom("N/m");
        kl0_ = kl0.checkuom("W/(m*K)");
        kv0_ = kv0.checkuom("W/(m*K)");
        mul0_ = mul0.checkuom("Pa*s");
        muv0_ = muv0.checkuom("Pa*s");
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

Value RouteTransportSimple::muv(const Value& T, const Value&) const {
    return muv0_ * std::pow(T.toDouble() / t20, 0.94) * PaS;
}

Value RouteTransportSimple::kv(const Value& T, const Value&) const {
    return kv0_ * std::pow(T.toDouble() / t20, 0.94) * WPerMK;
}

// exp(2500 / T + ln mul0 - 2500 / 293.15) Pa*s.
Value RouteTransportSimple::mul(const Value& T) const {
    return std::exp(2500 / T.toDouble() + std::log(mul0_) - 8.528057308545113) * PaS;
}

Value RouteTransportSimple::kl(const Value& T) const {
    const double tc = Tc().toDouble();
    return kl0_ * (3 + 20 * std::pow(distanceToCritical(T.toDouble(), tc), 2.0 / 3)) /
           (3 + 20 * std::pow(distanceToCritical(t20, tc), 2.0 / 3)) * WPerMK;
}

Value RouteTransportSimple::sigma(const Value& T) const {
    const double tc = Tc().toDouble();
    return sigma0_ / std::pow(distanceToCritical(t20, tc), 1.22) *
           std::pow(distanceToCritical(T.toDouble(), tc), 1.22) * NPerM;
}
