#include "UnitTestSupport.h"

#include <tarvo/units/CalculateAverage.h>
#include <tarvo/units/Exchanger.h>
#include <tarvo/units/Reaction.h>
#include <tarvo/value/ActiveContext.h>

#include <cmath>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int CO2 = 0, CH4 = 1, H2O = 2, N2 = 3, O2 = 4;
const std::vector<double> water{0, 0, 1, 0, 0};

// The mean by `option` and its derivatives with respect to a and b.
struct Mean {
    double value, da, db;
};
Mean mean(const std::string& option, double a, double b) {
    ActiveContext::Scope scope(2);
    Value va(a, "K"), vb(b, "K");
    va.active().setActive(0);
    vb.active().setActive(1);
    Value m;
    calculateAverage(option, va, vb, m);
    EXPECT_EQ(m.unitText(), va.unitText());
    return {m.toDouble(), m.active().derivative(0), m.active().derivative(1)};
}
} // namespace

TEST(CalculateAverage, MeansAndTheirGuardedLimits) {
    // LMTD of 20 K and 10 K: 10 / ln 2.
    EXPECT_NEAR(mean("LMTD", 20, 10).value, 10 / std::log(2.0), 1e-12);
    EXPECT_NEAR(mean("LMTD", 20, 10).value, 14.42695, 5e-6);
    EXPECT_NEAR(mean("LMTD", 10, 20).value, 10 / std::log(2.0), 1e-12);
    // Its derivative, d/da of (a - b) / ln(a / b), written out.
    const double a = 20, b = 10, l = std::log(a / b);
    EXPECT_NEAR(mean("LMTD", a, b).da, 1 / l - (a - b) / (a * l * l), 1e-12);
    EXPECT_NEAR(mean("LMTD", a, b).db, -1 / l + (a - b) / (b * l * l), 1e-12);
    // Equal differences, and differences that agree within 1e-8: their arithmetic mean.
    EXPECT_EQ(mean("LMTD", 7, 7).value, 7.0);
    EXPECT_EQ(mean("LMTD", 7, 7 * (1 + 5e-9)).value, 7 * (1 + 2.5e-9));
    EXPECT_EQ(mean("LMTD", 7, 7).da, 0.5);
    // A difference of 0 or of opposite sign: the tiny mean, with the derivatives of the arithmetic one.
    for (const auto& [option, x, y] : {std::tuple{"LMTD", 0.0, 10.0}, std::tuple{"LMTD", -5.0, 10.0},
                                       std::tuple{"LmtdClipped", -5.0, 10.0}, std::tuple{"LmtdClipped", 0.0, 0.0},
                                       std::tuple{"LmtdClipped", 0.3, -0.4}, std::tuple{"LmtdClipped", -0.2, 10.0}}) {
        const Mean m = mean(option, x, y);
        EXPECT_EQ(m.value, 2.220446049250313e-16) << option << x << y;
        EXPECT_EQ(m.da, 0.5);
        EXPECT_EQ(m.db, 0.5);
    }
    // Clipped at 0.5 K: (0.5 - 10)^2 / (0.2 - 10) / ln(0.5 / 10).
    EXPECT_NEAR(mean("LmtdClipped", 0.2, 10).value, 90.25 / -9.8 / std::log(0.05), 1e-12);
    EXPECT_NEAR(mean("LmtdClipped", 0.2, 10).value, 3.07410, 5e-6);
    EXPECT_NEAR(mean("LmtdClipped", 10, 0.2).value, 90.25 / -9.8 / std::log(0.05), 1e-12);
    // It meets the logarithmic mean at the clip, and equals it above.
    EXPECT_NEAR(mean("LmtdClipped", 0.5, 10).value, mean("LMTD", 0.5, 10).value, 1e-12);
    EXPECT_NEAR(mean("LmtdClipped", 0.5 - 1e-9, 10).value, mean("LMTD", 0.5, 10).value, 1e-8);
    EXPECT_EQ(mean("LmtdClipped", 20, 10).value, mean("LMTD", 20, 10).value);
    // A zero end is clipped too: finite, with a finite derivative.
    const Mean zeroEnd = mean("LmtdClipped", 0, 10);
    EXPECT_NEAR(zeroEnd.value, 90.25 / -10 / std::log(0.05), 1e-12);
    EXPECT_TRUE(std::isfinite(zeroEnd.da) && std::isfinite(zeroEnd.db));
    // The other means.
    EXPECT_EQ(mean("linear", 20, 10).value, 15.0);
    EXPECT_EQ(mean("linearClipped", 20, 10).value, 15.0);
    EXPECT_EQ(mean("linearClipped", -20, 10).value, -10.0);
    EXPECT_EQ(mean("linearClipped", 4, -10).value, -5.0);
    EXPECT_EQ(mean("CSTR", 20, 10).value, 10.0);
    EXPECT_EQ(mean("CSTR", 20, 10).db, 1.0);
    Value m;
    try {
        calculateAverage("AMTD", Value(1.0, "K"), Value(2.0, "K"), m);
        ADD_FAILURE() << "no error";
    } catch (const Error& e) {
        EXPECT_NE(e.message().find("Unsupported option AMTD for String MTD calculation mode"), std::string::npos);
    }
}

