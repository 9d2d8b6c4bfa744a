#include <tarvo/components/RouteInterfaces.h>

#include "UnitValues.h"

Value RouteHeatVapor::gv(const Value& T, const Value& P) const {
    return hv(T, P) - T * sv(T, P);
}

RouteHeatVapor::Point RouteHeatVapor::vaporPoint(Property kind, const Value& T, const Value& P) const {
    const Value v = kind == Property::enthalpy ? hv(T, P) : kind == Property::entropy ? sv(T, P) : cpv(T, P);
    v.same(__PRETTY_FUNCTION__, kind == Property::enthalpy ? componentUnits::JPerKmol : componentUnits::JPerKmolK);
    return {v.toDouble(), v.active().derivative(0), v.active().derivative(1)};
}

Value RouteHeatSolid::gs(const Value& T, const Value& P) const {
    return hs(T, P) - T * ss(T, P);
}
