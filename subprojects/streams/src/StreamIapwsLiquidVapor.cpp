#include <tarvo/components/ListComponents.h>
#include <tarvo/components/Purecomps.h>
#include <tarvo/phases/Iapws95Helmholtz.h>
#include <tarvo/streams/StreamIapwsLiquidVapor.h>
#include <tarvo/utility/Log.h>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;
// Above the critical temperature a liquid as dense as the fluid is the vapor's very state, and K would
// be 1 for any split: a small bias gives the fluid to the vapor.
constexpr double supercriticalBias = 0.01;

Defaults waterPhases(Defaults defaults) {
    return defaults.setString("embeddedTypePhase[0]", "PhaseIapws<vapor>")
        .setString("embeddedTypePhase[1]", "PhaseIapws<liquid>");
}
} // namespace

StreamIapwsLiquidVapor::StreamIapwsLiquidVapor(const Defaults& defaults, uint32_t id, Persistency* persistency,
                                               Persistent* parent, Persistent* root)
    : Model(defaults, id, persistency, parent, root), StreamTwo<FlashVlT>(waterPhases(defaults), id, persistency,
                                                                          parent, root) {}

void StreamIapwsLiquidVapor::fillkvl(const Value& P, const Value& T, bool estimating) {
    // The pass with ideal K values, which starts every flash, takes water's from its route: the ratio of the
    // fugacities at densities that the pass doesn't keep in step with (P, T) would make its search chase a
    // function of the path it took.
    if (isIdeal) return FlashVlT::fillkvl(P, T, estimating);
    liquidLikePhase().preparefugacity(P, T);
    vaporLikePhase().preparefugacity(P, T);
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (dynamic_cast<const purecomps::water*>(components[i]))
            kVL_[i] = exp(liquidLikePhase().fugacity(i) - vaporLikePhase().fugacity(i) +
                          (T.toDouble() >= Phase::Iapws95::criticalTemperature ? supercriticalBias : 0.0));
        else
            kVL_[i] = 1.0;
        TARVO_LOG(4) << "kVL[" << i << "] = " << kVL_[i].toDouble();
    }
}
