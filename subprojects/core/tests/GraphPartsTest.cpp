#include <tarvo/core/EdgeBase.h>
#include <tarvo/core/FlowPatternAscii.h>
#include <tarvo/core/FlowPatterns.h>
#include <tarvo/core/KernelStart.h>
#include <tarvo/core/VertexBase.h>

#include <gtest/gtest.h>

#include <memory>

using Tarvo::Persistency::Defaults;

namespace {

class TestEdge : public EdgeBase {
public:
    TestEdge(const Defaults& d) : Model(d, 0, nullptr, nullptr, nullptr), EdgeBase(d, 0, nullptr, nullptr, nullptr) {}
    void go(SolutionMode, int) override {}
    void calculate(int) override {}
    void setup() override {}
    void initializeNonPersistents() override {}
    ObjectiveNleAd* objective() override { return nullptr; }
};

class TestVertex : public VertexBase {
public:
    TestVertex(const Defaults& d) : Model(d, 0, nullptr, nullptr, nullptr), VertexBase(d, 0, nullptr, nullptr, nullptr) {}
    void go(SolutionMode, int) override {}
    void check() override {}
    void calculateBalance() override {}
    void calculate(int) override {}
    void setup() override {}
    void initializeNonPersistents() override {}
    ObjectiveNleAd* objective() override { return nullptr; }
};

class GraphParts : public ::testing::Test {
protected:
    void SetUp() override { Tarvo::Core::startKernel(); }
    void TearDown() override { Tarvo::Core::stopKernel(); }
};

std::string connectivityMessage(const std::function<void()>& f) {
    try {
        f();
    } catch (const ErrorConnectivity& e) {
        return e.message().substr(e.message().find('\n') + 1);
    }
    return "no error";
}

} // namespace

TEST_F(GraphParts, PortsSynonymsAndConnections) {
    TestVertex unit(Defaults("M1", "Module"));
    TestEdge s1(Defaults("S01", "")), s2(Defaults("S02", ""));
    unit.registerSynonym("feed", "in");
    unit.registerSynonym("permeate", "out1");
    std::string port = "feed";
    unit.attach(s1, port);
    EXPECT_EQ(port, "in");
    std::string outlet = "permeate";
    unit.attach(s2, outlet);
    EXPECT_EQ(unit.edgeFromPort("out1"), "S02");
    EXPECT_EQ(unit.portFromEdge("S01"), "in");
    EXPECT_EQ(unit.locationFromEdge("S02"), VertexBase::east);
    EXPECT_EQ(unit.locationFromEdge("S01"), VertexBase::west);
    std::string again = "in2";
    EXPECT_EQ(connectivityMessage([&] { unit.attach(s1, again); }),
              "Flowsheet connectivity error: M1 Duplicate connected edge\n");
    unit.detach("permeate");
    EXPECT_EQ(connectivityMessage([&] { unit.detach("out1"); }), "Flowsheet connectivity error: M1 Port not connected\n");
    EXPECT_EQ(connectivityMessage([&] { unit.edgeFromPort("out1"); }), "Flowsheet connectivity error: M1 port not connected\n");
    EXPECT_EQ(connectivityMessage([&] { unit.portFromEdge("S09"); }), "Flowsheet connectivity error: M1 edge not connected\n");
    EXPECT_EQ(connectivityMessage([&] { unit.registerSynonym("outlet", "x"); }),
              "Flowsheet connectivity error: M1 synonyms are not allowed to start with 'out'\n");
    EXPECT_EQ(connectivityMessage([&] { unit.registerSynonym("inlet", "x"); }),
              "Flowsheet connectivity error: M1 synonyms are not allowed to start with 'in'\n");
    EXPECT_EQ(s1.category(), Tarvo::Utility::Category::stream);
    EXPECT_EQ(unit.category(), Tarvo::Utility::Category::unit);
    EXPECT_FALSE(s1.isCut());
    s1.cutsource = "M2";
    EXPECT_TRUE(s1.isCut());
    EXPECT_EQ(unit.mdotcomp.size(), 5u);
}

