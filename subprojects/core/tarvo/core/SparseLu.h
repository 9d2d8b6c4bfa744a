#ifndef TARVO_CORE_SPARSELU_H
#define TARVO_CORE_SPARSELU_H

#include <vector>

struct cs_di_sparse;
struct cs_di_symbolic;
struct cs_di_numeric;

// The LU factors of a sparse matrix in a column ordering, by left-looking elimination with threshold partial
// pivoting: a column's pivot is its diagonal where that is at least `tol` times the largest candidate, else
// the first largest. Newton's method factors a matrix of one pattern at every iteration. The first
// factorisation of a pattern finds, for each column, the rows that its triangular solve reaches, by searches
// of the graph of L, and records them in the order of the solve; the next ones take them from the record,
// which spares the searches up to the first column whose pivot falls on another row than before, and searches
// from there. Either way the factors are those of the library's own sparse LU, operation for operation, which
// a test checks to the last bit.
class SparseLu {
public:
    SparseLu() = default;
    ~SparseLu();
    SparseLu(const SparseLu&) = delete;
    SparseLu& operator=(const SparseLu&) = delete;

    // Factors A(:, q) with the ordering q of `symbolic`; false where a column holds no non-zero candidate,
    // after which there are no factors. A matrix of another pattern than the last one needs forget() first.
    bool factor(const cs_di_sparse& A, const cs_di_symbolic& symbolic, double tol);
    // Drops the record: the next factorisation searches again.
    void forget();
    // L, U and the row permutation of the last factorisation that succeeded; null after a failure or
    // forget().
    const cs_di_numeric* factors() const { return factors_; }
    // Whether the last factorisation went wholly by the record.
    bool repeated() const { return repeated_; }

private:
    // Fresh factors for n columns, before a search from the first.
    void start_(const cs_di_symbolic& symbolic, int n);
    // The factorisation from the record, up to the column whose pivot moves: the index of that column, n
    // where none does.
    int repeat_(const cs_di_sparse& A, const int* q, double tol);
    // The state of a search that has reached column k, from a repetition that stopped there.
    void resumeAt_(int k, int n);
    // The factorisation with the searches, from column `from` on; records what the next one repeats.
    bool search_(const cs_di_sparse& A, const int* q, double tol, int from);
    void free_();

    cs_di_numeric* factors_ = nullptr;
    bool recorded_ = false;
    bool repeated_ = false;
    std::vector<double> x_;      // the column being solved, zero between columns
    std::vector<int> reach_;     // the library's work array of the searches
    std::vector<int> pivotRows_; // the original row of each column's pivot
    std::vector<int> rowsOfL_;   // L's rows before the permutation, as the solve of a column addresses them
    // The rows of column k that are not yet pivots, in the order of its solve, which decides among equal
    // candidates: candidates_[candidateStart_[k]] onwards.
    std::vector<int> candidates_;
    std::vector<int> candidateStart_;
};

#endif
