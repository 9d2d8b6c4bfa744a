#include "UnitTestSupport.h"

#include <tarvo/units/Separator.h>

using Tarvo::Persistency::Defaults;

namespace {
const std::vector<double> water{0, 0, 1, 0, 0};
const std::vector<double> gas{0.5, 0.5, 0, 0, 0};
} // namespace

TEST_F(UnitTest, PortsAreNumberedWithinTheirLimits) {
    Connectivity& divider = unit("Divider", "D");
    Stream& s1 = stream("StreamSimpleLiquid", "S1");
    Stream& s2 = stream("StreamSimpleLiquid", "S2");
    std::string port = "in";
    divider.attach(s1, port);
    EXPECT_EQ(port, "in1");
    EXPECT_EQ(&divider.inlet(0), &s1);
    EXPECT_EQ(&divider.edgeFromPort("in1"), &s1);
    port = "in";
    EXPECT_NE(thrown([&] {
                  divider.attach(s2, port);
              }).find("Impossible to attach port in to Vertex D of type Divider"),
              std::string::npos);

    Connectivity& mixer = unit("Mixer", "M");
    for (const auto& [name, message] : std::vector<std::pair<std::string, std::string>>{
             {"in0", "Invalid port [-1]"}, {"in2x", "Unparseable port [2x]"}, {"out2", "Invalid port [1]"}}) {
        port = name;
        EXPECT_NE(thrown([&] { mixer.attach(s2, port); }).find(message), std::string::npos) << name;
    }
    port = "feed";
    EXPECT_NE(thrown([&] { mixer.attach(s2, port); }).find("Impossible to attach port feed"),
              std::string::npos);
    port = "in";
    mixer.attach(s1, port);
    port = "in";
    EXPECT_NE(thrown([&] { mixer.attach(s1, port); }).find("Duplicate connected edge"), std::string::npos);
    // The refused attaches left the unit as it was.
    EXPECT_EQ(mixer.nIn.value(), 1);
    EXPECT_EQ(mixer.nOut.value(), 0);
    EXPECT_FALSE(mixer.hasInlet(1));

    EXPECT_NE(thrown([&] { divider.inlet(1); }).find("inlet index out of range"), std::string::npos);
    EXPECT_NE(thrown([&] { mixer.outlet(0); }).find("the outlet is not connected"), std::string::npos);
    EXPECT_NE(thrown([&] { mixer.edgeFromPort("in3"); }).find("Inlet port [in3] invalid"), std::string::npos);
    EXPECT_NE(thrown([&] { mixer.edgeFromPort("x1"); }).find("Port [x1] invalid"), std::string::npos);
    EXPECT_NE(thrown([&] { mixer.portInlet(0); }).find("index out of range"), std::string::npos);
    EXPECT_EQ(mixer.portOutlet(2), "out2");
}

TEST_F(UnitTest, InletsAttachedByNumberLeaveGapsThatCheckReports) {
    auto& separator = unit<Separator>("Separator", "SEP");
    Stream& s = stream("StreamSimpleLiquid", "S1");
    std::string port = "in2";
    separator.attach(s, port);
    EXPECT_EQ(separator.nIn.value(), 1);
    EXPECT_FALSE(separator.hasInlet(0));
    EXPECT_TRUE(separator.hasInlet(1));
    EXPECT_NE(thrown([&] { separator.edgeFromPort("in1"); }).find("Inlet  port [in1] not attached"),
              std::string::npos);
    separator.check();
    EXPECT_TRUE(has(separator.warningList(), "connected inlets are not sequential"));
    EXPECT_TRUE(has(separator.warningList(), "only 0 outlets connected, 2 available"));
    // Slot 0 counts as one of the nIn connected inlets, and it holds nothing.
    EXPECT_TRUE(has(separator.errorList(), "inlet SEP connected to nonexistent stream"));

    Connectivity& mixer = unit("Mixer", "M");
    port = "in2";
    mixer.attach(s, port);
    EXPECT_NE(thrown([&] { mixer.check(); }).find("required connection in1"), std::string::npos);
}

TEST_F(UnitTest, FreePortsWarnInsideAFlowsheetOnly) {
    Connectivity& inside = unit("Separator", "SEP");
    inside.check();
    EXPECT_EQ(inside.warningList(),
              (std::vector<std::string>{"only 0 outlets connected, 2 available",
                                        "unlimited inlets but there is no inlet connected"}));
    std::unique_ptr<Node> alone(
        NodeFactory::create("Separator", {"SEP", "alone"}, 0, nullptr, nullptr, nullptr));
    auto& standalone = dynamic_cast<Connectivity&>(*alone);
    standalone.check();
    EXPECT_TRUE(standalone.warningList().empty());
    EXPECT_TRUE(standalone.errorList().empty());
}

TEST_F(UnitTest, DetachFreesAPortAndRefusesAFreeOne) {
    Connectivity& mixer = unit("Mixer", "M");
    Stream& a = stream("StreamSimpleLiquid", "A");
    Stream& b = stream("StreamSimpleLiquid", "B");
    std::string port = "in";
    mixer.attach(a, port);
    port = "in";
    mixer.attach(b, port);
    mixer.detach("in1");
    EXPECT_EQ(mixer.nIn.value(), 1);
    EXPECT_FALSE(mixer.hasInlet(0));
    EXPECT_NE(thrown([&] { mixer.detach("in1"); }).find("Impossible to attach port in1 to Vertex M"),
              std::string::npos);
    EXPECT_NE(thrown([&] { mixer.detach("x1"); }).find("Impossible to detach from port"), std::string::npos);
    EXPECT_EQ(mixer.nIn.value(), 1);
    EXPECT_TRUE(mixer.hasInlet(1));
    // The freed port takes an edge again by its number.
    port = "in1";
    mixer.attach(a, port);
    EXPECT_EQ(&mixer.inlet(0), &a);
}

TEST_F(UnitTest, BalancesAddUpWhatFlowsAndFlagAnUnbalance) {
    Connectivity& mixer = unit("Mixer", "M");
    Stream& a = connect("StreamSimpleLiquid", "A", nullptr, "", &mixer, "in");
    Stream& b = connect("StreamSimpleLiquid", "B", nullptr, "", &mixer, "in");
    Stream& out = connect("StreamSimpleLiquid", "OUT", &mixer, "out", nullptr, "");
    feed(a, 1000, water, 2e5, 300);
    feed(b, 3000, gas, 2e5, 300);
    mixer.calculate(0);
    mixer.checkBalance();
    EXPECT_TRUE(mixer.errorList().empty());
    EXPECT_TRUE(mixer.warningList().empty());
    EXPECT_NEAR(mixer.mdotin.toDouble("kg/h"), 4000, 1e-9);
    EXPECT_NEAR(mixer.mdotout.toDouble("kg/h"), 4000, 1e-9);
    EXPECT_NEAR(mixer.mdotcomp[2].toDouble("kg/h"), 0, 1e-9);

    // With about 8000 kg/h through the unit, 10 kg/h lost is an error and 0.5 kg/h a warning.
    out.scale(1.0 - 10.0 / 4000);
    mixer.calculateBalance();
    mixer.checkBalance();
    EXPECT_TRUE(has(mixer.errorList(), "mass flow unbalance"));
    mixer.resetErrors();
    out.scale((4000 - 0.5) / (4000 - 10.0));
    mixer.calculateBalance();
    mixer.checkBalance();
    EXPECT_TRUE(mixer.errorList().empty());
    EXPECT_TRUE(has(mixer.warningList(), "mass flow unbalance"));
}
