#include "PhaseTestSupport.h"

#include <tarvo/components/ComponentCatalogue.h>
#include <tarvo/phases/PhaseGerg2004.h>
#include <tarvo/value/ActiveContext.h>

#include <cmath>
#include <utility>
#include <vector>

// GERG-2004 against the published check of ../shared/data/gerg2008_checks.json, the pure-fluid states of
// ../shared/data/pure_fluid_states.json, and the identities of its ideal-gas limit and fugacities.

using Tarvo::Utility::PhaseType;

namespace {
double relative(double a, double b) { return std::fabs(a / b - 1); }
} // namespace

class Gerg2004Test : public PhaseTest {
protected:
    // The catalogue's entries given, in that order, and a model on them.
    void use(const std::vector<const char*>& entries) {
        components.clear();
        for (const char* entry : entries) components.add(newCatalogueComponent(entry, entry));
        model = std::make_unique<Phase::Gerg2004>();
    }
    // The density in kmol/m3 of the phase settled at (P, T).
    double settle(double P, double T, const Vector& x, PhaseType type) {
        model->setType(type);
        model->settleDensity(Value(P, "Pa"), Value(T, "K"), x, type);
        return model->calculate_rho_(Value(P, "Pa"), Value(T, "K"), x).toDouble("kmol/m3");
    }
    std::unique_ptr<Phase::Gerg2004> model;
};

// published_check of gerg2008_checks.json: the 21-component gas at 400 K and 12.79828626082062 mol/L, to
// 1e-9 relative; its composition below in the catalogue's names. The data's units convert here: kPa L/mol
// is kJ/kmol, kPa L2/mol2 is 1e3 Pa m6/kmol2, kPa/K is 1e3 Pa/K, K/kPa is 1e-3 K/Pa.
TEST_F(Gerg2004Test, PublishedCheckOfTheTwentyOneComponentGas) {
    const std::vector<std::pair<const char*, double>> gas{
        {"methane", 0.77824},  {"N2", 0.02},          {"CO2", 0.06},       {"ethane", 0.08},
        {"propane", 0.03},     {"ibutane", 0.0015},   {"butane", 0.003},   {"ipentane", 0.0005},
        {"pentane", 0.00165},  {"nhexane", 0.00215},  {"nheptane", 0.00088}, {"noctane", 0.00024},
        {"nnonane", 0.00015},  {"ndecane", 9e-05},    {"H2", 0.004},       {"O2", 0.005},
        {"CO", 0.002},         {"water", 0.0001},     {"hydrogensulfide", 0.0025}, {"helium", 0.007},
        {"argon", 0.001}};
    std::vector<const char*> entries;
    Vector x;
    for (const auto& [entry, fraction] : gas) {
        entries.push_back(entry);
        x.push_back(Value(fraction));
    }
    use(entries);
    const Phase::Gerg2004State s = model->properties(Value(400.0, "K"), Value(12.79828626082062, "kmol/m3"), x);
    EXPECT_LT(relative(s.P.toDouble("Pa"), 50000.0e3), 1e-9);
    EXPECT_LT(relative(s.Z.toDouble(), 1.174690666383717), 1e-9);
    EXPECT_LT(relative(s.dPdrho.toDouble("kJ/kmol"), 7000.694030193327), 1e-9);
    EXPECT_LT(relative(s.d2Pdrho2.toDouble("Pa*m6/kmol2"), 1129.526655214841e3), 1e-9);
    EXPECT_LT(relative(s.dPdT.toDouble("Pa/K"), 235.9832292593096e3), 1e-9);
    EXPECT_LT(relative(s.cv.toDouble("kJ/kmol/K"), 39.02948218156372), 1e-9);
    EXPECT_LT(relative(s.cp.toDouble("kJ/kmol/K"), 58.45522051000366), 1e-9);
    EXPECT_LT(relative(s.w.toDouble("m/s"), 714.4248840596024), 1e-9);
    EXPECT_LT(relative(s.JT.toDouble("K/Pa"), 7.155629581480913e-05 * 1e-3), 1e-9);
}

