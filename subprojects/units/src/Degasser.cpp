#include <tarvo/streams/Stream.h>
#include <tarvo/units/Degasser.h>
#include <tarvo/units/StreamOperations.h>
#include <tarvo/utility/Log.h>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;
} // namespace

Degasser::Degasser(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                   Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      Connectivity(defaults, id, persistency, parent, root) {
    maxNIn = 1;
    maxNOut = 2;
    inletRequired(0);
    registerSynonym("vapor", "out1");
    registerSynonym("condensate", "out2");
}

void Degasser::go(SolutionMode mode, int level) {
    requireKnownMode_(mode);
    TARVO_LOG(3) << "Entered for " << fullTag();
    resetErrors();
    if (!firstInletConnected_()) return;
    if (!hasOutlet(0) || !hasOutlet(1)) {
        reportError("not all outlets are properly connected, nothing to do");
        return;
    }
    const std::string fault =
        degas(*inletstreams_[0], *outletstreams_[0], *outletstreams_[1], mode, level + 1);
    if (!fault.empty()) {
        reportError(fault);
        return;
    }
    calculateBalance();
    countCalculation();
    TARVO_LOG(3) << "Done";
}
