#include "PhaseTestSupport.h"

#include <tarvo/phases/KwongRedlichSoave.h>
#include <tarvo/phases/PengRobinson.h>
#include <tarvo/phases/PhaseEos.h>
#include <tarvo/phases/PhaseGeneric.h>
#include <tarvo/phases/VanDerWaals.h>
#include <tarvo/value/ActiveContext.h>

#include <cmath>
#include <string>
#include <vector>

// The cubic equations on the kernel's five species (CO2, CH4, H2O, N2, O2), against numbers worked out
// here from the components' constants.

namespace {
constexpr double gasConstant = 8314.4; // J/(kmol K), the kernel's

template <typename E> double attractiveAt(const E& eos, int i, double T) {
    Value dadT, d2adT2;
    return eos.a(i, Value(T, "K"), dadT, d2adT2).toDouble();
}
} // namespace

TEST_F(PhaseTest, AtTheCriticalTemperatureTheAttractiveTermIsItsCriticalValue) {
    const Phase::EosCubic::PengRobinson pr;
    const Phase::EosCubic::KwongRedlichSoave srk;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const double Tc = components[i]->Tc().toDouble(), Pc = components[i]->Pc().toDouble();
        // Omega_a R^2 Tc^2 / Pc, with the exact roots of the critical conditions of each equation.
        EXPECT_NEAR(attractiveAt(pr, i, Tc), 0.4572355289 * gasConstant * gasConstant * Tc * Tc / Pc,
                    1e-12 * attractiveAt(pr, i, Tc));
        EXPECT_NEAR(attractiveAt(srk, i, Tc), 0.42747 * gasConstant * gasConstant * Tc * Tc / Pc,
                    1e-12 * attractiveAt(srk, i, Tc));
        // Below Tc the attraction grows, above it falls.
        EXPECT_GT(attractiveAt(pr, i, 0.9 * Tc), attractiveAt(pr, i, Tc));
        EXPECT_LT(attractiveAt(pr, i, 1.1 * Tc), attractiveAt(pr, i, Tc));
    }
}

TEST_F(PhaseTest, AttractiveTermDerivativesMatchCentralDifferences) {
    const Phase::EosCubic::PengRobinson pr;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const double T = 0.8 * components[i]->Tc().toDouble(), h = 1e-3;
        Value dadT, d2adT2;
        pr.a(i, Value(T, "K"), dadT, d2adT2);
        Value up1, up2, down1, down2;
        const double up = pr.a(i, Value(T + h, "K"), up1, up2).toDouble();
        const double down = pr.a(i, Value(T - h, "K"), down1, down2).toDouble();
        EXPECT_NEAR(dadT.toDouble(), (up - down) / (2 * h), 1e-7 * std::fabs(dadT.toDouble()));
        EXPECT_NEAR(d2adT2.toDouble(), (up1.toDouble() - down1.toDouble()) / (2 * h),
                    1e-6 * std::fabs(d2adT2.toDouble()));
    }
}

TEST_F(PhaseTest, PengRobinsonTakesTheCubicFormFromOmegaOneHalf) {
    const Phase::EosCubic::PengRobinson pr;
    const auto quadratic = [](double w) { return 0.37464 + 1.54226 * w - 0.26992 * w * w; };
    const auto cubic = [](double w) { return 0.3796 + 1.485 * w - 0.1644 * w * w + 0.01666 * w * w * w; };
    EXPECT_DOUBLE_EQ(pr.m(Value(0.5)).toDouble(), cubic(0.5));
    EXPECT_NE(cubic(0.5), quadratic(0.5));
    EXPECT_DOUBLE_EQ(pr.m(Value(0.4999)).toDouble(), quadratic(0.4999));
    EXPECT_DOUBLE_EQ(pr.m(Value(0.7)).toDouble(), cubic(0.7));
}

// The boundary moved below a component's acentric factor: m and the attractive term take the cubic, also
// after they were evaluated with the quadratic.
TEST_F(PhaseTest, PengRobinsonTakesTheCubicFormFromTheBoundaryThatACaseSets) {
    Phase::EosCubic::PengRobinson pr;
    const int co2 = 0;
    const double Tc = components[co2]->Tc().toDouble(), Pc = components[co2]->Pc().toDouble();
    const double w = components[co2]->omega().toDouble(), T = 0.7 * Tc;
    const auto attraction = [&](double m) {
        const double u = 1 + m * (1 - std::sqrt(T / Tc));
        return 0.4572355289 * gasConstant * gasConstant * Tc * Tc / Pc * u * u;
    };
    const double quadratic = 0.37464 + 1.54226 * w - 0.26992 * w * w;
    const double cubic = 0.3796 + 1.485 * w - 0.1644 * w * w + 0.01666 * w * w * w;
    EXPECT_NEAR(attractiveAt(pr, co2, T), attraction(quadratic), 1e-12 * attraction(quadratic));
    pr.setCubicFrom(w);
    EXPECT_DOUBLE_EQ(pr.m(Value(w)).toDouble(), cubic);
    EXPECT_NEAR(attractiveAt(pr, co2, T), attraction(cubic), 1e-12 * attraction(cubic));
}

