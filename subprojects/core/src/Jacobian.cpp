#include <tarvo/core/Jacobian.h>

#include <suitesparse/cs.h>

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <new>
#include <ostream>
#include <utility>

Jacobian::Jacobian(unsigned n) {
    resize(n);
}

Jacobian::~Jacobian() {
    release_();
}

void Jacobian::release_() {
    freeFactors_();
    if (work_) work_ = static_cast<double*>(cs_di_free(work_));
    if (sparse_) sparse_ = cs_di_spfree(sparse_);
    dense_.clear();
    dense_.shrink_to_fit();
    pivots_.clear();
    pivots_.shrink_to_fit();
    patternColumns_.clear();
    patternRows_.clear();
}

void Jacobian::freeFactors_() {
    lu_.forget();
    if (symbolic_) symbolic_ = cs_di_sfree(symbolic_);
}

void Jacobian::resize(unsigned n) {
    release_();
    n_ = n;
    if (sparse()) {
        // Room for a few entries per row to begin with, as a flowsheet's equations each involve a few
        // unknowns; filling grows the store to what the residuals need. A share of the full matrix would
        // grow with the square of the size of the flowsheet.
        const int nn = static_cast<int>(n);
        sparse_ = cs_di_spalloc(nn, nn, std::max(1, 8 * nn), 1, 0);
        if (!sparse_) throw std::bad_alloc();
    } else {
        dense_.assign(static_cast<std::size_t>(n) * n, 0.0);
        pivots_.assign(n, 0);
    }
    clear();
}

void Jacobian::clear() {
    if (sparse_) {
        std::memset(sparse_->p, 0, sizeof(int) * (n_ + 1));
    } else {
        std::fill(dense_.begin(), dense_.end(), 0.0);
    }
}

const double& Jacobian::operator()(unsigned i, unsigned j) const {
    assert(i < n_ && j < n_);
    if (!sparse_) return dense_[static_cast<std::size_t>(i) * n_ + j];
    const int row = static_cast<int>(i);
    for (int k = sparse_->p[j]; k < sparse_->p[j + 1]; ++k)
        if (sparse_->i[k] == row) return sparse_->x[k];
    return zero_;
}

void Jacobian::reserveSparse_() {
    const int used = sparse_->p[n_];
    if (used < sparse_->nzmax) return;
    if (!cs_di_sprealloc(sparse_, 2 * sparse_->nzmax)) throw std::bad_alloc();
}

void Jacobian::set(unsigned i, unsigned j, double v) {
    assert(i < n_ && j < n_);
    if (!sparse_) {
        dense_[static_cast<std::size_t>(i) * n_ + j] = v;
        return;
    }
    const int row = static_cast<int>(i);
    int k = sparse_->p[j];
    for (; k < sparse_->p[j + 1] && sparse_->i[k] <= row; ++k) {
        if (sparse_->i[k] == row) {
            sparse_->x[k] = v;
            return;
        }
    }
    // Insert at k, shifting the rest of the store by one.
    reserveSparse_();
    const int tail = sparse_->p[n_] - k;
    std::memmove(sparse_->i + k + 1, sparse_->i + k, sizeof(int) * tail);
    std::memmove(sparse_->x + k + 1, sparse_->x + k, sizeof(double) * tail);
    sparse_->i[k] = row;
    sparse_->x[k] = v;
    for (unsigned c = j + 1; c <= n_; ++c)
        ++sparse_->p[c];
}

void Jacobian::multiply(unsigned i, unsigned j, double factor) {
    if (!sparse_) {
        dense_[static_cast<std::size_t>(i) * n_ + j] *= factor;
        return;
    }
    const int row = static_cast<int>(i);
    for (int k = sparse_->p[j]; k < sparse_->p[j + 1]; ++k)
        if (sparse_->i[k] == row) sparse_->x[k] *= factor;
}

bool Jacobian::nonZero(unsigned i, unsigned j) const {
    if (!sparse_) return dense_[static_cast<std::size_t>(i) * n_ + j] != 0; // NaN counts as present
    const int row = static_cast<int>(i);
    for (int k = sparse_->p[j]; k < sparse_->p[j + 1]; ++k)
        if (sparse_->i[k] == row) return true;
    return false;
}

