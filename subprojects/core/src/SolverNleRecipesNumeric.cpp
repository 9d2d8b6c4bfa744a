#include <tarvo/core/SolverNleRecipesNumeric.h>

SolverNleRecipesNumeric::SolverNleRecipesNumeric(int n, ObjectiveNleInterface* objective)
    : SolverNleInterface(n, objective) {}

void SolverNleRecipesNumeric::resize(int n) {
    if (n == n_) return;
    SolverNleInterface::resize(n);
    resizeWork_(n);
    resizeSpare_(n);
}
