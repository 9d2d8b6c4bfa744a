#include "NrtlByHand.h"
#include "PhaseTestSupport.h"

#include <tarvo/components/ComponentCatalogue.h>
#include <tarvo/components/Purecomps.h>
#include <tarvo/phases/ActivityNrtl.h>
#include <tarvo/phases/ActivityUnifac.h>
#include <tarvo/phases/NrtlParameters.h>
#include <tarvo/phases/PhaseGeneric.h>
#include <tarvo/phases/UnifacGroups.h>
#include <tarvo/value/ActiveContext.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

// The activity coefficient models against published activity coefficients and the binary NRTL equations
// written out here, and the identities that any such model obeys: Gibbs-Duhem, the pure-component limit
// and the Gibbs-Helmholtz relation between gE and hE.

using Phase::Activity::ParametersNrtl1;
using Phase::Activity::ParametersNrtl2;
using Phase::Activity::UnifacAssignment;
using Phase::Activity::UnifacGroups;

namespace {
Vector fractions(const std::vector<double>& x) {
    return Vector(x.begin(), x.end());
}

std::vector<double> gammas(Phase::Activity::Interface& model, double T, const std::vector<double>& x) {
    model.setTemperature(Value(T, "K"));
    model.calculateExcess(fractions(x));
    std::vector<double> g;
    for (const Active& a : model.gamma())
        g.push_back(a.val());
    return g;
}

// sum_i x_i d ln gamma_i along a change of composition that keeps the sum of x: zero at constant T. The
// largest single term goes to `largest`, to show that the sum is not zero for want of derivatives.
double gibbsDuhem(Phase::Activity::Interface& model, double T, const std::vector<double>& x,
                  const std::vector<double>& direction, double& largest) {
    ActiveContext::Scope scope(1);
    Vector z = fractions(x);
    for (std::size_t i = 0; i < x.size(); ++i)
        z[i].active().setDerivative(0, direction[i]);
    model.setTemperature(Value(T, "K"));
    model.calculateExcess(z);
    double sum = 0;
    largest = 0;
    for (std::size_t i = 0; i < x.size(); ++i) {
        const double term = x[i] * model.gamma()[i].derivative(0) / model.gamma()[i].val();
        sum += term;
        largest = std::max(largest, std::fabs(term));
    }
    return sum;
}
} // namespace

class ActivityTest : public PhaseTest {
protected:
    void SetUp() override {
        PhaseTest::SetUp();
        ParametersNrtl1::clear();
        ParametersNrtl2::clear();
        UnifacAssignment::clear();
    }
    void TearDown() override {
        UnifacAssignment::clear();
        PhaseTest::TearDown();
    }
    static void useCatalogue(const std::vector<std::string>& entries) {
        components.clear();
        for (const std::string& entry : entries)
            components.add(newCatalogueComponent(entry, entry));
    }
    // Components whose only role is to size the lists; the groups of each case are given.
    static void useGroups(const std::vector<UnifacGroups>& groups) {
        components.clear();
        for (const UnifacGroups& g : groups) {
            components.add(new purecomps::nhexane("c" + std::to_string(components.size())));
            UnifacAssignment::append(g);
        }
    }
};

TEST_F(ActivityTest, NrtlEthanolWaterMatchesThePublishedActivityCoefficients) {
    // Ethanol (1) / water (2), tau12 -0.178, tau21 1.963, alpha 0.2974, x1 0.252: gamma 1.93632, 1.15376.
    useCatalogue({"ethanol", "water"});
    const double T = 350.0;
    ParametersNrtl1::setB(0, 1, -0.178 * T, 1.963 * T);
    ParametersNrtl1::setA(0, 1, 0.2974);
    Phase::Activity::Nrtl1 nrtl;
    const std::vector<double> g = gammas(nrtl, T, {0.252, 0.748});
    EXPECT_NEAR(g[0], 1.93632, 5e-6);
    EXPECT_NEAR(g[1], 1.15376, 5e-6);
    const std::vector<double> byHand = binaryNrtl(0.252, -0.178, 1.963, 0.2974);
    EXPECT_NEAR(g[0], byHand[0], 1e-13);
    EXPECT_NEAR(g[1], byHand[1], 1e-13);

    // Infinite dilution: ln gamma_1 = tau21 + tau12 exp(-alpha tau12); a pure component has gamma 1, gE 0.
    const std::vector<double> dilute = gammas(nrtl, T, {0.0, 1.0});
    EXPECT_NEAR(std::log(dilute[0]), 1.963 + -0.178 * std::exp(0.2974 * 0.178), 1e-13);
    EXPECT_DOUBLE_EQ(dilute[1], 1.0);
    EXPECT_DOUBLE_EQ(nrtl.gE().toDouble("J/kmol"), 0.0);
    EXPECT_DOUBLE_EQ(nrtl.hE().toDouble("J/kmol"), 0.0);
    // A phase that carries nothing: no NaN.
    EXPECT_EQ(gammas(nrtl, T, {0.0, 0.0}), (std::vector<double>{1.0, 1.0}));
    EXPECT_EQ(nrtl.hE().toDouble(), 0.0);
}

