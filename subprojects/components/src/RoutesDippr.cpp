#include <tarvo/components/RoutesDippr.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

#include "DipprForms.h"
#include "UnitValues.h"

#include <cassert>
#include <cmath>

using namespace componentUnits;
using dipprForms::Point;

namespace {

// s = x / sinh x, (x / sinh x)^2 and its derivative in x, for x >= 0; written with exp(-x) so that it
// neither overflows nor loses the value for the large C / T of light gases at low T.
Point sinhSquared(double x) {
    if (x == 0.0) return {1.0, 0.0};
    const double e = std::exp(-x);
    const double oneMinusQ = -std::expm1(-2 * x); // 1 - exp(-2x)
    const double s = 2 * x * e / oneMinusQ;
    const double coth = (1 + e * e) / oneMinusQ;
    const double ds = 2 * e / oneMinusQ - s * coth; // s (1/x - coth x)
    return {s * s, 2 * s * ds};
}

// (y / cosh y)^2 and its derivative in y, for y >= 0.
Point coshSquared(double y) {
    const double e = std::exp(-y);
    const double c = 2 * y * e / (1 + e * e);
    const double tanh = -std::expm1(-2 * y) / (1 + e * e);
    const double dc = 2 * e / (1 + e * e) - c * tanh; // c (1/y - tanh y)
    return {c * c, 2 * c * dc};
}

// A number with its derivatives in two directions, combined by the rules and in the order of the dense store of
// values (GenericActive::combineInto and chainByInto), so that each number is the one that values give.
struct Dual {
    double v, d[2];
};

Dual constant(double v) { return {v, {0.0, 0.0}}; }
Dual combine(double value, double a, const Dual& x, double b, const Dual& y) {
    return {value, {a * x.d[0] + b * y.d[0], a * x.d[1] + b * y.d[1]}};
}
Dual chain(double value, double k, const Dual& x) { return {value, {k * x.d[0], k * x.d[1]}}; }
Dual operator+(const Dual& x, const Dual& y) { return combine(x.v + y.v, 1, x, 1, y); }
Dual operator-(const Dual& x, const Dual& y) { return combine(x.v - y.v, 1, x, -1, y); }
Dual operator*(const Dual& x, const Dual& y) { return combine(x.v * y.v, y.v, x, x.v, y); }
Dual operator/(const Dual& x, const Dual& y) { return combine(x.v / y.v, 1 / y.v, x, -x.v / (y.v * y.v), y); }
Dual log(const Dual& x) {
    const double v = x.v;
    return {std::log(v), {ActiveRules::guarded(v, x.d[0], v), ActiveRules::guarded(v, x.d[1], v)}};
}
// ofTemperature on duals.
Dual ofTemperature(double f, double dfdT, const Dual& T, const Value& unit) {
    return chain(f, dfdT, T) * constant(unit.toDouble());
}

} // namespace

RouteHeatVaporDippr::RouteHeatVaporDippr(const ParameterDippr7& cpig)
    : cpig_(cpig), h0_(h_(T0.toDouble())), s0_(s_(T0.toDouble())) {
    // Guards of the closed form of the entropy, which depend on the record only: checked once here rather
    // than on every call of sv.
    const double t0 = T0.toDouble();
    assert(t0 > 0.0);
    assert(std::exp(2 * cpig_[4] / t0) + 1 > 0.0);
    assert(std::exp(cpig_[2] / t0) + 1 > 0.0);
}

// A + B (x / sinh x)^2 + D (y / cosh y)^2 with x = C/t, y = E/t. The form is even in C and in E.
double RouteHeatVaporDippr::cp_(double t, double* dcpdt) const {
    if (cpig_[1] == 0.0) {
        if (dcpdt) *dcpdt = 0.0;
        return cpig_[0];
    }
    if (t != lastT_) {
        const double x = std::fabs(cpig_[2]) / t, y = std::fabs(cpig_[4]) / t;
        const dipprForms::Point f = sinhSquared(x), g = coshSquared(y);
        lastT_ = t;
        lastCp_ = cpig_[0] + cpig_[1] * f.y + cpig_[3] * g.y;
        lastSlope_ = -(cpig_[1] * f.dy * x + cpig_[3] * g.dy * y) / t;
    }
    if (dcpdt) *dcpdt = lastSlope_;
    return lastCp_;
}

