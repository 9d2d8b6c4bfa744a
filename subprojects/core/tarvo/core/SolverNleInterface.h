#ifndef TARVO_CORE_SOLVERNLEINTERFACE_H
#define TARVO_CORE_SOLVERNLEINTERFACE_H

#include <tarvo/core/Jacobian.h>
#include <tarvo/utility/Diagnostic.h>

#include <string>
#include <vector>

class ObjectiveNleInterface;
class ObjectiveNleAd;

// A solver of F(X) = 0 for a square system given by an objective. It never throws on numerical
// trouble: every outcome is a status (0 success, negative a warning, positive an error) and x() holds
// the last point, which the model has been given as well.
//
// Use: resize(objective.size()); objective.init(x()); optionally set limits and tolerances; solve();
// then read the status, its text and the iterations.
class SolverNleInterface : public virtual Diagnostic {
public:
    SolverNleInterface(int n, ObjectiveNleInterface* objective);
    ~SolverNleInterface() override = default;

    // Reallocates the arrays and the Jacobian when the size changes.
    virtual void resize(int n);
    // ALF, TOLX, TOLF and TOLMIN; a 0 leaves the constant as it is.
    virtual void setTolerances(double alf, double tolx, double tolf, double tolmin) = 0;
    // 0.5 F.F over the size of the system.
    virtual double merit(const double* F) const;
    // F at x(), counted as one system evaluation; returns the merit.
    virtual double evaluateF();
    // F and J at x(); returns the merit.
    virtual double calculateFJ() = 0;
    virtual int solve() = 0;
    virtual std::string statusText(int status) const;
    // Evaluates the objective at the model's current point and logs the residuals.
    virtual void verifySolution();

    void setMaxIterations(int maxits) { maxits_ = maxits; }
    void setStepFactor(double stpmx) { stpmx_ = stpmx; }
    int size() const { return n_; }
    double residual(int i) const;
    // The merit of the last residuals is above 0.001, or is not finite.
    bool failed() const;
    // Logs the counters of the last solve.
    void printCounters() const;

    double* x() { return x_.data(); }
    const Jacobian& jacobian() const { return J_; }
    int iterations() const { return iterations_; }
    int systemEvaluations() const { return nEvaluations_; }
    int newtonApplications() const { return nNewton_; }
    int analyticalJacobians() const { return nAnalyticalJ_; }
    int numericalJacobians() const { return nNumericalJ_; }

protected:
    void resetCounters_();
    // The objective as an ObjectiveNleAd, or null: for the tags of unknowns in the log.
    ObjectiveNleAd* objectiveAd_() const;

    ObjectiveNleInterface* objective_;
    int n_ = 0;
    int maxits_ = 200;
    int nEvaluations_ = 0;
    int nNewton_ = 0;
    int nQuasiNewton_ = 0; // kept for the report of counters; no method here counts it
    int nAnalyticalJ_ = 0;
    int nNumericalJ_ = 0;
    double stpmx_ = 0.5; // the step limit is this fraction of max(|x|, n)
    int iterations_ = 0;
    std::vector<double> F_;
    std::vector<double> x_;
    Jacobian J_;
};

#endif
