#ifndef TARVO_UTILITY_FUNCTIONNAME_H
#define TARVO_UTILITY_FUNCTIONNAME_H

#include <string>

namespace Tarvo::Utility {

// The qualified name of a function, cut out of the compiler's full signature
// ("int Tarvo::User::Case::calculateSync()" gives "Tarvo::User::Case::calculateSync").
// Return types holding template arguments and trailing "[with T = ...]" clauses are skipped, and a lambda
// takes the name of the function that encloses it.
std::string shortFunctionName(const char* signature);

} // namespace Tarvo::Utility

// The short name of the enclosing function, for log lines and error messages.
#define TARVO_FUNCTION ::Tarvo::Utility::shortFunctionName(__PRETTY_FUNCTION__)

#endif
