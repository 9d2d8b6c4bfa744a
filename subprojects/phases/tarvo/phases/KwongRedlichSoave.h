#ifndef TARVO_PHASES_KWONGREDLICHSOAVE_H
#define TARVO_PHASES_KWONGREDLICHSOAVE_H

#include <tarvo/phases/KwongPengRedlichRobinsonSoave.h>

namespace Phase::EosCubic {

// P = R T / (v - b) - a / (v (v + b)).
class KwongRedlichSoave : public KwongPengRedlichRobinsonSoave {
public:
    KwongRedlichSoave();
    Value m(const Value& omega) const override;
};

} // namespace Phase::EosCubic

#endif
