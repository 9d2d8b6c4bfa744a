#ifndef TARVO_STREAMS_TESTS_IAPWSBYHAND_H
#define TARVO_STREAMS_TESTS_IAPWSBYHAND_H

// The coefficients are the table generated from ../shared/data/iapws95.json, which the phase's tests hold
// against Table 6 of the release; the sums, their derivative and the root are worked out here, apart
// from the kernel.
#include "../../phases/src/Iapws95Coefficients.h"

#include <cmath>

// The pressure of IAPWS R6-95(2018), p = rho R T (1 + delta phir_delta), with phir_delta by the release's
// Table 5 term by term; and the density at (T, p) where the isotherm rises with the density everywhere,
// as above the critical temperature. SI units: K, Pa, kg/m3.
struct IapwsByHand {
    static constexpr double R = 461.51805, rhoc = 322.0, Tc = 647.096;

    static double phirDelta(double delta, double tau) {
        double sum = 0;
        for (const auto& p : Phase::Iapws95::power) {
            const double dc = p.c > 0 ? std::pow(delta, p.c) : 0;
            sum += p.n * std::exp(-dc) * std::pow(delta, p.d - 1) * std::pow(tau, p.t) * (p.d - p.c * dc);
        }
        for (const auto& g : Phase::Iapws95::gaussian) {
            const double e = delta - g.epsilon, f = tau - g.gamma;
            sum += g.n * std::pow(delta, g.d) * std::pow(tau, g.t) * std::exp(-g.alpha * e * e - g.beta * f * f) *
                   (g.d / delta - 2 * g.alpha * e);
        }
        for (const auto& k : Phase::Iapws95::nonAnalytic) {
            const double q = (delta - 1) * (delta - 1);
            const double theta = (1 - tau) + k.A * std::pow(q, 0.5 / k.beta);
            const double Delta = theta * theta + k.B * std::pow(q, k.a);
            const double DeltaD = (delta - 1) * (k.A * theta * 2 / k.beta * std::pow(q, 0.5 / k.beta - 1) +
                                                 2 * k.B * k.a * std::pow(q, k.a - 1));
            const double psi = std::exp(-k.C * q - k.D * (tau - 1) * (tau - 1));
            const double psiD = -2 * k.C * (delta - 1) * psi;
            const double DbD = Delta > 0 ? k.b * std::pow(Delta, k.b - 1) * DeltaD : 0;
            sum += k.n * (std::pow(Delta, k.b) * (psi + delta * psiD) + DbD * delta * psi);
        }
        return sum;
    }
    static double pressure(double rho, double T) {
        const double delta = rho / rhoc;
        return rho * R * T * (1 + delta * phirDelta(delta, Tc / T));
    }
    // Bisection on the density, from a dilute gas to five times the critical density, to the last digits.
    static double density(double T, double p) {
        double lo = 1e-6 * rhoc, hi = 5 * rhoc;
        while (hi - lo > 1e-15 * hi) {
            const double mid = 0.5 * (lo + hi);
            (pressure(mid, T) < p ? lo : hi) = mid;
        }
        return 0.5 * (lo + hi);
    }
};

#endif
