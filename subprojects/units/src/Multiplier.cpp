#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/units/Multiplier.h>
#include <tarvo/units/StreamOperations.h>
#include <tarvo/utility/Log.h>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;
} // namespace

Multiplier::Multiplier(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                       Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      Connectivity(defaults, id, persistency, parent, root) {
    maxNIn = 1;
    maxNOut = -1;
    inletRequired(0);
}

void Multiplier::go(SolutionMode mode, int level) {
    requireKnownMode_(mode);
    TARVO_LOG(3) << "Entered for " << fullTag();
    resetErrors();
    if (!firstInletConnected_()) return;
    if (nOut.value() == 0) {
        reportError("no outlet connected, nothing to do");
        return;
    }
    const Stream& in = *inletstreams_[0];
    for (Stream* out : outletstreams_) {
        if (!out) continue;
        copyStream(*out, in);
        refreshOutlet(*out, enthalpyFlashMode(*out), mode, level + 1);
    }
    calculateBalance();
    countCalculation();
    TARVO_LOG(3) << "Done";
}

// What the copies add: the inlet's flow once for every outlet beyond the first.
Value Multiplier::massBalance() const {
    return (1.0 - nOut.value()) * mdotin;
}

Value Multiplier::energyBalance() const {
    if (inletstreams_.empty() || !inletstreams_[0]) return VertexBase::energyBalance();
    const auto* total = dynamic_cast<const Phase::MassMolarProperties*>(inletstreams_[0]->Tphase);
    if (!total) return VertexBase::energyBalance();
    return (1.0 - nOut.value()) * total->mdot * total->h;
}
