#ifndef TARVO_PHASES_PHASETOTAL_H
#define TARVO_PHASES_PHASETOTAL_H

#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/phases/Total.h>

// The total of a stream with mass and molar balances: its properties are the phase-fraction weighted
// ones of the stream's phases, which must have been calculated before.
class PhaseTotal : public Phase::MassMolarProperties, public Phase::Total {
public:
    PhaseTotal(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
               Persistent* parent, Persistent* root);

    // Asks the models of the phases: the molar volumes add up.
    const Value& calculate_rho(const Value& P, const Value& T) override;
    // These three read the phases' stored items.
    const Value& calculate_H(const Value& P, const Value& T) override;
    const Value& calculate_Cp(const Value& P, const Value& T) override;
    const Value& calculate_S(const Value& P, const Value& T) override;
    // A total has no pressure, transport properties or fugacities of its own: fixed numbers stand in.
    const Value& calculate_P(const Value& a, const Value& b) override;
    Value mu(const Value& P, const Value& T) override;
    Value kappa(const Value& P, const Value& T) override;
    Value sigma(const Value& P, const Value& T) override;
    const Value& fugacity(int i) override;

private:
    // Calls visit(phase, fraction) for the stream's phases other than totals that carry a positive fraction.
    template <typename Visit> void forEachPhase_(const char* function, Visit visit) const;

    Value H_{0.0, "J/kmol"};
    Value Cp_{0.0, "J/(kmol*K)"};
    Value S_{0.0, "J/(kmol*K)"};
    Value v_{0.0, "m3/kmol"};
    Value rho_{0.0, "kmol/m3"};
};

#endif
