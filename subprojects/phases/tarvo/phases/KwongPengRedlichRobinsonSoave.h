#ifndef TARVO_PHASES_KWONGPENGREDLICHROBINSONSOAVE_H
#define TARVO_PHASES_KWONGPENGREDLICHROBINSONSOAVE_H

#include <tarvo/phases/EosCubicInterface.h>

namespace Phase::EosCubic {

// The equations whose attractive parameter follows a_i = a_c (1 + m (1 - sqrt(T / Tc)))^2, m being a
// function of the acentric factor that each equation gives.
class KwongPengRedlichRobinsonSoave : public Interface {
public:
    using Interface::Interface;
    virtual Value m(const Value& omega) const = 0;

protected:
    double acentricFunction(double omega) const override { return m(Value(omega)).toDouble(); }
    std::array<double, 4> rootAttraction(int i, double T) const override;
};

} // namespace Phase::EosCubic

#endif
