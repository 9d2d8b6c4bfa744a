#include "FlowsheetFixtures.h"
#include "TemporaryDatabase.h"

#include <tarvo/components/ListComponents.h>
#include <tarvo/core/Jacobian.h>
#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/persistency/PersistencyPostgres.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/units/Divider.h>
#include <tarvo/units/Separator.h>

#include <algorithm>
#include <cmath>

using Tarvo::Persistency::Defaults;

namespace {
// The feed of the loop in kg/h and the product splits of its separator, as the fixture sets them.
const double feedFlow[] = {360, 720, 1440, 720, 360};
const double productSplit[] = {0.7, 0.5, 0.9, 0.3, 0.6};

double relative(double a, double b) {
    return std::fabs(a - b) / std::max(std::fabs(b), 1e-300);
}

double mdot(Object& sheet, const std::string& stream) {
    return dynamic_cast<Stream&>(sheet.at(stream)).Tphase->mdot.toDouble("kg/h");
}

bool hasMessage(const std::vector<std::string>& list, const std::string& text) {
    for (const std::string& s : list)
        if (s == text) return true;
    return false;
}
} // namespace

// The loop converged by each method of its cuts, and simultaneously, gives the steady state: all of the
// feed as product, and (1 - s) / s of it in the recycle.
TEST_F(FlowsheetTest, RecycleLoopConvergesToOneAnswerByEveryMethod) {
    auto direct = make<LoopSheet>("TestLoop", Defaults().setInteger("method", 1));
    direct->go(Calculatable::sequential, 0);
    auto wegstein = make<LoopSheet>("TestLoop", Defaults().setInteger("method", 3));
    wegstein->go(Calculatable::sequential, 0);
    // With newton the sequential passes are left out: calculate goes straight to the simultaneous solve.
    auto newton = make<LoopSheet>("TestLoop", Defaults().setInteger("method", 2));
    newton->calculate(0);
    // The usual road: sequential pre-computation by direct steps, then the simultaneous solve.
    auto simultaneous = make<LoopSheet>("TestLoop", Defaults().setInteger("method", 1));
    simultaneous->calculate(0);

    for (LoopSheet* sheet : {direct.get(), wegstein.get(), newton.get(), simultaneous.get()}) {
        sheet->reportMessages();
        EXPECT_TRUE(sheet->errorList().empty())
            << sheet->method.value() << ": " << sheet->errorList().front();
        for (int i = 0; i < NCOMPONENTS; ++i) {
            EXPECT_LT(relative(flow(*sheet, "PROD", i), feedFlow[i]), 1e-8)
                << sheet->method.value() << " " << i;
            const double recycle = (1 - productSplit[i]) / productSplit[i] * feedFlow[i];
            EXPECT_LT(relative(flow(*sheet, "REC", i), recycle), 1e-8) << sheet->method.value() << " " << i;
            EXPECT_LT(relative(flow(*sheet, "REC", i), flow(*direct, "REC", i)), 1e-8);
            EXPECT_LT(relative(flow(*sheet, "MIXED", i), flow(*direct, "MIXED", i)), 1e-8);
        }
        EXPECT_LT(relative(mdot(*sheet, "PROD"), mdot(*sheet, "FEED")), 1e-10) << sheet->method.value();
        EXPECT_NEAR(dynamic_cast<Stream&>(sheet->at("PROD")).P.toDouble(), 2e5, 1e-6);
    }
    // Direct substitution needs many passes at these recycle ratios, Wegstein's acceleration far fewer.
    EXPECT_GT(direct->NITER.value(), 50);
    EXPECT_LT(wegstein->NITER.value(), direct->NITER.value() / 2);
    for (const auto& [mode, level] : newton->calls)
        EXPECT_NE(mode, Calculatable::sequential);
}

// A design equation of the flowsheet: the water split that makes the recycle carry 360 kg/h of water, that is
// 1440 / (1440 + 360) of the feed's water, converged with the cuts.
TEST_F(FlowsheetTest, UserEquationIsConvergedWithTheCuts) {
    auto sequential = make<LoopSheet>("TestLoop", Defaults().setInteger("design", 1).setInteger("method", 3));
    sequential->go(Calculatable::sequential, 0);
    auto simultaneous =
        make<LoopSheet>("TestLoop", Defaults().setInteger("design", 1).setInteger("method", 2));
    simultaneous->calculate(0);
    for (LoopSheet* sheet : {sequential.get(), simultaneous.get()}) {
        EXPECT_TRUE(sheet->errorList().empty()) << sheet->errorList().front();
        EXPECT_EQ(sheet->enableAssignment.size(), 7u); // pressure, five flows and the design equation
        EXPECT_LT(relative(dynamic_cast<Separator&>(sheet->child("SEP")).outSplit[0][2].toDouble(), 0.8),
                  1e-9);
        EXPECT_LT(relative(flow(*sheet, "REC", 2), 360), 1e-9);
        EXPECT_LT(relative(flow(*sheet, "PROD", 2), 1440), 1e-9);
    }
}

