// Homotopy runs over the curve of the tests: the points of the line, the state each starts from, the stop
// at the first failure and the refusals before the first point.
#include "Curve.h"

#include <tarvo/core/Homotopy.h>
#include <tarvo/core/KernelStart.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

class HomotopyTest : public ::testing::Test {
protected:
    void SetUp() override {
        Tarvo::Core::startKernel();
        if (!NodeFactory::registered("Curve"))
            NodeFactory::registerType<Curve>("Curve", "Test curve", "unit", false, {}, {}, {}, "", 1, 1);
        curve_.reset(dynamic_cast<Curve*>(NodeFactory::create("Curve", {"c", ""}, 0, nullptr, nullptr, nullptr)));
    }
    void TearDown() override {
        curve_.reset();
        Tarvo::Core::stopKernel();
    }
    // Runs x from `start` to `end` in `points`, with a kept at 3; the errors that the run raises.
    std::string run(double start, double end, int points) {
        HomotopyInput in;
        in.points = points;
        in.controlled = {{"x", start, end}, {"a", 3, 3}};
        Homotopy h(in);
        h.attach(curve_.get());
        testing::internal::CaptureStderr();
        try {
            h.execute();
        } catch (Error& e) {
            progress_ = testing::internal::GetCapturedStderr();
            return e.message();
        }
        progress_ = testing::internal::GetCapturedStderr();
        good_ = h.goodPoints();
        return "";
    }

    std::unique_ptr<Curve> curve_;
    std::string progress_;
    int good_ = -1;
};

} // namespace

TEST(HomotopyVariable, PointsRunFromStartToEnd) {
    const HomotopyVariable v{"x", 20, 200};
    EXPECT_EQ(v.value(0, 10), 20.0);
    EXPECT_EQ(v.value(9, 10), 200.0);
    EXPECT_EQ(v.value(1, 2), 200.0);
    EXPECT_DEATH(v.value(10, 10), "point < points");
}

// Every point is solved from the one before; the model ends at the end of the line.
TEST_F(HomotopyTest, CarriesTheModelAlongTheLine) {
    ASSERT_EQ(run(20, 200, 10), "");
    EXPECT_EQ(good_, 10);
    EXPECT_EQ(curve_->calculations, 10);
    EXPECT_EQ(curve_->x.toDouble(), 200.0);
    EXPECT_EQ(curve_->a.toDouble(), 3.0); // start equal to end: the same value at every point
    EXPECT_EQ(curve_->y.toDouble(), 600.0);
    EXPECT_EQ(curve_->seen.toDouble(), 3 * 180.0); // the result of point 8
    EXPECT_NE(progress_.find("point 10 / 10: [x = 200] [a = 3] converged in "), std::string::npos) << progress_;
}

// The first failed point ends the run and puts the model back to the last good one.
TEST_F(HomotopyTest, StopsAtTheFirstFailureAtTheLastGoodPoint) {
    curve_->low = Value(55.0, "Pa");
    ASSERT_EQ(run(20, 200, 10), "");
    EXPECT_EQ(good_, 2); // 20 and 40; 60 fails
    EXPECT_EQ(curve_->calculations, 3);
    EXPECT_EQ(curve_->x.toDouble(), 40.0);
    EXPECT_EQ(curve_->y.toDouble(), 120.0);
    EXPECT_NE(progress_.find("point 3 / 10: [x = 60] [a = 3] failed with 1 error in "), std::string::npos) << progress_;

    // A failure at the first point leaves the model as it was before the run.
    curve_->low = Value(0.0, "Pa");
    ASSERT_EQ(run(20, 200, 10), "");
    EXPECT_EQ(good_, 0);
    EXPECT_EQ(curve_->x.toDouble(), 40.0);
    EXPECT_EQ(curve_->y.toDouble(), 120.0);
}

TEST_F(HomotopyTest, FewerThanTwoPointsAndWrongPathsAreRefusedBeforeAnyCalculation) {
    EXPECT_NE(run(1, 2, 1).find("a homotopy needs at least 2 points"), std::string::npos);
    EXPECT_NE(run(1, 2, 0).find("a homotopy needs at least 2 points"), std::string::npos);
    HomotopyInput in;
    in.points = 2;
    in.controlled = {{"x", 1, 2}, {"GM.A", 1, 2}};
    Homotopy h(in);
    h.attach(curve_.get());
    try {
        h.execute();
        ADD_FAILURE();
    } catch (Error& e) {
        EXPECT_NE(e.message().find("non-existant tag GM"), std::string::npos) << e.message();
    }
    EXPECT_EQ(curve_->calculations, 0);
    EXPECT_EQ(curve_->x.toDouble(), 1.0);
}
