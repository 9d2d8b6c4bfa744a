#ifndef TARVO_COMPONENTS_CHOIOKOS_H
#define TARVO_COMPONENTS_CHOIOKOS_H

#include <tarvo/components/RouteInterfaces.h>

#include <cassert>

// c0 + c1 t + c2 t^2, t in degree Celsius: one property of a food constituent (Choi and Okos, 1986).
class ParameterChoiOkos {
public:
    ParameterChoiOkos(double c0, double c1, double c2) : c_{c0, c1, c2} {}
    double operator[](int i) const {
        assert((i >= 0) && (i < 3));
        return c_[i];
    }

private:
    double c_[3];
};

// Heat capacity (J/(kg*K)) and density (kg/m3) of a food constituent, made molar with mw. The species is
// the same in a liquid as in a solid: the liquid operations give the solid's values.
class ChoiOkos : public virtual ComponentInterface,
                 public virtual RouteHeatSolid,
                 public virtual RouteHeatLiquid,
                 public virtual RouteVolumeSolid,
                 public virtual RouteVolumeLiquid {
public:
    ChoiOkos(const ParameterChoiOkos& heatCapacity, const ParameterChoiOkos& density)
        : cp_(heatCapacity), rho_(density) {}

    // The heat capacity integrated from T0, and its integral over T from T0.
    Value hs(const Value& T, const Value& P) const override;
    Value ss(const Value& T, const Value& P) const override;
    Value cps(const Value& T, const Value& P) const override;
    Value rhos(const Value& T, const Value& P, double* derT = nullptr) const override;

    Value hl(const Value& T, const Value& P) const override { return hs(T, P); }
    Value sl(const Value& T, const Value& P) const override { return ss(T, P); }
    Value cpl(const Value& T, const Value& P) const override { return cps(T, P); }
    Value rhol(const Value& T, const Value& P, double* derT = nullptr) const override {
        return rhos(T, P, derT);
    }

private:
    ParameterChoiOkos cp_;
    ParameterChoiOkos rho_;
};

#endif
