#include <tarvo/components/RouteInterfaces.h>

Value RouteHeatVapor::gv(const Value& T, const Value& P) const {
    return hv(T, P) - T * sv(T, P);
}

Value RouteHeatSolid::gs(const Value& T, const Value& P) const {
    return hs(T, P) - T * ss(T, P);
}
