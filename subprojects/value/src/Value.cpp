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

template <typename A> bool GenericValue<A>::isinf() const {
    return !(DBL_MAX >= std::fabs(value_.val()));
}

template <typename A>
void GenericValue<A>::unitError(const char* signature, const char* text, CompactUnits a, CompactUnits b) {
    throw ErrorUnit(Tarvo::Utility::shortFunctionName(signature), text, a.unpack().text(), b.unpack().text());
}

template <typename A>
void GenericValue<A>::unitError(const char* signature, const char* text, CompactUnits a) {
    throw ErrorUnit(Tarvo::Utility::shortFunctionName(signature), text, a.unpack().text());
}

template class GenericValue<Active>;

std::ostream& operator<<(std::ostream& out, const Value& v) {
    out.precision(12);
    out << v.toDouble();
    out.precision(6);
    return out << ' ' << v.unitText();
}
