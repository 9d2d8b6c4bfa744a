#ifndef TARVO_PHASES_VANDERWAALS_H
#define TARVO_PHASES_VANDERWAALS_H

#include <tarvo/phases/EosCubicInterface.h>

namespace Phase::EosCubic {

// P = R T / (v - b) - a / v^2, with an attractive parameter that does not depend on temperature.
class VanDerWaals : public Interface {
public:
    VanDerWaals();

protected:
    std::array<double, 4> rootAttraction(int i, double T) const override;
};

} // namespace Phase::EosCubic

#endif
