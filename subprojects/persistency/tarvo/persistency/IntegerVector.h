#ifndef TARVO_PERSISTENCY_INTEGERVECTOR_H
#define TARVO_PERSISTENCY_INTEGERVECTOR_H

#include <tarvo/persistency/TypeVector.h>

class IntegerVector : public TypeVector<int> {
public:
    IntegerVector(const std::string& tag, const std::string& description, std::size_t count, int element,
                  Persistent* parent)
        : TypeVector(tag, description, count, element, parent) {}
    const std::string& type() const override;
    // [1, 2, 3]
    void print(std::ostream& out) const override;
};

#endif
