#ifndef TARVO_CORE_OBJECTIVENLEADVERTEX_H
#define TARVO_CORE_OBJECTIVENLEADVERTEX_H

#include <tarvo/core/ObjectiveNleAd.h>

#include <cstdint>
#include <string>
#include <vector>

// The objective half of a unit operation: the unit computes its own residuals in place with
// calculateResidualsLocal(), and hands them on to an enclosing system with calculateResiduals().
class ObjectiveNleAdVertex : public ObjectiveNleAd {
public:
    explicit ObjectiveNleAdVertex(std::string name);

    void operator()(double* X, double* y, Jacobian* J) override;
    // Gives the model the point without running the unit's equations again.
    void unscalex(double* X) override;
    // Copies the residuals that calculateResidualsLocal() left; runs no model code, since in the
    // simultaneous mode the one-pass calculation has already filled them.
    int calculateResiduals(std::vector<Value>& r, uint32_t offset) override;

    // Fills the residuals of this unit from its current state.
    virtual int calculateResidualsLocal() = 0;
    // Adds the unit's unknowns.
    virtual void setup_of() = 0;

protected:
    void fillResiduals_() override { calculateResidualsLocal(); }
};

#endif
