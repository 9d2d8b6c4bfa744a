#include <tarvo/phases/KwongRedlichSoave.h>

namespace Phase::EosCubic {

// Soave, Chem. Eng. Sci. 27 (1972) 1197: Omega_a 0.42747, Omega_b 0.08664, Zc 1/3.
KwongRedlichSoave::KwongRedlichSoave() : KwongPengRedlichRobinsonSoave(0.42747, 0.08664, 0.25992, 1.0, 0.0) {}

Value KwongRedlichSoave::m(const Value& omega) const { return 0.48 + 1.574 * omega - 0.176 * omega * omega; }

} // namespace Phase::EosCubic
