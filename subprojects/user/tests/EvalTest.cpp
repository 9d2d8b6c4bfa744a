#include <tarvo/components/ComponentCatalogue.h>
#include <tarvo/core/KernelStart.h>
#include <tarvo/user/Eval.h>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <vector>

// The property calculator as its users call it: arguments in, lines on standard output and standard error,
// and the exit code.
namespace {

struct EvalRun {
    int code;
    std::string out;
    std::string err;
};

EvalRun eval(std::vector<std::string> words) {
    words.insert(words.begin(), "tarvo-eval");
    std::vector<char*> argv;
    for (std::string& w : words) argv.push_back(w.data());
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int code = Tarvo::User::evalMain(static_cast<int>(argv.size()), argv.data());
    EvalRun run{code, testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
    Tarvo::Core::stopKernel();
    return run;
}

double number(const std::string& line) { return std::stod(line.substr(line.find(" = ") + 3)); }

const std::vector<std::string> water{"--components", "water", "StreamIdealLiquidVapor", "P=1 atm", "Tphase.x[water]=1"};

std::vector<std::string> with(std::vector<std::string> words, const std::vector<std::string>& more) {
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

} // namespace

// Water at one atmosphere 5 K below and above its boiling point, and a PH flash back to the liquid.
TEST(Eval, WaterBelowAndAboveItsBoilingPointAndBackFromItsEnthalpy) {
    const EvalRun below = eval(with(water, {"T=368.15 K", "--get", "Lphase.fraction", "--get", "Tphase.H:kJ/kmol"}));
    ASSERT_EQ(below.code, 0) << below.err;
    const auto eol = below.out.find('\n');
    EXPECT_EQ(below.out.substr(0, eol), "Lphase.fraction = 1");
    EXPECT_NE(below.out.find(" kJ/kmol\n"), std::string::npos) << below.out;
    const double h = number(below.out.substr(eol + 1));

    const EvalRun above = eval(with(water, {"T=378.15 K", "--get", "Vphase.fraction"}));
    ASSERT_EQ(above.code, 0) << above.err;
    EXPECT_EQ(above.out, "Vphase.fraction = 1\n");

    const EvalRun back = eval(with(water, {"T=350 K", "flashoption=PH", "Tphase.H=" + std::to_string(h) + " kJ/kmol",
                                           "--get", "T:K"}));
    ASSERT_EQ(back.code, 0) << back.err;
    EXPECT_NEAR(number(back.out), 368.15, 0.05); // within the flash's enthalpy tolerance
}

// Every stream type on a cubic equation, reached through the property calculator: methane at 300 K and 10 bar
// in the vapor of the types that have one, n-butane at 300 K and 10 bar (a compressed liquid) in the liquid
// types. The molar volume is the outer root of P = R T / (v - b) - a / ((v + d1 b) (v + d2 b)) worked out
// here, with a = Omega_a (R Tc)^2 / Pc [1 + m (1 - sqrt(T / Tc))]^2 and b = Omega_b R Tc / Pc from the
// catalogue's critical constants: Peng and Robinson, Ind. Eng. Chem. Fundam. 15 (1976) 59 (Omega_a, Omega_b
// the exact roots of the critical conditions); Soave, Chem. Eng. Sci. 27 (1972) 1197.
TEST(Eval, CubicStreamsGiveTheRootOfTheirEquation) {
    struct Equation {
        double omegaA, omegaB, delta1, delta2, m0, m1, m2;
    };
    const double root2 = std::sqrt(2.0);
    const Equation pr{0.4572355289, 0.0777960739, 1 + root2, 1 - root2, 0.37464, 1.54226, -0.26992};
    const Equation srk{0.42747, 0.08664, 1, 0, 0.48, 1.574, -0.176};
    struct Case {
        const char* type;
        const Equation& equation;
        const char* entry;
        const char* phase;
    };
    const Case cases[] = {{"StreamPengRobinsonVapor", pr, "methane", "Vphase"},
                          {"StreamPengRobinsonLiquidVapor", pr, "methane", "Vphase"},
                          {"StreamPengRobinsonLiquid", pr, "butane", "Lphase"},
                          {"StreamKwongRedlichSoaveVapor", srk, "methane", "Vphase"},
                          {"StreamKwongRedlichSoaveLiquidVapor", srk, "methane", "Vphase"},
                          {"StreamKwongRedlichSoaveSolidVapor", srk, "methane", "Vphase"},
                          {"StreamKwongRedlichSoaveLiquidSolidVapor", srk, "methane", "Vphase"},
                          {"StreamKwongRedlichSoaveLiquid", srk, "butane", "Lphase"}};
    const double R = 8314.4, T = 300, P = 1e6; // J/(kmol K), the kernel's gas constant; K; Pa
    for (const Case& c : cases) {
        const std::unique_ptr<ComponentGeneric> species(newCatalogueComponent(c.entry, c.entry));
        const double Tc = species->Tc().toDouble(), Pc = species->Pc().toDouble(), w = species->omega().toDouble();
        const Equation& e = c.equation;
        const double alpha = std::pow(1 + (e.m0 + e.m1 * w + e.m2 * w * w) * (1 - std::sqrt(T / Tc)), 2);
        const double a = e.omegaA * R * R * Tc * Tc / Pc * alpha, b = e.omegaB * R * Tc / Pc;
        const auto excess = [&](double v) {
            return R * T / (v - b) - a / ((v + e.delta1 * b) * (v + e.delta2 * b)) - P;
        };
        // Bisection from the covolume up to the ideal gas for the liquid, from the ideal gas down for the vapor.
        const bool liquid = std::string(c.phase) == "Lphase";
        double lo = liquid ? b * (1 + 1e-9) : 0.5 * R * T / P, hi = liquid ? 1.5 * b : 1.5 * R * T / P;
        ASSERT_NE(excess(lo) > 0, excess(hi) > 0) << c.type;
        for (int k = 0; k < 200; ++k) {
            const double mid = 0.5 * (lo + hi);
            (excess(mid) > 0 ? lo : hi) = mid;
        }
        const EvalRun run = eval({"--components", c.entry, c.type, "P=10 bar", "T=300 K",
                                  std::string("Tphase.x[") + c.entry + "]=1", "--get", std::string(c.phase) + ".v"});
        ASSERT_EQ(run.code, 0) << c.type << ": " << run.err;
        EXPECT_NEAR(number(run.out) / (0.5 * (lo + hi)), 1.0, 1e-8) << c.type;
    }
}

// Without --get every quantity of the object and of its children, one per line with its full tag.
TEST(Eval, WithoutRequestsEveryQuantityIsPrinted) {
    const EvalRun all = eval({"StreamVapor", "P=2 bar", "T=400 K"});
    ASSERT_EQ(all.code, 0) << all.err;
    EXPECT_NE(all.out.find("StreamVapor:P = 200000 m^-1 kg s^-2\n"), std::string::npos) << all.out;
    EXPECT_NE(all.out.find("StreamVapor:Tphase:H = "), std::string::npos);
    EXPECT_NE(all.out.find("StreamVapor:Vphase:rho = "), std::string::npos);
}

// Wrong arguments: the reason and the usage on standard error, code 2, nothing calculated.
TEST(Eval, WrongArgumentsGiveTheUsageAndCodeTwo) {
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{}, {"NoSuchType"}, {"StreamVapor", "P=1 kg"}, {"StreamVapor", "P"},
          {"StreamVapor", "--get", "nothing"}, {"--components", "unobtainium", "StreamVapor"},
          {"StreamVapor", "Tphase.x[0=0.5"},
          {"StreamVapor", "--frobnicate"}, {"StreamVapor", "--get"}}) {
        const EvalRun run = eval(words);
        EXPECT_EQ(run.code, 2) << (words.empty() ? "" : words[0]);
        EXPECT_NE(run.err.find("usage: tarvo-eval"), std::string::npos);
        EXPECT_TRUE(run.out.empty()) << run.out;
    }
}

