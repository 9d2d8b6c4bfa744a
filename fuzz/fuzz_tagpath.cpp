// Tag paths and tag rules on arbitrary text. A path is looked up as a quantity, integer, string and child
// of one stream with its phases; a miss throws Error, anything else thrown or an abort is a fault. The same
// text then goes through the tag rules, which must agree with setTag and keep out what the path parser,
// the reports and the store give a meaning to.
#include "CapturedOutput.h"
#include "FuzzFailure.h"

#include <tarvo/core/Model.h>
#include <tarvo/persistency/Characters.h>
#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/persistency/String.h>
#include <tarvo/persistency/Utf.h>
#include <tarvo/user/Kernel.h>
#include <tarvo/utility/Diagnostic.h>
#include <tarvo/utility/Error.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace {

Model& stream() {
    static const std::unique_ptr<Node> node = [] {
        Tarvo::Utility::setVerbosityGlobal(-100);
        Tarvo::User::registerKernelTypes();
        const std::string type = "StreamIdealLiquidVapor";
        return std::unique_ptr<Node>(NodeFactory::create(type, Tarvo::Persistency::Defaults(type, type), 0,
                                                         nullptr, nullptr, nullptr));
    }();
    return dynamic_cast<Model&>(*node);
}

// A miss is the kernel's own Error; whatever else escapes reaches the fuzzer.
template <typename F> void missAllowed(F lookup) {
    try {
        lookup();
    } catch (Error&) {
    }
}

void lookUp(Model& model, const std::string& path) {
    missAllowed([&] { model.Q(path); });
    missAllowed([&] { model.I(path); });
    missAllowed([&] { model.S(path); });
    missAllowed([&] { model.at(path); });
}

// What no tag may hold, whatever the rules admit besides: control bytes, and the quotes and backslash that
// the JSON and SQL texts of the store would have to escape.
bool needsNoEscape(const std::string& tag) {
    for (const unsigned char c : tag)
        if (c < 0x20 || c == 0x7F || c == '"' || c == '\\' || c == '\'') return false;
    return true;
}

void checkUtfRoundTrip(const std::string& text) {
    std::u32string points;
    if (utf8ToUtf32(text, points) != ConversionResult::ok) return;
    std::string back;
    if (utf32ToUtf8(points, back) != ConversionResult::ok || back != text)
        fuzzFailure("UTF-8 that decodes does not encode back to itself: " + text);
}

void checkTagRules(const std::string& text) {
    const bool plain = validTag(text, false), path = validTag(text, true);
    if (plain && !path) fuzzFailure("a tag valid without path characters is refused with them: " + text);
    if (plain && text.find_first_of(".:") != std::string::npos)
        fuzzFailure("a tag outside paths holds a path separator: " + text);
    if (path && !needsNoEscape(text))
        fuzzFailure("a valid tag holds a control byte, a quote or a backslash: " + text);
    if (path && !text.empty() && (text[0] == ' ' || (text[0] >= '0' && text[0] <= '9')))
        fuzzFailure("a valid tag does not begin with a letter: " + text);

    String item("probe", "", "", nullptr);
    bool taken = true;
    try {
        item.setTag(text);
    } catch (ErrorInvalidCharacter&) {
        taken = false;
    }
    if (taken != path) fuzzFailure("setTag and validTag disagree on: " + text);
    if (taken && item.tag() != text) fuzzFailure("setTag stored another tag than: " + text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const CapturedOutput output; // the tag rules complain of text that is not UTF-8 on std::cerr
    lookUp(stream(), text);
    checkUtfRoundTrip(text);
    checkTagRules(text);
    return 0;
}
