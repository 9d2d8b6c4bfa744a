#include <tarvo/streams/Stream.h>
#include <tarvo/units/Divider.h>
#include <tarvo/units/StreamOperations.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <climits>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;
} // namespace

Divider::Divider(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                 Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      Connectivity(defaults, id, persistency, parent, root) {
    nOutlets = retrieveInteger(defaults, id, persistency, "nOutlets", 0, INT_MAX, 2);
    addVariable(nOutlets);
    addVariables(outSplit, nOutlets.value(), "outSplit", "Split fraction to outlets", "", 0.0);
    for (Quantity& f : outSplit)
        f.setOutput();
    maxNIn = 1;
    maxNOut = nOutlets.value();
    inletRequired(0);
}

void Divider::normalize_() {
    const std::size_t last = outSplit.size() - 1;
    Value sum = 0.0, others = 0.0;
    for (std::size_t j = 0; j < outSplit.size(); ++j) {
        if (outSplit[j] < zero) outSplit[j] = 0.0;
        sum += outSplit[j];
        if (j < last) others += outSplit[j];
    }
    if (sum.toDouble() == 0.0) {
        for (Quantity& f : outSplit)
            f = 1.0 / static_cast<double>(outSplit.size());
    } else if (others > one) {
        for (std::size_t j = 0; j < last; ++j)
            outSplit[j] = outSplit[j] / others;
        outSplit[last] = 0.0;
    } else {
        outSplit[last] = 1.0 - others;
    }
}

void Divider::go(SolutionMode mode, int level) {
    requireKnownMode_(mode);
    TARVO_LOG(3) << "Entered for " << fullTag();
    resetErrors();
    if (!firstInletConnected_()) return;
    if (nOut.value() == 0) {
        reportError("no outlet connected, nothing to do");
        return;
    }
    if (nOut.value() != nOutlets.value())
        throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "nOut.value() == nOutlets.value()");
    normalize_();
    TARVO_LOG(3) << "About to begin splitting computations";
    const Stream& in = *inletstreams_[0];
    for (std::size_t j = 0; j < outletstreams_.size(); ++j) {
        Stream& out = *outletstreams_[j];
        copyStream(out, in);
        out.scale(outSplit[j]);
        refreshOutlet(out, enthalpyFlashMode(out), mode, level + 1);
    }
    calculateBalance();
    countCalculation();
    TARVO_LOG(3) << "Done";
}
