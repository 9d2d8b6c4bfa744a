#include <tarvo/core/Report.h>

#include <ctime>

namespace Tarvo::Core {

std::string escapeXml(const std::string& text) {
    std::string escaped = text;
    for (char& c : escaped) {
        if (c == '<')
            c = '(';
        else if (c == '>')
            c = ')';
    }
    return escaped;
}

std::string reportTimestamp() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char text[32];
    std::strftime(text, sizeof text, "%Y%m%d-%H%M", &local);
    return text;
}

} // namespace Tarvo::Core