TEST_F(ActivityTest, NrtlWithoutParametersIsTheIdealSolution) {
    useCatalogue({"ethanol", "water", "acetone"});
    auto nrtl = make<Phase::Generic>("PhaseNrtl1");
    auto ideal = make<Phase::Generic>("PhaseIdeal<liquid>");
    const Value P(101325.0, "Pa"), T(340.0, "K");
    for (auto* phase : {nrtl.get(), ideal.get()}) {
        const double x[] = {0.2, 0.5, 0.3};
        for (int i = 0; i < NCOMPONENTS; ++i)
            phase->x[i] = x[i];
        phase->prepare(T);
        phase->preparefugacity(P, T);
    }
    for (int i = 0; i < NCOMPONENTS; ++i)
        EXPECT_DOUBLE_EQ(nrtl->fugacity(i).toDouble(), ideal->fugacity(i).toDouble());
    EXPECT_DOUBLE_EQ(nrtl->calculate_H(P, T).toDouble(), ideal->calculate_H(P, T).toDouble());
    EXPECT_DOUBLE_EQ(nrtl->calculate_S(P, T).toDouble(), ideal->calculate_S(P, T).toDouble());
}

TEST_F(ActivityTest, NrtlPhaseAddsTheExcessToTheIdealSolution) {
    useCatalogue({"ethanol", "water"});
    ParametersNrtl1::setB(0, 1, -60.0, 680.0);
    ParametersNrtl1::setA(0, 1, 0.3);
    auto nrtl = make<Phase::Generic>("PhaseNrtl1");
    auto ideal = make<Phase::Generic>("PhaseIdeal<liquid>");
    const Value P(101325.0, "Pa"), T(345.0, "K");
    for (auto* phase : {nrtl.get(), ideal.get()}) {
        phase->x[0] = 0.4;
        phase->x[1] = 0.6;
        phase->prepare(T);
        phase->preparefugacity(P, T);
    }
    const std::vector<double> g = binaryNrtl(0.4, -60.0 / 345, 680.0 / 345, 0.3);
    for (int i = 0; i < 2; ++i)
        EXPECT_NEAR(nrtl->fugacity(i).toDouble() - ideal->fugacity(i).toDouble(), std::log(g[i]), 1e-13);
    // gE / RT = sum x_i ln gamma_i; hE = -R T^2 d(gE/RT)/dT with tau = B / T and alpha constant.
    const auto& model = dynamic_cast<Phase::Activity::Nrtl&>(nrtl->model());
    EXPECT_NEAR(model.gE().toDouble(), 8314.4 * 345 * (0.4 * std::log(g[0]) + 0.6 * std::log(g[1])), 1e-8);
    EXPECT_NEAR(nrtl->calculate_H(P, T).toDouble() - ideal->calculate_H(P, T).toDouble(),
                model.hE().toDouble(), 1e-6);
    EXPECT_NEAR(nrtl->calculate_S(P, T).toDouble() - ideal->calculate_S(P, T).toDouble(),
                (model.hE().toDouble() - model.gE().toDouble()) / 345, 1e-9);
}

TEST_F(ActivityTest, ExcessEnthalpyIsTheTemperatureDerivativeOfTheExcessGibbsEnergy) {
    useCatalogue({"ethanol", "water", "acetone"});
    // Every coefficient of tau and a slope of alpha, so that each term of the derivatives counts.
    ParametersNrtl2::setTABCD(0, 1, 1.2, -0.8, -150.0, 420.0, 0.05, -0.02, 1e-3, -2e-3);
    ParametersNrtl2::setTABCD(0, 2, 0.3, 0.1, 80.0, -40.0, 0.0, 0.01, 0.0, 5e-4);
    ParametersNrtl2::setTABCD(1, 2, -0.5, 0.9, 300.0, -90.0, 0.02, 0.0, -1e-3, 0.0);
    ParametersNrtl2::setAAB(0, 1, 0.3, 1e-3);
    ParametersNrtl2::setAAB(0, 2, 0.25, -5e-4);
    ParametersNrtl2::setAAB(1, 2, 0.4, 2e-4);
    Phase::Activity::Nrtl2 nrtl;
    const auto gEOverT = [&](double T) {
        gammas(nrtl, T, {0.3, 0.5, 0.2});
        return nrtl.gE().toDouble() / T;
    };
    const double T = 330.0, h = 1e-3;
    const double byDifference = -T * T * (gEOverT(T + h) - gEOverT(T - h)) / (2 * h);
    gammas(nrtl, T, {0.3, 0.5, 0.2});
    EXPECT_NEAR(nrtl.hE().toDouble(), byDifference, 1e-6 * std::fabs(byDifference));
    EXPECT_NEAR(nrtl.sE().toDouble(), (nrtl.hE().toDouble() - nrtl.gE().toDouble()) / T, 1e-9);
}

