#include <tarvo/core/SolverNleInterface.h>

#include <tarvo/core/ObjectiveNleAd.h>
#include <tarvo/utility/Log.h>

#include <cassert>
#include <cmath>
#include <limits>

namespace {
// The diagnostics of this file are asked for explicitly and show at the default verbosity.
constexpr int verbosityFile = 0;
} // namespace

SolverNleInterface::SolverNleInterface(int n, ObjectiveNleInterface* objective) : objective_(objective) {
    SolverNleInterface::resize(n);
}

void SolverNleInterface::resize(int n) {
    assert(n >= 0);
    if (n == n_) return;
    TARVO_LOG(4) << "Set size = " << n;
    n_ = n;
    F_.assign(n, 0.0);
    x_.assign(n, 0.0);
    J_.resize(static_cast<unsigned>(n));
}

double SolverNleInterface::merit(const double* F) const {
    double sum = 0;
    for (int i = 0; i < n_; ++i)
        sum += F[i] * F[i];
    return 0.5 * sum;
}

double SolverNleInterface::evaluateF() {
    (*objective_)(x_.data(), F_.data(), nullptr);
    ++nEvaluations_;
    return merit(F_.data());
}

std::string SolverNleInterface::statusText(int status) const {
    switch (status) {
    case -5:
        return "convergence on deltax; dubious convergence";
    case -4:
        return "objective function insensitive (plateau)";
    case -1:
        return "converged to a local minimum; try a different initial guess";
    case 0:
        return "converged fine";
    case 1:
        return "singular matrix, sparse factorisation failed";
    case 2:
        return "exceeded maximum iterations limit";
    case 3:
        return "error when evaluating the residuals";
    case 6:
        return "singular matrix, type 1";
    case 7:
        return "singular matrix, type 2";
    case 8:
        return "NaN encountered";
    case 9:
        return "zero Newton step";
    default:
        return "unknown error code " + std::to_string(status);
    }
}

void SolverNleInterface::verifySolution() {
    if (ObjectiveNleAd* ad = objectiveAd_()) ad->init(x_.data());
    objective_->scalex(x_.data());
    calculateFJ();
    objective_->unscalex(x_.data());
    int imax = 0;
    for (int i = 0; i < n_; ++i) {
        TARVO_LOG(1) << "F_[" << i << "] = " << F_[i];
        if (std::fabs(F_[i]) > std::fabs(F_[imax])) imax = i;
    }
    if (n_ > 0) {
        TARVO_LOG(1) << imax << "-th residual is max = " << F_[imax];
    }
}

double SolverNleInterface::residual(int i) const {
    assert(i >= 0);
    assert(i < size());
    return F_[i];
}

bool SolverNleInterface::failed() const {
    const double f = merit(F_.data());
    return !(f <= 0.001); // NaN fails as well
}

void SolverNleInterface::printCounters() const {
    TARVO_LOG(1) << "Number of system evaluations               = " << nEvaluations_;
    TARVO_LOG(1) << "Number of Newton method applications       = " << nNewton_;
    TARVO_LOG(1) << "Number of Quasi Newton method applications = " << nQuasiNewton_;
    TARVO_LOG(1) << "Number of analytical Jacobian evaluations  = " << nAnalyticalJ_;
    TARVO_LOG(1) << "Number of numerical Jacobian evaluations   = " << nNumericalJ_;
}

void SolverNleInterface::resetCounters_() {
    nEvaluations_ = nNewton_ = nQuasiNewton_ = nAnalyticalJ_ = nNumericalJ_ = 0;
}

ObjectiveNleAd* SolverNleInterface::objectiveAd_() const {
    return dynamic_cast<ObjectiveNleAd*>(objective_);
}