// A t + B C coth(C/t) - D E tanh(E/t), less the constants B C - D E.
double RouteHeatVaporDippr::h_(double t) const {
    if (cpig_[1] == 0.0) return cpig_[0] * t;
    const double C = std::fabs(cpig_[2]), E = std::fabs(cpig_[4]);
    const double sinhPart = C == 0.0 ? cpig_[1] * t : 2 * cpig_[1] * C / std::expm1(2 * C / t);
    const double coshPart = 2 * cpig_[3] * E / (std::exp(2 * E / t) + 1);
    return cpig_[0] * t + sinhPart + coshPart;
}

// A ln t + B (x coth x - ln sinh x) - D (y tanh y - ln cosh y), each bracket less ln 2 and written in
// q = exp(-2x) resp. exp(-2y), which stays finite for any x, y > 0.
double RouteHeatVaporDippr::s_(double t) const {
    if (cpig_[1] == 0.0) return cpig_[0] * std::log(t);
    if (t == lastEntropyT_) return lastEntropy_;
    const double x = std::fabs(cpig_[2]) / t, y = std::fabs(cpig_[4]) / t;
    double sinhPart;
    if (x == 0.0) {
        sinhPart = std::log(t); // the integrand is B / t
    } else {
        const double q = std::exp(-2 * x);
        sinhPart = 2 * x * q / -std::expm1(-2 * x) - std::log1p(-q);
    }
    const double q = std::exp(-2 * y);
    const double coshPart = -2 * y * q / (1 + q) - std::log1p(q);
    lastEntropyT_ = t;
    lastEntropy_ = cpig_[0] * std::log(t) + cpig_[1] * sinhPart - cpig_[3] * coshPart;
    return lastEntropy_;
}

