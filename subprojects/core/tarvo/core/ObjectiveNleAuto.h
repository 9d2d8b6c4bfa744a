#ifndef TARVO_CORE_OBJECTIVENLEAUTO_H
#define TARVO_CORE_OBJECTIVENLEAUTO_H

#include <tarvo/core/ObjectiveNleInterface.h>
#include <tarvo/value/Value.h>

#include <cstdint>
#include <string>
#include <vector>

// A nonlinear system over live Values of a model: the unknowns are pointers into the model, the
// residuals are computed by plain model code, and the Jacobian comes from the forward derivatives
// that the unknowns are seeded with. The solver's numbers are the model's, unscaled.
class ObjectiveNleAuto : public ObjectiveNleInterface {
public:
    explicit ObjectiveNleAuto(std::string name);

    void operator()(double* x, double* y, Jacobian* J) override;
    // The numbers stay as they are.
    void scalex(double* x) override;
    void unscalex(double* x) override;

    // Appends an unknown, its description and a residual.
    void addUnknown(Value* unknown, const std::string& description);
    // The tag of the item behind unknown i, for messages; empty if there is none.
    void setLabel(unsigned i, const std::string& tag);

    // Copies the unknowns' numbers into x; an unknown without a Value leaves its place alone.
    // False if no unknown could be read.
    bool init(double* x);
    // Assigns x[i] to unknown i and zeroes its derivatives.
    void setUnknowns(const double* x);
    void clearderivatives();
    // Adds to r[offset + i] a zero that carries the derivatives of unknown i: a residual that is switched
    // off keeps a unit diagonal, so the system stays square and regular. Returns size().
    int zero_residuals(std::vector<Value>& r, uint32_t offset);

    Value* unknown(unsigned i) const { return xp_[i]; }
    const std::string& description(unsigned i) const { return descriptions_[i]; }
    const std::string& label(unsigned i) const { return labels_[i]; }
    const std::string& name() const { return name_; }
    // Logs the unknowns with their descriptions and numbers.
    void print() const;

protected:
    // Gives the model the solver's point x.
    virtual void setPoint_(double* x);
    // The residuals of the model at the point it has been given.
    virtual void fillResiduals_() { calculateResiduals(residuals, 0); }
    // dx/dX of every unknown at X, for the columns of the Jacobian; null where the numbers are the model's.
    virtual const double* columnFactors_(const double* /*X*/) { return nullptr; }
    // One evaluation: y from the residuals at x and, with J, the Jacobian from one direction per unknown.
    // The derivative context of J lives only as long as the evaluation, also when model code throws.
    void evaluate_(double* x, double* y, Jacobian* J);
    // Lets a small Jacobian come from a few evaluations, each with the directions of a block of unknowns,
    // for residuals whose code does not look at their derivatives: a residual may depend on no unknown of
    // a block.
    void evaluateInBlocks() { blocks_ = true; }

public:
    virtual unsigned int size() const;
    // Writes the residuals of the model into r from r[offset] on and returns how many it wrote.
    virtual int calculateResiduals(std::vector<Value>& r, uint32_t offset) = 0;

protected:
    // Gives the model the point x without leaving derivatives behind. With recalculate, the model code runs
    // once more at that point, unless the last evaluation, without derivatives, left it there already.
    void storeSolution_(const double* x, bool recalculate);

private:
    std::string name_;
    std::vector<Value*> xp_;
    std::vector<std::string> descriptions_;

protected:
    std::vector<Value> residuals;

private:
    std::vector<std::string> labels_;
    std::vector<double> columnSums_; // kept between evaluations, so that a Jacobian allocates nothing
    bool modelAtPoint_ = false;      // the last evaluation, without derivatives, completed at the unknowns' point
    bool blocks_ = false;
    // The directions of one evaluation of the Jacobian J.
    unsigned blockSize_(const Jacobian& J) const;
};

#endif