TEST_F(ActivityTest, Nrtl2AlphaSlopeIsPerDegreeCelsius) {
    useCatalogue({"ethanol", "water"});
    ParametersNrtl2::setTABCD(0, 1, -0.2, 2.0, 0, 0, 0, 0, 0, 0);
    ParametersNrtl2::setAAB(0, 1, 0.3, 0.01);
    Phase::Activity::Nrtl2 nrtl;
    // At 273.15 K the slope adds nothing; at 283.15 K alpha is 0.4.
    const std::vector<double> freezing = gammas(nrtl, 273.15, {0.3, 0.7});
    const std::vector<double> byHand = binaryNrtl(0.3, -0.2, 2.0, 0.3);
    EXPECT_NEAR(freezing[0], byHand[0], 1e-13);
    EXPECT_NEAR(gammas(nrtl, 283.15, {0.3, 0.7})[1], binaryNrtl(0.3, -0.2, 2.0, 0.4)[1], 1e-13);
}

TEST_F(ActivityTest, GibbsDuhemHoldsForBothModels) {
    useCatalogue({"ethanol", "water", "acetone", "benzene"});
    ParametersNrtl1::setB(0, 1, -60.0, 680.0);
    ParametersNrtl1::setB(0, 2, 120.0, 40.0);
    ParametersNrtl1::setB(0, 3, 300.0, 500.0);
    ParametersNrtl1::setB(1, 2, 600.0, 150.0);
    ParametersNrtl1::setB(1, 3, 1500.0, 1200.0);
    ParametersNrtl1::setB(2, 3, 50.0, 80.0);
    for (int i = 0; i < 4; ++i)
        for (int j = i + 1; j < 4; ++j)
            ParametersNrtl1::setA(i, j, 0.2 + 0.05 * (i + j));
    Phase::Activity::Nrtl1 nrtl;
    Phase::Activity::Unifac unifac;
    for (const std::vector<double>& x : {std::vector<double>{0.25, 0.25, 0.25, 0.25},
                                         {0.05, 0.8, 0.1, 0.05},
                                         {0.6, 0.01, 0.09, 0.3},
                                         {0.0, 0.5, 0.5, 0.0}})
        for (const std::vector<double>& d : {std::vector<double>{1, -1, 0, 0}, {0.2, 0.3, -0.9, 0.4}}) {
            for (Phase::Activity::Interface* model : {static_cast<Phase::Activity::Interface*>(&nrtl),
                                                      static_cast<Phase::Activity::Interface*>(&unifac)}) {
                double largest = 0;
                EXPECT_NEAR(gibbsDuhem(*model, 340.0, x, d, largest), 0, 1e-10);
                EXPECT_GT(largest, 1e-3);
            }
        }
}

// ../shared/data/unifac_checks.json: the published figures, and the values of an independent UNIFAC written
// from the same tables to 1e-13, to which the model must agree closer than the printed digits tell.
TEST_F(ActivityTest, UnifacMatchesPublishedActivityCoefficients) {
    struct Case {
        std::vector<UnifacGroups> groups;
        double T;
        std::vector<double> x, published, digits, independent;
    };
    const std::vector<Case> cases{
        // n-hexane / 2-butanone at 60 C: Gmehling et al., Chemical Thermodynamics for Process Simulation,
        // example 5.22: 1.428, 1.365.
        {{{{1, 2}, {2, 4}}, {{1, 1}, {2, 1}, {18, 1}}},
         333.15,
         {0.5, 0.5},
         {1.428, 1.365},
         {5e-4, 5e-4},
         {1.4276025835624173, 1.3646545010104225}},
        // ethanol / benzene at 345 K: Walas, Phase Equilibria in Chemical Engineering, Example 4.14: 2.9119,
        // 1.10832, which the file finds to agree within 0.005 only.
        {{{{1, 1}, {2, 1}, {14, 1}}, {{9, 6}}},
         345.0,
         {0.2, 0.8},
         {2.9119, 1.10832},
         {5e-3, 5e-3},
         {2.90999524962436, 1.1038643452317465}},
        // 2-propanol / water / propionic acid at 353.52 K: Elliott & Lira, ACTCOEFF.XLS.
        {{{{1, 2}, {3, 1}, {14, 1}}, {{16, 1}}, {{1, 1}, {2, 1}, {42, 1}}},
         353.52,
         {0.1, 0.1, 0.8},
         {0.996889053562564, 2.17095770844183, 1.00112091118954},
         {1e-12, 1e-12, 1e-12},
         {0.996889053562564, 2.17095770844183, 1.00112091118954}},
    };
    for (const Case& c : cases) {
        useGroups(c.groups);
        Phase::Activity::Unifac unifac;
        const std::vector<double> g = gammas(unifac, c.T, c.x);
        for (std::size_t i = 0; i < g.size(); ++i) {
            EXPECT_NEAR(g[i], c.published[i], c.digits[i]) << c.T << " K, component " << i;
            EXPECT_NEAR(g[i], c.independent[i], 1e-12 * c.independent[i]) << c.T << " K, component " << i;
        }
        UnifacAssignment::clear();
    }
    // Acetone / n-pentane at 307 K, x1 0.047: Smith, Van Ness and Abbott, Introduction to Chemical
    // Engineering Thermodynamics, the UNIFAC example of the appendix: gamma 4.99, 1.005. The catalogue's
    // own groups of both species.
    useCatalogue({"acetone", "pentane"});
    Phase::Activity::Unifac unifac;
    const std::vector<double> g = gammas(unifac, 307.0, {0.047, 0.953});
    EXPECT_NEAR(g[0], 4.99, 5e-3);
    EXPECT_NEAR(g[1], 1.005, 5e-4);
}

