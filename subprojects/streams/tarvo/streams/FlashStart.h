#ifndef TARVO_STREAMS_FLASHSTART_H
#define TARVO_STREAMS_FLASHSTART_H

#include <tarvo/core/MonotoneRoot.h>
#include <tarvo/streams/Flash.h>

#include <functional>

class FlashVl;

// The start of a flash solve: the state that the specification asks for, found by searches in one variable
// that bracket their answer, so that Newton's method begins at the solution wherever one lies in the range
// of temperatures and pressures.
//
// A search runs along the temperature at fixed pressure, or along the logarithm of the pressure at fixed
// temperature. With two fluid phases, the bubble and dew lines cut that axis into a one-phase piece on each
// side and a two-phase piece between them. The enthalpy, entropy or density is continuous and monotonic
// along each piece; the two-phase piece is walked by the vapor fraction, each point on the line where the
// phases are in equilibrium at that fraction, so that a pure component, whose two-phase piece has no width
// in temperature, is searched like any mixture.
class FlashStart {
public:
    enum class Result { found, temperatureOutside, pressureOutside, unsure };

    explicit FlashStart(Flash& flash);
    // Leaves the flash at the state found, or, when there is none, at the state it began from.
    Result run();

private:
    // The variable of a search: T in K at fixed P, or ln(P / Pa) at fixed T.
    struct Axis {
        bool pressure;
        double fixed; // the other variable, in K or Pa
        double lo() const;
        double hi() const;
        Value P(double s) const;
        Value T(double s) const;
    };
    // A point found: where on its axis, and the vapor fraction there; NaN for the fraction of equilibrium.
    struct Found {
        MonotoneRoot::Outcome outcome;
        double s;
        double fraction;
    };
    // A function at a point (P, T), with the flash placed there as it needs.
    using Evaluate = std::function<Value(const Value& P, const Value& T)>;
    // What a search reads from the flash once it is placed; along a piece of an axis it increases.
    using Read = std::function<Value()>;

    Result solve_();
    // The flash at the point found, or what stands in the way.
    Result finish_(const Axis& axis, const Found& found);
    // Where f, increasing, is zero within the tolerance given.
    Found find_(const Axis& axis, const Evaluate& f, double lo, double hi, double start, double fraction,
                double within);
    // The flash at a point, without derivatives: the state that the solve starts from.
    void place_(const Axis& axis, const Found& at);
    // The flash at (P, T), at the vapor fraction given or, for NaN, in equilibrium.
    void placeAt_(const Value& P, const Value& T, double fraction);
    double valueAt_(const Axis& axis, const Found& at, const Read& f);
    // Where the phases are in equilibrium at the vapor fraction given: on the bubble line for 0, on the dew
    // line for 1.
    Found boundary_(const Axis& axis, double fraction, double lo, double hi, double start);
    // Where f is zero along the axis, piece by piece.
    Found along_(const Axis& axis, const Read& f, double start);
    // A boundary point with the value of f there (NaN where the boundary lies beyond the range).
    struct End {
        Found point;
        double value;
    };
    Found alongTwoPhase_(const Axis& axis, const Read& f, End low, End high);
    // For the modes that give neither P nor T: along ln P, each point solved by `inner` along T at its
    // pressure; f may rise or fall with P, and the root nearest the start is taken.
    Result alongPressure_(const std::function<Found(const Axis& axis)>& inner, const Read& f, double start);

    Flash& flash_;
    FlashVl* split_; // null for one fluid phase
};

#endif
