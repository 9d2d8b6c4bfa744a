#ifndef TARVO_FLOWSHEET_SEQUENTIALCONVERGENCE_H
#define TARVO_FLOWSHEET_SEQUENTIALCONVERGENCE_H

#include <tarvo/utility/Diagnostic.h>
#include <tarvo/utility/SmartEnumerator.h>

class FlowSheet;

// Converges the cuts of a flowsheet by passes over its units. After each pass every assignment steps its lhs
// towards the rhs that the pass calculated: directly, or by Wegstein's acceleration once the first passes
// have given it a history. The passes end when the relative change seqErr falls below seqTol; they fail,
// with an error of the flowsheet, when they run out, when the change stops falling or when it is NaN. NITER
// counts the passes.
class SequentialConvergence : public virtual Diagnostic {
public:
    explicit SequentialConvergence(FlowSheet& sheet) : sheet_(sheet) {}

    // At most `maximum` passes at `level`; none where the method leaves the cuts to the simultaneous solve.
    void converge(Tarvo::Utility::CutsSolution method, int maximum, int level);
    // The passes that lead into a simultaneous solve: at most `maximum`, ending at seqTol as converge's, but
    // without failures of their own, since the solve that follows judges the state that they leave.
    void lead(Tarvo::Utility::CutsSolution method, int maximum, int level);

private:
    // The passes and steps of both; returns how many passes in a row the change stalled.
    int passes_(Tarvo::Utility::CutsSolution method, int maximum, int level);

    FlowSheet& sheet_;
};

#endif
