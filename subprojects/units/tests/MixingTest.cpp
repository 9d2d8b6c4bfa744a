#include "UnitTestSupport.h"

#include <tarvo/units/Divider.h>
#include <tarvo/units/Mixer.h>
#include <tarvo/units/Selector.h>
#include <tarvo/units/Separator.h>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int H2O = 2;
const std::vector<double> water{0, 0, 1, 0, 0};
const std::vector<double> gas{0.5, 0.5, 0, 0, 0};
const std::vector<double> mixture{0.2, 0.2, 0.2, 0.2, 0.2};
} // namespace

TEST_F(UnitTest, MixerJoinsInletsAtTheirLowestPressure) {
    auto& mixer = unit<Mixer>("Mixer", "M");
    Stream& a = connect("StreamSimpleLiquid", "A", nullptr, "", &mixer, "in");
    Stream& b = connect("StreamSimpleLiquid", "B", nullptr, "", &mixer, "in");
    Stream& out = connect("StreamSimpleLiquid", "OUT", &mixer, "out", nullptr, "");
    feed(a, 1000, water, 2e5, 300);
    feed(b, 3000, gas, 1.5e5, 350);
    mixer.calculate(0);
    EXPECT_TRUE(mixer.errorList().empty());
    EXPECT_NEAR(mdot(out), 4000, 1e-9);
    EXPECT_NEAR(flow(out, H2O), 1000, 1e-9);
    EXPECT_NEAR(flow(out, 0), 1500, 1e-9);
    EXPECT_DOUBLE_EQ(out.P.toDouble(), 1.5e5);
    EXPECT_DOUBLE_EQ(mixer.Tavg.toDouble(), (1000 * 300 + 3000 * 350) / 4000.0);
    EXPECT_DOUBLE_EQ(out.T.toDouble(), mixer.Tavg.toDouble()); // its start, never calculated before
    EXPECT_FALSE(mixer.pristine());

    // Inlets without flow: the outlet is empty at the reference state.
    feed(a, 0, water, 2e5, 300);
    feed(b, 0, gas, 1.5e5, 350);
    mixer.calculate(0);
    EXPECT_EQ(mdot(out), 0.0);
    EXPECT_DOUBLE_EQ(out.P.toDouble(), 101325.0);
    EXPECT_DOUBLE_EQ(mixer.Tavg.toDouble(), 298.15);
}

TEST_F(UnitTest, UnitsWithoutTheirStreamsReportAndLeave) {
    auto& mixer = unit<Mixer>("Mixer", "M");
    connect("StreamSimpleLiquid", "A", nullptr, "", &mixer, "in");
    mixer.calculate(0);
    EXPECT_EQ(mixer.errorList(), std::vector<std::string>{"no outlet connected, nothing to do"});
    EXPECT_TRUE(mixer.pristine());

    auto& separator = unit<Separator>("Separator", "SEP");
    connect("StreamSimpleLiquid", "O1", &separator, "out", nullptr, "");
    connect("StreamSimpleLiquid", "O2", &separator, "out", nullptr, "");
    separator.calculate(0);
    EXPECT_EQ(separator.errorList(), std::vector<std::string>{"no inlet connected, nothing to do"});

    EXPECT_NE(thrown([&] {
                  unit("Separator", "S1", Defaults().setInteger("nOutlets", 1));
              }).find("nOutlets.value() > 1"),
              std::string::npos);
}

TEST_F(UnitTest, DividerMakesLikePartsThatAddUpToTheInlet) {
    auto& divider = unit<Divider>("Divider", "D", Defaults().setInteger("nOutlets", 3));
    Stream& in = connect("StreamSimpleLiquid", "IN", nullptr, "", &divider, "in");
    std::vector<Stream*> outs;
    for (const char* tag : {"O1", "O2", "O3"})
        outs.push_back(&connect("StreamSimpleLiquid", tag, &divider, "out", nullptr, ""));
    feed(in, 900, mixture, 2e5, 320);

    divider.calculate(0); // no fraction given: equal parts
    for (Stream* out : outs) {
        EXPECT_NEAR(mdot(*out), 300, 1e-9);
        EXPECT_NEAR(flow(*out, H2O), 60, 1e-9);
        EXPECT_DOUBLE_EQ(out->P.toDouble(), 2e5);
        EXPECT_DOUBLE_EQ(out->T.toDouble(), 320);
    }
    // The first two ask for more than everything: they are scaled down and the last gets nothing. A negative
    // fraction counts as none.
    divider.outSplit[0] = 0.8;
    divider.outSplit[1] = 0.7;
    divider.outSplit[2] = 0.4;
    divider.calculate(0);
    EXPECT_NEAR(mdot(*outs[0]), 900 * 0.8 / 1.5, 1e-9);
    EXPECT_NEAR(mdot(*outs[1]), 900 * 0.7 / 1.5, 1e-9);
    EXPECT_EQ(mdot(*outs[2]), 0.0);
    divider.outSplit[0] = -0.3;
    divider.outSplit[1] = 0.25;
    divider.calculate(0);
    EXPECT_EQ(mdot(*outs[0]), 0.0);
    EXPECT_NEAR(mdot(*outs[1]), 225, 1e-9);
    EXPECT_NEAR(mdot(*outs[2]), 675, 1e-9);
    divider.checkBalance();
    EXPECT_TRUE(divider.errorList().empty());
}

