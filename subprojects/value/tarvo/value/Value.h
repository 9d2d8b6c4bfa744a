#ifndef TARVO_VALUE_VALUE_H
#define TARVO_VALUE_VALUE_H

#include <tarvo/value/Active.h>
#include <tarvo/value/CompactUnits.h>
#include <tarvo/value/Hot.h>
#include <tarvo/value/UnitArray.h>

#include <ostream>
#include <string>
#include <vector>

// A physical number: SI value with derivatives, the exponents of its units, and two flags for the
// persistent layer (input: the user may set it; output: a result worth showing). Arithmetic checks
// units: adding unlike units, or taking exp of a dimensional number, raises ErrorUnit.
//
// No virtual destructor: values are never deleted through a base pointer, and a vtable pointer in
// every temporary made arithmetic half again as slow.
template <typename A> class GenericValue {
public:
    // 0 with invalid units: the one state that accepts an assignment of any units.
    GenericValue() : units_(CompactUnits::invalidUnits()) {}
    GenericValue(double x) : value_(x) {} // dimensionless
    GenericValue(double x, const std::string& unit);
    explicit GenericValue(const std::string& unit) : GenericValue(1.0, unit) {}
    GenericValue(double x, const UnitArray& units) : value_(x), units_(units) {}
    GenericValue(const A& a, const std::string& unit);
    GenericValue(const A& a, const UnitArray& units) : value_(a), units_(units) {}
    explicit GenericValue(A&& a) : value_(std::move(a)) {} // dimensionless
    GenericValue(const GenericValue&) = default;
    GenericValue(GenericValue&&) noexcept = default;
    // Inlined also where an exception unwinds: called there, it would take the address of every
    // temporary of an expression, and the compiler would keep them all in memory.
    TARVO_HOT ~GenericValue() = default;

    // Copies number, derivatives and units, never the flags. Units may only change from invalid.
    GenericValue& operator=(const GenericValue& o) {
        if (this == &o) return *this;
        acceptUnits(__PRETTY_FUNCTION__, o);
        value_ = o.value_;
        units_ = o.units_;
        return *this;
    }
    GenericValue& operator=(GenericValue&& o) {
        acceptUnits(__PRETTY_FUNCTION__, o);
        value_ = std::move(o.value_);
        units_ = o.units_;
        return *this;
    }
    GenericValue& operator=(double x) {
        requireNoUnits(__PRETTY_FUNCTION__);
        units_ = CompactUnits();
        value_ = x;
        return *this;
    }
    GenericValue& operator=(const A& a) {
        requireNoUnits(__PRETTY_FUNCTION__);
        units_ = CompactUnits();
        value_ = a;
        return *this;
    }

    double toDouble() const { return value_.val(); }
    double toDouble(const std::string& unit) const;
    // The SI number, after checking that `unit` has this value's exponents.
    double checkuom(const std::string& unit) const;

    // Assignments that mark the value as a user input.
    void set(double x, const std::string& unit);
    void set(const GenericValue& v);
    void set(const A& a);

    bool input() const { return input_; }
    bool output() const { return output_; }
    void setInput() { input_ = true; }
    void unsetInput() { input_ = false; }
    void setOutput() { output_ = true; }
    void unsetOutput() { output_ = false; }

    // The number and derivatives a in the units of o, without a check: for code that works the number out
    // apart from o, as a sum of pure components' properties does.
    static GenericValue inUnitsOf(A a, const GenericValue& o) { return GenericValue(std::move(a), o.units_); }

    A& active() { return value_; }
    const A& active() const { return value_; }
    UnitArray units() const { return units_.unpack(); }
    bool sameUnits(const GenericValue& o) const { return units_ == o.units_; }
    // Replaces the exponents without any check.
    void setUnits(const UnitArray& units) { units_ = CompactUnits(units); }
    // Zero with the units kept: what a balance means by clearing a flow.
    void clear() { value_.clear(); }
    void divideUnits(int divisor) { units_.divide(divisor); }
    std::string unitText() const { return units().text(); }

    bool isnan() const { return value_.val() != value_.val(); }
    bool isinf() const; // true for NaN too

    GenericValue& operator+=(const GenericValue& o) {
        same(__PRETTY_FUNCTION__, o);
        value_ += o.value_;
        return *this;
    }
    GenericValue& operator-=(const GenericValue& o) {
        same(__PRETTY_FUNCTION__, o);
        value_ -= o.value_;
        return *this;
    }
    GenericValue& operator*=(const GenericValue& o) {
        value_ *= o.value_;
        units_ = units_ + o.units_;
        return *this;
    }
    GenericValue& operator/=(const GenericValue& o) {
        value_ /= o.value_;
        units_ = units_ - o.units_;
        return *this;
    }
    GenericValue& operator+=(double c) {
        dimensionless(__PRETTY_FUNCTION__);
        value_ += c;
        return *this;
    }
    GenericValue& operator-=(double c) {
        dimensionless(__PRETTY_FUNCTION__);
        value_ -= c;
        return *this;
    }
    GenericValue& operator*=(double c) {
        value_ *= c;
        return *this;
    }
    GenericValue& operator/=(double c) {
        value_ /= c;
        return *this;
    }

    // The unit rules of the arithmetic; the number and its derivatives follow the rules of A.
    TARVO_HOT friend GenericValue operator+(const GenericValue& a, const GenericValue& b) {
        a.same(__PRETTY_FUNCTION__, b);
        GenericValue r(a.units_);
        A::combineInto(r.value_, a.value_.val() + b.value_.val(), 1, a.value_, 1, b.value_);
        return r;
    }
    TARVO_HOT friend GenericValue operator-(const GenericValue& a, const GenericValue& b) {
        a.same(__PRETTY_FUNCTION__, b);
        GenericValue r(a.units_);
        A::combineInto(r.value_, a.value_.val() - b.value_.val(), 1, a.value_, -1, b.value_);
        return r;
    }
    TARVO_HOT friend GenericValue operator*(const GenericValue& a, const GenericValue& b) {
        GenericValue r(a.units_ + b.units_);
        const double x = a.value_.val(), y = b.value_.val();
        A::combineInto(r.value_, x * y, y, a.value_, x, b.value_);
        return r;
    }
    TARVO_HOT friend GenericValue operator/(const GenericValue& a, const GenericValue& b) {
        GenericValue r(a.units_ - b.units_);
        const double x = a.value_.val(), y = b.value_.val();
        A::combineInto(r.value_, x / y, 1 / y, a.value_, -x / (y * y), b.value_);
        return r;
    }
    TARVO_HOT friend GenericValue operator-(const GenericValue& a) {
        return scaled(a, -a.value_.val(), -1, a.units_);
    }
    TARVO_HOT friend GenericValue operator+(const GenericValue& a, double c) {
        a.dimensionless(__PRETTY_FUNCTION__);
        return scaled(a, a.value_.val() + c, 1, a.units_);
    }
    TARVO_HOT friend GenericValue operator-(const GenericValue& a, double c) {
        a.dimensionless(__PRETTY_FUNCTION__);
        return scaled(a, a.value_.val() - c, 1, a.units_);
    }
    TARVO_HOT friend GenericValue operator+(double c, const GenericValue& a) {
        a.dimensionless(__PRETTY_FUNCTION__);
        return scaled(a, c + a.value_.val(), 1, a.units_);
    }
    TARVO_HOT friend GenericValue operator-(double c, const GenericValue& a) {
        a.dimensionless(__PRETTY_FUNCTION__);
        return scaled(a, c - a.value_.val(), -1, a.units_);
    }
    TARVO_HOT friend GenericValue operator*(const GenericValue& a, double c) {
        return scaled(a, a.value_.val() * c, c, a.units_);
    }
    TARVO_HOT friend GenericValue operator*(double c, const GenericValue& a) {
        return scaled(a, c * a.value_.val(), c, a.units_);
    }
    TARVO_HOT friend GenericValue operator/(const GenericValue& a, double c) {
        return scaled(a, a.value_.val() / c, 1 / c, a.units_);
    }
    TARVO_HOT friend GenericValue operator/(double c, const GenericValue& a) {
        const double x = a.value_.val();
        return scaled(a, c / x, -c / (x * x), -a.units_);
    }

    // Comparisons look at the number only, after checking the units; NaN is unequal to everything.
    TARVO_HOT friend bool operator==(const GenericValue& a, const GenericValue& b) {
        a.same(__PRETTY_FUNCTION__, b);
        return a.value_.val() == b.value_.val();
    }
    TARVO_HOT friend bool operator!=(const GenericValue& a, const GenericValue& b) {
        a.same(__PRETTY_FUNCTION__, b);
        return a.value_.val() != b.value_.val();
    }
    TARVO_HOT friend bool operator<(const GenericValue& a, const GenericValue& b) {
        a.same(__PRETTY_FUNCTION__, b);
        return a.value_.val() < b.value_.val();
    }
    TARVO_HOT friend bool operator<=(const GenericValue& a, const GenericValue& b) {
        a.same(__PRETTY_FUNCTION__, b);
        return a.value_.val() <= b.value_.val();
    }
    TARVO_HOT friend bool operator>(const GenericValue& a, const GenericValue& b) {
        a.same(__PRETTY_FUNCTION__, b);
        return a.value_.val() > b.value_.val();
    }
    TARVO_HOT friend bool operator>=(const GenericValue& a, const GenericValue& b) {
        a.same(__PRETTY_FUNCTION__, b);
        return a.value_.val() >= b.value_.val();
    }

    // Requires units equal to those of `o` ("incompatible units" otherwise).
    void same(const char* signature, const GenericValue& o) const {
        if (units_ != o.units_) incompatible(signature, units_, o.units_);
    }
    // Requires all-zero exponents, which an invalid value does not have.
    void dimensionless(const char* signature) const {
        if (!units_.dimensionless()) incompatible(signature, units_, CompactUnits());
    }

    friend GenericValue<Active> sqrt(const GenericValue<Active>& a);
    friend GenericValue<Active> curt(const GenericValue<Active>& a);
    friend GenericValue<Active> fabs(const GenericValue<Active>& a);

    // The errors take units, not values, for the same reason.
    [[noreturn]] static void incompatible(const char* signature, CompactUnits a, CompactUnits b) {
        unitError(signature, "incompatible units", a, b);
    }
    [[noreturn]] static void unitError(const char* signature, const char* text, CompactUnits a,
                                       CompactUnits b);
    [[noreturn]] static void unitError(const char* signature, const char* text, CompactUnits a);

private:
    GenericValue(A&& a, CompactUnits units) : value_(std::move(a)), units_(units) {}
    explicit GenericValue(CompactUnits units) : units_(units) {}
    // f(a) with derivative k * da, built in place.
    TARVO_HOT static GenericValue scaled(const GenericValue& a, double value, double k, CompactUnits units) {
        GenericValue r(units);
        A::chainInto(r.value_, value, k, a.value_);
        return r;
    }

    void acceptUnits(const char* signature, const GenericValue& o) const {
        if (units_ != o.units_ && !units_.invalid())
            unitError(signature, "destination already has incompatible units", units_, o.units_);
    }
    void requireNoUnits(const char* signature) const {
        if (!units_.dimensionless() && !units_.invalid())
            unitError(signature, "destination already has units", units_);
    }

    A value_;
    bool input_ = false;
    bool output_ = false;
    CompactUnits units_;
};

