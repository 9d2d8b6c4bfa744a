#ifndef TARVO_UTILITY_BANNER_H
#define TARVO_UTILITY_BANNER_H

#include <ostream>
#include <string>

namespace Tarvo::Utility {

// The lines printed at every start. Entries are printed by ascending priority, each as a heading
// with its name centred in a run of asterisks and a line with its text, then a closing block.
void addBannerEntry(int priority, const std::string& name, const std::string& text);
void clearBanner();
void printBanner(std::ostream& out);

} // namespace Tarvo::Utility

#endif
