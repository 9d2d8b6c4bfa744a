#include "../../phases/tests/NrtlByHand.h"
#include "StreamTestSupport.h"

#include <tarvo/components/ComponentCatalogue.h>
#include <tarvo/phases/ActivityUnifac.h>
#include <tarvo/phases/NrtlParameters.h>
#include <tarvo/phases/UnifacGroups.h>

#include <cmath>
#include <functional>
#include <string>
#include <vector>

// Streams with activity coefficient liquids: the bubble point of a vapor-liquid stream and the split of a
// liquid-liquid stream, against the same equilibrium solved here from the binary NRTL equations and the
// components' published vapor pressures.

using Phase::Activity::ParametersNrtl1;

namespace {
// Vapor pressures of Perry's 8th ed. Table 2-8 (../shared/data/dippr_like.csv, eq 101), which the
// catalogue's entries carry: exp(A + B / T + C ln T + D T^2) Pa.
double psatEthanol(double T) {
    return std::exp(73.304 - 7122.3 / T - 7.1424 * std::log(T) + 2.8853e-6 * T * T);
}
double psatWater(double T) {
    return std::exp(73.649 - 7258.2 / T - 7.3037 * std::log(T) + 4.1653e-6 * T * T);
}

// The root of an increasing f between lo and hi, by bisection to the last bits.
double bisect(const std::function<double(double)>& f, double lo, double hi) {
    for (int k = 0; k < 200 && hi - lo > 1e-12 * hi; ++k) {
        const double mid = 0.5 * (lo + hi);
        (f(mid) > 0 ? hi : lo) = mid;
    }
    return 0.5 * (lo + hi);
}

// Ethanol (1) / water (2) with tau12 -0.178, tau21 1.963 at 350 K, alpha 0.2974; tau = B / T.
constexpr double B12 = -0.178 * 350, B21 = 1.963 * 350, alphaEthanolWater = 0.2974;

// The bubble point at P by modified Raoult's law, sum x_i gamma_i(T) psat_i(T) = P.
double bubbleTemperature(double x1, double P) {
    return bisect(
        [&](double T) {
            const std::vector<double> g = binaryNrtl(x1, B12 / T, B21 / T, alphaEthanolWater);
            return x1 * g[0] * psatEthanol(T) + (1 - x1) * g[1] * psatWater(T) - P;
        },
        320.0, 380.0);
}
} // namespace

class ActivityFlashTest : public StreamTest {
protected:
    void SetUp() override {
        StreamTest::SetUp();
        ParametersNrtl1::clear();
        Phase::Activity::UnifacAssignment::clear();
    }
    static void useCatalogue(const std::vector<std::string>& entries) {
        components.clear();
        for (const std::string& entry : entries)
            components.add(newCatalogueComponent(entry, entry));
    }
    static double x(Stream& s, const std::string& tag, int i) { return phase(s, tag).x[i].toDouble(); }
};

// The bubble point at 1 atm by modified Raoult's law, solved here.
TEST_F(ActivityFlashTest, NrtlBubblePointOfEthanolWater) {
    useCatalogue({"ethanol", "water"});
    ParametersNrtl1::setB(0, 1, B12, B21);
    ParametersNrtl1::setA(0, 1, alphaEthanolWater);
    const double P = 101325.0;
    for (const double x1 : {0.05, 0.3, 0.7}) {
        const double expected = bubbleTemperature(x1, P);

        auto s = make("StreamNrtl1LiquidVapor");
        feed(*s, 10.0, {x1, 1 - x1}, P, 350.0, "PA");
        phase(*s, "Vphase").fraction = 0.0;
        s->calculate(0);
        ASSERT_TRUE(s->errorList().empty()) << s->errorList().front();
        EXPECT_NEAR(s->T.toDouble(), expected, 1e-3) << "x1 = " << x1;
        // The first bubble: y_i = x_i gamma_i psat_i / P.
        const double T = s->T.toDouble();
        const std::vector<double> g = binaryNrtl(x1, B12 / T, B21 / T, alphaEthanolWater);
        EXPECT_NEAR(x(*s, "Vphase", 0), x1 * g[0] * psatEthanol(T) / P, 1e-7) << "x1 = " << x1;
    }
}

