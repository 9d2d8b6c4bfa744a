#ifndef TARVO_USER_RESULTCODES_H
#define TARVO_USER_RESULTCODES_H

#include <string>

namespace Tarvo::User {

// Result codes of the facade. The kernel returns caseInvalid and caseServerError from Case, and
// invalidArgument and serverError from the free functions; the others are for a surrounding application.
// `unfinished` stands in "id.txt" while a command runs, so that one that never ends says so.
enum ResultCode {
    success = 0,
    unfinished = -3,
    caseInvalid = -81,
    caseCommunication = -82,
    caseInvalidArgument = -83,
    caseServerError = -84,
    communication = -91,
    invalidArgument = -92,
    serverError = -93,
};

// "success", "case object is not in a valid state", ... and "unknown error" for any other code.
std::string errorMessage(int code);

} // namespace Tarvo::User

#endif
