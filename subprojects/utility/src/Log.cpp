#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <iostream>
#include <string>

namespace Tarvo::Utility {

// Without a flush of its own: the standard output writes line by line to a terminal and in blocks to a file or a
// pipe, where a write per line cost a calculation of the largest plant some 3,400 system calls. A study's progress
// and a command's failure, which a caller may wait for, go to the standard error, which writes at once.
LogLine::~LogLine() {
    std::cout << shortFunctionName(signature_) << ' ' << std::string(level_ > 0 ? level_ : 0, '*') << ' '
              << text_.str() << '\n';
}

} // namespace Tarvo::Utility
