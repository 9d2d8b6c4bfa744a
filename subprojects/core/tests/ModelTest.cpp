#include <tarvo/components/ListComponents.h>
#include <tarvo/core/KernelStart.h>
#include <tarvo/core/Model.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using Tarvo::Persistency::Defaults;

namespace {

// A model of the tests: a per-component flow, children by option, and messages on demand.
class Block : public Model {
public:
    Block(const Defaults& d, uint32_t id, Persistency* p, Persistent* parent, Persistent* root) : Model(d, id, p, parent, root) {
        addComponentVariables(flows, "ndot", "Molar flow", "kmol/s", 1.0);
        addVariable(T);
        addSubObjects(0, d, p, retrieveInteger(d, id, p, "nChildren", -1, 10, 0), "child", "Child block", "childType",
                      "blocks", children);
    }
    Tarvo::Utility::Category category() const override { return Tarvo::Utility::Category::unit; }
    void calculate(int) override {}
    void setup() override {}
    void initializeNonPersistents() override {}
    ObjectiveNleAd* objective() override { return nullptr; }
    std::vector<Quantity> flows;
    Quantity T{"T", "Temperature", "K", this, 300.0};
    std::vector<Block*> children;
};

class ModelTest : public ::testing::Test {
protected:
    void SetUp() override {
        Tarvo::Core::startKernel();
        if (!NodeFactory::registered("Block"))
            NodeFactory::registerType<Block>("Block", "Test block", "unit", false, {}, {}, {}, "", 1, 1);
    }
    void TearDown() override { Tarvo::Core::stopKernel(); }

    // root > child[0] > U, three levels of blocks.
    static std::unique_ptr<Block> tree() {
        Defaults d("root", "Root");
        d.setInteger("nChildren", 1).setString("childType[0]", "Block");
        std::unique_ptr<Block> root(dynamic_cast<Block*>(NodeFactory::create("Block", d, 0, nullptr, nullptr, nullptr)));
        root->children.at(0)->addChild("Block", {"U", "Unit"});
        return root;
    }
};

} // namespace

TEST_F(ModelTest, PerComponentItemsAreReachedByName) {
    std::unique_ptr<Block> block(dynamic_cast<Block*>(NodeFactory::create("Block", {"b", ""}, 0, nullptr, nullptr, nullptr)));
    ASSERT_EQ(block->flows.size(), 5u);
    EXPECT_EQ(block->flows[2].tag(), "ndot[2]");
    EXPECT_EQ(block->flows[2].description(), "Molar flow of H2O");
    EXPECT_EQ(&block->Q("ndot[CO2]"), &block->flows[0]);
    EXPECT_EQ(&block->Q("ndot[O2]"), &block->flows[4]);
    try {
        block->Q("ndot[CO]");
        FAIL();
    } catch (const ErrorNoComponent& e) {
        EXPECT_NE(e.message().find("Component CO not found in component list"), std::string::npos);
    }
}

TEST_F(ModelTest, MessagesRiseWithTheDottedPathOfTheirOrigin) {
    std::unique_ptr<Block> root = tree();
    Block& f = *root->children.at(0);
    ASSERT_EQ(f.tag(), "child[0]");
    Block& u = dynamic_cast<Block&>(f.at("U"));
    u.reportError("too hot;");
    u.reportWarning("close to the limit");
    u.reportError("");
    EXPECT_EQ(u.errorList().size(), 1u);
    root->reportMessages();
    ASSERT_EQ(root->errorList().size(), 1u);
    EXPECT_EQ(root->errorList()[0], "too hot; @ child[0].U");
    EXPECT_EQ(f.errorList()[0], "too hot; @ U");
    EXPECT_EQ(root->warningList()[0], "close to the limit @ child[0].U");
    EXPECT_EQ(u.errorList()[0], "too hot;"); // the messages stay where they arose too
    root->resetErrors();
    EXPECT_TRUE(root->errorList().empty());
    EXPECT_TRUE(u.errorList().empty());
    EXPECT_TRUE(u.warningList().empty());
}

