#include <tarvo/persistency/Utf.h>

namespace {

bool continuation(unsigned char c) { return (c & 0xC0) == 0x80; }

} // namespace

ConversionResult utf8ToUtf32(const std::string& in, std::u32string& out) {
    out.clear();
    const auto* s = reinterpret_cast<const unsigned char*>(in.data());
    const std::size_t n = in.size();
    for (std::size_t i = 0; i < n;) {
        const unsigned char c = s[i];
        int extra;
        char32_t cp;
        if (c < 0x80) {
            extra = 0;
            cp = c;
        } else if (c >= 0xC2 && c <= 0xDF) {
            extra = 1;
            cp = c & 0x1F;
        } else if (c >= 0xE0 && c <= 0xEF) {
            extra = 2;
            cp = c & 0x0F;
        } else if (c >= 0xF0 && c <= 0xF4) {
            extra = 3;
            cp = c & 0x07;
        } else {
            return ConversionResult::sourceIllegal; // a stray continuation byte or an overlong lead
        }
        if (i + extra >= n && extra) return ConversionResult::sourceExhausted;
        for (int k = 1; k <= extra; ++k) {
            if (!continuation(s[i + k])) return ConversionResult::sourceIllegal;
            cp = (cp << 6) | (s[i + k] & 0x3F);
        }
        const bool overlong = (extra == 2 && cp < 0x800) || (extra == 3 && cp < 0x10000);
        if (overlong || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return ConversionResult::sourceIllegal;
        out.push_back(cp);
        i += extra + 1;
    }
    return ConversionResult::ok;
}

ConversionResult utf32ToUtf8(const std::u32string& in, std::string& out) {
    out.clear();
    for (char32_t cp : in) {
        if (cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return ConversionResult::sourceIllegal;
        if (cp < 0x80) {
            out.push_back(static_cast<char>(cp));
        } else if (cp < 0x800) {
            out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
            out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
        } else if (cp < 0x10000) {
            out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
            out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
        } else {
            out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
            out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
        }
    }
    return ConversionResult::ok;
}

const char* conversionMessage(ConversionResult result) {
    switch (result) {
    case ConversionResult::ok:
        return "conversion successful";
    case ConversionResult::sourceExhausted:
        return "partial character in source, but hit end";
    case ConversionResult::targetExhausted:
        return "insufficient room in target for conversion";
    case ConversionResult::sourceIllegal:
        return "source sequence is illegal or malformed";
    }
    return "unknown error";
}