TEST_F(ActivityTest, UnifacLimitsAndGroupsOfOneMainGroup) {
    useCatalogue({"ethanol", "water", "nhexane"});
    Phase::Activity::Unifac unifac;
    // Pure components: both terms vanish.
    for (int i = 0; i < 3; ++i) {
        std::vector<double> x(3, 0.0);
        x[i] = 1.0;
        EXPECT_NEAR(gammas(unifac, 320.0, x)[i], 1.0, 1e-14) << i;
    }
    EXPECT_EQ(gammas(unifac, 320.0, {0.0, 0.0, 0.0}), (std::vector<double>{1.0, 1.0, 1.0}));
    // CH3 and CH2 (subgroups 1 and 2) share main group 1: Psi = 1 at any T; CH3 and OH do not.
    const std::vector<int>& k = unifac.subgroups();
    ASSERT_EQ(k, (std::vector<int>{1, 2, 14, 16}));
    for (const double T : {280.0, 400.0}) {
        unifac.setTemperature(Value(T, "K"));
        EXPECT_EQ(unifac.psi(0, 1).val(), 1.0);
        EXPECT_EQ(unifac.psi(1, 0).val(), 1.0);
        // a[1][5] = 986.5 K (../shared/data/unifac_interactions.csv).
        EXPECT_NEAR(unifac.psi(0, 2).val(), std::exp(-986.5 / T), 1e-15);
    }
}

TEST_F(ActivityTest, UnifacRefusesAPresentComponentWithoutGroups) {
    // The kernel's list: CO2 has no groups in the published table; water has.
    Phase::Activity::Unifac unifac;
    unifac.setTemperature(Value(300.0, "K"));
    EXPECT_NE(errorText([&] {
                  unifac.calculateExcess(fractions({0.1, 0, 0.9, 0, 0}));
              }).find("component CO2 has no UNIFAC groups assigned"),
              std::string::npos);
    // Absent, it takes no part: pure water has gamma 1, and so has the absent gas.
    unifac.calculateExcess(fractions({0, 0, 1, 0, 0}));
    for (const Active& g : unifac.gamma())
        EXPECT_EQ(g.val(), 1.0);
    // A subgroup that the table lacks is refused when the model is built.
    UnifacAssignment::append({{200, 1}});
    EXPECT_NE(errorText([] { Phase::Activity::Unifac bad; }).find("subgroup 200"), std::string::npos);
}

TEST_F(ActivityTest, CatalogueGroupsAgreeWithThePublishedAssignments) {
    // ../shared/data/unifac_component_groups.csv (DDBST assignments).
    const std::vector<std::pair<std::string, UnifacGroups>> published{
        {"water", {{16, 1}}},           {"methanol", {{15, 1}}}, {"ethanol", {{1, 1}, {2, 1}, {14, 1}}},
        {"acetone", {{1, 1}, {18, 1}}}, {"benzene", {{9, 6}}},   {"nhexane", {{1, 2}, {2, 4}}}};
    for (const auto& [entry, groups] : published) {
        std::unique_ptr<ComponentGeneric> c(newCatalogueComponent(entry, entry));
        const UnifacGroups* found = Phase::Activity::catalogueUnifacGroups(*c);
        ASSERT_NE(found, nullptr) << entry;
        EXPECT_EQ(*found, groups) << entry;
    }
    std::unique_ptr<ComponentGeneric> gas(newCatalogueComponent("N2", "N2"));
    EXPECT_EQ(Phase::Activity::catalogueUnifacGroups(*gas), nullptr);
}
