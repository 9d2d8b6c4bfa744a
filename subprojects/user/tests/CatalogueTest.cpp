#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/persistency/Object.h>
#include <tarvo/user/Catalogue.h>
#include <tarvo/user/ResultCodes.h>

#include <gtest/gtest.h>

using Tarvo::Persistency::Defaults;

namespace {

class Box : public Object {
public:
    using Object::Object;
};

// Registers, once, a flowsheet with one option of each kind, an alias of it and a plain unit.
void registerCatalogue() {
    if (NodeFactory::registered("Box")) return;
    NodeFactory::clear();
    NodeFactory::registerType<Box>("Box", "A box", "flowsheet", true, {{"n", "Count", 2, 0, 9}},
                                   {{"kind", "Kind", "a", "MembraneType1"}}, {{"Box.P", "Pressure", 1.5e5, "Pa"}}, "",
                                   10, 10);
    NodeFactory::registerAlias("Box", "Box<b>", "A box of b", Defaults().setString("kind", "b"), "boxb", 10, 10);
    NodeFactory::registerType<Box>("Lid", "A lid", "unit", false, {}, {}, {}, "", 5, 5);
}

} // namespace

TEST(Catalogue, TypesByteForByte) {
    registerCatalogue();
    int error = 1;
    EXPECT_EQ(Tarvo::User::types(error),
              "{\"types\":["
              "{\"name\":\"Box\", \"description\":\"A box\", \"category\":\"flowsheet\", \"icon\":\"flowsheet.svg\", "
              "\"instantiable\":true, "
              "\"integerOptions\":[{\"name\":\"n\",\"description\":\"Count\",\"value\":2,\"min\":0,\"max\":9}], "
              "\"stringOptions\":[{\"name\":\"kind\",\"description\":\"Kind\",\"value\":\"a\",\"enumerator\":"
              "\"MembraneType1\"}], "
              "\"quantities\":[{\"fulltag\":\"Box.P\",\"description\":\"Pressure\",\"value\":150000,\"unit\":\"Pa\"}] },"
              "{\"name\":\"Box<b>\", \"description\":\"A box of b\", \"category\":\"flowsheet\", \"icon\":\"boxb.svg\", "
              "\"instantiable\":true, "
              "\"integerOptions\":[{\"name\":\"n\",\"description\":\"Count\",\"value\":2,\"min\":0,\"max\":9}], "
              "\"stringOptions\":[], "
              "\"quantities\":[{\"fulltag\":\"Box.P\",\"description\":\"Pressure\",\"value\":150000,\"unit\":\"Pa\"}] },"
              "{\"name\":\"Lid\", \"description\":\"A lid\", \"category\":\"unit\", \"icon\":\"unit.svg\", "
              "\"instantiable\":false, \"integerOptions\":[], \"stringOptions\":[], \"quantities\":[] }"
              "]}");
    EXPECT_EQ(error, 0);
}

TEST(Catalogue, UnknownTypeGivesEmptyRecordAndMinus92) {
    registerCatalogue();
    int error = 0;
    testing::internal::CaptureStderr();
    EXPECT_EQ(Tarvo::User::typeDescriptorJson("Nope", error), "{}");
    EXPECT_EQ(error, Tarvo::User::invalidArgument);
    EXPECT_EQ(Tarvo::User::typeDescriptor("Nope", error), nullptr);
    const std::string err = testing::internal::GetCapturedStderr();
    EXPECT_NE(err.find("Object factory error: Unsupported type: type Nope not found"), std::string::npos);
    EXPECT_NE(Tarvo::User::typeDescriptor("Lid", error), nullptr);
    EXPECT_EQ(error, 0);
    EXPECT_EQ(Tarvo::User::typeDescriptorJson("Lid", error).substr(0, 15), "{\"name\":\"Lid\", ");
}

TEST(Catalogue, EnumeratorsOfTheKernelList) {
    Tarvo::Core::clearEnumerators();
    int error = 1;
    EXPECT_EQ(Tarvo::User::enumerators(error), "{\"enumerators\":[]}");
    Tarvo::Core::Enumerator e("MembraneType1", "One-inlet, two-outlets membrane module");
    e.addItem({"Membrane12Rtsc", "Module"});
    Tarvo::Core::addEnumerator(e);
    Tarvo::Core::addEnumerator(Tarvo::Core::Enumerator("E2", "second"));
    EXPECT_EQ(Tarvo::User::enumerators(error),
              "{\"enumerators\":[{\"name\":\"MembraneType1\",\"description\":\"One-inlet, two-outlets membrane "
              "module\",\"options\":[{\"name\":\"Membrane12Rtsc\",\"description\":\"Module\"}]},{\"name\":\"E2\","
              "\"description\":\"second\",\"options\":[]}]}");
    EXPECT_NE(Tarvo::User::enumerator("E2", error), nullptr);
    EXPECT_EQ(Tarvo::User::enumerator("phaseEnum", error), nullptr);
    EXPECT_EQ(error, Tarvo::User::invalidArgument);
    Tarvo::Core::clearEnumerators();
}

TEST(ResultCodes, TextsOfBothFamilies) {
    using Tarvo::User::errorMessage;
    EXPECT_EQ(errorMessage(0), "success");
    EXPECT_EQ(errorMessage(-81), "case object is not in a valid state");
    EXPECT_EQ(errorMessage(-82), "communication problem");
    EXPECT_EQ(errorMessage(-91), "communication problem");
    EXPECT_EQ(errorMessage(-83), "supplied argument is not valid");
    EXPECT_EQ(errorMessage(-92), "supplied argument is not valid");
    EXPECT_EQ(errorMessage(-84), "server-side error while performing the operation");
    EXPECT_EQ(errorMessage(-93), "server-side error while performing the operation");
    EXPECT_EQ(errorMessage(-1), "unknown error");
}
