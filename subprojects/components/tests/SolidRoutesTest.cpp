// Routes of solids and biochemical species, the stand-in routes, and the older short correlations.
#include <tarvo/components/Purecomps.h>
#include <tarvo/components/RoutesCmu.h>

#include "ComponentTestSupport.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace componentTests;

namespace {

// A record with all eight coefficients in use, on 300..800 K.
ParameterBkk fullRecord() {
    return ParameterBkk(-1.2e8, 850.0, -95.0, -0.012, 3.0e-6, -4.0e-10, 1.5e5, -2.0e6, 300, 800);
}

double at(const GroupBkk& g, ParameterBkk::Property p, double x) {
    return g.calculate(p, Active(x)).val();
}

} // namespace

TEST(ParameterBkk, PropertiesDeriveFromTheFreeEnergy) {
    const ParameterBkk r = fullRecord();
    // Python: G from the polynomial; S = -dG/dx by complex step; H = G + x S; Cp = x dS/dx.
    EXPECT_NEAR(r.calculate_(ParameterBkk::freeEnergy, 500.0).val(), -119872551.88467506, 1e-6);
    EXPECT_NEAR(r.calculate_(ParameterBkk::entropy, 500.0).val(), -154.09423064989187, 1e-9);
    EXPECT_NEAR(r.calculate_(ParameterBkk::enthalpy, 500.0).val(), -119949599.0, 1e-6);
    EXPECT_NEAR(r.calculate_(ParameterBkk::heatCapacity, 500.0).val(), 101.996, 1e-9);
}

TEST(ParameterBkk, ExtrapolationHoldsTheHeatCapacityOfTheBound) {
    const ParameterBkk r = fullRecord();
    EXPECT_NEAR(r.extrapolatesx_(ParameterBkk::heatCapacity, 250.0).val(), 97.82071110464585, 1e-7);
    EXPECT_NEAR(r.extrapolatesx_(ParameterBkk::enthalpy, 250.0).val(), -119974529.9822219, 1e-6);
    EXPECT_NEAR(r.extrapolatesx_(ParameterBkk::entropy, 250.0).val(), -223.02377072443306, 1e-7);
    // Continuous at both bounds, with the free energy H - x S.
    for (auto p : {ParameterBkk::heatCapacity, ParameterBkk::enthalpy, ParameterBkk::entropy,
                   ParameterBkk::freeEnergy}) {
        EXPECT_NEAR(r.extrapolatesx_(p, 300.0).val(), r.calculate_(p, 300.0).val(), 1e-6) << p;
        EXPECT_NEAR(r.extrapolatedx_(p, 800.0).val(), r.calculate_(p, 800.0).val(), 1e-6) << p;
    }
    const double h = r.extrapolatedx_(ParameterBkk::enthalpy, 900.0).val();
    const double s = r.extrapolatedx_(ParameterBkk::entropy, 900.0).val();
    EXPECT_NEAR(r.extrapolatedx_(ParameterBkk::freeEnergy, 900.0).val(), h - 900 * s, 1e-6);
}

TEST(GroupBkk, RecordsJoinInEitherOrderAndTheGroupPicksTheOneHoldingT) {
    const ParameterBkk low(-1e8, 100, -30, 0, 0, 0, 0, 0, 200, 500);
    const ParameterBkk high(-1e8 + 5e3, 100, -40, 0, 0, 0, 0, 0, 500, 1000);
    GroupBkk group;
    group.push_(high);
    group.push_(low);
    ASSERT_EQ(group.records().size(), 2u);
    EXPECT_EQ(group.records().front().xmin(), 200.0);
    EXPECT_EQ(at(group, ParameterBkk::heatCapacity, 300), 30.0);
    EXPECT_EQ(at(group, ParameterBkk::heatCapacity, 700), 40.0);
    EXPECT_EQ(at(group, ParameterBkk::heatCapacity, 100), 30.0);
    EXPECT_EQ(at(group, ParameterBkk::heatCapacity, 2000), 40.0);
    // Forward derivative of the enthalpy is the heat capacity, inside and outside the group.
    for (double t : {150.0, 300.0, 700.0, 1500.0}) {
        const RouteHeatSolidBkk route(group);
        EXPECT_NEAR(forwardDerivative([&](const Value& T) { return route.hs(T, P0); }, t, "K"),
                    route.cps(K(t), P0).toDouble(), 1e-9)
            << t;
    }
}

