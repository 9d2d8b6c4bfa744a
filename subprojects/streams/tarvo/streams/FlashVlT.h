#ifndef TARVO_STREAMS_FLASHVLT_H
#define TARVO_STREAMS_FLASHVLT_H

#include <tarvo/streams/FlashVl.h>

// K values from the components' own vapor-liquid ratio at (T, P), refreshed at every evaluation: one
// equation for the split, whatever the number of components. Adds the specifications by vapor fraction.
class FlashVlT : public FlashVl {
public:
    explicit FlashVlT(std::string name = "FlashVlT");

    void fillkvl(const Value& P, const Value& T, bool estimating) override;
    void setFlash_(const FlashMode& fm, const Value& a, const Value& b, bool apply) override;
    void prepare_Flash_residuals() override;
    Value calculateResidualsFlashMode() override;
};

#endif
