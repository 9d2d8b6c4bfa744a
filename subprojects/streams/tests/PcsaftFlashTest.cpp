#include "StreamTestSupport.h"

#include <tarvo/components/ComponentCatalogue.h>

#include <cmath>
#include <string>
#include <vector>

// Streams on PC-SAFT with propane and n-butane from the catalogue.

class PcsaftFlashTest : public StreamTest {
protected:
    void SetUp() override {
        StreamTest::SetUp();
        components.clear();
        for (const char* name : {"propane", "butane"}) components.add(newCatalogueComponent(name, name));
    }
};

// Half of pure propane vaporised at the GERG-2008 vapor pressure of 300 K, 996884.825 Pa
// (../shared/data/pure_fluid_states.json): 1 % in pressure is 0.3 K there, by the table's own slope
// between 230 and 300 K (d ln p / dT = ln(996884.825 / 96602.36328) / 70 K = 0.033 / K).
TEST_F(PcsaftFlashTest, PropaneBoilsNearTheTabulatedTemperature) {
    auto s = make("StreamPcsaftLiquidVapor");
    ASSERT_NE(s, nullptr);
    feed(*s, 10.0, {1.0, 0.0}, 996884.825, 280.0, "PA");
    phase(*s, "Vphase").fraction = 0.5;
    s->calculate(0);
    ASSERT_TRUE(s->errorList().empty()) << s->errorList().front();
    EXPECT_NEAR(s->T.toDouble(), 300.0, 0.3);
    EXPECT_GT(phase(*s, "Lphase").rho.toDouble(), 10 * phase(*s, "Vphase").rho.toDouble());
}

// A binary inside its two-phase region: PT, then PH and PS from the enthalpy and entropy found give the
// same temperature and split back; the lighter propane gathers in the vapor.
TEST_F(PcsaftFlashTest, BinaryRoundTripsThroughTheTwoPhaseRegion) {
    const std::vector<double> z{0.5, 0.5};
    auto s = make("StreamPcsaftLiquidVapor");
    feed(*s, 100.0, z, 6e5, 300.0);
    s->calculate(0);
    ASSERT_TRUE(s->errorList().empty()) << s->errorList().front();
    const double fraction = phase(*s, "Vphase").fraction.toDouble();
    ASSERT_GT(fraction, 0.01);
    ASSERT_LT(fraction, 0.99);
    EXPECT_GT(phase(*s, "Vphase").x[0].toDouble(), phase(*s, "Lphase").x[0].toDouble());
    const double H = total(*s).H.toDouble(), S = total(*s).S.toDouble();
    for (const char* mode : {"PH", "PS"}) {
        auto back = make("StreamPcsaftLiquidVapor");
        feed(*back, 100.0, z, 6e5, 280.0, mode);
        total(*back).H = Value(H, "J/kmol");
        total(*back).S = Value(S, "J/(kmol*K)");
        back->calculate(0);
        ASSERT_TRUE(back->errorList().empty()) << mode << ": " << back->errorList().front();
        EXPECT_NEAR(back->T.toDouble(), 300.0, 1e-6) << mode;
        EXPECT_NEAR(phase(*back, "Vphase").fraction.toDouble(), fraction, 1e-8) << mode;
    }
}
