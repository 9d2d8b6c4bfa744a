#include <tarvo/utility/FunctionName.h>

#include <cstring>

namespace Tarvo::Utility {

std::string shortFunctionName(const char* signature) {
    std::string s(signature);
    // A lambda is named after the function that encloses it: "A::f(int)::<lambda(double)>" is A::f.
    const auto lambda = s.find("::<lambda");
    if (lambda != std::string::npos) s.erase(lambda);
    // A trailing "[with T = ...]" clause stands behind a blank; the "[" of "operator[]" does not.
    std::string::size_type limit = s.rfind(" [");
    limit = limit == std::string::npos ? s.size() : limit + 1;
    const std::string::size_type open = limit == 0 ? std::string::npos : s.rfind('(', limit - 1);
    if (open == std::string::npos) return s;
    // Walk back over blanks that follow a comma: they belong to a template argument list.
    std::string::size_type blank = open;
    do {
        blank = blank == 0 ? std::string::npos : s.rfind(' ', blank - 1);
    } while (blank != std::string::npos && blank > 0 && s[blank - 1] == ',');
    const std::string::size_type begin = blank == std::string::npos ? 0 : blank + 1;
    return s.substr(begin, open - begin);
}

} // namespace Tarvo::Utility
