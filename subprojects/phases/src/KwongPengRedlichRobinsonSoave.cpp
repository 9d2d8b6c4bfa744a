#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/KwongPengRedlichRobinsonSoave.h>

namespace Phase::EosCubic {

Value KwongPengRedlichRobinsonSoave::a(int i, const Value& T, Value& dadT, Value& d2adT2) const {
    const ComponentGeneric& c = *components[i];
    const Value slope = m(c.omega());
    const Value root = sqrt(T * c.Tc()); // sqrt(Tr) Tc
    const Value u = 1.0 + slope * (1.0 - root / c.Tc());
    const Value critical = ac(i);
    // alpha = u^2; du/dT = -m / (2 root).
    dadT = -critical * slope * u / root;
    d2adT2 = critical * slope / (2.0 * T) * (slope / c.Tc() + u / root);
    return critical * u * u;
}

} // namespace Phase::EosCubic
