#include "PhaseTestSupport.h"

#include <tarvo/phases/PhaseGeneric.h>
#include <tarvo/phases/PhaseIdeal.h>
#include <tarvo/phases/PhaseTotal.h>
#include <tarvo/value/ActiveContext.h>

#include <cmath>
#include <vector>

using Mode = Tarvo::Utility::MassBalanceMode;
using Tarvo::Utility::PhaseType;

namespace {
Value Pa(double p) { return Value(p, "Pa"); }
Value K(double t) { return Value(t, "K"); }
} // namespace

// Expected numbers from scripts/ideal_gas_reference.py, which integrates the heat capacity
// correlations numerically, from the elements at 298.15 K and 101325 Pa.
TEST_F(PhaseTest, IdealVaporMatchesAnIndependentIntegrationOfTheCorrelations) {
    auto v = make<Phase::Generic>("PhaseIdeal<vapor>");
    v->ndot = Value(10.0, "kmol/h");
    const std::vector<double> x{0.2, 0.3, 0.1, 0.25, 0.15};
    for (int i = 0; i < NCOMPONENTS; ++i) v->x[i] = x[i];
    v->calculate(0);
    v->calculateProperties(Pa(2.0e5), K(400.0), true);
    EXPECT_NEAR(v->H.toDouble(), -121734124, 1e-7 * 121734124);
    EXPECT_NEAR(v->S.toDouble(), -10754.46977, 1e-6 * 10754.47);
    EXPECT_NEAR(v->Cp.toDouble(), 35732.5002, 1e-8 * 35732.5);
    const double molarDensity = 2.0e5 / 8314.4 / 400.0;
    EXPECT_NEAR(v->rho.toDouble(), molarDensity * v->mw.toDouble(), 1e-12);
    EXPECT_NEAR(v->v.toDouble(), 1 / molarDensity, 1e-12);
    EXPECT_NEAR(v->h.toDouble(), v->H.toDouble() / v->mw.toDouble(), 1e-6);
    EXPECT_NEAR(v->g.toDouble(), v->h.toDouble() - 400.0 * v->s.toDouble(), 1e-6);
    EXPECT_NEAR(v->cp.toDouble(), v->Cp.toDouble() / v->mw.toDouble(), 1e-9);
    EXPECT_NEAR(v->vdot.toDouble(), v->mdot.toDouble() / v->rho.toDouble(), 1e-15);

    // Absent components take no part: CO2 and N2 alone, below 298.15 K.
    for (int i = 0; i < NCOMPONENTS; ++i) v->x[i] = (i == 0 || i == 3) ? 0.5 : 0.0;
    v->calculateProperties(Pa(101325.0), K(250.0), true);
    EXPECT_NEAR(v->H.toDouble(), -198321471.1, 1e-7 * 198321471.1);
    EXPECT_NEAR(v->S.toDouble(), 1478.499677, 1e-6 * 1478.5);
    EXPECT_NEAR(v->Cp.toDouble(), 31863.69072, 1e-8 * 31863.7);
}

// A phase keeps the pure components' properties of the states it last met. Whatever it kept, a sum is that of
// the components present now, in the phase's type now, with the slopes that the caller's directions ask for.
TEST_F(PhaseTest, SumsAtOneStateFollowTheComponentsTheTypeAndTheDirections) {
    auto phase = make<Phase::Generic>("PhaseIdeal<vapor>");
    const Value P = Pa(1e5), T = K(300);
    const std::vector<double> x{0.2, 0.3, 0.1, 0.25, 0.15};
    double vapor = 0, solid = 0, cp = 0;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        vapor += x[i] * components[i]->hv(T, P).toDouble();
        solid += x[i] * components[i]->hs(T, P).toDouble();
        cp += x[i] * components[i]->cpv(T, P).toDouble();
    }
    ASSERT_GT(std::fabs(vapor - solid), 1e-3 * std::fabs(vapor)); // the types tell apart

    // Carbon dioxide alone, without derivatives; then the mixture at the same state, with T as a direction.
    for (int i = 0; i < NCOMPONENTS; ++i) phase->x[i] = i == 0 ? 1.0 : 0.0;
    EXPECT_EQ(phase->calculate_H(P, T).toDouble(), components[0]->hv(T, P).toDouble());
    for (int i = 0; i < NCOMPONENTS; ++i) phase->x[i] = x[i];
    {
        ActiveContext::Scope directions(2);
        Value t = T;
        t.active().setActive(0);
        const Value H = phase->calculate_H(P, t);
        EXPECT_NEAR(H.toDouble(), vapor, 1e-13 * std::fabs(vapor));
        EXPECT_NEAR(H.active().derivative(0), cp, 1e-10 * cp); // an ideal gas's dH/dT is its heat capacity
    }
    // The same state as a solid, and back.
    phase->setType(PhaseType::solid);
    EXPECT_NEAR(phase->calculate_H(P, T).toDouble(), solid, 1e-13 * std::fabs(solid));
    phase->setType(PhaseType::vapor);
    EXPECT_NEAR(phase->calculate_H(P, T).toDouble(), vapor, 1e-13 * std::fabs(vapor));
}

