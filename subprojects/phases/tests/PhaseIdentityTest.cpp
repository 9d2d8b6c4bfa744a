#include "PhaseTestSupport.h"

#include <tarvo/phases/PhaseGeneric.h>
#include <tarvo/value/ActiveContext.h>

#include <cmath>
#include <ostream>
#include <string>
#include <vector>

// Thermodynamic identities over the ideal model in all three of its types and at several states: they
// hold whatever the correlations are, so they catch a wrong sum, a missing term or a wrong derivative
// without any table of expected numbers.

namespace {

struct State {
    const char* name; // of the test instance
    const char* type;
    double P; // Pa
    double T; // K
    std::vector<double> x;
};

std::string stateName(const ::testing::TestParamInfo<State>& info) { return info.param.name; }
void PrintTo(const State& state, std::ostream* out) { *out << state.name; }

// A context of two derivative directions, T and P, for the length of a scope.
struct TwoDirections {
    TwoDirections() { ActiveContext::push(2); }
    ~TwoDirections() { ActiveContext::pop(); }
};

double relative(double a, double b) { return std::fabs(a - b) / std::max(std::fabs(b), 1e-300); }

} // namespace

class PhaseIdentityTest : public PhaseTest, public ::testing::WithParamInterface<State> {
protected:
    void SetUp() override {
        PhaseTest::SetUp();
        phase = make<Phase::Generic>(GetParam().type);
        for (int i = 0; i < NCOMPONENTS; ++i) phase->x[i] = GetParam().x[i];
        phase->ndot = Value(3.0, "kmol/h");
        phase->calculate(0);
    }
    void TearDown() override {
        phase.reset();
        PhaseTest::TearDown();
    }
    Value P(double shift = 0) const { return Value(GetParam().P + shift, "Pa"); }
    Value T(double shift = 0) const { return Value(GetParam().T + shift, "K"); }
    double H(const Value& P, const Value& T) { return phase->calculate_H(P, T).toDouble(); }
    double S(const Value& P, const Value& T) { return phase->calculate_S(P, T).toDouble(); }

    std::unique_ptr<Phase::Generic> phase;
};

TEST_P(PhaseIdentityTest, GibbsEnergyIsEnthalpyLessTemperatureTimesEntropy) {
    phase->calculateProperties(P(), T(), true);
    const double g = phase->h.toDouble() - GetParam().T * phase->s.toDouble();
    EXPECT_LT(std::fabs(phase->g.toDouble() - g), 1e-12 * std::fabs(phase->h.toDouble()) + 1e-9);
    EXPECT_LT(relative(phase->h.toDouble() * phase->mw.toDouble(), phase->H.toDouble()), 1e-14);
    EXPECT_LT(relative(phase->cp.toDouble() * phase->mw.toDouble(), phase->Cp.toDouble()), 1e-14);
    EXPECT_LT(relative(phase->rho.toDouble() * phase->v.toDouble(), phase->mw.toDouble()), 1e-14);
}

TEST_P(PhaseIdentityTest, HeatCapacityIsTheTemperatureDerivativeOfEnthalpy) {
    const double h = 0.01; // K; the enthalpies are smooth over this step
    const double slope = (H(P(), T(h)) - H(P(), T(-h))) / (2 * h);
    EXPECT_LT(relative(phase->calculate_Cp(P(), T()).toDouble(), slope), 1e-6);
}

TEST_P(PhaseIdentityTest, MixingAddsTheIdealEntropyOfMixingToThePureEntropies) {
    const std::vector<double>& x = GetParam().x;
    const double mixture = S(P(), T());
    double pure = 0, mixing = 0;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (x[i] <= 0) continue;
        for (int j = 0; j < NCOMPONENTS; ++j) phase->x[j] = i == j ? 1.0 : 0.0;
        pure += x[i] * S(P(), T());
        mixing -= 8314.4 * x[i] * std::log(x[i]);
    }
    EXPECT_NEAR(mixture, pure + mixing, 1e-9 * (std::fabs(pure) + mixing));
}

