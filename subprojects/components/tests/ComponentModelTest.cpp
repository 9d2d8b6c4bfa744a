// The component model: stored constants, the component list, and the K values that each class of
// species gives.
#include <tarvo/components/ListComponents.h>
#include <tarvo/components/Purecomps.h>

#include "ComponentTestSupport.h"

#include <gtest/gtest.h>

using namespace componentTests;

TEST(ComponentBase, CriticalVolumeComesFromZcAndNotFromTheCriticalDensity) {
    const auto base = [](double rhoc) {
        return ComponentBase(Value(44.0, "kg/kmol"), Pa(7.383e6), K(304.21), Value(rhoc, "kg/m3"), zero,
                             Value(0.035, "m3/kmol"), Value(0.274), Value(-3.9e8, "J/kmol"),
                             Value(-3.9e8, "J/kmol"), Value(0.22));
    };
    const double expected = 0.274 * 8314.4 * 304.21 / 7.383e6; // zc R Tc / Pc, m3/kmol
    EXPECT_NEAR(base(468.0).vc().toDouble("m3/kmol"), expected, 1e-15);
    EXPECT_NEAR(base(100.0).vc().toDouble("m3/kmol"), expected, 1e-15);
}

TEST(ComponentBase, ArgumentsInTheWrongUnitsAreRejected) {
    const std::string message = errorMessage([] {
        ComponentBase(Value(44.0, "kg/kmol"), K(7.383e6), K(304.21), Value(468.0, "kg/m3"), zero,
                      Value(0.035, "m3/kmol"), Value(0.274), Value(0.0, "J/kmol"), Value(0.0, "J/kmol"),
                      Value(0.2));
    });
    EXPECT_NE(message.find("incompatible units <K> <m^-1 kg s^-2>"), std::string::npos) << message;
    EXPECT_NE(message.find("Called from function: ComponentBase::check_\n"), std::string::npos) << message;
}

TEST(ComponentBase, SpeciesWithoutCriticalDataGetFarAwayPlaceholders) {
    const ComponentBase base(Value(18.0153, "kg/kmol"));
    EXPECT_EQ(base.Pc().toDouble("bar"), 1500.0);
    EXPECT_EQ(base.Tc().toDouble("K"), 2000.0);
    EXPECT_EQ(base.zc().toDouble(), 0.3);
    EXPECT_EQ(base.omega().toDouble(), 0.1);
    EXPECT_EQ(base.dh0().toDouble("J/kmol"), 0.0);
    // vb = 1.5 mw / rhoc with rhoc = mw Pc / (0.3 R Tc): 1.5 * 0.3 * 8314.4 * 2000 / 1.5e8 m3/kmol.
    EXPECT_NEAR(base.vb().toDouble("m3/kmol"), 0.0498864, 1e-12);
    EXPECT_NEAR(base.vc().toDouble("m3/kmol"), 0.3 * 8314.4 * 2000 / 1.5e8, 1e-15);
}

TEST(ComponentGeneric, NameMustBeValidUtf8) {
    EXPECT_EQ(errorMessage([] { purecomps::methane("CH\xff"); }),
              "Error was thrown by function: ComponentGeneric::ComponentGeneric(std::string)\n"
              "Invalid characters error: Field NAME contains invalid characters or does not begin with an "
              "alphabetic element: \"CH\xff\"\n");
    for (const char* bad : {"\xc0\xaf", "\xe2\x82", "\xed\xa0\x80", "\xf4\x90\x80\x80", "\x80"})
        EXPECT_NE(errorMessage([bad] { purecomps::methane{bad}; }), "no error") << bad;
    EXPECT_EQ(errorMessage([] { purecomps::methane("CH₄ µ"); }), "no error");
}

TEST(ComponentGeneric, IndexIsMinusOneUntilTheListTakesIt) {
    auto* co2 = new purecomps::CO2("CO2", true);
    EXPECT_EQ(co2->index, -1);
    ListComponents list;
    list.add(new purecomps::methane("CH4"));
    list.add(co2);
    EXPECT_EQ(co2->index, 1);
}

