#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <iostream>
#include <string>

namespace Tarvo::Utility {

LogLine::~LogLine() {
    std::cout << shortFunctionName(signature_) << ' ' << std::string(level_ > 0 ? level_ : 0, '*') << ' '
              << text_.str() << std::endl;
}

} // namespace Tarvo::Utility
