#ifndef TARVO_COMPONENTS_COMPONENTDIPPR_H
#define TARVO_COMPONENTS_COMPONENTDIPPR_H

#include <tarvo/components/ComponentBase.h>
#include <tarvo/components/ComponentGeneric.h>
#include <tarvo/components/DipprSaturation.h>
#include <tarvo/components/RoutesDippr.h>
#include <tarvo/components/RoutesDummy.h>

#include <string>

// A fluid described by DIPPR correlations. Its solid is a stand-in whose density is that of the liquid
// at the lower end of the density record, near the triple point.
class ComponentDippr : public ComponentGeneric,
                       public ComponentBase,
                       public RouteHeatSolidDummy,
                       public RouteVolumeSolidDummy,
                       public dippr,
                       public RouteTransportDippr {
public:
    // cpig DIPPR 107 in J/(kmol*K), dnldip 105 in kmol/m3, sigmadip 106 in N/m, muvdip 102 and muldip
    // 101 in Pa*s, kvdip 102 and kldip 100 in W/(m*K); an empty henry record for a species that follows
    // its vapor pressure; the constants as for ComponentBase, and dhv0 for the saturation route.
    ComponentDippr(std::string name, const ParameterDippr7& cpig, const ParameterDippr7& dnldip,
                   const ParameterHenry& henry, const ParameterDippr7& sigmadip,
                   const ParameterDippr7& muvdip, const ParameterDippr7& muldip, const ParameterDippr7& kvdip,
                   const ParameterDippr7& kldip, const ParameterAntoine& antoine, const Value& mw,
                   const Value& Pc, const Value& Tc, const Value& rhoc, const Value& diffvol, const Value& vb,
                   const Value& zc, const Value& dh0, const Value& dg0, const Value& omega,
                   const Value& dhv0);

    // With a Henry record, the K value of a gas dissolving in water; otherwise psat / P.
    Value kvli(const Value& T, const Value& P) const override;
    bool isSolid() const override { return false; }
    bool isHenry() const override { return henry_.set(); }

private:
    ParameterHenry henry_;
};

#endif
