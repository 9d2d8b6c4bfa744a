#ifndef TARVO_USER_CASEDESCRIPTOR_H
#define TARVO_USER_CASEDESCRIPTOR_H

#include <tarvo/persistency/Defaults.h>

#include <map>
#include <string>

namespace Tarvo::User {

// What a case is to be made of: the type to create, the construction record (tag, description,
// options) and the input quantities by full tag, in SI units.
class CaseDescriptor : public Tarvo::Persistency::Defaults {
public:
    CaseDescriptor(const std::string& type, const std::string& tag, const std::string& description);
    // A descriptor read from a JSON text, as `new` and the facade accept it.
    explicit CaseDescriptor(const std::string& json);

    const std::string& type() const { return type_; }
    const std::map<std::string, double>& quantities() const { return quantities_; }
    void setQuantity(const std::string& fulltag, double value) { quantities_[fulltag] = value; }

    // Lets a JSON text replace the type, tag and description and add options and quantities. An empty text
    // does nothing. Anything but one JSON object of the keys below, each with a value of its JSON type
    // (texts, integers in the range of int, finite numbers), throws ErrorInput "Failed to parse Case
    // descriptor: " and the reason, and changes nothing.
    void parseOptions(const std::string& json);
    // { "type":"...","tag":"...","description":"...","stringOptions":{...},"integerOptions":{...},"quantities":{...} }
    std::string text() const;

    bool operator==(const CaseDescriptor& o) const {
        return Defaults::operator==(o) && type_ == o.type_ && quantities_ == o.quantities_;
    }

private:
    std::string type_;
    std::map<std::string, double> quantities_;
};

} // namespace Tarvo::User

#endif
