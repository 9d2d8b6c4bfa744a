#include <tarvo/utility/Enumerator.h>
#include <tarvo/core/KernelStart.h>
#include <tarvo/models/ModelCollection.h>
#include <tarvo/user/Eval.h>
#include <tarvo/persistency/NodeFactory.h>
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

// The three enumerators of membrane types name types of the catalogue and describe each as its row does; the
// test beds offer them, so every value of a bed's option makes a bed of its own, as the aliases do.
TEST(ModelCollection, MembraneEnumeratorsDescribeTheirTypesAsTheCatalogueDoes) {
    Tarvo::User::setModelCollection(&Tarvo::Models::registerModelCollection);
    Tarvo::User::registerKernelTypes();
    const std::pair<const char*, const char*> beds[] = {{"MembraneType1", "Test"}, {"MembraneType2", "Test2"}};
    for (const char* name : {"MembraneType1", "MembraneType2", "MembraneTypeCounterFlow"}) {
        SCOPED_TRACE(name);
        const Tarvo::Core::Enumerator* e = Tarvo::Core::findEnumerator(name);
        ASSERT_NE(e, nullptr);
        ASSERT_GT(e->size(), 1u);
        for (const Tarvo::Utility::EnumeratorItem& item : *e) {
            ASSERT_TRUE(NodeFactory::registered(item.name())) << item.name();
            EXPECT_FALSE(item.description().empty()) << item.name();
            EXPECT_EQ(item.description(), NodeFactory::typeDescriptor(item.name()).description);
        }
    }
    for (const auto& [name, bed] : beds) {
        EXPECT_EQ(NodeFactory::typeDescriptor(bed).stringOption("typeT").enumerator, name);
        for (const Tarvo::Utility::EnumeratorItem& item : *Tarvo::Core::findEnumerator(name)) {
            const std::string alias = std::string(bed) + "<" + item.name() + ">";
            ASSERT_TRUE(NodeFactory::registered(alias)) << alias;
            EXPECT_TRUE(NodeFactory::typeDescriptor(alias).instantiable) << alias;
        }
    }
    Tarvo::Core::stopKernel();
}
