#include <tarvo/streams/Stream.h>
#include <tarvo/units/Splitter.h>
#include <tarvo/units/StreamOperations.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <algorithm>

using Tarvo::Persistency::Defaults;
using Tarvo::Utility::PhaseType;
using Tarvo::Utility::SmartEnumerator;

namespace {
constexpr int verbosityFile = -1;

// The outlet carries only the phases of `type`.
void onlyPhasesOf(Stream& out, PhaseType type) {
    for (Phase::Mass* phase : out.phases())
        if (phase != out.Tphase) phase->fraction = phase->phaseType() == type ? 1.0 : 0.0;
}
} // namespace

Splitter::Splitter(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                   Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      Connectivity(defaults, id, persistency, parent, root) {
    maxNIn = 1;
    maxNOut = -1;
    inletRequired(0);
}

void Splitter::go(SolutionMode mode, int level) {
    requireKnownMode_(mode);
    TARVO_LOG(3) << "Entered for " << fullTag();
    resetErrors();
    if (!firstInletConnected_()) return;
    const Stream& in = *inletstreams_[0];
    if (in.nphases() != nOut.value())
        throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "instream_->nphases() == nOut.value()");
    const auto place = [&in](Stream& out) {
        out.T = in.T;
        out.P = in.P;
    };
    if (!(in.Tphase->totalFlow().toDouble() > 0.0)) {
        reportWarning("Zero inlet stream, bypassing block");
        for (Stream* out : outletstreams_) {
            if (!out) continue;
            place(*out);
            out->scale(zero);
            refreshOutlet(*out, enthalpyFlashMode(*out), mode, level + 1);
        }
    } else {
        std::vector<bool> taken(outletstreams_.size(), false);
        for (const Phase::Mass* phase : in.phases()) {
            if (phase == in.Tphase) continue;
            const PhaseType type = phase->phaseType();
            const std::string& name = SmartEnumerator<PhaseType>::item(type).name();
            std::size_t k = 0;
            for (; k < outletstreams_.size(); ++k) {
                TARVO_LOG(4) << "Trying to match phase [" << name << "] with outlet[" << k << "]";
                if (!taken[k] && outletstreams_[k] && outletstreams_[k]->numberOfPhases(type) > 0) break;
            }
            if (k == outletstreams_.size()) {
                reportError("incompatible phase type " + name);
                return;
            }
            Stream& out = *outletstreams_[k];
            taken[k] = true;
            *out.Tphase = *phase;
            out.Tphase->fraction = 1.0;
            onlyPhasesOf(out, type);
            place(out);
            refreshOutlet(out, enthalpyFlashMode(out), mode, level + 1);
        }
        for (std::size_t k = 0; k < outletstreams_.size(); ++k) {
            if (taken[k] || !outletstreams_[k]) continue;
            TARVO_LOG(3) << "Zeroing stream outlet[" << k << "]";
            place(*outletstreams_[k]);
            outletstreams_[k]->scale(zero);
            refreshOutlet(*outletstreams_[k], enthalpyFlashMode(*outletstreams_[k]), mode, level + 1);
        }
    }
    calculateBalance();
    countCalculation();
    TARVO_LOG(3) << "Done";
}
