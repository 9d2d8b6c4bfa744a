#ifndef TARVO_CORE_REPLACEDFILE_H
#define TARVO_CORE_REPLACEDFILE_H

#include <functional>
#include <iosfwd>
#include <string>

namespace Tarvo::Core {

// Writes a file anew without a moment in which it is half written: `write` fills "<path>.part", which then
// takes the place of `path`. A reader, or a process killed at any moment, finds the old file or the new
// one. False, with `path` as it was, when the file cannot be written.
bool replaceFile(const std::string& path, const std::function<void(std::ostream&)>& write);

} // namespace Tarvo::Core

#endif
