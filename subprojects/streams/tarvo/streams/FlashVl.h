#ifndef TARVO_STREAMS_FLASHVL_H
#define TARVO_STREAMS_FLASHVL_H

#include <tarvo/streams/Flash.h>

// A flash between two fluid phases with K values that the stream supplies. The vapor fraction alfa is an
// unknown that may leave [0, 1] during the iteration: one residual, the Rachford-Rice sum extended over
// the phase boundaries, covers subcooled, two-phase and superheated states alike.
class FlashVl : public Flash {
public:
    explicit FlashVl(std::string name = "FlashVl");

    void addUnknowns() override;
    // K values at (P, T); the stream decides where they come from.
    virtual void fillkvl(const Value& /*P*/, const Value& /*T*/, bool /*estimating*/) {}
    Value calculateResidualsRrg();
    // The range of alfa in which no fraction of either phase exceeds 1.
    void computealfaminmax(const Vector& z);
    // Clips the number into [0, 1].
    static void hardclipalfa(Value& a);
    // The compositions of the two phases at the present alfa and K values.
    void calculateSplit(const Vector& z);

    void estimate(const Value& P, const Value& T) override;
    void estimateEquilibrium(const Value& P, const Value& T) override;
    int calculateResidualsEquilibrium(std::vector<Value>& y, uint32_t offset) override;
    const Value& Fraction(const PhaseIndex& index, bool clipped) const override;
    Vector X(const PhaseIndex& index) const override;

    // The composition that the split divides: the total's, or the fluid part of it.
    virtual const Vector& splitComposition() const = 0;

    Value sumKz{0.0}, sumzK{0.0}, denominator{0.0};
    double alfamin_ = 0, alfamax_ = 1;
    Vector kVL_;
    PhaseIndex vaporIndex = PhaseIndex::vapor;
    PhaseIndex liquidIndex = PhaseIndex::liquid1;
    mutable Value liquidFraction{0.5};
    Value sumx{0.0}, sumy{0.0};
    Value alfa_{0.5};
    Value alfaClipped{0.5};
    Vector x, y;
    Value alfaset{0.0};
};

#endif
