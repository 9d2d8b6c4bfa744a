#include <tarvo/streams/Stream.h>
#include <tarvo/units/FlashDrum.h>
#include <tarvo/utility/Log.h>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;
} // namespace

FlashDrum::FlashDrum(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                     Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      Connectivity(defaults, id, persistency, parent, root),
      FlashDrumBase(defaults, id, persistency, parent, root) {
    addVariable(Tavg);
    Tavg.setOutput();
    maxNIn = -1;
    maxNOut = 1;
    inletRequired(0);
}

Stream* FlashDrum::calculatedStream_() {
    return outletstreams_.empty() ? nullptr : outletstreams_[0];
}

void FlashDrum::setup_of() {
    if (collectStreams_()) {
        feeds_.clear();
        for (EdgeBase* edge : inlets_)
            if (edge) feeds_.push_back(edge);
    }
    FlashDrumBase::setup_of();
}

void FlashDrum::go(SolutionMode mode, int level) {
    requireKnownMode_(mode);
    TARVO_LOG(3) << "Entered for " << fullTag();
    resetErrors();
    if (nIn.value() == 0) {
        reportError("no inlet connected, nothing to do");
        return;
    }
    setup_of();
    Stream* stream = calculatedStream_();
    if (!stream) {
        reportError("no outlet connected, nothing to do");
        return;
    }
    bool flow = false;
    for (const Stream* in : inletstreams_)
        if (in && in->Tphase->totalFlow().toDouble() > 0.0) flow = true;
    // Without flow the outlets stay as they are; a simultaneous solve still needs their residuals.
    if (!flow) reportWarning(emptyInletMessage_());
    if (flow || mode >= simultaneous) {
        gather(level, stream, feeds_, deltaPMax, Tavg);
        takeInlet_();
    }
    if (flow) {
        if (mode < simultaneous && pristine()) stream->T = T.toDouble() == 298.15 ? Value(Tavg) : Value(T);
        FlashDrumBase::go(mode, level);
        passOn_(mode, level);
    } else if (mode >= simultaneous) {
        drumResiduals_();
    }
    calculateBalance();
    countCalculation();
    TARVO_LOG(3) << "Done";
}

int FlashDrum::calculateResidualsLocal() {
    go(onePass, 1);
    return static_cast<int>(size());
}
