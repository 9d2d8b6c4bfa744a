#include <tarvo/core/EdgeBase.h>
#include <tarvo/core/KernelStart.h>
#include <tarvo/core/VertexBase.h>
#include <tarvo/flowsheet/TaskGraph.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <unistd.h>

using Tarvo::Persistency::Defaults;

namespace {

std::vector<std::string> calls;

class Unit : public VertexBase {
public:
    explicit Unit(const std::string& tag) : Model({tag, ""}, 0, nullptr, nullptr, nullptr), VertexBase({tag, ""}, 0, nullptr, nullptr, nullptr) {}
    void go(SolutionMode mode, int level) override { calls.push_back(tag() + ":" + std::to_string(mode) + ":" + std::to_string(level)); }
    void check() override {}
    void calculateBalance() override {}
    void calculate(int) override {}
    void setup() override {}
    void initializeNonPersistents() override {}
    ObjectiveNleAd* objective() override { return nullptr; }
};

class Pipe : public EdgeBase {
public:
    explicit Pipe(const std::string& tag) : Model({tag, ""}, 0, nullptr, nullptr, nullptr), EdgeBase({tag, ""}, 0, nullptr, nullptr, nullptr) {}
    void go(SolutionMode, int) override {}
    void calculate(int) override {}
    void setup() override {}
    void initializeNonPersistents() override {}
    ObjectiveNleAd* objective() override { return nullptr; }
};

// A graph built from "A>B" pairs, in a folder of its own for the drawings that scheduling leaves.
class TaskGraphTest : public ::testing::Test {
protected:
    void SetUp() override {
        Tarvo::Core::startKernel();
        char pattern[] = "/tmp/tarvo-graph-XXXXXX";
        folder_ = mkdtemp(pattern);
        previous_ = std::filesystem::current_path();
        std::filesystem::current_path(folder_);
        calls.clear();
    }
    void TearDown() override {
        std::filesystem::current_path(previous_);
        std::filesystem::remove_all(folder_);
        Tarvo::Core::stopKernel();
    }
    void build(const std::vector<std::string>& units, const std::vector<std::pair<std::string, std::string>>& edges) {
        for (const auto& u : units) {
            units_.push_back(std::make_unique<Unit>(u));
            graph_.addVertex(units_.back().get());
        }
        for (const auto& [from, to] : edges) {
            pipes_.push_back(std::make_unique<Pipe>(from + to));
            graph_.addEdge(from, to, pipes_.back().get());
        }
    }
    std::vector<std::string> order() const {
        std::vector<std::string> tags;
        for (VertexBase* v : graph_.order()) tags.push_back(v->tag());
        return tags;
    }
    static std::size_t position(const std::vector<std::string>& v, const std::string& tag) {
        return std::find(v.begin(), v.end(), tag) - v.begin();
    }

    std::vector<std::unique_ptr<Unit>> units_;
    std::vector<std::unique_ptr<Pipe>> pipes_;
    TaskGraph graph_;
    std::string folder_;
    std::filesystem::path previous_;
};

} // namespace

TEST_F(TaskGraphTest, UnitsRunByFallingLevel) {
    build({"source", "A", "B", "C", "D", "sink"},
          {{"source", "A"}, {"A", "B"}, {"A", "C"}, {"B", "D"}, {"C", "D"}, {"D", "sink"}});
    testing::internal::CaptureStdout();
    Tarvo::Utility::setVerbosityGlobal(5);
    graph_.doSchedule(0, 1, nullptr);
    Tarvo::Utility::setVerbosityGlobal(2);
    const std::string log = testing::internal::GetCapturedStdout();
    EXPECT_NE(log.find("TaskGraph is DAG ? True"), std::string::npos);
    EXPECT_NE(log.find("Done (single core)"), std::string::npos);
    EXPECT_NE(log.find("Speedup = 1\n"), std::string::npos);
    EXPECT_TRUE(graph_.scheduled());
    EXPECT_EQ(graph_.makeSpan(), 6.0);
    const auto run = order();
    ASSERT_EQ(run.size(), 6u);
    EXPECT_EQ(run.front(), "source");
    EXPECT_EQ(run.back(), "sink");
    EXPECT_LT(position(run, "A"), position(run, "B"));
    EXPECT_LT(position(run, "A"), position(run, "C"));
    EXPECT_LT(position(run, "B"), position(run, "D"));
    EXPECT_LT(position(run, "C"), position(run, "D"));
    EXPECT_EQ(units_[2]->level, units_[3]->level); // B and C
    EXPECT_TRUE(std::filesystem::exists("tasks4.svg"));
    EXPECT_TRUE(std::filesystem::exists("cpMisf.dot"));
}

TEST_F(TaskGraphTest, APassRunsEveryUnitOnceWithoutDeadlock) {
    build({"source", "A", "B", "sink"}, {{"source", "A"}, {"A", "B"}, {"B", "sink"}, {"A", "sink"}});
    graph_.doSchedule(0, 1, nullptr);
    testing::internal::CaptureStdout();
    graph_.singlePass(Calculatable::sequential, 0);
    graph_.singlePass(Calculatable::onePass, 1); // no objective: these units are run simultaneously
    EXPECT_EQ(testing::internal::GetCapturedStdout().find("DEADLOCK"), std::string::npos);
    EXPECT_EQ(calls, (std::vector<std::string>{"source:1:1", "A:1:1", "B:1:1", "sink:1:1", "source:2:2", "A:2:2",
                                               "B:2:2", "sink:2:2"}));
}

TEST_F(TaskGraphTest, AnUncutRecycleIsProposedAndRefused) {
    // Two circuits share A>B: A>B>A and A>B>C>A.
    build({"source", "A", "B", "C", "sink"},
          {{"source", "A"}, {"A", "B"}, {"B", "A"}, {"B", "C"}, {"C", "A"}, {"C", "sink"}});
    EXPECT_FALSE(graph_.isDag());
    testing::internal::CaptureStdout();
    Tarvo::Utility::setVerbosityGlobal(5);
    try {
        graph_.doSchedule(0, 1, nullptr);
        ADD_FAILURE() << "a cycle was scheduled";
    } catch (const ErrorRunTime& e) {
        EXPECT_NE(e.message().find("recycle that no cut stream opens"), std::string::npos);
    }
    Tarvo::Utility::setVerbosityGlobal(2);
    const std::string log = testing::internal::GetCapturedStdout();
    EXPECT_NE(log.find("TaskGraph is DAG ? False"), std::string::npos);
    EXPECT_NE(log.find("Cutting stream: AB with weight = 2"), std::string::npos) << log;
    EXPECT_FALSE(graph_.scheduled());
}

TEST_F(TaskGraphTest, EdgesAreRemovedAndTurned) {
    build({"source", "A", "B", "sink"}, {{"source", "A"}, {"A", "B"}, {"B", "A"}, {"B", "sink"}});
    EXPECT_FALSE(graph_.isDag());
    graph_.revertEdge("BA");
    EXPECT_TRUE(graph_.isDag());
    EXPECT_EQ(graph_.edgeCount(), 4u); // A>B twice now: parallel streams are kept
    graph_.removeEdge("A", "B");
    EXPECT_EQ(graph_.edgeCount(), 2u);
    graph_.removeEdge("Bsink");
    EXPECT_EQ(graph_.edgeCount(), 1u);
}
