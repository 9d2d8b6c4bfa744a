#include <tarvo/utility/Error.h>
#include <tarvo/value/Value.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <sstream>

namespace {

std::string unitError(const std::function<void()>& f) {
    try {
        f();
    } catch (const ErrorUnit& e) {
        const std::string& m = e.message();
        return m.substr(m.find('\n') + 1); // the section behind the thrower's line
    }
    return "no error";
}

// Pushes a context of n directions for one scope.
struct Context {
    explicit Context(int n) { ActiveContext::push(n); }
    ~Context() { ActiveContext::pop(); }
};

} // namespace

TEST(ValueUnits, DefaultValueTakesItsFirstUnitsAndKeepsThem) {
    Value v;
    EXPECT_EQ(v.unitText(), "[invalid unit]");
    v = Value(2.0, "bar");
    EXPECT_EQ(v.toDouble(), 2e5);
    EXPECT_EQ(unitError([&] { v = Value(1.0, "K"); }),
              "Error type: Unit of measurement error - destination already has incompatible units <m^-1 kg s^-2> <K>\n");
    EXPECT_EQ(v.toDouble("bar"), 2.0);
}

TEST(ValueUnits, IncompatibleSumsAndDimensionlessRequirements) {
    EXPECT_EQ(unitError([] { Value(1.0, "m") + Value(1.0, "s"); }),
              "Error type: Unit of measurement error - incompatible units <m> <s>\n");
    EXPECT_EQ(unitError([] {
                  Value x;
                  x + 1.0;
              }),
              "Error type: Unit of measurement error - incompatible units <[invalid unit]> <>\n");
    EXPECT_EQ(unitError([] { exp(Value(1.0, "K")); }),
              "Error type: Unit of measurement error - incompatible units <K> <>\n");
    EXPECT_EQ(unitError([] { pow(Value(2.0, "m"), 2.0); }),
              "Error type: Unit of measurement error - incompatible units <m> <>\n");
    EXPECT_EQ(unitError([] { Value(1.0, "m") < Value(1.0, "kg"); }),
              "Error type: Unit of measurement error - incompatible units <m> <kg>\n");
    EXPECT_EQ(unitError([] {
                  Value p(1.0, "Pa");
                  p = 3.0;
              }),
              "Error type: Unit of measurement error - destination already has units <m^-1 kg s^-2>\n");
    EXPECT_EQ(unitError([] { Value(1.0, "kmol/h").toDouble("kg/h"); }),
              "Error type: Unit of measurement error - incompatible units <kmol s^-1> <kg s^-1>\n"
              "Called from function: GenericValue<A>::toDouble\n");
    EXPECT_EQ(unitError([] { Value(1.0, "kg/min"); }),
              "Error type: Unit of measurement error - unsupported unit [kg/min]\n");
}

TEST(ValueUnits, ToDoubleNamesItselfOnTheWayOut) {
    try {
        Value(1.0, "m").toDouble("s");
        FAIL();
    } catch (const ErrorUnit& e) {
        EXPECT_NE(e.message().find("Called from function: GenericValue<A>::toDouble\n"), std::string::npos)
            << e.message();
    }
}

TEST(ValueUnits, ProductsQuotientsAndRoots) {
    const Value area = Value(2.0, "m") * Value(3.0, "m");
    EXPECT_EQ(area.unitText(), "m^2");
    EXPECT_EQ((1.0 / Value(4.0, "s")).unitText(), "s^-1");
    EXPECT_EQ((Value(1.0, "J") / Value(1.0, "kmol")).units(), Value(1.0, "J/kmol").units());

    const Value root = sqrt(Value(4.0, "m2"));
    EXPECT_EQ(root.toDouble(), 2.0);
    EXPECT_EQ(root.unitText(), "m");
    EXPECT_EQ(unitError([] { sqrt(Value(4.0, "m")); }),
              "Error type: Unit of measurement error - dimension exponents must be even <m>\n");
    const Value cube = curt(Value(8.0, "m3"));
    EXPECT_DOUBLE_EQ(cube.toDouble(), 2.0);
    EXPECT_EQ(cube.unitText(), "m");
    EXPECT_EQ(unitError([] { curt(Value(8.0, "m2")); }),
              "Error type: Unit of measurement error - dimension exponents must be multiple of three <m^2>\n");
}

TEST(ValueUnits, AffineTemperaturesAndCheckuom) {
    EXPECT_DOUBLE_EQ(Value(0.0, "°C").toDouble(), 273.15);
    EXPECT_DOUBLE_EQ(Value(0.0, "°C").toDouble("°C"), 0.0);
    EXPECT_DOUBLE_EQ(Value("°C").toDouble(), 274.15);
    EXPECT_EQ(Value(3.0, "bar").checkuom("Pa"), 3e5);
    EXPECT_NE(unitError([] { Value(3.0, "bar").checkuom("K"); }), "no error");
    EXPECT_EQ(Value().checkuom("[invalid unit]"), 0.0);
}

