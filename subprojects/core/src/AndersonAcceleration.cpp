#include <tarvo/core/AndersonAcceleration.h>

#include <algorithm>
#include <cassert>
#include <cmath>

namespace {
// A change of the steps whose part outside the newer ones is below this share of its length adds rounding,
// not information, to the least squares: it is left out.
constexpr double dependent = 1e-10;

double dot(const double* a, const double* b, unsigned n) {
    double s = 0;
    for (unsigned i = 0; i < n; ++i) s += a[i] * b[i];
    return s;
}
} // namespace

AndersonAcceleration::AndersonAcceleration(unsigned size, unsigned memory)
    : size_(size), memory_(memory), step_(size), image_(size), stepChanges_(size * memory),
      imageChanges_(size * memory), basis_(size * memory), r_(memory * memory), coefficients_(memory), kept_(memory) {}

void AndersonAcceleration::next(const std::vector<double>& u, const std::vector<double>& g, std::vector<double>& next) {
    assert(u.size() == size_ && g.size() == size_);
    next = g;
    if (count_ > 0 && memory_ > 0) {
        newest_ = (newest_ + 1) % memory_;
        double *dStep = stepChange_(0), *dImage = imageChange_(0);
        for (unsigned i = 0; i < size_; ++i) {
            dStep[i] = (g[i] - u[i]) - step_[i];
            dImage[i] = g[i] - image_[i];
        }
    }
    for (unsigned i = 0; i < size_; ++i) {
        step_[i] = g[i] - u[i];
        image_[i] = g[i];
    }
    const unsigned columns = std::min(count_, memory_);
    ++count_;
    // The step's least squares over the changes, newest first, by modified Gram-Schmidt: Q R = the changes
    // kept, then R c = Q' step; the next point is g less the changes of the images in the same combination.
    unsigned k = 0;
    for (unsigned j = 0; j < columns; ++j) {
        double* q = &basis_[k * size_];
        std::copy(stepChange_(j), stepChange_(j) + size_, q);
        const double length = std::sqrt(dot(q, q, size_));
        for (unsigned l = 0; l < k; ++l) {
            const double* ql = &basis_[l * size_];
            const double along = dot(ql, q, size_);
            r_[l * memory_ + k] = along;
            for (unsigned i = 0; i < size_; ++i) q[i] -= along * ql[i];
        }
        const double rest = std::sqrt(dot(q, q, size_));
        if (!(rest > dependent * length)) continue;
        for (unsigned i = 0; i < size_; ++i) q[i] /= rest;
        r_[k * memory_ + k] = rest;
        kept_[k++] = j;
    }
    for (unsigned l = k; l-- > 0;) {
        double c = dot(&basis_[l * size_], step_.data(), size_);
        for (unsigned m = l + 1; m < k; ++m) c -= r_[l * memory_ + m] * coefficients_[m];
        coefficients_[l] = c / r_[l * memory_ + l];
    }
    for (unsigned l = 0; l < k; ++l) {
        const double* dImage = imageChange_(kept_[l]);
        for (unsigned i = 0; i < size_; ++i) next[i] -= coefficients_[l] * dImage[i];
    }
}
