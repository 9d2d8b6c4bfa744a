#include <tarvo/phases/VanDerWaals.h>

namespace Phase::EosCubic {

// Omega_a = 27/64, Omega_b = 1/8 and Zc = 3/8 follow from the two conditions of the critical point.
VanDerWaals::VanDerWaals() : Interface(0.421875, 0.125, 0.3333333333333333, 0.0, 0.0) {}

std::array<double, 4> VanDerWaals::rootAttraction(int i, double) const { return {constants(i).rootAc, 0, 0, 0}; }

} // namespace Phase::EosCubic
