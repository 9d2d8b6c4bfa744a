#ifndef TARVO_STREAMS_STREAMTWO_H
#define TARVO_STREAMS_STREAMTWO_H

#include <tarvo/phases/PhaseGeneric.h>
#include <tarvo/streams/FlashVlTx.h>
#include <tarvo/streams/Stream.h>

// A stream of two fluid phases in equilibrium, by the K-value model of F, and optionally an inert solid
// phase. The first fluid phase is the vapor-like one, whose fraction is the flash's alfa; the second is
// the liquid-like one. The types of both come from options.
template <typename F> class StreamTwo : public Stream, public F {
public:
    StreamTwo(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
              Persistent* root)
        : StreamTwo(defaults, id, persistency, parent, root, false) {}

    void initializeNonPersistents() override;
    void prepare_residuals() override;
    void settle(const Value& P, const Value& T) override;
    void settleAt(const Value& P, const Value& T, double fraction) override;
    Value boundaryResidualAt(const Value& P, const Value& T, double fraction) override;
    void updateFlash() override;
    void setFlash(const Tarvo::Utility::FlashMode& fm) override;
    void estimateFlash() override;
    void estimateEquilibrium(const Value& P, const Value& T) override;
    void precompute_isIdeal() override;
    const Value& Fraction(const Tarvo::Utility::PhaseIndex& index, bool clipped) const override;
    Vector X(const Tarvo::Utility::PhaseIndex& index) const override;
    const Vector& splitComposition() const override;
    Phase::Generic& vaporLikePhase() const override { return *first_; }
    Phase::Generic& liquidLikePhase() const override { return *second_; }

    String embeddedTypePhase0;
    String embeddedTypePhase1;

protected:
    // With `withSolid` the stream also has a solid phase that carries the components that are solids.
    StreamTwo(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
              Persistent* root, bool withSolid);
    Flash& flash() override { return *this; }

private:
    // The split of the flash into the phases' compositions, with their fractions and properties if asked.
    void pushSplit_(bool properties);
    // (P, T), the K values there and the split: in equilibrium, or at the vapor fraction given. A stream
    // that is not ideal refines the components' K values by substitution on its phases' fugacities, and
    // phases on an equation of state take their densities there.
    void placeSplit_(const Value& P, const Value& T, const double* fraction);
    // alfa at the vapor fraction given or, for null, in equilibrium, and the split there.
    void splitAt_(const double* fraction);
    // Successive substitution of the K values from the phases' fugacities at the present split.
    void substitute_(const double* fraction);

    Phase::Generic* first_;
    Phase::Generic* second_;
    Phase::Generic* solid_ = nullptr;
    mutable Value scaledFraction_{0.0};
};

// The same with a solid phase beside the two fluid ones.
template <typename F> class StreamTwoSolid : public StreamTwo<F> {
public:
    StreamTwoSolid(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                   Persistent* parent, Persistent* root)
        : Model(defaults, id, persistency, parent, root), StreamTwo<F>(defaults, id, persistency, parent, root, true) {}
};

extern template class StreamTwo<FlashVl>;
extern template class StreamTwo<FlashVlT>;
extern template class StreamTwo<FlashVlTx>;
extern template class StreamTwo<FlashLlTx>;
extern template class StreamTwoSolid<FlashVlT>;
extern template class StreamTwoSolid<FlashVlTx>;

#endif
