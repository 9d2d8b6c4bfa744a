#ifndef TARVO_PERSISTENCY_DEFAULTS_H
#define TARVO_PERSISTENCY_DEFAULTS_H

#include <map>
#include <ostream>
#include <string>

namespace Tarvo::Persistency {

// The construction record handed down to every node: tag, description and the options that shape it.
class Defaults {
public:
    Defaults() = default;
    Defaults(std::string tag, std::string description) : tag_(std::move(tag)), description_(std::move(description)) {}
    // The options of `base` under a new tag and description.
    Defaults(const Defaults& base, std::string tag, std::string description)
        : tag_(std::move(tag)), description_(std::move(description)), integerOptions_(base.integerOptions_),
          stringOptions_(base.stringOptions_) {}

    const std::string& tag() const { return tag_; }
    const std::string& description() const { return description_; }
    // -1 when absent.
    int getInteger(const std::string& name) const;
    bool hasInteger(const std::string& name) const { return integerOptions_.count(name) != 0; }
    // Empty when absent.
    std::string getString(const std::string& name) const;
    bool hasString(const std::string& name) const { return stringOptions_.count(name) != 0; }
    Defaults& setInteger(const std::string& name, int value) {
        integerOptions_[name] = value;
        return *this;
    }
    Defaults& setString(const std::string& name, const std::string& value) {
        stringOptions_[name] = value;
        return *this;
    }
    std::size_t size() const { return integerOptions_.size() + stringOptions_.size(); }

    const std::map<std::string, int>& integerOptions() const { return integerOptions_; }
    const std::map<std::string, std::string>& stringOptions() const { return stringOptions_; }

    bool operator==(const Defaults& o) const {
        return tag_ == o.tag_ && description_ == o.description_ && integerOptions_ == o.integerOptions_ &&
               stringOptions_ == o.stringOptions_;
    }

private:
    std::string tag_;
    std::string description_;
    std::map<std::string, int> integerOptions_;
    std::map<std::string, std::string> stringOptions_;
};

// "[ si [[ name, 1] ] ss [[ name, text] ]]"
std::ostream& operator<<(std::ostream& out, const Defaults& defaults);

} // namespace Tarvo::Persistency

#endif
