#include "IapwsByHand.h"
#include "StreamTestSupport.h"

#include <cmath>
#include <string>
#include <vector>

// Streams of water on the IAPWS-95 formulation against the release's verification tables, IAPWS
// R6-95(2018), as transcribed in ../shared/data/iapws95_verification.json.

namespace {
constexpr double M = 18.015268; // kg/kmol, the release's molar mass
const std::vector<double> water{0, 0, 1, 0, 0}; // CO2, CH4, H2O, N2, O2

// Table 8: T (K), ps (MPa), rho' and rho'' (kg/m3), h' and h'' (kJ/kg), s' and s'' (kJ/(kg K)).
struct Saturation {
    double T, ps, rhoL, rhoV, hL, hV, sL, sV;
};
const Saturation table8[] = {{275, 0.000698451167, 999.887406, 0.00550664919, 7.75972202, 2504.28995, 0.0283094670, 9.10660121},
                             {450, 0.932203564, 890.341250, 4.81200360, 749.161585, 2774.41078, 2.10865845, 6.60921221},
                             {625, 16.9082693, 567.090385, 118.290280, 1686.26976, 2550.71625, 3.80194683, 5.18506121}};
} // namespace

class IapwsFlashTest : public StreamTest {
protected:
    static double kJperkg(const Value& molar) { return molar.toDouble() / M / 1e3; }
    // The mass density by the release's molar mass: the phase's own converts the formulation's molar
    // density with the kernel's water, 18.015324 kg/kmol, 3.1e-6 heavier.
    static double massDensity(Stream& s, const std::string& tag) {
        return phase(s, tag).rho.toDouble("kg/m3") / phase(s, tag).mw.toDouble("kg/kmol") * M;
    }
};

// At ps and a vapor fraction of 0.3 the flash finds the tabulated temperature and the two saturated
// phases of Table 8; the stream's enthalpy and entropy are the lever rule's mean of them. Nine printed
// digits of ps fix T to 1e-7 K; the phases' densities, enthalpies and entropies come out to 1e-8.
TEST_F(IapwsFlashTest, SaturatedMixturesMatchTable8) {
    for (const Saturation& row : table8) {
        auto s = make("StreamIapwsLiquidVapor");
        ASSERT_NE(s, nullptr);
        feed(*s, 10.0, water, row.ps * 1e6, 400.0, "PA");
        phase(*s, "Vphase").fraction = 0.3;
        s->calculate(0);
        ASSERT_TRUE(s->errorList().empty()) << row.T << ": " << s->errorList().front();
        EXPECT_NEAR(s->T.toDouble(), row.T, 1e-6) << row.T;
        EXPECT_NEAR(phase(*s, "Vphase").fraction.toDouble(), 0.3, 1e-10);
        EXPECT_NEAR(massDensity(*s, "Lphase") / row.rhoL, 1.0, 1e-7) << row.T;
        EXPECT_NEAR(massDensity(*s, "Vphase") / row.rhoV, 1.0, 1e-7) << row.T;
        EXPECT_NEAR(kJperkg(phase(*s, "Lphase").H) / row.hL, 1.0, row.T == 275 ? 1e-6 : 1e-8) << row.T;
        EXPECT_NEAR(kJperkg(phase(*s, "Vphase").H) / row.hV, 1.0, 1e-8) << row.T;
        EXPECT_NEAR(kJperkg(phase(*s, "Lphase").S) / row.sL, 1.0, 1e-7) << row.T;
        EXPECT_NEAR(kJperkg(phase(*s, "Vphase").S) / row.sV, 1.0, 1e-8) << row.T;
        EXPECT_NEAR(kJperkg(total(*s).H), 0.3 * row.hV + 0.7 * row.hL, 1e-5) << row.T;
        EXPECT_NEAR(kJperkg(total(*s).S), 0.3 * row.sV + 0.7 * row.sL, 1e-8) << row.T;
    }
}

// A PH flash at 450 K's saturation pressure, with h a quarter of the way from h' to h'', returns 450 K
// and the vapor fraction 1/4 that the lever rule gives.
TEST_F(IapwsFlashTest, EnthalpyBetweenTheSaturatedPhasesGivesTheLeverRule) {
    const Saturation& row = table8[1];
    auto s = make("StreamIapwsLiquidVapor");
    feed(*s, 10.0, water, row.ps * 1e6, 300.0, "PH");
    const double h = row.hL + 0.25 * (row.hV - row.hL); // kJ/kg
    total(*s).H = Value(h * 1e3 * M, "J/kmol");
    s->calculate(0);
    ASSERT_TRUE(s->errorList().empty()) << s->errorList().front();
    EXPECT_NEAR(s->T.toDouble(), row.T, 1e-3);
    EXPECT_NEAR(phase(*s, "Vphase").fraction.toDouble(), 0.25, 1e-6);
}

