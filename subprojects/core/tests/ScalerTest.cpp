#include <tarvo/core/Scaler.h>
#include <tarvo/utility/Error.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <ostream>
#include <string>

using Tarvo::Utility::ScalingMode;

namespace {

// The section of an error's message behind the thrower's line.
template <typename E> std::string errorText(const std::function<void()>& f) {
    try {
        f();
    } catch (const E& e) {
        const std::string& m = e.message();
        return m.substr(m.find('\n') + 1);
    }
    return "no error";
}

struct ModeCase {
    ScalingMode mode;
    double xmin, xmax, ymin, ymax;
};

void PrintTo(const ModeCase& c, std::ostream* out) {
    *out << Tarvo::Utility::SmartEnumerator<ScalingMode>::item(c.mode).name() << " [" << c.xmin << ", "
         << c.xmax << "] -> [" << c.ymin << ", " << c.ymax << "]";
}

class EveryMode : public testing::TestWithParam<ModeCase> {
protected:
    Scaler scaler() const {
        const ModeCase& c = GetParam();
        return Scaler(c.mode, c.xmin, c.xmax, c.ymin, c.ymax);
    }
    // Interior points of the model range, off the centre (see CentresUseTheirLimitForms).
    std::vector<double> points() const {
        const ModeCase& c = GetParam();
        std::vector<double> v;
        for (double t : {0.03, 0.2, 0.37, 0.61, 0.8, 0.97})
            v.push_back(c.xmin + t * (c.xmax - c.xmin));
        return v;
    }
};

} // namespace

