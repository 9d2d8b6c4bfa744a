#include <tarvo/streams/FlashStart.h>
#include <tarvo/streams/FlashVl.h>
#include <tarvo/value/ActiveContext.h>

#include <algorithm>
#include <cmath>
#include <limits>

using Tarvo::Utility::FlashMode;
using Outcome = MonotoneRoot::Outcome;

namespace {
// A hundredth of the solve's tolerance: the solve then finds its start converged.
constexpr double tolerance = 0.01 * Flash::tolerance;
// The lines of a vapor fraction are found to the rounding of their residual, so that what is read along
// them is as smooth as the numbers allow.
constexpr double lineTolerance = 1e-15;
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

// A number in the units of the constant given.
Value like(const Value& unit, double number) {
    Value v = unit;
    v.active() = number;
    return v;
}

// The nearest number in [lo, hi], and lo for NaN: a state at which the property models can be evaluated.
double within(const Value& x, const Value& lo, const Value& hi) {
    return std::isnan(x.toDouble()) ? lo.toDouble() : std::clamp(x.toDouble(), lo.toDouble(), hi.toDouble());
}
} // namespace

double FlashStart::Axis::lo() const {
    return pressure ? std::log(Pmin.toDouble()) : Tmin.toDouble();
}

double FlashStart::Axis::hi() const {
    return pressure ? std::log(Pmax.toDouble()) : Tmax.toDouble();
}

Value FlashStart::Axis::P(double s) const {
    return like(P0, pressure ? std::exp(s) : fixed);
}

Value FlashStart::Axis::T(double s) const {
    return like(T0, pressure ? fixed : s);
}

FlashStart::FlashStart(Flash& flash) : flash_(flash), split_(flash.twoPhase()) {}

FlashStart::Result FlashStart::run() {
    const double P = within(flash_.P, Pmin, Pmax), T = within(flash_.T, Tmin, Tmax);
    const Result result = solve_();
    // Nothing of the search may stay behind: its numbers carry derivatives of a context that is gone. The
    // state it goes back to is the one it started from, as far as the models reach.
    if (result != Result::found) flash_.settle(like(P0, P), like(T0, T));
    return result;
}

FlashStart::Result FlashStart::solve_() {
    static const Value RT0 = R * T0;
    const Read enthalpy = [this] { return (flash_.calculateTotalH() - flash_.Hset) / RT0; };
    const Read entropy = [this] { return (flash_.calculateTotalS() - flash_.Sset) / R; };
    const Read density = [this] { return log(flash_.calculateTotalRho() / flash_.rhoset); };
    const double Tstart = within(flash_.T, Tmin, Tmax);
    const double lnPstart = std::log(within(flash_.P, Pmin, Pmax));
    const bool pressureGiven = flash_.flashMode != FlashMode::RT && flash_.flashMode != FlashMode::RH &&
                               flash_.flashMode != FlashMode::SA;
    if (pressureGiven && !Flash::inRange(flash_.Pset, Pmin, Pmax)) return Result::pressureOutside;
    const Axis atPset{false, flash_.Pset.toDouble()};
    switch (flash_.flashMode) {
    case FlashMode::PT:
        if (!Flash::inRange(flash_.Tset, Tmin, Tmax)) return Result::temperatureOutside;
        flash_.settle(flash_.Pset, flash_.Tset);
        return Result::found;
    case FlashMode::PA:
        return finish_(atPset, boundary_(atPset, split_->alfaset.toDouble(), atPset.lo(), atPset.hi(), Tstart));
    case FlashMode::PH: return finish_(atPset, along_(atPset, enthalpy, Tstart));
    case FlashMode::PS: return finish_(atPset, along_(atPset, entropy, Tstart));
    case FlashMode::RT: {
        if (!Flash::inRange(flash_.Tset, Tmin, Tmax)) return Result::temperatureOutside;
        const Axis axis{true, flash_.Tset.toDouble()};
        return finish_(axis, along_(axis, density, lnPstart));
    }
    case FlashMode::RH:
        return alongPressure_([&](const Axis& axis) { return along_(axis, enthalpy, Tstart); }, density, lnPstart);
    case FlashMode::SA:
        return alongPressure_(
            [&](const Axis& axis) {
                return boundary_(axis, split_->alfaset.toDouble(), axis.lo(), axis.hi(), Tstart);
            },
            entropy, lnPstart);
    default: return Result::unsure;
    }
}

