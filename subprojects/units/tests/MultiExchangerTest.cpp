#include "UnitTestSupport.h"

#include <tarvo/units/Exchanger.h>
#include <tarvo/units/MultiExchanger.h>
#include <tarvo/units/MultiReactionElectrochemical.h>
#include <tarvo/units/MultiReactionTransfer.h>

#include <cmath>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int CO2 = 0, CH4 = 1, H2O = 2, N2 = 3;
const std::vector<double> water{0, 0, 1, 0, 0};

double lmtd(double a, double b) {
    return (a - b) / std::log(a / b);
}
} // namespace

class MultiExchangerTest : public UnitTest {
protected:
    // Couples of `type` streams, inlets "<tag>I<n>" and outlets "<tag>O<n>".
    MultiExchanger& exchanger(const std::string& tag, const std::string& type, Defaults defaults = {}) {
        auto& x = unit<MultiExchanger>("MultiExchanger", tag, defaults);
        in_.clear();
        out_.clear();
        for (int i = 1; i <= x.nStreams.value(); ++i) {
            const std::string n = std::to_string(i);
            in_.push_back(&connect(type, tag + "I" + n, nullptr, "", &x, "in" + n));
            out_.push_back(&connect(type, tag + "O" + n, &x, "out" + n, nullptr, ""));
        }
        return x;
    }
    double enthalpyIn() const {
        double h = 0;
        for (Stream* s : in_) h += enthalpyFlow(*s);
        return h;
    }
    double enthalpyOut() const {
        double h = 0;
        for (Stream* s : out_) h += enthalpyFlow(*s);
        return h;
    }
    std::vector<Stream*> in_, out_;
};

// Hot and cold water through a solid: the solid gives up what it takes, each couple's duty follows its own
// logarithmic mean to Ts, and an Exchanger that cools the hot water to the same outlet warms the cold water
// to the same outlet with the same duty.
TEST_F(MultiExchangerTest, TwoCouplesWithoutReactionsAreAnAdiabaticExchanger) {
    MultiExchanger& x = exchanger("M", "StreamLiquid");
    feed(*in_[0], 7200, water, 3e5, 360);
    feed(*in_[1], 10800, water, 3e5, 300);
    x.U[0] = Value(1000.0, "W/(m2*K)");
    x.U[1] = Value(500.0, "W/(m2*K)");
    x.calculate(0);
    ASSERT_TRUE(x.errorList().empty()) << x.errorList().front();
    const double Ts = x.Ts.toDouble();
    EXPECT_TRUE(Ts > 300 && Ts < 360);
    const double d0 = x.duty[0].toDouble(), d1 = x.duty[1].toDouble();
    EXPECT_GT(d0, 0.0);
    EXPECT_NEAR(d0 + d1, 0.0, 1e-9 * d0);
    EXPECT_NEAR(d0, 1e4 * lmtd(360 - Ts, out_[0]->T.toDouble() - Ts), 1e-9 * d0);
    EXPECT_NEAR(d1, 5e3 * lmtd(300 - Ts, out_[1]->T.toDouble() - Ts), 1e-9 * d0);
    EXPECT_NEAR(enthalpyFlow(*in_[0]) - enthalpyFlow(*out_[0]), d0, 1e-9 * d0);
    EXPECT_NEAR(enthalpyFlow(*in_[1]) - enthalpyFlow(*out_[1]), d1, 1e-9 * d0);
    EXPECT_NEAR(x.netDuty.toDouble(), 0.0, 0.0);
    EXPECT_NEAR(x.TsSet.toDouble(), Ts, 0.0);
    EXPECT_NEAR(x.outletApproach[1].toDouble(), out_[1]->T.toDouble() - Ts, 1e-12);
    x.checkBalance();
    EXPECT_TRUE(x.errorList().empty() && x.warningList().empty());

    auto& e = unit<Exchanger>("Exchanger", "E", Defaults().setString("option", "Thot"));
    Stream* ends[4];
    for (int i = 0; i < 2; ++i) {
        const std::string n = std::to_string(i + 1);
        ends[i] = &connect("StreamLiquid", "EI" + n, nullptr, "", &e, "in" + n);
        ends[2 + i] = &connect("StreamLiquid", "EO" + n, &e, "out" + n, nullptr, "");
    }
    feed(*ends[0], 7200, water, 3e5, 360);
    feed(*ends[1], 10800, water, 3e5, 300);
    e.hotT = out_[0]->T;
    e.calculate(0);
    ASSERT_TRUE(e.errorList().empty());
    EXPECT_NEAR(ends[3]->T.toDouble(), out_[1]->T.toDouble(), 1e-8);
    EXPECT_NEAR(e.dutyhot.toDouble(), d0, 1e-9 * d0);

    // With the solid held at a temperature, the heat that it loses is what the streams give up.
    x.option = "Ts";
    x.TsSet = Value(340.0, "K");
    x.calculate(0);
    ASSERT_TRUE(x.errorList().empty()) << x.errorList().front();
    EXPECT_NEAR(x.Ts.toDouble(), 340.0, 1e-9);
    EXPECT_EQ(x.TsSet.toDouble(), 340.0);
    EXPECT_NEAR(x.netDuty.toDouble(), enthalpyIn() - enthalpyOut(), 1e-9 * std::fabs(x.duty[0].toDouble()));
    EXPECT_NEAR(x.netDuty.toDouble(), x.duty[0].toDouble() + x.duty[1].toDouble(), 1e-9 * x.duty[0].toDouble());
}

