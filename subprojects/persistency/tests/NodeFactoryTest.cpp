#include "TestTree.h"

#include <gtest/gtest.h>

#include <memory>

using Tarvo::Persistency::Defaults;

namespace {

// A flowsheet that reads its options the way model classes do.
class Configurable : public Object {
public:
    Configurable(const Defaults& d, uint32_t id, Persistency* p, Persistent* parent, Persistent* root)
        : Object(d, id, p, parent, root), typeT("typeT", "Type of the module", retrieveString(d, id, p, "typeT", "A"), this),
          nStages("nStages", "Number of stages", retrieveInteger(d, id, p, "nStages", 0, 10, 1), this) {
        addVariable(typeT);
        addVariable(nStages);
    }
    String typeT;
    Integer nStages;
};

void registerConfigurable() {
    if (NodeFactory::registered("Config")) return;
    NodeFactory::registerType<Configurable>(
        "Config", "Configurable flowsheet", "flowsheet", true, {{"nStages", "Number of stages", 1, 0, 10}},
        {{"typeT", "Type of the module", "A", "MembraneType1"}}, {{"P", "Pressure", 1e5, "Pa"}}, "", 40, 30);
    NodeFactory::registerAlias("Config", "Config<B>", "Configurable flowsheet with B", Defaults().setString("typeT", "B"),
                               "", 40, 30);
}

std::string factoryMessage(const std::function<void()>& f) {
    try {
        f();
    } catch (const Error& e) {
        return e.message();
    }
    return "no error";
}

} // namespace

TEST(NodeFactory, UnknownTypeIsRefused) {
    EXPECT_EQ(factoryMessage([] { NodeFactory::create("nosuchtype", Defaults(), 0, nullptr, nullptr, nullptr); }),
              "Error was thrown by function: NodeFactory::create\n"
              "Object factory error: Unsupported type: type nosuchtype not found\n");
    EXPECT_EQ(factoryMessage([] { NodeFactory::typeDescriptor("nosuchtype"); }),
              "Error was thrown by function: NodeFactory::typeDescriptor\n"
              "Object factory error: Unsupported type: type nosuchtype not found\n");
    EXPECT_EQ(factoryMessage([] { NodeFactory::icon("nosuchtype"); }),
              "Error was thrown by function: NodeFactory::icon\n"
              "Object factory error: Unsupported type: icon for type nosuchtype not found\n");
}

TEST(NodeFactory, RegistrationIsCheckedAndIconsDefaultToTheCategory) {
    registerConfigurable();
    EXPECT_NE(factoryMessage([] {
                  NodeFactory::registerType<Stage>("Config", "again", "unit", false, {}, {}, {}, "", 1, 1);
              }).find("Unsupported type: Config"),
              std::string::npos);
    EXPECT_NE(factoryMessage([] {
                  NodeFactory::registerType<Stage>("Foo", "bad category", "foo", false, {}, {}, {}, "", 1, 1);
              }).find("Unsupported type: foo"),
              std::string::npos);
    EXPECT_FALSE(NodeFactory::registered("Foo"));
    EXPECT_EQ(NodeFactory::typeDescriptor("Config").icon, "flowsheet");
    EXPECT_EQ(NodeFactory::icon("Config").width, 40.0);
    EXPECT_NE(factoryMessage([] {
                  NodeFactory::registerAlias("Config", "Config<C>", "", Defaults().setString("color", "red"), "", 1, 1);
              }).find("string option color unsupported by base type"),
              std::string::npos);
    EXPECT_NE(factoryMessage([] { NodeFactory::registerAlias("Nope", "Nope<C>", "", Defaults(), "", 1, 1); })
                  .find("base type Nope not found"),
              std::string::npos);
    EXPECT_NE(factoryMessage([] { NodeFactory::registerAlias("Config", "Config<B>", "", Defaults(), "", 1, 1); })
                  .find("type Config<B> already registered"),
              std::string::npos);
}

TEST(NodeFactory, AnAliasFixesOptionsThatTheCallerMayOverride) {
    registerConfigurable();
    const auto& base = NodeFactory::typeDescriptor("Config");
    const auto& alias = NodeFactory::typeDescriptor("Config<B>");
    EXPECT_EQ(base.stringOptions.size(), 1u);
    EXPECT_TRUE(alias.stringOptions.empty()); // what the alias fixes is not offered
    EXPECT_EQ(alias.integerOptions.size(), 1u);
    EXPECT_EQ(alias.category, "flowsheet");
    EXPECT_TRUE(alias.instantiable);
    EXPECT_EQ(alias.quantities.size(), 1u);

    std::unique_ptr<Node> fixed(NodeFactory::create("Config<B>", Defaults("c", ""), 0, nullptr, nullptr, nullptr));
    EXPECT_EQ(dynamic_cast<Configurable&>(*fixed).typeT.value(), "B");
    EXPECT_EQ(fixed->type(), "Config<B>");
    std::unique_ptr<Node> overridden(NodeFactory::create(
        "Config<B>", Defaults("c", "").setString("typeT", "C").setInteger("nStages", 3), 0, nullptr, nullptr, nullptr));
    EXPECT_EQ(dynamic_cast<Configurable&>(*overridden).typeT.value(), "C");
    EXPECT_EQ(dynamic_cast<Configurable&>(*overridden).nStages.value(), 3);
    EXPECT_NE(factoryMessage([&] { base.stringOption("nope"); }).find("string option nope unsupported"),
              std::string::npos);
    EXPECT_EQ(base.integerOption("nStages").max, 10);
}

TEST(NodeFactory, CheckedCastNamesTheModelAndTheTarget) {
    std::unique_ptr<Plant> plant(newPlant());
    EXPECT_EQ(my_cast<Stage*>(&plant->at("COND"), "f"), &plant->at("COND"));
    EXPECT_EQ(factoryMessage([&] { my_cast<Section*>(&plant->at("COND"), "f"); }),
              "Error was thrown by function: f\nDynamic cast error: Unsupported conversion of model COND of type: Stage "
              "to type: P7Section\n");
}

// An integer option outside its bounds is refused, a negative one given as well: only an absent option takes
// the fallback, where a -5 once became the default without a word.
TEST(NodeFactory, IntegerOptionsOutsideTheirBoundsAreRefused) {
    registerConfigurable();
    const auto make = [](const Defaults& d) {
        std::unique_ptr<Node>(NodeFactory::create("Config", d, 0, nullptr, nullptr, nullptr));
    };
    EXPECT_EQ(factoryMessage([&] { make(Defaults("c", "")); }), "no error");
    EXPECT_NE(factoryMessage([&] { make(Defaults("c", "").setInteger("nStages", -5)); })
                  .find("Integer parameter nStages = -5 must be stricly greater than 0"),
              std::string::npos);
    EXPECT_NE(factoryMessage([&] { make(Defaults("c", "").setInteger("nStages", 10)); })
                  .find("Integer parameter nStages = 10 must be stricly smaller than 10"),
              std::string::npos);
}
