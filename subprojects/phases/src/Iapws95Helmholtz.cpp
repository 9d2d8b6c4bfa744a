#include "Iapws95Coefficients.h"

#include <tarvo/phases/Iapws95Helmholtz.h>

#include <cmath>

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

template <typename S> Helmholtz<S> residual(const S& delta, const S& tau) {
    using std::exp;
    using std::fabs;
    using std::pow;
    Helmholtz<S> h{0.0 * delta, 0.0 * delta, 0.0 * delta, 0.0 * delta, 0.0 * delta, 0.0 * delta};
    for (const PowerTerm& p : power) {
        const S term = p.n * pow(delta, p.d) * pow(tau, p.t);
        // With the exponential: d - c delta^c takes the place of d in the delta derivatives.
        S g = p.d + 0.0 * delta, dg = 0.0 * delta;
        S value = term;
        if (p.c > 0) {
            const S dc = pow(delta, p.c);
            value = term * exp(-dc);
            g = p.d - p.c * dc;
            dg = -p.c * p.c * dc; // delta times the derivative of g
        }
        h.phi += value;
        h.d += value * g / delta;
        h.dd += value * (g * (g - 1.0) + dg) / (delta * delta);
        h.t += value * p.t / tau;
        h.tt += value * p.t * (p.t - 1.0) / (tau * tau);
        h.dt += value * g * p.t / (delta * tau);
    }
    for (const GaussianTerm& q : gaussian) {
        const S dx = delta - q.epsilon, tx = tau - q.gamma;
        const S value = q.n * pow(delta, q.d) * pow(tau, q.t) * exp(-q.alpha * dx * dx - q.beta * tx * tx);
        const S ld = q.d / delta - 2.0 * q.alpha * dx, lt = q.t / tau - 2.0 * q.beta * tx;
        h.phi += value;
        h.d += value * ld;
        h.dd += value * (ld * ld - q.d / (delta * delta) - 2.0 * q.alpha);
        h.t += value * lt;
        h.tt += value * (lt * lt - q.t / (tau * tau) - 2.0 * q.beta);
        h.dt += value * ld * lt;
    }
    for (const NonAnalyticTerm& k : nonAnalytic) {
        // q = (delta - 1)^2. Its powers are taken of |delta - 1|, with exponents above 1: q^(1/(2 beta) - 1)
        // has a slope that grows without bound at delta = 1, and a derivative carried through it would be
        // infinity times zero there, where the value and its true derivatives are regular.
        const S dm = delta - 1.0, tm = tau - 1.0, q = dm * dm, m = fabs(dm);
        const S qa = pow(m, 2.0 * (k.a - 1.0)), qb = pow(m, 1.0 / k.beta - 2.0);
        const S theta = (1.0 - tau) + k.A * pow(m, 1.0 / k.beta);
        const S Delta = theta * theta + k.B * pow(m, 2.0 * k.a);
        const S Delta_d = dm * (k.A * theta * (2.0 / k.beta) * qb + 2.0 * k.B * k.a * qa);
        const S Delta_dd = k.A * theta * (2.0 / k.beta) * qb + 2.0 * k.B * k.a * qa +
                           4.0 * k.B * k.a * (k.a - 1.0) * qa + 2.0 * k.A * k.A / (k.beta * k.beta) * qb * qb * q +
                           k.A * theta * (4.0 / k.beta) * (0.5 / k.beta - 1.0) * qb;
        const S Db1 = pow(Delta, k.b - 1.0), Db2 = pow(Delta, k.b - 2.0);
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
