#ifndef TARVO_UNITS_FLASHDEGASSER_H
#define TARVO_UNITS_FLASHDEGASSER_H

#include <tarvo/units/FlashSplitter.h>

// A flash drum with two outlets: the vapor of its inner stream, the child "DEGAS", leaves at out1 ("vapor"),
// the sum of the inner stream's other phases at out2 ("condensate").
class FlashDegasser : public FlashSplitter {
public:
    FlashDegasser(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                  Persistent* parent, Persistent* root);

protected:
    void passOn_(SolutionMode mode, int level) override;
};

#endif