TEST(GroupBkk, SettersNeedASingleRecord) {
    GroupBkk two{ParameterBkk(-1e8, 100, -30, 0, 0, 0, 0, 0, 200, 500),
                 ParameterBkk(-1e8, 100, -30, 0, 0, 0, 0, 0, 500, 1000)};
    EXPECT_EQ(errorMessage([&] { two.setDh0(Value(0.0, "J/kmol")); }),
              "Error was thrown by function: GroupBkk::setDh0\n"
              "Generic Run-Time error: setDh0 only supported if the group contains only one parameter set\n");
    EXPECT_EQ(errorMessage([&] { two.setCp(Value(1.0, "J/(kmol*K)")); }),
              "Error was thrown by function: GroupBkk::setCp\n"
              "Generic Run-Time error: setCp only supported if the group contains only one parameter set\n");
}

TEST(GroupBkk, SettersKeepTheStateAt298K) {
    GroupBkk one{fullRecord()};
    const double s0 = at(one, ParameterBkk::entropy, 298.15);
    one.setDh0(Value(-5e7, "J/kmol"));
    EXPECT_NEAR(at(one, ParameterBkk::enthalpy, 298.15), -5e7, 1e-6);
    EXPECT_NEAR(at(one, ParameterBkk::entropy, 298.15), s0, 1e-9);
    one.setCp(Value(30000.0, "J/(kmol*K)"));
    EXPECT_NEAR(at(one, ParameterBkk::enthalpy, 298.15), -5e7, 1e-6);
    EXPECT_NEAR(at(one, ParameterBkk::entropy, 298.15), s0, 1e-9);
    EXPECT_NEAR(at(one, ParameterBkk::heatCapacity, 650), 30000.0, 1e-9);
    EXPECT_NEAR(at(one, ParameterBkk::enthalpy, 500) - at(one, ParameterBkk::enthalpy, 400), 3e6, 1e-6);
}

TEST(Solids, StandardStatesOfTheCatalogue) {
    // CRC Handbook: NaCl -411.2 kJ/mol, 72.1 J/(mol*K), 50.5 J/(mol*K).
    const purecomps::NaCl salt("NaCl");
    EXPECT_NEAR(salt.hs(T0, P0).toDouble("J/kmol"), -4.112e8, 1e-3);
    EXPECT_NEAR(salt.ss(T0, P0).toDouble("J/(kmol*K)"), 72100, 1e-6);
    EXPECT_NEAR(salt.cps(K(600), P0).toDouble("J/(kmol*K)"), 50500, 1e-9);
    // Dissolved, the salt keeps the solid's properties.
    EXPECT_EQ(salt.hl(K(350), P0).toDouble(), salt.hs(K(350), P0).toDouble());
    EXPECT_EQ(salt.rhol(K(350), P0).toDouble(), salt.rhos(K(350), P0).toDouble());
    EXPECT_NEAR(salt.rhos(K(350), P0).toDouble("kmol/m3"), 2170 / salt.mw().toDouble(), 1e-12);
}

TEST(Solids, MeltTakesTheHeatOfFusionAtTheMeltingPoint) {
    // Iron: NIST-JANAF melting point 1809 K and heat of fusion 13.81 kJ/mol.
    const purecomps::Fe iron("Fe");
    const Value Tm = K(1809);
    EXPECT_NEAR(iron.hl(Tm, P0).toDouble() - iron.hs(Tm, P0).toDouble(), 1.381e7, 1e-3);
    EXPECT_NEAR(iron.sl(Tm, P0).toDouble() - iron.ss(Tm, P0).toDouble(), 1.381e7 / 1809, 1e-6);
    EXPECT_NEAR(iron.cpl(K(2000), P0).toDouble(), 46020, 1e-9);
}

