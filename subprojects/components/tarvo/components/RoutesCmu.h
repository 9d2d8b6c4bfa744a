#ifndef TARVO_COMPONENTS_ROUTESCMU_H
#define TARVO_COMPONENTS_ROUTESCMU_H

#include <tarvo/components/RouteInterfaces.h>

// An older family of short correlations, kept for species described by them.

// ln P[Pa] = a - b / (T + c) on [Tmin, Tmax]; outside, P continues linearly with the slope at the bound.
// The latent heat is that of Clapeyron with an ideal-gas vapor and no liquid volume.
class RouteSaturationCmu : public virtual RouteSaturation {
public:
    RouteSaturationCmu(double a, double b, double c, double Tmin, double Tmax);
    Value psat(const Value& T, double* dpsatdt = nullptr, double* d2psatdt2 = nullptr) const override;
    Value dhvl(const Value& T, double* derT = nullptr) const override;

private:
    double a_, b_, c_, Tmin_, Tmax_;
};

// Ideal-gas heat capacity c0 + c1 T + c2 T^2 + c3 T^3 in kcal/(kmol*K), with its integrals from T0.
class RouteHeatVaporCmu : public virtual ComponentInterface, public virtual RouteHeatVapor {
public:
    RouteHeatVaporCmu(double c0, double c1, double c2, double c3) : c_{c0, c1, c2, c3} {}
    Value hv(const Value& T, const Value& P) const override;
    Value sv(const Value& T, const Value& P) const override;
    Value cpv(const Value& T, const Value& P) const override;

private:
    double c_[4];
};

// Liquid viscosity (1/T - 1/c2) c1 in cP; nothing else.
class RouteTransportCmu : public virtual RouteTransport {
public:
    RouteTransportCmu(double c1, double c2) : c1_(c1), c2_(c2) {}
    Value muv(const Value& T, const Value& P) const override;
    Value mul(const Value& T) const override;
    Value kv(const Value& T, const Value& P) const override;
    Value kl(const Value& T) const override;
    Value sigma(const Value& T) const override;

private:
    double c1_, c2_;
};

#endif
