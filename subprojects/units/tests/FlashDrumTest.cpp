#include "UnitTestSupport.h"

#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/units/FlashDrum.h>
#include <tarvo/units/ReactionEquilibrium.h>

#include <cmath>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int CO2 = 0, CH4 = 1, H2O = 2, N2 = 3, O2 = 4;
const std::vector<double> wetGas{0.3, 0.2, 0.3, 0.15, 0.05};

double massFlow(const Stream& s, int i) {
    return s.Tphase->mdotcomps[i].toDouble();
}

// The reaction drum's settings: one reaction of `type`.
Defaults withReaction(const std::string& type) {
    return Defaults().setInteger("nReactions", 1).setString("embeddedTypeReactions[0]", type);
}
} // namespace

// Two feeds, a hot wet gas and a cold one, mixed adiabatically ("PH", no duty) and at a fixed state ("PT"):
// each component's mass and the enthalpy, recomputed from the phase models, close.
TEST_F(UnitTest, DrumClosesItsBalances) {
    for (const char* option : {"PH", "PT"}) {
        auto& drum =
            unit<FlashDrum>("FlashDrum", std::string("D") + option, Defaults().setString("option", option));
        Stream& hot =
            connect("StreamIdealLiquidVapor", std::string("HOT") + option, nullptr, "", &drum, "in");
        Stream& cold =
            connect("StreamIdealLiquidVapor", std::string("COLD") + option, nullptr, "", &drum, "in");
        Stream& out =
            connect("StreamIdealLiquidVapor", std::string("OUT") + option, &drum, "out", nullptr, "");
        feed(hot, 3600, wetGas, 3e5, 420);
        feed(cold, 1800, {0.1, 0.1, 0.6, 0.1, 0.1}, 2e5, 300);
        drum.T = Value(330.0, "K");
        drum.P = Value(1.5e5, "Pa");
        drum.calculate(0);
        EXPECT_TRUE(drum.errorList().empty()) << option << drum.errorList().front();
        EXPECT_EQ(out.P.toDouble(), 1.5e5);
        EXPECT_EQ(drum.deltaP.toDouble(), 0.5e5); // from the lowest inlet pressure
        for (int i = 0; i < NCOMPONENTS; ++i)
            EXPECT_NEAR(massFlow(out, i), massFlow(hot, i) + massFlow(cold, i), 1e-12 * massFlow(out, i))
                << i;
        const double in = enthalpyFlow(hot) + enthalpyFlow(cold);
        EXPECT_NEAR(in - enthalpyFlow(out), drum.duty.toDouble(), 1e-9 * std::fabs(in)) << option;
        const double vapor = out.Q("Vphase.fraction").toDouble();
        EXPECT_TRUE(vapor > 0.0 && vapor < 1.0) << option << " " << vapor; // two phases: a real flash
        drum.checkBalance();
        EXPECT_TRUE(drum.errorList().empty() && drum.warningList().empty()) << option;
    }
}

// A "PT" drum is the PT flash of its inlet: its outlet equals a stream flashed at the same state.
TEST_F(UnitTest, PtDrumEqualsThePtFlashOfItsInlet) {
    auto& drum = unit<FlashDrum>("FlashDrum", "D");
    Stream& in = connect("StreamIdealLiquidVapor", "IN", nullptr, "", &drum, "in");
    Stream& out = connect("StreamIdealLiquidVapor", "OUT", &drum, "out", nullptr, "");
    feed(in, 3600, wetGas, 3e5, 420);
    drum.P = Value(1.5e5, "Pa");
    drum.T = Value(340.0, "K");
    drum.calculate(0);
    Stream& reference = stream("StreamIdealLiquidVapor", "REF");
    feed(reference, 3600, wetGas, 1.5e5, 340);
    EXPECT_NEAR(out.T.toDouble(), 340.0, 1e-12);
    EXPECT_NEAR(out.P.toDouble(), 1.5e5, 1e-9);
    EXPECT_NEAR(drum.deltaP.toDouble(), 1.5e5, 1e-9);
    EXPECT_NEAR(drum.alfa.toDouble(), reference.Q("Vphase.fraction").toDouble(), 1e-12);
    for (int i = 0; i < NCOMPONENTS; ++i) {
        EXPECT_NEAR(out.Q("Vphase.x", i).toDouble(), reference.Q("Vphase.x", i).toDouble(), 1e-12) << i;
        EXPECT_NEAR(out.Q("Lphase.x", i).toDouble(), reference.Q("Lphase.x", i).toDouble(), 1e-12) << i;
    }
    EXPECT_EQ(drum.NITER.value(), out.NITER_NLEFlash.value()); // no iteration beyond the outlet's flash
}

