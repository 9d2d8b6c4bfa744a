#include <tarvo/user/CaseDescriptor.h>
#include <tarvo/user/ErrorInput.h>

#include <json/json.h>

#include <cmath>
#include <exception>
#include <iomanip>
#include <memory>
#include <sstream>

namespace Tarvo::User {

namespace {

// No descriptor nests deeper than an option inside its map; the limit also keeps a hostile text from
// recursing through the reader.
constexpr int nestingLimit = 16;

[[noreturn]] void refuse(const std::string& reason) {
    throw ErrorInput("CaseDescriptor::parseOptions", "Failed to parse Case descriptor: " + reason);
}

// One JSON object and nothing else: no comments, no trailing text, no repeated keys, no NaN or Infinity.
Json::Value readObject(const std::string& json) {
    Json::CharReaderBuilder builder;
    Json::CharReaderBuilder::strictMode(&builder.settings_);
    builder.settings_["stackLimit"] = nestingLimit;
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    Json::Value root;
    std::string errors;
    bool parsed = false;
    try {
        parsed = reader->parse(json.data(), json.data() + json.size(), &root, &errors);
    } catch (const std::exception& e) {
        refuse(e.what());
    }
    if (!parsed) refuse(errors);
    if (!root.isObject()) refuse("the descriptor is not a JSON object");
    return root;
}

std::string string(const Json::Value& value, const std::string& where) {
    if (!value.isString()) refuse(where + " is not a string");
    return value.asString();
}

int integer(const Json::Value& value, const std::string& where) {
    if (!value.isInt()) refuse(where + " is not an integer from -2147483648 to 2147483647");
    return value.asInt();
}

double number(const Json::Value& value, const std::string& where) {
    // 1e999 reads as an infinity.
    if (!value.isDouble() || !std::isfinite(value.asDouble())) refuse(where + " is not a finite number");
    return value.asDouble();
}

const Json::Value& object(const Json::Value& value, const std::string& where) {
    if (!value.isObject()) refuse(where + " is not a JSON object");
    return value;
}

std::string quoted(const std::string& s) {
    Json::StreamWriterBuilder writer;
    writer["emitUTF8"] = true;
    return Json::writeString(writer, Json::Value(s));
}

// The members of one map, in key order, joined by commas; `show` writes a value.
template <typename Map, typename Show> void writeMembers(std::ostream& out, const Map& map, Show show) {
    const char* separator = "";
    for (const auto& [key, value] : map) {
        out << separator << quoted(key) << ':' << show(value);
        separator = ",";
    }
}

} // namespace

CaseDescriptor::CaseDescriptor(const std::string& type, const std::string& tag, const std::string& description)
    : Defaults(tag, description), type_(type) {}

CaseDescriptor::CaseDescriptor(const std::string& json) { parseOptions(json); }

void CaseDescriptor::parseOptions(const std::string& json) {
    if (json.empty()) return;
    const Json::Value root = readObject(json);
    // Read into a copy, so that a refused text changes nothing.
    CaseDescriptor read = *this;
    std::string tag = read.tag(), description = read.description();
    for (const std::string& key : root.getMemberNames()) {
        const Json::Value& member = root[key];
        if (key == "type") {
            read.type_ = string(member, "type");
        } else if (key == "tag") {
            tag = string(member, "tag");
        } else if (key == "description") {
            description = string(member, "description");
        } else if (key == "stringOptions") {
            for (const std::string& name : object(member, key).getMemberNames())
                read.setString(name, string(member[name], "string option " + name));
        } else if (key == "integerOptions") {
            for (const std::string& name : object(member, key).getMemberNames())
                read.setInteger(name, integer(member[name], "integer option " + name));
        } else if (key == "quantities") {
            for (const std::string& name : object(member, key).getMemberNames())
                read.quantities_[name] = number(member[name], "quantity " + name);
        } else {
            refuse("unknown key " + quoted(key));
        }
    }
    static_cast<Defaults&>(read) = Defaults(read, tag, description);
    *this = std::move(read);
}

std::string CaseDescriptor::text() const {
    // Strings are quoted as JSON and numbers written with all their digits, so that the text reads back
    // into an equal descriptor.
    std::ostringstream out;
    out << std::setprecision(17);
    const auto number = [](auto x) { return x; };
    out << "{ \"type\":" << quoted(type_) << ",\"tag\":" << quoted(tag()) << ",\"description\":" << quoted(description())
        << ",\"stringOptions\":{";
    writeMembers(out, stringOptions(), quoted);
    out << "},\"integerOptions\":{";
    writeMembers(out, integerOptions(), number);
    out << "},\"quantities\":{";
    writeMembers(out, quantities_, number);
    out << "} }";
    return out.str();
}

} // namespace Tarvo::User
