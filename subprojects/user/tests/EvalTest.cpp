#include <tarvo/core/KernelStart.h>
#include <tarvo/user/Eval.h>

#include <gtest/gtest.h>

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