TEST_F(UnitTest, DrumMessagesAndOptions) {
    auto& drum = unit<FlashDrum>("FlashDrum", "D", Defaults().setString("option", "DA"));
    Stream& in = connect("StreamIdealLiquidVapor", "IN", nullptr, "", &drum, "in");
    Stream& out = connect("StreamIdealLiquidVapor", "OUT", &drum, "out", nullptr, "");
    feed(in, 3600, wetGas, 3e5, 420);
    drum.alfa = 1.2;
    drum.calculate(0);
    EXPECT_TRUE(has(drum.errorList(), "phase fraction larger than one in FlashDrumBase::go"));
    drum.alfa = -0.1;
    drum.calculate(0);
    EXPECT_TRUE(has(drum.errorList(), "negative phase fraction in FlashDrumBase::go"));
    drum.alfa = 0.4;
    drum.calculate(0);
    EXPECT_TRUE(drum.errorList().empty());
    EXPECT_NEAR(out.Q("Vphase.fraction").toDouble(), 0.4, 1e-9);
    EXPECT_NEAR(out.P.toDouble(), 3e5, 1e-9); // deltaP 0

    drum.option = "PX";
    EXPECT_NE(thrown([&] {
                  drum.calculate(0);
              }).find("Unsupported option PX for String Flash configuration option"),
              std::string::npos);
    drum.option = "XT";
    EXPECT_NE(thrown([&] { drum.calculate(0); }).find("Unsupported option X for String pressure option"),
              std::string::npos);
    drum.option = "PT";
    drum.reactionMode = "batch";
    EXPECT_NE(thrown([&] {
                  drum.calculate(0);
              }).find("Unsupported option batch for String Reaction processing mode"),
              std::string::npos);
    drum.reactionMode = "series";

    // An empty inlet leaves the outlet as it was.
    const double before = out.Tphase->totalFlow().toDouble();
    feed(in, 0, wetGas, 3e5, 420);
    drum.calculate(0);
    EXPECT_EQ(drum.warningList(), std::vector<std::string>{"Empty inlet stream"});
    EXPECT_EQ(out.Tphase->totalFlow().toDouble(), before);
}

// 1 kmol/s of methane burnt completely with excess oxygen at 298.15 K, water staying vapor: the duty taken
// out is the lower heating value. Expected from the enthalpies of formation of the ideal gases at 298.15 K,
// ChemSep v8.32 via ../shared/data/dippr_like.csv (Hf_ig_298): CO2 -393510, H2O -241814, CH4 -74520 kJ/kmol.
TEST_F(UnitTest, MethaneCombustionDutyIsTheLowerHeatingValue) {
    auto& drum = unit<FlashDrum>("FlashDrum", "D", withReaction("ReactionOxidationCH4"));
    Stream& in = connect("StreamVapor", "IN", nullptr, "", &drum, "in");
    Stream& out = connect("StreamVapor", "OUT", &drum, "out", nullptr, "");
    in.flowoption = "N";
    for (int i = 0; i < NCOMPONENTS; ++i)
        in.Tphase->flow(i) = Value(0.0, "kmol/s");
    in.Tphase->flow(CH4) = Value(1.0, "kmol/s");
    in.Tphase->flow(O2) = Value(3.0, "kmol/s");
    in.P = Value(101325.0, "Pa");
    in.T = Value(298.15, "K");
    in.calculate(0);
    drum.T = Value(298.15, "K");
    drum.reactions[0]->z = 1.0;
    drum.calculate(0);
    EXPECT_TRUE(drum.errorList().empty() && drum.warningList().empty());
    EXPECT_EQ(out.Tphase->flow(CH4).toDouble(), 0.0);
    EXPECT_NEAR(out.Tphase->flow(O2).toDouble(), 1.0, 1e-15);
    EXPECT_NEAR(out.Tphase->flow(H2O).toDouble(), 2.0, 1e-15);
    const double lhv = -(-393510.0 + 2 * -241814.0 - -74520.0) * 1e3; // W per kmol/s
    EXPECT_NEAR(drum.duty.toDouble(), lhv, 1e-6 * lhv);
    // The reference flowsheets' heating value of methane, 802310 kJ/kmol, agrees to 0.05 %.
    EXPECT_NEAR(drum.duty.toDouble(), 802310e3, 5e-4 * 802310e3);
    // At a higher temperature the products carry the sensible heat away: less duty.
    drum.T = Value(353.15, "K");
    drum.calculate(0);
    EXPECT_LT(drum.duty.toDouble(), lhv);
}