Value RouteHeatVaporDippr::hv(const Value& T, const Value& P) const {
    try {
        const Value TT = T - zeroK;
        static_cast<void>(P - zeroPa); // units check only: the ideal-gas enthalpy does not depend on P
        const double t = TT.toDouble();
        return dh0() + ofTemperature(h_(t) - h0_, cp_(t, nullptr), TT, JPerKmol);
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

Value RouteHeatVaporDippr::sv(const Value& T, const Value& P) const {
    try {
        const Value TT = T - zeroK;
        const Value PP = P - zeroPa;
        assert(TT.toDouble() > 0.0);
        assert(PP.toDouble() > 0.0);
        const double t = TT.toDouble();
        return ofTemperature(s_(t) - s0_, cp_(t, nullptr) / t, TT, JPerKmolK) - R * log(PP / P0) +
               (dh0() - dg0()) / T0;
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

// hv, sv and cpv, line by line, on T and P as directions 0 and 1. Arguments in other units go the way of values,
// which reports them.
RouteHeatVapor::Point RouteHeatVaporDippr::vaporPoint(Property kind, const Value& T, const Value& P) const {
    if (!T.sameUnits(zeroK) || !P.sameUnits(zeroPa)) return RouteHeatVapor::vaporPoint(kind, T, P);
    const Dual TT = Dual{T.toDouble(), {1.0, 0.0}} - constant(zeroK.toDouble());
    const Dual PP = Dual{P.toDouble(), {0.0, 1.0}} - constant(zeroPa.toDouble());
    const double t = TT.v;
    Dual r{};
    switch (kind) {
    case Property::enthalpy:
        r = constant(dh0().toDouble()) + ofTemperature(h_(t) - h0_, cp_(t, nullptr), TT, JPerKmol);
        break;
    case Property::entropy:
        assert(t > 0.0);
        assert(PP.v > 0.0);
        r = ofTemperature(s_(t) - s0_, cp_(t, nullptr) / t, TT, JPerKmolK) -
            constant(R.toDouble()) * log(PP / constant(P0.toDouble())) +
            (constant(dh0().toDouble()) - constant(dg0().toDouble())) / constant(T0.toDouble());
        break;
    case Property::heatCapacity: {
        double slope;
        const double cp = cp_(t, &slope);
        r = ofTemperature(cp, slope, TT, JPerKmolK);
        break;
    }
    }
    return {r.v, r.d[0], r.d[1]};
}

Value RouteHeatVaporDippr::cpv(const Value& T, const Value&) const {
    try {
        const Value TT = T - zeroK;
        double slope;
        const double cp = cp_(TT.toDouble(), &slope);
        return ofTemperature(cp, slope, TT, JPerKmolK);
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

Value RouteVolumeLiquidDippr::rhol(const Value& T, const Value&, double* derT) const {
    assert(dnldip_[1] > 0.0);
    if (dnldip_[2] == 0.0) {
        if (derT) *derT = 0.0;
        return dnldip_[0] * kmolPerM3;
    }
    const double t = T.toDouble(), Tmin = dnldip_[5], Tmax = dnldip_[6];
    if (t > Tmin && t < Tmax) {
        const Point rho = dipprForms::eq105(dnldip_, t);
        if (derT) *derT = rho.dy;
        return ofTemperature(rho.y, rho.dy, T, kmolPerM3);
    }
    if (derT) *derT = 0.0;
    return dipprForms::eq105(dnldip_, t <= Tmin ? Tmin : Tmax).y * kmolPerM3;
}

Value RouteVolumeVaporIdeal::rhov(const Value& T, const Value& P, double* dRhovdT, double* dRhovdP) const {
    try {
        Value rho = P / R / T;
        if (dRhovdT) *dRhovdT = -rho.toDouble() / T.toDouble();
        if (dRhovdP) *dRhovdP = rho.toDouble() / P.toDouble();
        return rho;
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

Value RouteTransportDippr::muv(const Value& T, const Value&) const {
    const double t = T.toDouble(), Tmin = muvdip_[5], Tmax = muvdip_[6];
    if (t >= Tmin && t <= Tmax) return dipprForms::eq102(muvdip_, t).y * PaS;
    const double b = t < Tmin ? Tmin : Tmax;
    const double B = muvdip_[1], C = muvdip_[2], D = muvdip_[3];
    const double s = -(C + 2 * D / b) / (1 + C / b + D / (b * b)) - B * b;
    return dipprForms::extrapolateInverse(dipprForms::eq102(muvdip_, b).y, s, b, t) * PaS;
}

Value RouteTransportDippr::mul(const Value& T) const {
    try {
        assert(muldip_[5] > 0.0);
        assert(muldip_[6] > 0.0);
        const Value TT = T - zeroK;
        assert(TT.toDouble() > 0.0);
        const double t = TT.toDouble(), Tmin = muldip_[5], Tmax = muldip_[6];
        if (t >= Tmin && t <= Tmax) return dipprForms::eq101(muldip_, t).y * PaS;
        const double b = t < Tmin ? Tmin : Tmax;
        const double B = muldip_[1], C = muldip_[2], D = muldip_[3], E = muldip_[4];
        const double s = B - C * b - D * E * std::pow(b, E + 1);
        return dipprForms::extrapolateInverse(dipprForms::eq101(muldip_, b).y, s, b, t) * PaS;
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

Value RouteTransportDippr::kv(const Value& T, const Value&) const {
    const double t = T.toDouble(), Tmin = kvdip_[5], Tmax = kvdip_[6];
    if (t < Tmin) return dipprForms::extrapolateLow(dipprForms::eq102(kvdip_, Tmin), Tmin, t) * WPerMK;
    if (t > Tmax) return dipprForms::extrapolateHigh(dipprForms::eq102(kvdip_, Tmax), Tmax, t) * WPerMK;
    return dipprForms::eq102(kvdip_, t).y * WPerMK;
}

Value RouteTransportDippr::kl(const Value& T) const {
    const double t = T.toDouble(), Tmin = kldip_[5], Tmax = kldip_[6];
    if (t < Tmin) return dipprForms::extrapolateLow(dipprForms::eq100(kldip_, Tmin), Tmin, t) * WPerMK;
    if (t > Tmax) return dipprForms::extrapolateHigh(dipprForms::eq100(kldip_, Tmax), Tmax, t) * WPerMK;
    return dipprForms::eq100(kldip_, t).y * WPerMK;
}

Value RouteTransportDippr::sigma(const Value& T) const {
    const double t = T.toDouble(), Tmin = sigmadip_[5], Tmax = sigmadip_[6], tc = Tc().toDouble();
    if (t < Tmin) return dipprForms::extrapolateLow(dipprForms::eq106(sigmadip_, Tmin, tc), Tmin, t) * NPerM;
    return dipprForms::eq106(sigmadip_, t > Tmax ? Tmax : t, tc).y * NPerM;
}
