#ifndef TARVO_USER_ERRORINPUT_H
#define TARVO_USER_ERRORINPUT_H

#include <tarvo/utility/Error.h>

#include <string>

namespace Tarvo::User {

// Input that the kernel refuses before it changes anything: a case descriptor that is no valid one, a
// type that cannot be the root of a case, a quantity that cannot take its value. The facade turns it into
// "supplied argument is not valid", where other errors are failures of the server.
class ErrorInput : public Error {
public:
    ErrorInput(const std::string& function, const std::string& text) : Error(function) { addSection(text); }
};

} // namespace Tarvo::User

#endif
