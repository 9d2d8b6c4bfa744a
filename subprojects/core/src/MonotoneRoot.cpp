#include <tarvo/core/MonotoneRoot.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {
constexpr int maxEvaluations = 200;
constexpr double epsilon = std::numeric_limits<double>::epsilon();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

// A slope that a step can be taken with.
bool usable(double slope) {
    return std::isfinite(slope) && slope > 0;
}
} // namespace

MonotoneRoot::Outcome MonotoneRoot::find(const std::function<Sample(double)>& f, double lo, double hi, double start,
                                         double tolerance, double firstStep) {
    evaluations_ = 0;
    double a = lo, b = hi; // f(a) < 0 < f(b), where evaluated
    Sample fa{notANumber, notANumber}, fb{notANumber, notANumber}, before{notANumber, notANumber};
    bool haveA = false, haveB = false;
    double tBefore = notANumber;
    double step = hi - lo, stepBefore = step; // the last two steps taken
    double t = std::clamp(start, lo, hi);
    while (evaluations_ < maxEvaluations) {
        const Sample s = f(t);
        ++evaluations_;
        x_ = t;
        at_ = s;
        if (std::isnan(s.value)) return Outcome::undefined;
        if (std::fabs(s.value) <= tolerance) return Outcome::root;
        if (s.value < 0) {
            if (t == hi) return Outcome::above;
            a = t, fa = s, haveA = true;
        } else {
            if (t == lo) return Outcome::below;
            b = t, fb = s, haveB = true;
        }
        if (haveA && haveB && b - a <= 4 * epsilon * std::max({std::fabs(a), std::fabs(b), 1e-300})) {
            // Nothing lies between: the function steps over zero here.
            const bool lower = std::fabs(fa.value) <= std::fabs(fb.value);
            x_ = lower ? a : b;
            at_ = lower ? fa : fb;
            return Outcome::root;
        }
        // Without a slope of its own, that of the secant from the point before.
        double slope = s.slope;
        if (!usable(slope) && evaluations_ > 1) slope = (s.value - before.value) / (t - tBefore);
        before = s;
        tBefore = t;
        double next = notANumber;
        const bool probe = !usable(slope) && evaluations_ == 1 && std::isfinite(firstStep);
        if (std::isfinite(s.value) && usable(slope))
            next = t - s.value / slope;
        else if (probe)
            next = std::clamp(t - std::copysign(firstStep, s.value), lo, hi);
        // A step below the rounding of x: f is zero there as far as x can tell.
        if (std::fabs(next - t) <= 4 * epsilon * std::max(std::fabs(t), 1e-300)) return Outcome::root;
        // A step is taken if it stays in the bracket and is at most half the one before the last, as steps
        // that converge are; otherwise the range end that was not tried yet, or the middle of the bracket.
        if (!(next > a && next < b && std::fabs(next - t) <= 0.5 * std::fabs(stepBefore))) {
            if (!haveA && !(next > a))
                next = lo;
            else if (!haveB && !(next < b))
                next = hi;
            else
                next = 0.5 * (a + b);
        }
        stepBefore = step;
        step = probe ? hi - lo : next - t; // a probe for a slope is no step of the iteration
        t = next;
    }
    return Outcome::undefined;
}
