// The DIPPR forms of the fluid routes against values computed independently from the printed formulas
// (Python, double precision; integrals by Simpson's rule on 20000 intervals), and the rules that
// continue each record beyond its range.
#include <tarvo/components/Purecomps.h>

#include "ComponentTestSupport.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace componentTests;

namespace {

// A species with nitrogen's constants and transport records chosen by the test.
struct TransportProbe : ComponentBase, RouteTransportDippr {
    TransportProbe(const ParameterDippr7& kl, const ParameterDippr7& sigma)
        : ComponentBase(Value(28.0, "kg/kmol"), Pa(3.4e6), K(126.2), Value(314.0, "kg/m3"), zero,
                        Value(0.0347, "m3/kmol"), Value(0.289), Value(0.0, "J/kmol"), Value(0.0, "J/kmol"),
                        Value(0.0377)),
          RouteTransportDippr(ParameterDippr7(6.5592e-7, 0.6081, 54.714, 0, 0, 63.15, 1970),
                              ParameterDippr7(16.004, -181.61, -5.1551, 0, 0, 63.15, 124),
                              ParameterDippr7(0.00033143, 0.7722, 16.323, 373.72, 0, 63.15, 2000), kl,
                              sigma) {}
};

} // namespace

TEST(RouteHeatVaporDippr, HeatCapacityIsTheAlyLeeForm) {
    const purecomps::CO2 co2("CO2", false);
    EXPECT_NEAR(co2.cpv(K(400), P0).toDouble("J/(kmol*K)"), 41650.57558999544, 1e-8);
    // C / T = 23.8: the sinh term is 1e-18 of B and must not overflow or vanish into NaN.
    EXPECT_NEAR(co2.cpv(K(60), P0).toDouble("J/(kmol*K)"), 29370.03118489037, 1e-8);
    for (double t : {2.0, 5.0}) {
        EXPECT_TRUE(std::isfinite(co2.cpv(K(t), P0).toDouble())) << t;
        EXPECT_TRUE(std::isfinite(co2.hv(K(t), P0).toDouble())) << t;
        EXPECT_TRUE(std::isfinite(co2.sv(K(t), P0).toDouble())) << t;
    }
}

TEST(RouteHeatVaporDippr, EnthalpyAndEntropyIntegrateTheHeatCapacity) {
    const purecomps::CO2 co2("CO2", false);
    EXPECT_NEAR(co2.hv(K(400), P0).toDouble("J/kmol"), -389478116.88267154, 1e-3);
    EXPECT_NEAR(co2.hv(K(1200), P0).toDouble("J/kmol"), -349086043.2777904, 1e-3);
    EXPECT_NEAR(co2.sv(K(400), Pa(2e5)).toDouble("J/(kmol*K)"), 8832.248805778954, 1e-6);
    EXPECT_NEAR(co2.sv(K(60), P0).toDouble("J/(kmol*K)"), -46712.768531176676, 1e-6);
    // Gibbs energy of the pure vapor at the reference state is dg0.
    EXPECT_NEAR(co2.gv(T0, P0).toDouble("J/kmol"), -3.9437e8, 1e-4);
}

TEST(RouteHeatVaporDippr, ForwardDerivativesMatchTheCalculus) {
    const purecomps::CO2 co2("CO2", false);
    const double cp = co2.cpv(K(450), P0).toDouble();
    EXPECT_NEAR(forwardDerivative([&](const Value& T) { return co2.hv(T, P0); }, 450, "K"), cp, 1e-8 * cp);
    EXPECT_NEAR(forwardDerivative([&](const Value& T) { return co2.sv(T, P0); }, 450, "K"), cp / 450,
                1e-8 * cp);
    EXPECT_NEAR(forwardDerivative([&](const Value& P) { return co2.sv(K(450), P); }, 3e5, "Pa"),
                -8314.4 / 3e5, 1e-12);
    const auto cpv = [&](const Value& T) { return co2.cpv(T, P0); };
    EXPECT_NEAR(forwardDerivative(cpv, 450, "K"), centralDifference(cpv, 450, 1e-3, "K"), 1e-5);
}

