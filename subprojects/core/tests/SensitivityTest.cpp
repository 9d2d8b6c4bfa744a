// Sensitivity runs over the curve of the tests: the walk through the grid in each order, the state each
// round starts from, a failed round, and the refusals before the first round.
#include "Curve.h"

#include <tarvo/core/KernelStart.h>
#include <tarvo/core/Sensitivity.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <sstream>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

using Pairs = std::vector<std::pair<double, double>>;

class SensitivityTest : public ::testing::Test {
protected:
    void SetUp() override {
        Tarvo::Core::startKernel();
        if (!NodeFactory::registered("Curve"))
            NodeFactory::registerType<Curve>("Curve", "Test curve", "unit", false, {}, {}, {}, "", 1, 1);
        curve_.reset(dynamic_cast<Curve*>(NodeFactory::create("Curve", {"c", ""}, 0, nullptr, nullptr, nullptr)));
        folder_ = fs::temp_directory_path() / ("tarvo-sensitivity-" + std::to_string(::getpid()));
        fs::create_directories(folder_);
    }
    void TearDown() override {
        curve_.reset();
        fs::remove_all(folder_);
        Tarvo::Core::stopKernel();
    }

    static SensitivityInput input(std::vector<ControlledVariable> controlled, const std::string& order = "") {
        SensitivityInput in;
        in.type = "Curve";
        in.id = 0;
        in.order = order;
        in.controlled = std::move(controlled);
        in.monitored = {{"y", "Result", ""}, {"seen", "", "bar"}};
        return in;
    }
    SensitivityResult run(const SensitivityInput& in) {
        Sensitivity s(in, results());
        s.attach(curve_.get());
        s.execute();
        return s.result();
    }
    std::string results() const { return (folder_ / "SensitivityResults.xml").string(); }
    static Pairs controlledPairs(const SensitivityResult& r) {
        Pairs pairs;
        for (const auto& row : r.rows) pairs.emplace_back(row.controlled.at(0), row.controlled.at(1));
        return pairs;
    }
    std::string errorOf(const SensitivityInput& in) {
        try {
            run(in);
        } catch (Error& e) {
            return e.message();
        }
        return "";
    }

    std::unique_ptr<Curve> curve_;
    fs::path folder_;
};

} // namespace

// Three values of x and two of a, each ordering as its definition walks the grid: the last variable runs
// fastest, the Gray code moves one variable by one step, the spiral starts in the middle.
TEST_F(SensitivityTest, TwoVariablesOfThreeAndTwoPointsGiveSixRoundsInTheOrderOfEachOrdering) {
    const std::vector<ControlledVariable> grid{{"x", "x", "", 1, 3, 3}, {"a", "a", "", 10, 20, 2}};
    const SensitivityResult lexicographical = run(input(grid));
    EXPECT_EQ(controlledPairs(lexicographical), (Pairs{{1, 10}, {1, 20}, {2, 10}, {2, 20}, {3, 10}, {3, 20}}));
    for (std::size_t r = 0; r < lexicographical.rows.size(); ++r) {
        const auto& row = lexicographical.rows[r];
        EXPECT_EQ(row.round, static_cast<int>(r));
        EXPECT_EQ(row.errors, 0);
        EXPECT_EQ(row.iterations, 2);
        EXPECT_EQ(row.monitored.at(0), row.controlled[0] * row.controlled[1]); // y = a x
    }
    EXPECT_EQ(controlledPairs(run(input(grid, "boustrophedon"))),
              (Pairs{{1, 10}, {1, 20}, {2, 20}, {2, 10}, {3, 10}, {3, 20}}));

    const Pairs spiral = controlledPairs(run(input(grid, "quasi-spiral")));
    ASSERT_EQ(spiral.size(), 6u);
    EXPECT_EQ(spiral.front(), (std::pair<double, double>{2, 20})); // index 3 / 2 and 2 / 2
    EXPECT_EQ((std::set<std::pair<double, double>>(spiral.begin(), spiral.end()).size()), 6u);
    for (std::size_t r = 1; r < spiral.size(); ++r) {
        EXPECT_LE(std::abs(spiral[r].first - spiral[r - 1].first), 1.0) << r; // one step of x: 1
        EXPECT_LE(std::abs(spiral[r].second - spiral[r - 1].second), 10.0) << r; // of a: 10
    }
}

// Rounds 2 and 3 of five fail: each is recorded with its error, starts from the state of round 1, and so does
// round 4, which succeeds; the run goes on to its end.
TEST_F(SensitivityTest, FailedRoundsAreRecordedAndTheNextStartsFromTheLastGoodState) {
    curve_->low = Value(2.5, "Pa");
    curve_->high = Value(4.5, "Pa");
    const SensitivityResult r = run(input({{"x", "", "", 1, 5, 5}}));
    ASSERT_EQ(r.rows.size(), 5u);
    const std::vector<int> errors{r.rows[0].errors, r.rows[1].errors, r.rows[2].errors, r.rows[3].errors,
                                  r.rows[4].errors};
    EXPECT_EQ(errors, (std::vector<int>{0, 0, 1, 1, 0}));
    // y of round 1 is 2 Pa, 2e-5 bar; rounds 2, 3 and 4 begin there.
    for (int round : {2, 3, 4}) EXPECT_DOUBLE_EQ(r.rows[round].monitored[1], 2e-5) << round;
    EXPECT_DOUBLE_EQ(r.rows[1].monitored[1], 1e-5);
    EXPECT_EQ(r.rows[4].monitored[0], 5.0);
}

