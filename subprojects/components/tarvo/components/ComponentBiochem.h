#ifndef TARVO_COMPONENTS_COMPONENTBIOCHEM_H
#define TARVO_COMPONENTS_COMPONENTBIOCHEM_H

#include <tarvo/components/ChoiOkos.h>
#include <tarvo/components/ComponentBase.h>
#include <tarvo/components/ComponentGeneric.h>
#include <tarvo/components/RouteTransportSimple.h>
#include <tarvo/components/RoutesDummy.h>

#include <string>

// A lumped food or biomass constituent (protein, fat, ...): a solid that never evaporates.
class ComponentBiochem : public ComponentGeneric,
                         public ComponentBase,
                         public RouteSaturationDummy,
                         public RouteHeatVaporDummy,
                         public RouteTransportSimple,
                         public RouteVolumeVaporDummy,
                         public ChoiOkos {
public:
    // heatCapacity in J/(kg*K) and density in kg/m3 as Choi-Okos polynomials; the transport values at
    // 20 degC as for RouteTransportSimple.
    ComponentBiochem(std::string name, const ParameterChoiOkos& heatCapacity,
                     const ParameterChoiOkos& density, const Value& sigma0, const Value& kl0,
                     const Value& kv0, const Value& mul0, const Value& muv0, const Value& mw);

    Value kvli(const Value& T, const Value& P) const override;
    bool isSolid() const override { return true; }
};

#endif