unsigned Jacobian::entries() const {
    if (sparse_) return static_cast<unsigned>(sparse_->p[n_]);
    unsigned count = 0;
    for (double v : dense_)
        count += v != 0;
    return count;
}

void Jacobian::fill(const std::vector<Value>& residuals, const double* factors, std::vector<double>& columnSums) {
    assert(residuals.size() == n_);
    if (!sparse_) {
        std::fill(dense_.begin(), dense_.end(), 0.0);
        return fillColumns(0, residuals, factors, columnSums);
    }
    columnSums.assign(n_, 0.0);
    const auto factor = [factors](int j) { return factors ? factors[j] : 1.0; };
    // Count the entries of each column, then place them: rows come in ascending order within a column.
    // A derivative that the residual carries is an entry even where it is zero: where it cancels in one
    // iteration and not in the next, the pattern, and with it the ordering of the factors, stays the same.
    int* p = sparse_->p;
    std::fill(p, p + n_ + 1, 0);
    for (unsigned r = 0; r < n_; ++r)
        residuals[r].active().forEachDerivative([&](int j, double) { ++p[j + 1]; });
    for (unsigned j = 0; j < n_; ++j) p[j + 1] += p[j];
    if (p[n_] > sparse_->nzmax && !cs_di_sprealloc(sparse_, p[n_])) throw std::bad_alloc();
    std::vector<int>& next = insertionPoints_;
    next.assign(p, p + n_);
    for (unsigned r = 0; r < n_; ++r)
        residuals[r].active().forEachDerivative([&](int j, double d) {
            const double v = d * factor(j);
            const int k = next[j]++;
            sparse_->i[k] = static_cast<int>(r);
            sparse_->x[k] = v;
            columnSums[j] += std::fabs(v);
        });
}

void Jacobian::fillColumns(unsigned first, const std::vector<Value>& residuals, const double* factors,
                           std::vector<double>& columnSums) {
    assert(!sparse_ && residuals.size() == n_);
    columnSums.resize(n_);
    const int directions = std::min(Active::numdir(), static_cast<int>(n_ - first));
    for (int j = 0; j < directions; ++j) {
        columnSums[first + j] = 0;
        for (unsigned r = 0; r < n_; ++r) dense_[static_cast<std::size_t>(r) * n_ + first + j] = 0;
    }
    for (unsigned r = 0; r < n_; ++r)
        residuals[r].active().forEachDerivative([&](int j, double d) {
            const unsigned column = first + static_cast<unsigned>(j);
            const double v = d * (factors ? factors[column] : 1.0);
            dense_[static_cast<std::size_t>(r) * n_ + column] = v;
            columnSums[column] += std::fabs(v);
        });
}

void Jacobian::multiplyTransposed(const double* v, double* out) const {
    if (!sparse_) {
        for (unsigned j = 0; j < n_; ++j)
            out[j] = 0;
        for (unsigned i = 0; i < n_; ++i) {
            const double* row = &dense_[static_cast<std::size_t>(i) * n_];
            for (unsigned j = 0; j < n_; ++j)
                out[j] += row[j] * v[i];
        }
        return;
    }
    for (unsigned j = 0; j < n_; ++j) {
        double s = 0;
        for (int k = sparse_->p[j]; k < sparse_->p[j + 1]; ++k)
            s += sparse_->x[k] * v[sparse_->i[k]];
        out[j] = s;
    }
}

