#ifndef TARVO_FLOWSHEET_SEQUENTIALASSEMBLY_H
#define TARVO_FLOWSHEET_SEQUENTIALASSEMBLY_H

#include <tarvo/core/Scaler.h>
#include <tarvo/flowsheet/Assignment.h>
#include <tarvo/utility/SmartEnumerator.h>

#include <list>
#include <string>
#include <vector>

// The equations of a flowsheet's convergence: one assignment per torn value of each cut stream and per
// design equation. The list is built on the first pass and refreshed in place on the later ones.
class SequentialAssembly {
public:
    virtual ~SequentialAssembly();
    // Whether the assignment at `it` takes part; the base lets all of them.
    virtual bool enabled(std::list<Assignment*>::const_iterator it) const;

    // Refreshes the assignment at `it` with a new rhs, or appends one with its scaler when `it` is at the
    // end. A disabled assignment takes rhs := lhs, so that its residual is zero.
    void makeAssignment(std::list<Assignment*>::iterator& it, Value& lhs, const Value& rhs, const std::string& tag,
                        std::string description, int i, Tarvo::Utility::ScalingMode mode, double xmin, double xmax,
                        const Value& scale);
    void directstep();
    void wegsteinstep();
    // The sum of the relative changes of all assignments.
    double deltaseq() const;
    void purgeAss();
    void setDamping(double d);
    void setMaxChange(double c);

    std::list<Assignment*>& assignments() { return ass_; }
    const std::vector<Scaler>& scalers() const { return scalers_; }

protected:
    std::list<Assignment*> ass_;
    std::vector<Scaler> scalers_;
    double damping_ = 0.0;
    double maxChange_ = 1.0;
};

#endif
