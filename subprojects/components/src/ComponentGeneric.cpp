#include <tarvo/components/ComponentGeneric.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

#include <utility>

namespace {

// Well-formed UTF-8: no stray continuation bytes, no overlong forms, no surrogates, nothing above U+10FFFF.
bool validUtf8(const std::string& text) {
    const auto* p = reinterpret_cast<const unsigned char*>(text.data());
    const auto* end = p + text.size();
    while (p < end) {
        const unsigned char c = *p;
        int length;
        unsigned int lowest; // smallest code point that needs this length
        unsigned int code;
        if (c < 0x80) {
            ++p;
            continue;
        } else if ((c & 0xE0) == 0xC0) {
            length = 2, lowest = 0x80, code = c & 0x1F;
        } else if ((c & 0xF0) == 0xE0) {
            length = 3, lowest = 0x800, code = c & 0x0F;
        } else if ((c & 0xF8) == 0xF0) {
            length = 4, lowest = 0x10000, code = c & 0x07;
        } else {
            return false;
        }
        if (end - p < length) return false;
        for (int i = 1; i < length; ++i) {
            if ((p[i] & 0xC0) != 0x80) return false;
            code = (code << 6) | (p[i] & 0x3F);
        }
        if (code < lowest || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return false;
        p += length;
    }
    return true;
}

} // namespace

ComponentGeneric::ComponentGeneric(std::string name) : name(std::move(name)) {
    if (!validUtf8(this->name))
        throw ErrorInvalidCharacter("ComponentGeneric::ComponentGeneric(std::string)", "NAME", this->name);
}

Value ComponentGeneric::kvli(const Value& T, const Value& P) const {
    try {
        return psat(T) / P;
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}
