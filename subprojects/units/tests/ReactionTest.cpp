#include "UnitTestSupport.h"

#include <tarvo/components/ChemicalFormula.h>
#include <tarvo/units/ReactionEquilibrium.h>

#include <cmath>
#include <map>

using Tarvo::Persistency::Defaults;

namespace {
double coefficient(const Reaction& r, const std::string& name) {
    return r.coeff[components.lookup(name)].toDouble();
}
} // namespace

// Every reaction of the catalogue conserves each element: the component names are formulas, read here
// atom by atom. Its key is a species that it consumes.
TEST_F(ReactingUnitTest, EveryCatalogueReactionBalancesItsElements) {
    int fixed = 0;
    for (const auto& descriptor : NodeFactory::types()) {
        const std::string& type = descriptor.name;
        // The multi-reactions share the category; their stoichiometry is the user's.
        if (descriptor.category != "option" || type == "ReactionYield" || type.rfind("Reaction", 0) != 0) continue;
        auto& r = dynamic_cast<ReactionYield&>(bench_->addChild(type, {"R" + std::to_string(fixed++), type}));
        std::map<std::string, double> balance;
        for (int i = 0; i < NCOMPONENTS; ++i) {
            const ChemicalFormula formula(components[i]->name);
            for (const auto& [element, count] : formula.counts())
                balance[element] += r.coeff[i].toDouble() * count;
        }
        for (const auto& [element, sum] : balance)
            EXPECT_NEAR(sum, 0.0, 1e-12) << type << " " << element;
        ASSERT_GE(r.keycomp.value(), 0) << type;
        EXPECT_LT(r.keyCoefficient().toDouble(), 0.0) << type;
        EXPECT_EQ(r.option.value(), type.find("Equilibrium") == std::string::npos ? "z" : "equilibrium")
            << type;
    }
    EXPECT_EQ(fixed, 31);
    // The rows stated coefficient by coefficient.
    auto& shift = dynamic_cast<Reaction&>(bench_->addChild("ReactionWaterGasShift", {"S", "shift"}));
    EXPECT_EQ(components[shift.keycomp.value()]->name, "CO2");
    for (const auto& [name, c] : {std::pair{"CO2", -1.0}, {"H2", -1.0}, {"CO", 1.0}, {"H2O", 1.0}})
        EXPECT_EQ(coefficient(shift, name), c) << name;
    auto& ammonia = dynamic_cast<Reaction&>(bench_->addChild("ReactionSynthesisNH3", {"A", "ammonia"}));
    for (const auto& [name, c] : {std::pair{"NH3", -1.0}, {"N2", 0.5}, {"H2", 1.5}})
        EXPECT_EQ(coefficient(ammonia, name), c) << name;
    auto& nitrogen = dynamic_cast<Reaction&>(bench_->addChild("ReactionOxidationN2", {"N", "nitrogen"}));
    EXPECT_EQ(components[nitrogen.keycomp.value()]->name, "N2");
    EXPECT_EQ(coefficient(nitrogen, "N2"), -0.5);
    auto& propane =
        dynamic_cast<Reaction&>(bench_->addChild("ReactionOxidationHydrocarbon<3,8>", {"P", "propane"}));
    EXPECT_EQ(coefficient(propane, "O2"), -5.0);
    EXPECT_EQ(coefficient(propane, "C3H8"), -1.0);
}

// With the kernel's own five species a reaction of hydrogen cannot be made.
TEST_F(UnitTest, ReactionWithoutItsSpeciesFailsAtConstruction) {
    EXPECT_NE(thrown([&] {
                  bench_->addChild("ReactionWaterGasShift", {"R", "shift"});
              }).find("Non-existing component error: Component H2 not found in component list"),
              std::string::npos);
    // Methane burns with the kernel's species alone.
    EXPECT_NO_THROW(bench_->addChild("ReactionOxidationCH4", {"M", "methane"}));
}

