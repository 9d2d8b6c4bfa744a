#ifndef TARVO_COMPONENTS_ROUTESDIPPR_H
#define TARVO_COMPONENTS_ROUTESDIPPR_H

#include <tarvo/components/DipprParameters.h>
#include <tarvo/components/RouteInterfaces.h>

#include <limits>

// Fluid routes built on the DIPPR correlation forms.

// Ideal-gas heat capacity by DIPPR 107 (Aly-Lee), and the enthalpy and entropy that integrate it in
// closed form. The record's range documents the source only: the form holds at any T.
class RouteHeatVaporDippr : public virtual ComponentInterface, public virtual RouteHeatVapor {
public:
    explicit RouteHeatVaporDippr(const ParameterDippr7& cpig);
    Value hv(const Value& T, const Value& P) const override;
    Value sv(const Value& T, const Value& P) const override;
    Value cpv(const Value& T, const Value& P) const override;
    // The numbers of hv, sv and cpv, worked out as the two directions' arithmetic of values works them out.
    Point vaporPoint(Property kind, const Value& T, const Value& P) const override;

private:
    double cp_(double t, double* dcpdt) const; // J/(kmol*K), t in K
    double h_(double t) const;                 // antiderivative of cp_, J/kmol
    double s_(double t) const;                 // antiderivative of cp_ / t, J/(kmol*K)

    ParameterDippr7 cpig_;
    double h0_; // h_ at T0
    double s0_; // s_ at T0
    // cp_ and its slope at the temperature of its last evaluation: a phase asks for its components' enthalpy,
    // entropy and heat capacity in turn at one temperature, and each of them needs cp.
    mutable double lastT_ = std::numeric_limits<double>::quiet_NaN(), lastCp_ = 0, lastSlope_ = 0;
    // The entropy likewise: its closed form takes three transcendental functions, and the streams of a plant
    // near its solution share a few temperatures.
    mutable double lastEntropyT_ = std::numeric_limits<double>::quiet_NaN(), lastEntropy_ = 0;
};

// Saturated liquid density by DIPPR 105, held constant outside the record's range.
class RouteVolumeLiquidDippr : public virtual RouteVolumeLiquid {
public:
    explicit RouteVolumeLiquidDippr(const ParameterDippr7& dnldip) : dnldip_(dnldip) {}
    Value rhol(const Value& T, const Value& P, double* derT = nullptr) const override;

private:
    ParameterDippr7 dnldip_;
};

// Vapor density of the ideal gas, P / (R T).
class RouteVolumeVaporIdeal : public virtual ComponentInterface, public virtual RouteVolumeVapor {
public:
    Value rhov(const Value& T, const Value& P, double* dRhovdT = nullptr,
               double* dRhovdP = nullptr) const override;
};

// Viscosities, thermal conductivities and surface tension by DIPPR 101, 102, 100 and 106, continued
// beyond each record's range so that they stay positive and smooth.
class RouteTransportDippr : public virtual ComponentInterface, public virtual RouteTransport {
public:
    RouteTransportDippr(const ParameterDippr7& muvdip, const ParameterDippr7& muldip,
                        const ParameterDippr7& kvdip, const ParameterDippr7& kldip,
                        const ParameterDippr7& sigmadip)
        : muvdip_(muvdip), muldip_(muldip), kvdip_(kvdip), kldip_(kldip), sigmadip_(sigmadip) {}
    Value muv(const Value& T, const Value& P) const override;
    Value mul(const Value& T) const override;
    Value kv(const Value& T, const Value& P) const override;
    Value kl(const Value& T) const override;
    Value sigma(const Value& T) const override;

private:
    ParameterDippr7 muvdip_;
    ParameterDippr7 muldip_;
    ParameterDippr7 kvdip_;
    ParameterDippr7 kldip_;
    ParameterDippr7 sigmadip_;
};

#endif
