#ifndef TARVO_CORE_JSONINPUT_H
#define TARVO_CORE_JSONINPUT_H

#include <json/json.h>

#include <initializer_list>
#include <string>

namespace Tarvo::Core {

// A JSON input of a study, read strictly: one object, no comments, no trailing text, no repeated keys, no
// NaN. Every refusal is an ErrorRunTime "Failed to parse <what>: " and the reason.
class JsonInput {
public:
    JsonInput(const std::string& what, const std::string& text);

    const Json::Value& root() const { return root_; }
    // Refuses a key of `object` that is not `known`, and a missing one of `required`; `where` names the object.
    void checkKeys(const Json::Value& object, std::initializer_list<const char*> known,
                   std::initializer_list<const char*> required, const std::string& where) const;
    // The member `key` of `object` as a text (empty when missing), an int, a finite number, an array.
    std::string text(const Json::Value& object, const char* key, const std::string& where) const;
    int integer(const Json::Value& object, const char* key, const std::string& where) const;
    double number(const Json::Value& object, const char* key, const std::string& where) const;
    const Json::Value& objects(const Json::Value& object, const char* key) const;
    [[noreturn]] void refuse(const std::string& reason) const;

private:
    std::string what_;
    Json::Value root_;
};

} // namespace Tarvo::Core

#endif