// A membrane's transfer between a CO2-rich gas and a nitrogen sweep: a fixed fraction of all the CO2 leaves
// on side 2, every other component stays on its side. Component and energy balances close over the unit;
// the CO2 that crosses carries its enthalpy at Ts.
TEST_F(MultiExchangerTest, TransferOfCarbonDioxideClosesTheBalances) {
    MultiExchanger& x = exchanger("M", "StreamVapor",
                                  Defaults()
                                      .setInteger("nmultiReactions", 1)
                                      .setString("embeddedTypemultiReactions[0]", "MultiReactionTransfer"));
    setMoleFractions(*in_[0], 0.01, {{CO2, 0.4}, {CH4, 0.6}}, 10e5, 320);
    setMoleFractions(*in_[1], 0.002, {{N2, 1.0}}, 1e5, 300);
    for (Stream* s : in_)
        s->calculate(0);
    auto& membrane = dynamic_cast<MultiReactionTransfer&>(*x.multiReactions[0]);
    for (int c = 0; c < NCOMPONENTS; ++c) {
        const double n0 = in_[0]->Tphase->flow(c).toDouble(), n1 = in_[1]->Tphase->flow(c).toDouble();
        membrane.theta[c] = n0 + n1 > 0 ? n1 / (n0 + n1) : 0.5; // stays where it is
    }
    membrane.theta[CO2] = 0.3;
    for (Quantity& U : x.U)
        U = Value(1.0, "W/(m2*K)");
    for (const char* mode : {"UA", "Ts"}) {
        x.option = mode;
        x.TsSet = Value(330.0, "K");
        x.calculate(0);
        ASSERT_TRUE(x.errorList().empty()) << mode << x.errorList().front();
        EXPECT_TRUE(x.warningList().empty()) << mode;
        const double co2 = in_[0]->Tphase->flow(CO2).toDouble();
        EXPECT_NEAR(out_[1]->Tphase->flow(CO2).toDouble(), 0.3 * co2, 1e-12 * co2);
        EXPECT_NEAR(out_[0]->Tphase->flow(CO2).toDouble(), 0.7 * co2, 1e-12 * co2);
        for (int c = 0; c < NCOMPONENTS; ++c) {
            const double in = in_[0]->Tphase->flow(c).toDouble() + in_[1]->Tphase->flow(c).toDouble();
            const double out = out_[0]->Tphase->flow(c).toDouble() + out_[1]->Tphase->flow(c).toDouble();
            EXPECT_NEAR(out, in, 1e-12 * in) << mode << c;
        }
        EXPECT_EQ(out_[0]->Tphase->flow(N2).toDouble(), 0.0);
        EXPECT_EQ(out_[1]->Tphase->flow(CH4).toDouble(), 0.0);
        // Relative to the enthalpy flows, which hold the heats of formation.
        const double scale = std::fabs(enthalpyIn());
        EXPECT_NEAR(enthalpyIn() - enthalpyOut(), x.netDuty.toDouble(), 1e-9 * scale) << mode;
        x.checkBalance();
        EXPECT_TRUE(x.errorList().empty() && x.warningList().empty()) << mode;
    }
    EXPECT_LT(x.netDuty.toDouble(), 0.0); // the solid at 330 K warms both gases
}