TEST(ChoiOkos, ProteinHeatAndDensity) {
    const purecomps::Protein protein("Protein");
    const Value T = K(323.15);
    // Python: the polynomial at 50 degC times 18.0153; integrals from 25 degC by Simpson's rule.
    EXPECT_NEAR(protein.cps(T, P0).toDouble("J/(kmol*K)"), 37208.129550075, 1e-8);
    EXPECT_NEAR(protein.hs(T, P0).toDouble("J/kmol"), 924013.3411823425, 1e-6);
    EXPECT_NEAR(protein.ss(T, P0).toDouble("J/(kmol*K)"), 2975.788108486362, 1e-8);
    double derT = 0;
    EXPECT_NEAR(protein.rhos(T, P0, &derT).toDouble("kmol/m3"), 72.38180879585686, 1e-12);
    EXPECT_NEAR(derT, -0.5184 / 18.0153, 1e-15);
    EXPECT_EQ(protein.hl(T, P0).toDouble(), protein.hs(T, P0).toDouble());
    EXPECT_EQ(protein.cpl(T, P0).toDouble(), protein.cps(T, P0).toDouble());
    EXPECT_NEAR(forwardDerivative([&](const Value& t) { return protein.ss(t, P0); }, 323.15, "K"),
                protein.cps(T, P0).toDouble() / 323.15, 1e-9);
}

TEST(RouteTransportSimple, ValuesAt20CelsiusAndTheirLaws) {
    const purecomps::Protein protein("Protein");
    const Value t20 = K(293.15);
    EXPECT_NEAR(protein.muv(t20, P0).toDouble("cP"), 0.02, 1e-15);
    EXPECT_NEAR(protein.mul(t20).toDouble("Pa*s"), 100.0, 1e-10);
    EXPECT_NEAR(protein.kv(t20, P0).toDouble("W/(m*K)"), 0.026, 1e-15);
    EXPECT_NEAR(protein.kl(t20).toDouble("W/(m*K)"), 0.6, 1e-15);
    EXPECT_NEAR(protein.sigma(t20).toDouble("N/m"), 0.08, 1e-15);
    // Python, with Tc = 2000 K.
    const Value T = K(350);
    EXPECT_NEAR(protein.muv(T, P0).toDouble(), 2.3625959368902586e-05, 1e-18);
    EXPECT_NEAR(protein.mul(T).toDouble(), 25.02736985705358, 1e-11);
    EXPECT_NEAR(protein.kl(T).toDouble(), 0.5885166187737089, 1e-15);
    EXPECT_NEAR(protein.sigma(T).toDouble(), 0.07676125455044185, 1e-15);
    EXPECT_NEAR(purecomps::Ashes("Ashes").mul(t20).toDouble("Pa*s"), 10.0, 1e-11);
}

