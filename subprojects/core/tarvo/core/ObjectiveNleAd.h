#ifndef TARVO_CORE_OBJECTIVENLEAD_H
#define TARVO_CORE_OBJECTIVENLEAD_H

#include <tarvo/core/ObjectiveNleAuto.h>
#include <tarvo/core/Scaler.h>

#include <string>
#include <vector>

// An ObjectiveNleAuto whose unknowns each have a Scaler: the solver walks in the scaled numbers X and
// the Jacobian is taken with respect to X, through the chain rule dF/dX = dF/dx * dx/dX.
class ObjectiveNleAd : public ObjectiveNleAuto {
public:
    explicit ObjectiveNleAd(std::string name);

    void operator()(double* X, double* y, Jacobian* J) override;
    void scalex(double* X) override;
    void unscalex(double* X) override;
    unsigned int size() const override;

    void addUnknown(Value* unknown, Scaler scaler, const std::string& description);
    // Appends the unknowns of other with their scalers; the Values are shared, not copied.
    void addObjectiveFunction(ObjectiveNleAd& other);
    const Scaler& scaler(unsigned i) const { return scaler_[i]; }
    // Replaces the scaler of unknown i, as bounds that depend on the feeds change between solves.
    void setScaler(unsigned i, const Scaler& scaler) { scaler_[i] = scaler; }

protected:
    void setPoint_(double* X) override;
    // dx/dX of every unknown at X, in a work array of this object.
    const double* columnFactors_(const double* X) override;
    // X to x in place.
    void unscaleNumbers_(double* X) const;

private:
    std::vector<Scaler> scaler_;
    std::vector<double> factors_;
};

#endif
