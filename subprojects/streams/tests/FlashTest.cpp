#include "StreamTestSupport.h"

#include <tarvo/components/ComponentCatalogue.h>

#include <cmath>

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

// Two-phase, superheated and mostly liquid states, each reached from a start on another side of a phase
// boundary. The flash stops at a relative enthalpy or entropy residual of 1e-5, and Newton's last step lands
// far closer than that: the temperature comes back to within 1e-5 relative.
TEST_F(StreamTest, EnthalpyAndEntropySpecificationsRecoverTheTemperature) {
    for (double T : {350.0, 450.0, 300.0}) {
        auto s = make("StreamIdealLiquidVapor");
        feed(*s, 100, wetGas, 101325, T);
        s->calculate(0);
        const Value H = total(*s).H, S = total(*s).S;
        const double alfa = phase(*s, "Vphase").fraction.toDouble();

        auto h = make("StreamIdealLiquidVapor");
        feed(*h, 100, wetGas, 101325, 400, "PH");
        total(*h).H = H;
        h->calculate(0);
        EXPECT_TRUE(h->errorList().empty()) << T;
        EXPECT_NEAR(h->T.toDouble(), T, 1e-5 * T);
        EXPECT_NEAR(phase(*h, "Vphase").fraction.toDouble(), alfa, 1e-5);
        EXPECT_EQ(total(*h).H.toDouble(), H.toDouble()); // the specification stays as given

        auto e = make("StreamIdealLiquidVapor");
        feed(*e, 100, wetGas, 101325, 330, "PS");
        total(*e).S = S;
        e->calculate(0);
        EXPECT_TRUE(e->errorList().empty()) << T;
        EXPECT_NEAR(e->T.toDouble(), T, 1e-5 * T);
    }
}

// Density specifications on the ideal gas give back the pressure and temperature of the state they were taken
// from; the flash turns the mass density into a molar one by the stream's own molecular weight.
TEST_F(StreamTest, DensitySpecificationsRecoverTheState) {
    const std::vector<double> gas{0.3, 0.3, 0.0, 0.3, 0.1};
    auto s = make("StreamVapor");
    feed(*s, 100, gas, 3e5, 410);
    s->calculate(0);
    const Value rho = total(*s).rho, H = total(*s).H;
    for (const char* mode : {"RT", "RH"}) {
        auto r = make("StreamVapor");
        feed(*r, 100, gas, 1e5, mode == std::string("RT") ? 410 : 350, mode);
        total(*r).rho = rho;
        total(*r).H = H;
        r->calculate(0);
        EXPECT_TRUE(r->errorList().empty()) << mode;
        EXPECT_NEAR(r->P.toDouble(), 3e5, 1e-5 * 3e5) << mode;
        EXPECT_NEAR(r->T.toDouble(), 410, 1e-5 * 410) << mode;
    }

}