TEST_F(UnitTest, SeparatorDividesEachComponentByItsSplit) {
    auto& separator = unit<Separator>("Separator<2>", "SEP");
    Stream& a = connect("StreamSimpleLiquid", "A", nullptr, "", &separator, "in");
    Stream& b = connect("StreamSimpleLiquid", "B", nullptr, "", &separator, "in");
    Stream& top = connect("StreamSimpleLiquid", "TOP", &separator, "out", nullptr, "");
    Stream& bottom = connect("StreamSimpleLiquid", "BOTTOM", &separator, "out", nullptr, "");
    feed(a, 500, mixture, 3e5, 300);
    feed(b, 500, mixture, 2e5, 340);
    separator.T = Value(310.0, "K");
    separator.option = "D"; // with deltaP 0: the outlets leave at the lowest inlet pressure
    for (int c = 0; c < NCOMPONENTS; ++c)
        separator.outSplit[0][c] = 0.25;
    separator.outSplit[0][H2O] = 1.2; // more than all of it: all the water goes up, whatever the bottom held
    separator.outSplit[1][H2O] = 0.3;
    separator.outSplit[0][0] = -0.5; // counts as none: all CO2 to the bottom
    separator.calculate(0);
    EXPECT_TRUE(separator.errorList().empty());
    EXPECT_NEAR(flow(top, H2O), 200, 1e-9);
    EXPECT_EQ(flow(bottom, H2O), 0.0);
    // A second calculation of the same inputs gives the same result.
    separator.outSplit[0][H2O] = 1.2;
    separator.calculate(0);
    EXPECT_NEAR(flow(top, H2O), 200, 1e-9);
    EXPECT_EQ(flow(bottom, H2O), 0.0);
    EXPECT_EQ(flow(top, 0), 0.0);
    EXPECT_NEAR(flow(bottom, 0), 200, 1e-9);
    EXPECT_NEAR(flow(top, 1), 50, 1e-9);
    EXPECT_NEAR(flow(bottom, 1), 150, 1e-9);
    EXPECT_NEAR(mdot(top) + mdot(bottom), 1000, 1e-9);
    for (Stream* out : {&top, &bottom}) {
        EXPECT_DOUBLE_EQ(out->T.toDouble(), 310);
        EXPECT_DOUBLE_EQ(out->P.toDouble(), 2e5);
    }
    EXPECT_DOUBLE_EQ(separator.deltaPMax.toDouble(), 2e5);
    separator.checkBalance();
    EXPECT_TRUE(separator.errorList().empty());
}

TEST_F(UnitTest, SeparatorWithOneDropPerOutletKeepsAShareOfTheInletPressure) {
    auto& separator = unit<Separator>("Separator", "SEP");
    Stream& in = connect("StreamSimpleLiquid", "IN", nullptr, "", &separator, "in");
    Stream& o1 = connect("StreamSimpleLiquid", "O1", &separator, "out", nullptr, "");
    Stream& o2 = connect("StreamSimpleLiquid", "O2", &separator, "out", nullptr, "");
    feed(in, 1000, mixture, 1e5, 300);
    separator.option = "S";
    separator.beta = 0.99;
    separator.deltaPstream[0] = Value(2e5, "Pa"); // beyond beta times the inlet pressure
    separator.deltaPstream[1] = Value(1e4, "Pa");
    separator.calculate(0);
    EXPECT_NEAR(o1.P.toDouble(), 1e3, 1e-9);
    EXPECT_NEAR(o2.P.toDouble(), 9e4, 1e-9);
    EXPECT_NEAR(separator.deltaP.toDouble(), 9.9e4, 1e-9);
    EXPECT_NEAR(separator.P.toDouble(), 1e3, 1e-9);
    // Without properties the volume flow is the mass flow over 1000 kg/m3.
    EXPECT_NEAR(separator.flowcoefficient.toDouble(), 9.9e4 / std::pow(1000.0 / 3600 / 1000, 2), 1e-3);
}

