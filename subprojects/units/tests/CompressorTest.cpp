#include "UnitTestSupport.h"

#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/units/Compressor.h>
#include <tarvo/units/Pump.h>

#include <cmath>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int H2O = 2, N2 = 3;
constexpr double gasConstant = 8314.4; // J/(kmol*K), the kernel's

// Ideal-gas heat capacity of nitrogen, J/(kmol*K): equation 107 of Perry's Chemical Engineers' Handbook,
// 8th ed., Table 2-156, C1 + C2 ((C3/T) / sinh(C3/T))^2 + C4 ((C5/T) / cosh(C5/T))^2, with the table's
// constants for nitrogen, the correlation that the kernel's nitrogen takes.
double cpNitrogen(double T) {
    const double a = 1701.6 / T, b = 909.79 / T;
    return 29105.0 + 8614.9 * std::pow(a / std::sinh(a), 2) + 103.47 * std::pow(b / std::cosh(b), 2);
}

// Simpson's rule with 2000 intervals: on this smooth integrand far below what the tests resolve.
template <typename F> double integral(F f, double a, double b) {
    constexpr int n = 2000;
    const double h = (b - a) / n;
    double sum = f(a) + f(b);
    for (int i = 1; i < n; ++i)
        sum += (i % 2 ? 4 : 2) * f(a + i * h);
    return sum * h / 3;
}

// The end of the ideal-gas isentrope from T1: the integral of Cp/T from T1 to T2 equals R ln(P2/P1).
double isentropeEnd(double T1, double P1, double P2) {
    double lo = 0.5 * T1, hi = 3 * T1;
    const double target = gasConstant * std::log(P2 / P1);
    for (int k = 0; k < 60; ++k) {
        const double mid = 0.5 * (lo + hi);
        (integral([](double T) { return cpNitrogen(T) / T; }, T1, mid) > target ? hi : lo) = mid;
    }
    return 0.5 * (lo + hi);
}

Phase::MassMolarProperties& total(Stream& s) {
    return dynamic_cast<Phase::MassMolarProperties&>(*s.Tphase);
}

double entropyFlow(Stream& s) {
    return total(s).ndot.toDouble() * total(s).calculate_S(s.P, s.T).toDouble();
}
} // namespace

class CompressorTest : public UnitTest {
protected:
    // A compressor from IN to OUT, both of `type`.
    Compressor& machine(const std::string& tag, const std::string& type = "StreamVapor") {
        auto& c = unit<Compressor>("Compressor", tag);
        in_ = &connect(type, tag + "IN", nullptr, "", &c, "in");
        out_ = &connect(type, tag + "OUT", &c, "out", nullptr, "");
        return c;
    }
    Stream* in_ = nullptr;
    Stream* out_ = nullptr;
};

// Nitrogen from 1 bar and 300 K to 5 bar with yield 1 follows the ideal gas's isentrope: the outlet keeps the
// inlet's entropy and reaches the temperature at which the integral of Cp/T makes up R ln 5.
TEST_F(CompressorTest, IsentropicCompressionOfNitrogenFollowsTheIdealGasIsentrope) {
    Compressor& c = machine("C");
    setMoleFractions(*in_, 0.1, {{N2, 1.0}}, 1e5, 300.0);
    in_->calculate(0);
    c.P = Value(5e5, "Pa");
    c.theta = 1.0;
    c.calculate(0);
    ASSERT_TRUE(c.errorList().empty()) << c.errorList().front();
    const double sIn = entropyFlow(*in_), sOut = entropyFlow(*out_);
    EXPECT_NEAR(sOut, sIn, 1e-9 * std::fabs(sIn));
    EXPECT_NEAR(c.deltas.toDouble(), 0.0, 1e-9 * 0.1 * gasConstant * std::log(5.0));

    const double T2 = isentropeEnd(300.0, 1e5, 5e5);
    EXPECT_NEAR(c.Tis.toDouble(), T2, 1e-6);
    EXPECT_NEAR(out_->T.toDouble(), c.Tis.toDouble(), 1e-7);
    const double work = 0.1 * integral(cpNitrogen, 300.0, T2);
    EXPECT_NEAR(c.Wfis.toDouble(), work, 1e-8 * work);
    // Wfis is the rise of the enthalpy flow along the isentrope, as the phase models give it.
    const double rise = enthalpyFlow(*out_) - enthalpyFlow(*in_);
    EXPECT_NEAR(c.Wfis.toDouble(), rise, 1e-9 * rise);
    EXPECT_NEAR(c.Wf.toDouble(), c.Wfis.toDouble(), 1e-12 * rise);
    EXPECT_NEAR(c.duty.toDouble(), -rise, 1e-9 * rise);
    EXPECT_DOUBLE_EQ(c.cr.toDouble(), 5.0);
    EXPECT_DOUBLE_EQ(out_->P.toDouble(), 5e5);
    EXPECT_EQ(c.alfa.toDouble(), 1.0); // all vapor
    EXPECT_NEAR(out_->Tphase->totalFlow().toDouble(), 0.1, 1e-15);
    ASSERT_NE(c.isentropic(), nullptr);
    EXPECT_EQ(c.isentropic()->tag(), "ISENTROPIC");
    EXPECT_DOUBLE_EQ(c.isentropic()->T.toDouble(), c.Tis.toDouble());
}