// Inside a solve of many unknowns the derivatives are sparse lists, and a sum reaches them from the
// pure components' partials: each fraction, T and P on a direction of their own, against central
// differences of the sums without derivatives.
TEST_P(PhaseIdentityTest, SparseDerivativesOfTheSumsMatchCentralDifferences) {
    const int tDirection = NCOMPONENTS, pDirection = NCOMPONENTS + 1, directions = NCOMPONENTS + 3;
    const std::vector<double>& x = GetParam().x;
    const auto sums = [&](const Value& p, const Value& t) {
        return std::vector<double>{phase->calculate_H(p, t).toDouble(), phase->calculate_S(p, t).toDouble(),
                                   phase->calculate_Cp(p, t).toDouble()};
    };
    std::vector<std::vector<double>> derivative(3, std::vector<double>(directions));
    {
        ActiveContext::Scope sparse(directions);
        ASSERT_TRUE(Active::sparse()); // more directions than the dense store holds
        for (int i = 0; i < NCOMPONENTS; ++i) phase->x[i].active().setDerivative(i, 1.0);
        Value t = T(), p = P();
        t.active().setDerivative(tDirection, 1.0);
        p.active().setDerivative(pDirection, 1.0);
        const Value values[] = {phase->calculate_H(p, t), phase->calculate_S(p, t), phase->calculate_Cp(p, t)};
        for (int sum = 0; sum < 3; ++sum)
            for (int d = 0; d < directions; ++d) derivative[sum][d] = values[sum].active().derivative(d);
        for (int i = 0; i < NCOMPONENTS; ++i) phase->x[i].active() = Active(x[i]);
    }
    const double hx = 1e-6, ht = 0.01, hp = 1e-3 * GetParam().P;
    const std::vector<double> centre = sums(P(), T());
    for (int d = 0; d <= pDirection; ++d) {
        if (d < NCOMPONENTS && x[d] <= 0) continue; // an absent component takes no part
        std::vector<double> up, down;
        double step = 0;
        if (d == tDirection) {
            step = ht;
            up = sums(P(), T(ht));
            down = sums(P(), T(-ht));
        } else if (d == pDirection) {
            step = hp;
            up = sums(P(hp), T());
            down = sums(P(-hp), T());
        } else {
            step = hx;
            phase->x[d] = x[d] + hx;
            up = sums(P(), T());
            phase->x[d] = x[d] - hx;
            down = sums(P(), T());
            phase->x[d] = x[d];
        }
        for (int sum = 0; sum < 3; ++sum) {
            // A saturated liquid's heat capacity takes its own slope in T from a central difference.
            if (sum == 2 && d == tDirection && phase->phaseType() == Tarvo::Utility::PhaseType::liquid) continue;
            const double difference = (up[sum] - down[sum]) / (2 * step);
            // Against the change over the step, which the rounding of the sums bounds from below.
            EXPECT_LT(std::fabs(derivative[sum][d] - difference) * step, 1e-9 * (std::fabs(centre[sum]) + 1e3))
                << "sum " << sum << ", direction " << d;
        }
    }
}

// The vapor states of the same suite, for what holds of an ideal gas only.
class IdealGasIdentityTest : public PhaseIdentityTest {};

