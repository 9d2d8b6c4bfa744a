#include "IdealEquilibrium.h"
#include "StreamTestSupport.h"

#include <tarvo/streams/StreamTabular.h>

#include <vector>

// Streams with constant volatilities against the Rachford-Rice split worked out here by bisection.

namespace {
// The vapor fraction where sum z (K - 1) / (1 + a (K - 1)) = 0, inside the two-phase range.
double rachfordRice(const std::vector<double>& z, const std::vector<double>& K) {
    return IdealEquilibrium::bisect(
        [&](double a) {
            double r = 0;
            for (std::size_t i = 0; i < z.size(); ++i) r += z[i] * (K[i] - 1) / (1 + a * (K[i] - 1));
            return -r;
        },
        0, 1);
}
} // namespace

// CO2, CH4, H2O, N2, O2 with volatilities 3, 8, 0.05, 12 and 6: the same split at two temperatures and
// pressures, since the volatilities depend on neither; each component's phases keep y = K x.
TEST_F(StreamTest, TabularFlashSplitsByRachfordRice) {
    const std::vector<double> z{0.2, 0.3, 0.3, 0.1, 0.1}, K{3.0, 8.0, 0.05, 12.0, 6.0};
    const double a = rachfordRice(z, K);
    // The liquid-liquid stream's first liquid takes the place of the vapor.
    for (const char* type : {"StreamTabularLiquidVapor", "StreamTabularLiquidLiquid"}) {
        for (const auto& [P, T] : {std::pair<double, double>{1e5, 300.0}, {2e6, 350.0}}) {
            auto s = make(type);
            ASSERT_NE(s, nullptr) << type;
            auto& tabular = dynamic_cast<StreamTabular&>(*s);
            for (int i = 0; i < NCOMPONENTS; ++i) tabular.kVL[i] = Value(K[i]);
            feed(*s, 10.0, z, P, T);
            s->calculate(0);
            ASSERT_TRUE(s->errorList().empty()) << type << ": " << s->errorList().front();
            EXPECT_NEAR(phase(*s, "Vphase").fraction.toDouble(), a, 1e-9) << type << " at " << T;
            for (int i = 0; i < NCOMPONENTS; ++i) {
                const double x = z[i] / (1 + a * (K[i] - 1));
                EXPECT_NEAR(phase(*s, "Lphase").x[i].toDouble(), x, 1e-9) << type << " " << i;
                EXPECT_NEAR(phase(*s, "Vphase").x[i].toDouble(), K[i] * x, 1e-9) << type << " " << i;
            }
        }
    }
}

// Volatilities changed between two calculations of one stream take effect in the second.
TEST_F(StreamTest, TabularVolatilitiesAreReadAtEveryCalculation) {
    const std::vector<double> z{0.2, 0.3, 0.3, 0.1, 0.1};
    auto s = make("StreamTabularLiquidVapor");
    auto& tabular = dynamic_cast<StreamTabular&>(*s);
    feed(*s, 10.0, z, 1e5, 300.0);
    for (const std::vector<double>& K : {std::vector<double>{3.0, 8.0, 0.05, 12.0, 6.0}, {2.0, 4.0, 0.1, 5.0, 3.0}}) {
        for (int i = 0; i < NCOMPONENTS; ++i) tabular.kVL[i] = Value(K[i]);
        s->calculate(0);
        ASSERT_TRUE(s->errorList().empty()) << s->errorList().front();
        EXPECT_NEAR(phase(*s, "Vphase").fraction.toDouble(), rachfordRice(z, K), 1e-9) << K[0];
    }
}