FlashStart::Result FlashStart::finish_(const Axis& axis, const Found& found) {
    switch (found.outcome) {
    case Outcome::root: place_(axis, found); return Result::found;
    case Outcome::below:
    case Outcome::above: return axis.pressure ? Result::pressureOutside : Result::temperatureOutside;
    default: return Result::unsure;
    }
}

FlashStart::Found FlashStart::find_(const Axis& axis, const Evaluate& f, double lo, double hi, double start,
                                    double fraction, double within) {
    MonotoneRoot root;
    const Outcome outcome = root.find(
        [&](double s) {
            // One direction, the variable of the axis; along ln P the slope is P times that along P.
            ActiveContext::Scope scope(1);
            Value variable = axis.pressure ? axis.P(s) : axis.T(s);
            variable.active().setActive(0);
            const Value P = axis.pressure ? variable : axis.P(s);
            const Value T = axis.pressure ? axis.T(s) : variable;
            variable.active().inactivate(0);
            const Value r = f(P, T);
            return MonotoneRoot::Sample{r.toDouble(),
                                        r.active().derivative(0) * (axis.pressure ? P.toDouble() : 1.0)};
        },
        lo, hi, std::clamp(start, lo, hi), within);
    return {outcome, root.x(), fraction};
}

void FlashStart::place_(const Axis& axis, const Found& at) {
    placeAt_(axis.P(at.s), axis.T(at.s), at.fraction);
}

void FlashStart::placeAt_(const Value& P, const Value& T, double fraction) {
    if (split_ && !std::isnan(fraction))
        split_->settleAt(P, T, fraction);
    else
        flash_.settle(P, T);
}

double FlashStart::valueAt_(const Axis& axis, const Found& at, const Read& f) {
    place_(axis, at);
    return f().toDouble();
}

FlashStart::Found FlashStart::boundary_(const Axis& axis, double fraction, double lo, double hi, double start) {
    // K values fall as pressure rises.
    const double sign = axis.pressure ? -1 : 1;
    return find_(
        axis, [&](const Value& P, const Value& T) { return sign * split_->boundaryResidualAt(P, T, fraction); }, lo,
        hi, start, fraction, lineTolerance);
}

FlashStart::Found FlashStart::along_(const Axis& axis, const Read& f, double start) {
    const double lo = axis.lo(), hi = axis.hi();
    const auto piece = [&](double fraction, double a, double b) {
        return find_(
            axis,
            [&](const Value& P, const Value& T) {
                placeAt_(P, T, fraction);
                return f();
            },
            a, b, start, fraction, tolerance);
    };
    if (!split_) return piece(notANumber, lo, hi);
    // Along T the liquid comes first, along P the vapor.
    const double first = axis.pressure ? 1 : 0, last = 1 - first;
    const Found low = boundary_(axis, first, lo, hi, start);
    if (low.outcome == Outcome::undefined) return low;
    if (low.outcome == Outcome::above) return piece(first, lo, hi);
    // The values on the boundary lines; beyond the range, the piece starts at its end.
    const double lowValue = low.outcome == Outcome::root ? valueAt_(axis, low, f) : notANumber;
    if (lowValue >= 0) return piece(first, lo, low.s);
    Found high = boundary_(axis, last, low.s, hi, std::max(start, low.s));
    if (high.outcome == Outcome::undefined) return high;
    if (high.outcome == Outcome::below) {
        // The second line lies on the first, as for a pure component, which the rounding of its residual
        // may put a hair before it.
        if (low.outcome != Outcome::root) return piece(last, low.s, hi);
        high = Found{Outcome::root, low.s, last};
    }
    const double highValue = high.outcome == Outcome::root ? valueAt_(axis, high, f) : notANumber;
    if (highValue <= 0) return piece(last, high.s, hi);
    return alongTwoPhase_(axis, f, {low, lowValue}, {high, highValue});
}

