#include <tarvo/components/RouteHeatVaporVolp.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

#include "UnitValues.h"

#include <cassert>
#include <cmath>
#include <vector>

using namespace componentUnits;

namespace {

// The coefficients are per mole: a number in J/(mol*K) is one in kJ/(kmol*K).
const Value kJPerKmol(1.0, "kJ/kmol");
const Value kJPerKmolK(1.0, "kJ/kmol/K");

// With L = ln T, d/dT [T sum h_k L^k] = sum (h_k + (k+1) h_(k+1)) L^k, so h follows from cp from the top.
ParameterVolp enthalpyCoefficients(const ParameterVolp& cp) {
    std::vector<double> h(cp.size());
    for (int k = 0; k < cp.size(); ++k)
        h[k] = cp[k];
    for (int k = cp.size() - 1; k >= 1; --k)
        h[k - 1] = h[k - 1] - k * h[k];
    return ParameterVolp(h);
}

// The integral of sum c_k L^k dL is sum c_k L^(k+1) / (k+1); the constant term makes it vanish at T0.
ParameterVolp entropyCoefficients(const ParameterVolp& cp) {
    const double t0 = T0.toDouble();
    assert(t0 > 0.0);
    const double l0 = std::log(t0);
    std::vector<double> s(cp.size() + 1);
    double atT0 = 0.0;
    for (int k = cp.size() - 1; k >= 0; --k) {
        s[k + 1] = cp[k] / (k + 1);
        atT0 = atT0 * l0 + s[k + 1];
    }
    s[0] = -atT0 * l0;
    return ParameterVolp(s);
}

} // namespace

RouteHeatVaporVolp::RouteHeatVaporVolp(const ComponentInterface* component, const ParameterVolp& cp)
    : component_(component), cp_(cp), h_(enthalpyCoefficients(cp)), s_(entropyCoefficients(cp)) {
    assert(component_ != nullptr);
}

Value RouteHeatVaporVolp::hv(const Value& T, const Value& P) const {
    try {
        const Value TT = T - zeroK;
        static_cast<void>(P - zeroPa); // units check only: ideal gas
        const double t = TT.toDouble(), t0 = T0.toDouble();
        return component_->dh0() +
               ofTemperature(t * h_.eval(t) - t0 * h_.eval(t0), cp_.eval(t), TT, kJPerKmol);
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

Value RouteHeatVaporVolp::sv(const Value& T, const Value& P) const {
    try {
        const Value TT = T - zeroK;
        const Value PP = P - zeroPa;
        assert(P.toDouble() > 0.0);
        const double p0 = P0.toDouble();
        assert(p0 > 0.0);
        const double t = TT.toDouble();
        return ofTemperature(s_.eval(t), cp_.eval(t) / t, TT, kJPerKmolK) - R * log(PP / P0) +
               (component_->dh0() - component_->dg0()) / T0;
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

Value RouteHeatVaporVolp::cpv(const Value& T, const Value&) const {
    try {
        const Value TT = T - zeroK;
        return cp_.eval(TT / K) * kJPerKmolK;
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}
