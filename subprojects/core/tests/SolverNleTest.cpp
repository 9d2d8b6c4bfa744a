#include "TestSystems.h"

#include <tarvo/core/SolverNleRecipesAutomatic.h>
#include <tarvo/core/SolverNleRecipesNumeric.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

using namespace testing_systems;
using Tarvo::Utility::ScalingMode;

namespace {

// A solver of either kind, sized and started from the model's current point.
template <typename Solver> std::unique_ptr<Solver> ready(ObjectiveNleAd& s) {
    auto solver = std::make_unique<Solver>(static_cast<int>(s.size()), &s);
    solver->resize(static_cast<int>(s.size()));
    s.init(solver->x());
    return solver;
}

FunctionSystem scalar(double start, std::function<Value(const Value&)> f, Scaler scaler = Scaler()) {
    return FunctionSystem(
        {start}, [f](const std::vector<Value>& x, std::vector<Value>& r, uint32_t o) { r[o] = f(x[0]); },
        {scaler});
}

template <typename Solver> class BothJacobians : public testing::Test {};
using SolverTypes = testing::Types<SolverNleRecipesAutomatic, SolverNleRecipesNumeric>;
TYPED_TEST_SUITE(BothJacobians, SolverTypes);

} // namespace

TYPED_TEST(BothJacobians, CircleAndLineMeetAtTheKnownRoot) {
    FunctionSystem s({1.0, 0.5}, [](const std::vector<Value>& x, std::vector<Value>& r, uint32_t o) {
        r[o] = x[0] * x[0] + x[1] * x[1] - 4.0;
        r[o + 1] = x[0] - x[1];
    });
    auto solver = ready<TypeParam>(s);
    const int status = solver->solve();
    EXPECT_EQ(status, 0);
    EXPECT_EQ(solver->statusText(status), "converged fine");
    // |F| < TOLF = 1e-5 and the smallest singular value of J near the root is about 1.4.
    EXPECT_NEAR(s.values[0].toDouble(), std::sqrt(2.0), 1e-5);
    EXPECT_NEAR(s.values[1].toDouble(), std::sqrt(2.0), 1e-5);
    EXPECT_FALSE(solver->failed());
}

TYPED_TEST(BothJacobians, GradientOfRosenbrocksFunctionVanishesAtOneOne) {
    // f = 100 (y - x^2)^2 + (1 - x)^2 from the classical start (-1.2, 1).
    FunctionSystem s({-1.2, 1.0}, [](const std::vector<Value>& x, std::vector<Value>& r, uint32_t o) {
        r[o] = -400.0 * x[0] * (x[1] - x[0] * x[0]) - 2.0 * (1.0 - x[0]);
        r[o + 1] = 200.0 * (x[1] - x[0] * x[0]);
    });
    auto solver = ready<TypeParam>(s);
    EXPECT_EQ(solver->solve(), 0);
    // The Hessian at (1, 1) has its smallest eigenvalue near 0.4: |F| < 1e-5 leaves |dx| < 3e-5.
    EXPECT_NEAR(s.values[0].toDouble(), 1.0, 1e-4);
    EXPECT_NEAR(s.values[1].toDouble(), 1.0, 1e-4);
}

TEST(SolverNle, ScalerKeepsIteratesInsideTheBounds) {
    // ln(x / 0.01) = 0 from x = 0.9: Newton's steps, even limited, leave (0, 1) on the second iteration.
    // Unscaled, the trial there has no finite residual, and the search cuts it back until it has.
    const auto f = [](const Value& x) { return log(x / 0.01); };
    FunctionSystem plain = scalar(0.9, f);
    auto solver = ready<SolverNleRecipesAutomatic>(plain);
    EXPECT_EQ(solver->solve(), 0);
    EXPECT_NEAR(plain.values[0].toDouble(), 0.01, 1e-6);
    bool outside = false;
    for (const auto& point : plain.visited)
        outside = outside || point[0] <= 0;
    EXPECT_TRUE(outside);

    for (ScalingMode mode : {ScalingMode::arctangentExclusive, ScalingMode::rational}) {
        SCOPED_TRACE(static_cast<int>(mode));
        FunctionSystem bounded = scalar(0.9, f, Scaler(mode, 0, 1, 0, 1));
        auto solver = ready<SolverNleRecipesAutomatic>(bounded);
        EXPECT_EQ(solver->solve(), 0);
        EXPECT_NEAR(bounded.values[0].toDouble(), 0.01, 1e-6);
        for (const auto& point : bounded.visited) {
            ASSERT_GT(point[0], 0);
            ASSERT_LT(point[0], 1);
        }
    }
}

