#ifndef TARVO_UTILITY_LOG_H
#define TARVO_UTILITY_LOG_H

#include <tarvo/utility/Diagnostic.h>

#include <sstream>

namespace Tarvo::Utility {

// Collects one log line and writes it on standard output, flushed, when it goes out of scope:
// "<short function name> <level asterisks> <message>".
class LogLine {
public:
    LogLine(const char* signature, int level) : signature_(signature), level_(level) {}
    LogLine(const LogLine&) = delete;
    LogLine& operator=(const LogLine&) = delete;
    ~LogLine();
    std::ostream& stream() { return text_; }

private:
    const char* signature_;
    int level_;
    std::ostringstream text_;
};

} // namespace Tarvo::Utility

// Every source file that logs declares `constexpr int verbosityFile = <n>;` in an unnamed namespace.
// TARVO_LOG is for member functions of Diagnostic objects and adds the instance's verbosity;
// TARVO_LOG_STATIC is for code with no object at hand. Both are used as
//     TARVO_LOG(2) << "Set user inputs";
// and build nothing unless the level test passes.
// A loop of at most one round rather than an if, so that the macro can stand under an unbraced if.
#define TARVO_LOG_AT(local, level)                                                                           \
    for (bool tarvoLogOnce = ::Tarvo::Utility::logPasses((local), (level)); tarvoLogOnce; tarvoLogOnce = false) \
    ::Tarvo::Utility::LogLine(__PRETTY_FUNCTION__, (level)).stream()
#define TARVO_LOG(level) TARVO_LOG_AT(verbosityFile + this->verbosityInstance(), level)
#define TARVO_LOG_STATIC(level) TARVO_LOG_AT(verbosityFile, level)

#endif
