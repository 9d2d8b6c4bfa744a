#ifndef TARVO_STREAMS_STREAMIAPWSLIQUIDVAPOR_H
#define TARVO_STREAMS_STREAMIAPWSLIQUIDVAPOR_H

#include <tarvo/streams/StreamTwo.h>

// Saturated water: a liquid and a vapor on the IAPWS-95 formulation, whatever the options say. Water's
// K value is the ratio of the two phases' fugacity coefficients at their present densities, refreshed at
// every evaluation, so that the one split equation of the flash holds exactly on the release's
// saturation curve; both densities are unknowns of the flash. The pass with ideal K values that starts a
// flash takes water's from its route. Every other component has K = 1, and any
// of them present is an error of the phases.
class StreamIapwsLiquidVapor : public StreamTwo<FlashVlT> {
public:
    StreamIapwsLiquidVapor(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                           Persistent* parent, Persistent* root);

    void fillkvl(const Value& P, const Value& T, bool estimating) override;
};

#endif
