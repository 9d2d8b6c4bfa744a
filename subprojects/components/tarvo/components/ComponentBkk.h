#ifndef TARVO_COMPONENTS_COMPONENTBKK_H
#define TARVO_COMPONENTS_COMPONENTBKK_H

#include <tarvo/components/Barin.h>
#include <tarvo/components/ComponentBase.h>
#include <tarvo/components/ComponentGeneric.h>
#include <tarvo/components/RoutesDummy.h>

#include <string>

// A non-volatile species with thermochemical data for both its solid and its melt.
class ComponentBkk : public ComponentGeneric,
                     public ComponentBase,
                     public RouteSaturationDummy,
                     public RouteHeatVaporDummy,
                     public RouteTransportDummy,
                     public RouteVolumeVaporDummy,
                     public RouteVolumeSolidDummy,
                     public virtual RouteVolumeLiquid,
                     public RouteHeatLiquidBkk,
                     public RouteHeatSolidBkk {
public:
    // density of the solid in kg/m3, also used for the melt.
    ComponentBkk(std::string name, const GroupBkk& solidGroup, const GroupBkk& liquidGroup, const Value& mw,
                 const Value& density);

    Value rhol(const Value& T, const Value& P, double* derT = nullptr) const override {
        return rhos(T, P, derT);
    }
    Value kvli(const Value& T, const Value& P) const override;
    bool isSolid() const override { return true; }
};

#endif
