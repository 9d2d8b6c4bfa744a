#ifndef TARVO_STREAMS_STREAMONESOLID_H
#define TARVO_STREAMS_STREAMONESOLID_H

#include <tarvo/streams/Stream.h>

// A stream of one fluid phase and an inert solid phase: the components that are solids travel in the
// solid phase, all others in the fluid one.
class StreamOneSolid : public Stream, public Flash {
public:
    StreamOneSolid(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                   Persistent* parent, Persistent* root);

    void prepare_residuals() override;
    int calculateResidualsEquilibrium(std::vector<Value>& y, uint32_t offset) override;
    void updateFlash() override;
    const Value& Fraction(const PhaseIndex& index, bool clipped) const override;
    Vector X(const PhaseIndex& index) const override;

    String embeddedTypePhase;

protected:
    Flash& flash() override { return *this; }

private:
    Phase::MassMolarProperties* fluid_;
    Phase::MassMolarProperties* solid_;
    PhaseIndex fluidIndex_;
    mutable Value fluidShare_{1.0};
};

#endif
