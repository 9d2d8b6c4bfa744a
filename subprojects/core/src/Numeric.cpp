#include <tarvo/core/Numeric.h>

#include <tarvo/core/ObjectiveNleInterface.h>
#include <tarvo/utility/Log.h>

namespace {
// Quiet as the rest of the solver.
constexpr int verbosityFile = -3;
} // namespace

// Only the most derived class initialises the virtual base.
Numeric::Numeric() : SolverNleInterface(0, nullptr) {
    resizeSpare_(n_);
}

void Numeric::resize(int n) {
    if (n == n_) return;
    SolverNleInterface::resize(n);
    resizeSpare_(n);
}

double Numeric::calculateFJ() {
    TARVO_LOG(4) << "calculating reference base case, n_ = " << n_;
    (*objective_)(x_.data(), F_.data(), nullptr);
    J_.clear();
    for (int j = 0; j < n_; ++j) {
        const double saved = x_[j];
        x_[j] = (saved + 0.0001) * 1.0001;
        (*objective_)(x_.data(), y_.data(), nullptr);
        const double h = x_[j] - saved;
        for (int i = 0; i < n_; ++i) {
            const double d = (y_[i] - F_[i]) / h;
            // The matrix is clear: an exact zero need not be stored, and the sparse form stays sparse.
            if (d != 0) J_.set(i, j, d);
        }
        x_[j] = saved;
    }
    ++nNumericalJ_;
    return merit(F_.data());
}