// The isentropic end state that the first calculation makes is not part of the case: the ids of the nodes
// of the case, which say where a retrieved case writes its results, stay as they were.
TEST_F(CompressorTest, TheIsentropicEndStateLeavesTheIdsOfTheCaseAlone) {
    Compressor& c = machine("C");
    auto& after = unit<Compressor>("Compressor", "D"); // a unit made after the first, with higher ids
    setMoleFractions(*in_, 0.1, {{N2, 1.0}}, 1e5, 300.0);
    in_->calculate(0);
    c.P = Value(5e5, "Pa");
    const auto ids = [&] {
        std::vector<uint32_t> all;
        for (const Node* node : {static_cast<const Node*>(&c), static_cast<const Node*>(&after),
                                 static_cast<const Node*>(out_)})
            all.push_back(node->id());
        return all;
    };
    const std::vector<uint32_t> before = ids();
    c.calculate(0);
    ASSERT_NE(c.isentropic(), nullptr);
    EXPECT_EQ(ids(), before);
}

// The yields divide a compression's power and multiply an expansion's; the fluid power enters the outlet's
// enthalpy either way, and the current is that of a three-phase line.
TEST_F(CompressorTest, YieldsDivideCompressionAndMultiplyExpansion) {
    for (const double outletPressure : {5e5, 0.5e5}) {
        const std::string tag = outletPressure > 1e5 ? "UP" : "DOWN";
        Compressor& c = machine(tag);
        setMoleFractions(*in_, 0.1, {{N2, 0.8}, {H2O, 0.2}}, 1e5, 400.0);
        in_->calculate(0);
        c.P = Value(outletPressure, "Pa");
        c.theta = 0.75;
        c.etaM = 0.95;
        c.etaE = 0.98;
        c.calculate(0);
        ASSERT_TRUE(c.errorList().empty()) << tag << c.errorList().front();
        const double Wfis = c.Wfis.toDouble();
        if (outletPressure > 1e5) {
            EXPECT_GT(Wfis, 0.0);
            EXPECT_NEAR(c.Wf.toDouble(), Wfis / 0.75, 1e-12 * Wfis);
            EXPECT_NEAR(c.Wm.toDouble(), Wfis / 0.75 / 0.95, 1e-12 * Wfis);
            EXPECT_NEAR(c.We.toDouble(), Wfis / 0.75 / 0.95 / 0.98, 1e-12 * Wfis);
            EXPECT_GT(out_->T.toDouble(), c.Tis.toDouble() + 10.0); // the loss heats the gas
        } else {
            EXPECT_LT(Wfis, 0.0);
            EXPECT_NEAR(c.Wf.toDouble(), Wfis * 0.75, 1e-12 * -Wfis);
            EXPECT_NEAR(c.Wm.toDouble(), Wfis * 0.75 * 0.95, 1e-12 * -Wfis);
            EXPECT_NEAR(c.We.toDouble(), Wfis * 0.75 * 0.95 * 0.98, 1e-12 * -Wfis);
            EXPECT_LT(c.cr.toDouble(), 1.0);
            EXPECT_LT(out_->T.toDouble(), in_->T.toDouble());
            EXPECT_GT(out_->T.toDouble(), c.Tis.toDouble() + 5.0);
        }
        EXPECT_NEAR(c.I.toDouble(), c.We.toDouble() / (380.0 * 0.9 * std::sqrt(3.0)),
                    1e-12 * std::fabs(Wfis));
        // Shaft work in, nothing else: the enthalpy flow rises by the fluid power.
        const double rise = enthalpyFlow(*out_) - enthalpyFlow(*in_);
        EXPECT_NEAR(rise, c.Wf.toDouble(), 1e-9 * std::fabs(rise)) << tag;
        c.checkBalance();
        EXPECT_TRUE(c.errorList().empty() && c.warningList().empty()) << tag;
    }
}

