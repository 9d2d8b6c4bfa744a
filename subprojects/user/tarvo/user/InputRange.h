#ifndef TARVO_USER_INPUTRANGE_H
#define TARVO_USER_INPUTRANGE_H

#include <tarvo/value/Value.h>

#include <string>

namespace Tarvo::User {

// Why `value`, in SI, cannot be given to the quantity `item` found at `path`; empty when it can. A state
// has finite numbers, an absolute temperature above 0 K, no pressure below 0 Pa and fractions ("x", "w",
// "fraction") from 0 to 1; whatever lies outside would only reach the models as a crash or a NaN.
std::string inputRefusal(const std::string& path, const Value& item, double value);

} // namespace Tarvo::User

#endif
