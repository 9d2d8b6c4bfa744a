#include "PhaseTestSupport.h"

#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/phases/PhaseTotal.h>

#include <cmath>
#include <vector>

using Mode = Tarvo::Utility::MassBalanceMode;

namespace {

using Molar = Phase::MassMolarProperties;

void expectSameState(const Molar& a, const Molar& b, const char* mode) {
    const auto near = [](double x, double y) { return std::fabs(x - y) <= 1e-12 * std::max(1.0, std::fabs(y)); };
    EXPECT_TRUE(near(a.ndot.toDouble(), b.ndot.toDouble())) << mode;
    EXPECT_TRUE(near(a.mdot.toDouble(), b.mdot.toDouble())) << mode;
    EXPECT_TRUE(near(a.mw.toDouble(), b.mw.toDouble())) << mode;
    EXPECT_TRUE(near(a.vdot.toDouble(), b.vdot.toDouble())) << mode;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        EXPECT_TRUE(near(a.x[i].toDouble(), b.x[i].toDouble())) << mode << " x " << i;
        EXPECT_TRUE(near(a.w[i].toDouble(), b.w[i].toDouble())) << mode << " w " << i;
        EXPECT_TRUE(near(a.ndotcomps[i].toDouble(), b.ndotcomps[i].toDouble())) << mode << " ndotcomps " << i;
        EXPECT_TRUE(near(a.mdotcomps[i].toDouble(), b.mdotcomps[i].toDouble())) << mode << " mdotcomps " << i;
    }
}

// Spoils every quantity that a balance must work out, so that a mode that forgets one is caught.
void spoil(Molar& p) {
    p.ndot = Value(123.0, "kmol/h");
    p.mdot = Value(456.0, "kg/h");
    p.mw = Value(7.0, "kg/kmol");
    p.vdot = Value(8.0, "m3/h");
    for (int i = 0; i < NCOMPONENTS; ++i) {
        p.x[i] = 0.9;
        p.w[i] = 0.1;
        p.ndotcomps[i] = Value(3.0, "kmol/h");
        p.mdotcomps[i] = Value(5.0, "kg/h");
    }
}

} // namespace

TEST_F(PhaseTest, EveryBalanceModeGivesTheSameStateFromEquivalentInputs) {
    auto reference = make<Molar>("PhaseIdeal<vapor>");
    reference->ndot = Value(100.0, "kmol/h");
    const std::vector<double> x{0.2, 0.3, 0.1, 0.25, 0.15};
    for (int i = 0; i < NCOMPONENTS; ++i) reference->x[i] = x[i] * 3; // the balance normalizes
    reference->rho = Value(1.7, "kg/m3");
    reference->calculateX(Mode::Nx);
    EXPECT_NEAR(reference->x[1].toDouble(), 0.3, 1e-15);

    auto p = make<Molar>("PhaseIdeal<vapor>");
    const auto run = [&](Mode mode, auto give, const char* name) {
        spoil(*p);
        p->rho = reference->rho;
        give(*p);
        p->calculateX(mode);
        expectSameState(*p, *reference, name);
    };
    run(Mode::Nx, [&](Molar& q) { q.ndot = reference->ndot; for (int i = 0; i < NCOMPONENTS; ++i) q.x[i] = reference->x[i]; }, "Nx");
    run(Mode::Mx, [&](Molar& q) { q.mdot = reference->mdot; for (int i = 0; i < NCOMPONENTS; ++i) q.x[i] = reference->x[i]; }, "Mx");
    run(Mode::Nw, [&](Molar& q) { q.ndot = reference->ndot; for (int i = 0; i < NCOMPONENTS; ++i) q.w[i] = reference->w[i]; }, "Nw");
    run(Mode::Mw, [&](Molar& q) { q.mdot = reference->mdot; for (int i = 0; i < NCOMPONENTS; ++i) q.w[i] = reference->w[i]; }, "Mw");
    run(Mode::N, [&](Molar& q) { for (int i = 0; i < NCOMPONENTS; ++i) q.ndotcomps[i] = reference->ndotcomps[i]; }, "N");
    run(Mode::M, [&](Molar& q) { for (int i = 0; i < NCOMPONENTS; ++i) q.mdotcomps[i] = reference->mdotcomps[i]; }, "M");
    // The volume flow follows the density.
    EXPECT_NEAR(reference->vdot.toDouble(), reference->mdot.toDouble() / 1.7, 1e-12);
}

