#ifndef TARVO_PHASES_PHASEGENERICINTERFACE_H
#define TARVO_PHASES_PHASEGENERICINTERFACE_H

#include <tarvo/utility/SmartEnumerator.h>
#include <tarvo/value/Value.h>

#include <vector>

namespace Phase {

// The plug of a thermodynamic model: a plain object that works on a pressure, a temperature and a
// vector of molar fractions, and knows nothing of items or of the store. Results come back by
// reference to a member of the model and stay valid until the next call of the same operation.
class GenericInterface {
public:
    virtual ~GenericInterface() = default;
    // One-time set-up with the phase's stored state.
    virtual void initialize(const Vector& x, const Value& rho, const Value& mw) = 0;
    // Ahead of fugacity work at a new temperature.
    virtual void prepare(const Value& T, const Vector& x) = 0;
    // Computes and keeps the logarithms of the fugacity coefficients of all components.
    virtual void preparefugacity(const Value& P, const Value& T, const Vector& x, const Value& total) const = 0;
    // Pressure from a molar density and a temperature, in either order.
    virtual const Value& calculate_P_(const Value& a, const Value& b, const Vector& x, const Value& total) const = 0;
    virtual const Value& calculate_rho_(const Value& P, const Value& T, const Vector& x) const = 0;
    virtual const Value& calculate_H_(const Value& P, const Value& T, const Vector& x) const = 0;
    virtual const Value& calculate_S_(const Value& P, const Value& T, const Vector& x) const = 0;
    virtual const Value& calculate_Cp_(const Value& P, const Value& T, const Vector& x) const = 0;
    // Whether the properties above are those of (P, T, x) alone, bit for bit, whatever was computed before:
    // no root of an equation carried from one call to the next as the start of the next search.
    virtual bool propertiesOfStateAlone() const { return false; }
    // The stored logarithm of the fugacity coefficient of component i.
    virtual const Value& fugacity(int i) const = 0;
    // ln phi of every component at (P, T) in Pa and K for the composition x, in plain numbers, where the
    // model has them in closed form on the state that its Values would take; false where it has not. For
    // the iterations of a flash's start, which carry no derivatives.
    virtual bool lnPhiInNumbers(double /*P*/, double /*T*/, const std::vector<double>& /*x*/,
                                std::vector<double>& /*lnphi*/) const {
        return false;
    }
    virtual Value mu_(const Value& T, const Value& P, const Vector& x) const = 0;
    virtual Value kappa_(const Value& T, const Value& P, const Vector& x) const = 0;
    virtual Value sigma_(const Value& T, const Value& P, const Vector& x) const = 0;
    // The phase hands its type on, since the pure-component sums depend on it.
    virtual void setType(Tarvo::Utility::PhaseType type) = 0;
};

} // namespace Phase

#endif
