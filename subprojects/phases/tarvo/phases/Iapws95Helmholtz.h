#ifndef TARVO_PHASES_IAPWS95HELMHOLTZ_H
#define TARVO_PHASES_IAPWS95HELMHOLTZ_H

#include <tarvo/value/Active.h>

namespace Phase::Iapws95 {

// The critical temperature and density that reduce the state, and the specific gas constant of the
// formulation: IAPWS R6-95(2018), eqs. (2) to (4).
constexpr double criticalTemperature = 647.096; // K
constexpr double criticalDensity = 322.0;       // kg/m3
constexpr double gasConstant = 461.51805;       // J/(kg*K)
// The molar mass that goes with the gas constant above (R * M = 8.314371 J/(mol*K)): the release's,
// not the kernel's water, so that molar and specific properties convert without a loss of digits.
constexpr double molecularWeight = 18.015268; // kg/kmol

// A part of the reduced Helmholtz energy f / (R T) with its first and second partial derivatives in
// delta = rho / rhoc and tau = Tc / T.
template <typename S> struct Helmholtz {
    S phi, d, dd, t, tt, dt;
};

// The ideal-gas part phi0 and the residual part phir of the formulation, eqs. (5) and (6), with the
// derivatives of its Tables 4 and 5. S is double, or Active where the state carries derivatives.
template <typename S> Helmholtz<S> ideal(const S& delta, const S& tau);
template <typename S> Helmholtz<S> residual(const S& delta, const S& tau);

extern template Helmholtz<double> ideal(const double&, const double&);
extern template Helmholtz<double> residual(const double&, const double&);
extern template Helmholtz<Active> ideal(const Active&, const Active&);
extern template Helmholtz<Active> residual(const Active&, const Active&);

} // namespace Phase::Iapws95

#endif
