#ifndef TARVO_PHASES_PENGROBINSON_H
#define TARVO_PHASES_PENGROBINSON_H

#include <tarvo/phases/KwongPengRedlichRobinsonSoave.h>

namespace Phase::EosCubic {

// P = R T / (v - b) - a / (v (v + b) + b (v - b)), that is delta = 1 +- sqrt(2).
class PengRobinson : public KwongPengRedlichRobinsonSoave {
public:
    PengRobinson();
    // The quadratic of 1976 below omega 0.5, the cubic of 1978 from there on.
    Value m(const Value& omega) const override;
};

} // namespace Phase::EosCubic

#endif
