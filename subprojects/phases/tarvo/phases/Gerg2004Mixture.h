#ifndef TARVO_PHASES_GERG2004MIXTURE_H
#define TARVO_PHASES_GERG2004MIXTURE_H

#include <array>
#include <string>
#include <vector>

namespace Phase {

// The GERG-2004 equation for a set of its components, in plain numbers:
//     a / (R T) = alpha0(rho, T, x) + alphar(delta, tau, x),  delta = rho / rho_r(x),  tau = T_r(x) / T,
//     alphar = sum_i x_i alphar_oi(delta, tau) + sum_i<j x_i x_j F_ij alphar_ij(delta, tau).
// Setting the components builds the tables of the terms that they need, once; an evaluation then runs
// through them without allocating. The components are numbered by their place in the set given.
class Gerg2004Mixture {
public:
    // The reduced derivatives delta^a tau^b d^(a+b) f / d delta^a d tau^b of a function f, for a + b <= 3.
    struct Reduced {
        std::array<double, 10> a{};
        double& at(int d, int t) { return a[index(d, t)]; }
        double at(int d, int t) const { return a[index(d, t)]; }
        static int index(int d, int t) { return (d + t) * (d + t + 1) / 2 + t; }
    };
    // A pair with a departure function: the components' places in the set, the factor F_ij, and the
    // function's place among those that the set uses (pairs may share one).
    struct Pair {
        int i, j;
        double F;
        int departure;
    };

    // The index of the component of the standard by its name in the data or its formula; -1 for none.
    static int find(const std::string& name);
    static int size();
    // The standard's molar mass of component k of the standard, in kg/kmol.
    static double molarMass(int k);

    // Components by their index in the standard.
    void setComponents(const std::vector<int>& species);
    const std::vector<int>& species() const { return species_; }
    int count() const { return static_cast<int>(species_.size()); }

    // The reducing functions at x (normalised, in the order of the set): v_r = 1 / rho_r in m3/kmol and T_r
    // in K, with their partial derivatives in each x_k, the x being independent. S is double or Active.
    template <typename S> void reducing(const S* x, S& volume, S& temperature, S* dvolume, S* dtemperature) const;

    // The residual parts at (delta, tau): alphar_oi of every component and alphar_ij of every pair of
    // pairs(), in reduced derivatives.
    void residual(double delta, double tau);
    const Reduced& component(int k) const { return components_[k]; }
    const std::vector<Pair>& pairs() const { return pairs_; }
    const Reduced& pair(int p) const { return departureResiduals_[pairs_[p].departure]; }

    // The ideal-gas part of component k of the set at T: cv0 / R, with R that of the residual part.
    double idealHeatCapacity(int k, double T) const;

private:
    struct ReducingPair {
        int i, j;
        double betaV, volume, betaT, temperature; // the last two with 2 beta gamma and the combining rules
    };

    std::vector<int> species_;
    std::vector<ReducingPair> reducingPairs_;
    std::vector<Pair> pairs_;
    std::vector<int> departures_; // the departure functions used, by their index in the data
    std::vector<int> exponents_;  // the indices of the exponents of tau that the terms use
    std::vector<Reduced> components_, departureResiduals_;
    std::vector<double> tauPowers_; // tau^t by the index of t, for the exponents used, at tau_
    double tau_ = 0;
};

} // namespace Phase

#endif