using Value = GenericValue<Active>;
using Vector = std::vector<Value>;

// The number with precision 12, a blank, then the units' text.
std::ostream& operator<<(std::ostream& out, const Value& v);

// Functions of dimensionless numbers; the results carry neither flag. Inline, as model code calls
// them in its innermost loops.
namespace ValueFunctions {

template <typename F> inline Value ofDimensionless(const char* signature, const Value& a, F f) {
    a.dimensionless(signature);
    return Value(f(a.active()));
}

} // namespace ValueFunctions

inline Value exp(const Value& a) {
    return ValueFunctions::ofDimensionless(__PRETTY_FUNCTION__, a, [](const Active& x) { return exp(x); });
}
inline Value log(const Value& a) {
    return ValueFunctions::ofDimensionless(__PRETTY_FUNCTION__, a, [](const Active& x) { return log(x); });
}
inline Value log10(const Value& a) {
    return ValueFunctions::ofDimensionless(__PRETTY_FUNCTION__, a, [](const Active& x) { return log10(x); });
}
inline Value sin(const Value& a) {
    return ValueFunctions::ofDimensionless(__PRETTY_FUNCTION__, a, [](const Active& x) { return sin(x); });
}
inline Value asin(const Value& a) {
    return ValueFunctions::ofDimensionless(__PRETTY_FUNCTION__, a, [](const Active& x) { return asin(x); });
}
inline Value cos(const Value& a) {
    return ValueFunctions::ofDimensionless(__PRETTY_FUNCTION__, a, [](const Active& x) { return cos(x); });
}
inline Value acos(const Value& a) {
    return ValueFunctions::ofDimensionless(__PRETTY_FUNCTION__, a, [](const Active& x) { return acos(x); });
}
inline Value tan(const Value& a) {
    return ValueFunctions::ofDimensionless(__PRETTY_FUNCTION__, a, [](const Active& x) { return tan(x); });
}
inline Value atan(const Value& a) {
    return ValueFunctions::ofDimensionless(__PRETTY_FUNCTION__, a, [](const Active& x) { return atan(x); });
}
inline Value sinh(const Value& a) {
    return ValueFunctions::ofDimensionless(__PRETTY_FUNCTION__, a, [](const Active& x) { return sinh(x); });
}
inline Value cosh(const Value& a) {
    return ValueFunctions::ofDimensionless(__PRETTY_FUNCTION__, a, [](const Active& x) { return cosh(x); });
}
inline Value pow(const Value& a, double r) {
    return ValueFunctions::ofDimensionless(__PRETTY_FUNCTION__, a,
                                           [r](const Active& x) { return pow(x, r); });
}
inline Value pow(const Value& a, const Value& b) {
    b.dimensionless(__PRETTY_FUNCTION__);
    return ValueFunctions::ofDimensionless(__PRETTY_FUNCTION__, a,
                                           [&b](const Active& x) { return pow(x, b.active()); });
}
// Halves every exponent; the first eight must be even.
inline Value sqrt(const Value& a) {
    CompactUnits units = a.units_;
    if (!units.halve()) Value::unitError(__PRETTY_FUNCTION__, "dimension exponents must be even", a.units_);
    return Value(sqrt(a.active()), units);
}
// Cube root: thirds every exponent; the first eight must be multiples of three.
inline Value curt(const Value& a) {
    CompactUnits units = a.units_;
    if (!units.divide(3))
        Value::unitError(__PRETTY_FUNCTION__, "dimension exponents must be multiple of three", a.units_);
    return Value(curt(a.active()), units);
}
inline Value fabs(const Value& a) {
    return Value(fabs(a.active()), a.units_);
}

// Constants of the whole system.
inline const Value T0(298.15, UnitArray(0, 0, 0, 0, 0, 0, 1, 0, 0));     // reference temperature, K
inline const Value P0(101325.0, UnitArray(0, 0, 0, -1, 0, 1, 0, -2, 0)); // reference pressure, Pa
inline const Value Tmin(50.0, UnitArray(0, 0, 0, 0, 0, 0, 1, 0, 0));     // lowest temperature, K
inline const Value Tmax(1500.0, UnitArray(0, 0, 0, 0, 0, 0, 1, 0, 0));   // highest temperature, K
inline const Value Pmin(1e-5, UnitArray(0, 0, 0, -1, 0, 1, 0, -2, 0));   // lowest pressure, Pa
inline const Value Pmax(1e10, UnitArray(0, 0, 0, -1, 0, 1, 0, -2, 0));   // highest pressure, Pa
inline const Value R(8314.4, UnitArray(-1, 0, 0, 2, 0, 1, -1, -2, 0));   // gas constant, J/(kmol*K)
inline const Value zero(0.0);
inline const Value one(1.0);

extern template class GenericValue<Active>;

#endif
