#ifndef TARVO_UTILITY_DIAGNOSTIC_H
#define TARVO_UTILITY_DIAGNOSTIC_H

namespace Tarvo::Utility {

// The process-wide verbosity: one term of every level test.
inline int verbosityGlobal = 2;

inline void setVerbosityGlobal(int level) { verbosityGlobal = level; }

// A message of `level` is written when global + file + instance verbosity exceeds level - 2.
// Callers test this before they build any text, so a suppressed message costs one addition.
inline bool logPasses(int local, int level) { return verbosityGlobal + local > level - 2; }

} // namespace Tarvo::Utility

// The verbosity of one object: a virtual base of everything that logs, so that an object
// carries exactly one such field.
class Diagnostic {
public:
    virtual ~Diagnostic() = default;
    int verbosityInstance() const { return verbosityInstance_; }
    void setVerbosityInstance(int verbosity) { verbosityInstance_ = verbosity; }

private:
    int verbosityInstance_ = 0;
};

#endif
