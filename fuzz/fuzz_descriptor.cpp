// A case descriptor read from arbitrary text. The reader may refuse the text with Error; anything else
// thrown, or an abort, is a fault. A descriptor it accepts must come back unchanged from its own text().
#include "FuzzFailure.h"

#include <tarvo/user/CaseDescriptor.h>
#include <tarvo/utility/Error.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

using Tarvo::User::CaseDescriptor;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::optional<CaseDescriptor> descriptor;
    try {
        descriptor.emplace(text);
    } catch (Error&) {
        return 0; // refused
    }
    const std::string written = descriptor->text();
    try {
        if (!(CaseDescriptor(written) == *descriptor))
            fuzzFailure("text() reads back as another descriptor: " + written);
    } catch (Error& e) {
        fuzzFailure("text() of an accepted descriptor is refused: " + written + "\n" + e.message());
    }
    return 0;
}
