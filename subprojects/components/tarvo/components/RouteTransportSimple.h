#ifndef TARVO_COMPONENTS_ROUTETRANSPORTSIMPLE_H
#define TARVO_COMPONENTS_ROUTETRANSPORTSIMPLE_H

#include <tarvo/components/RouteInterfaces.h>

// Transport properties scaled from their values at 20 degC by generic temperature laws: a power of T
// for the gas, an Andrade law for the liquid viscosity, the Sato-Riedel trend for the liquid
// conductivity and a critical-point law for the surface tension. Tc comes from the component.
class RouteTransportSimple : public virtual ComponentInterface, public virtual RouteTransport {
public:
    // The values at 293.15 K: surface tension N/m, liquid and vapor conductivity W/(m*K), liquid and
    // vapor viscosity Pa*s.
    RouteTransportSimple(const Value& sigma0, const Value& kl0, const Value& kv0, const Value& mul0,
                         const Value& muv0);
    Value muv(const Value& T, const Value& P) const override;
    Value mul(const Value& T) const override;
    Value kv(const Value& T, const Value& P) const override;
    Value kl(const Value& T) const override;
    Value sigma(const Value& T) const override;

private:
    double muv0_, mul0_, kv0_, kl0_, sigma0_; // SI
};

#endif
