#ifndef TARVO_PHASES_PHASEPCSAFT_H
#define TARVO_PHASES_PHASEPCSAFT_H

#include <tarvo/phases/EosPcsaft.h>
#include <tarvo/phases/PhaseIdeal.h>

namespace Phase {

// A fluid phase on PC-SAFT: the ideal gas of Phase::Ideal plus the equation's residual part at the stored
// packing fraction. Making one sets the process-wide parameters for the component list by the
// components' names, from the non-associating parameters of Gross and Sadowski (2001): water, methanol,
// ethanol and ammonia, which associate, have none, and a phase that holds one of them is an error.
class Pcsaft : public Ideal, public EosPcsaft {
public:
    Pcsaft();

    void initialize(const Vector& x, const Value& rho, const Value& mw) override;
    void prepare(const Value& T, const Vector& x) override;
    void preparefugacity(const Value& P, const Value& T, const Vector& x, const Value& total) const override;
    const Value& calculate_P_(const Value& rho, const Value& T, const Vector& x, const Value& total) const override;
    const Value& calculate_rho_(const Value& P, const Value& T, const Vector& x) const override;
    const Value& calculate_H_(const Value& P, const Value& T, const Vector& x) const override;
    const Value& calculate_S_(const Value& P, const Value& T, const Vector& x) const override;
    const Value& calculate_Cp_(const Value& P, const Value& T, const Vector& x) const override;
};

// Sets PcsaftParameters for the present component list, by name; throws for more than NC components.
void setPcsaftParametersOfComponents();

} // namespace Phase

#endif
