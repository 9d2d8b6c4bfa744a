#ifndef TARVO_PHASES_DUAL_H
#define TARVO_PHASES_DUAL_H

#include <cmath>

namespace Phase {

// A number with one directional derivative, v + d e with e^2 = 0, over a scalar S (double or Active):
// one evaluation of a function gives the function and its derivative in the seeded direction, each
// with S's own derivatives.
template <typename S> struct Dual {
    S v, d;
};

template <typename S> Dual<S> operator+(const Dual<S>& a, const Dual<S>& b) { return {a.v + b.v, a.d + b.d}; }
template <typename S> Dual<S> operator-(const Dual<S>& a, const Dual<S>& b) { return {a.v - b.v, a.d - b.d}; }
template <typename S> Dual<S> operator*(const Dual<S>& a, const Dual<S>& b) { return {a.v * b.v, a.d * b.v + a.v * b.d}; }
template <typename S> Dual<S> operator/(const Dual<S>& a, const Dual<S>& b) {
    return {a.v / b.v, (a.d * b.v - a.v * b.d) / (b.v * b.v)};
}
template <typename S> Dual<S> operator-(const Dual<S>& a) { return {-a.v, -a.d}; }
template <typename S> Dual<S> operator+(const Dual<S>& a, double c) { return {a.v + c, a.d}; }
template <typename S> Dual<S> operator+(double c, const Dual<S>& a) { return {c + a.v, a.d}; }
template <typename S> Dual<S> operator-(const Dual<S>& a, double c) { return {a.v - c, a.d}; }
template <typename S> Dual<S> operator-(double c, const Dual<S>& a) { return {c - a.v, -a.d}; }
template <typename S> Dual<S> operator*(const Dual<S>& a, double c) { return {a.v * c, a.d * c}; }
template <typename S> Dual<S> operator*(double c, const Dual<S>& a) { return {c * a.v, c * a.d}; }
template <typename S> Dual<S> operator/(const Dual<S>& a, double c) { return {a.v / c, a.d / c}; }
template <typename S> Dual<S> operator/(double c, const Dual<S>& a) { return {c / a.v, -c * a.d / (a.v * a.v)}; }
template <typename S> Dual<S> exp(const Dual<S>& a) {
    using std::exp;
    const S e = exp(a.v);
    return {e, e * a.d};
}
template <typename S> Dual<S> log(const Dual<S>& a) {
    using std::log;
    return {log(a.v), a.d / a.v};
}
template <typename S> Dual<S> sqrt(const Dual<S>& a) {
    using std::sqrt;
    const S s = sqrt(a.v);
    return {s, a.d / (2.0 * s)};
}

} // namespace Phase

#endif
