#ifndef TARVO_COMPONENTS_ROUTEHEATVAPORVOLP_H
#define TARVO_COMPONENTS_ROUTEHEATVAPORVOLP_H

#include <tarvo/components/DipprParameters.h>
#include <tarvo/components/RouteInterfaces.h>

// Ideal-gas heat capacity as a polynomial in ln T, in J/(mol*K), with the enthalpy and entropy that
// integrate it exactly. The component supplies dh0 and dg0.
class RouteHeatVaporVolp : public RouteHeatVapor {
public:
    RouteHeatVaporVolp(const ComponentInterface* component, const ParameterVolp& cp);
    Value hv(const Value& T, const Value& P) const override;
    Value sv(const Value& T, const Value& P) const override;
    // A plain number: no derivatives.
    Value cpv(const Value& T, const Value& P) const override;

private:
    const ComponentInterface* component_;
    ParameterVolp cp_;
    ParameterVolp h_; // T h_(T) is an antiderivative of cp_(T)
    ParameterVolp s_; // the integral of cp_(T) / T from T0
};

#endif
