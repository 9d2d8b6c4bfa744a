#ifndef TARVO_STREAMS_FLASHVLTX_H
#define TARVO_STREAMS_FLASHVLTX_H

#include <tarvo/streams/FlashVlT.h>

// K values that depend on composition: each is an unknown, with the equality of fugacities as its
// equation. The stream's two phase models give the fugacities; with ideal phases the K values are the
// components' own ratios, as in FlashVlT, only solved for.
class FlashVlTx : public FlashVlT {
public:
    explicit FlashVlTx(std::string name = "FlashVlTx");

    // The K values are unknowns: residuals never overwrite them.
    void prepare_Flash_residuals() override {}
    int calculateResidualsEquilibrium(std::vector<Value>& y, uint32_t offset) override;

protected:
    std::vector<std::pair<Value*, Scaler>> betas() override;
};

// Two liquid phases in equilibrium: the first takes the place of the vapor.
class FlashLlTx : public FlashVlTx {
public:
    FlashLlTx();
};

#endif
