#include <tarvo/utility/Error.h>
#include <tarvo/utility/IdFile.h>

#include <cstdio>

namespace Tarvo::Utility {

void setIdFile(int status) {
    FILE* file = std::fopen("id.txt", "w");
    const bool written = file && std::fprintf(file, "%d\n", status) > 0;
    const bool closed = file && std::fclose(file) == 0;
    if (!written || !closed) throw ErrorRunTime("setIdFile", "cannot write id.txt file");
}

} // namespace Tarvo::Utility
