#ifndef TARVO_FLOWSHEET_ASSIGNMENT_H
#define TARVO_FLOWSHEET_ASSIGNMENT_H

#include <tarvo/utility/Diagnostic.h>
#include <tarvo/value/Value.h>

#include <string>

// An equation lhs = rhs of a flowsheet: lhs a variable that the convergence iterates (a torn stream's
// value, a design variable), rhs what the model calculated for it on the last pass.
class Assignment : public Diagnostic {
public:
    Assignment(Value& lhs, const Value& rhs, std::string tag);

    // lhs moves towards rhs by (1 - damping) of the difference, at most |lhs * maxChange| unless maxChange is 1.
    void directstep(double damping, double maxChange);
    // The secant acceleration of the substitution, from the last two points; a plain step where they coincide.
    void wegsteinstep();
    // |rhs - oldLHS| / (|(rhs + oldLHS) / 2| + 1): the relative change of the last step.
    double delta() const;

    const std::string& tag() const { return tag_; }
    Value& lhs() { return *lhs_; }
    const Value& lhs() const { return *lhs_; }

    Value rhs;
    Value oldLHS;
    Value oldRHS;
    Value scale;
    std::string description;

private:
    std::string tag_;
    Value* lhs_;
};

#endif