TEST(SolverNle, SingularJacobianIsAStatus) {
    FunctionSystem parallel({0.0, 0.0}, [](const std::vector<Value>& x, std::vector<Value>& r, uint32_t o) {
        r[o] = x[0] + x[1] - 1.0;
        r[o + 1] = 2.0 * x[0] + 2.0 * x[1] - 3.0;
    });
    auto solver = ready<SolverNleRecipesAutomatic>(parallel);
    int status = solver->solve();
    EXPECT_EQ(status, 6);
    EXPECT_EQ(solver->statusText(status), "singular matrix, type 1");

    // A sparse system with an unknown that no equation reads: the sparse factorisation fails.
    std::vector<double> start(120, 0.0);
    FunctionSystem unused(start, [](const std::vector<Value>& x, std::vector<Value>& r, uint32_t o) {
        for (std::size_t i = 0; i < x.size(); ++i)
            r[o + i] = x[i == 17 ? 18 : i] - 1.0;
    });
    auto sparse = ready<SolverNleRecipesAutomatic>(unused);
    CaptureCout out; // the objective warns about unknown 17
    status = sparse->solve();
    EXPECT_EQ(status, 1);
    EXPECT_EQ(sparse->statusText(status), "singular matrix, sparse factorisation failed");
    EXPECT_NE(out.text().find("unknown 17 has no effect on any equation"), std::string::npos);
}

TEST(SolverNle, NaNResidualAtTheStartEndsAtOnce) {
    FunctionSystem s = scalar(-1.0, [](const Value& x) { return sqrt(x) - 1.0; });
    auto solver = ready<SolverNleRecipesAutomatic>(s);
    const int status = solver->solve();
    EXPECT_EQ(status, 3);
    EXPECT_EQ(solver->statusText(status), "error when evaluating the residuals");
    EXPECT_EQ(solver->analyticalJacobians(), 0);
    EXPECT_TRUE(solver->failed());
}

TEST(SolverNle, ExitsBeforeTheFirstIteration) {
    // Already a root within 0.01 TOLF.
    FunctionSystem root = scalar(2.0, [](const Value& x) { return x * x - 4.0; });
    auto solver = ready<SolverNleRecipesAutomatic>(root);
    EXPECT_EQ(solver->solve(), 0);
    EXPECT_EQ(solver->systemEvaluations(), 1);
    EXPECT_EQ(solver->analyticalJacobians(), 0);
    EXPECT_EQ(solver->iterations(), 0);

    // No iteration allowed.
    FunctionSystem away = scalar(3.0, [](const Value& x) { return x * x - 4.0; });
    auto limited = ready<SolverNleRecipesAutomatic>(away);
    limited->setMaxIterations(0);
    const int status = limited->solve();
    EXPECT_EQ(status, 2);
    EXPECT_EQ(limited->statusText(status), "exceeded maximum iterations limit");
    EXPECT_EQ(limited->analyticalJacobians(), 0);
    EXPECT_EQ(away.values[0].toDouble(), 3.0);
}

TEST(SolverNle, StepIsCutToTheStepLimit) {
    // x - 1000 from 0: the step limit is 0.5 * max(|x0|, n) = 0.5, and every Newton step of 1000 - x is
    // cut to it, so 200 iterations reach x = 100.
    FunctionSystem s = scalar(0.0, [](const Value& x) { return x - 1000.0; });
    auto solver = ready<SolverNleRecipesAutomatic>(s);
    EXPECT_EQ(solver->solve(), 2);
    EXPECT_EQ(solver->iterations(), 200);
    EXPECT_EQ(s.values[0].toDouble(), 100.0);
    // Evaluations: F at the start, F and J there, then the first trial; nothing else runs the model.
    ASSERT_GE(s.visited.size(), 3u);
    EXPECT_EQ(s.visited[1][0], 0.0);
    EXPECT_EQ(s.visited[2][0], 0.5);
    EXPECT_EQ(s.visited.size(), 1 + 2 * 200u);
}

