#ifndef TARVO_CORE_SOLVERNLERECIPES_H
#define TARVO_CORE_SOLVERNLERECIPES_H

#include <tarvo/core/SolverNleInterface.h>

#include <string>
#include <vector>

// Newton's method with a backtracking line search on the merit f = 0.5 F.F and a limit on the length
// of a step. The evaluation of F and J comes from Automatic or Numeric.
class SolverNleRecipes : public virtual SolverNleInterface {
public:
    void resize(int n) override;
    void setTolerances(double alf, double tolx, double tolf, double tolmin) override;
    int solve() override;

    double alf() const { return ALF_; }
    double tolx() const { return TOLX_; }
    double tolf() const { return TOLF_; }
    double tolmin() const { return TOLMIN_; }

protected:
    SolverNleRecipes();
    void resizeWork_(int n);
    // Searches along p_ from xold_ for a point that lowers f by at least ALF times the decrease that the
    // slope promises; leaves x_, F_ and f at the point it ends on. Returns 0 on a step taken, -4 on a
    // plateau, -5 on a step shorter than TOLX allows, 8 on NaN and 9 on a zero step; on -5 and 8 that
    // point is the start, xold_.
    int lnsrch_(double fold, double& f, double stpmax);

private:
    // The status of a solve after the model has been given its last point.
    int finish_(int status);
    // Back to the start of the step: x_, F_ and f as they were.
    void restoreStart_(double fold, double& f);
    // The log line of an iteration: its number, f, the largest residual and the tag of its unknown.
    std::string iterationLine_(double f) const;

    double ALF_ = 0.0001;      // sufficient decrease as a fraction of the initial slope
    double TOLX_ = 1e-8;       // convergence on the step
    double TOLF_ = 1e-5;       // convergence on the largest residual
    double TOLMIN_ = 1e-6;     // spurious convergence on a minimum of f
    std::vector<double> g_;    // gradient of f
    std::vector<double> p_;    // the step
    std::vector<double> xold_; // the point before the step
    std::vector<double> Fold_; // the residuals there
};

#endif