TEST_P(EveryMode, InverseAndDerivativesAgreeWithTheMapping) {
    const Scaler s = scaler();
    for (double v : points()) {
        SCOPED_TRACE(v);
        const double X = s.X(v);
        EXPECT_NEAR(s.x(X), v, 1e-9 * (1 + std::fabs(v)));
        // Central differences of the mappings themselves.
        const double h = 1e-6 * (GetParam().xmax - GetParam().xmin);
        const double dXfd = (s.X(v + h) - s.X(v - h)) / (2 * h);
        EXPECT_NEAR(s.dX(v), dXfd, 1e-5 * std::fabs(dXfd) + 1e-9);
        const double k = 1e-6 * (1 + std::fabs(X));
        const double dxfd = (s.x(X + k) - s.x(X - k)) / (2 * k);
        EXPECT_NEAR(s.dx(X), dxfd, 1e-5 * std::fabs(dxfd) + 1e-9);
        EXPECT_NEAR(s.dX(v) * s.dx(X), 1.0, 1e-9);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Scaler, EveryMode,
    testing::Values(ModeCase{ScalingMode::noscaling, 0, 10, 0, 1},
                    ModeCase{ScalingMode::linear, 200, 400, -1, 1},
                    ModeCase{ScalingMode::power, 1, 100, 1, 10},
                    ModeCase{ScalingMode::arctangent, 0, 1, 0, 10},
                    ModeCase{ScalingMode::arctangentExclusive, 273.15, 373.15, 0, 1},
                    ModeCase{ScalingMode::arctangentpower, -5, 5, 0, 4},
                    ModeCase{ScalingMode::rational, 0, 1, 0, 1}, ModeCase{ScalingMode::log, 1e-4, 1e5, 0, 9}),
    [](const testing::TestParamInfo<ModeCase>& info) {
        return Tarvo::Utility::SmartEnumerator<ScalingMode>::item(info.param.mode).name();
    });

TEST(Scaler, NoScalingAndLinearAreTheClosedForms) {
    const Scaler none;
    EXPECT_EQ(none.X(3.7), 3.7);
    EXPECT_EQ(none.x(-2.5), -2.5);
    EXPECT_EQ(none.dX(1e9), 1.0);
    EXPECT_EQ(none.dx(0.0), 1.0);

    const Scaler linear(ScalingMode::linear, 0, 10, 0, 1);
    EXPECT_DOUBLE_EQ(linear.X(5), 0.5);
    EXPECT_DOUBLE_EQ(linear.x(0.5), 5);
    EXPECT_DOUBLE_EQ(linear.dX(5), 0.1);
    EXPECT_DOUBLE_EQ(linear.dx(0.5), 10);
}

TEST(Scaler, InclusiveModesMapBoundsOntoBounds) {
    // power with x in [1, 100] and X in [1, 10] is the square root; log with decades is log10.
    const Scaler power(ScalingMode::power, 1, 100, 1, 10);
    EXPECT_DOUBLE_EQ(power.X(25), 5);
    EXPECT_DOUBLE_EQ(power.x(3), 9);
    const Scaler log(ScalingMode::log, 1, 1000, 0, 3);
    EXPECT_DOUBLE_EQ(log.X(100), 2);
    EXPECT_DOUBLE_EQ(log.x(1), 10);
    for (ScalingMode mode : {ScalingMode::linear, ScalingMode::arctangent, ScalingMode::arctangentpower}) {
        const Scaler s(mode, 2, 6, -3, 5);
        EXPECT_NEAR(s.X(2), -3, 1e-12);
        EXPECT_NEAR(s.X(6), 5, 1e-12);
        EXPECT_NEAR(s.X(4), 1, 1e-12);
    }
}

TEST(Scaler, ExclusiveModesKeepEveryXInsideTheBounds) {
    for (ScalingMode mode : {ScalingMode::arctangentExclusive, ScalingMode::rational}) {
        const Scaler s(mode, 0, 1, 0, 1);
        for (double X : {-1e300, -1e6, -3.0, 0.5, 7.0, 1e6, 1e300}) {
            const double x = s.x(X);
            EXPECT_GE(x, 0);
            EXPECT_LE(x, 1);
        }
        EXPECT_LT(s.x(-1e6), 1e-5);
        EXPECT_GT(s.x(1e6), 1 - 1e-5);
    }
}

TEST(Scaler, CentresUseTheirLimitForms) {
    // rational at X = ym: x is xm and dx/dX is dx^2 / (4c) with c = dy/10, without 0/0.
    const Scaler rational(ScalingMode::rational, 2, 6, 0, 1);
    EXPECT_EQ(rational.x(0.5), 4);
    EXPECT_DOUBLE_EQ(rational.dx(0.5), 16 / (4 * 0.1));
    EXPECT_DOUBLE_EQ(rational.dX(4), 4 * 0.1 / 16);
    // arctangentpower has a flat centre: dX is finite and nearly 0 there.
    const Scaler atp(ScalingMode::arctangentpower, -5, 5, 0, 4);
    EXPECT_TRUE(std::isfinite(atp.dX(0)));
    EXPECT_GE(atp.dX(0), 0);
    EXPECT_LT(atp.dX(0), 1e-5);
}

TEST(Scaler, SetupWithNewSolverRangeKeepsModelRange) {
    Scaler s(ScalingMode::linear, 0, 10, 0, 1);
    s.setup(-1, 1);
    EXPECT_EQ(s.xmin(), 0);
    EXPECT_EQ(s.xmax(), 10);
    EXPECT_DOUBLE_EQ(s.X(10), 1);
    EXPECT_DOUBLE_EQ(s.X(0), -1);
}

TEST(Scaler, SetupRejectsRangesTheModeCannotMap) {
    const auto scalerError = [](ScalingMode m, double a, double b, double c, double d) {
        return errorText<ErrorScaler>([=] { Scaler(m, a, b, c, d); });
    };
    EXPECT_EQ(scalerError(ScalingMode::linear, 1, 1, 0, 1),
              "Error type: Scaler errorxmin and xmax must be different\n");
    EXPECT_EQ(scalerError(ScalingMode::noscaling, 0, 1, 2, 2),
              "Error type: Scaler errorymin and ymax must be different\n");
    EXPECT_EQ(scalerError(ScalingMode::power, 0, 1, 1, 2),
              "Error type: Scaler errorxmin must be non-null with Tarvo::Utility::ScalingMode::power\n");
    EXPECT_EQ(scalerError(ScalingMode::power, -1, 1, 1, 2),
              "Error type: Scaler errorxmin and xmax must have the same sign with "
              "Tarvo::Utility::ScalingMode::power\n");
    EXPECT_EQ(scalerError(ScalingMode::power, 1, 2, 1, 0),
              "Error type: Scaler errorymax must be non-null with Tarvo::Utility::ScalingMode::power\n");
    EXPECT_EQ(scalerError(ScalingMode::power, 1, 2, -1, 2),
              "Error type: Scaler errorymin and ymax must have the same sign with "
              "Tarvo::Utility::ScalingMode::power\n");
    EXPECT_EQ(scalerError(ScalingMode::log, 1, 0, 0, 1),
              "Error type: Scaler errorxmax must be non-null with Tarvo::Utility::ScalingMode::log\n");
    EXPECT_EQ(scalerError(ScalingMode::log, -1, 2, 0, 1),
              "Error type: Scaler errorxmin and xmax must have the same sign with "
              "Tarvo::Utility::ScalingMode::log\n");
}

TEST(Scaler, UnknownModeIsASmartEnumeratorError) {
    Scaler s;
    const auto bad = static_cast<ScalingMode>(9);
    EXPECT_EQ(errorText<ErrorSmartEnum>([&] { s.setup(bad, 0, 1, 0, 1); }),
              "Smart enumerator error: Unrecognized scaling mode: 9\n");
    // The failed setup has stored the mode: every mapping refuses it too.
    EXPECT_EQ(errorText<ErrorSmartEnum>([&] { s.X(0.5); }),
              "Smart enumerator error: Unrecognized scaling mode: 9\n");
    EXPECT_EQ(errorText<ErrorSmartEnum>([&] { s.dx(0.5); }),
              "Smart enumerator error: Unrecognized scaling mode: 9\n");
}
