#ifndef TARVO_PERSISTENCY_TYPEDESCRIPTOR_H
#define TARVO_PERSISTENCY_TYPEDESCRIPTOR_H

#include <string>
#include <vector>

namespace Tarvo::Persistency {

// Catalogue records: what a registered type is and which options a user interface may offer for it.
struct IntegerOption {
    std::string name;
    std::string description;
    int value;
    int min;
    int max;
};

struct StringOption {
    std::string name;
    std::string description;
    std::string value;
    std::string enumerator; // the enumeration whose names the option accepts; empty for free text
};

struct QuantityOption {
    std::string fulltag;
    std::string description;
    double value;
    std::string unit;
};

struct TypeDescriptor {
    std::string name;
    std::string description;
    std::string category; // "phase", "stream", "unit", "flowsheet" or "option"
    bool instantiable;    // whether it can be the root of a case
    std::vector<IntegerOption> integerOptions;
    std::vector<StringOption> stringOptions;
    std::vector<QuantityOption> quantities;
    std::string icon; // empty means the category

    // Throw ErrorRunTime "integer option <name> unsupported" and likewise for strings.
    const IntegerOption& integerOption(const std::string& name) const;
    const StringOption& stringOption(const std::string& name) const;
};

} // namespace Tarvo::Persistency

#endif