// A child added, renamed or pruned after the messages rose once is seen by the next rise under its tag of then.
TEST_F(ModelTest, MessagesFollowTheChildrenAsTheyChange) {
    std::unique_ptr<Block> root = tree();
    Block& f = *root->children.at(0);
    root->reportMessages();
    auto& v = dynamic_cast<Block&>(f.addChild("Block", {"V", "Unit"}));
    v.reportError("from V;");
    root->reportMessages();
    EXPECT_EQ(root->errorList(), (std::vector<std::string>{"from V; @ child[0].V"}));

    root->resetErrors();
    f.renameChild("U", "W"); // now after V, in the order of the tags
    v.reportError("from V;");
    dynamic_cast<Block&>(f.at("W")).reportError("from W;");
    root->reportMessages();
    EXPECT_EQ(root->errorList(), (std::vector<std::string>{"from V; @ child[0].V", "from W; @ child[0].W"}));

    root->resetErrors();
    EXPECT_TRUE(v.errorList().empty());
    const std::unique_ptr<Node> pruned = f.prune("V");
    dynamic_cast<Block&>(*pruned).reportError("gone;");
    root->reportMessages();
    EXPECT_TRUE(root->errorList().empty());
}

TEST_F(ModelTest, PristineAndInputFlags) {
    std::unique_ptr<Block> root = tree();
    for (int i = 0; i < 5; ++i) root->countCalculation();
    root->children[0]->countCalculation();
    EXPECT_FALSE(root->pristine());
    root->setPristine();
    EXPECT_TRUE(root->pristine());
    EXPECT_FALSE(root->children[0]->pristine());
    root->setPristineRecursive();
    EXPECT_TRUE(root->children[0]->pristine());
    root->children[0]->T.setInput();
    root->T.setInput();
    root->unSetInput();
    EXPECT_FALSE(root->T.input());
    EXPECT_FALSE(root->children[0]->T.input());
    EXPECT_EQ(root->maximumIterations(), 200);
}

TEST_F(ModelTest, SubObjectsNeedTheirTypes) {
    Defaults d("root", "");
    d.setInteger("nChildren", 2).setString("childType[0]", "Block");
    try {
        std::unique_ptr<Node>(NodeFactory::create("Block", d, 0, nullptr, nullptr, nullptr));
        FAIL();
    } catch (const ErrorRunTime& e) {
        EXPECT_EQ(e.message(), "Error was thrown by function: Model::addSubObjects<\nGeneric Run-Time error: type unspecified "
                               "for child[1]\n");
    }
}

TEST_F(ModelTest, TextReportListsItemsAndChildren) {
    std::unique_ptr<Block> root = tree();
    std::ostringstream out;
    root->print(out, true, true, true, false);
    EXPECT_EQ(out.str().rfind("****** type = Block TAG = root << DESCRIPTION Root\n*** Begin String attributes\n"
                              "*** Begin StringVector attributes\nerrors = [] Errors from the last computation\n",
                              0),
              0u)
        << out.str();
    EXPECT_NE(out.str().find("T = 300 K Temperature\n"), std::string::npos);
    EXPECT_NE(out.str().find("*** Begin Integer  attributes\nnCalculations = 0 "), std::string::npos);
    std::ostringstream all;
    root->print(all, false, true, false, true);
    EXPECT_NE(all.str().find("*** Begin child[0] Child block\n****** type = Block TAG = child[0]"), std::string::npos);
    EXPECT_NE(all.str().find("*** End child[0] Child block\n"), std::string::npos);
}

TEST_F(ModelTest, KernelStartLoadsTheComponentsOnce) {
    EXPECT_EQ(NCOMPONENTS, 5);
    EXPECT_EQ(components.names(), "CO2;CH4;H2O;N2;O2");
    Tarvo::Core::startKernel(); // counted, not repeated
    Tarvo::Core::stopKernel();
    EXPECT_EQ(NCOMPONENTS, 5);
}
