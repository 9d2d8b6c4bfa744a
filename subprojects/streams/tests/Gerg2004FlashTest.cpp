#include "StreamTestSupport.h"

#include <tarvo/components/ComponentCatalogue.h>

#include <string>
#include <vector>

// Streams on GERG-2004 with species of the catalogue.

class Gerg2004FlashTest : public StreamTest {
protected:
    static void useComponents(const std::vector<const char*>& entries) {
        components.clear();
        for (const char* entry : entries) components.add(newCatalogueComponent(entry, entry));
    }
};

// single_phase of ../shared/data/pure_fluid_states.json: the one-phase streams' PT flash finds the
// tabulated density (mol/m3, 10 digits) of methane as a gas and of CO2 as a compressed liquid.
TEST_F(Gerg2004FlashTest, OnePhaseStreamsFindTheTabulatedDensities) {
    struct State {
        const char *type, *tag, *entry;
        double T, P, rho;
    };
    for (const State& st : {State{"StreamGerg2004Vapor", "Vphase", "methane", 300.0, 5e6, 2179.891432},
                            State{"StreamGerg2004Liquid", "Lphase", "CO2", 280.0, 2e7, 22570.62589}}) {
        useComponents({st.entry});
        auto s = make(st.type);
        ASSERT_NE(s, nullptr) << st.type;
        feed(*s, 10.0, {1.0}, st.P, st.T);
        s->calculate(0);
        ASSERT_TRUE(s->errorList().empty()) << st.type << ": " << s->errorList().front();
        const Phase::MassMolarProperties& p = phase(*s, st.tag);
        EXPECT_NEAR(p.rho.toDouble("kg/m3") / p.mw.toDouble("kg/kmol") / (st.rho * 1e-3), 1.0, 1e-8) << st.type;
    }
}

// The water dew point of a natural gas at 70 bar: the flash at a vapor fraction of 1 finds a temperature
// below which a PT flash condenses a water-rich liquid and above which the gas stays whole.
TEST_F(Gerg2004FlashTest, WaterDewPointOfANaturalGas) {
    useComponents({"methane", "ethane", "CO2", "N2", "water"});
    const std::vector<double> z{0.9, 0.05, 0.02, 0.0295, 0.0005};
    auto dew = make("StreamGerg2004LiquidVapor");
    feed(*dew, 100.0, z, 70e5, 300.0, "PA");
    phase(*dew, "Vphase").fraction = 1.0;
    dew->calculate(0);
    ASSERT_TRUE(dew->errorList().empty()) << dew->errorList().front();
    const double T = dew->T.toDouble("K");
    EXPECT_GT(phase(*dew, "Lphase").x[4].toDouble(), 0.9);
    for (const double shift : {-2.0, 2.0}) {
        auto s = make("StreamGerg2004LiquidVapor");
        feed(*s, 100.0, z, 70e5, T + shift);
        s->calculate(0);
        ASSERT_TRUE(s->errorList().empty()) << shift << ": " << s->errorList().front();
        const double fraction = phase(*s, "Vphase").fraction.toDouble();
        if (shift < 0) {
            EXPECT_LT(fraction, 1.0 - 1e-6);
            EXPECT_GT(phase(*s, "Lphase").x[4].toDouble(), 0.9);
        } else {
            EXPECT_EQ(fraction, 1.0);
        }
    }
}
