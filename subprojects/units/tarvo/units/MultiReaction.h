#ifndef TARVO_UNITS_MULTIREACTION_H
#define TARVO_UNITS_MULTIREACTION_H

#include <tarvo/core/Model.h>

#include <array>
#include <vector>

namespace Phase {
class MassMolar;
}

// A reaction across N phases or stream sides, embedded in a unit as multiReactions[i]: each side has its
// own stoichiometric vector, coeff[p], and the extent conv changes side p's flow of component c by
// transfer[p][c] = coeff[p][c] conv, in kmol/s, products positive. The extent follows from the fractional
// conversion z of the key component keycomp in side keyphase, and is cut where a side would run out of a
// component. The key may be any component, the first one of the list included.
template <int N> class MultiReaction : public Model {
public:
    MultiReaction(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                  Persistent* parent, Persistent* root);

    Tarvo::Utility::Category category() const override { return Tarvo::Utility::Category::option; }
    // The transfers from the sides' flows as they stand; the checks are reported and bypass the reaction.
    void calculate(int level) override;
    void setup() override {}
    void initializeNonPersistents() override {}
    ObjectiveNleAd* objective() override { return nullptr; }

    // The phases whose flows the reaction changes, one for each side; they belong to the unit.
    void workOn(const std::array<Phase::MassMolar*, N>& sides) { sides_ = sides; }
    // Adds the transfers to the sides' flows, from the inlet flows that the last calculate saw.
    void apply();
    // Whether the last calculate passed its checks.
    bool active() const { return active_; }

    Integer nPhases{"nPhases", "Number of reacting phases", N, this};
    Quantity z{"z", "Set fractional conversion in terms of key component", "", this, 0.0};
    Quantity actz{"actz", "Actual fractional conversion in terms of key component", "", this, 0.0};
    Quantity conv{"conv", "Rate of Reaction", "kmol/s", this, 0.0};
    Integer keyphase{"keyphase", "Phase the key component is located in", 0, this};
    Integer keycomp{"keycomp", "Key component", -1, this};
    std::vector<std::vector<Quantity>> coeff;    // [side][component]
    std::vector<std::vector<Quantity>> transfer; // [side][component], kmol/s

protected:
    // The checks that every multi-reaction makes before it calculates: sides there, with flow. Saves the
    // sides' flows as the inlet flows.
    bool ready_();
    // The count of reacting phases checked first, then ready_().
    bool phasesReady_();
    const Value& inletFlow(int side, int c) const { return inletFlows_[side][c]; }
    // Scales every transfer by the largest factor, at most 1, that leaves no flow negative; warns for each
    // component that runs out. Returns the factor.
    double bound_();

private:
    std::array<Phase::MassMolar*, N> sides_{};
    std::array<std::vector<Value>, N> inletFlows_;
    bool active_ = false;
};

extern template class MultiReaction<2>;

#endif
