#ifndef TARVO_PHASES_ACTIVITYINTERFACE_H
#define TARVO_PHASES_ACTIVITYINTERFACE_H

#include <tarvo/value/Value.h>

#include <vector>

namespace Phase::Activity {

// What any activity coefficient model keeps of its last state: the temperature and composition it was
// evaluated at, the activity coefficients there and the excess properties. All of it carries the
// derivatives of T and x, so that the flash's Jacobian sees through the model.
class Interface {
public:
    Interface();
    virtual ~Interface() = default;

    // The parts of the model that depend on T alone.
    virtual void setTemperature(const Value& T) = 0;
    // The activity coefficients and excess properties at composition x and the temperature set last.
    virtual void calculateExcess(const Vector& x) = 0;

    const std::vector<Active>& gamma() const { return gamma_; }
    const Active& T() const { return T_; }
    const Vector& x() const { return x_; }
    const Value& hE() const { return hE_; }
    const Value& sE() const { return sE_; }
    const Value& gE() const { return gE_; }

protected:
    std::vector<Active> gamma_;
    Active T_;
    Vector x_;
    Value hE_;
    Value sE_;
    Value gE_;
};

} // namespace Phase::Activity

#endif
