#include "TestSystems.h"

#include <tarvo/core/Jacobian.h>
#include <tarvo/core/ObjectiveNleAdFlowsheet.h>
#include <tarvo/core/ObjectiveNleAuto.h>
#include <tarvo/utility/Error.h>
#include <tarvo/value/ActiveContext.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace testing_systems;
using Tarvo::Utility::ScalingMode;

namespace {

// Unknowns given by pointer, residuals r_i = x_i^2 - (i + 1), or switched off with zero_residuals.
class Squares : public ObjectiveNleAuto {
public:
    Squares() : ObjectiveNleAuto("squares") {}
    int calculateResiduals(std::vector<Value>& r, uint32_t offset) override {
        if (switchedOff) {
            for (unsigned i = 0; i < size(); ++i)
                r[offset + i] = 0.0;
            return zero_residuals(r, offset);
        }
        for (unsigned i = 0; i < size(); ++i)
            r[offset + i] = *unknown(i) * *unknown(i) - (i + 1.0);
        return static_cast<int>(size());
    }
    bool switchedOff = false;
};

// A unit with temperature and pressure as unknowns: r0 = T P / (1 K Pa) - 3e7, r1 = T / 1 K - 300.
class Unit : public ObjectiveNleAdFlowsheet {
public:
    Unit() : ObjectiveNleAdFlowsheet("unit"), T(250.0, "K"), P(2e5, "Pa") { setup_of(); }
    void setup_of() override {
        addUnknown(&T, Scaler(ScalingMode::linear, 200, 400, 0, 1), "T");
        addUnknown(&P, Scaler(ScalingMode::log, 1e3, 1e7, 0, 4), "P");
    }
    int calculateResidualsLocal() override {
        ++local;
        residuals[0] = (T / Value(1.0, "K")) * (P / Value(1.0, "Pa")) - 3e7;
        residuals[1] = T / Value(1.0, "K") - 300.0;
        return 2;
    }
    Value T, P;
    int local = 0;
};

// Every residual on every unknown, r_i = x_i s + exp(x_{i+1}) with s = sum_j x_j (the last unknown
// followed by the first), optionally evaluated in blocks of directions.
class Coupled : public ObjectiveNleAuto {
public:
    Coupled(unsigned n, bool blocks) : ObjectiveNleAuto("coupled"), x(n, Value(0.0)) {
        for (Value& v : x) addUnknown(&v, "x");
        if (blocks) evaluateInBlocks();
    }
    int calculateResiduals(std::vector<Value>& r, uint32_t offset) override {
        ++evaluations;
        Value s = 0.0;
        for (const Value& v : x) s += v;
        for (std::size_t i = 0; i < x.size(); ++i) r[offset + i] = x[i] * s + exp(x[(i + 1) % x.size()]);
        return static_cast<int>(x.size());
    }
    std::vector<Value> x;
    int evaluations = 0;
};

} // namespace

// In blocks or in one evaluation, the Jacobian is the one of the closed form
//     dr_i/dx_j = x_i + [i == j] s + [j == i + 1] exp(x_j),
// for systems that fill one block of the dense store, two, and more than blocks are taken for.
TEST(ObjectiveNleAuto, JacobianInBlocksEqualsTheClosedForm) {
    for (const unsigned n : {4u, 9u, 10u, 12u}) {
        for (const bool blocks : {false, true}) {
            Coupled c(n, blocks);
            std::vector<double> x(n), y(n);
            double s = 0;
            for (unsigned i = 0; i < n; ++i) s += x[i] = 0.1 * (i + 1) - 0.35;
            Jacobian J(n);
            c(x.data(), y.data(), &J);
            for (unsigned i = 0; i < n; ++i) {
                const unsigned next = (i + 1) % n;
                EXPECT_NEAR(y[i], x[i] * s + std::exp(x[next]), 1e-14) << n << " " << i;
                for (unsigned j = 0; j < n; ++j) {
                    const double expected = x[i] + (i == j ? s : 0) + (j == next ? std::exp(x[j]) : 0);
                    EXPECT_NEAR(J(i, j), expected, 1e-14) << n << " (" << i << ", " << j << ")";
                }
            }
            // Two blocks of five directions for 9 and 10 unknowns; one evaluation otherwise.
            EXPECT_EQ(c.evaluations, blocks && (n == 9 || n == 10) ? 2 : 1) << n;
            EXPECT_FALSE(c.x[n - 1].active().active());
        }
    }
}

