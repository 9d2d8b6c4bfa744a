#ifndef TARVO_CORE_MONOTONEROOT_H
#define TARVO_CORE_MONOTONEROOT_H

#include <functional>
#include <limits>

// The root of a continuous, increasing function of one variable on a closed range. Every evaluation
// narrows a bracket around the root; Newton's step (or, without a slope, the secant from the point before)
// is taken where it falls inside the bracket and halves it often enough, bisection elsewhere. A step that
// points beyond a range end that was not evaluated yet goes to that end, so that a root outside the range
// is known as such after one evaluation.
class MonotoneRoot {
public:
    // f and df/dx at a point; a slope that is not finite and positive is not used.
    struct Sample {
        double value;
        double slope;
    };
    enum class Outcome {
        root,      // |f| <= the tolerance, or the bracket or the next step is as narrow as the numbers allow
        below,     // f > 0 on the whole range: the root lies below it
        above,     // f < 0 on the whole range: the root lies above it
        undefined, // f was not a number, or the iterations ran out
    };

    // Searches [lo, hi] from start. On `root`, x() is the root; on `below` and `above`, the range end. Where
    // f gives no slope, the first step is firstStep long, downhill, so that a root near the start is found
    // before the range ends are tried; without it, the first step goes to a range end.
    Outcome find(const std::function<Sample(double)>& f, double lo, double hi, double start, double tolerance,
                 double firstStep = std::numeric_limits<double>::quiet_NaN());

    double x() const { return x_; }
    const Sample& at() const { return at_; }
    int evaluations() const { return evaluations_; }

private:
    double x_ = 0;
    Sample at_{0, 0};
    int evaluations_ = 0;
};

#endif
