// The XML input files of the studies, "SensitivityInput.xml" and "Homotopy.xml", read from arbitrary text by
// both readers. A reader may refuse the text with Error; anything else thrown, or an abort, is a fault, and
// an accepted input must hold what the runs rely on.
#include "CapturedOutput.h"
#include "StudyInputProperties.h"

#include <tarvo/core/HomotopyInputXml.h>
#include <tarvo/core/SensitivityInputXml.h>
#include <tarvo/utility/Error.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

namespace {

// Mini-XML says why it refused a text on standard error; the fuzzer's lines matter more here.
void quiet(const char*) {}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const bool silenced = (mxmlSetErrorCallback(quiet), true);
    (void)silenced;
    const Tarvo::Core::XmlText text{std::string(reinterpret_cast<const char*>(data), size)};
    const CapturedOutput captured;
    try {
        checkAccepted(SensitivityInputXml(text));
    } catch (Error&) {
    }
    try {
        checkAccepted(HomotopyInputXml(text));
    } catch (Error&) {
    }
    return 0;
}