// A model that fails: its message on standard error and code 1. A state beyond the range of temperatures
// is such a failure, and the temperature printed is the one given, not a clipped one.
TEST(Eval, AModelErrorGivesCodeOne) {
    const EvalRun run = eval({"StreamVapor", "flashoption=XY", "--get", "T"});
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.err.find("Smart enumerator error: Unrecognized Flash mode"), std::string::npos) << run.err;

    const EvalRun hot = eval({"StreamVapor", "T=2000 K", "--get", "T:K"});
    EXPECT_EQ(hot.code, 1);
    EXPECT_NE(hot.err.find("temperature outside the range of 50 K to 1500 K"), std::string::npos) << hot.err;
    EXPECT_NE(hot.out.find("T = 2000 K"), std::string::npos) << hot.out;
}

// Values that no state can have are refused by name with code 1 before anything is calculated; those that the
// flash finds outside its range end with its error. None of them aborts or prints a NaN with code 0.
TEST(Eval, NonPhysicalInputIsRefusedWithCodeOne) {
    const std::pair<std::string, std::string> refused[] = {
        {"P=-1 bar", "quantity P: -100000 Pa is below 0 Pa"},
        {"P=nan bar", "quantity P: nan is not a finite number"},
        {"P=-1e999 bar", "quantity P: -inf is not a finite number"},
        {"T=0 K", "quantity T: 0 K is not above 0 K"},
        {"T=-5 K", "quantity T: -5 K is not above 0 K"},
        {"T=nan K", "is not a finite number"},
        {"T=infinity K", "quantity T: inf is not a finite number"},
        {"Tphase.x[0]=-1", "quantity Tphase.x[0]: -1 is outside the range of a fraction, 0 to 1"},
        {"Vphase.fraction=1.5", "outside the range of a fraction"},
        {"Tphase.x[4294967296]=0.9", "the subscript of Tphase.x[4294967296] is outside the item"},
        {"Tphase.x[5]=0.9", "the subscript of Tphase.x[5] is outside the item"},
    };
    for (const auto& [setting, reason] : refused) {
        const EvalRun run = eval({"StreamIdealLiquidVapor", setting, "--get", "Vphase.v"});
        EXPECT_EQ(run.code, 1) << setting;
        EXPECT_NE(run.err.find(reason), std::string::npos) << setting << "\n" << run.err;
        EXPECT_TRUE(run.out.empty()) << setting << "\n" << run.out;
    }
    const EvalRun twice = eval({"--components", "water,methane,water", "StreamIdealLiquidVapor"});
    EXPECT_EQ(twice.code, 1);
    EXPECT_NE(twice.err.find("the component water is given twice"), std::string::npos) << twice.err;

    for (const std::string pressure : {"P=0 bar", "P=1e-300 bar"}) {
        const EvalRun run = eval({"StreamIdealLiquidVapor", pressure, "--get", "Vphase.v", "--get", "Tphase.x[0]"});
        EXPECT_EQ(run.code, 1) << pressure;
        EXPECT_NE(run.err.find("pressure outside the range of 1e-05 Pa to 1e+10 Pa"), std::string::npos) << run.err;
        EXPECT_EQ(run.out.find("nan"), std::string::npos) << run.out;
    }
    // A temperature that is given is refused by the flash; one that is only its start is left behind.
    for (const std::string option : {"PT", "RT"}) {
        const EvalRun run = eval({"StreamIdealLiquidVapor", "T=1e-300 K", "flashoption=" + option});
        EXPECT_EQ(run.code, 1) << option;
        EXPECT_NE(run.err.find("temperature outside the range of 50 K to 1500 K"), std::string::npos) << run.err;
    }
    const std::vector<std::string> half{"StreamIdealLiquidVapor", "flashoption=PA", "Vphase.fraction=0.5", "--get", "T"};
    const EvalRun fromCold = eval(with(half, {"T=1e-300 K"}));
    const EvalRun fromDefault = eval(half);
    ASSERT_EQ(fromCold.code, 0) << fromCold.err;
    EXPECT_NEAR(number(fromCold.out), number(fromDefault.out), 1e-6);
}