TEST_F(PhaseTest, BalancesOfZeroFlowsKeepTheirOwnRules) {
    auto p = make<Molar>("PhaseIdeal<liquid>");
    // Nx with no flow: no mass, w all zero, x as given but normalized.
    p->ndot = Value(0.0, "kmol/h");
    for (int i = 0; i < NCOMPONENTS; ++i) p->x[i] = i == 2 ? 2.0 : 0.0;
    p->calculateX(Mode::Nx);
    EXPECT_EQ(p->mdot.toDouble(), 0.0);
    EXPECT_DOUBLE_EQ(p->x[2].toDouble(), 1.0);
    for (int i = 0; i < NCOMPONENTS; ++i) EXPECT_EQ(p->w[i].toDouble(), 0.0);

    // N with no flows: x and w become 1/N, mdot, mw and mdotcomps stay.
    p->mdot = Value(50.0, "kg/h");
    p->mw = Value(20.0, "kg/kmol");
    p->mdotcomps[0] = Value(7.0, "kg/h");
    for (int i = 0; i < NCOMPONENTS; ++i) p->ndotcomps[i].clear();
    p->calculateX(Mode::N);
    for (int i = 0; i < NCOMPONENTS; ++i) {
        EXPECT_DOUBLE_EQ(p->x[i].toDouble(), 0.2);
        EXPECT_DOUBLE_EQ(p->w[i].toDouble(), 0.2);
    }
    EXPECT_DOUBLE_EQ(p->mdot.toDouble("kg/h"), 50.0);
    EXPECT_DOUBLE_EQ(p->mw.toDouble(), 20.0);
    EXPECT_DOUBLE_EQ(p->mdotcomps[0].toDouble("kg/h"), 7.0);

    // M with no flows clears x and w instead.
    for (int i = 0; i < NCOMPONENTS; ++i) p->mdotcomps[i].clear();
    p->calculateX(Mode::M);
    for (int i = 0; i < NCOMPONENTS; ++i) {
        EXPECT_EQ(p->x[i].toDouble(), 0.0);
        EXPECT_EQ(p->w[i].toDouble(), 0.0);
    }
    EXPECT_EQ(p->ndot.toDouble(), 0.0);

    // Fractions summing to 0 are left as they are.
    p->ndot = Value(1.0, "kmol/h");
    for (int i = 0; i < NCOMPONENTS; ++i) p->x[i] = 0.0;
    p->calculateX(Mode::Nx);
    for (int i = 0; i < NCOMPONENTS; ++i) EXPECT_EQ(p->x[i].toDouble(), 0.0);
}

TEST_F(PhaseTest, MassPhaseBalancesOnlyByMassAndRejectsMolarModes) {
    auto p = make("PhaseSimple<liquid>");
    p->mdot = Value(10.0, "kg/s");
    p->w[0] = 1.0;
    p->w[1] = 3.0;
    for (int i = 2; i < NCOMPONENTS; ++i) p->w[i] = 0.0;
    p->calculateX(Mode::Mw);
    EXPECT_DOUBLE_EQ(p->mdotcomps[1].toDouble(), 7.5);
    p->mdotcomps[4] = Value(10.0, "kg/s");
    p->calculateX(Mode::M);
    EXPECT_DOUBLE_EQ(p->mdot.toDouble(), 20.0);
    EXPECT_DOUBLE_EQ(p->w[4].toDouble(), 0.5);
    EXPECT_EQ(p->representation(), static_cast<int>(Mode::Mw));
    EXPECT_NE(errorText([&] { p->calculateX(Mode::Nx); }).find("Unrecognized massbalance: Nx"), std::string::npos);
    EXPECT_NE(errorText([&] { p->setEquimolar(Mode::N); }).find("massbalance"), std::string::npos);
}

TEST_F(PhaseTest, FlowonlyMapsMolarAndMassModes) {
    EXPECT_EQ(Phase::flowonly(Mode::Nx), Mode::N);
    EXPECT_EQ(Phase::flowonly(Mode::Nw), Mode::N);
    EXPECT_EQ(Phase::flowonly(Mode::Mx), Mode::M);
    EXPECT_EQ(Phase::flowonly(Mode::Mw), Mode::M);
    EXPECT_NE(errorText([] { Phase::flowonly(Mode::null); }).find("massbalance"), std::string::npos);
}