int Jacobian::decompose() {
    if (sparse_) {
        if (!symbolic_ || !samePattern_()) {
            freeFactors_();
            // Ordering 2: minimum degree on A'A, with dense rows dropped, the choice for LU.
            symbolic_ = cs_di_sqr(2, sparse_, 0);
            if (!symbolic_) return 1;
            const int entries = sparse_->p[n_];
            patternColumns_.assign(sparse_->p, sparse_->p + n_ + 1);
            patternRows_.assign(sparse_->i, sparse_->i + entries);
        }
        if (!lu_.factor(*sparse_, *symbolic_, 0.001)) return 1;
        if (!work_) work_ = static_cast<double*>(cs_di_malloc(static_cast<int>(n_), sizeof(double)));
        return work_ ? 0 : 1;
    }
    const unsigned n = n_;
    double* a = dense_.data();
    if (n == 1) {
        if (a[0] == 0) return 6;
        a[0] = 1 / a[0];
        return 0;
    }
    for (unsigned k = 0; k < n; ++k) {
        unsigned p = k;
        double big = std::fabs(a[k * n + k]);
        for (unsigned i = k + 1; i < n; ++i) {
            const double v = std::fabs(a[i * n + k]);
            if (v > big) {
                big = v;
                p = i;
            }
        }
        pivots_[k] = static_cast<int>(p);
        if (p != k)
            for (unsigned j = 0; j < n; ++j)
                std::swap(a[k * n + j], a[p * n + j]);
        const double pivot = a[k * n + k];
        if (pivot == 0) return 6;
        for (unsigned i = k + 1; i < n; ++i) {
            double& l = a[i * n + k];
            if (l == 0) continue;
            l /= pivot;
            const double* rowk = a + k * n;
            double* rowi = a + i * n;
            for (unsigned j = k + 1; j < n; ++j)
                rowi[j] -= l * rowk[j];
        }
    }
    return 0;
}

int Jacobian::solve(double* b) {
    const int n = static_cast<int>(n_);
    if (sparse_) {
        const cs_di_numeric* factors = lu_.factors();
        assert(symbolic_ && factors && work_);
        cs_di_ipvec(factors->pinv, b, work_, n);
        cs_di_lsolve(factors->L, work_);
        cs_di_usolve(factors->U, work_);
        cs_di_ipvec(symbolic_->q, work_, b, n);
        return 0;
    }
    const double* a = dense_.data();
    if (n == 1) {
        b[0] *= a[0];
        return 0;
    }
    for (int k = 0; k < n; ++k)
        if (pivots_[k] != k) std::swap(b[k], b[pivots_[k]]);
    for (int i = 1; i < n; ++i) {
        double s = b[i];
        const double* row = a + static_cast<std::size_t>(i) * n;
        for (int j = 0; j < i; ++j)
            s -= row[j] * b[j];
        b[i] = s;
    }
    for (int i = n - 1; i >= 0; --i) {
        const double* row = a + static_cast<std::size_t>(i) * n;
        if (row[i] == 0) return 7;
        double s = b[i];
        for (int j = i + 1; j < n; ++j)
            s -= row[j] * b[j];
        b[i] = s / row[i];
    }
    return 0;
}

int Jacobian::factorAndSolve(double* b) {
    const int status = decompose();
    return status == 0 ? solve(b) : status;
}

bool Jacobian::samePattern_() const {
    const int entries = sparse_->p[n_];
    return patternColumns_.size() == n_ + 1 && std::equal(sparse_->p, sparse_->p + n_ + 1, patternColumns_.begin()) &&
           std::equal(sparse_->i, sparse_->i + entries, patternRows_.begin());
}

void Jacobian::print(std::ostream& out) const {
    for (unsigned i = 0; i < n_; ++i) {
        for (unsigned j = 0; j < n_; ++j)
            out << (j ? " " : "") << (*this)(i, j);
        out << '\n';
    }
}

bool Jacobian::write(const std::string& file) const {
    std::FILE* f = std::fopen(file.c_str(), "w");
    if (!f) return false;
    if (sparse_) {
        for (unsigned j = 0; j < n_; ++j)
            for (int k = sparse_->p[j]; k < sparse_->p[j + 1]; ++k)
                std::fprintf(f, "%d %d %f\n", sparse_->i[k], static_cast<int>(j), sparse_->x[k]);
    } else {
        for (unsigned i = 0; i < n_; ++i)
            for (unsigned j = 0; j < n_; ++j)
                if (nonZero(i, j))
                    std::fprintf(f, "%d %d %f\n", static_cast<int>(i), static_cast<int>(j), (*this)(i, j));
    }
    return std::fclose(f) == 0;
}