FlashStart::Found FlashStart::alongTwoPhase_(const Axis& axis, const Read& f, End low, End high) {
    // An end of the piece on a boundary line, or at an end of the range, with the fraction of equilibrium
    // there.
    const auto close = [&](End& end, double s) {
        if (end.point.outcome == Outcome::root) return;
        flash_.settle(axis.P(s), axis.T(s));
        end.point = Found{Outcome::root, s, split_->alfa_.toDouble()};
        end.value = f().toDouble();
    };
    close(low, axis.lo());
    close(high, axis.hi());
    if (low.value > 0) return {Outcome::below, axis.lo(), notANumber};
    if (high.value < 0) return {Outcome::above, axis.hi(), notANumber};
    // Each point of the piece lies between its ends: the line of its fraction is searched from where the
    // point before was found, the first from where the ends put it.
    const double t0 = low.value / (low.value - high.value);
    double s = low.point.s + t0 * (high.point.s - low.point.s);
    Found point = low.point;
    double at = notANumber;
    const auto pointAt = [&](double t) {
        if (t == at) return;
        point = boundary_(axis, low.point.fraction + t * (high.point.fraction - low.point.fraction), low.point.s,
                          high.point.s, s);
        s = point.s;
        at = t;
    };
    MonotoneRoot root;
    const Outcome outcome = root.find(
        [&](double t) {
            pointAt(t);
            return MonotoneRoot::Sample{valueAt_(axis, point, f), notANumber};
        },
        0, 1, t0, tolerance, 0.01);
    pointAt(root.x());
    point.outcome = outcome;
    return point;
}

FlashStart::Result FlashStart::alongPressure_(const std::function<Found(const Axis& axis)>& inner, const Read& f,
                                              double start) {
    const Axis pressures{true, notANumber};
    const auto at = [](double s) { return Axis{false, std::exp(s)}; };
    const auto value = [&](double s) {
        const Found point = inner(at(s));
        if (point.outcome == Outcome::undefined) return notANumber;
        // Beyond the range of temperatures the state at its end still tells on which side the root is.
        return valueAt_(at(s), point, f);
    };
    // f may rise or fall with the pressure (the entropy of a mostly liquid two-phase state rises along its
    // line of constant vapor fraction, that of a vapor falls), and has flat stretches (the density of a
    // liquid): a bracket of its sign, widened step by step on both sides of the start, tells where the
    // root is and which way f goes there.
    const double startValue = value(start);
    if (std::isnan(startValue)) return Result::unsure;
    double a = start, b = start, direction = 1;
    for (double step = 0.01; a == b && step < 2 * (pressures.hi() - pressures.lo()); step *= 2) {
        for (const double side : {1.0, -1.0}) {
            const double s = std::clamp(start + side * step, pressures.lo(), pressures.hi());
            const double v = s == start ? startValue : value(s);
            if (!(v * startValue <= 0)) continue;
            a = std::min(s, start);
            b = std::max(s, start);
            direction = (v - startValue) * (s - start) < 0 ? -1 : 1;
            break;
        }
    }
    if (a == b) return Result::pressureOutside;
    MonotoneRoot root;
    const Outcome outcome = root.find([&](double s) { return MonotoneRoot::Sample{direction * value(s), notANumber}; },
                                      a, b, 0.5 * (a + b), tolerance);
    if (outcome != Outcome::root) return outcome == Outcome::undefined ? Result::unsure : Result::pressureOutside;
    return finish_(at(root.x()), inner(at(root.x())));
}
