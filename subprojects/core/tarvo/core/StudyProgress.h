#ifndef TARVO_CORE_STUDYPROGRESS_H
#define TARVO_CORE_STUDYPROGRESS_H

#include <iosfwd>
#include <string>

namespace Tarvo::Core {

// The line that a study writes after each of its steps, so that a long run shows where it is:
// "round 3 / 7: [GM.A = 20 m2] converged in 0.0123 s" or "... failed with 2 errors in 0.5 s". `step` is
// "round" or "point", counted from 1; `settings` the values set for it.
void printProgress(std::ostream& out, const char* step, int number, int count, const std::string& settings,
                   int errors, double seconds);

} // namespace Tarvo::Core

#endif
