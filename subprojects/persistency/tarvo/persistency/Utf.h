#ifndef TARVO_PERSISTENCY_UTF_H
#define TARVO_PERSISTENCY_UTF_H

#include <string>

// Conversion between UTF-8 and UTF-32, strict: overlong forms, surrogates and code points past
// U+10FFFF are illegal.
enum class ConversionResult { ok, sourceExhausted, targetExhausted, sourceIllegal };

ConversionResult utf8ToUtf32(const std::string& in, std::u32string& out);
ConversionResult utf32ToUtf8(const std::u32string& in, std::string& out);
// "conversion successful", "source sequence is illegal or malformed", ...
const char* conversionMessage(ConversionResult result);

#endif