TEST(SolverNle, FlatObjectivesEndOnAPlateauOrAMinimum) {
    // F = 1 + 2e-6 x: a step of 0.5 changes f by 1e-6 relative, below TOLF; the gradient of f is still
    // 4e-6 in the scaled sense, above TOLMIN: a plateau.
    FunctionSystem flat = scalar(0.0, [](const Value& x) { return 1.0 + 2e-6 * x; });
    auto solver = ready<SolverNleRecipesAutomatic>(flat);
    int status = solver->solve();
    EXPECT_EQ(status, -4);
    EXPECT_EQ(solver->statusText(status), "objective function insensitive (plateau)");

    // F = 1 + 1e-9 x: the same, with a gradient below TOLMIN: a minimum of f that is no root.
    FunctionSystem flatter = scalar(0.0, [](const Value& x) { return 1.0 + 1e-9 * x; });
    auto minimum = ready<SolverNleRecipesAutomatic>(flatter);
    status = minimum->solve();
    EXPECT_EQ(status, -1);
    EXPECT_EQ(minimum->statusText(status), "converged to a local minimum; try a different initial guess");

    // F = 1 + 2e-10 x at a flowsheet's TOLF of 1e-11: a step of 0.5 lowers f by 2e-10 relative, above the
    // search's test of 2 TOLF, and the iterations would crawl on to their limit. One that lowers f by less
    // than 1e-8 relative ends the solve on the plateau.
    FunctionSystem crawl = scalar(0.0, [](const Value& x) { return 1.0 + 2e-10 * x; });
    auto crawling = ready<SolverNleRecipesAutomatic>(crawl);
    crawling->setTolerances(0, 0, 1e-11, 0);
    EXPECT_EQ(crawling->solve(), -4);
    EXPECT_EQ(crawling->iterations(), 0);

    // F = 1 + 1e-3 atan(x), a residual that saturates as a bounded unknown does. Every Newton step is cut to
    // the limit 0.5 max(|x0|, n) = 0.5, so iteration k ends at x = -0.5 (k + 1); each lowers f by less, but
    // by more than 1e-8 relative for hundreds of iterations. The solve ends at the first iteration k that,
    // with the four before it, lowers f by less than a part in 1e4.
    FunctionSystem saturating = scalar(0.0, [](const Value& x) { return 1.0 + 1e-3 * atan(x); });
    auto saturated = ready<SolverNleRecipesAutomatic>(saturating);
    saturated->setTolerances(0, 0, 1e-11, 0);
    const auto fAfter = [](int k) { return 0.5 * std::pow(1.0 + 1e-3 * std::atan(-0.5 * (k + 1)), 2); };
    int crawlEnd = 5;
    while (fAfter(crawlEnd - 5) - fAfter(crawlEnd) >= 1e-4 * fAfter(crawlEnd - 5))
        ++crawlEnd;
    ASSERT_LT(crawlEnd, 200);
    EXPECT_EQ(saturated->solve(), -4);
    EXPECT_EQ(saturated->iterations(), crawlEnd);
    EXPECT_DOUBLE_EQ(saturated->x()[0], -0.5 * (crawlEnd + 1));
}

TEST(SolverNle, DiscontinuousResidualEndsInConvergenceOnDeltaX) {
    // F = 1 at 0 and 3 + x elsewhere, J = 1. The line search along -0.5 finds every trial worse than the
    // start, and with TOLX = 0.01 its third step fraction, 0.01, is below 0.01 / 0.5: that trial is not
    // evaluated, and the solver ends where it started, with the residual of that point.
    PlainSystem s([](const double* x, double* y, Jacobian* J) {
        y[0] = x[0] == 0 ? 1.0 : 3.0 + x[0];
        if (J) J->set(0, 0, 1.0);
    });
    SolverNleRecipesAutomatic solver(1, &s);
    solver.x()[0] = 0;
    solver.setTolerances(0, 0.01, 0, 0);
    const int status = solver.solve();
    EXPECT_EQ(status, -5);
    EXPECT_EQ(solver.statusText(status), "convergence on deltax; dubious convergence");
    EXPECT_EQ(solver.x()[0], 0.0);
    EXPECT_EQ(solver.residual(0), 1.0);
    const std::vector<double> trials{0, 0, -0.5, -0.05};
    ASSERT_EQ(s.visited.size(), trials.size());
    for (std::size_t i = 0; i < trials.size(); ++i)
        EXPECT_NEAR(s.visited[i], trials[i], 1e-15);
}

