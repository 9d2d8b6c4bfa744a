#ifndef TARVO_USER_CATALOGUE_H
#define TARVO_USER_CATALOGUE_H

#include <tarvo/persistency/TypeDescriptor.h>
#include <tarvo/utility/Enumerator.h>

#include <string>

namespace Tarvo::User {

// The catalogues as JSON, for user interfaces that do not link the kernel. Strings go in as they
// stand, without escaping. Each call writes its result code into `error`.

// {"types":[...]}: every registered type, in order of registration.
std::string types(int& error);
// {"enumerators":[...]}: the kernel's list of enumerators.
std::string enumerators(int& error);
// The record of a type, owned by the factory; null and -92 for an unknown type.
const Tarvo::Persistency::TypeDescriptor* typeDescriptor(const std::string& type, int& error);
// The record of a type as JSON; "{}" and -92 for an unknown type.
std::string typeDescriptorJson(const std::string& type, int& error);
// The enumerator of that name in the kernel's list; null and -92 if there is none.
const Tarvo::Core::Enumerator* enumerator(const std::string& name, int& error);

} // namespace Tarvo::User

#endif