// A vapor at low pressure, its density settled as the flash's start settles it: the fugacity coefficients
// tend to 1 as P falls, the departure from the ideal gas tends to nothing, for every equation.
TEST_F(PhaseTest, VaporAtLowPressureApproachesTheIdealGas) {
    for (const char* type : {"PhasePengRobinson<vapor>", "PhaseKwongRedlichSoave<vapor>", "PhaseVanDerWaals<vapor>"}) {
        auto phase = make<Phase::Generic>(type);
        const double x[] = {0.2, 0.3, 0.1, 0.25, 0.15};
        for (int i = 0; i < NCOMPONENTS; ++i) phase->x[i] = x[i];
        auto& eos = dynamic_cast<Phase::EosInterface&>(phase->model());
        double previous = 1;
        for (const double P : {1e5, 1e3, 10.0}) {
            const Value p(P, "Pa"), T(400.0, "K");
            eos.settleDensity(p, T, phase->x.value(), Tarvo::Utility::PhaseType::vapor);
            phase->preparefugacity(p, T);
            double largest = 0;
            for (int i = 0; i < NCOMPONENTS; ++i) largest = std::max(largest, std::fabs(phase->fugacity(i).toDouble()));
            EXPECT_LT(largest, 0.1 * previous) << type << " at " << P << " Pa";
            // ln phi is of the order of B P / R T, linear in P.
            EXPECT_LT(largest, 2e-7 * P) << type;
            previous = largest;
            // Z = P / (rho R T) tends to 1.
            const double rho = phase->calculate_rho(p, T).toDouble();
            EXPECT_NEAR(P / (rho * gasConstant * 400.0), 1.0, 2e-7 * P) << type;
        }
    }
}

// Where the cubic has three roots, the liquid settles on the smallest volume and the vapor on the largest:
// the roots of P = R T / (v - b) - a / ((v + delta1 b) (v + delta2 b)) found here by bisection between the
// sign changes on a fine grid of v, from the mixture's a and b.
TEST_F(PhaseTest, LiquidAndVaporSettleOnTheOuterRootsOfTheCubic) {
    using Tarvo::Utility::PhaseType;
    const double T = 330.0, P = 1e5;
    const double x[] = {0.03, 0.02, 0.9, 0.03, 0.02}; // mostly water
    for (const char* type : {"PhasePengRobinson<vapor>", "PhaseKwongRedlichSoave<vapor>", "PhaseVanDerWaals<vapor>"}) {
        auto phase = make<Phase::Generic>(type);
        for (int i = 0; i < NCOMPONENTS; ++i) phase->x[i] = x[i];
        auto& eos = dynamic_cast<Phase::EosCubic::Interface&>(phase->model());
        eos.precompute(Value(T, "K"), phase->x.value());
        const double a = eos.Amix.toDouble(), b = eos.Bmix.toDouble();
        const auto excess = [&](double v) {
            return gasConstant * T / (v - b) - a / ((v + eos.delta1 * b) * (v + eos.delta2 * b)) - P;
        };
        std::vector<double> roots;
        double v0 = b * (1 + 1e-6);
        for (double v1 = v0 * 1.001; v1 < 10 * gasConstant * T / P; v0 = v1, v1 *= 1.001) {
            if ((excess(v0) > 0) == (excess(v1) > 0)) continue;
            double lo = v0, hi = v1;
            for (int k = 0; k < 200; ++k) {
                const double mid = 0.5 * (lo + hi);
                ((excess(mid) > 0) == (excess(lo) > 0) ? lo : hi) = mid;
            }
            roots.push_back(0.5 * (lo + hi));
        }
        ASSERT_EQ(roots.size(), 3u) << type;
        for (const PhaseType kind : {PhaseType::liquid, PhaseType::vapor}) {
            eos.settleDensity(Value(P, "Pa"), Value(T, "K"), phase->x.value(), kind);
            const double v = b / eos.beta.toDouble();
            const double expected = kind == PhaseType::liquid ? roots.front() : roots.back();
            EXPECT_NEAR(v / expected, 1.0, 1e-10) << type << (kind == PhaseType::liquid ? " liquid" : " vapor");
            EXPECT_FALSE(eos.corrected) << type;
        }
    }
}