// A multi-stream reaction keyed on CO2, the first component: 40 % of side 1's CO2 crosses to side 2. A
// transfer that asks for more than is there is scaled down with the warning.
TEST_F(MultiExchangerTest, ReactionKeyedOnTheFirstComponentAndBoundedTransfer) {
    for (const std::string type : {"MultiReaction<2>", "MultiReactionTransfer"}) {
        MultiExchanger& x = exchanger(type == "MultiReaction<2>" ? "R" : "T", "StreamVapor",
                                      Defaults().setInteger("nmultiReactions", 1).setString(
                                          "embeddedTypemultiReactions[0]", type));
        setMoleFractions(*in_[0], 0.01, {{CO2, 0.4}, {CH4, 0.6}}, 10e5, 320);
        setMoleFractions(*in_[1], 0.002, {{N2, 1.0}}, 1e5, 300);
        for (Stream* s : in_)
            s->calculate(0);
        for (Quantity& U : x.U)
            U = Value(1.0, "W/(m2*K)");
        MultiReaction<2>& m = *x.multiReactions[0];
        const double co2 = 0.004;
        if (auto* transfer = dynamic_cast<MultiReactionTransfer*>(&m)) {
            transfer->theta[CO2] = 1.5;
            transfer->theta[CH4] = 0.0;
            transfer->theta[N2] = 1.0;
            x.calculate(0);
            EXPECT_TRUE(has(m.warningList(), "Conversion too high for component CO2"));
            // Side 1 can give all its CO2 (0.004), not the 1.5 times 0.004 - 0 asked for.
            EXPECT_NEAR(transfer->factor.toDouble(), 0.004 / (1.5 * 0.004), 1e-12);
            EXPECT_NEAR(out_[1]->Tphase->flow(CO2).toDouble(), co2, 1e-15);
        } else {
            m.keycomp = CO2;
            m.keyphase = 0;
            m.coeff[0][CO2] = -1.0;
            m.coeff[1][CO2] = 1.0;
            m.z = 0.4;
            x.calculate(0);
            EXPECT_TRUE(m.errorList().empty() && m.warningList().empty());
            EXPECT_NEAR(m.conv.toDouble(), 0.4 * co2, 1e-15);
            EXPECT_NEAR(out_[1]->Tphase->flow(CO2).toDouble(), 0.4 * co2, 1e-15);
            EXPECT_NEAR(out_[0]->Tphase->flow(CO2).toDouble(), 0.6 * co2, 1e-15);
        }
        EXPECT_TRUE(x.errorList().empty()) << type;
        EXPECT_NEAR(enthalpyIn() - enthalpyOut(), x.netDuty.toDouble(), 1e-9 * std::fabs(enthalpyIn()));
    }
    EXPECT_NE(thrown([&] { unit<MultiExchanger>("MultiExchanger", "ONE", Defaults().setInteger("nStreams", 1)); })
                  .find("nStreams.value() > 1"),
              std::string::npos);
}

