#ifndef TARVO_COMPONENTS_ROUTESDUMMY_H
#define TARVO_COMPONENTS_ROUTESDUMMY_H

#include <tarvo/components/RouteInterfaces.h>

// Stand-in routes that give a species an answer for a state it never takes (a salt's vapor, a gas's
// solid): plausible, smooth numbers that keep a phase calculation finite when such a species is present
// in traces.

// No vapor pressure.
class RouteSaturationDummy : public virtual RouteSaturation {
public:
    Value psat(const Value& T, double* dpsatdt = nullptr, double* d2psatdt2 = nullptr) const override;
    Value dhvl(const Value& T, double* derT = nullptr) const override;
};

// A vapor of constant heat capacity whose enthalpy at T0 is that of water vapor.
class RouteHeatVaporDummy : public virtual RouteHeatVapor {
public:
    Value hv(const Value& T, const Value& P) const override;
    Value sv(const Value& T, const Value& P) const override;
    Value cpv(const Value& T, const Value& P) const override;
};

// A solid with the heat capacity of 18 kg of a substance at 1 kcal/(kg*K).
class RouteHeatSolidDummy : public virtual RouteHeatSolid {
public:
    Value hs(const Value& T, const Value& P) const override;
    Value ss(const Value& T, const Value& P) const override;
    Value cps(const Value& T, const Value& P) const override;
};

class RouteVolumeVaporDummy : public virtual RouteVolumeVapor {
public:
    Value rhov(const Value& T, const Value& P, double* dRhovdT = nullptr,
               double* dRhovdP = nullptr) const override;
};

// A solid of constant molar density, given in kmol/m3.
class RouteVolumeSolidDummy : public virtual RouteVolumeSolid {
public:
    explicit RouteVolumeSolidDummy(const Value& density);
    Value rhos(const Value& T, const Value& P, double* derT = nullptr) const override;

private:
    Value density_;
};

// Transport properties of an ordinary gas and of a viscous liquid.
class RouteTransportDummy : public virtual RouteTransport {
public:
    Value muv(const Value& T, const Value& P) const override;
    Value mul(const Value& T) const override;
    Value kv(const Value& T, const Value& P) const override;
    Value kl(const Value& T) const override;
    Value sigma(const Value& T) const override;
};

#endif