// ln phi in numbers, which a flash's start takes, is that of the phase's Values on the same root, and it is
// refused where the Values bend the pressure: three roots (mostly water at 330 K and 1 bar), only a vapor root
// (400 K and 1 kPa), and only a liquid root with the cubic's loop above it (mostly CO2 at 250 K and 50 bar).
// GERG-2004 borrows the cubics' frame, not their equation: where it answers, it must be its own.
TEST_F(PhaseTest, LnPhiInNumbersIsThatOfTheValuesOrRefused) {
    using Tarvo::Utility::PhaseType;
    struct State {
        double T, P;
        std::vector<double> x;
        bool liquidRoot, vaporRoot;
    };
    const State states[] = {{330.0, 1e5, {0.03, 0.02, 0.9, 0.03, 0.02}, true, true},
                            {400.0, 1e3, {0.2, 0.3, 0.1, 0.25, 0.15}, false, true},
                            {250.0, 5e6, {0.9, 0.04, 0.0, 0.03, 0.03}, true, false}};
    for (const char* equation : {"PhasePengRobinson", "PhaseKwongRedlichSoave", "PhaseVanDerWaals", "PhaseGerg2004"}) {
        const bool cubic = std::string(equation) != "PhaseGerg2004";
        for (const State& state : states) {
            for (const PhaseType kind : {PhaseType::liquid, PhaseType::vapor}) {
                const bool liquid = kind == PhaseType::liquid;
                auto phase = make<Phase::Generic>(std::string(equation) + (liquid ? "<liquid>" : "<vapor>"));
                for (int i = 0; i < NCOMPONENTS; ++i) phase->x[i] = state.x[i];
                std::vector<double> lnphi;
                const bool answered = phase->lnPhiInNumbers(state.P, state.T, state.x, lnphi);
                const std::string where =
                    std::string(equation) + (liquid ? " liquid at " : " vapor at ") + std::to_string(state.T) + " K";
                // A cubic answers wherever its root is there; another equation may refuse anywhere.
                const bool rootThere = liquid ? state.liquidRoot : state.vaporRoot;
                if (!(cubic ? rootThere : answered)) {
                    EXPECT_FALSE(answered) << where;
                    continue;
                }
                ASSERT_TRUE(answered) << where;
                const Value P(state.P, "Pa"), T(state.T, "K");
                auto& eos = dynamic_cast<Phase::EosInterface&>(phase->model());
                eos.settleDensity(P, T, phase->x.value(), kind);
                EXPECT_FALSE(eos.corrected) << where;
                phase->preparefugacity(P, T);
                for (int i = 0; i < NCOMPONENTS; ++i)
                    EXPECT_NEAR(lnphi[i], phase->fugacity(i).toDouble(), 1e-11) << where << ", component " << i;
            }
        }
    }
}

// The mixture at the numbers of the last call, with other derivatives: the derivative of a in x_1, not
// the one in T that the same numbers carried before. By hand, with q = sum x_i sqrt(a_i) / s and s the sum
// of x: a = q^2, and da/dx_1 = 2 q (sqrt(a_1) - q) / s.
TEST_F(PhaseTest, MixtureAtTheSameNumbersTakesTheDerivativesOfTheNewCall) {
    const Phase::EosCubic::PengRobinson pr;
    ActiveContext::Scope scope(1);
    Value T(250.0, "K");
    Vector x(NCOMPONENTS);
    const double numbers[] = {0.2, 0.3, 0.1, 0.25, 0.15};
    for (int i = 0; i < NCOMPONENTS; ++i) x[i] = numbers[i];
    T.active().setActive(0);
    pr.precompute(T, x);
    EXPECT_DOUBLE_EQ(pr.Amix.active().derivative(0), pr.dAmixdT.toDouble());
    T.active().inactivate(0);
    x[1].active().setActive(0);
    pr.precompute(T, x);
    double s = 0, q = 0;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        s += numbers[i];
        q += numbers[i] * std::sqrt(attractiveAt(pr, i, 250.0));
    }
    q /= s;
    const double expected = 2 * q * (std::sqrt(attractiveAt(pr, 1, 250.0)) - q) / s;
    EXPECT_NEAR(pr.Amix.active().derivative(0), expected, 1e-12 * std::fabs(expected));
    x[1].active().inactivate(0);
}