TEST(RouteHeatVaporDippr, ConstantHeatCapacityWhenBIsZero) {
    const purecomps::helium he("He");
    const double A = he.cpv(K(300), P0).toDouble();
    EXPECT_EQ(A, 20786.0);
    EXPECT_EQ(he.cpv(K(900), P0).toDouble(), A);
    EXPECT_NEAR(he.hv(K(500), P0).toDouble() - he.hv(K(300), P0).toDouble(), A * 200, 1e-6);
    EXPECT_NEAR(he.sv(K(500), P0).toDouble() - he.sv(K(300), P0).toDouble(), A * std::log(500.0 / 300), 1e-9);
}

TEST(RouteHeatVaporDippr, ArgumentsInWrongUnitsNameTheRoute) {
    const purecomps::CO2 co2("CO2", false);
    const std::string message = errorMessage([&] { co2.hv(Pa(300), P0); });
    EXPECT_NE(message.find("incompatible units"), std::string::npos) << message;
    EXPECT_NE(message.find("Called from function: RouteHeatVaporDippr::hv\n"), std::string::npos) << message;
    EXPECT_NE(errorMessage([&] { co2.sv(K(300), K(300)); }).find("RouteHeatVaporDippr::sv"),
              std::string::npos);
}

TEST(RouteVolumeLiquidDippr, DensityInsideTheRangeWithItsSlope) {
    const purecomps::methane ch4("CH4");
    double derT = 0;
    EXPECT_NEAR(ch4.rhol(K(150), P0, &derT).toDouble("kmol/m3"), 22.266750991816174, 1e-12);
    EXPECT_NEAR(derT, -0.1256252303782901, 1e-8);
    EXPECT_NEAR(forwardDerivative([&](const Value& T) { return ch4.rhol(T, P0); }, 150, "K"), derT, 1e-14);
}

TEST(RouteVolumeLiquidDippr, DensityIsHeldAtTheBoundsWithoutSlope) {
    const purecomps::methane ch4("CH4");
    double derT = 1;
    for (double t : {50.0, 90.69}) {
        EXPECT_NEAR(ch4.rhol(K(t), P0, &derT).toDouble(), 28.179948075677302, 1e-12) << t;
        EXPECT_EQ(derT, 0.0);
        EXPECT_EQ(forwardDerivative([&](const Value& T) { return ch4.rhol(T, P0); }, t, "K"), 0.0);
    }
    for (double t : {190.56, 400.0}) {
        EXPECT_NEAR(ch4.rhol(K(t), P0, &derT).toDouble(), 10.082136940916621, 1e-12) << t;
        EXPECT_EQ(derT, 0.0);
    }
}

TEST(RouteVolumeVaporIdeal, IdealGasDensityAndPartials) {
    const purecomps::N2 n2("N2", false);
    double dT = 0, dP = 0;
    const double rho = n2.rhov(K(300), Pa(2e5), &dT, &dP).toDouble("kmol/m3");
    EXPECT_DOUBLE_EQ(rho, 2e5 / (8314.4 * 300));
    EXPECT_DOUBLE_EQ(dT, -rho / 300);
    EXPECT_DOUBLE_EQ(dP, rho / 2e5);
}

TEST(RouteTransportDippr, FormsInsideTheirRanges) {
    const purecomps::N2 n2("N2", false);
    EXPECT_NEAR(n2.muv(K(300), P0).toDouble("Pa*s"), 1.7800460323334435e-05, 1e-18);
    EXPECT_NEAR(n2.kv(K(300), P0).toDouble("W/(m*K)"), 0.02561582618185064, 1e-15);
    EXPECT_NEAR(n2.mul(K(100)).toDouble("Pa*s"), 7.104388126937601e-05, 1e-17);
    EXPECT_NEAR(n2.kl(K(100)).toDouble("W/(m*K)"), 0.0977, 1e-15);
    EXPECT_NEAR(n2.sigma(K(100)).toDouble("N/m"), 0.0040749687859228095, 1e-15);
}

