#include <tarvo/user/Catalogue.h>
#include <tarvo/utility/Enumerator.h>

namespace Tarvo::User {

// Nothing can be registered yet: the node factory arrives with the object tree.
std::string types(int& error) {
    error = 0;
    return "{\"types\":[]}";
}

std::string enumerators(int& error) {
    error = 0;
    std::string text = "{\"enumerators\":[";
    const char* separator = "";
    for (const auto& enumerator : Core::enumerators()) {
        text += separator + enumerator.json();
        separator = ",";
    }
    return text + "]}";
}

} // namespace Tarvo::User
