#ifndef TARVO_PHASES_ACTIVITYLIQUID_H
#define TARVO_PHASES_ACTIVITYLIQUID_H

#include <tarvo/phases/ActivityInterface.h>
#include <tarvo/phases/PhaseIdeal.h>

namespace Phase::Activity {

// A liquid whose departure from the ideal solution is an activity coefficient model: the fugacity of a
// component is gamma times that of Raoult's law against an ideal vapor, and the excess enthalpy and
// entropy add to the ideal sums. Density, heat capacity and transport properties stay those of the ideal
// solution.
class Liquid : public Ideal, public Interface {
public:
    // The model at T and x: setTemperature, then calculateExcess.
    void prepare(const Value& T, const Vector& x) override;
    // ln phi_i = ln(kvli_i gamma_i), at the T and x of the last prepare.
    void preparefugacity(const Value& P, const Value& T, const Vector& x, const Value& total) const override;
    // These evaluate the model at their own T and x, since a one-phase stream asks for properties without
    // preparing the phase first.
    const Value& calculate_H_(const Value& P, const Value& T, const Vector& x) const override;
    const Value& calculate_S_(const Value& P, const Value& T, const Vector& x) const override;

private:
    void evaluate_(const Value& T, const Vector& x) const;
};

} // namespace Phase::Activity

#endif