// Two liquids of one binary: equal activities x_i gamma_i in both, solved here by Newton's method on the
// two compositions, and the share of the first liquid from the lever rule.
TEST_F(ActivityFlashTest, NrtlLiquidLiquidSplitHasEqualActivities) {
    useCatalogue({"water", "BuOH"});
    const double T = 298.15, tau12 = 3.0, tau21 = 0.4, alpha = 0.3;
    ParametersNrtl1::setB(0, 1, tau12 * T, tau21 * T);
    ParametersNrtl1::setA(0, 1, alpha);
    const auto residuals = [&](double a, double b) {
        const std::vector<double> ga = binaryNrtl(a, tau12, tau21, alpha),
                                  gb = binaryNrtl(b, tau12, tau21, alpha);
        return std::vector<double>{std::log(a * ga[0]) - std::log(b * gb[0]),
                                   std::log((1 - a) * ga[1]) - std::log((1 - b) * gb[1])};
    };
    double a = 0.98, b = 0.5; // water fraction in the aqueous and the organic liquid
    for (int k = 0; k < 50; ++k) {
        const std::vector<double> r = residuals(a, b), ra = residuals(a + 1e-7, b),
                                  rb = residuals(a, b + 1e-7);
        const double j11 = (ra[0] - r[0]) / 1e-7, j12 = (rb[0] - r[0]) / 1e-7;
        const double j21 = (ra[1] - r[1]) / 1e-7, j22 = (rb[1] - r[1]) / 1e-7;
        const double det = j11 * j22 - j12 * j21;
        a -= (r[0] * j22 - r[1] * j12) / det;
        b -= (j11 * r[1] - j21 * r[0]) / det;
    }
    ASSERT_GT(a - b, 0.1) << "the hand solution found no split";

    const double z = 0.5 * (a + b);
    auto s = make("StreamNrtl1LiquidLiquid");
    feed(*s, 10.0, {z, 1 - z}, 101325.0, T);
    s->calculate(0);
    ASSERT_TRUE(s->errorList().empty()) << s->errorList().front();
    // Either liquid may come out first.
    const double first = x(*s, "L1phase", 0), second = x(*s, "L2phase", 0);
    const double aqueous = std::max(first, second), organic = std::min(first, second);
    EXPECT_NEAR(aqueous, a, 1e-8);
    EXPECT_NEAR(organic, b, 1e-8);
    const double share = phase(*s, first > second ? "L1phase" : "L2phase").fraction.toDouble();
    EXPECT_NEAR(share, (z - b) / (a - b), 1e-8);
}

// A two-phase PT flash of ethanol / water on UNIFAC: the split conserves each component, and the vapor
// follows modified Raoult's law with the activity coefficients of the liquid found.
TEST_F(ActivityFlashTest, UnifacFlashOfEthanolWaterFollowsModifiedRaoult) {
    useCatalogue({"ethanol", "water"});
    const double P = 101325.0, T = 360.0, z1 = 0.2;
    auto s = make("StreamUnifacLiquidVapor");
    feed(*s, 10.0, {z1, 1 - z1}, P, T);
    s->calculate(0);
    ASSERT_TRUE(s->errorList().empty()) << s->errorList().front();
    const double alfa = phase(*s, "Vphase").fraction.toDouble();
    ASSERT_GT(alfa, 0.01);
    ASSERT_LT(alfa, 0.99);
    const double x1 = x(*s, "Lphase", 0), y1 = x(*s, "Vphase", 0);
    EXPECT_NEAR(alfa * y1 + (1 - alfa) * x1, z1, 1e-10);

    Phase::Activity::Unifac liquid;
    liquid.setTemperature(Value(T, "K"));
    liquid.calculateExcess({Value(x1), Value(1 - x1)});
    EXPECT_NEAR(y1 * P, x1 * liquid.gamma()[0].val() * psatEthanol(T), 1e-7 * P);
    EXPECT_NEAR((1 - y1) * P, (1 - x1) * liquid.gamma()[1].val() * psatWater(T), 1e-7 * P);
}

// A case sets its own NRTL parameters as items of the liquid, "Lphase.B[i][j]" and "Lphase.A[i][j]", with
// nothing set process-wide; the phase hands them to its model when it is initialized, as after a
// retrieval from the store. The phase built afterwards starts from the process-wide ones again.
TEST_F(ActivityFlashTest, NrtlParametersOfACaseComeFromThePhaseItems) {
    useCatalogue({"ethanol", "water"});
    const double P = 101325.0, x1 = 0.3;
    auto s = make("StreamNrtl1LiquidVapor");
    s->Q("Lphase.B[0][1]") = B12;
    s->Q("Lphase.B[1][0]") = B21;
    s->Q("Lphase.A[0][1]") = alphaEthanolWater;
    s->Q("Lphase.A[1][0]") = alphaEthanolWater;
    s->initializeNonPersistents();
    feed(*s, 10.0, {x1, 1 - x1}, P, 350.0, "PA");
    phase(*s, "Vphase").fraction = 0.0;
    s->calculate(0);
    ASSERT_TRUE(s->errorList().empty()) << s->errorList().front();
    EXPECT_NEAR(s->T.toDouble(), bubbleTemperature(x1, P), 1e-3);
    EXPECT_EQ(make("StreamNrtl1LiquidVapor")->Q("Lphase.B[0][1]").toDouble(), 0.0);
}