// PT flashes outside the two-phase region (Table 7): compressed liquid up to 700 MPa, superheated vapor
// and supercritical states, which the vapor carries at any density, on the two-phase stream and on the one-phase streams of the matching type. The
// phase that carries the flow has the tabulated density to the printed digits.
TEST_F(IapwsFlashTest, SinglePhaseStatesMatchTable7) {
    struct Row {
        double T, rho, p; // K, kg/m3, MPa
        bool liquid;
    };
    const Row rows[] = {{300, 1005.308, 20.0022515, true},  {500, 838.025, 10.0003858, true},
                        {300, 996.556, 0.0992418352, true}, {500, 0.435, 0.0999679423, false},
                        {500, 4.532, 0.999938125, false},   {900, 52.615, 20.000069, false},
                        {900, 0.241, 0.100062559, false},   {300, 1188.202, 700.004704, true},
                        {500, 1084.564, 700.000405, true},  {900, 870.769, 700.000006, false}};
    for (const Row& row : rows) {
        auto s = make("StreamIapwsLiquidVapor");
        feed(*s, 10.0, water, row.p * 1e6, row.T);
        s->calculate(0);
        ASSERT_TRUE(s->errorList().empty()) << row.T << " K, " << row.p << " MPa: " << s->errorList().front();
        const char* carrier = row.liquid ? "Lphase" : "Vphase";
        EXPECT_NEAR(phase(*s, carrier).fraction.toDouble(), 1.0, 1e-12) << row.T << " K, " << row.p << " MPa";
        EXPECT_NEAR(massDensity(*s, carrier) / row.rho, 1.0, 1e-8) << row.T << " K, " << row.p << " MPa";

        auto one = make(row.liquid ? "StreamIapwsLiquid" : "StreamIapwsVapor");
        feed(*one, 10.0, water, row.p * 1e6, row.T);
        one->calculate(0);
        ASSERT_TRUE(one->errorList().empty()) << row.T << " K: " << one->errorList().front();
        EXPECT_NEAR(massDensity(*one, "Tphase") / row.rho, 1.0, 1e-8) << row.T << " K, " << row.p << " MPa";
    }
}

TEST_F(IapwsFlashTest, AnotherComponentBesideWaterEndsWithAClearError) {
    for (const std::string type : {"StreamIapwsLiquidVapor", "StreamIapwsVapor"}) {
        auto s = make(type);
        feed(*s, 10.0, {0.1, 0, 0.9, 0, 0}, 1e5, 400.0);
        std::string text = "no error";
        try {
            s->calculate(0);
        } catch (const Error& e) {
            text = e.message();
        }
        EXPECT_NE(text.find("IAPWS-95 phases hold water alone: CO2 is present"), std::string::npos) << type << ": " << text;
    }
}

// The water streams keep the release's reference (u = s = 0 for the liquid at the triple point), the
// ideal ones the kernel's (the elements at 298.15 K): liquid water differs by a constant near
// -2.88e8 J/kmol, about the enthalpy of formation of the liquid. Differences of enthalpy agree as far as
// the kernel's liquid routes follow the release (4 % over 300 to 350 K), so a unit may compare heat
// duties of either kind of stream, but must never add or mix enthalpies of the two.
TEST_F(IapwsFlashTest, EnthalpyReferencesDifferByAConstant) {
    double offset[2], rise[2];
    for (int k = 0; k < 2; ++k) {
        double H[2];
        for (int j = 0; j < 2; ++j) {
            auto s = make(j == 0 ? "StreamIapwsLiquid" : "StreamLiquid");
            feed(*s, 10.0, water, 101325.0, k == 0 ? 300.0 : 350.0);
            s->calculate(0);
            ASSERT_TRUE(s->errorList().empty()) << s->errorList().front();
            H[j] = total(*s).H.toDouble("J/kmol");
        }
        offset[k] = H[1] - H[0];
        rise[k] = H[0];
    }
    EXPECT_LT(offset[0], -2.8e8);
    EXPECT_GT(offset[0], -2.95e8);
    // 50 K of liquid water is 3.77e6 J/kmol by the release; the offset moves by 1.5e5 J/kmol of it.
    EXPECT_NEAR(offset[1], offset[0], 0.05 * (rise[1] - rise[0]));
}

// Supercritical water from 700 to 1200 K at 28 to 30 MPa, below the critical density: the liquid of the
// two-phase stream lies beyond the end of its branch there, at the critical density, where the release's
// terms of the critical region had derivatives of infinity times zero, and the flash stopped on a singular
// matrix. Each state converges, and the phase that carries the flow has the density of the release at
// (T, p), found in the test by its own pressure function; that function gives Table 7's supercritical
// state at 900 K and 20.000069 MPa, 52.615 kg/m3, to the printed digits first.
TEST_F(IapwsFlashTest, SupercriticalStatesBelowTheCriticalDensityMatchTheRelease) {
    ASSERT_NEAR(IapwsByHand::density(900.0, 20.000069e6), 52.615, 0.5e-3);
    for (double p = 28e6; p <= 30e6; p += 1e6)
        for (double T = 700; T <= 1200; T += 50) {
            const double rho = IapwsByHand::density(T, p);
            for (const std::string type : {"StreamIapwsLiquidVapor", "StreamIapwsVapor", "StreamIapwsLiquid"}) {
                auto s = make(type);
                feed(*s, 10.0, water, p, T);
                s->calculate(0);
                ASSERT_TRUE(s->errorList().empty()) << type << " " << T << " K, " << p << " Pa: " << s->errorList().front();
                const char* carrier = type == "StreamIapwsLiquidVapor" ? "Vphase" : "Tphase";
                EXPECT_NEAR(massDensity(*s, carrier) / rho, 1.0, 1e-8) << type << " " << T << " K, " << p << " Pa";
            }
        }
}
