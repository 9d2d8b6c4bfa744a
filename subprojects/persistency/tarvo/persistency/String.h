#ifndef TARVO_PERSISTENCY_STRING_H
#define TARVO_PERSISTENCY_STRING_H

#include <tarvo/persistency/Type.h>

#include <string>

class String : public Type<std::string> {
public:
    String(const std::string& tag, const std::string& description, const std::string& value, Persistent* parent)
        : Type(tag, description, value, parent) {}
    String& operator=(const std::string& value) {
        value_ = value;
        return *this;
    }
    const std::string& type() const override;
    void print(std::ostream& out) const override { out << value_; }
};

#endif
