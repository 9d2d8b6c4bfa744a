#ifndef TARVO_CORE_JACOBIAN_H
#define TARVO_CORE_JACOBIAN_H

#include <tarvo/core/SparseLu.h>
#include <tarvo/value/Value.h>

#include <iosfwd>
#include <string>
#include <vector>

struct cs_di_sparse;
struct cs_di_symbolic;

// The Jacobian of a nonlinear system: row = equation, column = unknown. Below `threshold` unknowns it is
// a dense row-major array with an in-place LU; from `threshold` on it is a compressed-column sparse
// matrix factorised by a sparse LU. The form follows from the size alone and never changes in between.
class Jacobian {
public:
    // A dense LU beats the set-up of the sparse one below this size.
    static constexpr unsigned threshold = 100;

    explicit Jacobian(unsigned n = 0);
    ~Jacobian();
    Jacobian(const Jacobian&) = delete;
    Jacobian& operator=(const Jacobian&) = delete;

    // Frees everything and allocates for n unknowns, empty.
    void resize(unsigned n);
    unsigned size() const { return n_; }
    bool sparse() const { return n_ >= threshold; }

    // Element (i, j); an element that the sparse form does not hold reads as 0.
    const double& operator()(unsigned i, unsigned j) const;
    // Sets element (i, j); the sparse form inserts an absent element, keeping the rows of a column sorted.
    void set(unsigned i, unsigned j, double v);
    void multiply(unsigned i, unsigned j, double factor);
    // Whether (i, j) holds something: in dense form a non-zero or NaN, in sparse form a stored entry.
    bool nonZero(unsigned i, unsigned j) const;
    // The number of non-zeros (dense) or stored entries (sparse).
    unsigned entries() const;
    void clear();

    // The whole matrix from the derivatives of the residuals: row r from residual r, column j from
    // direction j times factors[j] (1 without factors). One pass over the stored derivatives; the sparse
    // form keeps only non-zeros. columnSums[j] receives the sum of the absolute values of column j.
    void fill(const std::vector<Value>& residuals, const double* factors, std::vector<double>& columnSums);
    // The dense form's columns from `first` on, column first + j from direction j, for a Jacobian whose
    // columns come in blocks of directions; columnSums as for fill, of these columns.
    void fillColumns(unsigned first, const std::vector<Value>& residuals, const double* factors,
                     std::vector<double>& columnSums);
    // out = transpose(J) * v.
    void multiplyTransposed(const double* v, double* out) const;

    // LU factorisation. Dense: 0, or 6 at a zero pivot (the matrix is overwritten by its factors).
    // Sparse: 0, or 1 if the ordering or the factorisation fails.
    int decompose();
    // Solves J x = b in place with the factors of decompose(). Dense: 0, or 7 at a zero diagonal.
    int solve(double* b);
    // decompose(), then solve(). The sparse form keeps its ordering and the course of its elimination for the
    // next matrix of the same pattern, as a Newton iteration brings.
    int factorAndSolve(double* b);

    // One line per row, the elements separated by blanks.
    void print(std::ostream& out) const;
    // "%d %d %f\n" per element that nonZero() reports; false if the file cannot be written.
    bool write(const std::string& file) const;
    // An n-by-n 24-bit bitmap of the structure and magnitudes: white where absent, red for NaN, green
    // growing with log10 of magnitudes above 1, blue with those below 1. A diagnostic.
    bool writeBmp(const std::string& file) const;

private:
    void release_();
    void freeFactors_();
    // Makes room for one more sparse entry, doubling the store when it is full.
    void reserveSparse_();
    // Whether the sparse matrix has the pattern that the symbolic analysis was made for.
    bool samePattern_() const;

    unsigned n_ = 0;
    std::vector<double> dense_; // n * n, row-major
    cs_di_sparse* sparse_ = nullptr;
    double zero_ = 0; // what reads of absent elements refer to
    std::vector<int> pivots_;
    std::vector<int> insertionPoints_; // where fill() puts the next entry of each sparse column
    double* work_ = nullptr;
    cs_di_symbolic* symbolic_ = nullptr;
    SparseLu lu_;
    std::vector<int> patternColumns_; // column pointers and row indices at the symbolic analysis
    std::vector<int> patternRows_;
};

#endif
