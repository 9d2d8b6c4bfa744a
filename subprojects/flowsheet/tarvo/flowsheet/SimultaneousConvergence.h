#ifndef TARVO_FLOWSHEET_SIMULTANEOUSCONVERGENCE_H
#define TARVO_FLOWSHEET_SIMULTANEOUSCONVERGENCE_H

#include <tarvo/core/SolverNleRecipesAutomatic.h>
#include <tarvo/utility/Diagnostic.h>
#include <tarvo/value/Value.h>

#include <vector>

class Assignment;
class FlowSheet;
class ObjectiveNleAd;
class Stream;

// Converges a flowsheet as one Newton system. Its unknowns are the lhs of the flowsheet's assignments, then
// those of the objectives that it includes: its units' and its feed streams' flashes, or, for a flowsheet
// inside another, the flashes of its cut copies. One evaluation of the residuals is one pass over the units;
// the Jacobian comes from the derivatives that the pass carries.
class SimultaneousConvergence : public virtual Diagnostic {
public:
    explicit SimultaneousConvergence(FlowSheet& sheet);

    // Adds the unknowns to the flowsheet's system and includes the objectives, once.
    void gather();
    // One pass, then the residuals of the assignments and of the included objectives into r from its start.
    // Returns how many it wrote.
    int calculateResiduals(std::vector<Value>& r);
    // Solves from the flowsheet's present state; NITER takes the iterations. A solve that ends with a status
    // other than 0, or with residuals that fail the merit test, is a failure: an error of the flowsheet.
    void solve();
    // Whether the last solve of this process converged.
    bool converged() const { return converged_; }

private:
    // Whether the flash of a stream of the flowsheet is an objective of its system.
    bool ownsFlash_(const Stream& stream, bool inside) const;
    void include_(ObjectiveNleAd& objective);
    // residual = (lhs - rhs) * scale, in place; a row without derivatives gets those of lhs, with a warning.
    void assignResidual_(const Assignment& a, Value& residual);

    FlowSheet& sheet_;
    SolverNleRecipesAutomatic solver_;
    std::vector<ObjectiveNleAd*> included_;
    bool gathered_ = false;
    bool converged_ = false;
};

#endif
