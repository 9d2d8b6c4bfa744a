#ifndef TARVO_PERSISTENCY_QUANTITY_H
#define TARVO_PERSISTENCY_QUANTITY_H

#include <tarvo/persistency/Item.h>
#include <tarvo/value/Value.h>

// A physical value with a tag: a Value in every respect (arithmetic, units, derivatives). Assigning a
// Value or another Quantity changes the value and never the tag, description or owner.
class Quantity : public Item, public Value {
public:
    // `value` is a number in `unit`: Quantity("A", "Membrane area", "m2", this, 1167.0).
    Quantity(const std::string& tag, const std::string& description, const std::string& unit, Persistent* parent,
             double value = 0.0)
        : Item(tag, description, parent), Value(value, unit) {}
    Quantity(const std::string& tag, const std::string& description, const Value& value, Persistent* parent)
        : Item(tag, description, parent), Value(value) {}
    Quantity(const Quantity&) = default;

    Quantity& operator=(const Quantity& o) {
        Value::operator=(o);
        return *this;
    }
    Quantity& operator=(const Value& v) {
        Value::operator=(v);
        return *this;
    }
    Quantity& operator=(double x) {
        Value::operator=(x);
        return *this;
    }

    const std::string& type() const override;
    Value& value() { return *this; }
    const Value& value() const { return *this; }
};

#endif
