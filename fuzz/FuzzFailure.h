#ifndef TARVO_FUZZ_FUZZFAILURE_H
#define TARVO_FUZZ_FUZZFAILURE_H

#include <cstdio>
#include <cstdlib>
#include <string>

// A broken property: says which, and aborts so that libFuzzer keeps the input as a crash.
[[noreturn]] inline void fuzzFailure(const std::string& what) {
    std::fprintf(stderr, "fuzz property broken: %s\n", what.c_str());
    std::abort();
}

#endif
