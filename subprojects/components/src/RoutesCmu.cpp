#include <tarvo/components/RoutesCmu.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

#include "UnitValues.h"

#include <cassert>
#include <cmath>

using namespace componentUnits;

namespace {
const Value kcalPerKmolK(1.0, "kcal/kmol/K");
const Value kcalPerKmol(1.0, "kcal/kmol");
const Value cP(1.0, "cP");
} // namespace

RouteSaturationCmu::RouteSaturationCmu(double a, double b, double c, double Tmin, double Tmax)
    : a_(a), b_(b), c_(c), Tmin_(Tmin), Tmax_(Tmax) {
    assert(Tmin_ > 0.0);
    assert(Tmin_ < Tmax_);
}

Value RouteSaturationCmu::psat(const Value& T, double* dpsatdt, double* d2psatdt2) const {
    const double t = T.toDouble();
    const double bound = t < Tmin_ ? Tmin_ : t > Tmax_ ? Tmax_ : t;
    const double tc = bound + c_;
    const double pb = std::exp(a_ - b_ / tc);
    const double L1 = b_ / (tc * tc);
    const double d1 = pb * L1;
    const double d2 = pb * (L1 * L1 - 2 * b_ / (tc * tc * tc));
    if (dpsatdt) *dpsatdt = d1;
    if (d2psatdt2) *d2psatdt2 = d2;
    return ofTemperature(pb + d1 * (t - bound), d1, T, Pa);
}

Value RouteSaturationCmu::dhvl(const Value& T, double* derT) const {
    try {
        double d1, d2;
        const Value ps = psat(T, &d1, &d2);
        const double t = T.toDouble(), p = ps.toDouble();
        // R T^2 P' / P and its derivative in T.
        if (derT) *derT = R.toDouble() * (2 * t * d1 / p + t * t * (d2 / p - d1 * d1 / (p * p)));
        return R * T * T * (d1 * PaPerK) / ps;
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

Value RouteHeatVaporCmu::cpv(const Value& T, const Value&) const {
    try {
        const double t = (T - zeroK).toDouble();
        const double cp = c_[0] + t * (c_[1] + t * (c_[2] + t * c_[3]));
        const double slope = c_[1] + t * (2 * c_[2] + t * 3 * c_[3]);
        return ofTemperature(cp, slope, T, kcalPerKmolK);
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

Value RouteHeatVaporCmu::hv(const Value& T, const Value& P) const {
    try {
        static_cast<void>(P - zeroPa);
        const double t = (T - zeroK).toDouble(), t0 = T0.toDouble();
        const auto h = [this](double x) {
            return x * (c_[0] + x * (c_[1] / 2 + x * (c_[2] / 3 + x * c_[3] / 4)));
        };
        const double cp = c_[0] + t * (c_[1] + t * (c_[2] + t * c_[3]));
        return dh0() + ofTemperature(h(t) - h(t0), cp, T, kcalPerKmol);
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

Value RouteHeatVaporCmu::sv(const Value& T, const Value& P) const {
    try {
        const double t = (T - zeroK).toDouble(), t0 = T0.toDouble();
        assert(t > 0.0);
        assert(P.toDouble() > 0.0);
        const auto s = [this](double x) {
            return c_[0] * std::log(x) + x * (c_[1] + x * (c_[2] / 2 + x * c_[3] / 3));
        };
        const double cp = c_[0] + t * (c_[1] + t * (c_[2] + t * c_[3]));
        return ofTemperature(s(t) - s(t0), cp / t, T, kcalPerKmolK) - R * log(P / P0) + (dh0() - dg0()) / T0;
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

Value RouteTransportCmu::mul(const Value& T) const {
    return (1 / T.toDouble() - 1 / c2_) * c1_ * cP;
}
Value RouteTransportCmu::muv(const Value&, const Value&) const {
    return 0.0 * PaS;
}
Value RouteTransportCmu::kv(const Value&, const Value&) const {
    return 0.0 * WPerMK;
}
Value RouteTransportCmu::kl(const Value&) const {
    return 0.0 * WPerMK;
}
Value RouteTransportCmu::sigma(const Value&) const {
    return 0.0 * NPerM;
}
