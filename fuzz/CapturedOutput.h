#ifndef TARVO_FUZZ_CAPTUREDOUTPUT_H
#define TARVO_FUZZ_CAPTUREDOUTPUT_H

#include <iostream>
#include <sstream>
#include <string>

// std::cout and std::cerr go to memory for the lifetime of the object, so that what the kernel prints does
// not bury the fuzzer's lines; the C streams, which the sanitizers and fuzzFailure use, stay as they are.
class CapturedOutput {
public:
    CapturedOutput() : out_(std::cout.rdbuf(discarded_.rdbuf())), err_(std::cerr.rdbuf(messages_.rdbuf())) {}
    ~CapturedOutput() {
        std::cout.rdbuf(out_);
        std::cerr.rdbuf(err_);
    }
    CapturedOutput(const CapturedOutput&) = delete;
    CapturedOutput& operator=(const CapturedOutput&) = delete;
    // What went to std::cerr.
    std::string messages() const { return messages_.str(); }

private:
    std::ostringstream discarded_, messages_;
    std::streambuf* out_;
    std::streambuf* err_;
};

#endif
