#include "UnitTestSupport.h"

#include <tarvo/units/FlashDrum.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace {
// ln phi of every component of the mole fractions x at T in K and P in Pa on the Redlich-Kwong-Soave equation
// (Soave, Chem. Eng. Sci. 27 (1972) 1197; Omega_a 0.42747, Omega_b 0.08664, m = 0.48 + 1.574 w - 0.176 w^2)
// without interaction parameters, on the largest root of the cubic for a vapor and the smallest for a liquid.
// The roots are found by bisection between sign changes on a fine grid, apart from any closed form.
std::vector<double> lnPhiSoave(const std::vector<double>& x, double T, double P, bool liquid) {
    const double R = 8314.4; // J/(kmol K); the reduced A and B do not depend on it
    const std::size_t n = x.size();
    std::vector<double> rootA(n), b(n);
    double q = 0, bm = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const double Tc = components[i]->Tc().toDouble(), Pc = components[i]->Pc().toDouble();
        const double w = components[i]->omega().toDouble(), m = 0.48 + 1.574 * w - 0.176 * w * w;
        rootA[i] = std::sqrt(0.42747 * R * R * Tc * Tc / Pc) * (1 + m * (1 - std::sqrt(T / Tc)));
        b[i] = 0.08664 * R * Tc / Pc;
        q += x[i] * rootA[i];
        bm += x[i] * b[i];
    }
    const double A = q * q * P / (R * R * T * T), B = bm * P / (R * T);
    const auto cubic = [&](double Z) { return ((Z - 1) * Z + A - B - B * B) * Z - A * B; };
    std::vector<double> roots;
    for (double Z = B; Z < 3; Z += 1e-4) {
        double lo = Z, hi = Z + 1e-4;
        if (!((cubic(lo) > 0) != (cubic(hi) > 0))) continue;
        for (int k = 0; k < 100; ++k) ((cubic(0.5 * (lo + hi)) > 0) == (cubic(lo) > 0) ? lo : hi) = 0.5 * (lo + hi);
        roots.push_back(0.5 * (lo + hi));
    }
    const double Z = liquid ? roots.front() : roots.back();
    std::vector<double> lnphi(n);
    for (std::size_t i = 0; i < n; ++i)
        lnphi[i] = b[i] / bm * (Z - 1) - std::log(Z - B) -
                   A / B * (2 * rootA[i] / q - b[i] / bm) * std::log(1 + B / Z);
    return lnphi;
}
} // namespace

// A degasser of a natural gas (methane, ethane, propane, n-butane) on the Redlich-Kwong-Soave equation, at
// 30 bar and 230 K, inside the gas's two-phase region: both outlets carry flow, every component balances, and
// the fugacities of the outlets, worked out in the test, are equal. The drum with a solid phase, fed no solid,
// splits the gas in the same way.
TEST_F(UnitTest, SoaveDegassersSplitANaturalGasAtEqualFugacities) {
    components.clear();
    for (const char* entry : {"methane", "ethane", "propane", "butane"})
        components.add(newCatalogueComponent(entry, entry));
    const double T = 230.0, P = 30e5;
    std::vector<double> vaporBefore;
    for (const std::string inner : {"StreamKwongRedlichSoaveLiquidVapor", "StreamKwongRedlichSoaveLiquidSolidVapor"}) {
        const std::string tag = inner.find("Solid") == std::string::npos ? "D1" : "D2";
        auto& degasser = unit<FlashDrum>("FlashDegasser<" + inner + ">", tag);
        Stream& in = connect("StreamKwongRedlichSoaveVapor", tag + "IN", nullptr, "", &degasser, "in");
        Stream& vapor = connect("StreamKwongRedlichSoaveVapor", tag + "TOP", &degasser, "vapor", nullptr, "");
        Stream& liquid = connect("StreamKwongRedlichSoaveLiquid", tag + "BOTTOM", &degasser, "condensate", nullptr, "");
        feed(in, 1000.0, {0.45, 0.15, 0.2, 0.2}, 50e5, 320.0);
        degasser.P = Value(P, "Pa");
        degasser.T = Value(T, "K");
        degasser.calculate(0);
        ASSERT_TRUE(degasser.errorList().empty()) << inner << ": " << degasser.errorList().front();
        ASSERT_GT(mdot(vapor), 1.0) << inner;
        ASSERT_GT(mdot(liquid), 1.0) << inner;

        std::vector<double> x(NCOMPONENTS), y(NCOMPONENTS);
        for (int i = 0; i < NCOMPONENTS; ++i) {
            x[i] = liquid.Q("Tphase.x", i).toDouble();
            y[i] = vapor.Q("Tphase.x", i).toDouble();
            EXPECT_NEAR(flow(vapor, i) + flow(liquid, i), flow(in, i), 1e-9 * mdot(in)) << inner << " " << i;
        }
        const std::vector<double> lnphiL = lnPhiSoave(x, T, P, true), lnphiV = lnPhiSoave(y, T, P, false);
        for (int i = 0; i < NCOMPONENTS; ++i)
            EXPECT_NEAR(std::log(y[i]) + lnphiV[i], std::log(x[i]) + lnphiL[i], 1e-7) << inner << " " << i;
        if (vaporBefore.empty())
            vaporBefore = y;
        else
            for (int i = 0; i < NCOMPONENTS; ++i) EXPECT_NEAR(y[i], vaporBefore[i], 1e-9) << i;
    }
}
