#include <tarvo/core/Jacobian.h>
#include <tarvo/value/ActiveContext.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <utility>

namespace {

// A 3x3 system whose first pivot is 0, so that row exchanges are needed: J x = b with x = (1, 2, 3).
void fillPivoting(Jacobian& J) {
    const double a[3][3] = {{0, 2, 1}, {1, 1, 1}, {4, 0, -1}};
    for (unsigned i = 0; i < 3; ++i)
        for (unsigned j = 0; j < 3; ++j)
            J.set(i, j, a[i][j]);
}

std::string tempFile(const std::string& name) {
    return testing::TempDir() + name;
}

} // namespace

TEST(Jacobian, StorageFormFollowsTheSize) {
    EXPECT_FALSE(Jacobian(99).sparse());
    EXPECT_TRUE(Jacobian(100).sparse());
    Jacobian J(99);
    J.resize(100);
    EXPECT_TRUE(J.sparse());
    EXPECT_EQ(J.entries(), 0u);
}

TEST(Jacobian, SparseElementsReadBackAfterInsertionsInAnyOrder) {
    // 2500 entries in a matrix of 150 start with room for 2250, so the store must grow once.
    Jacobian J(150);
    std::map<std::pair<unsigned, unsigned>, double> expected;
    std::mt19937 random(7);
    std::uniform_int_distribution<unsigned> index(0, 149);
    while (expected.size() < 2500) {
        const unsigned i = index(random), j = index(random);
        const double v = 1.0 + expected.size();
        J.set(i, j, v);
        expected[{i, j}] = v;
    }
    J.set(3, 4, -7.0); // overwrite or insert
    expected[{3, 4}] = -7.0;
    EXPECT_EQ(J.entries(), expected.size());
    for (const auto& [ij, v] : expected)
        ASSERT_EQ(J(ij.first, ij.second), v);
    unsigned absent = 0;
    for (unsigned i = 0; i < 150; ++i)
        for (unsigned j = 0; j < 150; ++j)
            if (!expected.count({i, j})) {
                ++absent;
                ASSERT_EQ(J(i, j), 0.0);
                ASSERT_FALSE(J.nonZero(i, j));
            }
    EXPECT_EQ(absent, 150u * 150u - expected.size());
    J.multiply(3, 4, 0.5);
    EXPECT_EQ(J(3, 4), -3.5);
}

TEST(Jacobian, DenseSolveWithRowExchanges) {
    Jacobian J(3);
    fillPivoting(J);
    double g[3];
    const double F[3] = {1, -1, 2};
    J.multiplyTransposed(F, g); // columns dotted with F
    EXPECT_EQ(g[0], 7);
    EXPECT_EQ(g[1], 1);
    EXPECT_EQ(g[2], -2);
    double b[3] = {7, 6, 1};
    EXPECT_EQ(J.factorAndSolve(b), 0);
    EXPECT_NEAR(b[0], 1, 1e-14);
    EXPECT_NEAR(b[1], 2, 1e-14);
    EXPECT_NEAR(b[2], 3, 1e-14);

    Jacobian one(1);
    one.set(0, 0, 4);
    double c = 2;
    EXPECT_EQ(one.factorAndSolve(&c), 0);
    EXPECT_EQ(c, 0.5);
}

TEST(Jacobian, SingularMatricesGiveTheirStatus) {
    Jacobian dense(3);
    fillPivoting(dense);
    for (unsigned i = 0; i < 3; ++i)
        dense.set(i, 1, 0); // a zero column
    double b[3] = {1, 1, 1};
    EXPECT_EQ(dense.factorAndSolve(b), 6);
    Jacobian one(1);
    double c = 1;
    EXPECT_EQ(one.factorAndSolve(&c), 6);

    Jacobian sparse(120);
    for (unsigned i = 0; i < 120; ++i)
        if (i != 17) sparse.set(i, i, 1.0);
    std::vector<double> r(120, 1.0);
    EXPECT_EQ(sparse.factorAndSolve(r.data()), 1);
}

