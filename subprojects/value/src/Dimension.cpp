#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/value/Dimension.h>

Dimension::Dimension(const UnitArray& exponents, const std::string& name, const std::string& siUnit)
    : exponents_(exponents), name_(name), siUnit_(siUnit) {}

void Dimension::addUnit(const std::string& unit, double factor, double offset) {
    if (!units_.emplace(unit, std::make_pair(offset, factor)).second)
        throw ErrorUnit(TARVO_FUNCTION, "Duplicate unit", unit);
}

const std::pair<double, double>& Dimension::findUnit(const std::string& unit) const {
    const auto it = units_.find(unit);
    if (it == units_.end()) throw ErrorUnit(TARVO_FUNCTION, unit);
    return it->second;
}

double Dimension::toSI(double x, const std::string& unit) const {
    const auto& [offset, factor] = findUnit(unit);
    return x * factor + offset;
}

double Dimension::fromSI(double v, const std::string& unit) const {
    const auto& [offset, factor] = findUnit(unit);
    return (v - offset) / factor;
}
