#include <tarvo/core/SolverNleRecipesAutomatic.h>

SolverNleRecipesAutomatic::SolverNleRecipesAutomatic(int n, ObjectiveNleInterface* objective)
    : SolverNleInterface(n, objective) {}