TEST_F(UnitTest, SelectorPassesOnTheChosenInletOnly) {
    auto& selector = unit<Selector>("Selector", "SEL");
    Stream& a = connect("StreamSimpleLiquid", "A", nullptr, "", &selector, "in");
    Stream& b = connect("StreamSimpleLiquid", "B", nullptr, "", &selector, "in");
    Stream& out = connect("StreamSimpleLiquid", "OUT", &selector, "out", nullptr, "");
    feed(a, 1000, water, 2e5, 300);
    feed(b, 3000, gas, 1.5e5, 350);
    selector.selectedInlet = 1;
    selector.calculate(0);
    EXPECT_NEAR(mdot(out), 3000, 1e-9);
    EXPECT_DOUBLE_EQ(out.T.toDouble(), 350);
    EXPECT_DOUBLE_EQ(out.P.toDouble(), 1.5e5);
    // What is not passed on leaves here, and the balance knows it.
    selector.checkBalance();
    EXPECT_TRUE(selector.errorList().empty());

    selector.selectedInlet = 2;
    EXPECT_NE(thrown([&] { selector.calculate(0); }).find("selectedInlet.value() < nIn.value()"),
              std::string::npos);
}

TEST_F(UnitTest, MultiplierCopiesItsInletToEveryOutlet) {
    Connectivity& multiplier = unit("Multiplier", "X");
    Stream& in = connect("StreamSimpleLiquid", "IN", nullptr, "", &multiplier, "in");
    Stream& o1 = connect("StreamSimpleLiquid", "O1", &multiplier, "out", nullptr, "");
    Stream& o2 = connect("StreamSimpleLiquid", "O2", &multiplier, "out", nullptr, "");
    feed(in, 700, mixture, 2e5, 300);
    multiplier.calculate(0);
    for (Stream* out : {&o1, &o2}) {
        EXPECT_NEAR(mdot(*out), 700, 1e-9);
        EXPECT_NEAR(flow(*out, 3), 140, 1e-9);
        EXPECT_EQ(out->fromTAG.value(), ""); // the copy leaves the ends of the edge alone
    }
    multiplier.checkBalance();
    EXPECT_TRUE(multiplier.errorList().empty());
}

TEST_F(UnitTest, SplitterSendsEachPhaseToItsOutlet) {
    Connectivity& splitter = unit("Splitter", "SPL");
    Stream& in = connect("StreamSimpleLiquidSolidVapor", "IN", nullptr, "", &splitter, "in");
    Stream& vapor = connect("StreamSimpleVapor", "V", &splitter, "out", nullptr, "");
    Stream& liquid = connect("StreamSimpleLiquid", "L", &splitter, "out", nullptr, "");
    Stream& solid = connect("StreamSimpleSolid", "S", &splitter, "out", nullptr, "");
    feed(in, 1000, mixture, 2e5, 300); // no species of the kernel is a solid: everything is liquid
    splitter.calculate(0);
    EXPECT_TRUE(splitter.errorList().empty());
    EXPECT_NEAR(mdot(liquid), 1000, 1e-9);
    EXPECT_EQ(mdot(vapor), 0.0);
    EXPECT_EQ(mdot(solid), 0.0);
    EXPECT_DOUBLE_EQ(liquid.T.toDouble(), 300);
    EXPECT_DOUBLE_EQ(liquid.P.toDouble(), 2e5);
}

TEST_F(UnitTest, UnitsAreRegisteredByTheirTypeStrings) {
    for (const char* type : {"Divider", "Mixer", "Separator", "Separator<2>", "Separator<3>", "Splitter",
                             "Multiplier", "Selector"}) {
        ASSERT_TRUE(NodeFactory::registered(type)) << type;
        EXPECT_EQ(NodeFactory::typeDescriptor(type).category, "unit") << type;
        EXPECT_FALSE(NodeFactory::typeDescriptor(type).instantiable) << type;
    }
    EXPECT_EQ(unit<Separator>("Separator<3>", "SEP").nOutlets.value(), 3);
    EXPECT_TRUE(NodeFactory::typeDescriptor("Separator<3>").integerOptions.empty()); // fixed by the alias
}