TEST_F(PhaseTest, IdealVaporDensityAtTheReferenceState) {
    auto v = make<Phase::Generic>("PhaseIdeal<vapor>");
    EXPECT_DOUBLE_EQ(v->calculate_rho(Pa(101325), K(298.15)).toDouble(), 101325 / 8314.4 / 298.15);
    EXPECT_EQ(v->calculate_rho(Pa(101325), K(298.15)).unitText(), Value(1.0, "kmol/m3").unitText());
    // From a molar density and a temperature back to the pressure, times the sum of the fractions.
    const Value rho(101325 / 8314.4 / 298.15, "kmol/m3");
    EXPECT_NEAR(v->calculate_P(rho, K(298.15)).toDouble(), 101325.0, 1e-9);
}

TEST_F(PhaseTest, WithoutWriteHOnlyDensityAndHeatCapacityChange) {
    auto v = make<Phase::Generic>("PhaseIdeal<vapor>");
    v->calculate(0);
    v->H = Value(5.0, "J/kmol");
    v->h = Value(6.0, "J/kg");
    v->S = Value(7.0, "J/kmol/K");
    v->s = Value(8.0, "J/kg/K");
    v->g = Value(9.0, "J/kg");
    v->Cp = Value(1.0, "J/kmol/K");
    v->calculateProperties(Pa(1e5), K(350), false);
    EXPECT_EQ(v->H.toDouble(), 5.0);
    EXPECT_EQ(v->h.toDouble(), 6.0);
    EXPECT_EQ(v->S.toDouble(), 7.0);
    EXPECT_EQ(v->s.toDouble(), 8.0);
    EXPECT_EQ(v->g.toDouble(), 9.0);
    EXPECT_GT(v->Cp.toDouble(), 20000.0);
    EXPECT_NEAR(v->rho.toDouble(), 1e5 / 8314.4 / 350 * v->mw.toDouble(), 1e-12);
}

TEST_F(PhaseTest, CondensedPhasesUseRaoultAndTheVaporHasNoCorrection) {
    auto l = make<Phase::Generic>("PhaseIdeal<liquid>");
    auto v = make<Phase::Generic>("PhaseIdeal<vapor>");
    l->preparefugacity(Pa(2e5), K(360));
    v->preparefugacity(Pa(2e5), K(360));
    for (int i = 0; i < NCOMPONENTS; ++i) {
        EXPECT_NEAR(l->fugacity(i).toDouble(), std::log(components[i]->kvli(K(360), Pa(2e5)).toDouble()), 1e-12);
        EXPECT_EQ(v->fugacity(i).toDouble(), 0.0);
    }
    // The type can change after construction, as a flash may do it.
    v->setType(PhaseType::liquid);
    v->preparefugacity(Pa(2e5), K(360));
    EXPECT_EQ(v->fugacity(2).toDouble(), l->fugacity(2).toDouble());
}

TEST_F(PhaseTest, LiquidAndSolidDensitiesAverageMolarVolumes) {
    auto l = make<Phase::Generic>("PhaseIdeal<liquid>");
    for (int i = 0; i < NCOMPONENTS; ++i) l->x[i] = 0.0;
    l->x[2] = 0.6;
    l->x[0] = 0.4;
    const Value T = K(280), P = Pa(5e5);
    const double expected =
        1 / (0.4 / components[0]->rhol(T, P).toDouble() + 0.6 / components[2]->rhol(T, P).toDouble());
    EXPECT_NEAR(l->calculate_rho(P, T).toDouble(), expected, 1e-12 * expected);
    auto s = make<Phase::Generic>("PhaseIdeal<solid>");
    for (int i = 0; i < NCOMPONENTS; ++i) s->x[i] = i == 2 ? 1.0 : 0.0;
    EXPECT_NEAR(s->calculate_rho(P, T).toDouble(), components[2]->rhos(T, P).toDouble(), 1e-12);
}