// A drum at 1000 K and 1 bar with the shift at equilibrium: the outlet's mass-action product equals
// exp(-sum nu g / (R T)), both worked out here from the outlet's composition and the pure gases' Gibbs
// energies at 101325 Pa.
TEST_F(ReactingUnitTest, WaterGasShiftReachesEquilibrium) {
    auto& drum = unit<FlashDrum>("FlashDrum", "D", withReaction("ReactionWaterGasShiftEquilibrium"));
    Stream& in = connect("StreamVapor", "IN", nullptr, "", &drum, "in");
    Stream& out = connect("StreamVapor", "OUT", &drum, "out", nullptr, "");
    feedMoles(in, {{"CO2", 1.0}, {"H2", 1.5}, {"N2", 0.5}}, 1e5, 1000);
    drum.P = Value(1e5, "Pa");
    for (double T : {1000.0, 800.0, 1200.0}) {
        drum.T = Value(T, "K");
        drum.calculate(0);
        ASSERT_TRUE(drum.errorList().empty()) << T << ": " << drum.errorList().front();
        const std::pair<const char*, double> nu[] = {{"CO2", -1.0}, {"H2", -1.0}, {"CO", 1.0}, {"H2O", 1.0}};
        double lnQ = 0, lnK = 0;
        for (const auto& [name, c] : nu) {
            lnQ += c * std::log(out.Q("Tphase.x", name).toDouble() * 1e5 / 101325.0);
            lnK -= c * components[name]->gv(Value(T, "K"), Value(101325.0, "Pa")).toDouble() / (8314.4 * T);
        }
        EXPECT_NEAR(lnQ, lnK, 1e-9) << T;
        auto& shift = dynamic_cast<ReactionEquilibrium&>(*drum.reactions[0]);
        EXPECT_NEAR(std::log(shift.K.toDouble()), lnK, 1e-9) << T;
        EXPECT_NEAR(moles(out, "CO"), shift.conv.toDouble("kmol/s"), 1e-12);
        EXPECT_NEAR(moles(out, "CO2") + moles(out, "CO"), 1.0, 1e-12); // carbon
        EXPECT_EQ(drum.nreactionEquilibriums.value(), 1);
    }
    // Calculated before, the drum starts from its state: the equilibrium holds at once.
    drum.calculate(0);
    EXPECT_LE(drum.NITER.value(), 1);
}

