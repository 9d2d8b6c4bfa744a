#include <tarvo/units/CalculateAverage.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

#include <cmath>

namespace {
// The mean where the logarithmic one has none: machine epsilon, in K.
constexpr double tiny = 2.220446049250313e-16;
// Differences that agree within this, relatively, have their arithmetic mean as logarithmic one.
constexpr double equalWithin = 1e-8;
// Differences smaller than this, in K, are clipped to it in "LmtdClipped".
constexpr double clip = 0.5;

// A tiny positive number with the derivatives of the arithmetic mean of a and b.
Value tinyMean(const Value& a, const Value& b) {
    const Value mean = (a + b) / 2.0;
    return Value(Active::chain(tiny, 1.0, mean.active()), mean.units());
}

Value logarithmicMean(const Value& a, const Value& b) {
    if (!(a.toDouble() * b.toDouble() > 0.0)) return tinyMean(a, b);
    if (std::fabs(a.toDouble() - b.toDouble()) <= equalWithin * std::fmax(std::fabs(a.toDouble()), std::fabs(b.toDouble())))
        return (a + b) / 2.0;
    return (a - b) / log(a / b);
}

// A difference below the clip in size, raised to it with its sign and with its derivatives scaled alike.
// A zero takes the sign of the other end, and no derivative.
Value clipped(const Value& x, const Value& other) {
    const double v = x.toDouble();
    if (v == 0.0) return Value(other.toDouble() < 0.0 ? -clip : clip, x.units());
    return x * (clip / std::fabs(v));
}

// The logarithmic mean with one end clipped: the curve (c - b)^2 / (a - b) / ln(c / b), with c the
// clipped a, meets the logarithmic mean where a reaches the clip and stays smooth below it.
Value clippedMean(const Value& a, const Value& b) {
    const Value c = clipped(a, b);
    if (!(c.toDouble() * b.toDouble() > 0.0)) return tinyMean(a, b);
    return (c - b) * (c - b) / (a - b) / log(c / b);
}
} // namespace

void calculateAverage(const std::string& option, const Value& a, const Value& b, Value& average) {
    if (option == "linear") {
        average = (a + b) / 2.0;
    } else if (option == "linearClipped") {
        if (a.toDouble() * b.toDouble() < 0.0)
            average = (std::fabs(a.toDouble()) > std::fabs(b.toDouble()) ? a : b) / 2.0;
        else
            average = (a + b) / 2.0;
    } else if (option == "LMTD") {
        average = logarithmicMean(a, b);
    } else if (option == "LmtdClipped") {
        const bool smallA = std::fabs(a.toDouble()) < clip, smallB = std::fabs(b.toDouble()) < clip;
        if (std::fabs(a.toDouble()) <= clip && std::fabs(b.toDouble()) <= clip)
            average = tinyMean(a, b);
        else if (smallA)
            average = clippedMean(a, b);
        else if (smallB)
            average = clippedMean(b, a);
        else
            average = logarithmicMean(a, b);
    } else if (option == "CSTR") {
        average = b;
    } else {
        throw ErrorBrowsing::unsupportedOption(TARVO_FUNCTION, option, "MTD calculation mode", "", "");
    }
}
