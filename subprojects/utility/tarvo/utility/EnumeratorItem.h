#ifndef TARVO_UTILITY_ENUMERATORITEM_H
#define TARVO_UTILITY_ENUMERATORITEM_H

#include <string>

namespace Tarvo::Utility {

// One value of an enumeration: the name used in configuration and storage, the text for users.
class EnumeratorItem {
public:
    EnumeratorItem(std::string name, std::string description)
        : name_(std::move(name)), description_(std::move(description)) {}
    const std::string& name() const { return name_; }
    const std::string& description() const { return description_; }
    // {"name":"<name>","description":"<description>"}, as the catalogues print it.
    std::string json() const;

private:
    std::string name_;
    std::string description_;
};

} // namespace Tarvo::Utility

#endif
