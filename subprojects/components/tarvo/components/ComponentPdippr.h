#ifndef TARVO_COMPONENTS_COMPONENTPDIPPR_H
#define TARVO_COMPONENTS_COMPONENTPDIPPR_H

#include <tarvo/components/ComponentBase.h>
#include <tarvo/components/ComponentGeneric.h>
#include <tarvo/components/DipprSaturation.h>
#include <tarvo/components/RoutesDippr.h>
#include <tarvo/components/RoutesDummy.h>

#include <memory>
#include <string>

// A fluid like ComponentDippr whose ideal-gas heat and liquid density are routes of their own kind.
class ComponentPdippr : public ComponentGeneric,
                        public ComponentBase,
                        public RouteHeatSolidDummy,
                        public RouteVolumeSolidDummy,
                        public pdippr,
                        public RouteTransportDippr {
public:
    // Makes the vapor-heat route once the component exists, since the route reads dh0 and dg0 from it.
    using HeatVaporFactory = std::unique_ptr<RouteHeatVapor> (*)(const ComponentInterface& component);

    // As ComponentDippr, with the two routes in place of the 107 and 105 records, and the density of the
    // solid in kmol/m3.
    ComponentPdippr(std::string name, HeatVaporFactory heatVapor,
                    std::unique_ptr<RouteVolumeLiquid> volumeLiquid, const ParameterHenry& henry,
                    const ParameterDippr7& sigmadip, const ParameterDippr7& muvdip,
                    const ParameterDippr7& muldip, const ParameterDippr7& kvdip, const ParameterDippr7& kldip,
                    const ParameterAntoine& antoine, const Value& mw, const Value& Pc, const Value& Tc,
                    const Value& rhoc, const Value& diffvol, const Value& vb, const Value& zc,
                    const Value& dh0, const Value& dg0, const Value& omega, const Value& dhv0,
                    const Value& solidDensity);

    // As ComponentDippr, with the Henry constant in units a hundred times larger.
    Value kvli(const Value& T, const Value& P) const override;
    bool isSolid() const override { return false; }
    bool isHenry() const override { return henry_.set(); }

private:
    ParameterHenry henry_;
};

#endif
