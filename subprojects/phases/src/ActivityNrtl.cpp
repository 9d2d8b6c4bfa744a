#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/ActivityNrtl.h>
#include <tarvo/phases/NrtlParameters.h>
#include <tarvo/utility/Log.h>

#include <cassert>

namespace Phase::Activity {

namespace {
constexpr int verbosityFile = 0;
} // namespace

Nrtl::Nrtl()
    : n_(NCOMPONENTS), tauM_(n_ * n_), dtauM_(n_ * n_), G_(n_ * n_, Active(1.0)), dG_(n_ * n_) {}

void Nrtl::setTemperature(const Value& T) {
    T_ = T.active();
    Active dalfa, d2alfa, dtau, d2tau;
    for (int i = 0; i < n_; ++i)
        for (int j = 0; j < n_; ++j) {
            const int ij = at_(i, j);
            if (i == j) {
                tauM_[ij] = 0.0;
                dtauM_[ij] = 0.0;
                G_[ij] = 1.0;
                dG_[ij] = 0.0;
                continue;
            }
            const Active alfa = computeAlfa(i, j, dalfa, d2alfa);
            tauM_[ij] = computeTau(i, j, dtau, d2tau);
            dtauM_[ij] = dtau;
            G_[ij] = exp(-alfa * tauM_[ij]);
            dG_[ij] = -G_[ij] * (dalfa * tauM_[ij] + alfa * dtau);
        }
}

void Nrtl::calculateExcess(const Vector& x) {
    x_ = x;
    // With S_i = sum_k x_k G_ki and C_i = sum_j x_j tau_ji G_ji, gE / RT = sum_i x_i C_i / S_i and
    // ln gamma_i = C_i / S_i + sum_j x_j G_ij / S_j (tau_ij - C_j / S_j).
    std::vector<Active> S(n_), C(n_), dS(n_), dC(n_);
    for (int i = 0; i < n_; ++i)
        for (int k = 0; k < n_; ++k) {
            const Active& xk = x[k].active();
            const int ki = at_(k, i);
            S[i] += xk * G_[ki];
            C[i] += xk * tauM_[ki] * G_[ki];
            dS[i] += xk * dG_[ki];
            dC[i] += xk * (dtauM_[ki] * G_[ki] + tauM_[ki] * dG_[ki]);
        }
    Active gERT, dgERTdT;
    for (int i = 0; i < n_; ++i) {
        const Active& xi = x[i].active();
        const Active ratio = C[i] / S[i];
        gERT += xi * ratio;
        dgERTdT += xi * (dC[i] - ratio * dS[i]) / S[i];
        Active lnGamma = ratio;
        for (int j = 0; j < n_; ++j) lnGamma += x[j].active() * G_[at_(i, j)] / S[j] * (tauM_[at_(i, j)] - C[j] / S[j]);
        gamma_[i] = exp(lnGamma);
    }
    const Value T(T_, "K");
    gE_ = R * T * Value(std::move(gERT));
    // hE = -R T^2 d(gE / RT) / dT, sE = (hE - gE) / T.
    hE_ = -R * T * Value(T_ * dgERTdT);
    sE_ = (hE_ - gE_) / T;
    TARVO_LOG(4) << "T() = " << T_.val() << " sE_ = " << sE_.toDouble() << " hE_ = " << hE_.toDouble()
                 << " gE_ = " << gE_.toDouble();
    for (int i = 0; i < n_; ++i) TARVO_LOG(4) << "gamma[" << i << "] = " << gamma_[i].val();
}

const Active& Nrtl1::computeAlfa(int i, int j, Active& d1, Active& d2) {
    assert(NCOMPONENTS == ParametersNrtl1::size());
    alfa_ = ParametersNrtl1::A(i, j);
    d1 = 0.0;
    d2 = 0.0;
    return alfa_;
}

const Active& Nrtl1::computeTau(int i, int j, Active& d1, Active& d2) {
    assert(NCOMPONENTS == ParametersNrtl1::size());
    const double B = ParametersNrtl1::B(i, j);
    tau_ = B / T_;
    d1 = -B / (T_ * T_);
    d2 = 2 * B / (T_ * T_ * T_);
    return tau_;
}

const Active& Nrtl2::computeAlfa(int i, int j, Active& d1, Active& d2) {
    assert(NCOMPONENTS == ParametersNrtl2::size());
    // The slope is per degree Celsius.
    alfa_ = ParametersNrtl2::AA(i, j) + ParametersNrtl2::AB(i, j) * (T_ - 273.15);
    d1 = ParametersNrtl2::AB(i, j);
    d2 = 0.0;
    return alfa_;
}

const Active& Nrtl2::computeTau(int i, int j, Active& d1, Active& d2) {
    assert(NCOMPONENTS == ParametersNrtl2::size());
    const double a = ParametersNrtl2::TA(i, j), b = ParametersNrtl2::TB(i, j), c = ParametersNrtl2::TC(i, j),
                 d = ParametersNrtl2::TD(i, j);
    tau_ = a + b / T_ + c * log(T_) + d * T_;
    d1 = c / T_ - b / (T_ * T_) + d;
    d2 = 2 * b / (T_ * T_ * T_) - c / (T_ * T_);
    return tau_;
}

} // namespace Phase::Activity
