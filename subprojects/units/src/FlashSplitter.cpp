#include <tarvo/streams/Stream.h>
#include <tarvo/units/FlashSplitter.h>
#include <tarvo/units/StreamOperations.h>
#include <tarvo/utility/Log.h>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;
} // namespace

FlashSplitter::FlashSplitter(const Defaults& defaults, uint32_t id, Persistency* persistency,
                             Persistent* parent, Persistent* root)
    : FlashSplitter(defaults, id, persistency, parent, root, "SPLIT", "StreamIdealLiquidVapor") {}

FlashSplitter::FlashSplitter(const Defaults& defaults, uint32_t id, Persistency* persistency,
                             Persistent* parent, Persistent* root, const std::string& innerTag,
                             const std::string& defaultType)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      FlashDrum(defaults, id, persistency, parent, root) {
    embeddedTypeStream = retrieveString(defaults, id, persistency, "embeddedTypeStream", defaultType);
    addVariable(embeddedTypeStream);
    Node& inner = persistency
                      ? child(innerTag)
                      : addChild(embeddedTypeStream.value(), Defaults(innerTag, "Internal mixed stream"));
    inner_ = my_cast<Stream*>(&inner, "FlashSplitter::FlashSplitter");
    maxNOut = inner_->nphases();
}

void FlashSplitter::setup_of() {
    // A unit that stands alone, or one retrieved from the store, readies its inner stream at first use.
    if (!innerReady_) {
        inner_->initializeNonPersistents();
        innerReady_ = true;
    }
    FlashDrum::setup_of();
}

void FlashSplitter::passOn_(SolutionMode mode, int level) {
    TARVO_LOG(3) << "Summing Phases";
    std::size_t k = 0;
    for (const Phase::Mass* phase : inner_->phases()) {
        if (phase == inner_->Tphase) continue;
        if (k < outletstreams_.size() && outletstreams_[k])
            passPhases(*outletstreams_[k], *inner_, {phase}, mode, level + 1);
        ++k;
    }
}