// Two reactions that each want 80 % of the methane: in series the second acts on what the first left; in
// parallel both are cut to share what there is.
TEST_F(ReactingUnitTest, ReactionsInSeriesAndInParallel) {
    for (const char* mode : {"series", "parallel"}) {
        auto& drum = unit<FlashDrum>("FlashDrum", std::string("D") + mode,
                                     Defaults()
                                         .setInteger("nReactions", 2)
                                         .setString("embeddedTypeReactions[0]", "ReactionOxidationCH4")
                                         .setString("embeddedTypeReactions[1]", "ReactionReformingCH4")
                                         .setString("reactionMode", mode));
        Stream& in = connect("StreamVapor", std::string("IN") + mode, nullptr, "", &drum, "in");
        Stream& out = connect("StreamVapor", std::string("OUT") + mode, &drum, "out", nullptr, "");
        feedMoles(in, {{"CH4", 1.0}, {"O2", 10.0}, {"H2O", 10.0}}, 1e5, 600);
        drum.T = Value(600.0, "K");
        drum.P = Value(1e5, "Pa");
        for (Reaction* r : drum.reactions)
            r->z = 0.8;
        drum.calculate(0);
        EXPECT_TRUE(drum.errorList().empty()) << mode;
        const double burnt = drum.reactions[0]->conv.toDouble("kmol/s");
        const double reformed = drum.reactions[1]->conv.toDouble("kmol/s");
        if (std::string(mode) == "series") {
            EXPECT_NEAR(burnt, 0.8, 1e-14);
            EXPECT_NEAR(reformed, 0.16, 1e-14);
            EXPECT_NEAR(moles(out, "CH4"), 0.04, 1e-14);
            EXPECT_TRUE(drum.warningList().empty());
        } else {
            EXPECT_NEAR(burnt, 0.5, 1e-14);
            EXPECT_NEAR(reformed, 0.5, 1e-14);
            EXPECT_NEAR(moles(out, "CH4"), 0.0, 1e-14);
            EXPECT_EQ(drum.warningList(),
                      (std::vector<std::string>{"Conversion too high for component CH4",
                                                "CH4 is a heterogeneous reactant of reaction reactions[0]",
                                                "CH4 is a heterogeneous reactant of reaction reactions[1]"}));
        }
        EXPECT_NEAR(moles(out, "CO2"), burnt, 1e-14);
        EXPECT_NEAR(moles(out, "CO"), reformed, 1e-14);
        EXPECT_NEAR(moles(out, "H2"), 3 * reformed, 1e-14);
        EXPECT_NEAR(moles(out, "H2O"), 10 + 2 * burnt - reformed, 1e-13);
        EXPECT_NEAR(moles(out, "O2"), 10 - 2 * burnt, 1e-13);
    }
}

TEST_F(UnitTest, UnbalancedStoichiometryIsReported) {
    auto& drum = unit<FlashDrum>("FlashDrum", "D", withReaction("ReactionYield"));
    Stream& in = connect("StreamVapor", "IN", nullptr, "", &drum, "in");
    connect("StreamVapor", "OUT", &drum, "out", nullptr, "");
    feed(in, 3600, {0.5, 0.5, 0, 0, 0}, 1e5, 400);
    Reaction& r = *drum.reactions[0];
    r.coeff[CH4] = -1.0;
    r.coeff[CO2] = 2.0; // carbon from nowhere
    r.keycomp = CH4;
    r.z = 0.5;
    drum.T = Value(400.0, "K");
    drum.calculate(0);
    EXPECT_EQ(drum.errorList(), std::vector<std::string>{"unbalanced reactions"});
}

// Wet biogas compressed to 10 bar and cooled to 313.15 K: the water left in the gas is that of the condensate
// times its vapor pressure over the pressure (Raoult). Vapor pressure of water by Perry's 8th ed. Table 2-8,
// eq 101, through ../shared/data/dippr_like.csv: exp(73.649 - 7258.2/T - 7.3037 ln T + 4.1653e-6 T^2) Pa.
TEST_F(UnitTest, DegasserLeavesTheGasSaturatedWithWater) {
    auto& degasser = unit<FlashDrum>("FlashDegasser<StreamIdealLiquidVapor>", "COND");
    Stream& in = connect("StreamVapor", "BIOGAS", nullptr, "", &degasser, "in");
    Stream& gas = connect("StreamVapor", "GAS", &degasser, "vapor", nullptr, "");
    Stream& water = connect("StreamLiquid", "WATER", &degasser, "condensate", nullptr, "");
    in.flowoption = "Nx";
    in.Tphase->totalFlow() = Value(0.01, "kmol/s");
    for (const auto& [i, x] : {std::pair{CH4, 0.55}, {CO2, 0.4}, {H2O, 0.05}, {N2, 0.0}, {O2, 0.0}})
        in.Tphase->frac(i) = x;
    in.P = Value(10e5, "Pa");
    in.T = Value(420.0, "K");
    in.calculate(0);
    degasser.P = Value(10e5, "Pa");
    degasser.T = Value(313.15, "K");
    degasser.calculate(0);
    EXPECT_TRUE(degasser.errorList().empty());
    const double T = 313.15;
    const double psat = std::exp(73.649 - 7258.2 / T - 7.3037 * std::log(T) + 4.1653e-6 * T * T);
    const double xWater = water.Q("Tphase.x", H2O).toDouble();
    EXPECT_GT(xWater, 0.95); // with the gases dissolved in it
    EXPECT_NEAR(gas.Q("Tphase.x", H2O).toDouble(), xWater * psat / 10e5, 1e-9);
    for (int i = 0; i < NCOMPONENTS; ++i)
        EXPECT_NEAR(massFlow(gas, i) + massFlow(water, i), massFlow(in, i), 1e-12 * massFlow(in, 1)) << i;
    for (Stream* out : {&gas, &water}) {
        EXPECT_NEAR(out->T.toDouble(), T, 1e-6);
        EXPECT_EQ(out->P.toDouble(), 10e5);
    }
    degasser.checkBalance();
    EXPECT_TRUE(degasser.errorList().empty() && degasser.warningList().empty());
}

