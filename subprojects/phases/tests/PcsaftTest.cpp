#include "PhaseTestSupport.h"

#include <tarvo/components/ComponentCatalogue.h>
#include <tarvo/phases/PhasePcsaft.h>

#include <cmath>
#include <vector>

// PC-SAFT against the check values of ../shared/data/pcsaft.json, the vapor pressures of GERG-2008 in
// ../shared/data/pure_fluid_states.json, and thermodynamic identities.

using Tarvo::Utility::PhaseType;

namespace {
// a_res / (R T) of one pure fluid with the parameters given.
double pureAlphar(double m, double sigma, double epsilon, double T, double rho) {
    Phase::PcsaftParameters::resize(1);
    Phase::PcsaftParameters::setparameters(0, m, sigma, epsilon);
    return Phase::pcsaftResidualHelmholtz(T, rho, std::vector<double>{1.0});
}
} // namespace

class PcsaftTest : public PhaseTest {
protected:
    // Propane and n-butane from the catalogue, with their parameters set by name.
    void SetUp() override {
        PhaseTest::SetUp();
        components.clear();
        for (const char* name : {"propane", "butane"}) components.add(newCatalogueComponent(name, name));
        model = std::make_unique<Phase::Pcsaft>();
    }
    static Vector composition(double first) { return {Value(first), Value(1 - first)}; }
    // The phase settled at (P, T) with the type given.
    void settle(double P, double T, const Vector& x, PhaseType type) {
        model->setType(type);
        model->settleDensity(Value(P, "Pa"), Value(T, "K"), x, type);
    }
    std::unique_ptr<Phase::Pcsaft> model;
};

// check_values of pcsaft.json: methane at 200 K and 300 mol/m3 to 1e-12; the ethylene-like fluid at
// 450 K and 10000 mol/m3 to its nine printed digits.
TEST_F(PcsaftTest, ResidualHelmholtzEnergyMatchesTheCheckValues) {
    EXPECT_NEAR(pureAlphar(1.0, 3.7039, 150.03, 200.0, 300.0) / -0.032400020930842724, 1.0, 1e-12);
    EXPECT_NEAR(pureAlphar(1.593, 3.445, 176.47, 450.0, 10000.0), -0.300381333, 5e-10);
}

TEST_F(PcsaftTest, ParameterStorageAssertsItsBounds) {
    Phase::PcsaftParameters::resize(9);
    EXPECT_DEATH(Phase::PcsaftParameters::resize(10), "nc <= NC");
    Phase::PcsaftParameters::resize(2);
    EXPECT_DEATH(Phase::PcsaftParameters::setparameters(2, 1.0, 3.0, 100.0), "i < ncomp");
}

TEST_F(PcsaftTest, ParametersComeFromTheDataByName) {
    // Gross and Sadowski (2001), Table 1, as in pcsaft.json: propane and n-butane.
    EXPECT_EQ(Phase::PcsaftParameters::ncomp, 2);
    EXPECT_EQ(Phase::PcsaftParameters::m[0], 2.002);
    EXPECT_EQ(Phase::PcsaftParameters::sigma[1], 3.7086);
    EXPECT_EQ(Phase::PcsaftParameters::epsilon[1], 222.88);
    // Water associates: no parameters, and a phase that holds it says so.
    components.add(newCatalogueComponent("water", "water"));
    Phase::Pcsaft withWater;
    const std::string text = errorText([&] { withWater.calculate_H_(Value(1e5, "Pa"), Value(300.0, "K"), {Value(0.5), Value(0.0), Value(0.5)}); });
    EXPECT_NE(text.find("no PC-SAFT parameters for water"), std::string::npos) << text;
}