// A bounded transfer is scaled by the inlet flow of the component that runs out over what was asked of it:
// each transfer follows that factor in its derivatives too, or a Newton step through a bounded stage of a
// membrane chain goes astray. Here the CO2 asked for, theta times side 1's CO2, exceeds what side 1 holds.
TEST_F(MultiExchangerTest, BoundedTransferCarriesTheDerivativesOfItsBound) {
    MultiExchanger& x = exchanger("B", "StreamVapor",
                                  Defaults().setInteger("nmultiReactions", 1).setString(
                                      "embeddedTypemultiReactions[0]", "MultiReactionTransfer"));
    setMoleFractions(*in_[0], 0.01, {{CO2, 0.4}, {CH4, 0.6}}, 10e5, 320);
    setMoleFractions(*in_[1], 0.002, {{N2, 1.0}}, 1e5, 300);
    for (Stream* s : in_)
        s->calculate(0);
    auto& transfer = dynamic_cast<MultiReactionTransfer&>(*x.multiReactions[0]);
    const double theta = 1.5, share = 0.25;
    transfer.theta[CO2] = theta;
    transfer.theta[CH4] = share;
    transfer.theta[N2] = 1.0;
    x.calculate(0); // connects the transfer to the outlets
    for (int side = 0; side < 2; ++side)
        *out_[side]->Tphase = *in_[side]->Tphase;
    const double co2 = in_[0]->Tphase->flow(CO2).toDouble(), ch4 = in_[0]->Tphase->flow(CH4).toDouble();
    ActiveContext::Scope scope(1);
    transfer.theta[CO2].active().setActive(0);
    transfer.calculate(0);
    transfer.theta[CO2].active().inactivate(0);
    ASSERT_TRUE(has(transfer.warningList(), "Conversion too high for component CO2"));
    // All of side 1's CO2 crosses, whatever theta asks for; of the methane, share times its flow scaled by
    // the factor co2 / (theta co2), whose derivative with respect to theta is -share ch4 / theta^2.
    EXPECT_NEAR(transfer.transfer[1][CO2].toDouble(), co2, 1e-15);
    EXPECT_NEAR(transfer.transfer[1][CO2].active().derivative(0), 0.0, 1e-15);
    EXPECT_NEAR(transfer.transfer[1][CH4].toDouble(), share * ch4 / theta, 1e-15);
    EXPECT_NEAR(transfer.transfer[1][CH4].active().derivative(0), -share * ch4 / (theta * theta), 1e-15);
    EXPECT_NEAR(transfer.transfer[0][CH4].active().derivative(0), share * ch4 / (theta * theta), 1e-15);
}

// Every option of both exchangers, made by the registry from its defaults as a new case makes it, with
// streams of their defaults: a result or an error in the unit's list, never an exception. Alone, each one
// and each multi-reaction says what it lacks.
TEST_F(MultiExchangerTest, EveryOptionCalculatesFromItsDefaults) {
    int k = 0;
    for (const auto& [type, option] : {std::pair{"Exchanger", "UA"}, std::pair{"Exchanger", "Thot"},
                                       std::pair{"Exchanger", "Tcold"}, std::pair{"MultiExchanger", "UA"},
                                       std::pair{"MultiExchanger", "Ts"}}) {
        const std::string tag = "U" + std::to_string(k++);
        auto& x = unit(type, tag, Defaults().setString("option", option));
        for (int i = 1; i <= 2; ++i) {
            const std::string n = std::to_string(i);
            connect("StreamVapor", tag + "I" + n, nullptr, "", &x, "in" + n).calculate(0);
            connect("StreamVapor", tag + "O" + n, &x, "out" + n, nullptr, "");
        }
        EXPECT_EQ(thrown([&] { x.calculate(0); }), "") << type << option;
        EXPECT_TRUE(x.errorList().empty()) << type << option << x.errorList().front();
        auto& alone = unit(type, tag + "A", Defaults().setString("option", option));
        const std::string error = thrown([&] { alone.calculate(0); });
        if (type == std::string("Exchanger"))
            EXPECT_EQ(alone.errorList(),
                      std::vector<std::string>{"not all inlets and outlets are connected, nothing to do"});
        else
            EXPECT_NE(error.find("nStreams.value() == nIn.value()"), std::string::npos) << error;
    }
    for (const auto& [type, tag] : {std::pair{"MultiReaction<2>", "MR"}, std::pair{"MultiReactionTransfer", "MT"}}) {
        auto& m = dynamic_cast<Model&>(bench_->addChild(type, {tag, "alone"}));
        m.calculate(0);
        EXPECT_EQ(m.errorList(), std::vector<std::string>{"Nothing connected, nothing to do"}) << type;
    }
}

