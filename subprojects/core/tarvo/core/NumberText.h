#ifndef TARVO_CORE_NUMBERTEXT_H
#define TARVO_CORE_NUMBERTEXT_H

#include <string>

namespace Tarvo::Core {

// The shortest text that reads back as `value` exactly, so that results written by a study compare with a
// direct calculation to the last digit; NaN, INF and -INF as XML Schema writes them.
std::string numberText(double value);

// `text` as a JSON string, quotes and escapes included.
std::string jsonQuoted(const std::string& text);

} // namespace Tarvo::Core

#endif