class ExchangerTest : public UnitTest {
protected:
    // Hot water, 2 kg/s at 360 K, against cold water, 3 kg/s at 300 K, both at 3 bar.
    Exchanger& waterExchanger(const std::string& tag, Defaults defaults = {}) {
        auto& x = unit<Exchanger>("Exchanger", tag, defaults);
        hot_ = &connect("StreamLiquid", tag + "HI", nullptr, "", &x, "in1");
        cold_ = &connect("StreamLiquid", tag + "CI", nullptr, "", &x, "in2");
        hotOut_ = &connect("StreamLiquid", tag + "HO", &x, "out1", nullptr, "");
        coldOut_ = &connect("StreamLiquid", tag + "CO", &x, "out2", nullptr, "");
        feed(*hot_, 7200, water, 3e5, 360);
        feed(*cold_, 10800, water, 3e5, 300);
        x.U = Value(1000.0, "W/(m2*K)");
        return x;
    }
    // Hot side duty equals what the hot side gives up, cold side duty what the cold side takes up, both
    // from the phase models.
    void expectBalances(const Exchanger& x) {
        const double given = enthalpyFlow(*hot_) - enthalpyFlow(*hotOut_);
        const double taken = enthalpyFlow(*coldOut_) - enthalpyFlow(*cold_);
        EXPECT_NEAR(given, x.dutyhot.toDouble(), 1e-9 * std::fabs(given));
        EXPECT_NEAR(taken, x.dutycold.toDouble(), 1e-9 * std::fabs(given));
        EXPECT_NEAR(x.dutyhot.toDouble(), x.dutycold.toDouble() + x.heat_losses.toDouble(),
                    1e-12 * std::fabs(given));
    }
    // Specific enthalpy of pure water at (P, T), J/kg, from the liquid stream's phase model.
    static double waterEnthalpy(Stream& probe, double P, double T) {
        feed(probe, 3600, water, P, T);
        return enthalpyFlow(probe) / probe.Tphase->mdot.toDouble();
    }
    Stream *hot_ = nullptr, *cold_ = nullptr, *hotOut_ = nullptr, *coldOut_ = nullptr;
};