namespace {
constexpr int O2 = 4;
constexpr double faraday = 96485339.9; // C/kmol
// Gibbs energies of formation of the ideal gases at 298.15 K, J/kmol: shared/data/dippr_like.csv,
// Gf_ig_298 of methane, carbon dioxide and water (oxygen 0).
constexpr double gfMethane = -50.49e6, gfCarbonDioxide = -394.37e6, gfWater = -228.59e6;

// The logarithmic mean of two equilibrium constants, their common value where they agree.
double logMean(double a, double b) {
    return std::fabs(a - b) <= 1e-8 * a ? a : (a - b) / std::log(a / b);
}
} // namespace

// A stack of methane fuel cells, 1/4 CH4 + 1/2 O2 -> 1/4 CO2 + 1/2 H2O per two electrons, oxygen from the
// air on side 0 and the fuel with its products on side 1: the extent follows the current, the voltages follow
// the Nernst equation written here from the stored streams, and what the streams lose in enthalpy is the
// solid's heat loss plus the electrical power. Run backwards as an electrolyzer, the stack takes at least
// the reaction's Gibbs energy and its power enters the balance.
TEST_F(MultiExchangerTest, ElectrochemicalStackFollowsFaradayNernstAndTheEnergyBalance) {
    if (!NodeFactory::registered("MultiReactionElectrochemical"))
        NodeFactory::registerType<MultiReactionElectrochemical>("MultiReactionElectrochemical", "Fuel cell stack",
                                                                "option", false, {}, {}, {}, "", 10, 10);
    MultiExchanger& x = exchanger("C", "StreamVapor",
                                  Defaults()
                                      .setInteger("nmultiReactions", 1)
                                      .setString("embeddedTypemultiReactions[0]", "MultiReactionElectrochemical"));
    setMoleFractions(*in_[0], 1e-2, {{O2, 0.21}, {N2, 0.79}}, 1.2e5, 950);
    setMoleFractions(*in_[1], 2e-3, {{CH4, 0.5}, {H2O, 0.45}, {CO2, 0.05}}, 1.1e5, 950);
    for (Stream* s : in_)
        s->calculate(0);
    auto& cell = dynamic_cast<MultiReactionElectrochemical&>(*x.multiReactions[0]);
    const auto react = [&](double sign) {
        cell.coeff[0][O2] = -0.5 * sign;
        cell.coeff[1][CH4] = -0.25 * sign;
        cell.coeff[1][CO2] = 0.25 * sign;
        cell.coeff[1][H2O] = 0.5 * sign;
    };
    react(1.0);
    for (Quantity& U : x.U)
        U = Value(10.0, "W/(m2*K)");
    cell.Rarea = Value(5e-5, "ohm*m2");
    // The cell's reversible voltage, from the stored inlets and outlets of both sides.
    const auto reversible = [&](double gibbs, double T) {
        double lnK[2] = {0, 0};
        for (int end = 0; end < 2; ++end)
            for (int p = 0; p < 2; ++p) {
                Stream& s = end == 0 ? *in_[p] : *out_[p];
                const double n = s.Tphase->totalFlow().toDouble();
                for (int c = 0; c < NCOMPONENTS; ++c)
                    if (const double nu = cell.coeff[p][c].toDouble(); nu != 0.0)
                        lnK[end] -= cell.action.toDouble() * nu *
                                    std::log(s.Tphase->flow(c).toDouble() / n * s.P.toDouble() / 101325.0);
            }
        return -cell.action.toDouble() * gibbs / (2 * faraday) +
               8314.4 * T / (2 * faraday) * std::log(logMean(std::exp(lnK[0]), std::exp(lnK[1])));
    };
    const double scale = std::fabs(enthalpyIn());

    // At 298.15 K, current set: the reaction's Gibbs energy is that of the formation data.
    x.option = "Ts";
    x.TsSet = Value(298.15, "K");
    cell.option = "I";
    cell.Iset = Value(200.0, "A");
    x.calculate(0);
    ASSERT_TRUE(x.errorList().empty()) << x.errorList().front();
    const double conv = 40 * 200.0 / (2 * faraday);
    EXPECT_NEAR(cell.conv.toDouble(), conv, 1e-12 * conv);
    EXPECT_NEAR(out_[1]->Tphase->flow(CH4).toDouble(), 1e-3 - 0.25 * conv, 1e-12 * conv);
    EXPECT_NEAR(out_[0]->Tphase->flow(O2).toDouble(), 2.1e-3 - 0.5 * conv, 1e-12 * conv);
    const double gibbs298 = 0.25 * gfCarbonDioxide + 0.5 * gfWater - 0.25 * gfMethane;
    // The component models carry their own formation data, which agree with the table to about 1e-4.
    EXPECT_NEAR(cell.E0.toDouble(), -gibbs298 / (2 * faraday), 2e-4);
    const double J = 200.0 / (0.595 * 1.195);
    EXPECT_NEAR(cell.J.toDouble(), J, 1e-9 * J);
    EXPECT_NEAR(cell.V.toDouble(), reversible(-2 * faraday * cell.E0.toDouble(), 298.15) - J * 5e-5, 1e-10);
    EXPECT_NEAR(cell.Power.toDouble(), 40 * cell.V.toDouble() * 200.0, 1e-9);
    EXPECT_NEAR(enthalpyIn() - enthalpyOut(), x.netDuty.toDouble() + cell.Power.toDouble(), 1e-9 * scale);

    // Voltage set, the solid adiabatic: the current density is what the ohmic loss leaves of the Nernst
    // voltage, and the whole enthalpy that the streams lose becomes electricity.
    x.option = "UA";
    cell.option = "V";
    cell.Vset = Value(0.7, "V");
    x.calculate(0);
    ASSERT_TRUE(x.errorList().empty()) << x.errorList().front();
    EXPECT_NEAR(cell.V.toDouble(), 0.7, 1e-9);
    const double T = x.Ts.toDouble();
    EXPECT_NEAR(cell.Tact.toDouble(), T, 0.0);
    EXPECT_NEAR(cell.J.toDouble(), (reversible(-2 * faraday * cell.E0.toDouble(), T) - 0.7) / 5e-5, 1e-5);
    EXPECT_NEAR(cell.conv.toDouble(), 40 * cell.J.toDouble() * 0.595 * 1.195 / (2 * faraday), 1e-15);
    EXPECT_GT(cell.Power.toDouble(), 0.0);
    EXPECT_NEAR(enthalpyIn() - enthalpyOut(), cell.Power.toDouble(), 1e-9 * scale);
    EXPECT_EQ(x.netDuty.toDouble(), 0.0);
    x.checkBalance();
    EXPECT_TRUE(x.errorList().empty() && x.warningList().empty());

    // The same stack as an electrolyzer at a set current density: the reaction runs backwards, the cell
    // voltage exceeds the reversible one by the ohmic loss, and the power enters the balance.
    react(-1.0);
    cell.action = -1.0;
    cell.option = "J";
    cell.Jset = Value(1000.0, "A/m2");
    x.option = "Ts";
    x.TsSet = Value(1000.0, "K");
    x.calculate(0);
    ASSERT_TRUE(x.errorList().empty()) << x.errorList().front();
    EXPECT_NEAR(cell.J.toDouble(), 1000.0, 1e-9);
    const double gibbs = 2 * faraday * cell.E0.toDouble(); // of the reaction as the electrolyzer runs it
    EXPECT_GT(gibbs, 0.0);
    EXPECT_NEAR(cell.V.toDouble(), reversible(gibbs, 1000.0) + 1000.0 * 5e-5, 1e-10);
    EXPECT_GT(cell.V.toDouble(), cell.E.toDouble());
    EXPECT_NEAR(enthalpyIn() - enthalpyOut(), x.netDuty.toDouble() - cell.Power.toDouble(), 1e-9 * scale);
    EXPECT_GT(out_[1]->Tphase->flow(CH4).toDouble(), 1e-3);
    EXPECT_TRUE(cell.warningList().empty());
}
