#include <tarvo/core/MonotoneRoot.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {
constexpr double none = std::numeric_limits<double>::quiet_NaN();
}

// ln(x) - 1 on [0.1, 100], root e: with its slope from any start, and without one, by secants after a
// probe; the answer to the last bits, in far fewer evaluations than bisection.
TEST(MonotoneRoot, FindsTheRootWithOrWithoutASlope) {
    for (const bool slope : {true, false}) {
        for (const double start : {0.1, 2.0, 100.0}) {
            MonotoneRoot root;
            const auto outcome = root.find(
                [&](double x) { return MonotoneRoot::Sample{std::log(x) - 1, slope ? 1 / x : none}; }, 0.1, 100, start,
                1e-15, slope ? none : 0.01);
            EXPECT_EQ(outcome, MonotoneRoot::Outcome::root) << start;
            EXPECT_NEAR(root.x(), std::exp(1.0), 1e-14) << start;
            EXPECT_LT(root.evaluations(), 20) << start; // bisection would take some fifty
        }
    }
}

// A root beyond either end of the range is known as such at that end, which a step out of the range tries
// at once; a step function stops where it crosses zero, to the last bit.
TEST(MonotoneRoot, TellsARootOutsideTheRangeAndStopsAtAJump) {
    MonotoneRoot root;
    const auto line = [](double offset) {
        return [offset](double x) { return MonotoneRoot::Sample{x - offset, 1.0}; };
    };
    EXPECT_EQ(root.find(line(-5), 0, 10, 3, 1e-12), MonotoneRoot::Outcome::below);
    EXPECT_EQ(root.x(), 0.0);
    EXPECT_EQ(root.evaluations(), 2);
    EXPECT_EQ(root.find(line(15), 0, 10, 3, 1e-12), MonotoneRoot::Outcome::above);
    EXPECT_EQ(root.x(), 10.0);

    // -1 below pi, +1 from pi on, with a slope that says nothing.
    const double pi = std::acos(-1.0);
    EXPECT_EQ(root.find([&](double x) { return MonotoneRoot::Sample{x < pi ? -1.0 : 1.0, 0.0}; }, 0, 10, 1, 1e-12),
              MonotoneRoot::Outcome::root);
    EXPECT_NEAR(root.x(), pi, 4e-15);
    EXPECT_EQ(std::fabs(root.at().value), 1.0);

    EXPECT_EQ(root.find([](double) { return MonotoneRoot::Sample{none, none}; }, 0, 1, 0.5, 1e-12),
              MonotoneRoot::Outcome::undefined);
}
