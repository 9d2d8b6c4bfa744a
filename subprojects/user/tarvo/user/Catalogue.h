#ifndef TARVO_USER_CATALOGUE_H
#define TARVO_USER_CATALOGUE_H

#include <string>

namespace Tarvo::User {

// The catalogue of registered types, as JSON: {"types":[...]}.
std::string types(int& error);
// The kernel's list of enumerators, as JSON: {"enumerators":[...]}.
std::string enumerators(int& error);

} // namespace Tarvo::User

#endif
