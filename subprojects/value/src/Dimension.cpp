#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/value/Dimension.h>

Dimension::Dimension(const UnitArray& exponents, const std::string& name, const std::string& siUnit)
    : exponents_(exponents), name_(name), siUnit_(siUnit) {}

void Dimension::addUnit(const std::string& unit, double factor, double offset) {
    if (!units_.emplace(unit, std::make_pair(offset, factor)).second)
        throw ErrorUnit(TARVO_FUNCTION, "Duplicate unit", unit);
}