TEST(ValueUnits, ComparisonsAndNaN) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const Value a(nan, "m"), b(nan, "m");
    EXPECT_FALSE(a == b);
    EXPECT_TRUE(a != b);
    EXPECT_TRUE(a.isnan());
    EXPECT_TRUE(a.isinf());
    EXPECT_TRUE(Value(1.0, "m") < Value(2.0, "m"));
    EXPECT_TRUE(Value(std::numeric_limits<double>::infinity()).isinf());
    EXPECT_FALSE(Value(1e300).isinf());
    EXPECT_EQ(unitError([&] { (void)(a == Value(1.0, "s")); }),
              "Error type: Unit of measurement error - incompatible units <m> <s>\n");
}

TEST(ValueFlags, AssignmentKeepsTheDestinationsFlagsAndCopyTakesThem) {
    Value x(1.0, "K");
    x.setOutput();
    Value y(5.0, "K");
    y.setInput();
    x = y;
    EXPECT_TRUE(x.output());
    EXPECT_FALSE(x.input());
    const Value z(y);
    EXPECT_TRUE(z.input());
    Value w(0.0, "K");
    w.set(300.0, "K");
    EXPECT_TRUE(w.input());
    EXPECT_FALSE(exp(Value(1.0)).input());
}

TEST(ValueText, PrintsTwelveDigitsThenUnits) {
    std::ostringstream out;
    out << Value(1.0 / 3.0, "m") << '|' << Value(2.0) << '|' << 0.123456789;
    EXPECT_EQ(out.str(), "0.333333333333 m|2 |0.123457");
    EXPECT_EQ(Value(8314.4, "J/(kmol*K)").units(), R.units());
}

TEST(ValueConstants, ProcessWideValues) {
    EXPECT_EQ(T0.toDouble("K"), 298.15);
    EXPECT_EQ(P0.toDouble("atm"), 1.0);
    EXPECT_EQ(R.toDouble("J/(kmol*K)"), 8314.4);
    EXPECT_EQ(Tmin.toDouble("K"), 50.0);
    EXPECT_EQ(Tmax.toDouble("K"), 1500.0);
    EXPECT_EQ(Pmin.toDouble("Pa"), 1e-5);
    EXPECT_EQ(Pmax.toDouble("Pa"), 1e10);
    EXPECT_EQ(zero.toDouble(), 0.0);
    EXPECT_EQ(one.toDouble(""), 1.0);
}

// ---- derivatives ----

namespace {

// A composite of every operation with a derivative rule, of two dimensionless variables.
template <typename T> T composite(const T& x, const T& y) {
    using std::exp, std::log, std::sqrt, std::pow, std::sin, std::cos, std::atan, std::fabs, std::tan,
        std::sinh, std::cosh, std::asin, std::acos, std::log10;
    T a = x * y + x / y - 3.0 * x + y / 2.0;
    T b = exp(a / 10.0) + log(x) + log10(y) + sqrt(x + y) + pow(x, 1.5) + pow(x, y);
    T c = sin(x) * cos(y) + tan(x / 4.0) + atan(y) + sinh(x / 3.0) - cosh(y / 5.0);
    T d = asin(x / 3.0) + acos(y / 4.0) + fabs(x - y);
    return a * b - c / (1.0 + d * d) + 2.0 - x;
}

template <> Value composite(const Value& x, const Value& y) {
    Value a = x * y + x / y - 3.0 * x + y / 2.0;
    Value b = exp(a / 10.0) + log(x) + log10(y) + sqrt(x + y) + pow(x, 1.5) + pow(x, y);
    Value c = sin(x) * cos(y) + tan(x / 4.0) + atan(y) + sinh(x / 3.0) - cosh(y / 5.0);
    Value d = asin(x / 3.0) + acos(y / 4.0) + fabs(x - y);
    return a * b - c / (1.0 + d * d) + 2.0 - x;
}

double centralDifference(const std::function<double(double)>& f, double x) {
    const double h = 1e-6 * std::max(1.0, std::fabs(x));
    return (f(x + h) - f(x - h)) / (2 * h);
}

} // namespace

TEST(ValueDerivatives, CompositeMatchesCentralDifference) {
    const double x0 = 1.3, y0 = 2.1;
    Context context(2);
    Value x(x0), y(y0);
    x.active().setActive(0);
    y.active().setActive(1);
    const Value f = composite(x, y);
    x.active().inactivate(0);
    y.active().inactivate(1);
    EXPECT_DOUBLE_EQ(f.toDouble(), composite(x0, y0));
    const double dfdx = centralDifference([&](double t) { return composite(t, y0); }, x0);
    const double dfdy = centralDifference([&](double t) { return composite(x0, t); }, y0);
    EXPECT_NEAR(f.active().derivative(0), dfdx, 1e-7 * std::fabs(dfdx));
    EXPECT_NEAR(f.active().derivative(1), dfdy, 1e-7 * std::fabs(dfdy));
}

