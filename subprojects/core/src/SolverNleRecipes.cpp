#include <tarvo/core/SolverNleRecipes.h>

#include <tarvo/core/ObjectiveNleAd.h>
#include <tarvo/utility/Log.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>

namespace {
// A solver runs inside every flash: silent unless an instance asks for more.
constexpr int verbosityFile = -3;

// Both exits on the step rather than on the residuals say so in these words.
constexpr const char* deltaxExit =
    "Convergence on deltax. For zero finding, the calling program should verify the convergence.";

// Both exits on a plateau of f.
constexpr const char* plateauExit = "No change, we are on a plateau, trust descent Direction";
// The least relative decrease of f over an iteration that is not a plateau.
constexpr double stalledDecrease = 1e-8;
// The least relative decrease of f over crawlIterations iterations in a row that is not a crawl.
constexpr double crawlDecrease = 1e-4;
constexpr int crawlIterations = 5;

// The larger of two; a NaN in either wins, so that the tests below see it rather than skip it.
double maxOf(double a, double b) {
    return b > a || b != b ? b : a;
}

double maxAbs(const std::vector<double>& v) {
    double m = 0;
    for (double d : v)
        m = maxOf(m, std::fabs(d));
    return m;
}
} // namespace

// Only the most derived class initialises the virtual base.
SolverNleRecipes::SolverNleRecipes() : SolverNleInterface(0, nullptr) {
    resizeWork_(n_);
}

void SolverNleRecipes::resize(int n) {
    if (n == n_) return;
    SolverNleInterface::resize(n);
    resizeWork_(n);
}

void SolverNleRecipes::resizeWork_(int n) {
    g_.assign(n, 0.0);
    p_.assign(n, 0.0);
    xold_.assign(n, 0.0);
    Fold_.assign(n, 0.0);
}

void SolverNleRecipes::setTolerances(double alf, double tolx, double tolf, double tolmin) {
    if (alf != 0) ALF_ = alf;
    if (tolx != 0) TOLX_ = tolx;
    if (tolf != 0) TOLF_ = tolf;
    if (tolmin != 0) TOLMIN_ = tolmin;
}

std::string SolverNleRecipes::iterationLine_(double f) const {
    const ObjectiveNleAd* ad = objectiveAd_();
    int imax = 0;
    for (int i = 1; i < n_; ++i)
        if (std::fabs(F_[i]) > std::fabs(F_[imax])) imax = i;
    std::ostringstream line;
    line << iterations_ << " " << f << " max residual: " << (n_ > 0 ? F_[imax] : 0.0);
    if (ad && n_ > 0 && !ad->label(imax).empty()) line << " in " << ad->label(imax);
    return line.str();
}

int SolverNleRecipes::finish_(int status) {
    objective_->unscalex(x_.data());
    return status;
}

int SolverNleRecipes::solve() {
    const int n = n_;
    iterations_ = 0;
    resetCounters_();
    // An objective in the model's own numbers has a scalex that changes nothing.
    objective_->scalex(x_.data());

    double f = evaluateF();
    double test = maxAbs(F_);
    if (!std::isfinite(test)) return finish_(3);
    if (test < 0.01 * TOLF_) {
        TARVO_LOG(2) << "newton converged: test < 0.01*TOLF";
        return finish_(0);
    }
    double sum = 0;
    for (int i = 0; i < n; ++i)
        sum += x_[i] * x_[i];
    const double stpmax = stpmx_ * std::max(std::sqrt(sum), static_cast<double>(n));
    // f after each of the last crawlIterations iterations; the oldest sits where the running one goes.
    std::array<double, crawlIterations> fAfter{};

    while (iterations_ < maxits_) {
        f = calculateFJ();
        TARVO_LOG(1) << iterationLine_(f);
        J_.multiplyTransposed(F_.data(), g_.data());
        std::copy(x_.begin(), x_.end(), xold_.begin());
        std::copy(F_.begin(), F_.end(), Fold_.begin());
        const double fold = f;
        for (int i = 0; i < n; ++i)
            p_[i] = -F_[i];
        int check = J_.factorAndSolve(p_.data());
        if (check > 0) return finish_(check);
        ++nNewton_;

        check = lnsrch_(fold, f, stpmax);

        test = maxAbs(F_);
        if (test < TOLF_) {
            TARVO_LOG(2) << "newton converged: test < TOLF";
            return finish_(0);
        }
        if (check == 0) {
            test = 0;
            for (int i = 0; i < n; ++i)
                test = maxOf(test, std::fabs(x_[i] - xold_[i]) / std::max(std::fabs(x_[i]), 1.0));
            // A step too short to matter, with residuals still above TOLF, is no proof of a root: the
            // iteration may as well have stalled.
            if (test < TOLX_) {
                TARVO_LOG(2) << deltaxExit;
                return finish_(-5);
            }
            // Newton's method lowers f by orders of magnitude near a root; an iteration that lowers it by
            // less than a part in 1e8 has come to a plateau, where further Jacobians only crawl along it.
            // So has one that crawls: steps cut short, by the line search or by the limit on their length, that
            // take iteration after iteration for a part in 1e4 of f. A solve that is only passing through a
            // slow stretch lowers f by more than that over a few iterations.
            double& fEarlier = fAfter[iterations_ % crawlIterations];
            const bool crawls = iterations_ >= crawlIterations && fEarlier - f < crawlDecrease * fEarlier;
            fEarlier = f;
            if (fold - f < stalledDecrease * fold || crawls) {
                TARVO_LOG(2) << plateauExit;
                return finish_(-4);
            }
        } else {
            // The search gave up: a gradient of f that is nearly zero means a minimum of f that is no
            // root of F.
            const double den = std::max(f, 0.5 * n);
            test = 0;
            for (int i = 0; i < n; ++i)
                test = maxOf(test, std::fabs(g_[i]) * std::max(std::fabs(x_[i]), 1.0) / den);
            return finish_(test < TOLMIN_ ? -1 : check);
        }
        ++iterations_;
    }
    TARVO_LOG(2) << "newton reached MAXITS";
    return finish_(2);
}

