#include "TestSystems.h"

#include <tarvo/core/Jacobian.h>
#include <tarvo/core/SolverNleRecipesAutomatic.h>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace testing_systems;

namespace {

constexpr unsigned n = 150; // above the threshold of the sparse form

std::vector<double> broydenStart() {
    std::vector<double> x(n);
    for (unsigned i = 0; i < n; ++i)
        x[i] = 0.1 + 0.8 * ((i * 37) % n) / n; // spread over (0.1, 0.9)
    return x;
}

} // namespace

TEST(SparseSystem, ExactJacobianMatchesCentralDifferences) {
    // Every other unknown on a linear scale x = 2 X - 1, so that the columns carry the chain rule.
    std::vector<Scaler> scalers(n);
    for (unsigned i = 1; i < n; i += 2)
        scalers[i] = Scaler(Tarvo::Utility::ScalingMode::linear, -1, 1, 0, 1);
    FunctionSystem s(std::vector<double>(n, 0.0), broydenBanded, scalers);
    std::vector<double> X = broydenStart(), y(n), plus(n), minus(n);
    Jacobian J(n);
    ASSERT_TRUE(J.sparse());
    s(X.data(), y.data(), &J);
    // Rows 0 to 4 reach back to column 0 only, row 149 has no column 150: 2+3+4+5+6 + 144*7 + 6.
    EXPECT_EQ(J.entries(), 1034u);
    for (unsigned j = 0; j < n; ++j) {
        const double h = 1e-6;
        const double saved = X[j];
        X[j] = saved + h;
        s(X.data(), plus.data(), nullptr);
        X[j] = saved - h;
        s(X.data(), minus.data(), nullptr);
        X[j] = saved;
        for (unsigned i = 0; i < n; ++i) {
            const double fd = (plus[i] - minus[i]) / (2 * h);
            // Central differences of a cubic at h = 1e-6: truncation about 5 h^2, rounding about 1e-10.
            ASSERT_NEAR(J(i, j), fd, 1e-7 * (1 + std::fabs(fd))) << i << ", " << j;
        }
    }
}

TEST(SparseSystem, BroydenBandedIsSolvedOnTheSparsePath) {
    FunctionSystem s(std::vector<double>(n, -1.0), broydenBanded);
    SolverNleRecipesAutomatic solver(n, &s);
    s.init(solver.x());
    ASSERT_EQ(solver.solve(), 0);
    EXPECT_TRUE(solver.jacobian().sparse());
    // The residuals recomputed in plain doubles at the model's solution.
    for (unsigned i = 0; i < n; ++i) {
        const auto x = [&](unsigned k) { return s.values[k].toDouble(); };
        double r = x(i) * (2 + 5 * x(i) * x(i)) + 1;
        for (unsigned j = i < 5 ? 0 : i - 5; j <= std::min(n - 1, i + 1); ++j)
            if (j != i) r -= x(j) * (1 + x(j));
        ASSERT_LT(std::fabs(r), 1e-5) << i;
    }
}

TEST(SparseSystem, BratuProblemAgreesWithItsClosedForm) {
    // u(x) = -2 ln(cosh((x - 1/2) theta / 2) / cosh(theta / 4)) with theta = sqrt(2 lambda) cosh(theta / 4),
    // lower branch. The discrete solution differs by O(h^2): 6.2e-7 at this grid (an independent
    // tridiagonal Newton solve in double precision).
    const double lambda = 1;
    double theta = 1;
    for (int k = 0; k < 100; ++k)
        theta = std::sqrt(2 * lambda) * std::cosh(theta / 4);
    FunctionSystem s(std::vector<double>(n, 0.0), [lambda](const std::vector<Value>& u, std::vector<Value>& r,
                                                           uint32_t o) { bratu(u, r, o, lambda); });
    SolverNleRecipesAutomatic solver(n, &s);
    s.init(solver.x());
    ASSERT_EQ(solver.solve(), 0);
    EXPECT_LE(solver.iterations(), 5);
    const double h = 1.0 / (n + 1);
    for (unsigned i = 0; i < n; ++i) {
        const double x = (i + 1) * h;
        const double exact = -2 * std::log(std::cosh((x - 0.5) * theta / 2) / std::cosh(theta / 4));
        ASSERT_NEAR(s.values[i].toDouble(), exact, 2e-6) << i;
    }
}