// A unit converts the controlled values and the recorded ones; one that does not fit the item, or a path that
// is not in the model, is refused before anything is calculated.
TEST_F(SensitivityTest, UnitsConvertAndWrongOnesAreRefusedBeforeTheFirstRound) {
    const SensitivityResult r = run(input({{"x", "", "bar", 1, 2, 2}}));
    ASSERT_EQ(r.rows.size(), 2u);
    EXPECT_EQ(r.rows[1].controlled[0], 2.0);        // in bar
    EXPECT_EQ(r.rows[1].monitored[0], 2e5);         // y in its own unit, Pa
    EXPECT_EQ(curve_->calculations, 2);

    EXPECT_NE(errorOf(input({{"x", "", "K", 1, 2, 2}})).find("units"), std::string::npos);
    EXPECT_NE(errorOf(input({{"GM.x", "", "", 1, 2, 2}})).find("non-existant tag GM"), std::string::npos);
    SensitivityInput badMonitor = input({{"x", "", "", 1, 2, 2}});
    badMonitor.monitored.push_back({"z", "", ""});
    EXPECT_NE(errorOf(badMonitor).find("non-existant tag z"), std::string::npos);
    EXPECT_EQ(curve_->calculations, 2);
}

TEST_F(SensitivityTest, StartingRoundsPointsAndUndefinedInputs) {
    // One point: the start only.
    const SensitivityResult one = run(input({{"x", "", "", 7, 9, 1}}));
    ASSERT_EQ(one.rows.size(), 1u);
    EXPECT_EQ(one.rows[0].controlled[0], 7.0);

    SensitivityInput late = input({{"x", "", "", 1, 4, 4}});
    late.startingRound = 2;
    const SensitivityResult rest = run(late);
    ASSERT_EQ(rest.rows.size(), 2u);
    EXPECT_EQ(rest.rows[0].round, 2);
    EXPECT_EQ(rest.rows[0].controlled[0], 3.0);
    late.startingRound = 4;
    EXPECT_NE(errorOf(late).find("Starting round outside upper limit"), std::string::npos);

    SensitivityInput none = input({});
    EXPECT_NE(errorOf(none).find("Sensitivity not defined"), std::string::npos);
    none = input({{"x", "", "", 1, 2, 0}});
    EXPECT_NE(errorOf(none).find("Sensitivity not defined"), std::string::npos);
    Sensitivity unattached(input({{"x", "", "", 1, 2, 2}}), results());
    try {
        unattached.execute();
        ADD_FAILURE();
    } catch (Error& e) {
        EXPECT_NE(e.message().find("Model error"), std::string::npos);
    }
}

TEST(ControlledVariable, StepsAndTheLimitOfPoints) {
    const ControlledVariable v("x", "", "", 10, 40, 7);
    EXPECT_EQ(v.step(), 5.0);
    EXPECT_EQ(v.value(6), 40.0);
    EXPECT_EQ(ControlledVariable("x", "", "", 10, 40, 1).step(), 30.0);
    EXPECT_TRUE(v == ControlledVariable("x", "", "", 10 + 1e-6, 40, 7));
    EXPECT_FALSE(v == ControlledVariable("x", "", "", 10 + 1e-4, 40, 7));
    EXPECT_DEATH(ControlledVariable("x", "", "", 10, 40, 1000), "points <= 999");
}

// The files of the results, rewritten after every round: the XML rows, a CSV table with headings and units,
// and a picture with a panel per monitored variable and a cross for the failed round.
TEST_F(SensitivityTest, ResultFilesHoldEveryRound) {
    curve_->low = Value(1.5, "Pa");
    curve_->high = Value(2.5, "Pa");
    const SensitivityResult r = run(input({{"x", "Setting, first", "", 1, 3, 3}, {"a", "", "", 1, 2, 2}}));
    const auto read = [&](const char* ending) {
        std::ifstream in(folder_ / (std::string("SensitivityResults") + ending));
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    };
    const std::string xml = read(".xml");
    std::size_t results = 0;
    for (auto at = xml.find("<result>"); at != std::string::npos; at = xml.find("<result>", at + 1)) ++results;
    EXPECT_EQ(results, 6u);
    EXPECT_NE(xml.find("    <controlled>\n      <variable>2</variable>\n      <variable>1</variable>\n"),
              std::string::npos)
        << xml;

    std::istringstream csv(read(".csv"));
    std::string line;
    std::getline(csv, line);
    // A variable without unit in the input takes its item's, as the reports write it.
    const std::string pascal = Value(1.0, "Pa").unitText();
    EXPECT_EQ(line, "round,time [s],errors,warnings,iterations,\"Setting, first [" + pascal + "]\",a,Result [" + pascal +
                        "],seen [bar]\r");
    int lines = 0;
    while (std::getline(csv, line)) ++lines;
    EXPECT_EQ(lines, 6);

    const std::string svg = read(".svg");
    EXPECT_NE(svg.find(">Setting, first [" + pascal + "]</text>"), std::string::npos);
    EXPECT_NE(svg.find(">Result [" + pascal + "]</text>"), std::string::npos);
    EXPECT_NE(svg.find(">seen [bar]</text>"), std::string::npos);
    EXPECT_NE(svg.find(">a = 2</text>"), std::string::npos); // a line per value of the second variable
    EXPECT_NE(svg.find(">failed round</text>"), std::string::npos);
    EXPECT_EQ(r.rows[2].errors + r.rows[3].errors, 2); // x = 2 with each a
    EXPECT_FALSE(fs::exists(folder_ / "SensitivityResults.xml.part"));
}
