#ifndef TARVO_PHASES_PHASEEOS_H
#define TARVO_PHASES_PHASEEOS_H

#include <tarvo/phases/PhaseIdeal.h>

namespace Phase {

// A fluid phase on the equation of state E: the ideal gas of Phase::Ideal, for the liquid as for the
// vapor, plus E's departure from it at the stored density, which the flash solves for. Every operation
// sets E up at its own T and x first, so that no call depends on an earlier one.
template <typename E> class Eos : public Ideal, public E {
public:
    // The stored mass density over mw gives the density unknown.
    void initialize(const Vector& x, const Value& rho, const Value& mw) override;
    void prepare(const Value& T, const Vector& x) override;
    void preparefugacity(const Value& P, const Value& T, const Vector& x, const Value& total) const override;
    // The pressure at molar density rho and temperature T.
    const Value& calculate_P_(const Value& rho, const Value& T, const Vector& x, const Value& total) const override;
    // The stored density: no solve.
    const Value& calculate_rho_(const Value& P, const Value& T, const Vector& x) const override;
    const Value& calculate_H_(const Value& P, const Value& T, const Vector& x) const override;
    const Value& calculate_S_(const Value& P, const Value& T, const Vector& x) const override;
    const Value& calculate_Cp_(const Value& P, const Value& T, const Vector& x) const override;
    bool lnPhiInNumbers(double P, double T, const std::vector<double>& x, std::vector<double>& lnphi) const override {
        return this->lnPhiOfRoot(P, T, x, this->phaseType(), lnphi);
    }

private:
    // The sum of x: the departures count per kmol of the phase as the ideal sums do.
    static Value sum_(const Vector& x);
};

} // namespace Phase

#endif