// single_phase of pure_fluid_states.json (10 digits): the density that the phase settles on at the
// tabulated (T, p), and the speed of sound there, to 2e-9.
TEST_F(Gerg2004Test, PureMethaneAndCarbonDioxideAtTabulatedStates) {
    struct State {
        const char* entry;
        double T, p, rho, w; // K, Pa, mol/m3, m/s
        PhaseType type;
    };
    const State states[] = {
        {"methane", 300.0, 5e6, 2179.891432, 439.2351032, PhaseType::vapor},
        {"methane", 200.0, 2e7, 19566.37156, 831.2157827, PhaseType::liquid},
        {"methane", 300.0, 1000.0, 0.4009141662, 450.0615006, PhaseType::vapor},
        {"CO2", 350.0, 5e6, 2036.359187, 266.4134799, PhaseType::vapor},
        {"CO2", 280.0, 2e7, 22570.62589, 703.5955808, PhaseType::liquid},
        {"CO2", 300.0, 1000.0, 0.4009269132, 270.1362752, PhaseType::vapor},
    };
    for (const State& st : states) {
        use({st.entry});
        const Vector x{Value(1.0)};
        const double rho = settle(st.p, st.T, x, st.type);
        EXPECT_LT(relative(rho, st.rho * 1e-3), 2e-9) << st.entry << " at " << st.T << " K, " << st.p << " Pa";
        const double w = model->properties(Value(st.T, "K"), Value(rho, "kmol/m3"), x).w.toDouble("m/s");
        EXPECT_LT(relative(w, st.w), 2e-9) << st.entry << " at " << st.T << " K, " << st.p << " Pa";
    }
}

// At 1 Pa the biomethane is an ideal gas: Z and the fugacity coefficients are 1 within the second
// virial term (some 1e-8 here), cp - cv is R = 8.314472 kJ/(kmol K), and the phase's enthalpy is the
// kernel's ideal sum within P (B - T dB/dT), some 0.2 J/kmol with B of the order of -0.05 m3/kmol.
TEST_F(Gerg2004Test, IdealGasLimitAtLowDensity) {
    use({"methane", "CO2", "N2"});
    const Vector x{Value(0.97), Value(0.02), Value(0.01)};
    const double rho = settle(1.0, 288.15, x, PhaseType::vapor);
    const Phase::Gerg2004State s = model->properties(Value(288.15, "K"), Value(rho, "kmol/m3"), x);
    EXPECT_NEAR(s.Z.toDouble(), 1.0, 1e-7);
    EXPECT_NEAR((s.cp - s.cv).toDouble("kJ/kmol/K"), 8.314472, 1e-6);
    model->preparefugacity(Value(1.0, "Pa"), Value(288.15, "K"), x, one);
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(model->fugacity(i).toDouble(), 0.0, 1e-7) << i;
    const double H = model->calculate_H_(Value(1.0, "Pa"), Value(288.15, "K"), x).toDouble("J/kmol");
    Phase::Ideal ideal;
    ideal.setType(PhaseType::vapor);
    EXPECT_NEAR(H, ideal.calculate_H_(Value(1.0, "Pa"), Value(288.15, "K"), x).toDouble("J/kmol"), 1.0);
}

