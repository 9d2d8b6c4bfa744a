#include "UnifacTables.h"

#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/ActivityUnifac.h>
#include <tarvo/phases/UnifacGroups.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/Log.h>

#include <map>
#include <set>

namespace Phase::Activity {

namespace {
constexpr int verbosityFile = 0;
// Half the lattice coordination number of the combinatorial term.
constexpr double halfCoordination = 5.0;

// The published tables, keyed once for the process.
struct Tables {
    std::map<int, UnifacSubgroup> subgroups;
    std::map<int, std::map<int, double>> interactions;
};

const Tables& tables() {
    static const Tables t = [] {
        Tables built;
        for (const UnifacSubgroup& s : unifacSubgroups())
            built.subgroups[s.subgroup] = s;
        for (const UnifacInteraction& p : unifacInteractions())
            built.interactions[p.m][p.n] = p.a;
        return built;
    }();
    return t;
}

// a[m][n] of two main groups: 0 for a pair that the table does not hold, and so for one main group.
double interaction(int m, int n) {
    const auto& table = tables().interactions;
    const auto row = table.find(m);
    if (row == table.end()) return 0.0;
    const auto entry = row->second.find(n);
    return entry == row->second.end() ? 0.0 : entry->second;
}
} // namespace

Unifac::Unifac() : n_(NCOMPONENTS), grouped_(n_, false), r_(n_, 0.0), q_(n_, 0.0) {
    std::set<int> present;
    for (int i = 0; i < n_; ++i) {
        const UnifacGroups* groups = UnifacAssignment::of(i);
        if (!groups || groups->empty()) continue;
        for (const auto& group : *groups) {
            const int k = group.first;
            if (!tables().subgroups.count(k))
                throw ErrorRunTime("Unifac::Unifac", "component " + components[i]->name + " has subgroup " +
                                                         std::to_string(k) +
                                                         ", which the UNIFAC table does not hold");
            present.insert(k);
        }
        grouped_[i] = true;
    }
    subgroups_.assign(present.begin(), present.end());
    nk_ = static_cast<int>(subgroups_.size());
    Q_.resize(nk_);
    a_.resize(nk_ * nk_);
    nu_.assign(n_ * nk_, 0.0);
    theta0_.assign(n_ * nk_, 0.0);
    psi_.resize(nk_ * nk_);
    lnGammaPure_.resize(n_ * nk_);
    theta_.resize(nk_);
    lnGamma_.resize(nk_);
    sum1_.resize(nk_);
    for (int k = 0; k < nk_; ++k) {
        const UnifacSubgroup& s = tables().subgroups.at(subgroups_[k]);
        Q_[k] = s.Q;
        for (int l = 0; l < nk_; ++l)
            a_[k * nk_ + l] = interaction(s.mainGroup, tables().subgroups.at(subgroups_[l]).mainGroup);
    }
    TARVO_LOG(4) << "component subgroups:";
    for (int i = 0; i < n_; ++i) {
        if (!grouped_[i]) continue;
        for (int k = 0; k < nk_; ++k) {
            const auto found = UnifacAssignment::of(i)->find(subgroups_[k]);
            if (found == UnifacAssignment::of(i)->end()) continue;
            const double nu = found->second;
            const UnifacSubgroup& s = tables().subgroups.at(subgroups_[k]);
            nu_[i * nk_ + k] = nu;
            r_[i] += nu * s.R;
            q_[i] += nu * s.Q;
        }
        // Theta0 = Q X0 / sum(Q X0), with X0 = nu / sum(nu): the counts' sum cancels, and sum(Q nu) is q.
        for (int k = 0; k < nk_; ++k)
            theta0_[i * nk_ + k] = Q_[k] * nu_[i * nk_ + k] / q_[i];
        TARVO_LOG(4) << "component[" << i << "]: r = " << r_[i] << " q = " << q_[i];
    }
}

void Unifac::groupActivities_(const std::vector<Active>& theta, std::vector<Active>& lnGamma) {
    for (int k = 0; k < nk_; ++k) {
        sum1_[k] = 0.0;
        for (int m = 0; m < nk_; ++m)
            sum1_[k] += theta[m] * psi_[m * nk_ + k];
    }
    for (int k = 0; k < nk_; ++k) {
        Active sum2;
        for (int m = 0; m < nk_; ++m)
            sum2 += theta[m] * psi_[k * nk_ + m] / sum1_[m];
        lnGamma[k] = Q_[k] * (1.0 - log(sum1_[k]) - sum2);
    }
}

void Unifac::setTemperature(const Value& T) {
    T_ = T.active();
    for (int k = 0; k < nk_; ++k)
        for (int l = 0; l < nk_; ++l) {
            const double a = a_[k * nk_ + l];
            psi_[k * nk_ + l] = a == 0.0 ? Active(1.0) : exp(-a / T_);
        }
    std::vector<Active> theta(nk_), lnGamma(nk_);
    for (int i = 0; i < n_; ++i) {
        if (!grouped_[i]) continue;
        for (int k = 0; k < nk_; ++k)
            theta[k] = theta0_[i * nk_ + k];
        groupActivities_(theta, lnGamma);
        for (int k = 0; k < nk_; ++k)
            lnGammaPure_[i * nk_ + k] = lnGamma[k];
    }
}

void Unifac::requireGroups_(const Vector& x) const {
    for (int i = 0; i < n_; ++i)
        if (!grouped_[i] && x[i].toDouble() > 0)
            throw ErrorRunTime("Unifac::calculateExcess",
                               "component " + components[i]->name + " has no UNIFAC groups assigned");
}

void Unifac::calculateExcess(const Vector& x) {
    requireGroups_(x);
    x_ = x;
    Active sumR, sumQ;
    for (int i = 0; i < n_; ++i) {
        if (!grouped_[i]) continue;
        const Active& xi = x[i].active();
        sumR += xi * r_[i];
        sumQ += xi * q_[i];
    }
    for (Active& g : gamma_)
        g = 1.0;
    // A phase that carries nothing has no activity to speak of.
    if (!(sumR.val() > 0)) return;

    // Subgroup fractions X_k, then surface fractions Theta_k = Q_k X_k / sum(Q X): the sum of X cancels.
    Active area;
    for (int k = 0; k < nk_; ++k) {
        Active X;
        for (int i = 0; i < n_; ++i)
            if (nu_[i * nk_ + k] != 0) X += nu_[i * nk_ + k] * x[i].active();
        theta_[k] = Q_[k] * X;
        area += theta_[k];
    }
    for (Active& t : theta_)
        t /= area;
    groupActivities_(theta_, lnGamma_);

    for (int i = 0; i < n_; ++i) {
        if (!grouped_[i]) continue;
        const Active V = r_[i] / sumR, F = q_[i] / sumQ;
        const Active VoverF = V / F;
        const Active combinatorial =
            1.0 - V + log(V) - halfCoordination * q_[i] * (1.0 - VoverF + log(VoverF));
        Active residual;
        for (int k = 0; k < nk_; ++k) {
            const double nu = nu_[i * nk_ + k];
            if (nu != 0) residual += nu * (lnGamma_[k] - lnGammaPure_[i * nk_ + k]);
        }
        gamma_[i] = exp(combinatorial + residual);
        TARVO_LOG(4) << "gamma[" << i << "] = " << gamma_[i].val();
    }
}

} // namespace Phase::Activity
