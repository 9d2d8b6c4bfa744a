#include <tarvo/components/ListComponents.h>
#include <tarvo/core/Model.h>
#include <tarvo/phases/PhaseMassMolar.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/units/CoupleReactions.h>
#include <tarvo/units/ReactionEquilibrium.h>
#include <tarvo/utility/FunctionName.h>

#include <cassert>

using Tarvo::Utility::MassBalanceMode;

namespace {
const Value smallMassFlow(0.1, "kg/h");
} // namespace

bool CoupleReactions::bind(Model& unit, const std::vector<Reaction*>& reactions, const std::vector<Integer>& sides,
                           const std::vector<Stream*>& outlets, const std::string& unsetText) {
    yields_.clear();
    equilibria_.clear();
    equilibriumOutlets_.clear();
    for (std::size_t r = 0; r < reactions.size(); ++r) {
        const int side = r < sides.size() ? sides[r].value() : -1;
        if (side < 0 || side >= static_cast<int>(outlets.size()) || !outlets[side]) {
            unit.reportError(unsetText);
            yields_.clear();
            equilibria_.clear();
            equilibriumOutlets_.clear();
            return false;
        }
        auto* rY = dynamic_cast<ReactionYield*>(reactions[r]);
        assert(rY != nullptr);
        rY->workOn(outlets[side]->Tphase);
        yields_.push_back({rY, static_cast<std::size_t>(side)});
        if (!rY->isEquilibrium()) continue;
        equilibria_.push_back(dynamic_cast<ReactionEquilibrium*>(rY));
        equilibriumOutlets_.push_back(outlets[side]);
    }
    return true;
}

namespace {
void resetFlows(Stream& out, const Stream& in) {
    Phase::Mass& total = *out.Tphase;
    for (int i = 0; i < NCOMPONENTS; ++i)
        total.flow(i) = in.Tphase->flow(i);
    total.totalFlow() = in.Tphase->totalFlow();
}
} // namespace

void CoupleReactions::reset(const std::vector<Stream*>& inlets, const std::vector<Stream*>& outlets) {
    for (std::size_t c = 0; c < outlets.size(); ++c)
        resetFlows(*outlets[c], *inlets[c]);
}

void CoupleReactions::react(Model& unit, const std::vector<Stream*>& outlets, bool report) const {
    std::vector<Value> before;
    for (const Stream* out : outlets)
        before.push_back(out->Tphase->mdot);
    std::vector<bool> reacting(outlets.size(), false);
    for (const Bound& b : yields_) {
        reacting[b.couple] = true;
        b.reaction->precalc();
        b.reaction->bound();
        b.reaction->postcalc();
    }
    for (std::size_t c = 0; c < outlets.size(); ++c) {
        if (!reacting[c]) continue;
        Phase::Mass& total = *outlets[c]->Tphase;
        settleFlows(*outlets[c]);
        if (!report) continue;
        const Value d = fabs(total.mdot - before[c]);
        const Value m = fabs(total.mdot) + smallMassFlow;
        const std::string text = "unbalanced reactions, side " + std::to_string(c + 1);
        if (d > m / 1000.0)
            unit.reportError(text);
        else if (d > m / 100000.0)
            unit.reportWarning(text);
    }
}

void settleFlows(Stream& out) {
    Phase::Mass& total = *out.Tphase;
    const MassBalanceMode flows = Phase::flowonly(static_cast<MassBalanceMode>(total.representation()));
    out.setFlowOption(flows);
    total.calculateX(flows);
}

void CoupleReactions::estimate(const std::vector<Stream*>& inlets, const std::vector<Stream*>& outlets) const {
    for (const Bound& b : yields_) {
        if (!b.reaction->isEquilibrium() || b.reaction->conv.toDouble() != 0.0) continue;
        resetFlows(*outlets[b.couple], *inlets[b.couple]);
        b.reaction->estimateExtent();
    }
}

int CoupleReactions::equilibriumResiduals(std::vector<Value>& residuals, unsigned offset) const {
    for (std::size_t j = 0; j < equilibria_.size(); ++j) {
        ReactionEquilibrium& r = *equilibria_[j];
        const Stream& out = *equilibriumOutlets_[j];
        r.Tact = out.T;
        r.P = out.P;
        r.calculateEquilibrium(my_cast<Phase::MassMolar*>(out.Tphase, TARVO_FUNCTION)->x.value());
        r.calculateResidual(residuals[offset + j]);
    }
    return static_cast<int>(equilibria_.size());
}

int reactionSideDefault(const Tarvo::Persistency::Defaults& defaults, int index) {
    const std::string name = "reactionSides[" + std::to_string(index) + "]";
    return defaults.hasInteger(name) ? defaults.getInteger(name) : -1;
}
