#ifndef TARVO_PERSISTENCY_TYPE_H
#define TARVO_PERSISTENCY_TYPE_H

#include <tarvo/persistency/Item.h>

#include <ostream>

// An item that holds a value of type T and can print it.
template <typename T> class Type : public Item {
public:
    Type(const std::string& tag, const std::string& description, const T& value, Persistent* parent)
        : Item(tag, description, parent), value_(value) {}
    virtual void print(std::ostream& out) const = 0;

    T& value() { return value_; }
    const T& value() const { return value_; }

protected:
    T value_;
};

#endif
