#include <tarvo/phases/PengRobinson.h>

namespace Phase::EosCubic {

// Peng and Robinson, Ind. Eng. Chem. Fundam. 15 (1976) 59: Omega_a 0.45724, Omega_b 0.07780 and
// Zc 0.3074 in their exact forms, the roots of the conditions of the critical point.
PengRobinson::PengRobinson()
    : KwongPengRedlichRobinsonSoave(0.4572355289, 0.0777960739, 0.25321709393744, 2.414213562373095,
                                    -0.41421356237309515) {}

Value PengRobinson::m(const Value& omega) const {
    if (omega.toDouble() < cubicFrom_) return 0.37464 + 1.54226 * omega - 0.26992 * omega * omega;
    return 0.3796 + 1.485 * omega - 0.1644 * omega * omega + 0.01666 * omega * omega * omega;
}

void PengRobinson::setCubicFrom(double omega) {
    cubicFrom_ = omega;
    forgetConstants(); // they hold m
}

} // namespace Phase::EosCubic