TEST(Jacobian, SparseSolveOfATridiagonalSystem) {
    // -x[i-1] + 4 x[i] - x[i+1] = b[i] with x[i] = i + 1; b worked out by hand from the rows.
    const unsigned n = 200;
    Jacobian J(n);
    std::vector<double> b(n);
    for (unsigned i = 0; i < n; ++i) {
        if (i > 0) J.set(i, i - 1, -1);
        J.set(i, i, 4);
        if (i + 1 < n) J.set(i, i + 1, -1);
        b[i] = 2.0 * (i + 1) + (i + 1 == n ? n + 1.0 : 0.0); // the last row lacks -x[n]
    }
    ASSERT_EQ(J.entries(), 3 * n - 2);
    // Solved again with the matrix doubled, as the next Newton iteration brings a new matrix of the same
    // pattern: the ordering may be kept, the factors must be new, and the solution halves.
    for (int pass = 0; pass < 2; ++pass) {
        std::vector<double> x = b;
        ASSERT_EQ(J.factorAndSolve(x.data()), 0);
        for (unsigned i = 0; i < n; ++i)
            ASSERT_NEAR(x[i], (i + 1.0) / (pass + 1), 1e-10) << i;
        for (unsigned i = 0; i < n; ++i)
            for (unsigned j = i > 0 ? i - 1 : 0; j <= std::min(i + 1, n - 1); ++j)
                J.multiply(i, j, 2.0);
    }
}

TEST(Jacobian, ColumnsFromDerivativesInBothForms) {
    for (unsigned n : {3u, 100u}) {
        SCOPED_TRACE(n);
        ActiveContext::push(static_cast<int>(n));
        std::vector<Value> x(n, Value(2.0));
        for (unsigned i = 0; i < n; ++i)
            x[i].active().setActive(static_cast<int>(i));
        // r0 = x0 * x1, r1 = 3 x1, the rest 0 with no derivatives.
        std::vector<Value> r(n, Value(0.0));
        r[0] = x[0] * x[1];
        r[1] = 3.0 * x[1];
        Jacobian J(n);
        std::vector<double> factors(n, 1.0), sums;
        factors[0] = 10.0;
        factors[1] = -1.0;
        J.fill(r, factors.data(), sums);
        EXPECT_EQ(sums[0], 20.0);
        EXPECT_EQ(sums[1], 5.0);
        for (unsigned i = 2; i < n; ++i)
            EXPECT_EQ(sums[i], 0.0);
        EXPECT_EQ(J(0, 0), 20.0);
        EXPECT_EQ(J(0, 1), -2.0);
        EXPECT_EQ(J(1, 1), -3.0);
        EXPECT_EQ(J(1, 0), 0.0);
        EXPECT_EQ(J.entries(), 3u);
        // At x1 = 0 the derivative of r0 by x0 is zero: the sparse form keeps the entry, the pattern of the
        // last matrix, which the ordering of its factors was made for.
        x[1] = Value(0.0);
        x[1].active().setActive(1);
        r[0] = x[0] * x[1];
        J.fill(r, factors.data(), sums);
        EXPECT_EQ(J(0, 0), 0.0);
        EXPECT_EQ(J(0, 1), -2.0);
        EXPECT_EQ(J.nonZero(0, 0), J.sparse());
        EXPECT_EQ(J.entries(), J.sparse() ? 3u : 2u);
        for (unsigned i = 0; i < n; ++i)
            x[i].active().inactivate(static_cast<int>(i));
        ActiveContext::pop();
    }
}

TEST(Jacobian, TextAndBitmapFiles) {
    Jacobian J(2);
    J.set(0, 1, 2.5);
    J.set(1, 0, std::numeric_limits<double>::quiet_NaN());
    J.set(1, 1, 1000);
    const std::string text = tempFile("jacobian.txt");
    ASSERT_TRUE(J.write(text));
    std::ifstream in(text);
    const std::string written((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    EXPECT_EQ(written, "0 1 2.500000\n1 0 nan\n1 1 1000.000000\n");

    const std::string bmp = tempFile("jacobian.bmp");
    ASSERT_TRUE(J.writeBmp(bmp));
    std::ifstream image(bmp, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(image)), std::istreambuf_iterator<char>());
    // 54 bytes of headers, then two rows of 2 pixels padded to 8 bytes, the bottom row first.
    ASSERT_EQ(bytes.size(), 54u + 2 * 8);
    const auto pixel = [&](int row, int column) { // blue, green, red of the matrix element
        const std::size_t at = 54 + (1 - row) * 8 + 3 * column;
        return std::vector<int>{static_cast<unsigned char>(bytes[at]),
                                static_cast<unsigned char>(bytes[at + 1]),
                                static_cast<unsigned char>(bytes[at + 2])};
    };
    EXPECT_EQ(pixel(0, 0), (std::vector<int>{255, 255, 255})); // absent
    EXPECT_EQ(pixel(1, 0), (std::vector<int>{0, 0, 255}));     // NaN
    EXPECT_EQ(pixel(1, 1), (std::vector<int>{0, 60, 0}));      // 20 * log10(1000)
    EXPECT_EQ(pixel(0, 1), (std::vector<int>{0, 7, 0}));       // 20 * log10(2.5) = 7.96, truncated
    EXPECT_FALSE(J.writeBmp("/nonexistent-directory/j.bmp"));
}
