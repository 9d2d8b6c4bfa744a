#ifndef TARVO_PERSISTENCY_INTEGER_H
#define TARVO_PERSISTENCY_INTEGER_H

#include <tarvo/persistency/Type.h>

class Integer : public Type<int> {
public:
    Integer(const std::string& tag, const std::string& description, int value, Persistent* parent)
        : Type(tag, description, value, parent) {}
    Integer& operator=(int value) {
        value_ = value;
        return *this;
    }
    const std::string& type() const override;
    void print(std::ostream& out) const override { out << value_; }
};

#endif