TEST(ValueDerivatives, DenseAndSparseStoresAgreeAlongAChain) {
    auto evaluate = [](int numdir) {
        Context context(numdir);
        Value x(1.3), y(2.1);
        x.active().setActive(0);
        y.active().setActive(numdir - 1);
        const Value f = composite(x, y);
        x.active().inactivate(0);
        y.active().inactivate(numdir - 1);
        return std::make_pair(f.active().derivative(0), f.active().derivative(numdir - 1));
    };
    const auto dense = evaluate(5);
    const auto sparse = evaluate(6);
    EXPECT_TRUE(Active::numdir() == 0);
    EXPECT_DOUBLE_EQ(dense.first, sparse.first);
    EXPECT_DOUBLE_EQ(dense.second, sparse.second);
}

TEST(ValueDerivatives, ElementaryFunctionsValueAndDerivative) {
    Context context(1);
    struct Case {
        const char* name;
        std::function<Value(const Value&)> f;
        double x, value, derivative;
    };
    const Case cases[] = {
        {"exp", [](const Value& v) { return exp(v); }, 0.5, std::exp(0.5), std::exp(0.5)},
        {"log", [](const Value& v) { return log(v); }, 2.0, std::log(2.0), 0.5},
        {"pow", [](const Value& v) { return pow(v, 3.0); }, 2.0, 8.0, 12.0},
        {"powv", [](const Value& v) { return pow(v, Value(2.0)); }, 3.0, 9.0, 6.0},
        {"sqrt", [](const Value& v) { return sqrt(v); }, 4.0, 2.0, 0.25},
        {"curt", [](const Value& v) { return curt(v); }, 8.0, 2.0, 1.0 / 12.0},
        {"fabs+", [](const Value& v) { return fabs(v); }, 2.0, 2.0, 1.0},
        {"fabs-", [](const Value& v) { return fabs(v); }, -2.0, 2.0, -1.0},
    };
    for (const Case& c : cases) {
        Value x(c.x);
        x.active().setActive(0);
        const Value r = c.f(x);
        x.active().inactivate(0);
        EXPECT_DOUBLE_EQ(r.toDouble(), c.value) << c.name;
        EXPECT_DOUBLE_EQ(r.active().derivative(0), c.derivative) << c.name;
    }
    // pow(x, y) with y active: d/dy x^y = ln(x) x^y.
    Value base(2.0), exponent(3.0);
    exponent.active().setActive(0);
    const Value p = pow(base, exponent);
    exponent.active().inactivate(0);
    EXPECT_DOUBLE_EQ(p.active().derivative(0), std::log(2.0) * 8.0);
}

TEST(ValueDerivatives, GuardedRulesAtZeroAndBelow) {
    Context context(1);
    auto derivativeAt = [](double x, double d, Value (*f)(const Value&)) {
        Active a(x);
        a.setDerivative(0, d);
        return f(Value(a, UnitArray())).active().derivative(0);
    };
    EXPECT_TRUE(std::isnan(derivativeAt(0.0, -1.0, sqrt)));
    EXPECT_EQ(derivativeAt(0.0, 1.0, sqrt), std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(derivativeAt(0.0, 0.0, sqrt)));
    EXPECT_TRUE(std::isnan(derivativeAt(-1.0, 1.0, log)));
    EXPECT_TRUE(std::isnan(derivativeAt(-8.0, 1.0, curt)));
    EXPECT_TRUE(std::isnan(derivativeAt(std::nan(""), 1.0, log10)));
    EXPECT_EQ(derivativeAt(0.0, 1.0, log), std::numeric_limits<double>::infinity());
    EXPECT_EQ(derivativeAt(0.0, -1.0, fabs), 1.0);
    EXPECT_EQ(derivativeAt(0.0, 1.0, fabs), 1.0);
    EXPECT_TRUE(std::isnan(derivativeAt(1.5, 1.0, asin)));
    EXPECT_TRUE(std::isnan(derivativeAt(-1.5, 1.0, acos)));

    const Value l = log(Value(-1.0));
    EXPECT_TRUE(l.isnan());
    EXPECT_EQ(log(Value(0.0)).toDouble(), -std::numeric_limits<double>::infinity());
}