// The pressure at which the pure liquid's and vapor's ln phi are equal, found here by the secant method
// in ln P, within 1 % of the vapor pressure of GERG-2008 (pure_fluid_states.json, saturation): propane
// 96602.36328 Pa at 230 K and 996884.825 Pa at 300 K, n-butane 61022.74917 Pa at 260 K and
// 753883.4126 Pa at 340 K.
TEST_F(PcsaftTest, VaporPressuresWithinOnePercentOfTabulated) {
    struct Point {
        double first, T, psat;
    };
    for (const Point& pt : {Point{1, 230.0, 96602.36328}, Point{1, 300.0, 996884.825}, Point{0, 260.0, 61022.74917},
                            Point{0, 340.0, 753883.4126}}) {
        const Vector x = composition(pt.first);
        const auto gap = [&](double lnP) {
            const double P = std::exp(lnP);
            double lnphi[2];
            for (const PhaseType type : {PhaseType::liquid, PhaseType::vapor}) {
                settle(P, pt.T, x, type);
                model->preparefugacity(Value(P, "Pa"), Value(pt.T, "K"), x, one);
                lnphi[type == PhaseType::vapor] = model->fugacity(pt.first == 1 ? 0 : 1).toDouble();
            }
            return lnphi[0] - lnphi[1];
        };
        double a = std::log(0.9 * pt.psat), b = std::log(1.1 * pt.psat), ga = gap(a), gb = gap(b);
        for (int k = 0; k < 30 && std::fabs(b - a) > 1e-12; ++k) {
            const double c = b - gb * (b - a) / (gb - ga);
            a = b, ga = gb, b = c, gb = gap(b);
        }
        EXPECT_NEAR(std::exp(b) / pt.psat, 1.0, 0.01) << pt.T;
    }
}

// At constant P for a liquid and a vapor of the binary: Cp = dH/dT, Gibbs-Helmholtz, and ln phi_i =
// d(n a_res / RT)/dn_i - ln Z, the derivative taken here by central differences of the residual
// Helmholtz energy in the mole numbers at constant T and V.
TEST_F(PcsaftTest, HeatCapacityGibbsHelmholtzAndFugacityIdentities) {
    struct State {
        double P, T, first;
        PhaseType type;
    };
    for (const State& st : {State{2e6, 280, 0.4, PhaseType::liquid}, State{1e5, 320, 0.6, PhaseType::vapor},
                            State{5e5, 400, 0.5, PhaseType::vapor}}) {
        const Vector x = composition(st.first);
        const Value P(st.P, "Pa");
        const auto at = [&](double T) {
            settle(st.P, T, x, st.type);
            const Value t(T, "K");
            return std::pair{model->calculate_H_(P, t, x).toDouble(), model->calculate_S_(P, t, x).toDouble()};
        };
        const double h = 1e-2;
        const auto [Hup, Sup] = at(st.T + h);
        const auto [Hdown, Sdown] = at(st.T - h);
        const auto [H, S] = at(st.T);
        const double Cp = model->calculate_Cp_(P, Value(st.T, "K"), x).toDouble();
        EXPECT_NEAR((Hup - Hdown) / (2 * h) / Cp, 1.0, 1e-6) << st.T;
        const auto gOverT = [](double Hx, double Sx, double T) { return (Hx - T * Sx) / T; };
        const double dGdT = (gOverT(Hup, Sup, st.T + h) - gOverT(Hdown, Sdown, st.T - h)) / (2 * h);
        EXPECT_NEAR(dGdT / (-H / (st.T * st.T)), 1.0, 1e-6) << st.T;

        // Mole numbers n at the settled state, V = 1 / rho for n = x.
        const double rho = model->calculate_rho_(P, Value(st.T, "K"), x).toDouble("kmol/m3") * 1000.0;
        const auto nA = [&](std::vector<double> n) {
            const double total = n[0] + n[1];
            return total * Phase::pcsaftResidualHelmholtz(st.T, total * rho, std::vector<double>{n[0] / total, n[1] / total});
        };
        const double Z = st.P / (rho * 8.3144 * st.T); // the kernel's R in J/(mol K)
        model->preparefugacity(P, Value(st.T, "K"), x, one);
        for (int i = 0; i < 2; ++i) {
            std::vector<double> up{x[0].toDouble(), x[1].toDouble()}, down = up;
            up[i] += 1e-6;
            down[i] -= 1e-6;
            EXPECT_NEAR(model->fugacity(i).toDouble(), (nA(up) - nA(down)) / 2e-6 - std::log(Z), 1e-7) << st.T << " " << i;
        }
    }
}
