#include <tarvo/core/NumberText.h>

#include <json/json.h>

#include <charconv>
#include <cmath>

namespace Tarvo::Core {

std::string numberText(double value) {
    if (std::isnan(value)) return "NaN";
    if (std::isinf(value)) return value > 0 ? "INF" : "-INF";
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

std::string jsonQuoted(const std::string& text) {
    Json::StreamWriterBuilder writer;
    writer["emitUTF8"] = true;
    return Json::writeString(writer, Json::Value(text));
}

} // namespace Tarvo::Core
