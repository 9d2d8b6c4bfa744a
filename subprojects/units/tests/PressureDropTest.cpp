#include "UnitTestSupport.h"

#include <tarvo/units/PressureDrop.h>

namespace {
const Value inP(2e5, "Pa");
const Value vdot(0.1, "m3/s");
const Value beta(0.9);
} // namespace

TEST_F(UnitTest, PressureDropByGivenDropOrOutletPressure) {
    Model& m = unit("Mixer", "M");
    Value deltaP(1000.0, "Pa"), P(0.0, "Pa"), K(0.0, "kg/m7");
    pressureDrop(&m, "D", deltaP, Value(1e5, "Pa"), beta, inP, P, K, vdot, "test");
    EXPECT_DOUBLE_EQ(P.toDouble(), 199000.0);
    EXPECT_DOUBLE_EQ(K.toDouble(), 1000.0 / 0.01);
    EXPECT_TRUE(m.warningList().empty());

    // No drop allowed at all: the outlet keeps the inlet pressure, K still tells the given drop.
    pressureDrop(&m, "D", deltaP, Value(0.0, "Pa"), beta, inP, P, K, vdot, "test");
    EXPECT_DOUBLE_EQ(P.toDouble(), 2e5);
    EXPECT_DOUBLE_EQ(K.toDouble(), 1000.0 / 0.01);
    EXPECT_EQ(m.warningList(), std::vector<std::string>{"DeltaP clipped"});

    P = Value(1.5e5, "Pa");
    pressureDrop(&m, "P", deltaP, Value(0.0, "Pa"), beta, inP, P, K, vdot, "test");
    EXPECT_DOUBLE_EQ(deltaP.toDouble(), 5e4);
    EXPECT_DOUBLE_EQ(K.toDouble(), 5e4 / 0.01);

    const std::string message =
        thrown([&] { pressureDrop(&m, "Q", deltaP, inP, beta, inP, P, K, vdot, "Unit::go"); });
    EXPECT_NE(message.find("Unit::go"), std::string::npos);
    EXPECT_NE(message.find("pressure option"), std::string::npos);
}

TEST_F(UnitTest, PressureDropByFlowCoefficientBendsTowardsItsLimit) {
    Model& m = unit("Mixer", "M");
    const Value deltaPMax(1e5, "Pa");
    Value deltaP(0.0, "Pa"), P(0.0, "Pa"), K(1e6, "kg/m7");
    pressureDrop(&m, "K", deltaP, deltaPMax, beta, inP, P, K, vdot, "test");
    EXPECT_DOUBLE_EQ(deltaP.toDouble(), 1e4);
    EXPECT_DOUBLE_EQ(P.toDouble(), 1.9e5);
    EXPECT_TRUE(m.warningList().empty());

    // Just past vlim the bent curve takes over where the quadratic one ends, at beta * deltaPMax.
    const double vlim = std::sqrt(0.9 * 1e5 / 1e6);
    pressureDrop(&m, "K", deltaP, deltaPMax, beta, inP, P, K, Value(vlim * (1 + 1e-9), "m3/s"), "test");
    EXPECT_NEAR(inP.toDouble() - P.toDouble(), 0.9e5, 1e-3);
    EXPECT_NEAR(deltaP.toDouble(), 0.9e5, 1e-3);
    EXPECT_TRUE(has(m.warningList(), "DeltaP clipped"));

    // However large the flow, the drop stays below deltaPMax; deltaP keeps the quadratic value.
    pressureDrop(&m, "K", deltaP, deltaPMax, beta, inP, P, K, Value(100 * vlim, "m3/s"), "test");
    const double drop = inP.toDouble() - P.toDouble();
    EXPECT_GT(drop, 0.99 * 1e5);
    EXPECT_LT(drop, 1e5);
    EXPECT_NEAR(deltaP.toDouble(), 1e6 * 100 * vlim * 100 * vlim, 1e-3);
}