// The pressure is given or its drop; a drop from the flow coefficient, which cannot raise the pressure, is
// refused, as is a unit without its streams.
TEST_F(CompressorTest, PressureOptionsAndMessages) {
    Compressor& c = machine("C", "StreamIdealLiquidVapor");
    setMoleFractions(*in_, 0.1, {{N2, 1.0}}, 1e5, 300.0);
    in_->calculate(0);
    c.option = "D";
    c.deltaP = Value(-2e5, "Pa");
    c.calculate(0);
    EXPECT_TRUE(c.errorList().empty());
    EXPECT_DOUBLE_EQ(out_->P.toDouble(), 3e5);
    EXPECT_DOUBLE_EQ(c.P.toDouble(), 3e5);
    EXPECT_EQ(c.alfa.toDouble(), 1.0);
    c.option = "K";
    EXPECT_NE(thrown([&] { c.calculate(0); }).find("Unsupported option K for String pressure option"),
              std::string::npos);

    auto& alone = unit<Compressor>("Compressor", "ALONE");
    alone.calculate(0);
    EXPECT_EQ(alone.errorList(), std::vector<std::string>{"no inlet connected, nothing to do"});
    auto& open = unit<Compressor>("Compressor", "OPEN");
    connect("StreamVapor", "OPENIN", nullptr, "", &open, "in");
    open.calculate(0);
    EXPECT_EQ(open.errorList(), std::vector<std::string>{"no outlet connected, nothing to do"});
}

// Water pumped from 1 to 6 bar: a positive fluid power of the volume flow times the rise, which does not
// enter the fluid. Expected with the density of liquid water at 300 K near 0.1 MPa, 996.556 kg/m3 (IAPWS-95,
// table 7 of the release, ../shared/data/iapws95_verification.json); the kernel's ideal liquid takes its own
// fit.
TEST_F(UnitTest, PumpTakesTheVolumeFlowTimesThePressureRise) {
    auto& pump = unit<Pump>("Pump", "PU");
    Stream& in = connect("StreamLiquid", "IN", nullptr, "", &pump, "in");
    Stream& out = connect("StreamLiquid", "OUT", &pump, "out", nullptr, "");
    feed(in, 3600, {0, 0, 1, 0, 0}, 1e5, 300);
    pump.P = Value(6e5, "Pa");
    pump.calculate(0);
    ASSERT_TRUE(pump.errorList().empty()) << pump.errorList().front();
    EXPECT_EQ(pump.option.value(), "PH");
    EXPECT_DOUBLE_EQ(out.P.toDouble(), 6e5);
    EXPECT_DOUBLE_EQ(pump.cr.toDouble(), 6.0);
    const double Wf = pump.Wf.toDouble();
    EXPECT_NEAR(Wf, 1.0 * 5e5 / 996.556, 0.002 * Wf); // 1 kg/s; the fits differ by 6e-4
    EXPECT_NEAR(pump.Wm.toDouble(), Wf / 0.9, 1e-12 * Wf);
    EXPECT_NEAR(pump.We.toDouble(), Wf / 0.9 / 0.9, 1e-12 * Wf);
    EXPECT_NEAR(pump.I.toDouble(), pump.We.toDouble() / (380.0 * 0.9 * std::sqrt(3.0)), 1e-12 * Wf);
    const double h = enthalpyFlow(in);
    EXPECT_NEAR(enthalpyFlow(out), h, 1e-9 * std::fabs(h));
    EXPECT_EQ(pump.duty.toDouble(), 0.0);
}
