#include <tarvo/user/Catalogue.h>

namespace Tarvo::User {

// Nothing can be registered yet: the node factory and the enumerators arrive with the object tree.
std::string types(int& error) {
    error = 0;
    return "{\"types\":[]}";
}

std::string enumerators(int& error) {
    error = 0;
    return "{\"enumerators\":[]}";
}

} // namespace Tarvo::User
