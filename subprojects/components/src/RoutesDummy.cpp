#include <tarvo/components/RoutesDummy.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

#include "UnitValues.h"

#include <cassert>

using namespace componentUnits;

namespace {

const Value cpVaporDummy(20000.0, "J/kmol/K");
const Value hVaporAtT0(-2.41814e8, "J/kmol"); // water vapor's enthalpy of formation (ChemSep v8.32)
const Value cpSolidDummy = Value(4186.8, "J/(kg*K)") * Value(18.0, "kg/kmol");

} // namespace

Value RouteSaturationDummy::psat(const Value&, double* dpsatdt, double* d2psatdt2) const {
    if (dpsatdt) *dpsatdt = 0.0;
    if (d2psatdt2) *d2psatdt2 = 0.0;
    return 0.0 * Pa;
}

Value RouteSaturationDummy::dhvl(const Value&, double* derT) const {
    static const Value heat(500.0, "kcal/kmol");
    if (derT) *derT = 0.0;
    return heat;
}

Value RouteHeatVaporDummy::hv(const Value& T, const Value&) const {
    try {
        return cpVaporDummy * (T - T0) + hVaporAtT0;
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

Value RouteHeatVaporDummy::sv(const Value& T, const Value& P) const {
    try {
        assert(T.toDouble() > 0.0);
        assert(T0.toDouble() > 0.0);
        assert(P.toDouble() > 0.0);
        assert(P0.toDouble() > 0.0);
        return cpVaporDummy * log(T / T0) - R * log(P / P0);
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

Value RouteHeatVaporDummy::cpv(const Value&, const Value&) const {
    return cpVaporDummy;
}

Value RouteHeatSolidDummy::hs(const Value& T, const Value&) const {
    try {
        return cpSolidDummy * (T - zeroK);
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

Value RouteHeatSolidDummy::ss(const Value& T, const Value&) const {
    try {
        return cpSolidDummy * log(T / K);
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

Value RouteHeatSolidDummy::cps(const Value&, const Value&) const {
    return cpSolidDummy;
}

Value RouteVolumeVaporDummy::rhov(const Value&, const Value&, double* dRhovdT, double* dRhovdP) const {
    if (dRhovdT) *dRhovdT = 0.0;
    if (dRhovdP) *dRhovdP = 0.0;
    return 1.0 * kmolPerM3;
}

RouteVolumeSolidDummy::RouteVolumeSolidDummy(const Value& density) : density_(density) {
    density_.checkuom("kmol/m3");
}

Value RouteVolumeSolidDummy::rhos(const Value&, const Value&, double* derT) const {
    if (derT) *derT = 0.0;
    return density_;
}

namespace {
const Value cP(1.0, "cP");
}

Value RouteTransportDummy::muv(const Value&, const Value&) const {
    return 0.02 * cP;
}
Value RouteTransportDummy::mul(const Value&) const {
    return 300.0 * cP;
}
Value RouteTransportDummy::kv(const Value&, const Value&) const {
    return 0.026 * WPerMK;
}
Value RouteTransportDummy::kl(const Value&) const {
    return 0.6 * WPerMK;
}
Value RouteTransportDummy::sigma(const Value&) const {
    return 0.08 * NPerM;
}
