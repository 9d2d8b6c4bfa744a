#ifndef TARVO_STREAMS_STREAMONE_H
#define TARVO_STREAMS_STREAMONE_H

#include <tarvo/streams/Stream.h>

// A stream of one fluid phase, whose type an option names: no equilibrium, so the flash has T and P only.
class StreamOne : public Stream, public Flash {
public:
    StreamOne(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
              Persistent* root);

    // The phase takes the total's composition and its properties at the flash's state.
    void prepare_residuals() override;
    void prepareComposition() override;
    int calculateResidualsEquilibrium(std::vector<Value>& y, uint32_t offset) override;
    void updateFlash() override;

    String embeddedTypePhase;

protected:
    Flash& flash() override { return *this; }

    Phase::MassMolarProperties* phase_;

private:
    void takeComposition_();
};

#endif
