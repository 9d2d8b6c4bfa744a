// The arguments of tarvo-eval from arbitrary bytes: words split at NUL bytes and line ends, after the
// program name. Every run must end in 0, 1 or 2; anything thrown out of it, an abort, undefined behaviour
// or a hang is a fault, and so is a standard exception that the calculator could only call unexpected.
#include "CapturedOutput.h"
#include "FuzzFailure.h"

#include <tarvo/core/KernelStart.h>
#include <tarvo/models/ModelCollection.h>
#include <tarvo/user/Eval.h>
#include <tarvo/user/Kernel.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace {

// Enough for a type, several settings and requests; longer words only repeat what shorter ones reach.
constexpr std::size_t maximumWords = 12;
constexpr std::size_t maximumWordLength = 256;

// A separator ends a word, so that "a\n\nb" holds an empty word and a last line end adds none.
std::vector<std::string> words(const uint8_t* data, size_t size) {
    std::vector<std::string> result;
    std::string word;
    for (size_t i = 0; i < size; ++i) {
        const char c = static_cast<char>(data[i]);
        if (c == '\0' || c == '\n') {
            result.push_back(word);
            word.clear();
            if (result.size() == maximumWords) return result;
        } else if (word.size() < maximumWordLength) {
            word += c;
        }
    }
    if (!word.empty()) result.push_back(word);
    return result;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    Tarvo::User::setModelCollection(&Tarvo::Models::registerModelCollection);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::vector<std::string> arguments = words(data, size);
    arguments.insert(arguments.begin(), "tarvo-eval");
    std::vector<char*> argv;
    for (std::string& a : arguments) argv.push_back(a.data());
    argv.push_back(nullptr);

    int code = 0;
    std::string messages;
    {
        const CapturedOutput output;
        code = Tarvo::User::evalMain(static_cast<int>(arguments.size()), argv.data());
        messages = output.messages();
    }
    // Undoes the start that the call made, so that the next run begins with the kernel's own components
    // and not those of a --components list.
    Tarvo::Core::stopKernel();
    if (code < 0 || code > 2) fuzzFailure("tarvo-eval ended with " + std::to_string(code) + "\n" + messages);
    // Arguments hold no line end, so a line that begins so comes from the calculator alone.
    const std::string unexpected = "tarvo-eval: unexpected failure: ";
    if (messages.rfind(unexpected, 0) == 0 || messages.find("\n" + unexpected) != std::string::npos)
        fuzzFailure(messages);
    return 0;
}