TEST(DummyRoutes, StandInValues) {
    const purecomps::CaF2 solid("CaF2");
    EXPECT_EQ(solid.psat(K(500)).toDouble("Pa"), 0.0);
    EXPECT_DOUBLE_EQ(solid.dhvl(K(500)).toDouble("J/kmol"), 500 * 4186.8);
    EXPECT_DOUBLE_EQ(solid.cpv(K(500), P0).toDouble("J/(kmol*K)"), 20000.0);
    EXPECT_DOUBLE_EQ(solid.hv(K(500), P0).toDouble("J/kmol"), 20000.0 * (500 - 298.15) - 2.41814e8);
    EXPECT_NEAR(solid.sv(K(500), Pa(2e5)).toDouble(),
                20000 * std::log(500 / 298.15) - 8314.4 * std::log(2e5 / 101325), 1e-9);
    EXPECT_EQ(solid.rhov(K(500), P0).toDouble("kmol/m3"), 1.0);
    EXPECT_DOUBLE_EQ(solid.muv(K(500), P0).toDouble("Pa*s"), 2e-5);
    EXPECT_DOUBLE_EQ(solid.mul(K(500)).toDouble("Pa*s"), 0.3);
    EXPECT_DOUBLE_EQ(solid.kv(K(500), P0).toDouble(), 0.026);
    EXPECT_DOUBLE_EQ(solid.kl(K(500)).toDouble(), 0.6);
    EXPECT_DOUBLE_EQ(solid.sigma(K(500)).toDouble(), 0.08);
    // The solid state of a fluid: 1 kcal/(kg*K) for 18 kg.
    const purecomps::methane ch4("CH4");
    EXPECT_DOUBLE_EQ(ch4.cps(K(80), P0).toDouble(), 4186.8 * 18);
    EXPECT_DOUBLE_EQ(ch4.hs(K(80), P0).toDouble(), 4186.8 * 18 * 80);
    EXPECT_DOUBLE_EQ(ch4.ss(K(80), P0).toDouble(), 4186.8 * 18 * std::log(80.0));
    // ... with the density of the liquid at the lower end of its density record (Python, DIPPR 105).
    EXPECT_NEAR(ch4.rhos(K(80), P0).toDouble("kmol/m3"), 28.179948075677302, 1e-12);
}

namespace {

struct CmuProbe : ComponentBase, RouteSaturationCmu, RouteHeatVaporCmu, RouteTransportCmu {
    CmuProbe()
        : ComponentBase(Value(18.0, "kg/kmol"), Pa(2.2e7), K(647.0), Value(322.0, "kg/m3"), zero,
                        Value(0.0188, "m3/kmol"), Value(0.229), Value(-2.4e8, "J/kmol"),
                        Value(-2.3e8, "J/kmol"), Value(0.344)),
          RouteSaturationCmu(23.2, 3800.0, -46.0, 280.0, 450.0),
          RouteHeatVaporCmu(7.7, 4.6e-4, 2.5e-6, -8.6e-10), RouteTransportCmu(2.0, 500.0) {}
};

} // namespace

TEST(RoutesCmu, AntoineInsideAndStraightLinesOutside) {
    const CmuProbe probe;
    EXPECT_NEAR(probe.psat(K(350)).toDouble(), std::exp(23.2 - 3800.0 / (350 - 46)), 1e-9);
    double d1 = 0, d2 = 0, d1b = 0, d2b = 0;
    const double pb = probe.psat(K(450), &d1b, &d2b).toDouble();
    const double p = probe.psat(K(500), &d1, &d2).toDouble();
    EXPECT_NEAR(p, pb + d1b * 50, 1e-6);
    EXPECT_EQ(d1, d1b);
    EXPECT_EQ(d2, d2b);
    // Slope at the bound by hand: P b / (T + c)^2.
    EXPECT_NEAR(relative(d1b, pb * 3800.0 / (404.0 * 404.0)), 0, 1e-12);
}

TEST(RoutesCmu, PolynomialHeatCapacityInKilocalories) {
    const CmuProbe probe;
    const double t = 400, cp = 7.7 + t * (4.6e-4 + t * (2.5e-6 - t * 8.6e-10));
    EXPECT_NEAR(probe.cpv(K(t), P0).toDouble("J/(kmol*K)"), 4186.8 * cp, 1e-9);
    EXPECT_NEAR(probe.hv(T0, P0).toDouble(), -2.4e8, 1e-6);
    EXPECT_NEAR(forwardDerivative([&](const Value& T) { return probe.hv(T, P0); }, t, "K"), 4186.8 * cp,
                1e-8);
    EXPECT_NEAR(forwardDerivative([&](const Value& T) { return probe.sv(T, P0); }, t, "K"), 4186.8 * cp / t,
                1e-10);
    EXPECT_NEAR(probe.mul(K(400)).toDouble("cP"), (1 / 400.0 - 1 / 500.0) * 2.0, 1e-15);
    EXPECT_EQ(probe.kl(K(400)).toDouble(), 0.0);
}