// Counter-current, U A = 1e4 W/K. The effectiveness-NTU closed form for constant heat capacities C = m cp,
// with NTU = UA / Cmin, Cr = Cmin / Cmax:
//   eps = (1 - exp(-NTU (1 - Cr))) / (1 - Cr exp(-NTU (1 - Cr))), Q = eps Cmin (Thin - Tcin).
// With each side's mean cp over its own range, (h(Tin) - h(Tout)) / (Tin - Tout) from the phase model, the
// closed form is exact: it follows from Q = UA LMTD and the two balances, which the unit solves. With cp
// at the inlets it differs by what the change of cp of liquid water explains.
TEST_F(ExchangerTest, CounterCurrentWaterFollowsTheClosedForm) {
    Exchanger& x = waterExchanger("X");
    x.calculate(0);
    ASSERT_TRUE(x.errorList().empty()) << x.errorList().front();
    EXPECT_TRUE(x.warningList().empty());
    expectBalances(x);
    const double Thi = 360, Tci = 300, P = 3e5, mh = 2, mc = 3, UA = 1e4;
    const double Tho = hotOut_->T.toDouble(), Tco = coldOut_->T.toDouble();
    Stream& probe = stream("StreamLiquid", "PROBE");
    const auto outlets = [&](double cph, double cpc) {
        const double Ch = mh * cph, Cc = mc * cpc, Cmin = std::min(Ch, Cc), Cr = Cmin / std::max(Ch, Cc);
        const double ntu = UA / Cmin, e = std::exp(-ntu * (1 - Cr));
        const double Q = (1 - e) / (1 - Cr * e) * Cmin * (Thi - Tci);
        return std::pair{Thi - Q / Ch, Tci + Q / Cc};
    };
    const double cphMean = (waterEnthalpy(probe, P, Thi) - waterEnthalpy(probe, P, Tho)) / (Thi - Tho);
    const double cpcMean = (waterEnthalpy(probe, P, Tco) - waterEnthalpy(probe, P, Tci)) / (Tco - Tci);
    const auto exact = outlets(cphMean, cpcMean);
    EXPECT_NEAR(Tho, exact.first, 1e-7);
    EXPECT_NEAR(Tco, exact.second, 1e-7);
    // cp at the inlets, by a central difference of 1 K.
    const auto cpAt = [&](double T) { return waterEnthalpy(probe, P, T + 0.5) - waterEnthalpy(probe, P, T - 0.5); };
    const double cphIn = cpAt(Thi), cpcIn = cpAt(Tci);
    const auto constant = outlets(cphIn, cpcIn);
    // A relative change of cp moves an outlet by at most as much of its side's change of temperature.
    const double drift = std::max(std::fabs(cphMean / cphIn - 1), std::fabs(cpcMean / cpcIn - 1));
    EXPECT_NEAR(Tho, constant.first, drift * (Thi - Tho));
    EXPECT_NEAR(Tco, constant.second, drift * (Tco - Tci));
    std::cout << "outlets " << Tho << " K, " << Tco << " K; closed form at inlet cp " << constant.first << " K, "
              << constant.second << " K; cp drift " << drift << "\n";
    // The transfer equation and the approaches of the counter-current arrangement.
    EXPECT_NEAR(x.deltaTcoldApproach.toDouble(), Thi - Tco, 1e-12);
    EXPECT_NEAR(x.deltaThotApproach.toDouble(), Tho - Tci, 1e-12);
    EXPECT_NEAR(x.dutyhot.toDouble(), UA * x.MTD.toDouble(), 1e-8 * x.dutyhot.toDouble());
    EXPECT_NEAR(x.hotT.toDouble(), Tho, 0.0);
    EXPECT_NEAR(x.deltaThot.toDouble(), Tho - Thi, 1e-12);
    EXPECT_EQ(x.I("nCalculations"), 1);
    // A second calculation starts from the first and stays there.
    x.calculate(0);
    EXPECT_NEAR(hotOut_->T.toDouble(), Tho, 1e-9);
}

// With the outlet temperature of a side given, the area is the result; given that area, "UA" finds the
// same outlet temperatures. Co-current and a side without direction have their own approaches.
TEST_F(ExchangerTest, OptionsAndFlowArrangements) {
    for (const char* mode : {"Thot", "Tcold"}) {
        Exchanger& x = waterExchanger(mode, Defaults().setString("option", mode));
        x.hotT = Value(335.0, "K");
        x.coldT = Value(310.0, "K");
        x.calculate(0);
        ASSERT_TRUE(x.errorList().empty()) << mode << x.errorList().front();
        expectBalances(x);
        const Stream& given = std::string(mode) == "Thot" ? *hotOut_ : *coldOut_;
        EXPECT_NEAR(given.T.toDouble(), std::string(mode) == "Thot" ? 335.0 : 310.0, 1e-8);
        const double area = x.A.toDouble(), Tho = hotOut_->T.toDouble(), Tco = coldOut_->T.toDouble();
        EXPECT_NEAR(area, x.dutyhot.toDouble() / (1000.0 * x.MTD.toDouble()), 1e-12 * area);
        x.option = "UA";
        x.calculate(0);
        EXPECT_NEAR(hotOut_->T.toDouble(), Tho, 1e-7) << mode;
        EXPECT_NEAR(coldOut_->T.toDouble(), Tco, 1e-7) << mode;
        EXPECT_EQ(x.A.toDouble(), area);
    }
    Exchanger& co = waterExchanger("CO");
    co.hotflowoption = "forward";
    co.eta = 0.9;
    co.calculate(0);
    ASSERT_TRUE(co.errorList().empty());
    expectBalances(co);
    EXPECT_NEAR(co.dutycold.toDouble(), 0.9 * co.dutyhot.toDouble(), 1e-9 * co.dutyhot.toDouble());
    const double a = hotOut_->T.toDouble() - coldOut_->T.toDouble(), b = 360.0 - 300.0;
    EXPECT_NEAR(co.dutyhot.toDouble(), 1e4 * (a - b) / std::log(a / b), 1e-8 * co.dutyhot.toDouble());
    Exchanger& mixed = waterExchanger("MIX");
    mixed.coldflowoption = "mixed";
    mixed.MTDoption = "linear";
    mixed.calculate(0);
    ASSERT_TRUE(mixed.errorList().empty());
    const double c = hotOut_->T.toDouble() - coldOut_->T.toDouble(), d = 360.0 - coldOut_->T.toDouble();
    EXPECT_NEAR(mixed.dutyhot.toDouble(), 1e4 * (c + d) / 2, 1e-8 * mixed.dutyhot.toDouble());
}

