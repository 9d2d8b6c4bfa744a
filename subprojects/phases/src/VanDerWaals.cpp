#include <tarvo/phases/VanDerWaals.h>

namespace Phase::EosCubic {

// Omega_a = 27/64, Omega_b = 1/8 and Zc = 3/8 follow from the two conditions of the critical point.
VanDerWaals::VanDerWaals() : Interface(0.421875, 0.125, 0.3333333333333333, 0.0, 0.0) {}

Value VanDerWaals::a(int i, const Value& T, Value& dadT, Value& d2adT2) const {
    const Value constant = ac(i);
    dadT = 0.0 * constant / T;
    d2adT2 = dadT / T;
    return constant;
}

} // namespace Phase::EosCubic