// Derivatives by Value's forward differentiation: for an ideal gas the enthalpy does not depend on
// the pressure, dS/dT = Cp/T, and dG/dP = -T dS/dP is the molar volume 1/rho.
TEST_P(IdealGasIdentityTest, DerivativesByAutomaticDifferentiation) {
    ASSERT_EQ(phase->phaseType(), Tarvo::Utility::PhaseType::vapor);
    TwoDirections directions;
    Value t = T(), p = P();
    t.active().setActive(0);
    p.active().setActive(1);
    const Value H = phase->calculate_H(p, t);
    const Value S = phase->calculate_S(p, t);
    const double Cp = phase->calculate_Cp(p, t).toDouble();
    const double rho = phase->calculate_rho(p, t).toDouble();
    const double tt = GetParam().T, pp = GetParam().P;

    EXPECT_LT(relative(H.active().derivative(0), Cp), 1e-12);
    EXPECT_LT(std::fabs(H.active().derivative(1)), 1e-12 * Cp);
    EXPECT_LT(relative(S.active().derivative(0), Cp / tt), 1e-12);
    EXPECT_LT(relative(-tt * S.active().derivative(1), 1 / rho), 1e-12);

    // The derivatives against finite differences of the same functions.
    const double h = 0.01, dp = 1e-3 * pp;
    EXPECT_LT(relative(H.active().derivative(0), (this->H(P(), T(h)) - this->H(P(), T(-h))) / (2 * h)), 1e-7);
    EXPECT_LT(relative(S.active().derivative(1), (this->S(P(dp), T()) - this->S(P(-dp), T())) / (2 * dp)), 1e-6);
}

namespace {
const State vapor[] = {
    {"vapor_298K", "PhaseIdeal<vapor>", 101325, 298.15, {0.2, 0.2, 0.2, 0.2, 0.2}},
    {"vapor_400K", "PhaseIdeal<vapor>", 2.0e5, 400, {0.2, 0.3, 0.1, 0.25, 0.15}},
    {"vapor_650K_30bar", "PhaseIdeal<vapor>", 3.0e6, 650, {0.05, 0.6, 0.2, 0.1, 0.05}},
    {"vapor_250K_binary", "PhaseIdeal<vapor>", 5.0e4, 250, {0.5, 0.0, 0.0, 0.5, 0.0}},
};
const State condensed[] = {
    {"liquid_300K", "PhaseIdeal<liquid>", 5.0e5, 300, {0.1, 0.1, 0.6, 0.1, 0.1}},
    {"liquid_280K_binary", "PhaseIdeal<liquid>", 1.0e6, 280, {0.3, 0.0, 0.7, 0.0, 0.0}},
    {"solid_300K", "PhaseIdeal<solid>", 1.0e5, 300, {0.2, 0.2, 0.2, 0.2, 0.2}},
};
} // namespace

INSTANTIATE_TEST_SUITE_P(Vapor, PhaseIdentityTest, ::testing::ValuesIn(vapor), stateName);
INSTANTIATE_TEST_SUITE_P(Condensed, PhaseIdentityTest, ::testing::ValuesIn(condensed), stateName);
INSTANTIATE_TEST_SUITE_P(Vapor, IdealGasIdentityTest, ::testing::ValuesIn(vapor), stateName);

// Expected numbers from tests/IdealGasClosedForms.py, which integrates the heat capacity correlations
// in closed form (coth and tanh for the Aly-Lee terms, the polynomial in ln T for water) from the
// ideal gas at 298.15 K and 101325 Pa, with atomic weights for the molecular weights.
TEST_F(PhaseTest, IdealVaporAtHighPressureMatchesClosedFormIntegrals) {
    auto v = make<Phase::Generic>("PhaseIdeal<vapor>");
    const std::vector<double> x{0.05, 0.6, 0.2, 0.1, 0.05};
    for (int i = 0; i < NCOMPONENTS; ++i) v->x[i] = x[i];
    v->ndot = Value(1.0, "kmol/s");
    v->calculate(0);
    v->calculateProperties(Value(30.0, "bar"), Value(650.0, "K"), true);
    EXPECT_NEAR(v->mw.toDouble(), 19.8303746, 1e-7);
    EXPECT_NEAR(v->H.toDouble(), -98426667.7935, 1e-9 * 98426667.8);
    EXPECT_NEAR(v->S.toDouble(), -44580.9276518, 1e-9 * 44580.93);
    EXPECT_NEAR(v->Cp.toDouble(), 47679.1446175, 1e-10 * 47679.14);
    EXPECT_NEAR(v->rho.toDouble(), 11.0079868477, 1e-10 * 11.008);
    EXPECT_NEAR(v->vdot.toDouble("m3/h"), 19.8303746 * 3600 / 11.0079868477, 1e-6);
}
