#include <tarvo/utility/Enumerator.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/SmartEnumerator.h>

#include <gtest/gtest.h>

using namespace Tarvo::Utility;

TEST(SmartEnumerator, NullItemBelowAndPastEveryTable) {
    auto check = [](auto enumerator, auto past) {
        using E = decltype(past);
        EXPECT_EQ(decltype(enumerator)::item(E::null).name(), "Null");
        EXPECT_EQ(decltype(enumerator)::item(E::null).description(), "Undefined");
        EXPECT_EQ(decltype(enumerator)::item(past).name(), "Null") << enumerator.name();
    };
    check(SmartEnumerator<ScalingMode>(), static_cast<ScalingMode>(9));
    check(SmartEnumerator<CutsSolution>(), static_cast<CutsSolution>(4));
    check(SmartEnumerator<MassBalanceMode>(), static_cast<MassBalanceMode>(7));
    check(SmartEnumerator<FlashMode>(), static_cast<FlashMode>(8));
    check(SmartEnumerator<Direction>(), static_cast<Direction>(5));
    check(SmartEnumerator<PhaseType>(), static_cast<PhaseType>(4));
    check(SmartEnumerator<PhaseIndex>(), static_cast<PhaseIndex>(14));
    check(SmartEnumerator<Category>(), static_cast<Category>(6));
}

TEST(SmartEnumerator, ValuesArePositionsCountedFromOne) {
    using F = SmartEnumerator<FlashMode>;
    EXPECT_EQ(F().size(), 7u);
    EXPECT_EQ(F::value("PT"), FlashMode::PT);
    EXPECT_EQ(F::value("SA"), FlashMode::SA);
    EXPECT_EQ(F::item(FlashMode::PA).description(), F::item(FlashMode::SA).description());
    EXPECT_EQ(SmartEnumerator<ScalingMode>::item(ScalingMode::noscaling).name(), "noscaling");
    EXPECT_EQ(static_cast<int>(SmartEnumerator<ScalingMode>::value("log")), 8);
    // Names are case-sensitive; an unknown name gives one past the table.
    EXPECT_EQ(static_cast<int>(SmartEnumerator<ScalingMode>::value("Linear")), 9);
    EXPECT_EQ(SmartEnumerator<PhaseType>::value("vapor"), PhaseType::vapor);
    EXPECT_EQ(SmartEnumerator<PhaseIndex>::value("vapor"), PhaseIndex::vapor);
    EXPECT_EQ(static_cast<int>(SmartEnumerator<PhaseIndex>::value("solid9")), 13);
    EXPECT_EQ(SmartEnumerator<Category>().description(), "model categlory");
}

TEST(SmartEnumerator, UnsupportedValueNamesTheEnumeration) {
    try {
        SmartEnumerator<FlashMode>::unsupported("flash", static_cast<FlashMode>(9));
        FAIL();
    } catch (const ErrorSmartEnum& e) {
        EXPECT_EQ(e.message(), "Error was thrown by function: flash\nSmart enumerator error: Unrecognized FlashMode: 9\n");
    }
}

TEST(SmartEnumerator, CatalogueJson) {
    Tarvo::Core::Enumerator e("MembraneType1", "One-inlet, two-outlets membrane module");
    e.addItem({"Membrane12Rtsc", "Membrane module"});
    e.addItem({"Membrane12Cstr", "Mixed module"});
    EXPECT_EQ(e.json(), "{\"name\":\"MembraneType1\",\"description\":\"One-inlet, two-outlets membrane module\","
                        "\"options\":[{\"name\":\"Membrane12Rtsc\",\"description\":\"Membrane module\"},"
                        "{\"name\":\"Membrane12Cstr\",\"description\":\"Mixed module\"}]}");
    EXPECT_EQ(Tarvo::Core::Enumerator("E", "").json(), "{\"name\":\"E\",\"description\":\"\",\"options\":[]}");
}

TEST(KernelEnumerators, ListKeepsOrderAndFindsByName) {
    Tarvo::Core::clearEnumerators();
    Tarvo::Core::addEnumerator(Tarvo::Core::Enumerator("A", "first"));
    Tarvo::Core::addEnumerator(Tarvo::Core::Enumerator("B", "second"));
    ASSERT_EQ(Tarvo::Core::enumerators().size(), 2u);
    EXPECT_EQ(Tarvo::Core::enumerators()[1].name(), "B");
    ASSERT_NE(Tarvo::Core::findEnumerator("A"), nullptr);
    EXPECT_EQ(Tarvo::Core::findEnumerator("A")->description(), "first");
    EXPECT_EQ(Tarvo::Core::findEnumerator("a"), nullptr);
    Tarvo::Core::clearEnumerators();
}
