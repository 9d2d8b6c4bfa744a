#include <tarvo/core/StudyProgress.h>

#include <ostream>

namespace Tarvo::Core {

void printProgress(std::ostream& out, const char* step, int number, int count, const std::string& settings,
                   int errors, double seconds) {
    out << step << ' ' << number << " / " << count << ": " << settings;
    if (errors == 0)
        out << " converged";
    else
        out << " failed with " << errors << (errors == 1 ? " error" : " errors");
    out << " in " << seconds << " s" << std::endl;
}

} // namespace Tarvo::Core
