#include <tarvo/core/Automatic.h>

#include <tarvo/core/ObjectiveNleAd.h>
#include <tarvo/utility/Log.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {
// verifyDerivatives is asked for explicitly: its lines show at the default verbosity.
constexpr int verbosityFile = 0;

// Whether X keeps the unknown inside the model range of its scaler; a scaler without a range
// (xmin equal to xmax) sets no bound.
bool insideRange(const Scaler& scaler, double X) {
    const double lo = std::min(scaler.xmin(), scaler.xmax()), hi = std::max(scaler.xmin(), scaler.xmax());
    if (lo == hi) return true;
    const double x = scaler.x(X);
    return x >= lo && x <= hi;
}
} // namespace

// Only the most derived class initialises the virtual base.
Automatic::Automatic() : SolverNleInterface(0, nullptr) {}

double Automatic::calculateFJ() {
    (*objective_)(x_.data(), F_.data(), &J_);
    ++nAnalyticalJ_;
    return merit(F_.data());
}

void Automatic::verifyDerivatives() {
    const int n = n_;
    calculateFJ();
    std::vector<double> minus(n), plus(n);
    const ObjectiveNleAd* ad = objectiveAd_();
    const double tol = std::sqrt(1e-6);
    for (int i = 0; i < n; ++i) {
        const double xi = x_[i];
        const double h = std::fabs(xi) * 1e-6 + 1e-6;
        double lo = xi - h, hi = xi + h;
        if (ad && !insideRange(ad->scaler(i), lo)) lo = xi;
        if (ad && !insideRange(ad->scaler(i), hi)) hi = xi;
        if (lo == hi) continue;
        x_[i] = lo;
        (*objective_)(x_.data(), minus.data(), nullptr);
        x_[i] = hi;
        (*objective_)(x_.data(), plus.data(), nullptr);
        x_[i] = xi;
        for (int j = 0; j < n; ++j) {
            const double fd = (plus[j] - minus[j]) / (hi - lo);
            const double exact = J_(j, i);
            if (std::fabs(fd) + std::fabs(exact) < 2.220446049250313e-16) continue;
            // Equal in the relative sense of the plateau test of the line search.
            const bool equal = (std::fabs(fd + exact) + tol) * tol > std::fabs(fd - exact);
            TARVO_LOG(1) << "dF[" << j << "]/dx[" << i << "] = " << exact << " error = " << fd - exact
                         << (equal ? "" : " !!");
        }
    }
}