TEST(SolverNle, LineSearchTakesOnlyASufficientDecreaseFromTheStart) {
    // From x = 0 with F = 1 and J = 1 the step is cut to -0.5, slope -0.5. One iteration only, to see its
    // trials. Elsewhere f = 0.5 - 3e-5: the first trial lowers f by less than ALF * slope = 5e-5 and is
    // rejected; the quadratic model puts the next at half the step, where ALF * slope / 2 = 2.5e-5 is met.
    PlainSystem slight([](const double* x, double* y, Jacobian* J) {
        y[0] = x[0] == 0 ? 1.0 : std::sqrt(2 * (0.5 - 3e-5));
        if (J) J->set(0, 0, 1.0);
    });
    SolverNleRecipesAutomatic solver(1, &slight);
    solver.x()[0] = 0;
    solver.setMaxIterations(1);
    EXPECT_EQ(solver.solve(), 2);
    EXPECT_EQ(solver.x()[0], -0.25);
    EXPECT_EQ(slight.visited, (std::vector<double>{0, 0, -0.5, -0.25}));

    // Every trial is worse than the start (f = 4.5, then 2, against 0.5): none is taken, and the solver
    // ends at the start with its residual.
    PlainSystem worse([](const double* x, double* y, Jacobian* J) {
        y[0] = x[0] == 0 ? 1.0 : x[0] <= -0.4 ? 3.0 : 2.0;
        if (J) J->set(0, 0, 1.0);
    });
    SolverNleRecipesAutomatic second(1, &worse);
    second.x()[0] = 0;
    EXPECT_EQ(second.solve(), -5);
    EXPECT_EQ(second.x()[0], 0.0);
    EXPECT_EQ(second.residual(0), 1.0);
    EXPECT_EQ(second.iterations(), 0);
}

TEST(SolverNle, MeritAndToleranceSetter) {
    FunctionSystem s({0.0, 0.0}, [](const std::vector<Value>&, std::vector<Value>&, uint32_t) {});
    SolverNleRecipesAutomatic solver(2, &s);
    const double F[2] = {3, 4};
    EXPECT_EQ(solver.merit(F), 12.5);
    solver.setTolerances(0, 0, 1e-11, 0); // a 0 keeps the constant
    EXPECT_EQ(solver.tolf(), 1e-11);
    EXPECT_EQ(solver.alf(), 0.0001);
    EXPECT_EQ(solver.tolx(), 1e-8);
    EXPECT_EQ(solver.tolmin(), 1e-6);
}

TEST(SolverNle, IterationLineNamesTheWorstUnknown) {
    FunctionSystem s({1.0, 0.5}, [](const std::vector<Value>& x, std::vector<Value>& r, uint32_t o) {
        r[o] = x[0] * x[0] + x[1] * x[1] - 4.0;
        r[o + 1] = x[0] - x[1];
    });
    s.setLabel(0, "S01.T");
    s.setLabel(1, "S01.P");
    auto solver = ready<SolverNleRecipesAutomatic>(s);
    solver->setVerbosityInstance(1); // the iteration lines are the solver's least verbose ones
    CaptureCout out;
    ASSERT_EQ(solver->solve(), 0);
    // At the start F = (-2.75, 0.5): f = 0.5 (2.75^2 + 0.5^2) = 3.90625.
    EXPECT_NE(out.text().find("SolverNleRecipes::solve * 0 3.90625 max residual: -2.75 in S01.T\n"),
              std::string::npos)
        << out.text();
}

TEST(SolverNle, DerivativeCheckMarksAWrongJacobian) {
    FunctionSystem good({1.0, 2.0}, [](const std::vector<Value>& x, std::vector<Value>& r, uint32_t o) {
        r[o] = x[0] * exp(x[1]);
        r[o + 1] = x[0] + x[1];
    });
    auto checker = ready<SolverNleRecipesAutomatic>(good);
    {
        CaptureCout out;
        checker->verifyDerivatives();
        EXPECT_NE(out.text().find("dF[0]/dx[1] = "), std::string::npos);
        EXPECT_EQ(out.text().find(" !!"), std::string::npos) << out.text();
    }
    PlainSystem wrong([](const double* x, double* y, Jacobian* J) {
        y[0] = x[0] * x[0];
        if (J) J->set(0, 0, x[0]); // should be 2 x
    });
    SolverNleRecipesAutomatic solver(1, &wrong);
    solver.x()[0] = 3;
    CaptureCout out;
    solver.verifyDerivatives();
    EXPECT_NE(out.text().find("dF[0]/dx[0] = 3 error = 3 !!"), std::string::npos) << out.text();
}