TEST_F(PhaseTest, TransportPropertiesFollowTheirMixingRules) {
    auto v = make<Phase::Generic>("PhaseIdeal<vapor>");
    auto l = make<Phase::Generic>("PhaseIdeal<liquid>");
    auto s = make<Phase::Generic>("PhaseIdeal<solid>");
    const Value T = K(330), P = Pa(1e5);
    for (auto* p : {v.get(), l.get(), s.get()})
        for (int i = 0; i < NCOMPONENTS; ++i) p->x[i] = i == 2 ? 1.0 : 0.0;
    // One component: its own viscosity in vapor and liquid.
    EXPECT_NEAR(v->mu(P, T).toDouble(), components[2]->muv(T, P).toDouble(), 1e-18);
    EXPECT_NEAR(l->mu(P, T).toDouble(), components[2]->mul(T).toDouble(), 1e-15);
    EXPECT_NEAR(l->kappa(P, T).toDouble(), components[2]->kl(T).toDouble(), 1e-12);
    EXPECT_NEAR(l->sigma(P, T).toDouble(), components[2]->sigma(T).toDouble(), 1e-12);
    EXPECT_EQ(v->sigma(P, T).toDouble(), 0.0);
    EXPECT_EQ(s->sigma(P, T).toDouble(), 0.0);
    EXPECT_EQ(s->kappa(P, T).toDouble(), 1e10);
    EXPECT_EQ(s->mu(P, T).toDouble(), 1e10);

    // Two gases of equal viscosity and weight mix to that viscosity; Wilke's rule for N2 + CO2 by hand.
    for (int i = 0; i < NCOMPONENTS; ++i) v->x[i] = 0.0;
    v->x[0] = 0.4;
    v->x[3] = 0.6;
    const double m1 = components[0]->muv(T, P).toDouble(), m2 = components[3]->muv(T, P).toDouble();
    const double M1 = components[0]->mw().toDouble(), M2 = components[3]->mw().toDouble();
    const auto phi = [](double mi, double mj, double Mi, double Mj) {
        return std::pow(1 + std::sqrt(mi / mj) * std::pow(Mj / Mi, 0.25), 2) / std::sqrt(8 * (1 + Mi / Mj));
    };
    // The viscosity rule is not Wilke's: its weight has neither the square nor the inner root. By hand:
    const auto f = [](double mi, double mj, double Mi, double Mj) {
        return (1 + mi / mj * std::sqrt(Mj / Mi)) / (2.8284271247461903 * std::sqrt(1 + Mi / Mj));
    };
    const double rule = m1 / (1 + 0.6 / 0.4 * f(m1, m2, M1, M2)) + m2 / (1 + 0.4 / 0.6 * f(m2, m1, M2, M1));
    EXPECT_NEAR(v->mu(P, T).toDouble(), rule, 1e-12 * rule);
    // The conductivity rule is Wilke's form itself.
    const double k1 = components[0]->kv(T, P).toDouble(), k2 = components[3]->kv(T, P).toDouble();
    const double kWilke =
        0.4 * k1 / (0.4 + 0.6 * phi(m1, m2, M1, M2)) + 0.6 * k2 / (0.6 + 0.4 * phi(m2, m1, M2, M1));
    EXPECT_NEAR(v->kappa(P, T).toDouble(), kWilke, 1e-12 * kWilke);
}