TEST_F(GraphParts, BalanceThresholdsScaleWithTheFlow) {
    // In 1000 kg/h and out 1000 kg/h: the mass tolerance is 2000.1 kg/h / 1000 for an error, / 100000 for a warning.
    auto check = [](double massMismatch, double energyMismatch) {
        TestVertex unit(Defaults("U", ""));
        unit.mdotin = Value(1000.0, "kg/h");
        unit.mdotout = Value(1000.0, "kg/h");
        unit.cmdot = Value(massMismatch, "kg/h");
        unit.cduty = Value(energyMismatch, "W");
        unit.checkBalance();
        return std::make_pair(unit.errorList().size(), unit.warningList().size());
    };
    EXPECT_EQ(check(2.5, 0.0), std::make_pair(std::size_t(1), std::size_t(0)));
    EXPECT_EQ(check(0.5, 0.0), std::make_pair(std::size_t(0), std::size_t(1)));
    EXPECT_EQ(check(0.01, 0.0), std::make_pair(std::size_t(0), std::size_t(0)));
    EXPECT_EQ(check(0.0, 5.0), std::make_pair(std::size_t(0), std::size_t(0)));
    EXPECT_EQ(check(0.0, 50.0), std::make_pair(std::size_t(0), std::size_t(1)));
    EXPECT_EQ(check(0.0, 2000.0), std::make_pair(std::size_t(1), std::size_t(0)));
    TestVertex unit(Defaults("U", ""));
    unit.cmdot = Value(1.0, "kg/h");
    unit.checkBalance();
    EXPECT_EQ(unit.errorList().at(0), "mass flow unbalance");
}

TEST(FlowPatterns, SimplePatternsHaveOneInletAndOneOutletEdge) {
    const FlowPatternRight<4, 2> right;
    EXPECT_EQ(right.inletCells(), 2);
    EXPECT_EQ(right.outletCells(), 2);
    for (int j = 0; j < 2; ++j) {
        EXPECT_TRUE(right.isInlet(0, j));
        EXPECT_TRUE(right.isOutlet(3, j));
        EXPECT_FALSE(right.isInlet(3, j));
    }
    EXPECT_EQ(right.nextX(1, 1), 2);
    const FlowPatternUp<3, 2> up;
    EXPECT_EQ(up.inletCells(), 3);
    EXPECT_TRUE(up.isInlet(1, 1));
    EXPECT_TRUE(up.isOutlet(1, 0));
    EXPECT_EQ(up.nextY(2, 1), 0);
}

TEST(FlowPatterns, AsciiSpiralFollowsItsMap) {
    const FlowPatternSpiralRight66 spiral;
    EXPECT_EQ(spiral(0, 0), Tarvo::Utility::Direction::right);
    EXPECT_EQ(spiral(1, 0), Tarvo::Utility::Direction::down);
    EXPECT_EQ(spiral(2, 5), Tarvo::Utility::Direction::up);
    // Inlets: cells no other cell flows into; outlets: cells that flow off the grid.
    int inlets = 0, outlets = 0;
    for (int i = 0; i < 6; ++i)
        for (int j = 0; j < 6; ++j) {
            inlets += spiral.isInlet(i, j);
            outlets += spiral.isOutlet(i, j);
        }
    EXPECT_EQ(inlets, spiral.inletCells());
    EXPECT_EQ(outlets, spiral.outletCells());
    EXPECT_EQ(outlets, 2); // the columns flowing up at i = 2 and i = 5 leave at the top
    EXPECT_TRUE(spiral.isOutlet(2, 0));
    EXPECT_TRUE(spiral.isOutlet(5, 0));
    EXPECT_TRUE(spiral.isInlet(0, 5)); // the bottom of the first column flowing up
}

TEST(FlowPatterns, FactoryByName) {
    std::unique_ptr<FlowPattern> p(flowPatterns().create("FlowPatternUp<4,2>"));
    EXPECT_EQ(p->Nx(), 4);
    EXPECT_EQ(p->Ny(), 2);
    EXPECT_EQ((*p)(0, 0), Tarvo::Utility::Direction::up);
    EXPECT_TRUE(flowPatterns().registered("FlowPatternLeft<6,6>"));
    EXPECT_FALSE(flowPatterns().registered("FlowPatternLeft<4,2>"));
    EXPECT_TRUE(flowPatterns().registered("FlowPatternSpiralRight96"));
    EXPECT_THROW(flowPatterns().create("FlowPatternUp<5,5>"), ErrorObjectFactory);
}

TEST(Locks, ASecondSetShowsADeadlock) {
    omp_lock_t a = 0, b = 0;
    omp_init_lock(&a);
    omp_init_lock(&b);
    EXPECT_EQ(b, a + 1);
    testing::internal::CaptureStdout();
    omp_set_lock(&a);
    omp_set_lock(&a);
    omp_unset_lock(&a);
    omp_set_lock(&a);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "!!!!!!!!!!!! DEADLOCK on lock " + std::to_string(a) + "\n");
}
