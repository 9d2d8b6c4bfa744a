#include "StreamTestSupport.h"

#include <tarvo/components/ComponentCatalogue.h>
#include <tarvo/core/Jacobian.h>

#include <cmath>
#include <string>

namespace {
// CO2, CH4, H2O, N2, O2: water with some CO2 and N2.
const std::vector<double> wetGas{0.1, 0.0, 0.8, 0.1, 0.0};

double sum(const QuantityVector& v) {
    double s = 0;
    for (const Value& f : v.value()) s += f.toDouble();
    return s;
}
} // namespace

TEST_F(StreamTest, PtFlashInsideTheTwoPhaseRegionSatisfiesEquilibriumAndBalances) {
    auto s = make("StreamIdealLiquidVapor");
    feed(*s, 100, wetGas, 101325, 350);
    s->calculate(0);
    EXPECT_TRUE(s->errorList().empty()) << s->errorList().front();
    auto& V = phase(*s, "Vphase");
    auto& L = phase(*s, "Lphase");
    const double alfa = V.fraction.toDouble();
    ASSERT_GT(alfa, 0.0);
    ASSERT_LT(alfa, 1.0);
    EXPECT_NEAR(alfa + L.fraction.toDouble(), 1.0, 1e-14);
    EXPECT_NEAR(sum(V.x), 1.0, 1e-8);
    EXPECT_NEAR(sum(L.x), 1.0, 1e-8);
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const double K = components[i]->kvli(Value(350.0, "K"), Value(101325.0, "Pa")).toDouble();
        if (wetGas[i] > 0) {
            EXPECT_NEAR(V.x[i].toDouble(), K * L.x[i].toDouble(), 1e-8 * K) << i;
        }
        EXPECT_NEAR(alfa * V.x[i].toDouble() + (1 - alfa) * L.x[i].toDouble(), wetGas[i], 1e-9) << i;
        // The phases add up to the total as closely as the flash has converged.
        EXPECT_NEAR(V.ndotcomps[i].toDouble() + L.ndotcomps[i].toDouble(), total(*s).ndotcomps[i].toDouble(),
                    1e-8 * total(*s).ndot.toDouble());
    }
    EXPECT_EQ(s->T.toDouble(), 350.0);
}

TEST_F(StreamTest, PtFlashOutsideTheTwoPhaseRegionGivesOnePhase) {
    auto s = make("StreamIdealLiquidVapor");
    feed(*s, 100, wetGas, 101325, 450); // superheated
    s->calculate(0);
    EXPECT_TRUE(s->errorList().empty());
    // alfa stops at its upper bound within the flash's tolerance.
    EXPECT_NEAR(phase(*s, "Vphase").fraction.toDouble(), 1.0, 1e-7);
    for (int i = 0; i < NCOMPONENTS; ++i) EXPECT_NEAR(phase(*s, "Vphase").x[i].toDouble(), wetGas[i], 1e-9);

    feed(*s, 100, {0.02, 0.0, 0.98, 0.0, 0.0}, 1e7, 300); // subcooled: CO2 dissolved at 100 bar
    s->calculate(0);
    EXPECT_TRUE(s->errorList().empty());
    EXPECT_NEAR(phase(*s, "Lphase").fraction.toDouble(), 1.0, 1e-7);
    EXPECT_NEAR(phase(*s, "Lphase").x[0].toDouble(), 0.02, 1e-9);
    // The enthalpy of the total is that of the liquid.
    EXPECT_NEAR(total(*s).H.toDouble(), phase(*s, "Lphase").H.toDouble(), 1e-6 * std::fabs(total(*s).H.toDouble()));
}