TEST(ValueDerivatives, SparseStoreHoldsOnlyTheDirectionsReached) {
    Context context(200);
    Value x(1.0), y(2.0);
    x.active().setActive(7);
    y.active().setActive(150);
    const Value f = x * y + 3.0 * x;
    EXPECT_EQ(f.active().derivative(7), 5.0);
    EXPECT_EQ(f.active().derivative(150), 1.0);
    EXPECT_EQ(f.active().derivative(42), 0.0);
    EXPECT_EQ(f.active().sumAbsoluteDerivatives(), 6.0);
    EXPECT_EQ(ActiveContext::direction(7), &x.active());
    // Reading an absent direction creates no entry: the text lists what is stored.
    EXPECT_EQ(f.active().str().find("(42)"), std::string::npos);
    EXPECT_NE(f.active().str().find(" (7)5 (150)1"), std::string::npos);
    x.active().inactivate(7);
    y.active().inactivate(150);
    EXPECT_EQ(ActiveContext::direction(7), nullptr);
}

TEST(ValueDerivatives, ContextsStackAndTextFollowsTheTop) {
    EXPECT_EQ(ActiveContext::numdir(), 0);
    EXPECT_EQ(Active(1.5).str(), "1.5 [  ]");
    {
        Context outer(3);
        Active a(2.0);
        a.setActive(1);
        EXPECT_EQ(a.str(), "2 [ 0 1 0  ]");
        {
            Context inner(1);
            EXPECT_EQ(ActiveContext::numdir(), 1);
        }
        EXPECT_EQ(ActiveContext::numdir(), 3);
        std::ostringstream dump;
        ActiveContext::dump(dump);
        EXPECT_EQ(dump.str(), "Directions_[0] = null\nDirections_[1] = 2 [ 0 1 0  ]\nDirections_[2] = null\n");
        a.inactivate(1);
    }
    EXPECT_EQ(ActiveContext::numdir(), 0);
}

TEST(ValueDerivatives, ConstantsBuiltOutsideASolveCarryNoDerivatives) {
    const Value c(3.0, "K");
    Context context(4);
    Value t(2.0, "K");
    t.active().setActive(2);
    const Value product = t * c, sum = t + c;
    t.active().inactivate(2);
    EXPECT_EQ(product.active().derivative(2), 3.0);
    EXPECT_EQ(product.active().derivative(0), 0.0);
    EXPECT_EQ(product.active().sumAbsoluteDerivatives(), 3.0);
    EXPECT_EQ(sum.active().derivative(2), 1.0);
}

TEST(ValueDeathTest, AssigningAnActiveVariableUnderStrictReadOnlyStops) {
    EXPECT_DEATH(
        {
            Active::setStrictReadOnly();
            ActiveContext::push(2);
            Value unknown(1.0, "K");
            unknown.active().setActive(0);
            unknown = Value(2.0, "K");
        },
        // The "severe error" line goes to standard output; the assertion names the broken rule.
        "Assertion `\\(numdir == 0\\) \\|\\| !strict_ro \\|\\| !active_' failed");
}

// x - y has the derivatives 1 and -1: signed, their sum 0 would pass it for a row that depends on nothing.
TEST(ValueDerivatives, SumOfAbsoluteDerivativesIgnoresTheirSignsInEitherStore) {
    for (int numdir : {2, 8}) {
        Context context(numdir);
        Value x(1.0), y(2.0);
        x.active().setActive(0);
        y.active().setActive(numdir - 1);
        const Value f = x - 2.0 * y;
        EXPECT_EQ(f.active().sumAbsoluteDerivatives(), 3.0) << numdir;
        EXPECT_EQ((x - y).active().sumAbsoluteDerivatives(), 2.0) << numdir;
        x.active().inactivate(0);
        y.active().inactivate(numdir - 1);
    }
}

TEST(ValueDerivatives, WritingInOneModeReplacesTheOtherStore) {
    Active a(1.0);
    {
        Context sparse(8);
        a.setDerivative(7, 2.0);
        a.setDerivative(3, 4.0);
        EXPECT_EQ(a.derivative(7), 2.0);
        EXPECT_EQ(a.derivative(3), 4.0);
        const Active copy(a), moved(Active(a) * 3.0);
        EXPECT_EQ(copy.derivative(7), 2.0);
        EXPECT_EQ(moved.derivative(7), 6.0);
    }
    {
        Context dense(2);
        EXPECT_EQ(a.derivative(1), 0.0); // the sparse list is not seen in dense mode
        a.setDerivative(1, 5.0);
        EXPECT_EQ(a.derivative(1), 5.0);
        EXPECT_EQ(a.derivative(0), 0.0);
        a.setDerivative(0, -1.5); // below the last one written, in either store, the others stay
        EXPECT_EQ(a.derivative(1), 5.0);
        EXPECT_EQ(a.derivative(0), -1.5);
    }
    Context sparse(8);
    EXPECT_EQ(a.derivative(7), 0.0);
}
