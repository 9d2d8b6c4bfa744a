#ifndef TARVO_CORE_SOLVERNLERECIPESAUTOMATIC_H
#define TARVO_CORE_SOLVERNLERECIPESAUTOMATIC_H

#include <tarvo/core/Automatic.h>
#include <tarvo/core/SolverNleRecipes.h>

// Newton with line search, Jacobian by automatic differentiation of the model code.
class SolverNleRecipesAutomatic : public SolverNleRecipes, public Automatic {
public:
    SolverNleRecipesAutomatic(int n, ObjectiveNleInterface* objective);
};

#endif
