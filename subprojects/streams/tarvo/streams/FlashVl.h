#ifndef TARVO_STREAMS_FLASHVL_H
#define TARVO_STREAMS_FLASHVL_H

#include <tarvo/phases/PhaseGeneric.h>
#include <tarvo/streams/Flash.h>

// A flash between two fluid phases with K values that the stream supplies. The vapor fraction alfa is an
// unknown that may leave [0, 1] during the iteration; one residual covers subcooled, two-phase and
// superheated states alike, and its Jacobian is regular at every solution, a pure component's included.
class FlashVl : public Flash {
public:
    explicit FlashVl(std::string name = "FlashVl");

    void addUnknowns() override;
    FlashVl* twoPhase() override { return this; }
    // The two phases of the split, vapor-like first; their fugacities are equal at equilibrium.
    virtual Phase::Generic& vaporLikePhase() const = 0;
    virtual Phase::Generic& liquidLikePhase() const = 0;
    // K values at (P, T); the stream decides where they come from.
    virtual void fillkvl(const Value& /*P*/, const Value& /*T*/, bool /*estimating*/) {}
    // The split equation. Where the vapor fraction is specified, the phases' compositions must add up
    // alike: ln(sum y / sum x) = 0. Elsewhere alfa must be the fraction at which they do, kept in [0, 1]:
    // alfa - clamp(alfaClipped + E, 0, 1) with E = (sum y - sum x) / (1 + |d(sum y - sum x)/dalfa|), which
    // leaves alfa at 0 for a subcooled state, at 1 for a superheated one, and has a slope in alfa and in T
    // wherever it is zero.
    Value calculateResidualsRrg();
    // The range of alfa in which no fraction of either phase exceeds 1.
    void computealfaminmax(const Vector& z);
    // Clips the number into [0, 1].
    static void hardclipalfa(Value& a);
    // The compositions of the two phases at the present alfa and K values.
    void calculateSplit(const Vector& z);
    // alfa from the present K values, by the split equation solved in plain numbers. It leaves alfa carrying
    // the derivatives of the K values through one Newton correction, that is those of alfa as a function of
    // the K values.
    void solveSplit(const Vector& z);
    // ln(sum y / sum x) of the present split: zero where the phases' compositions add up alike.
    Value boundaryResidual() const;
    // The molar share of a phase in the stream, from the split as it stands: alfa * sum y and
    // (1 - alfa) * sum x, over their sum. With the phases' compositions normalised, every component is
    // conserved, however closely the split equation was met.
    Value conservedFraction(const PhaseIndex& index) const;

    // The state at (P, T) with the vapor fraction given, in the phases: a point of a two-phase search.
    virtual void settleAt(const Value& P, const Value& T, double fraction) = 0;
    // boundaryResidual() at (P, T) and the vapor fraction given; zero on the bubble line for fraction 0, on
    // the dew line for fraction 1. Only the K values and the split are worked out.
    virtual Value boundaryResidualAt(const Value& P, const Value& T, double fraction) = 0;

    void estimate(const Value& P, const Value& T) override;
    void estimateEquilibrium(const Value& P, const Value& T) override;
    int calculateResidualsEquilibrium(std::vector<Value>& y, uint32_t offset) override;
    const Value& Fraction(const PhaseIndex& index, bool clipped) const override;
    Vector X(const PhaseIndex& index) const override;

    // The composition that the split divides: the total's, or the fluid part of it.
    virtual const Vector& splitComposition() const = 0;

    Value denominator{0.0};
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
