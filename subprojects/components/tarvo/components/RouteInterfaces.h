#ifndef TARVO_COMPONENTS_ROUTEINTERFACES_H
#define TARVO_COMPONENTS_ROUTEINTERFACES_H

#include <tarvo/components/ComponentInterface.h>
#include <tarvo/utility/Diagnostic.h>
#include <tarvo/value/Value.h>

// What each property family of a pure species must answer. A concrete component inherits one
// implementation of each, and the implementations derive virtually from these interfaces so that a
// component holds each interface once. Thermal properties are molar and referred to the elements:
// the ideal gas at 298.15 K and 101325 Pa has enthalpy dh0 and entropy (dh0 - dg0) / 298.15 K.
// Out-parameters are plain SI doubles, written only when the pointer is not null.

// Vapor pressure and latent heat.
class RouteSaturation {
public:
    virtual ~RouteSaturation() = default;
    // Pa; dpsatdt and d2psatdt2 receive the first and second derivative in T.
    virtual Value psat(const Value& T, double* dpsatdt = nullptr, double* d2psatdt2 = nullptr) const = 0;
    // J/kmol; derT receives the derivative in T.
    virtual Value dhvl(const Value& T, double* derT = nullptr) const = 0;
};

// hv and cpv are the ideal gas's, independent of P: the ideal phase shares their values between pressures.
class RouteHeatVapor : public virtual Diagnostic {
public:
    virtual Value hv(const Value& T, const Value& P) const = 0;  // J/kmol
    virtual Value sv(const Value& T, const Value& P) const = 0;  // J/(kmol*K)
    virtual Value cpv(const Value& T, const Value& P) const = 0; // J/(kmol*K)
    // Gibbs energy of the pure vapor, hv - T sv.
    Value gv(const Value& T, const Value& P) const;

    // hv, sv or cpv as plain numbers, with its slopes in T and in P. T and P are the independent variables of
    // directions 0 and 1 of the current context, or the context has no directions and the slopes are not asked
    // for: the ideal phase works a species' points out so and combines the slopes with its mixture's derivatives
    // itself. This evaluates the route; a route may work the same numbers out without the arithmetic of values,
    // as long as they are bit for bit those.
    enum class Property { enthalpy, entropy, heatCapacity };
    struct Point {
        double value, dT, dP;
    };
    virtual Point vaporPoint(Property kind, const Value& T, const Value& P) const;
};

class RouteHeatLiquid : public virtual Diagnostic {
public:
    virtual Value hl(const Value& T, const Value& P) const = 0;
    virtual Value sl(const Value& T, const Value& P) const = 0;
    virtual Value cpl(const Value& T, const Value& P) const = 0;
};

class RouteHeatSolid : public virtual Diagnostic {
public:
    virtual Value hs(const Value& T, const Value& P) const = 0;
    virtual Value ss(const Value& T, const Value& P) const = 0;
    virtual Value cps(const Value& T, const Value& P) const = 0;
    // Gibbs energy of the pure solid, hs - T ss.
    Value gs(const Value& T, const Value& P) const;
};

// Transport properties carry no derivatives: they are evaluated on plain doubles.
class RouteTransport : public virtual ComponentInterface {
public:
    virtual Value muv(const Value& T, const Value& P) const = 0; // Pa*s
    virtual Value mul(const Value& T) const = 0;                 // Pa*s
    virtual Value kv(const Value& T, const Value& P) const = 0;  // W/(m*K)
    virtual Value kl(const Value& T) const = 0;                  // W/(m*K)
    virtual Value sigma(const Value& T) const = 0;               // N/m
};

class RouteVolumeVapor {
public:
    virtual ~RouteVolumeVapor() = default;
    // kmol/m3; dRhovdT and dRhovdP receive the partial derivatives.
    virtual Value rhov(const Value& T, const Value& P, double* dRhovdT = nullptr,
                       double* dRhovdP = nullptr) const = 0;
};

class RouteVolumeLiquid : public virtual Diagnostic {
public:
    // kmol/m3; derT receives the derivative in T.
    virtual Value rhol(const Value& T, const Value& P, double* derT = nullptr) const = 0;
};

class RouteVolumeSolid {
public:
    virtual ~RouteVolumeSolid() = default;
    virtual Value rhos(const Value& T, const Value& P, double* derT = nullptr) const = 0; // kmol/m3
};

#endif
