#ifndef TARVO_CORE_NUMERIC_H
#define TARVO_CORE_NUMERIC_H

#include <tarvo/core/SolverNleInterface.h>

#include <vector>

// The Jacobian by forward differences, one extra evaluation of F per unknown: for objectives whose
// model code carries no derivatives.
class Numeric : public virtual SolverNleInterface {
public:
    void resize(int n) override;
    double calculateFJ() override;

protected:
    Numeric();
    void resizeSpare_(int n) { y_.assign(n, 0.0); }

private:
    std::vector<double> y_; // the perturbed residuals
};

#endif
