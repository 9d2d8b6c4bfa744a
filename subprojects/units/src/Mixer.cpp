#include <tarvo/streams/Stream.h>
#include <tarvo/units/Mixer.h>
#include <tarvo/units/StreamOperations.h>
#include <tarvo/utility/Log.h>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;
} // namespace

Mixer::Mixer(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
             Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      Connectivity(defaults, id, persistency, parent, root) {
    addVariable(NITER);
    addVariable(Tavg);
    Tavg.setOutput();
    maxNIn = -1;
    maxNOut = 1;
    inletRequired(0);
}

void Mixer::go(SolutionMode mode, int level) {
    requireKnownMode_(mode);
    TARVO_LOG(3) << "Entered for " << fullTag();
    resetErrors();
    if (collectStreams_()) {
        feeds_.clear();
        for (EdgeBase* edge : inlets_)
            if (edge) feeds_.push_back(edge);
    }
    if (outletstreams_.empty() || !outletstreams_[0]) {
        reportError("no outlet connected, nothing to do");
        return;
    }
    Stream& out = *outletstreams_[0];
    Value P = P0;
    gather(level, &out, feeds_, P, Tavg);
    out.P = P;
    // A start for the flash of an outlet that has never been calculated.
    if (out.T.toDouble() == 298.15) out.T = Tavg;
    refreshOutlet(out, enthalpyFlashMode(out), mode, level + 1);
    if (mode < simultaneous) NITER = out.NITER_NLEFlash.value();
    calculateBalance();
    countCalculation();
    TARVO_LOG(3) << "Done";
}