// PT, then PH and PS from a start on another side of a phase boundary, give back the temperature and the
// vapor fraction: liquid and vapor water, the kernel's five components (water with dissolved gases, wet
// gas, a liquid under pressure), and a mixture of light hydrocarbons below, inside and above its two-phase
// range. The residuals of enthalpy and entropy hold no enthalpy of formation, so the temperature comes back
// alike for every species: to 1e-6 K.
TEST_F(StreamTest, EnthalpyAndEntropyFlashesGiveBackTheTemperature) {
    struct State {
        std::vector<std::string> entries; // empty: the list as it stands, first the kernel's five
        std::vector<double> z;
        double P, T;
        int phases; // 1 or 2, as the state is meant to be
    };
    const std::vector<State> states{
        {{}, wetGas, 101325, 350, 2},
        {{}, wetGas, 101325, 450, 1},
        {{}, {0.02, 0.0, 0.98, 0.0, 0.0}, 1e7, 300, 1},
        {{"water"}, {1.0}, 101325, 300, 1},
        {{"water"}, {1.0}, 101325, 500, 1},
        {{"propane", "butane", "pentane", "nhexane"}, {0.2, 0.3, 0.3, 0.2}, 5e5, 280, 1},
        {{"propane", "butane", "pentane", "nhexane"}, {0.2, 0.3, 0.3, 0.2}, 5e5, 340, 2},
        {{"propane", "butane", "pentane", "nhexane"}, {0.2, 0.3, 0.3, 0.2}, 5e5, 420, 1},
    };
    for (const State& state : states) {
        if (!state.entries.empty()) {
            components.clear();
            for (const std::string& entry : state.entries) components.add(newCatalogueComponent(entry, entry));
        }
        SCOPED_TRACE(std::to_string(state.T) + " K, " + std::to_string(state.P) + " Pa, " +
                     std::to_string(NCOMPONENTS) + " components");
        auto s = make("StreamIdealLiquidVapor");
        feed(*s, 100, state.z, state.P, state.T);
        s->calculate(0);
        ASSERT_TRUE(s->errorList().empty());
        const double alfa = phase(*s, "Vphase").fraction.toDouble();
        EXPECT_EQ(alfa > 0 && alfa < 1, state.phases == 2) << alfa;
        for (const char* mode : {"PH", "PS"}) {
            auto r = make("StreamIdealLiquidVapor");
            feed(*r, 100, state.z, state.P, state.T > 400 ? 250 : 550, mode);
            total(*r).H = total(*s).H;
            total(*r).S = total(*s).S;
            r->calculate(0);
            EXPECT_TRUE(r->errorList().empty()) << mode;
            EXPECT_NEAR(r->T.toDouble(), state.T, 1e-6) << mode;
            EXPECT_NEAR(phase(*r, "Vphase").fraction.toDouble(), alfa, 1e-9) << mode;
            // Given only the molar enthalpy, as a cut copy is, the stream has the mass form that goes with it.
            const double h = total(*s).h.toDouble();
            EXPECT_NEAR(total(*r).h.toDouble(), h, 1e-9 * std::fabs(h)) << mode;
        }
    }
}

// Every mode, started away from the state (at 1 bar and 300 K), gives back the state that a PT flash made:
// a two-phase one of the vapor-liquid stream in all seven, a vapor of the one-phase stream in the five it
// has; density specifications by the stream's own molecular weight. There the flash's Jacobian, from the
// derivatives of the model code, matches central differences of its residuals.
TEST_F(StreamTest, EveryModeGivesBackItsStateWithAnExactJacobian) {
    struct Case {
        const char* type;
        std::vector<double> z;
        double P, T;
        std::vector<const char*> modes;
    };
    const std::vector<Case> cases{
        {"StreamIdealLiquidVapor", wetGas, 2e5, 360, {"PT", "PA", "PH", "RH", "RT", "PS", "SA"}},
        {"StreamVapor", {0.3, 0.3, 0.0, 0.3, 0.1}, 3e5, 410, {"PT", "PH", "RH", "RT", "PS"}},
    };
    for (const Case& c : cases) {
        auto s = make(c.type);
        feed(*s, 100, c.z, c.P, c.T);
        s->calculate(0);
        ASSERT_TRUE(s->errorList().empty());
        const double alfa = phase(*s, "Vphase").fraction.toDouble();
        for (const char* mode : c.modes) {
            SCOPED_TRACE(std::string(c.type) + " " + mode);
            const bool pressureGiven = mode[0] == 'P';
            const bool temperatureGiven = mode == std::string("PT") || mode == std::string("RT");
            auto r = make(c.type);
            feed(*r, 100, c.z, pressureGiven ? c.P : 1e5, temperatureGiven ? c.T : 300, mode);
            for (const char* item : {"H", "S", "rho"})
                total(*r).Q(item) = total(*s).Q(item);
            if (r->hasChild("Vphase")) phase(*r, "Vphase").fraction = alfa;
            r->calculate(0);
            EXPECT_TRUE(r->errorList().empty());
            EXPECT_NEAR(r->T.toDouble(), c.T, 1e-6);
            EXPECT_NEAR(r->P.toDouble(), c.P, 1e-9 * c.P);

            ObjectiveNleAd& f = *r->objective();
            const unsigned n = f.size();
            std::vector<double> X(n), y(n), plus(n), minus(n);
            f.init(X.data());
            f.scalex(X.data());
            Jacobian J(n);
            f(X.data(), y.data(), &J);
            for (unsigned j = 0; j < n; ++j) {
                const double saved = X[j], h = 1e-6 * (1 + std::fabs(saved));
                X[j] = saved + h;
                f(X.data(), plus.data(), nullptr);
                X[j] = saved - h;
                f(X.data(), minus.data(), nullptr);
                X[j] = saved;
                for (unsigned i = 0; i < n; ++i) {
                    const double difference = (plus[i] - minus[i]) / (2 * h);
                    EXPECT_NEAR(J(i, j), difference, 1e-6 * (1 + std::fabs(difference))) << i << ", " << j;
                }
            }
        }
    }
}
