#include "Dual.h"
#include "PcsaftData.h"

#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/EosPcsaft.h>
#include <tarvo/utility/Error.h>

#include <cmath>

using Tarvo::Utility::PhaseType;

namespace {
constexpr double pi = 3.14159265358979323846;
constexpr double avogadro = 6.02214076e23; // 1/mol, CODATA 2018 (exact)
// Packing fraction per (mol/m3 of segments times cubic angstrom): pi / 6 N_A 1e-30.
constexpr double packing = pi / 6 * avogadro * 1e-30;
// Relative step of the differences of the heat capacity.
constexpr double step = 1e-5;
} // namespace

namespace Phase {

template <typename S> S pcsaftResidualHelmholtz(const S& T, const S& rho, const std::vector<S>& x) {
    using std::exp;
    using std::log;
    const int n = static_cast<int>(x.size());
    const S zero = 0.0 * T;
    std::vector<S> d(n, zero);
    S zeta[4] = {zero, zero, zero, zero}, mbar = zero;
    for (int i = 0; i < n; ++i) {
        d[i] = PcsaftParameters::sigma[i] * (1.0 - 0.12 * exp(-3.0 * PcsaftParameters::epsilon[i] / T));
        const S xm = x[i] * PcsaftParameters::m[i];
        mbar = mbar + xm;
        S power = packing * rho * xm;
        for (int k = 0; k < 4; ++k) {
            zeta[k] = zeta[k] + power;
            power = power * d[i];
        }
    }
    const S& eta = zeta[3];
    const S gap = 1.0 - eta;
    const S ahs = (3.0 * zeta[1] * zeta[2] / gap + zeta[2] * zeta[2] * zeta[2] / (eta * gap * gap) +
                   (zeta[2] * zeta[2] * zeta[2] / (eta * eta) - zeta[0]) * log(gap)) /
                  zeta[0];
    S a = mbar * ahs;
    for (int i = 0; i < n; ++i) {
        const S half = 0.5 * d[i];
        const S g = 1.0 / gap + half * 3.0 * zeta[2] / (gap * gap) + half * half * 2.0 * zeta[2] * zeta[2] / (gap * gap * gap);
        a = a - x[i] * (PcsaftParameters::m[i] - 1.0) * log(g);
    }
    const S q1 = (mbar - 1.0) / mbar, q2 = q1 * (mbar - 2.0) / mbar;
    S I1 = zero, I2 = zero, power = 1.0 + zero;
    for (int k = 0; k < 7; ++k) {
        I1 = I1 + (PcsaftData::a0[k] + q1 * PcsaftData::a1[k] + q2 * PcsaftData::a2[k]) * power;
        I2 = I2 + (PcsaftData::b0[k] + q1 * PcsaftData::b1[k] + q2 * PcsaftData::b2[k]) * power;
        power = power * eta;
    }
    const S gap2 = gap * gap, eta2 = eta * eta;
    const S C1 = 1.0 / (1.0 + mbar * (8.0 * eta - 2.0 * eta2) / (gap2 * gap2) +
                        (1.0 - mbar) * (20.0 * eta - 27.0 * eta2 + 12.0 * eta2 * eta - 2.0 * eta2 * eta2) /
                            (gap * (2.0 - eta) * gap * (2.0 - eta)));
    S m2es3 = zero, m2e2s3 = zero;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            const double sij = 0.5 * (PcsaftParameters::sigma[i] + PcsaftParameters::sigma[j]);
            const double eij = std::sqrt(PcsaftParameters::epsilon[i] * PcsaftParameters::epsilon[j]) *
                               (1.0 - PcsaftParameters::kij[i][j]);
            const S w = x[i] * x[j] * (PcsaftParameters::m[i] * PcsaftParameters::m[j] * sij * sij * sij) * (eij / T);
            m2es3 = m2es3 + w;
            m2e2s3 = m2e2s3 + w * (eij / T);
        }
    const S density = rho * (avogadro * 1e-30);
    return a - 2.0 * pi * density * I1 * m2es3 - pi * density * mbar * C1 * I2 * m2e2s3;
}

template double pcsaftResidualHelmholtz(const double&, const double&, const std::vector<double>&);

std::pair<Active, Active> EosPcsaft::helmholtz_(const Active& T, const Active& rho, double dT, double drho, int i) const {
    using D = Dual<Active>;
    std::vector<D> x(x_.size());
    for (std::size_t k = 0; k < x_.size(); ++k) x[k] = D{x_[k].active(), Active(static_cast<int>(k) == i ? 1.0 : 0.0)};
    const D a = pcsaftResidualHelmholtz(D{T, Active(dT)}, D{rho, Active(drho)}, x);
    return {a.v, a.d};
}

void EosPcsaft::precompute(const Value& T, const Vector& x) const {
    const int n = NCOMPONENTS;
    Value s = 0.0;
    for (int i = 0; i < n; ++i)
        if (PcsaftParameters::m[i] > 0) s += x[i];
    x_.assign(n, Value(0.0));
    chainVolume_ = 0.0;
    const Value t = T / Value(1.0, "K");
    for (int i = 0; i < n; ++i) {
        // A phase that carries nothing yet takes the equimolar mixture of the components with parameters.
        if (!(PcsaftParameters::m[i] > 0)) continue;
        x_[i] = s.toDouble() > 0 ? x[i] / s : Value(1.0);
        const Value di = sigma[i] * (1.0 - 0.12 * exp(-3.0 * epsilon[i] / t));
        chainVolume_ += x_[i] * PcsaftParameters::m[i] * di * di * di;
    }
    if (!(s.toDouble() > 0)) {
        Value count = 0.0;
        for (const Value& f : x_) count += f;
        for (Value& f : x_) f /= count;
        chainVolume_ /= count;
    }
}

