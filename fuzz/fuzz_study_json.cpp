// The JSON inputs of the studies, as Case::sensitivitySync and Case::homotopySync take them, read from
// arbitrary text by both readers. A reader may refuse the text with Error; anything else thrown, or an
// abort, is a fault, and an accepted input must hold what the runs rely on.
#include "StudyInputProperties.h"

#include <tarvo/core/HomotopyInputJson.h>
#include <tarvo/core/SensitivityInputJson.h>
#include <tarvo/utility/Error.h>

#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    try {
        checkAccepted(SensitivityInputJson(text));
    } catch (Error&) {
    }
    try {
        checkAccepted(HomotopyInputJson(text));
    } catch (Error&) {
    }
    return 0;
}