TEST_F(ExchangerTest, MessagesAndBadOptions) {
    Exchanger& x = waterExchanger("X");
    // Equal inlet temperatures: no solve, outlets as the inlets, counted.
    feed(*cold_, 10800, water, 2e5, 360);
    x.calculate(0);
    EXPECT_EQ(x.warningList(), std::vector<std::string>{"Exchanger: hot cold isothermal, bypassing block"});
    EXPECT_EQ(hotOut_->Tphase->mdot.toDouble(), hot_->Tphase->mdot.toDouble());
    EXPECT_EQ(coldOut_->Tphase->mdot.toDouble(), cold_->Tphase->mdot.toDouble());
    EXPECT_EQ(x.I("nCalculations"), 1);
    // The slightest difference calculates.
    feed(*cold_, 10800, water, 3e5, 360 - 1e-6);
    x.calculate(0);
    EXPECT_TRUE(x.errorList().empty());
    EXPECT_FALSE(has(x.warningList(), "Exchanger: hot cold isothermal, bypassing block"));
    EXPECT_GT(x.dutyhot.toDouble(), 0.0);
    EXPECT_LE(hotOut_->T.toDouble(), 360.0);
    EXPECT_GE(hotOut_->T.toDouble(), 360.0 - 1e-6);
    // Swapped: the warnings and negative bounds; heat flows from port 2 to port 1, by the same equation.
    feed(*hot_, 7200, water, 3e5, 300);
    feed(*cold_, 10800, water, 3e5, 360);
    x.calculate(0);
    for (const char* text : {"Exchanger: potential hot/cold swap", "unphysical cold side duty estimate",
                             "unphysical hot side duty estimate"})
        EXPECT_TRUE(has(x.warningList(), text)) << text;
    EXPECT_LT(x.maxduty.toDouble(), 0.0);
    EXPECT_LT(x.dutyhot.toDouble(), 0.0);
    EXPECT_GT(hotOut_->T.toDouble(), 300.0);
    EXPECT_NEAR(x.dutyhot.toDouble(), 1e4 * x.MTD.toDouble(), 1e-8 * std::fabs(x.dutyhot.toDouble()));
    expectBalances(x);
    // A hot outlet asked below the cold inlet plus 0.1 K is raised to it.
    feed(*hot_, 7200, water, 3e5, 360);
    feed(*cold_, 10800, water, 3e5, 300);
    x.option = "Thot";
    x.hotT = Value(300.05, "K");
    x.calculate(0);
    EXPECT_TRUE(has(x.errorList(), "Specified hot side outlet temperature is lower than minimum allowable "
                                   "temperature to avoid temperature crossing; hot side temperature will be "
                                   "set to the minimum allowable value"));
    EXPECT_NEAR(x.hotT.toDouble(), 300.1, 1e-12);
    EXPECT_NEAR(hotOut_->T.toDouble(), 300.1, 1e-8);
    x.option = "Tcold";
    x.coldT = Value(359.95, "K");
    x.calculate(0);
    EXPECT_TRUE(has(x.errorList(), "Specified cold side outlet temperature is higher than maximum allowable "
                                   "temperature to avoid temperature crossing; cold side temperature will be "
                                   "set to the maximum allowable value"));
    EXPECT_NEAR(x.coldT.toDouble(), 359.9, 1e-12);
    // Bad texts raise errors that name them.
    x.option = "NTU";
    EXPECT_NE(thrown([&] { x.calculate(0); }).find("Unsupported option NTU for String Calculation mode"),
              std::string::npos);
    x.option = "UA";
    x.hotflowoption = "sideways";
    EXPECT_NE(thrown([&] { x.calculate(0); }).find("Unsupported option sideways for String hotflowoption"),
              std::string::npos);
    x.hotflowoption = "backward";
    x.MTDoption = "AMTD";
    EXPECT_NE(thrown([&] { x.calculate(0); }).find("Unsupported option AMTD for String MTD calculation mode"),
              std::string::npos);
}