// ln phi_i = d(n g_res / RT)/dn_i at constant T and P, with g_res = h_res - T s_res from the
// departures: the composition derivatives of the reducing functions and of the mixture's terms, checked
// by central differences of the Gibbs energy, for the biomethane at 70 bar and 288.15 K.
TEST_F(Gerg2004Test, FugacityCoefficientsAreTheDerivativesOfTheResidualGibbsEnergy) {
    use({"methane", "CO2", "N2"});
    const double P = 70e5, T = 288.15, RT = 8314.472 * T;
    const std::vector<double> n{0.97, 0.02, 0.01};
    const auto gibbs = [&](const std::vector<double>& moles) {
        double total = 0;
        for (double m : moles) total += m;
        Vector x;
        for (double m : moles) x.push_back(Value(m / total));
        settle(P, T, x, PhaseType::vapor);
        const Value h = model->enthalpyDeparture(Value(P, "Pa"), Value(T, "K"));
        const Value s = model->entropyDeparture(Value(P, "Pa"), Value(T, "K"));
        return total * (h.toDouble("J/kmol") - T * s.toDouble("J/(kmol*K)")) / RT;
    };
    Vector x;
    for (double m : n) x.push_back(Value(m));
    settle(P, T, x, PhaseType::vapor);
    model->preparefugacity(Value(P, "Pa"), Value(T, "K"), x, one);
    std::vector<double> lnphi;
    for (int i = 0; i < 3; ++i) lnphi.push_back(model->fugacity(i).toDouble());
    for (int i = 0; i < 3; ++i) {
        const double h = 1e-5;
        std::vector<double> up = n, down = n;
        up[i] += h;
        down[i] -= h;
        EXPECT_NEAR(lnphi[i], (gibbs(up) - gibbs(down)) / (2 * h), 1e-7) << i;
    }
}

// The derivatives that Value carries through the sums, against difference quotients: the pressure, ln phi
// of methane and the departure of the heat capacity (which takes the third derivatives of the terms) in
// T, in the density unknown and in the amount of CO2.
TEST_F(Gerg2004Test, DerivativesCarriedThroughTheSumsMatchDifferences) {
    use({"methane", "CO2", "N2"});
    const auto evaluate = [&](double T, double beta, double co2) {
        Value t(T, "K"), b(beta);
        Vector x{Value(0.9), Value(co2), Value(0.05)};
        t.active().setActive(0);
        b.active().setActive(1);
        x[1].active().setActive(2);
        model->beta = b;
        model->precompute(t, x);
        std::vector<Value> lnphi(NCOMPONENTS);
        model->preparefugacity_eos(Value(1e6, "Pa"), t, lnphi);
        return std::vector<Value>{model->pressure(b, t) / Value(1.0, "Pa"), lnphi[0],
                                  model->heatCapacityDeparture(t) / Value(1.0, "J/(kmol*K)")};
    };
    ActiveContext::Scope directions(3);
    const double T = 250.0, beta = 0.4, co2 = 0.05;
    const std::vector<Value> at = evaluate(T, beta, co2);
    const double steps[] = {1e-3, 1e-6, 1e-6};
    for (int d = 0; d < 3; ++d) {
        const double s = steps[d];
        const std::vector<Value> up = evaluate(T + (d == 0 ? s : 0), beta + (d == 1 ? s : 0), co2 + (d == 2 ? s : 0));
        const std::vector<Value> down = evaluate(T - (d == 0 ? s : 0), beta - (d == 1 ? s : 0), co2 - (d == 2 ? s : 0));
        for (int q = 0; q < 3; ++q) {
            const double difference = (up[q].toDouble() - down[q].toDouble()) / (2 * s);
            EXPECT_NEAR(at[q].active().derivative(d), difference, 1e-6 * std::fabs(difference) + 1e-7)
                << "quantity " << q << ", direction " << d;
        }
    }
}

// Components map by name; one outside the standard is an error where it is present, and two names of
// one component are an error at once.
TEST_F(Gerg2004Test, ComponentsOutsideTheStandardAreErrors) {
    use({"methane", "benzene"});
    const Value P(1e5, "Pa"), T(300.0, "K");
    EXPECT_EQ(errorText([&] { model->calculate_H_(P, T, {Value(1.0), Value(0.0)}); }), "no error");
    const std::string text = errorText([&] { model->calculate_H_(P, T, {Value(0.5), Value(0.5)}); });
    EXPECT_NE(text.find("benzene is not a component of GERG-2004"), std::string::npos) << text;
    components.clear();
    components.add(newCatalogueComponent("methane", "CH4"));
    components.add(newCatalogueComponent("methane", "methane"));
    const std::string twice = errorText([] { Phase::Gerg2004 g; });
    EXPECT_NE(twice.find("CH4 and methane are the same component of GERG-2004"), std::string::npos) << twice;
}
