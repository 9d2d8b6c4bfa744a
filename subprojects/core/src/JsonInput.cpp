#include <tarvo/core/JsonInput.h>
#include <tarvo/utility/Error.h>

#include <cmath>
#include <exception>
#include <memory>

namespace Tarvo::Core {

namespace {

// No study input nests deeper than a variable inside its list; the limit also keeps a hostile text from
// recursing through the reader.
constexpr int nestingLimit = 16;

} // namespace

JsonInput::JsonInput(const std::string& what, const std::string& text) : what_(what) {
    Json::CharReaderBuilder builder;
    Json::CharReaderBuilder::strictMode(&builder.settings_);
    builder.settings_["stackLimit"] = nestingLimit;
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    std::string errors;
    bool parsed = false;
    try {
        parsed = reader->parse(text.data(), text.data() + text.size(), &root_, &errors);
    } catch (const std::exception& e) {
        refuse(e.what());
    }
    if (!parsed) refuse(errors);
    if (!root_.isObject()) refuse("the input is not a JSON object");
}

void JsonInput::refuse(const std::string& reason) const {
    throw ErrorRunTime("JsonInput", "Failed to parse " + what_ + ": " + reason);
}

void JsonInput::checkKeys(const Json::Value& object, std::initializer_list<const char*> known,
                          std::initializer_list<const char*> required, const std::string& where) const {
    if (!object.isObject()) refuse(where + " is not a JSON object");
    for (const std::string& key : object.getMemberNames()) {
        bool found = false;
        for (const char* k : known) found = found || key == k;
        if (!found) refuse("unknown key " + key + " in " + where);
    }
    for (const char* key : required)
        if (!object.isMember(key)) refuse(where + " has no " + key);
}

std::string JsonInput::text(const Json::Value& object, const char* key, const std::string& where) const {
    if (!object.isMember(key)) return "";
    if (!object[key].isString()) refuse(std::string(key) + " of " + where + " is not a string");
    return object[key].asString();
}

int JsonInput::integer(const Json::Value& object, const char* key, const std::string& where) const {
    if (!object[key].isInt()) refuse(std::string(key) + " of " + where + " is not an integer from -2147483648 to 2147483647");
    return object[key].asInt();
}

double JsonInput::number(const Json::Value& object, const char* key, const std::string& where) const {
    // 1e999 reads as an infinity.
    if (!object[key].isDouble() || !std::isfinite(object[key].asDouble()))
        refuse(std::string(key) + " of " + where + " is not a finite number");
    return object[key].asDouble();
}

const Json::Value& JsonInput::objects(const Json::Value& object, const char* key) const {
    const Json::Value& list = object[key];
    if (!list.isArray()) refuse(std::string(key) + " is not an array");
    return list;
}

} // namespace Tarvo::Core
