#include <tarvo/flowsheet/SequentialAssembly.h>

#include <gtest/gtest.h>

TEST(Assignment, DirectStepWithDampingAndLimit) {
    Value x(100.0, "K");
    Assignment a(x, Value(200.0, "K"), "x");
    a.directstep(0.0, 0.1); // limited to |100 * 0.1|
    EXPECT_EQ(x.toDouble(), 110.0);
    EXPECT_EQ(a.oldLHS.toDouble(), 100.0);
    a.directstep(0.5, 1.0); // half of the remaining 90
    EXPECT_EQ(x.toDouble(), 155.0);
    Value y(0.0);
    Assignment b(y, Value(5.0), "y");
    b.directstep(0.0, 0.1); // a limit of 0 leaves the step alone
    EXPECT_EQ(y.toDouble(), 5.0);
}

TEST(Assignment, WegsteinFallsBackAndAcceleratesALinearMap) {
    Value x(1.0);
    Assignment a(x, Value(0.0), "x");
    a.oldLHS = x; // no secant yet: a plain substitution
    a.rhs = Value(3.0);
    a.wegsteinstep();
    EXPECT_EQ(x.toDouble(), 3.0);
    // For the map g(x) = 0.5 x + 1 (fixed point 2) one secant step lands on the fixed point.
    Value z(4.0);
    Assignment b(z, Value(3.0), "z");
    b.oldLHS = Value(0.0);
    b.oldRHS = Value(1.0);
    b.wegsteinstep();
    EXPECT_NEAR(z.toDouble(), 2.0, 1e-15);
}

TEST(Assignment, RelativeChange) {
    Value x(0.0);
    Assignment a(x, Value(101.0), "x");
    a.oldLHS = Value(99.0);
    EXPECT_DOUBLE_EQ(a.delta(), 2.0 / 101.0);
}

namespace {
// Assemblies whose second assignment is switched off.
struct SecondOff : SequentialAssembly {
    bool enabled(std::list<Assignment*>::const_iterator it) const override { return it != std::next(ass_.begin()); }
};
} // namespace

TEST(SequentialAssembly, BuiltOnceThenRefreshedAndSwitchedOff) {
    SecondOff assembly;
    Value p(2.0, "bar"), q(1.0);
    auto it = assembly.assignments().end();
    assembly.makeAssignment(it, p, Value(3.0, "bar"), "P", "Pressure of stage [i]", 4,
                            Tarvo::Utility::ScalingMode::log, 1.0, 101325.0, one);
    assembly.makeAssignment(it, q, Value(5.0), "q", "q", 0, Tarvo::Utility::ScalingMode::noscaling, 0.0, 1.0, one);
    ASSERT_EQ(assembly.assignments().size(), 2u);
    EXPECT_EQ(assembly.assignments().front()->description, "Pressure of stage [4]");
    EXPECT_EQ(assembly.scalers().size(), 2u);
    // A second pass refreshes the same entries.
    it = assembly.assignments().begin();
    assembly.makeAssignment(it, p, Value(4.0, "bar"), "P", "", 0, Tarvo::Utility::ScalingMode::log, 1.0, 101325.0, one);
    assembly.makeAssignment(it, q, Value(9.0), "q", "", 0, Tarvo::Utility::ScalingMode::noscaling, 0.0, 1.0, one);
    EXPECT_EQ(assembly.assignments().size(), 2u);
    EXPECT_EQ(assembly.assignments().front()->rhs.toDouble("bar"), 4.0);
    EXPECT_EQ(assembly.assignments().front()->oldRHS.toDouble("bar"), 3.0);
    EXPECT_EQ(assembly.assignments().back()->rhs.toDouble(), 1.0); // off: rhs := lhs
    assembly.directstep();
    EXPECT_EQ(p.toDouble("bar"), 4.0);
    EXPECT_EQ(q.toDouble(), 1.0);
    assembly.purgeAss();
    EXPECT_TRUE(assembly.assignments().empty());
}
