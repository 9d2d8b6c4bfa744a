#include <tarvo/core/KernelStart.h>
#include <tarvo/models/ModelCollection.h>
#include <tarvo/user/Eval.h>
#include <tarvo/user/Kernel.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

// tarvo-eval registers this build's collection on every call, as the executable does once: a process that
// calls it again (a test, a fuzzer) must get the same answer, not a registration error.
TEST(ModelCollection, TarvoEvalAnswersAlikeWhenCalledTwiceInOneProcess) {
    Tarvo::User::setModelCollection(&Tarvo::Models::registerModelCollection);
    for (int call = 0; call < 2; ++call) {
        std::vector<std::string> words{"tarvo-eval", "StreamIdealLiquidVapor", "P=1 bar", "T=300 K", "--get",
                                       "T:K"};
        std::vector<char*> argv;
        for (std::string& w : words) argv.push_back(w.data());
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        const int code = Tarvo::User::evalMain(static_cast<int>(argv.size()), argv.data());
        const std::string out = testing::internal::GetCapturedStdout();
        const std::string err = testing::internal::GetCapturedStderr();
        Tarvo::Core::stopKernel();
        EXPECT_EQ(code, 0) << "call " << call << ": " << err;
        EXPECT_EQ(out, "T = 300 K\n") << "call " << call; // the temperature given, read back
    }
}
