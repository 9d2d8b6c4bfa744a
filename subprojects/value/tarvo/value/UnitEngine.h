#ifndef TARVO_VALUE_UNITENGINE_H
#define TARVO_VALUE_UNITENGINE_H

#include <tarvo/value/Dimension.h>

#include <deque>
#include <map>
#include <ostream>
#include <string>
#include <unordered_map>

// The closed table of quantity kinds and unit strings. A unit is a plain key: "kmol/h" is found in the
// table or it is unsupported; nothing parses composite units. Read-only once built.
class UnitEngine {
public:
    // The one table of the process, built on first use.
    static const UnitEngine& instance();

    // Converts x in `unit` to SI and writes the unit's exponents into `exponents`.
    // "[invalid unit]" passes x through and marks the exponents invalid.
    double toSI(double x, const std::string& unit, UnitArray& exponents) const;
    double fromSI(double v, const std::string& unit) const;
    // The kind that owns `unit`, found after stripping blanks around it.
    const Dimension* pdimension(const std::string& unit) const;
    // The kind of that name.
    const Dimension* dimension(const std::string& name) const;

    const std::deque<Dimension>& dimensions() const { return dimensions_; }
    // The whole table as one JSON-like object: exponents text, then { "unit": [offset, factor], ... }.
    void dump(std::ostream& out) const;

    UnitEngine(const UnitEngine&) = delete;
    UnitEngine& operator=(const UnitEngine&) = delete;

private:
    UnitEngine();
    void addDimension(std::string name, const std::string& unit, int amount, int angle, int current, int length,
                      int luminous, int mass, int temperature, int time, int money);
    void addUnit(std::string dimension, const std::string& unit, double factor, double offset = 0.0);
    // A unit's kind and the conversion si = x * factor + offset.
    struct Conversion {
        const Dimension* dimension;
        double offset, factor;
    };
    const Conversion& find(const std::string& unit) const;

    std::deque<Dimension> dimensions_; // a deque keeps the pointers of the maps valid as it grows
    std::map<std::string, Dimension*> byName_;
    // Hashed, and holding the conversion itself: every number made with a unit, as objects are built from the
    // store, looks its unit up here.
    std::unordered_map<std::string, Conversion> byUnit_;
};

#endif