// The design equation s0 - s1 = 0.2 is regular although the derivatives of its row, 1 and -1, add up to
// zero: no degenerate equation, an exact Jacobian, and a solve that meets both equations of the divider,
// s1 = s2 = (1 - 0.2) / 3 and s0 = s1 + 0.2, each outlet carrying its share of every component's feed.
TEST_F(FlowsheetTest, DesignEquationWhoseDerivativesCancelInSignIsRegular) {
    auto sheet = make<SplitSheet>("TestSplit");
    sheet->go(Calculatable::onePass, 0); // the schedule and the unknowns
    const unsigned n = sheet->size();
    std::vector<double> x(n), y(n);
    sheet->init(x.data());
    sheet->scalex(x.data());
    Jacobian jacobian(n);
    (*sheet)(x.data(), y.data(), &jacobian);
    EXPECT_EQ(sheet->warningList(), std::vector<std::string>{});
    EXPECT_EQ(jacobian(0, 0), 1.0);
    EXPECT_EQ(jacobian(0, 1), -1.0);

    sheet->calculate(0);
    EXPECT_TRUE(sheet->errorList().empty()) << sheet->errorList().front();
    const double rest = (1 - 0.2) / 3;
    const double splits[] = {rest + 0.2, rest, rest};
    const auto& divider = dynamic_cast<Divider&>(sheet->child("D"));
    const char* outlets[] = {"A", "B", "C"};
    for (int j = 0; j < 3; ++j) {
        EXPECT_NEAR(divider.outSplit[j].toDouble(), splits[j], 1e-12) << j;
        for (int i = 0; i < NCOMPONENTS; ++i)
            EXPECT_LT(relative(flow(*sheet, outlets[j], i), splits[j] * 3600.0 / NCOMPONENTS), 1e-10)
                << j << " " << i;
    }
}

// No state of the loop recycles negative water: the split of water runs towards one of its bounds, 0 or 1,
// where the design equation still misses. The solve stops short of its test, and that is a failure of the
// flowsheet, said once, whether what it misses by is large or small.
TEST_F(FlowsheetTest, UnreachableDesignIsASimultaneousConvergenceFailure) {
    for (int water : {-360, -4}) {
        auto loop = make<LoopSheet>("TestLoop", Defaults().setInteger("design", 1).setInteger("method", 2));
        loop->water = water;
        loop->calculate(0);
        const auto& errors = loop->errorList();
        EXPECT_EQ(std::count(errors.begin(), errors.end(), "simultaneous convergence failure;"), 1) << water;
        const double split = dynamic_cast<Separator&>(loop->child("SEP")).outSplit[0][2].toDouble();
        EXPECT_TRUE(split < 0.01 || split > 0.99) << water << " " << split;
    }
}

TEST_F(FlowsheetTest, SecondCalculationIsSimultaneousAlone) {
    auto loop = make<LoopSheet>("TestLoop");
    loop->calculate(0);
    const int passes = static_cast<int>(loop->calls.size());
    EXPECT_EQ(loop->calls.front().first, Calculatable::sequential);
    EXPECT_EQ(loop->calls.back().first, Calculatable::onePass);
    loop->calculate(0);
    for (std::size_t k = passes; k < loop->calls.size(); ++k)
        EXPECT_EQ(loop->calls[k].first, Calculatable::onePass);
    EXPECT_GE(loop->NITER.value(), 0);
    EXPECT_TRUE(loop->errorList().empty());
}

TEST_F(FlowsheetTest, SequentialConvergenceStopsAtItsLimit) {
    // A sequential limit below the default of 5 passes leaves 5.
    auto loop = make<LoopSheet>("TestLoop", Defaults().setInteger("passes", 1));
    loop->go(Calculatable::sequential, 0);
    EXPECT_EQ(loop->NITER.value(), 5);
    EXPECT_EQ(
        loop->errorList(),
        std::vector<std::string>{"flowsheet sequential convergence failure: maximum iterations reached;"});

    // Without cuts one pass is all.
    auto sheet = bare();
    sheet->addUnit("Mixer", {"M", "mixer"});
    sheet->addStream("StreamSimpleLiquid", {"F", "feed"}, "source", "out", "M", "in");
    sheet->addStream("StreamSimpleLiquid", {"P", "product"}, "M", "out", "sink", "in");
    sheet->go(Calculatable::sequential, 0);
    EXPECT_EQ(sheet->NITER.value(), 0);
    EXPECT_EQ(sheet->seqErr.toDouble(), 0.0);
    EXPECT_NEAR(mdot(*sheet, "P"), mdot(*sheet, "F"), 1e-9);
}