TEST(ObjectiveNleAuto, InitSkipsUnknownsWithoutValue) {
    Value a(1.5), c(-2.0);
    Squares s;
    s.addUnknown(&a, "a");
    s.addUnknown(nullptr, "b");
    s.addUnknown(&c, "c");
    double x[3] = {9, 9, 9};
    CaptureCout out;
    EXPECT_TRUE(s.init(x));
    EXPECT_EQ(x[0], 1.5);
    EXPECT_EQ(x[1], 9);
    EXPECT_EQ(x[2], -2.0);
    EXPECT_NE(out.text().find("Impossible to init unknown[1]"), std::string::npos);

    Squares none;
    none.addUnknown(nullptr, "b");
    EXPECT_FALSE(none.init(x));
}

TEST(ObjectiveNleAuto, ResidualsAndJacobianAtTheSolversPoint) {
    Value a(0.0), b(0.0);
    Squares s;
    s.addUnknown(&a, "a");
    s.addUnknown(&b, "b");
    double x[2] = {3, -2}, y[2];
    Jacobian J(2);
    const int numdir = ActiveContext::numdir();
    s(x, y, &J);
    EXPECT_EQ(y[0], 8);
    EXPECT_EQ(y[1], 2);
    EXPECT_EQ(J(0, 0), 6);
    EXPECT_EQ(J(1, 1), -4);
    EXPECT_EQ(J(0, 1), 0);
    // The model holds the point, and nothing of the evaluation is left behind.
    EXPECT_EQ(a.toDouble(), 3);
    EXPECT_FALSE(a.active().active());
    EXPECT_EQ(ActiveContext::numdir(), numdir);

    // A switched-off system keeps a unit diagonal and zero residuals.
    s.switchedOff = true;
    s(x, y, &J);
    EXPECT_EQ(y[0], 0);
    EXPECT_EQ(y[1], 0);
    EXPECT_EQ(J(0, 0), 1);
    EXPECT_EQ(J(1, 1), 1);
    EXPECT_EQ(J(1, 0), 0);
}

TEST(ObjectiveNleAd, JacobianIsTakenWithRespectToTheScaledUnknowns) {
    Unit u;
    // X = (0.5, 3): T = 300 K on the linear scale, P = 1e6 Pa on the logarithmic one.
    double X[2] = {0.5, 3}, y[2];
    Jacobian J(2);
    u(X, y, &J);
    EXPECT_DOUBLE_EQ(u.T.toDouble(), 300);
    EXPECT_NEAR(u.P.toDouble(), 1e6, 1e-9);
    EXPECT_EQ(u.T.unitText(), "K");
    EXPECT_NEAR(y[0], 300 * 1e6 - 3e7, 1e-3);
    EXPECT_NEAR(y[1], 0, 1e-12);
    // dT/dX = 200; P = 1e3 * 10^X, so dP/dX = P ln 10.
    const double dPdX = 1e6 * std::log(10.0);
    EXPECT_NEAR(J(0, 0), 1e6 * 200, 1e-3);
    EXPECT_NEAR(J(0, 1), 300 * dPdX, 1e-6 * 300 * dPdX);
    EXPECT_NEAR(J(1, 0), 200, 1e-10);
    EXPECT_EQ(J(1, 1), 0);

    double back[2] = {300, 1e6};
    u.scalex(back);
    EXPECT_NEAR(back[0], 0.5, 1e-15);
    EXPECT_NEAR(back[1], 3, 1e-15);
}

