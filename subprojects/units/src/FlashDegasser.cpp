#include <tarvo/streams/Stream.h>
#include <tarvo/units/FlashDegasser.h>
#include <tarvo/units/StreamOperations.h>
#include <tarvo/utility/Log.h>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;
} // namespace

FlashDegasser::FlashDegasser(const Defaults& defaults, uint32_t id, Persistency* persistency,
                             Persistent* parent, Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      FlashSplitter(defaults, id, persistency, parent, root, "DEGAS", "StreamVapor") {
    maxNOut = 2;
    registerSynonym("vapor", "out1");
    registerSynonym("condensate", "out2");
}

void FlashDegasser::passOn_(SolutionMode mode, int level) {
    TARVO_LOG(3) << "Summing Phases";
    if (!hasOutlet(0) || !hasOutlet(1)) {
        reportError("not all outlets are properly connected, nothing to do");
        return;
    }
    reportError(degas(*inner_, *outletstreams_[0], *outletstreams_[1], mode, level + 1)); // empty: no error
}
