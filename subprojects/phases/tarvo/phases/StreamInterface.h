#ifndef TARVO_PHASES_STREAMINTERFACE_H
#define TARVO_PHASES_STREAMINTERFACE_H

#include <tarvo/utility/SmartEnumerator.h>
#include <tarvo/value/Value.h>

#include <vector>

namespace Phase {
class Mass;
}

// What the total phase of a stream may ask of its stream: the phases, and how much of the total each
// carries.
class StreamInterface {
public:
    virtual ~StreamInterface() = default;
    // All phases of the stream, total phases included, in the order of their creation.
    virtual const std::vector<Phase::Mass*>& phases() const = 0;
    // The molar fraction of the total that `phase` carries in the present state of the stream.
    virtual const Value& phaseFraction(const Phase::Mass& phase) const = 0;
    // The phase of that index, or null if the stream has none.
    virtual Phase::Mass* findPhase(const Tarvo::Utility::PhaseIndex& index) const = 0;
    // The flash's fraction of a phase, with or without clipping into [0, 1].
    virtual const Value& Fraction(const Tarvo::Utility::PhaseIndex& index, bool clipped) const = 0;
    // The flash's composition of a phase.
    virtual Vector X(const Tarvo::Utility::PhaseIndex& index) const = 0;
};

#endif
