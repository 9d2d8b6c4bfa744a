#ifndef TARVO_CORE_SOLVERNLERECIPESNUMERIC_H
#define TARVO_CORE_SOLVERNLERECIPESNUMERIC_H

#include <tarvo/core/Numeric.h>
#include <tarvo/core/SolverNleRecipes.h>

// Newton with line search, Jacobian by forward differences.
class SolverNleRecipesNumeric : public SolverNleRecipes, public Numeric {
public:
    SolverNleRecipesNumeric(int n, ObjectiveNleInterface* objective);
    void resize(int n) override;
};

#endif
