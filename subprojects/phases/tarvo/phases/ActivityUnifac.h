#ifndef TARVO_PHASES_ACTIVITYUNIFAC_H
#define TARVO_PHASES_ACTIVITYUNIFAC_H

#include <tarvo/phases/ActivityLiquid.h>

#include <vector>

namespace Phase::Activity {

// The UNIFAC group-contribution model, with the published subgroup and interaction tables and the
// components' groups of UnifacAssignment. The model writes no excess enthalpy or entropy: H and S are
// those of the ideal solution.
//
// All sums run over the subgroups present in some component, kept in ascending order and addressed by
// their position in that list. A component without groups may stand in the list, absent: its gamma is
// 1; present, it is an error.
class Unifac : public Liquid {
public:
    Unifac();

    // Psi of the present subgroups at T, and the residual terms of the pure components there.
    void setTemperature(const Value& T) override;
    void calculateExcess(const Vector& x) override;

    // The subgroups present, in ascending order.
    const std::vector<int>& subgroups() const { return subgroups_; }
    // Psi between the k-th and l-th present subgroups at the temperature set.
    const Active& psi(int k, int l) const { return psi_[k * nk_ + l]; }

private:
    // ln Gamma_k of every present subgroup in a mixture of subgroup surface fractions theta.
    void groupActivities_(const std::vector<Active>& theta, std::vector<Active>& lnGamma);
    // The error for a present component that has no groups.
    void requireGroups_(const Vector& x) const;

    int n_;  // components
    int nk_; // present subgroups
    std::vector<int> subgroups_;
    std::vector<bool> grouped_;       // per component: has groups
    std::vector<double> Q_;           // per subgroup
    std::vector<double> a_;           // interaction of the main groups of subgroups k and l, in K; k * nk + l
    std::vector<double> nu_;          // count of subgroup k in component i; i * nk + k
    std::vector<double> r_, q_;       // per component
    std::vector<double> theta0_;      // surface fraction of subgroup k in pure component i; i * nk + k
    std::vector<Active> psi_;         // k * nk + l
    std::vector<Active> lnGammaPure_; // ln Gamma_k in pure component i; i * nk + k
    // Work arrays of calculateExcess.
    std::vector<Active> theta_, lnGamma_, sum1_;
};

} // namespace Phase::Activity

#endif
