#include <tarvo/components/ChoiOkos.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

#include "UnitValues.h"

#include <cmath>

using namespace componentUnits;

namespace {

const Value JPerKgK(1.0, "J/(kg*K)");
const Value JPerKg(1.0, "J/kg");
const Value kgPerM3(1.0, "kg/m3");
const double zeroCelsius = Value(0.0, "°C").toDouble(); // K

} // namespace

Value ChoiOkos::cps(const Value& T, const Value&) const {
    try {
        const double t = (T - zeroK).toDouble() - zeroCelsius;
        const double cp = cp_[0] + t * (cp_[1] + t * cp_[2]);
        return ofTemperature(cp, cp_[1] + 2 * t * cp_[2], T, JPerKgK) * mw();
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

Value ChoiOkos::hs(const Value& T, const Value&) const {
    try {
        const double t = (T - zeroK).toDouble() - zeroCelsius, t0 = T0.toDouble() - zeroCelsius;
        const auto integral = [this](double x) { return x * (cp_[0] + x * (cp_[1] / 2 + x * cp_[2] / 3)); };
        const double cp = cp_[0] + t * (cp_[1] + t * cp_[2]);
        return ofTemperature(integral(t) - integral(t0), cp, T, JPerKg) * mw();
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

// The polynomial rewritten in T (K), a0 + a1 T + a2 T^2, integrates over T in closed form.
Value ChoiOkos::ss(const Value& T, const Value&) const {
    try {
        assert(20.0 * (T.toDouble() - 273.15) + 5463.0 > 0.0);
        const double k = (T - zeroK).toDouble(), k0 = T0.toDouble(), z = zeroCelsius;
        const double a0 = cp_[0] - cp_[1] * z + cp_[2] * z * z, a1 = cp_[1] - 2 * cp_[2] * z, a2 = cp_[2];
        const double s = a0 * std::log(k / k0) + a1 * (k - k0) + a2 / 2 * (k * k - k0 * k0);
        const double cp = a0 + k * (a1 + k * a2);
        return ofTemperature(s, cp / k, T, JPerKgK) * mw();
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

Value ChoiOkos::rhos(const Value& T, const Value&, double* derT) const {
    try {
        const double t = (T - zeroK).toDouble() - zeroCelsius;
        const Value rho =
            ofTemperature(rho_[0] + t * (rho_[1] + t * rho_[2]), rho_[1] + 2 * t * rho_[2], T, kgPerM3);
        const Value molar = rho / mw();
        if (derT) *derT = (rho_[1] + 2 * t * rho_[2]) / mw().toDouble();
        return molar;
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}
