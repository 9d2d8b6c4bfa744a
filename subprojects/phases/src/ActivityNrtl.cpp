#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/ActivityNrtl.h>
#include <tarvo/phases/NrtlParameters.h>
#include <tarvo/utility/Log.h>

#include <cassert>

namespace Phase::Activity {

namespace {
constexpr int verbosityFile = 0;
} // namespace

Nrtl::Nrtl() : n_(NCOMPONENTS), tauM_(n_ * n_), dtauM_(n_ * n_), G_(n_ * n_, Active(1.0)), dG_(n_ * n_) {}

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
    // A phase that carries nothing has no activity to speak of.
    if (!(S[0].val() > 0)) {
        for (Active& g : gamma_)
            g = 1.0;
        gE_.clear();
        hE_.clear();
        sE_.clear();
        return;
    }
    for (int i = 0; i < n_; ++i) {
        const Active& xi = x[i].active();
        const Active ratio = C[i] / S[i];
        gERT += xi * ratio;
        dgERTdT += xi * (dC[i] - ratio * dS[i]) / S[i];
        Active lnGamma = ratio;
        for (int j = 0; j < n_; ++j)
            lnGamma += x[j].active() * G_[at_(i, j)] / S[j] * (tauM_[at_(i, j)] - C[j] / S[j]);
        gamma_[i] = exp(lnGamma);
    }
    const Value T(T_, "K");
    gE_ = R * T * Value(std::move(gERT));
    // hE = -R T^2 d(gE / RT) / dT, sE = (hE - gE) / T.
    hE_ = -R * T * Value(T_ * dgERTdT);
    sE_ = (hE_ - gE_) / T;
    TARVO_LOG(4) << "T() = " << T_.val() << " sE_ = " << sE_.toDouble() << " hE_ = " << hE_.toDouble()
                 << " gE_ = " << gE_.toDouble();
    for (int i = 0; i < n_; ++i)
        TARVO_LOG(4) << "gamma[" << i << "] = " << gamma_[i].val();
}

Nrtl1::Nrtl1() : B_(ParametersNrtl1::B()), A_(ParametersNrtl1::A()) {}

std::vector<NrtlParameterArray> Nrtl1::parameterArrays() {
    return {{"B", "NRTL interaction parameter Bij in K, tau_ij is Bij over T", &B_},
            {"A", "NRTL non-randomness alfa_ij", &A_}};
}

const Active& Nrtl1::computeAlfa(int i, int j, Active& d1, Active& d2) {
    assert(A_.size() == static_cast<unsigned int>(NCOMPONENTS * NCOMPONENTS));
    alfa_ = A_[i * NCOMPONENTS + j];
    d1 = 0.0;
    d2 = 0.0;
    return alfa_;
}

const Active& Nrtl1::computeTau(int i, int j, Active& d1, Active& d2) {
    assert(B_.size() == static_cast<unsigned int>(NCOMPONENTS * NCOMPONENTS));
    const double B = B_[i * NCOMPONENTS + j];
    tau_ = B / T_;
    d1 = -B / (T_ * T_);
    d2 = 2 * B / (T_ * T_ * T_);
    return tau_;
}

Nrtl2::Nrtl2()
    : TA_(ParametersNrtl2::TA()), TB_(ParametersNrtl2::TB()), TC_(ParametersNrtl2::TC()),
      TD_(ParametersNrtl2::TD()), AA_(ParametersNrtl2::AA()), AB_(ParametersNrtl2::AB()) {}

std::vector<NrtlParameterArray> Nrtl2::parameterArrays() {
    return {{"TA", "NRTL tau_ij, constant term", &TA_},
            {"TB", "NRTL tau_ij, coefficient of the inverse temperature, in K", &TB_},
            {"TC", "NRTL tau_ij, coefficient of the logarithm of temperature", &TC_},
            {"TD", "NRTL tau_ij, coefficient of temperature, in 1 over K", &TD_},
            {"AA", "NRTL alfa_ij at 0 C", &AA_},
            {"AB", "NRTL alfa_ij, slope per degree Celsius", &AB_}};
}

const Active& Nrtl2::computeAlfa(int i, int j, Active& d1, Active& d2) {
    assert(AA_.size() == static_cast<unsigned int>(NCOMPONENTS * NCOMPONENTS));
    const int ij = i * NCOMPONENTS + j;
    // The slope is per degree Celsius.
    alfa_ = AA_[ij] + AB_[ij] * (T_ - 273.15);
    d1 = AB_[ij];
    d2 = 0.0;
    return alfa_;
}

const Active& Nrtl2::computeTau(int i, int j, Active& d1, Active& d2) {
    assert(TA_.size() == static_cast<unsigned int>(NCOMPONENTS * NCOMPONENTS));
    const int ij = i * NCOMPONENTS + j;
    const double a = TA_[ij], b = TB_[ij], c = TC_[ij], d = TD_[ij];
    tau_ = a + b / T_ + c * log(T_) + d * T_;
    d1 = c / T_ - b / (T_ * T_) + d;
    d2 = 2 * b / (T_ * T_ * T_) - c / (T_ * T_);
    return tau_;
}

} // namespace Phase::Activity
