#ifndef TARVO_CORE_OBJECTIVENLEINTERFACE_H
#define TARVO_CORE_OBJECTIVENLEINTERFACE_H

#include <tarvo/utility/Diagnostic.h>

class Jacobian;

// A square nonlinear system F(X) = 0 as the solver sees it: arrays of doubles in the solver's scaled
// numbers. Implementations bridge to the model's Values.
class ObjectiveNleInterface : public virtual Diagnostic {
public:
    ~ObjectiveNleInterface() override = default;

    // y = F(x); when J is not null, also J = dF/dx.
    virtual void operator()(double* x, double* y, Jacobian* J) = 0;
    // Replaces the model's numbers in x by the solver's.
    virtual void scalex(double* x) = 0;
    // Replaces the solver's numbers in x by the model's and gives the model that point.
    virtual void unscalex(double* x) = 0;
};

#endif
