#include <tarvo/phases/KwongPengRedlichRobinsonSoave.h>

#include <cmath>

namespace Phase::EosCubic {

std::array<double, 4> KwongPengRedlichRobinsonSoave::rootAttraction(int i, double T) const {
    const Constants& c = constants(i);
    // sqrt(a) = sqrt(a_c) (1 + m (1 - s)) with s = sqrt(T / Tc), whose derivatives are s / (2 T),
    // -s / (4 T^2) and 3 s / (8 T^3).
    const double s = std::sqrt(T / c.Tc), k = c.rootAc * c.m * s;
    return {c.rootAc * (1 + c.m * (1 - s)), -k / (2 * T), k / (4 * T * T), -3 * k / (8 * T * T * T)};
}

} // namespace Phase::EosCubic
