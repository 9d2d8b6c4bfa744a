#ifndef TARVO_COMPONENTS_DIPPRSATURATION_H
#define TARVO_COMPONENTS_DIPPRSATURATION_H

#include <tarvo/components/DipprParameters.h>
#include <tarvo/components/RouteInterfaces.h>
#include <tarvo/components/RoutesDippr.h>

#include <memory>

// Vapor pressure by the extended Antoine form, and the liquid as the vapor less the latent heat of the
// Clapeyron equation. The vapor heat and the two densities come from the sibling routes of the
// component, through the virtual interfaces.
class AntoineSaturation : public virtual ComponentInterface,
                          public virtual RouteSaturation,
                          public virtual RouteHeatLiquid,
                          public virtual RouteHeatVapor,
                          public virtual RouteVolumeLiquid,
                          public virtual RouteVolumeVapor {
public:
    // dhv0, J/kg by the catalogue's convention, is the latent heat that the extrapolation below the
    // record's range tends to at 0 K, and the heat reported where no vapor pressure is left.
    AntoineSaturation(const ParameterAntoine& antoine, const Value& dhv0);

    // Inside [Tmin, Tmax) the Antoine form; below Tmin a form whose latent heat is linear in T, fitted
    // to value and slope at Tmin; from Tmax on ln P linear in 1/T.
    Value psat(const Value& T, double* dpsatdt = nullptr, double* d2psatdt2 = nullptr) const override;
    // Clapeyron: T dP/dT (1/rhov - 1/rhol) along the saturation line.
    Value dhvl(const Value& T, double* derT = nullptr) const override;
    Value hl(const Value& T, const Value& P) const override;
    Value sl(const Value& T, const Value& P) const override;
    Value cpl(const Value& T, const Value& P) const override;

private:
    Value dhvlAt_(const Value& T, const Value& ps, double dps, double d2ps, double* derT) const;
    // d dhvl / dT at t, on numbers, with the liquid volume taken at constant pressure.
    double dhvlSlope_(double t) const;

    ParameterAntoine antoine_;
    double dhv0_;
    // The two extrapolations, fixed by the record: ln P = lnPmin_ + (a_ ln(t / Tmin) + b_ (1/t - 1/Tmin)) / R
    // below Tmin, ln P = lnPmax_ + m_ (1/Tmax - 1/t) from Tmax on.
    double lnPmin_ = 0.0, a_ = 0.0, b_ = 0.0;
    double lnPmax_ = 0.0, m_ = 0.0;
};

// A fluid whose vapor heat (DIPPR 107) and liquid density (DIPPR 105) are inherited routes.
class dippr : public AntoineSaturation,
              public RouteHeatVaporDippr,
              public RouteVolumeLiquidDippr,
              public RouteVolumeVaporIdeal {
public:
    dippr(const ParameterAntoine& antoine, const Value& dhv0, const ParameterDippr7& cpig,
          const ParameterDippr7& dnldip)
        : AntoineSaturation(antoine, dhv0), RouteHeatVaporDippr(cpig), RouteVolumeLiquidDippr(dnldip) {}
};

// A fluid whose vapor heat and liquid density are objects of their own, to which it forwards. They are
// handed over by the derived component once it can give them a reference to itself.
class pdippr : public AntoineSaturation, public RouteVolumeVaporIdeal {
public:
    pdippr(const ParameterAntoine& antoine, const Value& dhv0) : AntoineSaturation(antoine, dhv0) {}

    Value hv(const Value& T, const Value& P) const override;
    Value sv(const Value& T, const Value& P) const override;
    Value cpv(const Value& T, const Value& P) const override;
    Value rhol(const Value& T, const Value& P, double* derT = nullptr) const override;

protected:
    void forwardTo(std::unique_ptr<RouteHeatVapor> heatVapor,
                   std::unique_ptr<RouteVolumeLiquid> volumeLiquid);

private:
    std::unique_ptr<RouteHeatVapor> heatVapor_;
    std::unique_ptr<RouteVolumeLiquid> volumeLiquid_;
};

#endif