TEST_F(ReactingUnitTest, YieldReactionEdgeCases) {
    Stream& s = stream("StreamVapor", "S");
    auto& r = dynamic_cast<ReactionYield&>(bench_->addChild("ReactionWaterGasShift", {"R", "shift"}));
    r.calculate(0);
    EXPECT_EQ(r.errorList(), std::vector<std::string>{"Nothing connected, nothing to do"});
    r.workOn(s.Tphase);

    // z 0.5 on a key of coefficient -1 and flow 2 kmol/s: an extent of 1 kmol/s.
    feedMoles(s, {{"CO2", 2.0}, {"H2", 3.0}}, 1e5, 600);
    r.z = 0.5;
    r.calculate(0);
    EXPECT_TRUE(r.errorList().empty() && r.warningList().empty());
    EXPECT_NEAR(r.conv.toDouble("kmol/s"), 1.0, 1e-15);
    EXPECT_NEAR(moles(s, "CO2"), 1.0, 1e-15);
    EXPECT_NEAR(moles(s, "H2"), 2.0, 1e-15);
    EXPECT_NEAR(moles(s, "CO"), 1.0, 1e-15);
    EXPECT_NEAR(moles(s, "H2O"), 1.0, 1e-15);
    EXPECT_NEAR(s.Tphase->totalFlow().toDouble("kmol/s"), 5.0, 1e-15);
    // Mass of each species per mass of CO2 converted, as the molecular weights give it.
    const double mwCO2 = components[0]->mw().toDouble();
    EXPECT_NEAR(r.coeffm[components.lookup("CO")].toDouble(), ChemicalFormula("CO").mw().toDouble() / mwCO2,
                1e-12);

    // Without the key there is nothing to convert.
    feedMoles(s, {{"H2", 3.0}}, 1e5, 600);
    r.calculate(0);
    EXPECT_EQ(r.warningList(), std::vector<std::string>{"Zero flow of key component CO2"});
    EXPECT_EQ(r.conv.toDouble(), 0.0);

    // Two species consumed: hydrogen runs out first and limits the extent; the extent given stays.
    feedMoles(s, {{"CO2", 2.0}, {"H2", 0.5}}, 1e5, 600);
    r.option = "conv";
    r.conv = Value(1.0, "kmol/s");
    r.calculate(0);
    EXPECT_EQ(r.warningList(), std::vector<std::string>{"Conversion too high for component H2"});
    EXPECT_EQ(r.conv.toDouble("kmol/s"), 1.0);
    EXPECT_NEAR(r.actconv.toDouble("kmol/s"), 0.5, 1e-12);
    EXPECT_GE(moles(s, "H2"), 0.0);
    EXPECT_NEAR(moles(s, "H2"), 0.0, 1e-12);
    EXPECT_NEAR(r.z.toDouble(), 0.25, 1e-12);

    r.option = "yield";
    EXPECT_NE(thrown([&] { r.calculate(0); }).find("Unsupported option yield for String Calculation option"),
              std::string::npos);

    auto& plain = dynamic_cast<ReactionYield&>(bench_->addChild("ReactionYield", {"Y", "plain"}));
    EXPECT_EQ(plain.option.value(), "z");
    plain.workOn(s.Tphase);
    plain.calculate(0);
    EXPECT_EQ(plain.errorList(), std::vector<std::string>{"keycomp uninitialized, bypassing block"});
    plain.keycomp = 0; // CO2, without a coefficient
    plain.calculate(0);
    EXPECT_EQ(plain.errorList(), std::vector<std::string>{"incorrect keycomp, bypassing block"});
    s.Tphase->totalFlow() = Value(0.0, "kmol/s");
    plain.calculate(0);
    EXPECT_EQ(plain.errorList(), std::vector<std::string>{"Zero inlet streams, bypassing block"});
}

// ln Kist - ln K with K beyond 2^52: the constant is taken at the clamp, and a mass-action product beyond it
// still moves the residual.
TEST_F(ReactingUnitTest, EquilibriumResidualStaysFiniteAtTheClamps) {
    auto& r = dynamic_cast<ReactionEquilibrium&>(
        bench_->addChild("ReactionOxidationEquilibriumCH4", {"R", "methane combustion"}));
    Stream& s = stream("StreamVapor", "S");
    r.workOn(s.Tphase);
    feedMoles(s, {{"CH4", 1.0}, {"O2", 3.0}, {"CO2", 1.0}, {"H2O", 1.0}}, 101325, 298.15);
    r.conv = Value(0.0, "kmol/s");
    r.precalc();
    // At 298.15 K ln K = -sum nu g / (R T) is far above the clamp (about 323).
    double lnK = 0;
    for (const auto& [name, nu] : {std::pair{"CH4", -1.0}, {"O2", -2.0}, {"CO2", 1.0}, {"H2O", 2.0}}) {
        const ComponentGeneric& c = *components[name];
        lnK -= nu * c.gv(Value(298.15, "K"), Value(101325.0, "Pa")).toDouble() / (8314.4 * 298.15);
    }
    ASSERT_GT(lnK, 300.0);
    std::vector<Value> x(NCOMPONENTS, Value(0.0));
    const auto residualAt = [&](double xCH4) {
        x[components.lookup("CH4")] = xCH4;
        x[components.lookup("O2")] = 0.5;
        x[components.lookup("CO2")] = 0.25;
        x[components.lookup("H2O")] = 0.25 - xCH4;
        r.Tact = Value(298.15, "K");
        r.calculateEquilibrium(x);
        Value residual;
        r.calculateResidual(residual);
        return residual.toDouble();
    };
    // Inside the range the residual is ln Kist - ln(2^52).
    const double lnKist = std::log(0.25) + 2 * std::log(0.25 - 0.01) - std::log(0.01) - 2 * std::log(0.5);
    EXPECT_NEAR(residualAt(0.01), lnKist - std::log(4503599627370496.0), 1e-12);
    EXPECT_EQ(r.K.toDouble(), 4503599627370496.0);
    // Far beyond it: finite, and still rising as methane vanishes.
    const double near = residualAt(1e-40), nearer = residualAt(1e-80);
    EXPECT_TRUE(std::isfinite(near) && std::isfinite(nearer));
    EXPECT_GT(nearer, near);
    EXPECT_EQ(r.Kist.toDouble(), 4503599627370496.0);
}
