#include <tarvo/user/ResultCodes.h>

namespace Tarvo::User {

std::string errorMessage(int code) {
    switch (code) {
    case success:
        return "success";
    case unfinished:
        return "the operation did not finish";
    case caseInvalid:
        return "case object is not in a valid state";
    case caseCommunication:
    case communication:
        return "communication problem";
    case caseInvalidArgument:
    case invalidArgument:
        return "supplied argument is not valid";
    case caseServerError:
    case serverError:
        return "server-side error while performing the operation";
    default:
        return "unknown error";
    }
}

} // namespace Tarvo::User
