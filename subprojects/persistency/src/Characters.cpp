#include <tarvo/persistency/Characters.h>
#include <tarvo/persistency/Utf.h>

#include <algorithm>
#include <cstring>
#include <iostream>

namespace {

// The rule below for a text of ASCII characters alone, as nearly every tag and description is: every item of
// every case passes here, and the text need not be decoded.
bool validAscii(const std::string& text, const char* others) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if ((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z')) continue;
        if (i == 0 || c == 0 || !std::strchr(others, c)) return false;
    }
    return true;
}

bool validText(const std::string& text, const char* others) {
    if (std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; }))
        return validAscii(text, others);
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