void EosPcsaft::requireParameters(const Vector& x) const {
    for (int i = 0; i < NCOMPONENTS; ++i)
        if (x[i].toDouble() > 0 && !(PcsaftParameters::m[i] > 0))
            throw ErrorRunTime("Phase::EosPcsaft", "no PC-SAFT parameters for " + components[i]->name);
}

void EosPcsaft::estimate(const Value&, const Value&, const Vector&, PhaseType type) {
    beta = type == PhaseType::vapor ? 1e-5 : 0.5;
}

Value EosPcsaft::betac(const Vector&) const {
    Value sum = 0.0;
    for (int i = 0; i < static_cast<int>(x_.size()); ++i) {
        if (!(PcsaftParameters::m[i] > 0)) continue;
        const double b = std::pow(10.0, -0.240371 * std::log10(PcsaftParameters::m[i]) - 0.705191) - 0.08333636 * std::pow(0.5119087, PcsaftParameters::m[i]) - 0.0123;
        sum += x_[i] * b;
    }
    return sum;
}

Value EosPcsaft::density(const Value& reduced) const {
    return Value((reduced / (packing * chainVolume_) / 1000.0).active(), "kmol/m3");
}

Value EosPcsaft::pressure(const Value& reduced, const Value& T) const {
    const Value rho = density(reduced);
    const Active molar = rho.active() * 1000.0;
    const Active dadrho = helmholtz_(T.active(), molar, 0.0, 1.0, -1).second;
    return rho * R * T * (1.0 + Value(molar * dadrho));
}

Value EosPcsaft::dpdbeta(const Value& reduced, const Value& T) const {
    const Value h = 1e-6 * reduced;
    return (pressure(reduced + h, T) - pressure(reduced - h, T)) / (2.0 * h);
}

void EosPcsaft::preparefugacity_eos(const Value& P, const Value& T, std::vector<Value>& lnphi) const {
    const Value rho = density(beta);
    const Active molar = rho.active() * 1000.0;
    const auto [a, dadrho] = helmholtz_(T.active(), molar, 0.0, 1.0, -1);
    const int n = static_cast<int>(x_.size());
    std::vector<Active> dadx(n);
    Active mean = 0.0;
    for (int i = 0; i < n; ++i) {
        dadx[i] = helmholtz_(T.active(), molar, 0.0, 0.0, i).second;
        mean += x_[i].active() * dadx[i];
    }
    // ln phi_i = a + (Z - 1) + da/dx_i - sum_j x_j da/dx_j - ln Z, with the flash's pressure in ln Z.
    const Value base = Value(a + molar * dadrho - mean) - log(P / (rho * R * T));
    for (int i = 0; i < n; ++i) lnphi[i] = base + Value(Active(dadx[i]));
}

Value EosPcsaft::enthalpyDeparture(const Value&, const Value& T) const {
    const Value rho = density(beta);
    const Active molar = rho.active() * 1000.0;
    const Active dadT = helmholtz_(T.active(), molar, 1.0, 0.0, -1).second;
    const Active dadrho = helmholtz_(T.active(), molar, 0.0, 1.0, -1).second;
    return R * T * Value(-T.active() * dadT + molar * dadrho);
}

Value EosPcsaft::entropyDeparture(const Value&, const Value& T) const {
    const Value rho = density(beta);
    const Active molar = rho.active() * 1000.0;
    const auto [a, dadT] = helmholtz_(T.active(), molar, 1.0, 0.0, -1);
    const Active dadrho = helmholtz_(T.active(), molar, 0.0, 1.0, -1).second;
    return R * Value(-T.active() * dadT - a + log(1.0 + molar * dadrho));
}

double EosPcsaft::enthalpyOverR_(double T, double rho) const {
    std::vector<Dual<double>> x(x_.size());
    for (std::size_t k = 0; k < x_.size(); ++k) x[k] = {x_[k].toDouble(), 0.0};
    const double dadT = pcsaftResidualHelmholtz(Dual<double>{T, 1.0}, Dual<double>{rho, 0.0}, x).d;
    const double dadrho = pcsaftResidualHelmholtz(Dual<double>{T, 0.0}, Dual<double>{rho, 1.0}, x).d;
    return T * (-T * dadT + rho * dadrho);
}

double EosPcsaft::pressure_(double T, double rho) const {
    std::vector<Dual<double>> x(x_.size());
    for (std::size_t k = 0; k < x_.size(); ++k) x[k] = {x_[k].toDouble(), 0.0};
    const double dadrho = pcsaftResidualHelmholtz(Dual<double>{T, 0.0}, Dual<double>{rho, 1.0}, x).d;
    return rho * T * (1.0 + rho * dadrho); // over R
}

Value EosPcsaft::heatCapacityDeparture(const Value& T) const {
    // cp - cp_ig = (dh/dT)_rho + (dh/drho)_T (drho/dT)_P, with (drho/dT)_P = -(dP/dT)_rho / (dP/drho)_T.
    const double t = T.toDouble("K"), rho = density(beta).toDouble("kmol/m3") * 1000.0;
    const double ht = t * step, hr = rho * step;
    const double dhdT = (enthalpyOverR_(t + ht, rho) - enthalpyOverR_(t - ht, rho)) / (2 * ht);
    const double dhdr = (enthalpyOverR_(t, rho + hr) - enthalpyOverR_(t, rho - hr)) / (2 * hr);
    const double dPdT = (pressure_(t + ht, rho) - pressure_(t - ht, rho)) / (2 * ht);
    const double dPdr = (pressure_(t, rho + hr) - pressure_(t, rho - hr)) / (2 * hr);
    return R * (dhdT - dhdr * dPdT / dPdr);
}

} // namespace Phase
