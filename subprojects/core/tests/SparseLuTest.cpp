#include <tarvo/core/SparseLu.h>

#include <suitesparse/cs.h>

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

namespace {

// A square matrix of random pattern in compressed columns: the diagonal, and each other entry with
// probability `density`. Some stored entries are zero, as a Jacobian keeps a derivative that cancels.
struct Matrix {
    int n;
    std::vector<int> p, i;
    std::vector<double> x;

    Matrix(int size, double density, std::mt19937& random) : n(size) {
        std::bernoulli_distribution present(density);
        p.push_back(0);
        for (int j = 0; j < n; ++j) {
            for (int r = 0; r < n; ++r)
                if (r == j || present(random)) i.push_back(r);
            p.push_back(static_cast<int>(i.size()));
        }
        x.assign(i.size(), 0.0);
    }
    // New values on the same pattern; `weakDiagonal` makes the diagonal of that share of columns small, so
    // that the pivot moves off it. Only entries off the diagonal are ever zero.
    void values(std::mt19937& random, double weakDiagonal) {
        std::uniform_real_distribution<double> value(-1.0, 1.0);
        std::bernoulli_distribution weak(weakDiagonal), zero(0.05);
        for (int j = 0; j < n; ++j)
            for (int k = p[j]; k < p[j + 1]; ++k)
                x[k] = i[k] == j      ? (weak(random) ? 1e-6 : 4.0) * value(random)
                       : zero(random) ? 0.0
                                      : value(random);
    }
    cs_di view() { return cs_di{static_cast<int>(x.size()), n, n, p.data(), i.data(), x.data(), -1}; }
};

bool sameBits(const cs_di& a, const cs_di& b) {
    const int entries = a.p[a.n];
    return a.n == b.n && std::memcmp(a.p, b.p, sizeof(int) * (a.n + 1)) == 0 && entries == b.p[b.n] &&
           std::memcmp(a.i, b.i, sizeof(int) * entries) == 0 &&
           std::memcmp(a.x, b.x, sizeof(double) * entries) == 0;
}

// The library's own factorisation is the reference: the same pattern, ordering and threshold give the same
// factors, bit for bit, whether they were searched for or repeated from the record.
void expectFactorsOfTheLibrary(const SparseLu& lu, bool factored, const cs_di& A, const cs_dis& S) {
    cs_din* reference = cs_di_lu(&A, &S, 0.001);
    ASSERT_EQ(factored, reference != nullptr);
    if (reference) {
        const cs_din& mine = *lu.factors();
        EXPECT_TRUE(sameBits(*mine.L, *reference->L));
        EXPECT_TRUE(sameBits(*mine.U, *reference->U));
        EXPECT_EQ(std::memcmp(mine.pinv, reference->pinv, sizeof(int) * A.n), 0);
    } else {
        EXPECT_EQ(lu.factors(), nullptr);
    }
    cs_di_nfree(reference);
}

} // namespace

// Matrices of one pattern with new values each time, as Newton's iterations bring them: values near the last
// ones keep every pivot and go by the record; a diagonal that falls small moves a pivot, and the search runs
// again. Sizes from one column to a few hundred, patterns from nearly diagonal to a third full.
TEST(SparseLu, FactorsOfThePatternRepeatedAsTheLibraryMakesThem) {
    std::mt19937 random(20261124);
    int repeats = 0, searches = 0;
    for (const auto& [n, density] : {std::pair{1, 0.0}, {7, 0.3}, {40, 0.08}, {150, 0.02}, {300, 0.01}}) {
        Matrix matrix(n, density, random);
        matrix.values(random, 0.0);
        cs_di A = matrix.view();
        cs_dis* S = cs_di_sqr(2, &A, 0);
        ASSERT_NE(S, nullptr);
        SparseLu lu;
        for (int round = 0; round < 12; ++round) {
            SCOPED_TRACE(testing::Message() << "n " << n << " round " << round);
            if (round % 4 == 3) {
                matrix.values(random, 0.3);
            } else if (round > 0) {
                std::uniform_real_distribution<double> change(0.999, 1.001);
                for (double& v : matrix.x)
                    v *= change(random);
            }
            const bool factored = lu.factor(A, *S, 0.001);
            (lu.repeated() ? repeats : searches) += 1;
            expectFactorsOfTheLibrary(lu, factored, A, *S);
        }
        cs_di_sfree(S);
    }
    EXPECT_GT(repeats, 20);
    EXPECT_GT(searches, 5);
}

// A column without a non-zero candidate has no pivot: no factors, by the record or by a search, and the next
// matrix of the pattern factors again.
TEST(SparseLu, ASingularMatrixHasNoFactorsAndTheNextOneHas) {
    std::mt19937 random(7);
    Matrix matrix(30, 0.1, random);
    matrix.values(random, 0.0);
    cs_di A = matrix.view();
    cs_dis* S = cs_di_sqr(2, &A, 0);
    SparseLu lu;
    ASSERT_TRUE(lu.factor(A, *S, 0.001));
    const std::vector<double> good = matrix.x;
    for (int k = matrix.p[11]; k < matrix.p[12]; ++k)
        matrix.x[k] = 0.0; // column 11 empty in value
    for (int attempt = 0; attempt < 2; ++attempt) {
        EXPECT_FALSE(lu.factor(A, *S, 0.001));
        expectFactorsOfTheLibrary(lu, false, A, *S);
    }
    matrix.x = good;
    A = matrix.view();
    ASSERT_TRUE(lu.factor(A, *S, 0.001));
    expectFactorsOfTheLibrary(lu, true, A, *S);
    ASSERT_TRUE(lu.factor(A, *S, 0.001));
    EXPECT_TRUE(lu.repeated());
    cs_di_sfree(S);
}
