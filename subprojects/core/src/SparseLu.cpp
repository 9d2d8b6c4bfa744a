#include <tarvo/core/SparseLu.h>

#include <suitesparse/cs.h>

#include <algorithm>
#include <cmath>
#include <new>

SparseLu::~SparseLu() {
    free_();
}

void SparseLu::free_() {
    if (factors_) factors_ = cs_di_nfree(factors_);
}

void SparseLu::forget() {
    free_();
    recorded_ = false;
}

bool SparseLu::factor(const cs_di_sparse& A, const cs_di_symbolic& symbolic, double tol) {
    const int n = A.n;
    int from = 0;
    if (recorded_ && factors_) {
        from = repeat_(A, symbolic.q, tol);
        repeated_ = from == n;
        if (repeated_) return true;
        resumeAt_(from, n);
    } else {
        start_(symbolic, n);
    }
    repeated_ = false;
    if (search_(A, symbolic.q, tol, from)) return true;
    forget();
    return false;
}

void SparseLu::start_(const cs_di_symbolic& symbolic, int n) {
    // Room for the factors as the ordering estimates them; the elimination grows it where it needs more.
    free_();
    factors_ = static_cast<cs_di_numeric*>(cs_di_calloc(1, sizeof(cs_di_numeric)));
    if (!factors_) throw std::bad_alloc();
    factors_->L = cs_di_spalloc(n, n, std::max(1, static_cast<int>(symbolic.lnz)), 1, 0);
    factors_->U = cs_di_spalloc(n, n, std::max(1, static_cast<int>(symbolic.unz)), 1, 0);
    factors_->pinv = static_cast<int*>(cs_di_malloc(n, sizeof(int)));
    if (!factors_->L || !factors_->U || !factors_->pinv) throw std::bad_alloc();
    std::fill(factors_->pinv, factors_->pinv + n, -1);
    std::fill(factors_->L->p, factors_->L->p + n + 1, 0);
    x_.assign(n, 0.0);
    reach_.assign(2 * static_cast<std::size_t>(n), 0);
    pivotRows_.assign(n, -1);
    candidates_.clear();
    candidateStart_.assign(n + 1, 0);
}

void SparseLu::resumeAt_(int k, int n) {
    // The columns before k stand as a search would have made them: L's rows go back to the numbering of the
    // elimination, and the rows pivoted from k on are candidates again.
    cs_di& L = *factors_->L;
    std::copy(rowsOfL_.begin(), rowsOfL_.begin() + L.p[k], L.i);
    int* pinv = factors_->pinv;
    for (int i = 0; i < n; ++i)
        if (pinv[i] >= k) pinv[i] = -1;
    candidates_.resize(candidateStart_[k]);
}

bool SparseLu::search_(const cs_di_sparse& A, const int* q, double tol, int from) {
    const int n = A.n;
    cs_di& L = *factors_->L;
    cs_di& U = *factors_->U;
    int* pinv = factors_->pinv;
    int lnz = L.p[from], unz = from ? U.p[from] : 0;
    for (int k = from; k < n; ++k) {
        L.p[k] = lnz;
        U.p[k] = unz;
        // A column adds at most n entries to each factor.
        if ((lnz + n > L.nzmax && !cs_di_sprealloc(&L, 2 * L.nzmax + n)) ||
            (unz + n > U.nzmax && !cs_di_sprealloc(&U, 2 * U.nzmax + n)))
            throw std::bad_alloc();
        const int col = q ? q[k] : k;
        // x = L \ A(:, col) over the rows that the columns of L so far reach, in reach_[top..n).
        const int top = cs_di_spsolve(&L, &A, col, reach_.data(), x_.data(), pinv, 1);
        candidateStart_[k] = static_cast<int>(candidates_.size());
        int ipiv = -1;
        double largest = -1;
        for (int p = top; p < n; ++p) {
            const int i = reach_[p];
            if (pinv[i] < 0) {
                candidates_.push_back(i);
                const double t = std::fabs(x_[i]);
                if (t > largest) {
                    largest = t;
                    ipiv = i;
                }
            } else {
                U.i[unz] = pinv[i];
                U.x[unz++] = x_[i];
            }
        }
        if (ipiv == -1 || largest <= 0) return false;
        if (pinv[col] < 0 && std::fabs(x_[col]) >= largest * tol) ipiv = col;
        const double pivot = x_[ipiv];
        U.i[unz] = k;
        U.x[unz++] = pivot;
        pinv[ipiv] = k;
        pivotRows_[k] = ipiv;
        L.i[lnz] = ipiv;
        L.x[lnz++] = 1;
        for (int p = top; p < n; ++p) {
            const int i = reach_[p];
            if (pinv[i] < 0) {
                L.i[lnz] = i;
                L.x[lnz++] = x_[i] / pivot;
            }
            x_[i] = 0;
        }
    }
    L.p[n] = lnz;
    U.p[n] = unz;
    candidateStart_[n] = static_cast<int>(candidates_.size());
    rowsOfL_.assign(L.i, L.i + lnz);
    for (int p = 0; p < lnz; ++p)
        L.i[p] = pinv[L.i[p]];
    recorded_ = true;
    return true;
}

int SparseLu::repeat_(const cs_di_sparse& A, const int* q, double tol) {
    const int n = A.n;
    const cs_di& L = *factors_->L;
    const cs_di& U = *factors_->U;
    const int* pinv = factors_->pinv; // final: a row is not yet a pivot at column k where pinv >= k
    double* x = x_.data();
    for (int k = 0; k < n; ++k) {
        const int col = q ? q[k] : k;
        for (int p = A.p[col]; p < A.p[col + 1]; ++p)
            x[A.i[p]] = A.x[p];
        // U's entries of the column, but the last, are the rows pivoted before, in the order of the solve.
        // The solve divides each by the diagonal of L, 1, which changes nothing.
        const int last = U.p[k + 1] - 1;
        for (int p = U.p[k]; p < last; ++p) {
            const int J = U.i[p];
            const double xj = x[pivotRows_[J]];
            for (int r = L.p[J] + 1; r < L.p[J + 1]; ++r)
                x[rowsOfL_[r]] -= L.x[r] * xj;
        }
        int ipiv = -1;
        double largest = -1;
        for (int c = candidateStart_[k]; c < candidateStart_[k + 1]; ++c) {
            const double t = std::fabs(x[candidates_[c]]);
            if (t > largest) {
                largest = t;
                ipiv = candidates_[c];
            }
        }
        const bool usable = ipiv != -1 && largest > 0;
        if (usable && pinv[col] >= k && std::fabs(x[col]) >= largest * tol) ipiv = col;
        if (!usable || ipiv != pivotRows_[k]) {
            std::fill(x_.begin(), x_.end(), 0.0);
            return k;
        }
        for (int p = U.p[k]; p < last; ++p)
            U.x[p] = x[pivotRows_[U.i[p]]];
        const double pivot = x[ipiv];
        U.x[last] = pivot;
        for (int r = L.p[k] + 1; r < L.p[k + 1]; ++r)
            L.x[r] = x[rowsOfL_[r]] / pivot;
        for (int c = candidateStart_[k]; c < candidateStart_[k + 1]; ++c)
            x[candidates_[c]] = 0;
        for (int p = U.p[k]; p < last; ++p)
            x[pivotRows_[U.i[p]]] = 0;
    }
    return n;
}
