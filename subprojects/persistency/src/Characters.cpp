#include <tarvo/persistency/Characters.h>
#include <tarvo/persistency/Utf.h>

#include <cstring>
#include <iostream>

namespace {

bool validText(const std::string& text, const char* others) {
    std::u32string points;
    const ConversionResult result = utf8ToUtf32(text, points);
    if (result != ConversionResult::ok) {
        std::cerr << "UtfConverter error: " << conversionMessage(result) << std::endl;
        return false; // the undecodable sequence counts as code point 0, which nothing admits
    }
    for (std::size_t i = 0; i < points.size(); ++i) {
        const char32_t c = points[i];
        if (isLetter(c)) continue;
        if (i == 0 || c >= 0x80 || c == 0 || !std::strchr(others, static_cast<char>(c))) return false;
    }
    return true;
}

} // namespace

bool validTag(const std::string& tag, bool pathCharacters) {
    return validText(tag, pathCharacters ? " 0123456789,-<>[]_{}.:" : " 0123456789,-<>[]_{}");
}

bool validDescription(const std::string& description) {
    return validText(description, " 0123456789,-.:<>[]_{}");
}
