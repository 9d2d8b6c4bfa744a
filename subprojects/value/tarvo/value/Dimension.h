#ifndef TARVO_VALUE_DIMENSION_H
#define TARVO_VALUE_DIMENSION_H

#include <tarvo/value/UnitArray.h>

#include <map>
#include <string>
#include <utility>

// A quantity kind ("mass flow") with its exponents, its SI unit and the units that convert to it.
// Conversion is affine, si = x * factor + offset; UnitEngine converts, from a table of every kind's units.
class Dimension {
public:
    // Each unit maps to the pair (offset, factor).
    using Units = std::map<std::string, std::pair<double, double>>;

    Dimension(const UnitArray& exponents, const std::string& name, const std::string& siUnit);

    // Throws ErrorUnit "Duplicate unit" for a unit already in this kind.
    void addUnit(const std::string& unit, double factor, double offset);

    const UnitArray& exponents() const { return exponents_; }
    const std::string& name() const { return name_; }
    const std::string& siUnit() const { return siUnit_; }
    const Units& units() const { return units_; }

private:
    UnitArray exponents_;
    std::string name_;
    std::string siUnit_;
    Units units_;
};

#endif