TEST_F(PhaseTest, PresetsWriteTheVectorThatTheModeNames) {
    auto p = make<Phase::MassMolar>("PhaseIdeal<vapor>");
    p->setEquimass(Mode::Nx); // x proportional to 1/mw
    double sum = 0;
    for (int i = 0; i < NCOMPONENTS; ++i) sum += p->x[i].toDouble();
    EXPECT_NEAR(sum, 1.0, 1e-15);
    for (int i = 1; i < NCOMPONENTS; ++i)
        EXPECT_NEAR(p->x[i].toDouble() * components[i]->mw().toDouble(),
                    p->x[0].toDouble() * components[0]->mw().toDouble(), 1e-12);
    // Equal masses written as molar flows, then balanced, give equal mass fractions.
    p->setEquimass(Mode::N);
    p->calculateX(Mode::N);
    for (int i = 0; i < NCOMPONENTS; ++i) EXPECT_NEAR(p->w[i].toDouble(), 0.2, 1e-15);
    EXPECT_NEAR(p->mdot.toDouble(), 5.0, 1e-12);

    p->setEquimolar(Mode::M); // mdotcomps = mw kg/s
    EXPECT_NEAR(p->mdotcomps[2].toDouble(), components[2]->mw().toDouble(), 1e-12);
    p->setEquimolarNoKey(Mode::Nw, 2);
    EXPECT_EQ(p->w[2].toDouble(), 0.0);
    sum = 0;
    for (int i = 0; i < NCOMPONENTS; ++i) sum += p->w[i].toDouble();
    EXPECT_NEAR(sum, 1.0, 1e-15);

    p->setImpure(Mode::Mx, 3, 0.01);
    EXPECT_DOUBLE_EQ(p->x[3].toDouble(), 0.96);
    EXPECT_DOUBLE_EQ(p->x[0].toDouble(), 0.01);
    p->setPure(Mode::N, 1);
    EXPECT_DOUBLE_EQ(p->ndotcomps[1].toDouble("kmol/s"), 1.0);
    EXPECT_EQ(p->ndotcomps[0].toDouble(), 0.0);
    EXPECT_EQ(errorText([&] { p->setPure(Mode::Nx, 5); }),
              "Error was thrown by function: Phase::Mass::setPure\n"
              "Generic Run-Time error: Wrong component index = 5  NCOMPONENTS = 5\n");

    p->setSymmetrical(Mode::Nx, 0.01);
    EXPECT_NEAR(p->x[0].toDouble(), p->x[4].toDouble(), 1e-15);
    EXPECT_GT(p->x[2].toDouble(), p->x[1].toDouble());
    EXPECT_NEAR(p->x[0].toDouble(), 0.01, 1e-12);
    p->setAsymmetrical(Mode::Mw, false, 0.02);
    for (int i = 1; i < NCOMPONENTS; ++i) EXPECT_LT(p->w[i].toDouble(), p->w[i - 1].toDouble());
    EXPECT_NEAR(p->w[4].toDouble(), 0.02, 1e-12);
    EXPECT_NE(errorText([&] { p->setSymmetrical(Mode::N, 0.01); }).find("massbalance"), std::string::npos);
}

TEST_F(PhaseTest, PurityHasATolerenceOnlyInMolarPhases) {
    auto molar = make<Phase::MassMolar>("PhaseIdeal<liquid>");
    auto mass = make("PhaseSimple<liquid>");
    for (int i = 0; i < NCOMPONENTS; ++i) {
        molar->x[i] = i == 0 ? 1.0 : 1e-16;
        mass->w[i] = i == 0 ? 1.0 : 1e-16;
    }
    EXPECT_TRUE(molar->isPure());
    EXPECT_FALSE(mass->isPure());
    mass->setPure(Mode::Mw, 0);
    EXPECT_TRUE(mass->isPure());
    molar->x[1] = 1e-3;
    EXPECT_FALSE(molar->isPure());
}