TEST(RouteTransportDippr, ViscositiesContinueLinearlyInInverseTemperature) {
    const purecomps::N2 n2("N2", false);
    EXPECT_NEAR(n2.muv(K(2500), P0).toDouble(), 7.358586183251947e-05, 1e-16);
    EXPECT_NEAR(n2.muv(K(50), P0).toDouble(), 3.2973958789392004e-06, 1e-17);
    EXPECT_NEAR(n2.mul(K(140)).toDouble(), 2.1847980413577677e-05, 1e-17);
    EXPECT_NEAR(n2.mul(K(55)).toDouble(), 0.000369026833918382, 1e-16);
    // No step at the bounds.
    for (double b : {124.0, 63.15})
        EXPECT_NEAR(relative(n2.mul(K(b * (1 + 1e-9))).toDouble(), n2.mul(K(b * (1 - 1e-9))).toDouble()), 0,
                    1e-7);
    EXPECT_NEAR(relative(n2.muv(K(1970 + 1e-6), P0).toDouble(), n2.muv(K(1970 - 1e-6), P0).toDouble()), 0,
                1e-9);
}

TEST(RouteTransportDippr, ConductivitiesAndSurfaceTensionBelowTheirRanges) {
    const purecomps::N2 n2("N2", false);
    // kl falls with T at 63.15 K: a straight line below; kv rises there: an exponential.
    EXPECT_NEAR(n2.kl(K(60)).toDouble(), 0.16478, 1e-14);
    EXPECT_NEAR(relative(n2.kv(K(40), P0).toDouble(), 0.004019398544215144), 0,
                1e-8); // Python slope by difference
    EXPECT_NEAR(n2.sigma(K(60)).toDouble(), 0.012958657306220015, 1e-11);
    EXPECT_NEAR(relative(n2.kv(K(63.15 - 1e-10), P0).toDouble(), n2.kv(K(63.15 + 1e-10), P0).toDouble()), 0,
                1e-10);
}

TEST(RouteTransportDippr, FallingLiquidConductivityAboveRangeIsAPowerAndStaysPositive) {
    const purecomps::N2 n2("N2", false);
    EXPECT_NEAR(n2.kl(K(130)).toDouble(), 0.04842022508669542, 1e-14);
    for (double t : {200.0, 1000.0, 1e5})
        EXPECT_GT(n2.kl(K(t)).toDouble(), 0.0) << t;
    EXPECT_NEAR(relative(n2.kl(K(124 + 1e-10)).toDouble(), n2.kl(K(124 - 1e-10)).toDouble()), 0, 1e-10);
}

TEST(RouteTransportDippr, RisingLiquidConductivityAboveRangeGrowsLinearly) {
    // kl = 0.1 + 0.001 t on 100..200 K; above: 0.3 + 0.001 (t - 200).
    const TransportProbe probe(ParameterDippr7(0.1, 0.001, 0, 0, 0, 100, 200),
                               ParameterDippr7(0.02901, 1.2485, 0, 0, 0, 63.15, 110));
    EXPECT_NEAR(probe.kl(K(250)).toDouble(), 0.35, 1e-14);
    EXPECT_NEAR(probe.kl(K(1200)).toDouble(), 1.3, 1e-13);
    // Below the range the rising form continues as an exponential: 0.2 exp(0.001 / 0.2 (t - 100)).
    EXPECT_NEAR(probe.kl(K(50)).toDouble(), 0.2 * std::exp(0.005 * -50), 1e-15);
}

TEST(RouteTransportDippr, SurfaceTensionIsHeldAboveItsRange) {
    const TransportProbe probe(ParameterDippr7(0.2654, -0.001677, 0, 0, 0, 63.15, 124),
                               ParameterDippr7(0.02901, 1.2485, 0, 0, 0, 63.15, 110));
    // 0.02901 (1 - 110 / 126.2)^1.2485, by hand.
    const double atTmax = 0.02901 * std::pow(1 - 110 / 126.2, 1.2485);
    EXPECT_NEAR(probe.sigma(K(110)).toDouble(), atTmax, 1e-16);
    EXPECT_NEAR(probe.sigma(K(120)).toDouble(), atTmax, 1e-16);
    EXPECT_NEAR(probe.sigma(K(500)).toDouble(), atTmax, 1e-16);
}
