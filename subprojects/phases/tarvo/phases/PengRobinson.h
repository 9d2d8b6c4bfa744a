#ifndef TARVO_PHASES_PENGROBINSON_H
#define TARVO_PHASES_PENGROBINSON_H

#include <tarvo/phases/KwongPengRedlichRobinsonSoave.h>

namespace Phase::EosCubic {

// P = R T / (v - b) - a / (v (v + b) + b (v - b)), that is delta = 1 +- sqrt(2).
class PengRobinson : public KwongPengRedlichRobinsonSoave {
public:
    PengRobinson();
    // The quadratic of 1976 below the boundary of setCubicFrom, the cubic of 1978 from there on.
    Value m(const Value& omega) const override;

    // The acentric factor from which m takes the cubic: 0.5 unless set. The cubic was fitted to the heavy
    // components, and published calculations that follow its authors take it from 0.49 on (n-decane's 0.4902
    // among them); a case that compares with one of those sets that boundary.
    void setCubicFrom(double omega);

private:
    double cubicFrom_ = 0.5;
};

} // namespace Phase::EosCubic

#endif
