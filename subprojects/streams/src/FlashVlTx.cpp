#include <tarvo/components/ListComponents.h>
#include <tarvo/streams/FlashVlTx.h>
#include <tarvo/utility/Log.h>

using Tarvo::Utility::PhaseIndex;
using Tarvo::Utility::ScalingMode;

namespace {
constexpr int verbosityFile = -1;
} // namespace

FlashVlTx::FlashVlTx(std::string name) : FlashVlT(std::move(name)) {}

std::vector<std::pair<Value*, Scaler>> FlashVlTx::betas() {
    // K stays positive on a logarithmic scale down to the 1e-100 that marks a solid.
    std::vector<std::pair<Value*, Scaler>> unknowns;
    for (Value& K : kVL_) unknowns.emplace_back(&K, Scaler(ScalingMode::log, 1e-100, 1e10, 1.0, 10.0));
    return unknowns;
}

int FlashVlTx::calculateResidualsEquilibrium(std::vector<Value>& residuals, uint32_t offset) {
    residuals[offset] = calculateResidualsRrg();
    if (!isIdeal) {
        liquidLikePhase().preparefugacity(P, T);
        vaporLikePhase().preparefugacity(P, T);
    }
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const Value& K = kVL_[i];
        Value& r = residuals[offset + 1 + i];
        if (components[i]->isSolid())
            r = K;
        else if (isIdeal)
            r = log(K) - log(components[i]->kvli(T, P));
        else
            r = log(K) - (liquidLikePhase().fugacity(i) - vaporLikePhase().fugacity(i));
        TARVO_LOG(4) << "kvl(" << i << ") = " << K.toDouble();
    }
    return 1 + NCOMPONENTS;
}

FlashLlTx::FlashLlTx() : FlashVlTx("FlashLlTx") {
    vaporIndex = PhaseIndex::liquid1;
    liquidIndex = PhaseIndex::liquid2;
}
