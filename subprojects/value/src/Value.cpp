#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/value/UnitEngine.h>
#include <tarvo/value/Value.h>

#include <cfloat>

template <typename A> GenericValue<A>::GenericValue(double x, const std::string& unit) {
    UnitArray units;
    value_ = UnitEngine::instance().toSI(x, unit, units);
    units_ = CompactUnits(units);
}

template <typename A> GenericValue<A>::GenericValue(const A& a, const std::string& unit) : value_(a) {
    UnitArray units;
    const double si = UnitEngine::instance().toSI(a.val(), unit, units);
    units_ = CompactUnits(units);
    value_ += si - a.val(); // the affine shift moves the number, the derivatives stay
}

template <typename A> double GenericValue<A>::toDouble(const std::string& unit) const {
    try {
        const double si = checkuom(unit);
        return UnitEngine::instance().fromSI(si, unit);
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

template <typename A> double GenericValue<A>::checkuom(const std::string& unit) const {
    UnitArray exponents;
    UnitEngine::instance().toSI(0.0, unit, exponents);
    const GenericValue probe(0.0, exponents);
    same(__PRETTY_FUNCTION__, probe);
    return value_.val();
}

template <typename A> void GenericValue<A>::set(double x, const std::string& unit) {
    *this = GenericValue(x, unit);
    input_ = true;
}

template <typename A> void GenericValue<A>::set(const GenericValue& v) {
    *this = v;
    input_ = true;
}

template <typename A> void GenericValue<A>::set(const A& a) {
    *this = a;
    input_ = true;
}

template <typename A> bool GenericValue<A>::isinf() const { return !(DBL_MAX >= std::fabs(value_.val())); }

template <typename A>
void GenericValue<A>::unitError(const char* signature, const char* text, CompactUnits a, CompactUnits b) {
    throw ErrorUnit(Tarvo::Utility::shortFunctionName(signature), text, a.unpack().text(), b.unpack().text());
}

template <typename A> void GenericValue<A>::unitError(const char* signature, const char* text, CompactUnits a) {
    throw ErrorUnit(Tarvo::Utility::shortFunctionName(signature), text, a.unpack().text());
}

template class GenericValue<Active>;

std::ostream& operator<<(std::ostream& out, const Value& v) {
    out.precision(12);
    out << v.toDouble();
    out.precision(6);
    return out << ' ' << v.unitText();
}

namespace {

// Applies f to the number of a dimensionless value.
template <typename F> Value ofDimensionless(const char* signature, const Value& a, F f) {
    a.dimensionless(signature);
    return Value(f(a.active()));
}

} // namespace

Value exp(const Value& a) { return ofDimensionless(__PRETTY_FUNCTION__, a, [](const Active& x) { return exp(x); }); }
Value log(const Value& a) { return ofDimensionless(__PRETTY_FUNCTION__, a, [](const Active& x) { return log(x); }); }
Value log10(const Value& a) {
    return ofDimensionless(__PRETTY_FUNCTION__, a, [](const Active& x) { return log10(x); });
}
Value sin(const Value& a) { return ofDimensionless(__PRETTY_FUNCTION__, a, [](const Active& x) { return sin(x); }); }
Value asin(const Value& a) {
    return ofDimensionless(__PRETTY_FUNCTION__, a, [](const Active& x) { return asin(x); });
}
Value cos(const Value& a) { return ofDimensionless(__PRETTY_FUNCTION__, a, [](const Active& x) { return cos(x); }); }
Value acos(const Value& a) {
    return ofDimensionless(__PRETTY_FUNCTION__, a, [](const Active& x) { return acos(x); });
}
Value tan(const Value& a) { return ofDimensionless(__PRETTY_FUNCTION__, a, [](const Active& x) { return tan(x); }); }
Value atan(const Value& a) {
    return ofDimensionless(__PRETTY_FUNCTION__, a, [](const Active& x) { return atan(x); });
}
Value sinh(const Value& a) {
    return ofDimensionless(__PRETTY_FUNCTION__, a, [](const Active& x) { return sinh(x); });
}
Value cosh(const Value& a) {
    return ofDimensionless(__PRETTY_FUNCTION__, a, [](const Active& x) { return cosh(x); });
}
Value pow(const Value& a, double r) {
    return ofDimensionless(__PRETTY_FUNCTION__, a, [r](const Active& x) { return pow(x, r); });
}
Value pow(const Value& a, const Value& b) {
    b.dimensionless(__PRETTY_FUNCTION__);
    return ofDimensionless(__PRETTY_FUNCTION__, a, [&b](const Active& x) { return pow(x, b.active()); });
}

Value sqrt(const Value& a) {
    CompactUnits units = a.units_;
    if (!units.halve()) Value::unitError(__PRETTY_FUNCTION__, "dimension exponents must be even", a.units_);
    return Value(sqrt(a.active()), units);
}

Value curt(const Value& a) {
    CompactUnits units = a.units_;
    if (!units.divide(3))
        Value::unitError(__PRETTY_FUNCTION__, "dimension exponents must be multiple of three", a.units_);
    return Value(curt(a.active()), units);
}

Value fabs(const Value& a) { return Value(fabs(a.active()), a.units()); }