TEST_F(PhaseTest, PhaseTypesOfTheCatalogue) {
    const std::vector<std::string> names{"PhaseSimple",  "PhaseSimple<vapor>", "PhaseSimple<liquid>",
                                         "PhaseSimple<solid>", "PhaseSimpleTotal", "PhaseTotal",
                                         "PhaseIdeal",   "PhaseIdeal<vapor>",  "PhaseIdeal<liquid>",
                                         "PhaseIdeal<solid>", "PhaseIapws", "PhaseIapws<vapor>",
                                         "PhaseIapws<liquid>", "PhaseNrtl1", "PhaseNrtl2", "PhaseUnifac",
                                         "PhasePcsaft", "PhasePcsaft<vapor>", "PhasePcsaft<liquid>",
                                         "PhaseGerg2004", "PhaseGerg2004<vapor>", "PhaseGerg2004<liquid>",
                                         "PhaseVanDerWaals", "PhaseVanDerWaals<vapor>", "PhaseVanDerWaals<liquid>",
                                         "PhasePengRobinson", "PhasePengRobinson<vapor>", "PhasePengRobinson<liquid>",
                                         "PhaseKwongRedlichSoave", "PhaseKwongRedlichSoave<vapor>",
                                         "PhaseKwongRedlichSoave<liquid>"};
    std::vector<std::string> registered;
    for (const auto& t : NodeFactory::types())
        if (t.category == "phase") registered.push_back(t.name);
    EXPECT_EQ(registered, names);
    EXPECT_EQ(NodeFactory::typeDescriptor("PhaseIdeal<solid>").description, "Solid ideal phase");
    EXPECT_EQ(NodeFactory::typeDescriptor("PhasePengRobinson<vapor>").description,
              "Vapor phase based on the Peng-Robinson equation of state");
    EXPECT_EQ(NodeFactory::typeDescriptor("PhaseSimple<liquid>").description,
              "Simple, mass-balance only, liquid phase");
    EXPECT_TRUE(NodeFactory::typeDescriptor("PhaseIdeal<vapor>").stringOptions.empty());
    EXPECT_EQ(NodeFactory::typeDescriptor("PhaseIdeal").stringOptions.at(0).value, "liquid");

    EXPECT_EQ(make<Phase::Generic>("PhaseIdeal")->phaseType(), PhaseType::liquid);
    EXPECT_EQ(make("PhaseSimple")->phaseType(), PhaseType::vapor);
    EXPECT_EQ(make("PhaseSimple<solid>")->phaseType(), PhaseType::solid);
    EXPECT_NE(errorText([] {
                  delete NodeFactory::create("PhaseIdeal", Tarvo::Persistency::Defaults("P", "p").setString("typeP", "gas"),
                                             0, nullptr, nullptr, nullptr);
              }).find("Unrecognized PhaseType: gas"),
              std::string::npos);
}

namespace {
// A stream of the tests with a total and the phases it is given, at fixed fractions.
class TwoPhases : public StreamInterface {
public:
    std::vector<Phase::Mass*> all;
    const std::vector<Phase::Mass*>& phases() const override { return all; }
    const Value& phaseFraction(const Phase::Mass& phase) const override { return phase.fraction; }
    Phase::Mass* findPhase(const Tarvo::Utility::PhaseIndex&) const override { return nullptr; }
    const Value& Fraction(const Tarvo::Utility::PhaseIndex&, bool) const override { return one; }
    Vector X(const Tarvo::Utility::PhaseIndex&) const override { return {}; }
};
} // namespace

TEST_F(PhaseTest, TotalPhaseWeighsThePhasesByTheirFractions) {
    auto total = make<PhaseTotal>("PhaseTotal");
    auto v = make<Phase::Generic>("PhaseIdeal<vapor>");
    auto l = make<Phase::Generic>("PhaseIdeal<liquid>");
    auto simple = make("PhaseSimple<vapor>");
    TwoPhases stream;
    stream.all = {total.get(), v.get(), l.get()};
    total->setStream(&stream);
    const Value T = K(330), P = Pa(1e5);
    v->fraction = 0.25;
    l->fraction = 0.75;
    for (auto* p : {v.get(), l.get()}) {
        p->calculate(0);
        p->calculateProperties(P, T, true);
    }
    EXPECT_NEAR(total->calculate_H(P, T).toDouble(), 0.25 * v->H.toDouble() + 0.75 * l->H.toDouble(), 1e-3);
    EXPECT_NEAR(total->calculate_S(P, T).toDouble(), 0.25 * v->S.toDouble() + 0.75 * l->S.toDouble(), 1e-9);
    EXPECT_NEAR(total->calculate_Cp(P, T).toDouble(), 0.25 * v->Cp.toDouble() + 0.75 * l->Cp.toDouble(), 1e-9);
    const double rho = 1 / (0.25 / v->calculate_rho(P, T).toDouble() + 0.75 / l->calculate_rho(P, T).toDouble());
    EXPECT_NEAR(total->calculate_rho(P, T).toDouble(), rho, 1e-12 * rho);
    // A phase without fraction is left out, and the fixed numbers stand for what a total lacks.
    l->fraction = 0.0;
    EXPECT_NEAR(total->calculate_H(P, T).toDouble(), 0.25 * v->H.toDouble(), 1e-3);
    EXPECT_EQ(total->calculate_P(P, T).toDouble(), 1e10);
    EXPECT_EQ(total->fugacity(0).toDouble(), 1.0);
    // A phase without properties in a stream of molar phases is a wrong type.
    stream.all.push_back(simple.get());
    EXPECT_NE(errorText([&] { total->calculate_H(P, T); }).find("P1"), std::string::npos);
}
