#include "Iapws95Coefficients.h"

#include <tarvo/phases/Iapws95Helmholtz.h>

#include <algorithm>
#include <cassert>
#include <cmath>
#include <iterator>
#include <vector>

namespace Phase::Iapws95 {

template <typename S> Helmholtz<S> ideal(const S& delta, const S& tau) {
    using std::exp;
    using std::log;
    Helmholtz<S> h{log(delta) + idealN[0] + idealN[1] * tau + idealN[2] * log(tau),
                   1.0 / delta,
                   -1.0 / (delta * delta),
                   idealN[1] + idealN[2] / tau,
                   -idealN[2] / (tau * tau),
                   0.0 * tau};
    for (int i = 0; i < 5; ++i) {
        const double n = idealN[i + 3], gamma = idealGamma[i];
        const S e = exp(-gamma * tau);
        const S rest = 1.0 - e;
        h.phi += n * log(rest);
        h.t += n * gamma * (1.0 / rest - 1.0);
        h.tt -= n * gamma * gamma * e / (rest * rest);
    }
    return h;
}

namespace {
// The 54 power and Gaussian terms with their derivatives up to the third, in plain numbers: a state that
// carries derivatives takes them from here through the chain rule, and the sums run once, without
// derivatives in them.
struct Sums {
    double phi, d, dd, t, tt, dt, ddd, ddt, dtt, ttt;
};

// x^k for the exponents of the tables, all of them multiples of 1/8 between -1/2 and 50: an integer power
// from products times a root x^(j/8) from three square roots.
template <int N> struct Powers {
    double p[N + 1], root[8];
    explicit Powers(double x) {
        p[0] = 1;
        for (int k = 1; k <= N; ++k) p[k] = p[k - 1] * x;
        const double r2 = std::sqrt(x), r4 = std::sqrt(r2), r8 = std::sqrt(r4);
        const double roots[8] = {1, r8, r4, r4 * r8, r2, r2 * r8, r2 * r4, r2 * r4 * r8};
        std::copy(roots, roots + 8, root);
    }
    // x^(n + j/8), -N <= n <= N, 0 <= j < 8.
    double operator()(int n, int j) const { return n >= 0 ? p[n] * root[j] : root[j] / p[-n]; }
};

// An exponent of the tables as n + j/8, found once.
struct Eighths {
    int n, j;
    explicit Eighths(double k) : n(static_cast<int>(std::floor(k))), j(static_cast<int>(8 * (k - std::floor(k)))) {
        assert(n + j / 8.0 == k && "IAPWS-95 exponents are multiples of 1/8");
    }
};

constexpr int maxDelta = 15, maxTau = 50; // the largest exponents of delta and tau in the tables

// The exponents of each power term, as the tables give them.
struct PowerExponents {
    Eighths d, t;
    int c;
};
const std::vector<PowerExponents>& powerExponents() {
    static const std::vector<PowerExponents> table = [] {
        std::vector<PowerExponents> e;
        for (const PowerTerm& p : power) e.push_back({Eighths(p.d), Eighths(p.t), static_cast<int>(p.c)});
        return e;
    }();
    return table;
}

Sums regularTerms(double delta, double tau) {
    const Powers<maxDelta> dp(delta);
    const Powers<maxTau> tp(tau);
    double exps[7] = {1, 0, 0, 0, 0, 0, 0}; // exp(-delta^c) for the exponents c of the table
    for (int c = 1; c <= 6; ++c) exps[c] = std::exp(-dp.p[c]);
    const double id = 1 / delta, it = 1 / tau;
    // d^k phi_i / d delta^k of each term is v a_k / delta^k, and the same for tau with b_k: the power terms
    // are summed with these scales, which are put in at the end.
    Sums s{};
    const auto add = [&](double v, double a1, double a2, double a3, double b1, double b2, double b3) {
        s.phi += v;
        s.d += v * a1;
        s.dd += v * a2;
        s.ddd += v * a3;
        s.t += v * b1;
        s.tt += v * b2;
        s.ttt += v * b3;
        s.dt += v * a1 * b1;
        s.ddt += v * a2 * b1;
        s.dtt += v * a1 * b2;
    };
    const std::vector<PowerExponents>& exponents = powerExponents();
    for (std::size_t i = 0; i < std::size(power); ++i) {
        const PowerTerm& p = power[i];
        const PowerExponents& e = exponents[i];
        const double dc = e.c > 0 ? dp.p[e.c] : 0.0;
        const double v = p.n * dp(e.d.n, e.d.j) * tp(e.t.n, e.t.j) * exps[e.c];
        // With D = delta d/d delta: D v = g v, D g = dg, D dg = ddg.
        const double g = p.d - p.c * dc, dg = -p.c * p.c * dc, ddg = -p.c * p.c * p.c * dc;
        const double D2 = dg + g * g, D3 = g * g * g + 3 * g * dg + ddg;
        add(v, g, D2 - g, D3 - 3 * D2 + 2 * g, p.t, p.t * (p.t - 1), p.t * (p.t - 1) * (p.t - 2));
    }
    s = {s.phi,          s.d * id,           s.dd * id * id,           s.t * it,      s.tt * it * it,
         s.dt * id * it, s.ddd * id * id * id, s.ddt * id * id * it, s.dtt * id * it * it, s.ttt * it * it * it};
    for (const GaussianTerm& q : gaussian) {
        const double dx = delta - q.epsilon, tx = tau - q.gamma;
        const Eighths d(q.d), t(q.t);
        const double v = q.n * dp(d.n, d.j) * tp(t.n, t.j) * std::exp(-q.alpha * dx * dx - q.beta * tx * tx);
        // The logarithmic derivatives and their derivatives: here a_k and b_k carry their scales.
        const double ld = q.d * id - 2 * q.alpha * dx, ld1 = -q.d * id * id - 2 * q.alpha, ld2 = 2 * q.d * id * id * id;
        const double lt = q.t * it - 2 * q.beta * tx, lt1 = -q.t * it * it - 2 * q.beta, lt2 = 2 * q.t * it * it * it;
        add(v, ld, ld * ld + ld1, ld * ld * ld + 3 * ld * ld1 + ld2, lt, lt * lt + lt1, lt * lt * lt + 3 * lt * lt1 + lt2);
    }
    return s;
}

double plain(double x) { return x; }
double plain(const Active& x) { return x.val(); }

// x^r, with one call of pow where the rule of a state with derivatives would make two; the slope at x = 0
// is that of an exponent above 1.
double raised(double x, double r) { return std::pow(x, r); }
Active raised(const Active& x, double r) {
    const double v = std::pow(x.val(), r);
    return Active::chain(v, x.val() != 0 ? r * v / x.val() : 0.0, x);
}

// A plain number with the derivatives in delta and tau given, as a value of the state's kind.
double lift(double v, double, double, const double&, const double&) { return v; }
Active lift(double v, double inDelta, double inTau, const Active& delta, const Active& tau) {
    return Active::combine(v, inDelta, delta, inTau, tau);
}
} // namespace

template <typename S> Helmholtz<S> residual(const S& delta, const S& tau) {
    using std::exp;
    using std::fabs;
    const Sums s = regularTerms(plain(delta), plain(tau));
    Helmholtz<S> h{lift(s.phi, s.d, s.t, delta, tau),  lift(s.d, s.dd, s.dt, delta, tau),
                   lift(s.dd, s.ddd, s.ddt, delta, tau), lift(s.t, s.dt, s.tt, delta, tau),
                   lift(s.tt, s.dtt, s.ttt, delta, tau), lift(s.dt, s.ddt, s.dtt, delta, tau)};
    for (const NonAnalyticTerm& k : nonAnalytic) {
        // q = (delta - 1)^2, and its powers those of m = |delta - 1| with exponents above 1: a power of q
        // below 1 has a slope without bound at delta = 1, and a derivative carried through it would be
        // infinity times zero there, where the terms and their true derivatives are regular.
        const S dm = delta - 1.0, tm = tau - 1.0, q = dm * dm, m = fabs(dm);
        const S mb = raised(m, 1.0 / k.beta), qa = raised(m, 2.0 * (k.a - 1.0));
        const S qb = plain(m) > 0 ? mb / q : 0.0 * m; // q^(1/(2 beta) - 1): m^(1/beta - 2), flat at m = 0
        const S theta = (1.0 - tau) + k.A * mb;
        const S Delta = theta * theta + k.B * qa * q;
        const S Delta_d = dm * (k.A * theta * (2.0 / k.beta) * qb + 2.0 * k.B * k.a * qa);
        const S Delta_dd = k.A * theta * (2.0 / k.beta) * qb + 2.0 * k.B * k.a * qa +
                           4.0 * k.B * k.a * (k.a - 1.0) * qa + 2.0 * k.A * k.A / (k.beta * k.beta) * qb * qb * q +
                           k.A * theta * (4.0 / k.beta) * (0.5 / k.beta - 1.0) * qb;
        const S Db1 = raised(Delta, k.b - 1.0), Db2 = Db1 / Delta;
        const S Db = Db1 * Delta;
        const S Db_d = k.b * Db1 * Delta_d;
        const S Db_dd = k.b * (Db1 * Delta_dd + (k.b - 1.0) * Db2 * Delta_d * Delta_d);
        const S Db_t = -2.0 * theta * k.b * Db1;
        const S Db_tt = 2.0 * k.b * Db1 + 4.0 * theta * theta * k.b * (k.b - 1.0) * Db2;
        const S Db_dt = -k.A * k.b * (2.0 / k.beta) * Db1 * dm * qb - 2.0 * theta * k.b * (k.b - 1.0) * Db2 * Delta_d;
        const S psi = exp(-k.C * q - k.D * tm * tm);
        const S psi_d = -2.0 * k.C * dm * psi, psi_t = -2.0 * k.D * tm * psi;
        const S psi_dd = (2.0 * k.C * q - 1.0) * 2.0 * k.C * psi;
        const S psi_tt = (2.0 * k.D * tm * tm - 1.0) * 2.0 * k.D * psi;
        const S psi_dt = 4.0 * k.C * k.D * dm * tm * psi;
        h.phi += k.n * Db * delta * psi;
        h.d += k.n * (Db * (psi + delta * psi_d) + Db_d * delta * psi);
        h.dd += k.n * (Db * (2.0 * psi_d + delta * psi_dd) + 2.0 * Db_d * (psi + delta * psi_d) + Db_dd * delta * psi);
        h.t += k.n * delta * (Db_t * psi + Db * psi_t);
        h.tt += k.n * delta * (Db_tt * psi + 2.0 * Db_t * psi_t + Db * psi_tt);
        h.dt += k.n * (Db * (psi_t + delta * psi_dt) + delta * Db_d * psi_t + Db_t * (psi + delta * psi_d) +
                       Db_dt * delta * psi);
    }
    return h;
}

template Helmholtz<double> ideal(const double&, const double&);
template Helmholtz<double> residual(const double&, const double&);
template Helmholtz<Active> ideal(const Active&, const Active&);
template Helmholtz<Active> residual(const Active&, const Active&);

} // namespace Phase::Iapws95
