// The two routes of water of its own: the ideal-gas heat as a polynomial in ln T, and the empirical
// density of the liquid.
#include <tarvo/components/Purecomps.h>
#include <tarvo/components/RouteVolumeLiquidWater.h>

#include "ComponentTestSupport.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace componentTests;

TEST(RouteHeatVaporVolp, HeatCapacityEnthalpyAndEntropy) {
    const purecomps::water water("H2O");
    // Independent Python: the polynomial at T, its integrals from T0 by Simpson's rule.
    EXPECT_NEAR(water.cpv(T0, P0).toDouble("J/(kmol*K)"), 33365.70703682355, 1e-8);
    EXPECT_NEAR(water.cpv(K(800), P0).toDouble("J/(kmol*K)"), 38909.36538340748, 1e-8);
    EXPECT_EQ(water.hv(T0, P0).toDouble("J/kmol"), -2.41814e8);
    EXPECT_NEAR(water.hv(K(800), P0).toDouble("J/kmol"), -223897640.2420865, 1e-3);
    EXPECT_NEAR(water.sv(K(800), Pa(5e5)).toDouble("J/(kmol*K)"), -22846.28872367915, 1e-6);
    // Heat capacity and enthalpy carry their derivatives.
    const auto cpv = [&](const Value& T) { return water.cpv(T, P0); };
    EXPECT_NEAR(forwardDerivative(cpv, 500, "K"), centralDifference(cpv, 500, 1e-3, "K"), 1e-6);
    EXPECT_NEAR(forwardDerivative([&](const Value& T) { return water.hv(T, P0); }, 500, "K"),
                water.cpv(K(500), P0).toDouble(), 1e-8);
    // At and below 0 K, where a solver's trial step may land, no number: NaN, not an abort.
    for (const double T : {0.0, -50.0}) {
        EXPECT_TRUE(std::isnan(water.cpv(K(T), P0).toDouble())) << T;
        EXPECT_TRUE(std::isnan(water.hv(K(T), P0).toDouble())) << T;
    }
}

TEST(RouteVolumeLiquidWater, SaturatedDensitiesOfIapws95) {
    // IAPWS R6-95(2018), Table 8: T, saturation pressure, density of the liquid; the fit's tolerance,
    // wider near the critical point.
    const double table8[3][4] = {{275, 0.000698451167e6, 999.887406, 0.002},
                                 {450, 0.932203564e6, 890.34125, 0.002},
                                 {625, 16.9082693e6, 567.090385, 0.05}};
    const RouteVolumeLiquidWater route;
    const double mw = 18.015268; // IAPWS-95
    for (const auto& row : table8)
        EXPECT_NEAR(relative(route.rhol(K(row[0]), Pa(row[1])).toDouble("kmol/m3") * mw, row[2]), 0, row[3])
            << row[0];
}

TEST(RouteVolumeLiquidWater, ContinuousAcrossTheCompressionLaws) {
    const RouteVolumeLiquidWater route;
    for (double t : {280.0, 400.0, 500.0, 640.0}) {
        double below = 0, above = 0;
        const double rBelow = route.rhol(K(t), Pa(1e8 * (1 - 1e-12)), &below).toDouble();
        const double rAbove = route.rhol(K(t), Pa(1e8), &above).toDouble();
        EXPECT_NEAR(relative(rBelow, rAbove), 0, 1e-12) << t;
        EXPECT_NEAR(relative(below, above), 0, 1e-9) << t;
    }
}

TEST(RouteVolumeLiquidWater, TemperatureDerivativeMatchesDifference) {
    const RouteVolumeLiquidWater route;
    const double cases[][2] = {{300, 1e5}, {340, 1e5}, {500, 5e6}, {600, 3e7}, {350, 3e8}};
    for (const auto& c : cases) {
        double derT = 0;
        route.rhol(K(c[0]), Pa(c[1]), &derT);
        const double fd =
            centralDifference([&](const Value& T) { return route.rhol(T, Pa(c[1])); }, c[0], 1e-4, "K");
        EXPECT_NEAR(derT, fd, 1e-6 * std::fabs(fd) + 1e-9) << c[0] << " K " << c[1] << " Pa";
        EXPECT_NEAR(forwardDerivative([&](const Value& T) { return route.rhol(T, Pa(c[1])); }, c[0], "K"),
                    derT, 1e-12);
        const double fdP = centralDifference([&](const Value& P) { return route.rhol(K(c[0]), P); }, c[1],
                                             1e-3 * c[1], "Pa");
        EXPECT_NEAR(forwardDerivative([&](const Value& P) { return route.rhol(K(c[0]), P); }, c[1], "Pa"),
                    fdP, 1e-6 * std::fabs(fdP) + 1e-15);
    }
}

TEST(RouteVolumeLiquidWater, SaturationFitIsHeldBeyondItsTemperatureRange) {
    const RouteVolumeLiquidWater route;
    // Above 1e8 Pa only the clipped saturation fit enters: nothing changes above 1015 K.
    EXPECT_EQ(route.rhol(K(1100), Pa(2e8)).toDouble(), route.rhol(K(1015), Pa(2e8)).toDouble());
    double derT = 1;
    route.rhol(K(1100), Pa(2e8), &derT);
    EXPECT_EQ(derT, 0.0);
}
