#ifndef TARVO_COMPONENTS_TESTS_COMPONENTTESTSUPPORT_H
#define TARVO_COMPONENTS_TESTS_COMPONENTTESTSUPPORT_H

#include <tarvo/utility/Error.h>
#include <tarvo/value/ActiveContext.h>
#include <tarvo/value/Value.h>

#include <cmath>
#include <string>

namespace componentTests {

inline Value K(double t) {
    return Value(t, "K");
}
inline Value Pa(double p) {
    return Value(p, "Pa");
}

// The derivative of f at x carried by Value's forward mode, with x as the one direction.
template <typename F> double forwardDerivative(F f, double x, const char* unit) {
    ActiveContext::push(1);
    Value v(x, unit);
    v.active().setActive(0);
    const double d = f(v).active().derivative(0);
    v.active().inactivate(0);
    ActiveContext::pop();
    return d;
}

// A central difference of f at x, f returning a Value.
template <typename F> double centralDifference(F f, double x, double h, const char* unit) {
    return (f(Value(x + h, unit)).toDouble() - f(Value(x - h, unit)).toDouble()) / (2 * h);
}

// The message of the Error that f throws, or "no error".
template <typename F> std::string errorMessage(F f) {
    try {
        f();
    } catch (const Error& e) {
        return e.message();
    }
    return "no error";
}

inline double relative(double a, double b) {
    return std::fabs(a / b - 1);
}

} // namespace componentTests

#endif
