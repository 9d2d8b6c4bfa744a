#include <tarvo/flowsheet/FlowSheet.h>
#include <tarvo/flowsheet/Terminator.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <cassert>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;
} // namespace

Terminator::Terminator(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                       Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      Connectivity(defaults, id, persistency, parent, root) {
    if (tag() != "source" && tag() != "sink")
        throw ErrorRunTime(TARVO_FUNCTION, "invalid tag for Terminator: only source or sink allowed");
    maxNIn = isSource() ? 0 : -1;
    maxNOut = isSource() ? -1 : 0;
}

void Terminator::go(SolutionMode mode, int level) {
    requireKnownMode_(mode);
    if (!isSource()) {
        assert(outlets_.size() == 0);
        return;
    }
    assert(inlets_.size() == 0);
    assert(parentNode() != this);
    const auto* sheet = dynamic_cast<const FlowSheet*>(parentNode());
    const bool nested = sheet && sheet->nested();
    const SolutionMode streamMode = mode < simultaneous ? mode : simultaneous;
    // Slots freed by removed cuts stay in the list as nulls.
    for (EdgeBase* edge : outlets_) {
        if (!edge) continue;
        auto* stream = my_cast_in<Stream*>(edge, __PRETTY_FUNCTION__);
        TARVO_LOG(4) << "Processing outlet stream " << stream->tag();
        if (stream->isCut()) {
            // The tear values were just stepped or set by the solver: the rest of the stream follows them.
            TARVO_LOG(4) << stream->tag() << " is cut";
            stream->go(streamMode, level);
        } else if (!nested) {
            TARVO_LOG(4) << stream->tag() << " is not cut, not inside flowsheet-in-flowsheet";
            stream->go(streamMode, level);
        } else {
            TARVO_LOG(4) << stream->tag()
                         << " is not cut, inside flowsheet-in-flowsheet: skip flash for stream "
                         << stream->tag();
        }
        TARVO_LOG(4) << "Processed outlet stream " << stream->tag();
    }
}
