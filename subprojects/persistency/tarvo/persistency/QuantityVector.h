#ifndef TARVO_PERSISTENCY_QUANTITYVECTOR_H
#define TARVO_PERSISTENCY_QUANTITYVECTOR_H

#include <tarvo/persistency/TypeVector.h>
#include <tarvo/value/Value.h>

class QuantityVector : public TypeVector<Value> {
public:
    QuantityVector(const std::string& tag, const std::string& description, std::size_t count,
                   const Value& element, Persistent* parent)
        : TypeVector(tag, description, count, element, parent) {}
    const std::string& type() const override;
    // ["1 m", "2 m"]: each element in its print form.
    void print(std::ostream& out) const override;
    // New elements are zero in the units of the first element, or dimensionless in an empty vector.
    void resize(std::size_t count) override;
};

#endif
