#include "Gerg2004Data.h"

#include <tarvo/phases/Gerg2004Mixture.h>
#include <tarvo/value/Active.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {
using namespace Phase::Gerg2004Data;

constexpr int maxPower = 7; // the largest d and c of the terms
constexpr int exponentCount = static_cast<int>(std::size(exponents));
constexpr int speciesCount = static_cast<int>(std::size(components));

double plain(double v) { return v; }
double plain(const Active& v) { return v.val(); }

// Adds the term's reduced derivatives at (delta, tau) to r. With g = delta dln(D)/ddelta of its delta factor
// D, the reduced derivatives of D follow from g, delta g' and delta^2 g''; those of tau^t are t, t (t - 1)
// and t (t - 1) (t - 2).
void accumulate(const Term& term, double delta, const double* deltaPowers, const double* expPowers,
                const double* tauPowers, Phase::Gerg2004Mixture::Reduced& r) {
    double v = term.n * deltaPowers[term.d] * tauPowers[term.t];
    double g = term.d, dg = 0, ddg = 0;
    if (term.c > 0) {
        const double u = deltaPowers[term.c], c = term.c;
        v *= expPowers[term.c];
        g -= c * u;
        dg -= c * c * u;
        ddg -= c * c * (c - 1) * u;
    }
    if (term.eta != 0 || term.beta != 0) {
        const double e = delta - term.epsilon;
        v *= std::exp(-term.eta * e * e - term.beta * (delta - term.gamma));
        g -= 2 * term.eta * delta * e + term.beta * delta;
        dg -= 2 * term.eta * delta * (2 * delta - term.epsilon) + term.beta * delta;
        ddg -= 4 * term.eta * delta * delta;
    }
    const double d1 = g, d2 = dg + g * g - g, d3 = g * d2 + ddg + 2 * g * dg - 2 * d2;
    const double t = exponents[term.t], t1 = t, t2 = t * (t - 1), t3 = t2 * (t - 2);
    double* a = r.a.data();
    a[0] += v;
    a[1] += v * d1;
    a[2] += v * t1;
    a[3] += v * d2;
    a[4] += v * d1 * t1;
    a[5] += v * t2;
    a[6] += v * d3;
    a[7] += v * d2 * t1;
    a[8] += v * d1 * t2;
    a[9] += v * t3;
}

void sum(int first, int count, double delta, const double* deltaPowers, const double* expPowers,
         const double* tauPowers, Phase::Gerg2004Mixture::Reduced& r) {
    r = {};
    for (int k = first; k < first + count; ++k) accumulate(terms[k], delta, deltaPowers, expPowers, tauPowers, r);
}
} // namespace

