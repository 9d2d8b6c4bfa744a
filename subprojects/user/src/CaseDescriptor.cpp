#include <tarvo/user/CaseDescriptor.h>

#include <json/json.h>

#include <iostream>
#include <memory>
#include <sstream>

namespace Tarvo::User {

CaseDescriptor::CaseDescriptor(const std::string& type, const std::string& tag, const std::string& description)
    : Defaults(tag, description), type_(type) {}

CaseDescriptor::CaseDescriptor(const std::string& json) { parseOptions(json); }

void CaseDescriptor::parseOptions(const std::string& json) {
    if (json.empty()) return;
    Json::Value root;
    std::string errors;
    const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
    if (!reader->parse(json.data(), json.data() + json.size(), &root, &errors)) {
        std::cerr << "Failed to parse Case descriptor: " << errors << std::endl;
        return;
    }
    if (!root.isObject()) return;
    const std::string tag = root.isMember("tag") ? root["tag"].asString() : Defaults::tag();
    const std::string description = root.isMember("description") ? root["description"].asString() : Defaults::description();
    static_cast<Defaults&>(*this) = Defaults(*this, tag, description);
    if (root.isMember("type")) type_ = root["type"].asString();
    const Json::Value& strings = root["stringOptions"];
    if (strings.isObject())
        for (const std::string& key : strings.getMemberNames()) setString(key, strings[key].asString());
    const Json::Value& integers = root["integerOptions"];
    if (integers.isObject())
        for (const std::string& key : integers.getMemberNames()) setInteger(key, integers[key].asInt());
    const Json::Value& values = root["quantities"];
    if (values.isObject())
        for (const std::string& key : values.getMemberNames()) quantities_[key] = values[key].asDouble();
}

std::string CaseDescriptor::text() const {
    // Strings go in as they stand; the text escapes nothing.
    std::ostringstream out;
    out << "{ \"type\":\"" << type_ << "\",\"tag\":\"" << tag() << "\",\"description\":\"" << description()
        << "\",\"stringOptions\":{";
    const char* separator = "";
    for (const auto& [key, value] : stringOptions()) {
        out << separator << '"' << key << "\":\"" << value << '"';
        separator = ",";
    }
    out << "},\"integerOptions\":{";
    separator = "";
    for (const auto& [key, value] : integerOptions()) {
        out << separator << '"' << key << "\":" << value;
        separator = ",";
    }
    out << "},\"quantities\":{";
    separator = "";
    for (const auto& [key, value] : quantities_) {
        out << separator << '"' << key << "\":" << value;
        separator = ",";
    }
    out << "} }";
    return out.str();
}

} // namespace Tarvo::User
