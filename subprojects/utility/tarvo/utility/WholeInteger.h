#ifndef TARVO_UTILITY_WHOLEINTEGER_H
#define TARVO_UTILITY_WHOLEINTEGER_H

#include <optional>
#include <string_view>

namespace Tarvo::Utility {

// The int that the whole of `word` writes in base 10, an optional '-' and digits only, or nothing: no
// blanks, no '+', no trailing text and nothing outside the range of int. Ids, indices and integer options
// are read with it, so that "12abc", "1e3" and 2^32 + 5 never stand for 12, 1 or 5.
std::optional<int> wholeInteger(std::string_view word);

} // namespace Tarvo::Utility

#endif