TEST(ListComponents, StartUpListHasTheKernelsFiveSpeciesInOrder) {
    loadComponents();
    EXPECT_EQ(NCOMPONENTS, 5);
    EXPECT_EQ(components.names(), "CO2;CH4;H2O;N2;O2");
    EXPECT_EQ(components.lookup("CO2"), 0);
    EXPECT_EQ(components.lookup("H2O"), 2);
    EXPECT_EQ(components.lookup("O2"), 4);
    EXPECT_EQ(components[4]->name, "O2");
    EXPECT_EQ(components["CH4"], components[1]);
    EXPECT_TRUE(components["CO2"]->isHenry());
    EXPECT_FALSE(components["CH4"]->isHenry());
    EXPECT_FALSE(components["H2O"]->isHenry());
    EXPECT_TRUE(components["N2"]->isHenry());
    EXPECT_TRUE(components["O2"]->isHenry());
    // A second load replaces the list rather than adding to it.
    loadComponents();
    EXPECT_EQ(NCOMPONENTS, 5);
    EXPECT_EQ(components.names(), "CO2;CH4;H2O;N2;O2");
}

TEST(ListComponents, UnknownNameRaisesNoComponentWithItsText) {
    loadComponents();
    EXPECT_EQ(errorMessage([] { components.lookup("CO"); }),
              "Error was thrown by function: ListComponents::lookup\n"
              "Non-existing component error: Component CO not found in component list\n");
    EXPECT_EQ(errorMessage([] { components["CO"]; }),
              "Error was thrown by function: ListComponents::lookup\n"
              "Non-existing component error: Component CO not found in component list\n"
              "Called from function: ListComponents::operator[]\n");
}

TEST(ListComponents, RepeatedNameRefersToTheNewerEntry) {
    ListComponents list;
    list.add(new purecomps::N2("N2", false));
    list.add(new purecomps::O2("N2", false));
    EXPECT_EQ(list.size(), 2);
    EXPECT_EQ(NCOMPONENTS, 2);
    EXPECT_EQ(list.lookup("N2"), 1);
    EXPECT_EQ(list.names(), "N2;N2");
}

TEST(ListComponents, ClearEmptiesListAndCount) {
    ListComponents list;
    list.add(new purecomps::N2("N2", false));
    list.clear();
    EXPECT_EQ(list.size(), 0);
    EXPECT_EQ(NCOMPONENTS, 0);
    EXPECT_EQ(list.names(), "");
    EXPECT_NE(errorMessage([&] { list.lookup("N2"); }), "no error");
    list.add(new purecomps::O2("O2", false));
    EXPECT_EQ(list.names(), "O2");
    EXPECT_EQ(list.lookup("O2"), 0);
}

TEST(KValue, NonVolatileSpeciesDeclineToEvaporate) {
    for (double t : {250.0, 600.0, 1400.0}) {
        for (double p : {1e3, 1e5, 1e7}) {
            EXPECT_EQ(purecomps::NaCl("NaCl").kvli(K(t), Pa(p)).toDouble(), 1e-20);
            EXPECT_EQ(purecomps::Fe("Fe").kvli(K(t), Pa(p)).toDouble(), 1e-20);
            EXPECT_EQ(purecomps::Protein("Protein").kvli(K(t), Pa(p)).toDouble(), 0.0);
        }
    }
}

TEST(KValue, SolidFlagsFollowTheClass) {
    EXPECT_FALSE(purecomps::ethanol("e").isSolid());
    EXPECT_FALSE(purecomps::water("w").isSolid());
    EXPECT_TRUE(purecomps::silica("s").isSolid());
    EXPECT_TRUE(purecomps::Lipid("l").isSolid());
    // A soluble salt may enter a liquid; an insoluble one may not.
    EXPECT_FALSE(purecomps::NaCl("n").isSolid());
    EXPECT_TRUE(purecomps::CaCO3("c").isSolid());
    EXPECT_FALSE(purecomps::NaCl("n").isHenry());
}
