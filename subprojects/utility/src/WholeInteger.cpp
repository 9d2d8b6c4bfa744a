#include <tarvo/utility/WholeInteger.h>

#include <charconv>

namespace Tarvo::Utility {

std::optional<int> wholeInteger(std::string_view word) {
    int n = 0;
    const char* end = word.data() + word.size();
    // from_chars takes no '+' and no blanks, and reports a value out of range instead of wrapping it.
    const auto [stop, error] = std::from_chars(word.data(), end, n, 10);
    if (word.empty() || error != std::errc() || stop != end) return std::nullopt;
    return n;
}

} // namespace Tarvo::Utility
