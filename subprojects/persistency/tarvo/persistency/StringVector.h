#ifndef TARVO_PERSISTENCY_STRINGVECTOR_H
#define TARVO_PERSISTENCY_STRINGVECTOR_H

#include <tarvo/persistency/TypeVector.h>

#include <string>

class StringVector : public TypeVector<std::string> {
public:
    StringVector(const std::string& tag, const std::string& description, std::size_t count,
                 const std::string& element, Persistent* parent)
        : TypeVector(tag, description, count, element, parent) {}
    const std::string& type() const override;
    // ["a", "b"]
    void print(std::ostream& out) const override;
};

#endif