namespace Phase {

int Gerg2004Mixture::find(const std::string& name) {
    for (int k = 0; k < speciesCount; ++k)
        if (name == components[k].name || name == components[k].formula) return k;
    return -1;
}

int Gerg2004Mixture::size() { return speciesCount; }

double Gerg2004Mixture::molarMass(int k) { return components[k].M; }

void Gerg2004Mixture::setComponents(const std::vector<int>& species) {
    species_ = species;
    const int n = count();
    std::vector<int> place(speciesCount, -1);
    for (int k = 0; k < n; ++k) place[species[k]] = k;
    reducingPairs_.clear();
    pairs_.clear();
    departures_.clear();
    std::vector<bool> used(exponentCount, false);
    for (int k = 0; k < n; ++k) {
        const Component& c = components[species[k]];
        for (int m = c.firstTerm; m < c.firstTerm + c.termCount; ++m) used[terms[m].t] = true;
    }
    for (const Binary& b : binaries) {
        const int i = place[b.i], j = place[b.j];
        if (i < 0 || j < 0) continue;
        const Component &ci = components[b.i], &cj = components[b.j];
        const double edge = std::cbrt(1 / ci.rhoc) + std::cbrt(1 / cj.rhoc);
        reducingPairs_.push_back({i, j, b.betaV, 2 * b.betaV * b.gammaV * edge * edge * edge / 8, b.betaT,
                                  2 * b.betaT * b.gammaT * std::sqrt(ci.Tc * cj.Tc)});
        if (b.departure < 0) continue;
        const auto known = std::find(departures_.begin(), departures_.end(), b.departure);
        pairs_.push_back({i, j, b.F, static_cast<int>(known - departures_.begin())});
        if (known != departures_.end()) continue;
        departures_.push_back(b.departure);
        const Departure& d = Phase::Gerg2004Data::departures[b.departure];
        for (int m = d.firstTerm; m < d.firstTerm + d.termCount; ++m) used[terms[m].t] = true;
    }
    exponents_.clear();
    for (int e = 0; e < exponentCount; ++e)
        if (used[e]) exponents_.push_back(e);
    components_.assign(n, Reduced{});
    departureResiduals_.assign(departures_.size(), Reduced{});
    tauPowers_.assign(exponentCount, 0.0);
    tau_ = 0;
}

template <typename S>
void Gerg2004Mixture::reducing(const S* x, S& volume, S& temperature, S* dvolume, S* dtemperature) const {
    const int n = count();
    volume = 0.0;
    temperature = 0.0;
    for (int k = 0; k < n; ++k) {
        const Component& c = components[species_[k]];
        volume = volume + x[k] * x[k] / c.rhoc;
        temperature = temperature + x[k] * x[k] * c.Tc;
        dvolume[k] = 2.0 * x[k] / c.rhoc;
        dtemperature[k] = 2.0 * x[k] * c.Tc;
    }
    // Each pair adds C x_i x_j (x_i + x_j) / (beta^2 x_i + x_j) to each function, with its own C and beta.
    for (const ReducingPair& p : reducingPairs_) {
        const S &xi = x[p.i], &xj = x[p.j];
        const S sum = xi + xj;
        if (!(plain(sum) > 0)) continue; // neither present: the pair adds nothing, and no slope
        const S product = xi * xj;
        for (int f = 0; f < 2; ++f) {
            const double beta = f == 0 ? p.betaV : p.betaT, C = f == 0 ? p.volume : p.temperature;
            const S q = beta * beta * xi + xj;
            const S share = sum / q;
            const S common = product / q;
            S& value = f == 0 ? volume : temperature;
            S* slope = f == 0 ? dvolume : dtemperature;
            value = value + C * product * share;
            slope[p.i] = slope[p.i] + C * (xj * share + common - common * share * beta * beta);
            slope[p.j] = slope[p.j] + C * (xi * share + common - common * share);
        }
    }
}

template void Gerg2004Mixture::reducing(const double*, double&, double&, double*, double*) const;
template void Gerg2004Mixture::reducing(const Active*, Active&, Active&, Active*, Active*) const;

void Gerg2004Mixture::residual(double delta, double tau) {
    double deltaPowers[maxPower + 1], expPowers[maxPower + 1];
    deltaPowers[0] = 1;
    expPowers[0] = 1;
    for (int k = 1; k <= maxPower; ++k) {
        deltaPowers[k] = deltaPowers[k - 1] * delta;
        expPowers[k] = std::exp(-deltaPowers[k]);
    }
    // A density iteration keeps T and x: the powers of tau stand.
    if (tau != tau_) {
        const double logTau = std::log(tau);
        for (int e : exponents_) tauPowers_[e] = std::exp(exponents[e] * logTau);
        tau_ = tau;
    }
    for (int k = 0; k < count(); ++k) {
        const Component& c = components[species_[k]];
        sum(c.firstTerm, c.termCount, delta, deltaPowers, expPowers, tauPowers_.data(), components_[k]);
    }
    for (std::size_t m = 0; m < departures_.size(); ++m) {
        const Departure& d = Phase::Gerg2004Data::departures[departures_[m]];
        sum(d.firstTerm, d.termCount, delta, deltaPowers, expPowers, tauPowers_.data(), departureResiduals_[m]);
    }
}

double Gerg2004Mixture::idealHeatCapacity(int k, double T) const {
    const Component& c = components[species_[k]];
    const double tau = c.Tc / T;
    // cv0 / R* = n0_3 + sum of n0 (theta tau / sinh(theta tau))^2 for n0_4, n0_6, and with cosh for n0_5, n0_7.
    double cv = c.n0[2];
    for (int m = 0; m < 4; ++m) {
        if (c.n0[m + 3] == 0) continue;
        const double z = c.theta0[m] * tau;
        const double ratio = z / (m % 2 == 0 ? std::sinh(z) : std::cosh(z));
        cv += c.n0[m + 3] * ratio * ratio;
    }
    return cv * idealGasConstant / gasConstant;
}

} // namespace Phase