TEST_F(PhaseTest, FlowArithmeticAddsEnthalpyByMolesAndNeverGoesNegative) {
    auto a = make<Molar>("PhaseIdeal<vapor>");
    auto b = make<Molar>("PhaseIdeal<vapor>");
    a->setPure(Mode::N, 0);
    a->calculateX(Mode::N);
    a->H = Value(1000.0, "J/kmol");
    b->setPure(Mode::N, 3);
    for (int i = 0; i < NCOMPONENTS; ++i) b->ndotcomps[i] *= 3.0;
    b->calculateX(Mode::N);
    b->H = Value(2000.0, "J/kmol");
    *a += *b;
    EXPECT_DOUBLE_EQ(a->ndot.toDouble(), 4.0);
    EXPECT_DOUBLE_EQ(a->H.toDouble(), 1750.0);
    EXPECT_DOUBLE_EQ(a->h.toDouble(), 1750.0 / a->mw.toDouble());
    EXPECT_DOUBLE_EQ(a->x[3].toDouble(), 0.75);

    *a -= *b; // back to the first phase, enthalpy included
    EXPECT_DOUBLE_EQ(a->ndot.toDouble(), 1.0);
    EXPECT_NEAR(a->H.toDouble(), 1000.0, 1e-9);
    *a -= *b; // more N2 than there is: that flow stops at 0, and with less in a than in b H and S are cleared
    EXPECT_EQ(a->ndotcomps[3].toDouble(), 0.0);
    EXPECT_DOUBLE_EQ(a->ndot.toDouble(), 1.0);
    EXPECT_EQ(a->H.toDouble(), 0.0);
    EXPECT_EQ(a->S.toDouble(), 0.0);

    *b *= Value(0.5);
    EXPECT_DOUBLE_EQ(b->ndot.toDouble(), 1.5);
    EXPECT_DOUBLE_EQ(b->ndotcomps[3].toDouble(), 1.5);
    EXPECT_DOUBLE_EQ(b->x[3].toDouble(), 1.0);

    // A mass phase added to a molar one goes through the mass flows.
    auto mass = make("PhaseSimple<vapor>");
    mass->setPure(Mode::M, 2);
    mass->calculateX(Mode::M);
    *b += *mass;
    EXPECT_NEAR(b->ndotcomps[2].toDouble(), 1.0 / components[2]->mw().toDouble(), 1e-15);
    EXPECT_NEAR(b->ndotcomps[3].toDouble(), 1.5, 1e-15);

    b->addComponents(*a, 0, 2);
    EXPECT_NEAR(b->ndotcomps[2].toDouble(), 1.0 / components[2]->mw().toDouble(), 1e-15);
}

TEST_F(PhaseTest, MassPhaseWithoutComponentsCannotBeMade) {
    components.clear();
    EXPECT_NE(errorText([] {
                  delete NodeFactory::create("PhaseSimple", Tarvo::Persistency::Defaults("P", "p"), 0, nullptr,
                                             nullptr, nullptr);
              }).find("no components defined"),
              std::string::npos);
    loadComponents();
}

// The mean molar weight and its derivatives, sum of m_i dx_i, in the dense store of 5 directions and the sparse one
// of 200; a second evaluation on other directions leaves nothing of the first behind.
TEST_F(PhaseTest, MeanMolarWeightCarriesTheDerivativesOfTheFractions) {
    auto p = make<Molar>("PhaseIdeal<vapor>");
    const std::vector<double> x{0.2, 0.3, 0.1, 0.25, 0.15};
    for (const int directions : {5, 200}) {
        ActiveContext::Scope scope(directions);
        for (const int shift : {0, 2}) {
            // Fraction i depends on directions i and 4 - i, turned by `shift`, with slopes i + 1 and -0.5 (the
            // middle one on one direction, with slope 3 + 2.5).
            const auto direction = [&](int k) { return (k + shift) % directions; };
            std::vector<double> expected(directions, 0.0);
            double mean = 0;
            for (int i = 0; i < NCOMPONENTS; ++i) {
                p->x[i] = Value(x[i]);
                p->x[i].active().setDerivative(direction(i), i + 1.0);
                p->x[i].active().setDerivative(direction(4 - i), i == 2 ? 5.5 : -0.5);
                const double m = components[i]->mw().toDouble();
                mean += x[i] * m;
                if (i == 2) {
                    expected[direction(i)] += 5.5 * m;
                } else {
                    expected[direction(i)] += (i + 1.0) * m;
                    expected[direction(4 - i)] -= 0.5 * m;
                }
            }
            const Value& mw = p->mwx();
            EXPECT_DOUBLE_EQ(mw.toDouble(), mean);
            EXPECT_EQ(mw.unitText(), "kmol^-1 kg");
            for (int k = 0; k < directions; ++k)
                EXPECT_NEAR(mw.active().derivative(k), expected[k], 1e-12 * std::fabs(mean))
                    << directions << " directions, shift " << shift << ", direction " << k;
        }
    }
}
