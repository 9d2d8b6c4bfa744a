#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/units/Selector.h>
#include <tarvo/units/StreamOperations.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;
const Value noMass(0.0, "kg/s");
const Value noEnergy(0.0, "W");
} // namespace

Selector::Selector(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                   Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      Connectivity(defaults, id, persistency, parent, root) {
    addVariable(selectedInlet);
    maxNIn = -1;
    maxNOut = 1;
    inletRequired(0);
}

void Selector::go(SolutionMode mode, int level) {
    requireKnownMode_(mode);
    TARVO_LOG(3) << "Entered for " << fullTag();
    resetErrors();
    collectStreams_();
    // The choice is the user's: a wrong one is refused, with the condition that it breaks.
    if (selectedInlet.value() >= nIn.value())
        throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "selectedInlet.value() < nIn.value()");
    if (selectedInlet.value() < 0)
        throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "selectedInlet.value() >= 0");
    if (outletstreams_.empty() || !outletstreams_[0]) {
        reportError("no outlet connected, nothing to do");
        return;
    }
    const auto selected = static_cast<unsigned int>(selectedInlet.value());
    if (!hasInlet(selected)) {
        reportError("no inlet connected, nothing to do");
        return;
    }
    Stream& out = *outletstreams_[0];
    copyStream(out, *inletstreams_[selected]);
    refreshOutlet(out, enthalpyFlashMode(out), mode, level + 1);
    calculateBalance();
    countCalculation();
    TARVO_LOG(3) << "Done";
}

// The inlets that are not passed on leave the flowsheet here.
Value Selector::massBalance() const {
    Value lost = noMass;
    for (std::size_t i = 0; i < inletstreams_.size(); ++i)
        if (inletstreams_[i] && static_cast<int>(i) != selectedInlet.value())
            lost += inletstreams_[i]->Tphase->mdot;
    return lost;
}

Value Selector::energyBalance() const {
    Value lost = noEnergy;
    for (std::size_t i = 0; i < inletstreams_.size(); ++i) {
        if (!inletstreams_[i] || static_cast<int>(i) == selectedInlet.value()) continue;
        if (const auto* total = dynamic_cast<const Phase::MassMolarProperties*>(inletstreams_[i]->Tphase))
            lost += total->mdot * total->h;
    }
    return lost;
}