TEST(ObjectiveNleAdVertex, EvaluatesLocallyAndHandsResidualsOn) {
    Unit u;
    double X[2] = {0.25, 2}, y[2];
    u(X, y, nullptr);
    EXPECT_EQ(u.local, 1);
    EXPECT_NEAR(y[1], -50, 1e-12); // T = 250 K
    // The copy for an enclosing system runs no model code.
    std::vector<Value> r(5);
    EXPECT_EQ(u.calculateResiduals(r, 3), 2);
    EXPECT_EQ(u.local, 1);
    EXPECT_NEAR(r[4].toDouble(), -50, 1e-12);
    // Storing a solution does not run the unit's equations either.
    double Xs[2] = {0.75, 1};
    u.unscalex(Xs);
    EXPECT_EQ(u.local, 1);
    EXPECT_DOUBLE_EQ(Xs[0], 350);
    EXPECT_DOUBLE_EQ(u.T.toDouble(), 350);
    EXPECT_DOUBLE_EQ(u.P.toDouble(), 1e4);
}

TEST(ObjectiveNleAd, CombinedSystemSharesTheUnknownsOfItsParts) {
    Unit u;
    u.setLabel(1, "P");
    FunctionSystem outer({1.0}, [](const std::vector<Value>&, std::vector<Value>&, uint32_t) {});
    outer.addObjectiveFunction(u);
    ASSERT_EQ(outer.size(), 3u);
    EXPECT_EQ(outer.unknown(1), &u.T);
    EXPECT_EQ(outer.unknown(2), &u.P);
    EXPECT_EQ(outer.description(2), "unit/P");
    EXPECT_EQ(outer.label(2), "P");
    EXPECT_EQ(outer.scaler(1).mode(), ScalingMode::linear);
    EXPECT_EQ(outer.scaler(2).mode(), ScalingMode::log);
}

TEST(ObjectiveNleAd, ColumnWithoutEffectIsReportedByTagOrIndex) {
    FunctionSystem s({1.0, 2.0}, [](const std::vector<Value>& x, std::vector<Value>& r, uint32_t o) {
        r[o] = x[0] - 1.0;
        r[o + 1] = 2.0 * x[0];
    });
    double X[2] = {1, 2}, y[2];
    Jacobian J(2);
    {
        CaptureCout out;
        s(X, y, &J);
        EXPECT_NE(
            out.text().find("In the Jacobian of test, unknown 1 has no effect on any equation: singularity"),
            std::string::npos);
    }
    s.setLabel(1, "S01.T");
    CaptureCout out;
    s(X, y, &J);
    EXPECT_NE(
        out.text().find("In the Jacobian of test, unknown S01.T has no effect on any equation: singularity"),
        std::string::npos);
}

TEST(ObjectiveNleAd, ErrorOfTheModelCodeNamesTheEvaluation) {
    FunctionSystem s({1.0}, [](const std::vector<Value>& x, std::vector<Value>& r, uint32_t o) {
        r[o] = x[0] + Value(1.0, "K"); // unlike units
    });
    double X[1] = {1}, y[1];
    Jacobian J(1);
    const int numdir = ActiveContext::numdir();
    try {
        s(X, y, &J);
        FAIL() << "no error";
    } catch (const ErrorUnit& e) {
        EXPECT_NE(e.message().find("incompatible units"), std::string::npos);
        EXPECT_NE(e.message().find("Called from function: ObjectiveNleAd::operator()\n"), std::string::npos)
            << e.message();
    }
    // The evaluation's context is gone with it, and the unknown is no independent variable any more: it
    // takes a new number, which an active unknown refuses.
    EXPECT_EQ(ActiveContext::numdir(), numdir);
    s.values[0] = 2.0;
    EXPECT_EQ(s.values[0].toDouble(), 2.0);
}
