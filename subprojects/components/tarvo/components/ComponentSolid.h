#ifndef TARVO_COMPONENTS_COMPONENTSOLID_H
#define TARVO_COMPONENTS_COMPONENTSOLID_H

#include <tarvo/components/Barin.h>
#include <tarvo/components/ComponentBase.h>
#include <tarvo/components/ComponentGeneric.h>
#include <tarvo/components/RoutesDummy.h>

#include <string>

// A non-volatile species with thermochemical data for its solid, which a liquid phase may hold in
// solution with the solid's properties.
class ComponentSolid : public ComponentGeneric,
                       public ComponentBase,
                       public RouteSaturationDummy,
                       public RouteHeatVaporDummy,
                       public RouteTransportDummy,
                       public RouteVolumeVaporDummy,
                       public RouteVolumeSolidDummy,
                       public virtual RouteVolumeLiquid,
                       public RouteHeatLiquidDummySolidBkk {
public:
    // density in kg/m3; solid false for a species that may be dissolved in a liquid phase.
    ComponentSolid(std::string name, const GroupBkk& solidGroup, const Value& mw, const Value& density,
                   bool solid);

    // In a liquid, the density of the solid.
    Value rhol(const Value& T, const Value& P, double* derT = nullptr) const override {
        return rhos(T, P, derT);
    }
    // Does not evaporate, but stays a number that a flash can divide by.
    Value kvli(const Value& T, const Value& P) const override;
    bool isSolid() const override { return solid_; }

private:
    bool solid_;
};

#endif
