// Unit strings from arbitrary text, into a value and out of one. An unknown or unfit unit throws Error;
// anything else thrown, an abort, undefined behaviour or a hang is a fault. A unit that is accepted must
// convert there and back, and the value must read again from its own exponents' text.
#include "FuzzFailure.h"

#include <tarvo/utility/Error.h>
#include <tarvo/value/Value.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace {

// Far above the rounding of x * factor + offset and back, far below a wrong factor.
bool nearlyEqual(double a, double b) {
    return std::fabs(a - b) <= 1e-9 * std::fmax(1.0, std::fabs(b));
}

void checkAccepted(const Value& v, const std::string& unit) {
    try {
        const Value again(v.toDouble(), v.unitText());
        if (!again.sameUnits(v) || again.toDouble() != v.toDouble())
            fuzzFailure("a value does not read again from its unit text '" + v.unitText() +
                        "', made in: " + unit);
        if (v.units().invalid()) return; // no conversion to undo
        const double x = v.toDouble(unit);
        if (!nearlyEqual(x, 1.0)) fuzzFailure("1 " + unit + " converts back to " + std::to_string(x));
    } catch (Error& e) {
        fuzzFailure("a value in an accepted unit refuses a conversion, unit: " + unit + "\n" + e.message());
    }
}

// Conversions out of a value of other units: the dimensionless, an absolute and an affine one.
void convertOthers(const std::string& unit) {
    for (const Value& other : {Value(2.0), Value(2.0, "Pa"), Value(2.0, "°C")}) {
        try {
            other.toDouble(unit);
        } catch (Error&) {
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string unit(reinterpret_cast<const char*>(data), size);
    std::optional<Value> v;
    try {
        v.emplace(1.0, unit);
    } catch (Error&) {
    }
    if (v) checkAccepted(*v, unit);
    convertOthers(unit);
    return 0;
}