TEST_F(FlowsheetTest, ADisabledAssignmentLeavesItsTearValueAlone) {
    auto loop = make<LoopSheet>("TestLoop");
    const double before = flow(*loop, "RECbis", 1);
    loop->go(Calculatable::sequential, 0); // makes the assignments: pressure, then the flows of CO2, CH4, ...
    loop->enableAssignment.value()[2] = 0; // CH4
    loop->go(Calculatable::sequential, 0);
    const double first = flow(*loop, "RECbis", 1);
    loop->go(Calculatable::sequential, 0);
    EXPECT_EQ(flow(*loop, "RECbis", 1), first);
    EXPECT_NE(flow(*loop, "RECbis", 1), before);
    EXPECT_LT(relative(flow(*loop, "REC", 0), 0.3 / 0.7 * 360), 1e-8);
}

// The loop as a unit of another flowsheet runs one level deeper, and its messages rise with their path.
TEST_F(FlowsheetTest, NestedFlowsheetRunsAtTheNextLevelAndReportsUpwards) {
    auto plant = make<PlantSheet>("TestPlant");
    plant->calculate(0);
    plant->reportMessages();
    EXPECT_TRUE(plant->errorList().empty()) << plant->errorList().front();
    auto& loop = dynamic_cast<LoopSheet&>(plant->child("G"));
    ASSERT_FALSE(loop.calls.empty());
    for (const auto& [mode, level] : plant->calls)
        EXPECT_EQ(level, 0);
    // One level below the plant in its passes; the residuals of a simultaneous solve start at 0 again.
    for (const auto& [mode, level] : loop.calls)
        EXPECT_TRUE(mode != Calculatable::sequential || level == 1);
    for (int i = 0; i < NCOMPONENTS; ++i) {
        EXPECT_LT(relative(flow(*plant, "PROD", i), 1440), 1e-8) << i;
        EXPECT_LT(relative(flow(loop, "REC", i), (1 - productSplit[i]) / productSplit[i] * 1440), 1e-8) << i;
    }
    EXPECT_LT(relative(mdot(*plant, "PROD"), mdot(*plant, "FEED")), 1e-10);

    // Everything to the product: the empty recycle warns, inside the loop, and the plant hears of it.
    auto& separator = dynamic_cast<Separator&>(loop.child("SEP"));
    for (int i = 0; i < NCOMPONENTS; ++i)
        separator.outSplit[0][i] = 1.0;
    plant->go(Calculatable::sequential, 0);
    plant->reportMessages();
    EXPECT_TRUE(hasMessage(plant->warningList(), "zero material flow @ G.REC"))
        << plant->warningList().size();
}

// The same loop calculated from the store gives what it gives in memory.
TEST_F(FlowsheetTest, StoredFlowsheetCalculatesAsInMemory) {
    TemporaryDatabase database;
    PersistencyPostgres store(database.connection());
    auto memory = make<LoopSheet>("TestLoop", Defaults().setInteger("method", 3));
    const int id = make<LoopSheet>("TestLoop", Defaults().setInteger("method", 3))->insert(&store);
    memory->calculate(0);

    std::unique_ptr<Node> node(
        NodeFactory::create("TestLoop", Defaults(), static_cast<uint32_t>(id), &store, nullptr, nullptr));
    auto& stored = dynamic_cast<LoopSheet&>(*node);
    stored.initializeNonPersistents();
    EXPECT_EQ(stored.method.value(), 3);
    EXPECT_EQ(dynamic_cast<Stream&>(stored.child("RECbis")).cutsource.value(), "REC");
    stored.check();
    stored.calculate(0);
    EXPECT_TRUE(stored.errorList().empty()) << stored.errorList().front();
    for (const char* stream : {"PROD", "REC", "RECbis", "MIXED"})
        for (int i = 0; i < NCOMPONENTS; ++i)
            EXPECT_LT(relative(flow(stored, stream, i), flow(*memory, stream, i)), 1e-12)
                << stream << " " << i;
    EXPECT_EQ(stored.NITER.value(), memory->NITER.value());
    // The results go back to the store and come out again.
    stored.update(&store);
    std::unique_ptr<Node> again(
        NodeFactory::create("TestLoop", Defaults(), static_cast<uint32_t>(id), &store, nullptr, nullptr));
    EXPECT_DOUBLE_EQ(flow(dynamic_cast<Object&>(*again), "REC", 2), flow(*memory, "REC", 2));
}
