#ifndef TARVO_STREAMS_TESTS_IDEALEQUILIBRIUM_H
#define TARVO_STREAMS_TESTS_IDEALEQUILIBRIUM_H

#include <tarvo/components/ListComponents.h>

#include <cmath>
#include <functional>
#include <vector>

// The equilibrium of an ideal vapor and liquid worked out in the test, apart from the flash: K values and
// the pure components' enthalpies and entropies come from the components' routes, which define the model;
// the split comes from bisection on the Rachford-Rice sum, temperatures from bisection on the
// specification.
struct IdealEquilibrium {
    std::vector<double> z; // in the order of the component list
    double P;              // Pa

    // The root of an increasing function in [lo, hi], to the last bit.
    static double bisect(const std::function<double(double)>& f, double lo, double hi) {
        for (int k = 0; k < 200 && hi - lo > 1e-15 * std::fabs(hi); ++k) {
            const double mid = 0.5 * (lo + hi);
            (f(mid) > 0 ? hi : lo) = mid;
        }
        return 0.5 * (lo + hi);
    }

    double K(int i, double T) const {
        return components[i]->kvli(Value(T, "K"), Value(P, "Pa")).toDouble();
    }

    // sum z (K - 1) / (1 + a (K - 1)), which falls with a.
    double rachfordRice(double T, double a) const {
        double r = 0;
        for (int i = 0; i < NCOMPONENTS; ++i)
            if (z[i] > 0) r += z[i] * (K(i, T) - 1) / (1 + a * (K(i, T) - 1));
        return r;
    }

    // The vapor fraction at T: 0 up to the bubble point, 1 from the dew point on.
    double fraction(double T) const {
        if (rachfordRice(T, 0) <= 0) return 0;
        if (rachfordRice(T, 1) >= 0) return 1;
        return bisect([&](double a) { return -rachfordRice(T, a); }, 0, 1);
    }

    // Enthalpy (J/kmol) or entropy (J/(kmol K)) of the mixture at T, split at the vapor fraction a.
    double enthalpy(double T, double a) const { return property(T, a, false); }
    double entropy(double T, double a) const { return property(T, a, true); }
    double enthalpy(double T) const { return enthalpy(T, fraction(T)); }
    double entropy(double T) const { return entropy(T, fraction(T)); }

private:
    double property(double T, double a, bool entropy) const {
        const Value t(T, "K"), p(P, "Pa");
        double vapor = 0, liquid = 0;
        for (int i = 0; i < NCOMPONENTS; ++i) {
            if (!(z[i] > 0)) continue;
            const double x = z[i] / (1 + a * (K(i, T) - 1)), y = K(i, T) * x;
            const ComponentGeneric& c = *components[i];
            if (entropy) {
                // Ideal mixing in each phase.
                if (y > 0) vapor += y * (c.sv(t, p).toDouble() - 8314.4 * std::log(y));
                liquid += x * (c.sl(t, p).toDouble() - 8314.4 * std::log(x));
            } else {
                vapor += y * c.hv(t, p).toDouble();
                liquid += x * c.hl(t, p).toDouble();
            }
        }
        return a * vapor + (1 - a) * liquid;
    }
};

#endif
