#ifndef TARVO_USER_CASES_H
#define TARVO_USER_CASES_H

#include <tarvo/user/CaseDescriptor.h>
#include <tarvo/user/Handle.h>

#include <map>
#include <string>

namespace Tarvo::User {

// Creates a case of a registered type, sets its input quantities, sets it up and stores it. The
// options are a JSON text (a case descriptor) or two maps; the form with the JSON text also draws the
// case and each flowsheet in it into the working directory, as "<id>.svg" in the tiny profile. On failure the handle is invalid (id -1) and `error` is -93.
Handle createCase(const std::string& type, const std::string& tag, const std::string& description,
                  const std::string& options, int& error);
Handle createCase(const std::string& type, const std::string& tag, const std::string& description,
                  const std::map<std::string, std::string>& stringOptions,
                  const std::map<std::string, int>& integerOptions, int& error);
// The whole descriptor as one JSON text.
Handle createCase(const std::string& descriptor, int& error);
// Stores a copy of the object under new identifiers, with a new tag and description.
Handle duplicate(const Handle& handle, const std::string& tag, const std::string& description, int& error);
// Deletes the object and its descendants; an unknown object deletes nothing. 0 or -93.
int remove(const Handle& handle);
// Empties the store. 0 or -93.
int purge();
// The global verbosity of the log.
void setVerbosity(int level);

} // namespace Tarvo::User

#endif
