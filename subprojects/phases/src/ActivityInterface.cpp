#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/ActivityInterface.h>

namespace Phase::Activity {

Interface::Interface()
    : gamma_(NCOMPONENTS, Active(1.0)), T_(T0.toDouble()), x_(NCOMPONENTS, zero), hE_(0.0, "J/kmol"),
      sE_(0.0, "J/(kmol*K)"), gE_(0.0, "J/kmol") {}

} // namespace Phase::Activity
