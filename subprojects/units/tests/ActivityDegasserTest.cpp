#include "../../phases/tests/NrtlByHand.h"
#include "UnitTestSupport.h"

#include <tarvo/phases/NrtlParameters.h>
#include <tarvo/units/FlashDrum.h>

#include <cmath>

using Phase::Activity::ParametersNrtl1;

// A degasser on an NRTL liquid: ethanol / water at 1 atm between its bubble and dew points. The vapor
// leaves at modified Raoult's law with the binary NRTL equations (NrtlByHand.h), tau12 -0.178, tau21 1.963
// at 350 K (tau = B / T), alpha 0.2974, and vapor pressures of Perry's 8th ed. Table 2-8 through
// ../shared/data/dippr_like.csv (eq 101).
TEST_F(UnitTest, NrtlDegasserSplitsEthanolWaterByModifiedRaoult) {
    components.clear();
    components.add(newCatalogueComponent("ethanol", "ethanol"));
    components.add(newCatalogueComponent("water", "water"));
    ParametersNrtl1::clear();
    const double B12 = -0.178 * 350, B21 = 1.963 * 350, alpha = 0.2974;
    ParametersNrtl1::setB(0, 1, B12, B21);
    ParametersNrtl1::setA(0, 1, alpha);

    auto& degasser = unit<FlashDrum>("FlashDegasser<StreamNrtl1LiquidVapor>", "STILL");
    Stream& in = connect("StreamNrtl1Liquid", "FEED", nullptr, "", &degasser, "in");
    Stream& vapor = connect("StreamVapor", "TOP", &degasser, "vapor", nullptr, "");
    Stream& liquid = connect("StreamNrtl1Liquid", "BOTTOM", &degasser, "condensate", nullptr, "");
    feed(in, 1000.0, {0.3, 0.7}, 101325.0, 300.0);
    const double T = 360.0, P = 101325.0;
    degasser.P = Value(P, "Pa");
    degasser.T = Value(T, "K");
    degasser.calculate(0);
    EXPECT_TRUE(degasser.errorList().empty());

    const double x1 = liquid.Q("Tphase.x", 0).toDouble(), y1 = vapor.Q("Tphase.x", 0).toDouble();
    ASSERT_GT(mdot(vapor), 1.0);
    ASSERT_GT(mdot(liquid), 1.0);
    const std::vector<double> g = binaryNrtl(x1, B12 / T, B21 / T, alpha);
    const double p1 = std::exp(73.304 - 7122.3 / T - 7.1424 * std::log(T) + 2.8853e-6 * T * T);
    const double p2 = std::exp(73.649 - 7258.2 / T - 7.3037 * std::log(T) + 4.1653e-6 * T * T);
    EXPECT_NEAR(y1 * P, x1 * g[0] * p1, 1e-6 * P);
    EXPECT_NEAR((1 - y1) * P, (1 - x1) * g[1] * p2, 1e-6 * P);
    for (int i = 0; i < 2; ++i)
        EXPECT_NEAR(flow(vapor, i) + flow(liquid, i), flow(in, i), 1e-9 * mdot(in)) << i;
}