void SolverNleRecipes::restoreStart_(double fold, double& f) {
    std::copy(xold_.begin(), xold_.end(), x_.begin());
    std::copy(Fold_.begin(), Fold_.end(), F_.begin());
    f = fold;
}

int SolverNleRecipes::lnsrch_(double fold, double& f, double stpmax) {
    const int n = n_;
    double sum = 0;
    for (int i = 0; i < n; ++i)
        sum += p_[i] * p_[i];
    sum = std::sqrt(sum);
    if (sum > stpmax)
        for (int i = 0; i < n; ++i)
            p_[i] *= stpmax / sum;
    double slope = 0;
    for (int i = 0; i < n; ++i)
        slope += g_[i] * p_[i];
    if (!(slope < 0)) {
        TARVO_LOG(2) << "Caution positive or zero slope = " << slope;
    }
    double test = 0;
    for (int i = 0; i < n; ++i)
        test = maxOf(test, std::fabs(p_[i]) / std::max(std::fabs(xold_[i]), 1.0));
    if (!std::isfinite(test) || std::isnan(slope)) return 8;
    if (test == 0) return 9;
    const double alamin = TOLX_ / test;
    double alam = 1, alam2 = 0, f2 = 0, tmplam = 0;
    // The full step is always tried; a shorter one only while it moves x by more than TOLX.
    const auto tooShort = [&] {
        if (alam >= alamin) return false;
        restoreStart_(fold, f);
        TARVO_LOG(2) << deltaxExit;
        return true;
    };
    for (;;) {
        for (int i = 0; i < n; ++i)
            x_[i] = xold_[i] + alam * p_[i];
        f = evaluateF();
        if (!std::isfinite(f)) {
            // Residuals that the model cannot evaluate there: the step is too long.
            alam2 = 0;
            alam *= 0.1;
            if (tooShort()) return -5;
            continue;
        }
        // This system's own exit: a trial that changes f by less than TOLF, relatively, ends the search. Of
        // the two points, the better one stays.
        if ((std::fabs(f + fold) + TOLF_) * TOLF_ > std::fabs(f - fold)) {
            if (f > fold) restoreStart_(fold, f);
            TARVO_LOG(2) << plateauExit;
            return -4;
        }
        // Sufficient decrease against the start of the step.
        if (f <= fold + ALF_ * alam * slope) return 0;
        if (alam2 == 0) {
            tmplam = -slope / (2 * (f - fold - slope));
        } else {
            const double rhs1 = f - fold - alam * slope;
            const double rhs2 = f2 - fold - alam2 * slope;
            const double a = (rhs1 / (alam * alam) - rhs2 / (alam2 * alam2)) / (alam - alam2);
            const double b = (-alam2 * rhs1 / (alam * alam) + alam * rhs2 / (alam2 * alam2)) / (alam - alam2);
            if (a == 0) {
                tmplam = -slope / (2 * b);
            } else {
                const double disc = b * b - 3 * a * slope;
                if (disc < 0)
                    tmplam = 0.5 * alam;
                else if (b <= 0)
                    tmplam = (-b + std::sqrt(disc)) / (3 * a);
                else
                    tmplam = -slope / (b + std::sqrt(disc));
            }
        }
        tmplam = std::min(tmplam, 0.5 * alam); // leaves the 0.5 alam of the case disc < 0 as it is
        alam2 = alam;
        f2 = f;
        alam = std::max(tmplam, 0.1 * alam); // a NaN tmplam comes through, and is caught here
        if (std::isnan(alam)) {
            restoreStart_(fold, f);
            return 8;
        }
        if (tooShort()) return -5;
    }
}