// A flash splitter gives its inner stream's vapor to outlet 1 and its liquid to outlet 2; a degasser
// without a flash separates the phases of its inlet as they are.
TEST_F(UnitTest, PhasesGoToTheirOutlets) {
    auto& splitter = unit<FlashDrum>("FlashSplitter", "SPL");
    EXPECT_EQ(splitter.maxNOut.value(), 2);
    Stream& in = connect("StreamIdealLiquidVapor", "IN", nullptr, "", &splitter, "in");
    Stream& first = connect("StreamVapor", "FIRST", &splitter, "out", nullptr, "");
    Stream& second = connect("StreamLiquid", "SECOND", &splitter, "out", nullptr, "");
    feed(in, 3600, wetGas, 3e5, 420);
    splitter.T = Value(330.0, "K");
    splitter.calculate(0);
    EXPECT_TRUE(splitter.errorList().empty());
    auto& inner = dynamic_cast<Stream&>(splitter.child("SPLIT"));
    for (int i = 0; i < NCOMPONENTS; ++i) {
        EXPECT_NEAR(massFlow(first, i), inner.Q("Vphase.mdotcomps", i).toDouble(), 1e-12) << i;
        EXPECT_NEAR(massFlow(second, i), inner.Q("Lphase.mdotcomps", i).toDouble(), 1e-12) << i;
    }
    EXPECT_GT(massFlow(second, H2O), 0.5 * massFlow(in, H2O));

    Connectivity& degasser = unit("Degasser", "DEG");
    Stream& mixed = connect("StreamIdealLiquidVapor", "MIXED", nullptr, "", &degasser, "in");
    Stream& vapor = connect("StreamVapor", "V", &degasser, "vapor", nullptr, "");
    Stream& liquid = connect("StreamLiquid", "L", &degasser, "condensate", nullptr, "");
    feed(mixed, 3600, wetGas, 1e5, 330);
    degasser.calculate(0);
    EXPECT_TRUE(degasser.errorList().empty());
    for (int i = 0; i < NCOMPONENTS; ++i) {
        EXPECT_NEAR(massFlow(vapor, i), mixed.Q("Vphase.mdotcomps", i).toDouble(), 1e-12) << i;
        EXPECT_NEAR(massFlow(liquid, i), mixed.Q("Lphase.mdotcomps", i).toDouble(), 1e-12) << i;
    }
    EXPECT_NEAR(vapor.T.toDouble(), 330, 1e-6);

    Connectivity& dry = unit("Degasser", "DRY");
    Stream& liquidIn = connect("StreamLiquid", "LIQ", nullptr, "", &dry, "in");
    connect("StreamVapor", "V2", &dry, "out", nullptr, "");
    connect("StreamLiquid", "L2", &dry, "out", nullptr, "");
    feed(liquidIn, 3600, wetGas, 1e5, 300);
    dry.calculate(0);
    EXPECT_EQ(dry.errorList(), std::vector<std::string>{"vapor phase required in inlet stream"});
}
