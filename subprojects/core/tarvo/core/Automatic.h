#ifndef TARVO_CORE_AUTOMATIC_H
#define TARVO_CORE_AUTOMATIC_H

#include <tarvo/core/SolverNleInterface.h>

// The Jacobian from the objective itself, by the forward derivatives of the model code.
class Automatic : public virtual SolverNleInterface {
public:
    double calculateFJ() override;
    // A diagnostic: compares every element of J with a central difference of F and logs each pair,
    // marking mismatches with " !!". A difference does not step outside the model range of an
    // unknown that has one; the current point stands in for that side.
    void verifyDerivatives();

protected:
    Automatic();
};

#endif