// A fuel gas burns on one side while water passes on the other, either way round: the reaction changes its
// own side's flows only, and each side's enthalpy, heats of formation included, changes by its duty.
TEST_F(ExchangerTest, ReactionsOnEitherSide) {
    for (int side : {0, 1}) {
        const std::string tag = "R" + std::to_string(side);
        auto& x = unit<Exchanger>("Exchanger", tag,
                                  Defaults()
                                      .setInteger("nReactions", 1)
                                      .setString("embeddedTypeReactions[0]", "ReactionOxidationCH4")
                                      .setInteger("reactionSides[0]", side));
        const char* gasType = "StreamVapor";
        Stream* in[2];
        Stream* out[2];
        for (int s = 0; s < 2; ++s) {
            const std::string type = s == side ? gasType : "StreamLiquid";
            const std::string n = std::to_string(s + 1);
            in[s] = &connect(type, tag + "I" + n, nullptr, "", &x, "in" + n);
            out[s] = &connect(type, tag + "O" + n, &x, "out" + n, nullptr, "");
        }
        const double gasT = side == 0 ? 700.0 : 400.0, waterT = side == 0 ? 300.0 : 360.0;
        feed(*in[side], 360, {0.05, 0.05, 0, 0.7, 0.2}, 1e5, gasT);
        feed(*in[1 - side], 3600, water, 3e5, waterT);
        x.reactions[0]->z = 0.5;
        x.calculate(0);
        ASSERT_TRUE(x.errorList().empty()) << side << x.errorList().front();
        EXPECT_NEAR(flow(*out[side], CH4), 0.5 * flow(*in[side], CH4), 1e-12 * flow(*in[side], CH4));
        EXPECT_GT(flow(*out[side], CO2), flow(*in[side], CO2));
        EXPECT_LT(flow(*out[side], O2), flow(*in[side], O2));
        EXPECT_NEAR(mdot(*out[side]), mdot(*in[side]), 1e-12 * mdot(*in[side]));
        EXPECT_EQ(flow(*out[1 - side], H2O), flow(*in[1 - side], H2O));
        EXPECT_EQ(flow(*out[1 - side], N2), 0.0);
        const double hot = enthalpyFlow(*in[0]) - enthalpyFlow(*out[0]);
        const double cold = enthalpyFlow(*out[1]) - enthalpyFlow(*in[1]);
        EXPECT_NEAR(hot, x.dutyhot.toDouble(), 1e-9 * std::fabs(hot)) << side;
        EXPECT_NEAR(cold, x.dutycold.toDouble(), 1e-9 * std::fabs(hot)) << side;
    }
    auto& unset = unit<Exchanger>("Exchanger", "U",
                                  Defaults().setInteger("nReactions", 1).setString("embeddedTypeReactions[0]",
                                                                                   "ReactionOxidationCH4"));
    for (int s = 1; s <= 2; ++s) {
        connect("StreamVapor", "UI" + std::to_string(s), nullptr, "", &unset, "in" + std::to_string(s));
        connect("StreamVapor", "UO" + std::to_string(s), &unset, "out" + std::to_string(s), nullptr, "");
    }
    unset.calculate(0);
    EXPECT_EQ(unset.errorList(), std::vector<std::string>{"reactionSide not set"});
}
